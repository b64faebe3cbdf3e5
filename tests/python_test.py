"""The module qlproto: messages and columns are what the tool says, and nothing that is handed over crashes it."""
import ctypes
import gc
import glob
import itertools
import json
import os
import random
import subprocess
import sys
import tempfile
import _thread
import threading
import time
import unittest

import qlproto

class ArrowSchema(ctypes.Structure):
    pass


class ArrowArray(ctypes.Structure):
    pass


class ArrowStream(ctypes.Structure):
    pass


def released(it):
    return ctypes.CFUNCTYPE(None, pointer(it))


pointer, text, void, int64 = ctypes.POINTER, ctypes.c_char_p, ctypes.c_void_p, ctypes.c_int64
ArrowSchema._fields_ = [
    ("format", text), ("name", text), ("metadata", void), ("flags", int64), ("n_children", int64),
    ("children", pointer(pointer(ArrowSchema))), ("dictionary", void), ("release", released(ArrowSchema)), ("private_data", void)]
ArrowArray._fields_ = [
    ("length", int64), ("null_count", int64), ("offset", int64), ("n_buffers", int64), ("n_children", int64),
    ("buffers", pointer(void)), ("children", pointer(pointer(ArrowArray))), ("dictionary", void),
    ("release", released(ArrowArray)), ("private_data", void)]
ArrowStream._fields_ = [
    (name, ctypes.CFUNCTYPE(ctypes.c_int, pointer(ArrowStream), pointer(it)))
    for name, it in (("get_schema", ArrowSchema), ("get_next", ArrowArray))
] + [("get_last_error", void), ("release", released(ArrowStream)), ("private_data", void)]

ROOT, TOOL = os.environ["QL_ROOT"], os.environ["QLPROTO_TOOL"]


def run(*arguments):
    return subprocess.run([TOOL, *arguments], check=True, capture_output=True, text=True).stdout


def plain(value, like):
    """A value of JSON as Python has it: integers of 64 bits are strings there."""
    if isinstance(value, dict):
        return {name: plain(it, like[name]) for name, it in value.items()}
    if isinstance(value, list):
        return [plain(it, other) for it, other in zip(value, like, strict=True)]
    if isinstance(like, bytes):
        return like if qlproto._json(like) == value else value
    if isinstance(value, str) and isinstance(like, int):
        return int(value)
    return like if isinstance(like, str) and qlproto._json(like) == value else value


class Bodies(unittest.TestCase):
    def test_corpus_both_ways(self):
        golden = hostile = 0
        for path in glob.glob(ROOT + "/corpus/*.ndjson"):
            with open(path, encoding="utf-8") as file:
                lines = file.read().splitlines()
            for line in lines:
                vector = json.loads(line)
                name, body = vector["message"], bytes.fromhex(vector["hex"])
                if name == "PadMessage":  # a capture has it in the form that is written
                    continue
                if vector["kind"] == "hostile":
                    hostile += 1
                    with self.subTest(line=line):
                        fault = qlproto.verify(name, body, "strict")
                        self.assertIsNotNone(fault)
                        self.assertEqual(fault.offset, vector["strict"]["offset"])
                elif vector["kind"] == "golden":
                    golden += 1
                    with self.subTest(line=line):
                        fields = qlproto.decode(vector["id"], body)
                        self.assertEqual(plain(vector["body"], fields), fields)
                        self.assertEqual(qlproto.encode(name, fields), body)
        self.assertGreater(golden, 300)
        self.assertGreater(hostile, 300)

    def test_errors_tell_the_place(self):
        body = qlproto.encode("Timer", {"tqid": 7})
        with self.assertRaises(qlproto.DecodeError) as caught:
            qlproto.decode("TimerMessage", body + b"x")
        self.assertEqual((caught.exception.offset, caught.exception.path), (1, None))
        with self.assertRaises(qlproto.DecodeError) as caught:
            qlproto.decode("TimerMessage", b"")
        self.assertEqual((caught.exception.offset, caught.exception.path), (0, "tqid"))
        for fields in ({}, {"tqid": "x"}, {"tqid": 2**40}, {"tqid": 1, "other": 2}):
            with self.assertRaises(qlproto.EncodeError) as caught:
                qlproto.encode("TimerMessage", fields)
            self.assertIn(caught.exception.path, ("tqid", "other", None))
        for wrong in ("Tuner", 1234567, -1, "x" * 100000):
            with self.assertRaises(KeyError):
                qlproto.decode(wrong, b"")
        with self.assertRaises(qlproto.CaptureError):
            qlproto.open("/nowhere")
        self.assertEqual(qlproto.describe(0xD024)["fields"][0]["name"], "tqid")

    def test_hostile_bodies_raise(self):
        random.seed(1)
        raised = 0
        for name in qlproto.messages():
            for length in range(0, 200, 7):
                try:
                    qlproto.decode(name, random.randbytes(length))
                except qlproto.DecodeError as error:
                    raised += 1
                    self.assertLessEqual(error.offset, length)
        self.assertGreater(raised, 1000)


