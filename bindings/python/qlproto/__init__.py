"""Captures and messages of the QLProtocol.

    import qlproto
    capture = qlproto.open("session.pcap")
    for message in capture:
        print(message.name, message.time, message.contents.side)
    prices = capture.table("SubmitOrder", columns=["contents.price", "contents.side"]).to_pandas()

Fields of messages are attributes and items alike. What stands in them, and what becomes of each type in a column, is told in
docs/python.md.
"""

import json
import os

from . import _core

__all__ = ["open", "encode", "decode", "verify", "describe", "messages", "Capture", "Bus", "Message", "Record", "Table",
           "Batch", "Fault", "Error", "BusError", "CaptureError", "DecodeError", "EncodeError"]

Batch = _core.Batch


class Error(Exception):
    """Something is wrong: `path` is the value concerned, `offset` its place in the body. Either may be None."""

    def __init__(self, reason, path=None, offset=None):
        super().__init__(reason)
        self.path = path
        self.offset = offset


class CaptureError(Error, OSError):
    """A capture cannot be read."""


class BusError(Error, OSError):
    """A bus cannot be reached."""


class DecodeError(Error, ValueError):
    """Bytes are no body of that message."""


class EncodeError(Error, ValueError):
    """A dict is no message of that type."""


class Fault:
    """What is wrong with a body: `kind` as in "truncated", `offset` of the value, its `path`, and all as a `text`."""

    def __init__(self, kind, offset, path, text):
        self.kind, self.offset, self.path, self.text = kind, offset, path, text

    def __repr__(self):
        return f"Fault({self.text!r})"


class Record(dict):
    """A message's fields, which are attributes, too."""

    __slots__ = ()

    def __getattr__(self, name):
        try:
            return _record(self[name])
        except KeyError:
            raise AttributeError(name) from None


def _record(value):
    if type(value) is dict:
        return Record(value)
    if type(value) is list:
        return [_record(it) for it in value]
    return value


class Message:
    """A message of a capture or a bus. Its fields are attributes: message.contents.side. What is known of the connection by
    which a message of a network came has names that no field has: message._from."""

    __slots__ = ("name", "id", "time", "packet", "capture", "bytes", "fields", "lost",
                 "_connection", "_connectionID", "_from", "_to", "_direction")

    def __init__(self, name, id, time, packet, capture, bytes, fields, lost=0, connection=None):
        self.name = name
        self.id = id
        self.time = time  # of the packet, nanoseconds since 1970
        self.packet = packet  # its number in the capture, from 1; of a bus its sequence
        self.capture = capture
        self.bytes = bytes  # the body
        self.fields = Record(fields)
        self.lost = lost  # messages of a bus that came and went unseen before it
        self._connection, self._connectionID, self._from, self._to, self._direction = connection or (None,) * 5

    def __getattr__(self, name):
        return getattr(self.fields, name)

    def __getitem__(self, name):
        return self.fields[name]

    def __repr__(self):
        return f"<{self.name} packet={self.packet} time={self.time}>"


class _Iterator:
    def __init__(self, messages, *timeout):
        self._messages, self._timeout = messages, timeout

    def __iter__(self):
        return self

    def __next__(self):
        it = self._messages.next(*self._timeout)
        if it is None:
            raise StopIteration
        return Message(*it)

    @property
    def faults(self):
        """Messages that were bad until now, and damages of captures."""
        return self._messages.faults

    @property
    def lost(self):
        """Messages of a bus that came and went unseen until now."""
        return getattr(self._messages, "lost", 0)


class Bus:
    """A bus or a journal. Iterating gives the messages that are sound, as they come."""

    def __init__(self, place, policy, start):
        self._place, self._policy, self._start = place, policy, start
        self.messages()  # can it be reached?

    def __iter__(self):
        return self.messages()

    def messages(self, names=(), *, timeout=None):
        """Iterates over messages of these names, or all; ends when none comes for so many seconds. `lost` of the iterator
        counts those that came and went unseen, `faults` the bad ones."""
        if not hasattr(_core, "LiveMessages"):
            raise BusError(f"{self._place}: this module is built without buses")
        return _Iterator(_core.LiveMessages(self._place, self._start, self._policy, _list(names)), timeout)


class Table:
    """Messages of one type as columns. Each use reads the captures anew."""

    def __init__(self, paths, name, columns, decimals, secrets, policy, batch_rows, network):
        self._arguments = (paths, name, columns, decimals, secrets, policy, batch_rows, *network)
        self._stream().capsule()  # is there such a table?

    def _stream(self):
        return _core.Stream(*self._arguments)

    def __arrow_c_stream__(self, requested_schema=None):
        """The table for any library that takes Arrow: pyarrow.table(table), polars, DuckDB."""
        return self._stream().capsule()

    def batches(self):
        """Iterates over its batches, in order. Arrays of a batch keep it alive."""
        stream = self._stream()
        while (batch := stream.next()) is not None:
            yield batch

    def to_numpy(self):
        """All columns as arrays of numpy, by their paths."""
        import numpy
        parts = {}
        for batch in self.batches():
            for path in batch.columns():
                parts.setdefault(path, []).append(batch.column(path))
        return {path: numpy.concatenate(arrays) for path, arrays in parts.items()}

    def to_pandas(self):
        """A data frame: numbers that can be null as pandas' own integers, words as categories."""
        import numpy
        import pandas
        from pandas.api.types import union_categoricals
        parts = {}
        for batch in self.batches():
            for path in batch.columns():
                parts.setdefault(path, []).append(_series(pandas, numpy, batch, path))
        frame = {}
        for path, arrays in parts.items():
            if isinstance(arrays[0], pandas.Categorical):
                frame[path] = union_categoricals(arrays)
            elif len(arrays) == 1:
                frame[path] = arrays[0]
            else:
                masked = any(isinstance(it, pandas.api.extensions.ExtensionArray) for it in arrays)
                frame[path] = pandas.concat([pandas.Series(it, copy=False) for it in arrays], ignore_index=True) if masked \
                    else numpy.concatenate(arrays)
        return pandas.DataFrame(frame, copy=False)