class Captures(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.path = cls.folder.name + "/session.pcap"
        run("generate", "--messages", "20000", "--seed", "7", "-o", cls.path)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def decoded(self, name):
        return [json.loads(it) for it in run("decode", "--format", "json", "--message", name, self.path).splitlines()]

    def test_messages_are_those_of_decode(self):
        lines = run("decode", "--format", "json", self.path).splitlines()
        count = 0
        for message, line in zip(qlproto.open(self.path), lines, strict=True):
            count += 1
            if count % 50 == 0:
                line = json.loads(line)
                self.assertEqual((message.name, message.packet), (line["message"], count))
                self.assertEqual(plain(line["body"], message.fields), message.fields)
                self.assertEqual(bytes.fromhex(line["hex"]) if "hex" in line else message.bytes, message.bytes)
        orders = list(qlproto.open(self.path).messages("SubmitOrderMessage"))
        self.assertEqual(orders[0].contents.parameters[0].key, orders[0]["contents"]["parameters"][0]["key"])
        with self.assertRaises(AttributeError):
            orders[0].contents.none

    def test_columns_are_those_of_decode(self):
        lines = self.decoded("SubmitOrderMessage")
        columns = qlproto.open([self.path]).table("SubmitOrder", batch_rows=100).to_numpy()
        self.assertEqual([int(it["body"]["contents"]["amount"]) for it in lines], columns["contents.amount"].tolist())
        self.assertEqual([it["body"]["contents"]["clOrdID"] for it in lines], columns["contents.clOrdID"].tolist())
        self.assertEqual(str(columns["_time"].dtype), "datetime64[ns]")
        try:
            import pandas
        except ImportError:
            self.skipTest("no pandas")
        frame = qlproto.open(self.path).table("SubmitOrder", batch_rows=100).to_pandas()
        self.assertEqual(len(frame), len(lines))
        self.assertEqual(frame["contents.side"].tolist(), [it["body"]["contents"]["side"] for it in lines])
        stops = [it["body"]["contents"]["stopPrice"] for it in lines]
        self.assertEqual(frame["contents.stopPrice_sentinel"].tolist(), [None if it.isdigit() else it for it in stops])
        self.assertEqual(frame["contents.stopPrice"].isna().tolist(), [not it.isdigit() for it in stops])
        few = qlproto.open(self.path).table("SubmitOrder", ["contents.side", "_packet"]).to_pandas()
        self.assertEqual(sorted(few.columns), ["_packet", "contents.side"])

    def test_elements_of_lists_are_arrays(self):
        entries = [it["body"]["mvd"]["mdEntryList"] for it in self.decoded("MktDataMessage")]
        row = 0
        for batch in qlproto.open(self.path).table("MktData", ["mvd.mdEntryList"], batch_rows=100).batches():
            begins, prices = batch.offsets("mvd.mdEntryList"), batch.column("mvd.mdEntryList.price")
            sides = batch.column("mvd.mdEntryList.side")
            self.assertFalse(begins.flags.owndata or prices.flags.owndata)
            for begin, end in zip(begins, begins[1:]):
                self.assertEqual(prices[begin:end].tolist(), [int(it["price"]) for it in entries[row]])
                self.assertEqual(sides[begin:end].tolist(), [it["side"] for it in entries[row]])
                row += 1
            with self.assertRaises(TypeError):
                batch.offsets("mvd.mdEntryList.price")
            with self.assertRaises(KeyError):
                batch.column("mvd.mdEntryList.none")
        self.assertEqual(row, len(entries))

    def test_arrays_keep_their_batches(self):
        capture = qlproto.open(self.path)
        table = capture.table("MktData", ["_packet", "batchID", "mvd.timeExchange"], batch_rows=50)
        expected = table.to_numpy()["_packet"].tolist()
        arrays = [batch.column("_packet") for batch in table.batches()]
        self.assertFalse(arrays[0].flags.owndata)
        del capture, table
        kept = list(enumerate(arrays))
        arrays.clear()
        random.Random(2).shuffle(kept)
        while len(kept) > 5:
            kept.pop()
            gc.collect()
        for i, array in kept:
            self.assertEqual(array.tolist(), expected[50 * i:50 * i + 50])

    def test_streams_are_handed_over_or_dropped(self):
        table = qlproto.open(self.path).table("MktData")
        for _ in range(3):
            capsule = table.__arrow_c_stream__()
            self.assertIn("arrow_array_stream", repr(capsule))
            next(table.batches())
        del capsule

    def test_what_is_released_first_takes_nothing_along(self):
        """As a library that takes Arrow does: the structures are its own, and go in any order."""
        for order in itertools.permutations(["stream", "schema", "batch", "capsule", "table"]):
            table = qlproto.open(self.path).table("SubmitOrder", ["_packet"], batch_rows=9)
            capsule = table.__arrow_c_stream__()
            address = ctypes.pythonapi.PyCapsule_GetPointer
            address.restype, address.argtypes = ctypes.c_void_p, [ctypes.py_object, ctypes.c_char_p]
            inside = ArrowStream.from_address(address(capsule, b"arrow_array_stream"))
            stream = ArrowStream.from_buffer_copy(inside)  # moved out of the capsule
            inside.release = ArrowStream().release
            schema, batch = ArrowSchema(), ArrowArray()
            self.assertEqual(stream.get_schema(ctypes.byref(stream), ctypes.byref(schema)), 0)
            self.assertEqual(stream.get_next(ctypes.byref(stream), ctypes.byref(batch)), 0)
            numbers = ctypes.cast(batch.children[0].contents.buffers[1], ctypes.POINTER(ctypes.c_uint64))
            held = {"stream": stream, "schema": schema, "batch": batch}
            for name in order:
                if name in held:
                    it = held.pop(name)
                    it.release(ctypes.byref(it))
                    self.assertFalse(it.release)
                elif name == "table":
                    del table
                else:
                    del capsule
                if "batch" in held:
                    self.assertEqual(numbers[:9], sorted(numbers[:9]))
                if "schema" in held:
                    self.assertEqual(schema.children[0].contents.name, b"_packet")
                if "stream" in held:
                    more = ArrowArray()
                    self.assertEqual(stream.get_next(ctypes.byref(stream), ctypes.byref(more)), 0)
                    more.release(ctypes.byref(more))

    def test_threads_decode_at_once(self):
        counts = []
        threads = [threading.Thread(target=lambda: counts.append(sum(1 for _ in qlproto.open(self.path)))) for _ in range(3)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(counts, [20000] * 3)

    def test_threads_share_iterators(self):
        messages, seen = qlproto.open(self.path).messages(), []
        stream = qlproto.open(self.path).table("MktData", ["_packet"], batch_rows=10)._stream()
        rows = []

        def take():
            seen.extend(it.packet for it in messages)
            rows.extend(len(batch) for batch in iter(stream.next, None))

        threads = [threading.Thread(target=take) for _ in range(3)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(sorted(seen), list(range(1, 20001)))
        self.assertEqual(sum(rows), len(self.decoded("MktDataMessage")))

    def test_networks_give_the_messages_in_their_packets(self):
        path = self.folder.name + "/net.pcap"
        run("convert", self.path, "--over", "tcp", "--framing", "frames", "--connections", "2", "-o", path)
        capture = qlproto.open(path, framing="frames", ports=[9001])
        there = [(it.packet, it.time, it.bytes) for it in capture]
        self.assertEqual(there, [(it.packet, it.time, it.bytes) for it in qlproto.open(self.path)])
        columns = capture.table("messages").to_numpy()
        for name in "connection", "connectionID", "from", "to", "direction":
            values = [getattr(it, "_" + name) for it in capture]
            self.assertTrue(values == columns[name].tolist(), name)
        self.assertEqual({it._from for it in capture}, {"10.0.0.1:40000", "10.0.0.1:40001"})
        self.assertIsNone(next(iter(qlproto.open(self.path)))._direction)
        self.assertEqual(list(qlproto.open(path, framing="frames", ports=[1])), [])
        self.assertRaises(qlproto.CaptureError, qlproto.open, path)
        self.assertRaisesRegex(ValueError, "framing: 'id:u16'", qlproto.open, path, framing="id:u16, body")

    def test_damaged_captures_give_what_is_good(self):
        path = self.folder.name + "/cut.pcap"
        with open(self.path, "rb") as whole, open(path, "wb") as cut:
            data = bytearray(whole.read(200000))
            for i in range(5000, len(data), 20000):
                data[i:i + 3] = b"\xff\xff\xff"
            cut.write(data)
        capture = qlproto.open(path)
        messages = capture.messages()
        good = sum(1 for _ in messages)
        self.assertGreater(good, 1000)
        self.assertEqual(messages.faults, len(capture.faults))
        self.assertGreater(messages.faults, 0)


@unittest.skipUnless(hasattr(qlproto._core, "LiveMessages"), "built without buses")
class Buses(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.path, self.url = self.folder.name + "/session.pcap", f"mem:{self.folder.name}/ring?size=1"
        run("generate", "--messages", "3000", "--seed", "7", "-o", self.path)

    def publish(self):
        run("publish", "--bus", self.url, "--speed", "max", "--quiet", self.path)

    def test_messages_are_those_that_were_published(self):
        live = iter(qlproto.open(self.url))
        self.publish()
        expected = list(qlproto.open(self.path))
        for sequence, message in enumerate(expected, 1):
            it = next(live)
            self.assertEqual((it.name, it.bytes, it.fields, it.packet, it.lost),
                             (message.name, message.bytes, message.fields, sequence, 0))
        orders = [it.bytes for it in expected if it.name == "SubmitOrderMessage"]
        bus = qlproto.open(self.url, start="oldest")
        self.assertEqual([it.bytes for it in bus.messages("SubmitOrder", timeout=0)], orders)
        self.assertEqual(next(iter(qlproto.open(self.url, start=100))).packet, 100)
        run("record", "--bus", self.url, "-o", self.folder.name + "/journal/", "--messages", "3000", "--seconds", "60")
        journal = qlproto.open(self.folder.name + "/journal", start="oldest").messages(timeout=0)
        self.assertEqual([it.bytes for it in journal], [it.bytes for it in expected])

    def test_gaps_are_told(self):
        first = qlproto.open(self.url, start=1).messages(timeout=0)
        for _ in range(10):
            self.publish()
        messages = list(first)
        self.assertGreater(messages[0].lost, 10000)
        self.assertEqual(messages[0].packet, messages[0].lost + 1)
        self.assertEqual((first.lost, messages[-1].packet, messages[1].lost), (messages[0].lost, 30000, 0))

    def test_waiting_lets_others_go_on_and_ends(self):
        live = qlproto.open(self.url).messages(timeout=60)
        threading.Timer(0.3, self.publish).start()
        self.assertEqual(next(live).packet, 1)
        nothing = qlproto.open(self.url.replace("ring", "other"))  # where nobody publishes
        threading.Timer(0.5, _thread.interrupt_main).start()
        with self.assertRaises(KeyboardInterrupt):
            next(iter(nothing))
        start = time.monotonic()
        self.assertEqual(list(qlproto.open(self.url).messages(timeout=0.2)), [])
        self.assertLess(time.monotonic() - start, 30)

    def test_errors_name_the_bus(self):
        with self.assertRaisesRegex(qlproto.BusError, "mem:"):
            qlproto.open("mem:")
        with self.assertRaises(ValueError):
            qlproto.open(self.url, start="soon")
        with self.assertRaises(qlproto.CaptureError):
            qlproto.open(self.folder.name + "/none", start="oldest")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + ["-q"])