def _series(pandas, numpy, batch, path):
    try:
        codes, words = batch.words(path)
        return pandas.Categorical.from_codes(codes, words)
    except TypeError:
        pass
    values, valid = batch.column(path), batch.valid(path)
    if values.dtype.kind in "iu":  # of one type whether the batch has nulls or not
        return pandas.arrays.IntegerArray(values, numpy.zeros(len(values), bool) if valid is None else ~valid)
    return values


class Capture:
    """One capture or several. Iterating gives the messages that are sound, in their order."""

    def __init__(self, paths, policy, framing, ports):
        self._paths, self._policy, self._network = paths, policy, (framing, list(ports))
        for path in paths:
            _core.Stream([path], "messages", ["packet"], None, False, policy, 1, *self._network).next()

    def __iter__(self):
        return self.messages()

    def messages(self, names=()):
        """Iterates over messages of these names, or all; `faults` of the iterator counts the bad ones."""
        return _Iterator(_core.Messages(self._paths, self._policy, *self._network, _list(names)))

    def table(self, name, columns=(), *, decimals=None, secrets=False, batch_rows=65536):
        """The messages of a type as columns, or "messages" or "faults". `columns` are paths, as in "contents.price"; only
        what they need is read. Prices and amounts are decimal numbers of `decimals`, or integers."""
        if name not in ("messages", "faults"):
            name = _core.message(name)[0]
        return Table(self._paths, name, list(columns), decimals, secrets, self._policy, batch_rows, self._network)

    @property
    def faults(self):
        """What is wrong with the capture, as a list of dicts."""
        rows = []
        for batch in self.table("faults").batches():
            columns = {path: batch.column(path) if path in ("packet", "offset") else _objects(batch, path)
                       for path in batch.columns()}
            rows += [{path: _plain(values[i]) for path, values in columns.items()} for i in range(len(batch))]
        return rows


def _list(names):
    return [names] if isinstance(names, str) else list(names)


def _objects(batch, path):
    values, valid = batch.column(path), batch.valid(path)
    return values if valid is None else [value if there else None for value, there in zip(values, valid)]


def _plain(value):
    return int(value) if hasattr(value, "dtype") and value.dtype.kind in "iu" else value


def open(path, policy="whole", framing=None, ports=(), *, start=None):
    """Opens a capture, several (a list of paths), or those in a folder. Of networks, the framing tells how messages stand in
    streams and datagrams, those of the ports alone if any are named. Raises CaptureError, or ValueError of a framing.

    Or a bus ("mem:prices", "nats://host:4222"), or the folder of a journal that is being written, if it is said where to start:
    with the next message ("live", as buses do unless told), the oldest that is kept ("oldest"), or a sequence. Raises BusError.
    """
    if start is not None or isinstance(path, str) and path.startswith(("mem:", "nats:")):
        return Bus(os.fspath(path), policy, "live" if start is None else start)
    paths = [os.fspath(it) for it in path] if isinstance(path, (list, tuple)) else [os.fspath(path)]
    if len(paths) == 1 and os.path.isdir(paths[0]):
        names = (".pcap", ".pcapng", ".erf", ".pcap.zst", ".pcapng.zst", ".pcap.gz", ".pcapng.gz")
        paths = sorted(os.path.join(paths[0], it) for it in os.listdir(paths[0]) if it.endswith(names))
    return Capture(paths, policy, framing, ports)


def decode(name_or_id, body, policy="whole"):
    """The message with that body, as a Record. Raises DecodeError."""
    return Record(_core.decode(name_or_id, bytes(body), policy))


def verify(name_or_id, body, policy="whole"):
    """None if the bytes are a sound body of that message, else the Fault."""
    fault = _core.verify(name_or_id, bytes(body), policy)
    return None if fault is None else Fault(*fault)


def encode(name_or_id, fields):
    """The body of a message with these fields, all of which must be there. Raises EncodeError."""
    return _core.encode(name_or_id, json.dumps(_json(fields)))


def _json(value):
    if isinstance(value, dict):
        return {name: _json(it) for name, it in value.items()}
    if isinstance(value, (list, tuple)):
        return [_json(it) for it in value]
    if isinstance(value, (bytes, bytearray)):
        value = bytes(value).decode("utf-8", "surrogateescape")
    if isinstance(value, str):  # bytes that are no text stand as \xHH
        value = "".join(f"\\x{ord(c) - 0xDC00:02x}" if 0xDC80 <= ord(c) <= 0xDCFF else c for c in value.replace("\\", "\\\\"))
    elif hasattr(value, "item"):
        value = value.item()  # of numpy
    return value


def describe(name_or_id):
    """What a message consists of: a dict of its name, its doc and its fields."""
    return _core.describe(name_or_id)


def messages():
    """The names of all messages, with their identifiers."""
    return dict(_core.messages())
