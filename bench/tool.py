"""Measures qlproto on a big capture, in several containers and over a network, against reading the file, capinfos, and tshark
with the plug-in; writes a table.

Every command runs as a process of its own with its output thrown away, three times; the median counts. tshark reads a
capture of the size given for it, because it takes minutes for what the tool does in seconds; all are compared by bytes a
second. Below stand the same session's times against each other, with what they should be at least or at most.
"""

import argparse
import json
import os
import pathlib
import statistics
import subprocess
import sys
import time


PCAP, PCAPNG = "`qlproto stats`", "`qlproto stats`, pcapng"
TCP, ZSTD = "`qlproto stats --framing`, over Ethernet and TCP", "`qlproto stats`, zstd"
ZCAT = "`zstd -dc FILE \\| wc -c`"
END = "`qlproto decode --from`, the end by an index"


def measure(command, repetitions=3):
    """Seconds and the highest memory in bytes of a shell command."""
    seconds, memory = [], 0
    for _ in range(repetitions):
        start = time.monotonic()
        process = subprocess.Popen(["sh", "-c", command], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        _, status, usage = os.wait4(process.pid, 0)
        seconds.append(time.monotonic() - start)
        memory = max(memory, usage.ru_maxrss * 1024)
        if status != 0:
            sys.exit(f"failed: {command}")
    return statistics.median(seconds), memory


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("tool")
    parser.add_argument("folder", type=pathlib.Path, help="for captures and the table")
    parser.add_argument("megabytes", type=int)
    parser.add_argument("analyser_megabytes", type=int)
    args = parser.parse_args()

    def capture(megabytes):
        """A capture of about that size; a message of the simulated session takes some 134 bytes of it."""
        path = args.folder / f"session-{megabytes}.pcap"
        if not path.exists():
            subprocess.run([args.tool, "generate", "--messages", str(megabytes * 1_000_000 // 134), "--seed", "7", "-o", path],
                           check=True, stderr=subprocess.DEVNULL)
        return path

    def converted(name, *options):
        """The big capture in another form."""
        path = args.folder / f"session-{args.megabytes}{name}"
        if not path.exists():
            subprocess.run([args.tool, "convert", big, "-o", path, *options], check=True, stderr=subprocess.DEVNULL)
        return path

    big, small = capture(args.megabytes), capture(args.analyser_megabytes)
    pcapng, compressed = converted(".pcapng"), converted(".pcap.zst")
    tcp = converted("-tcp.pcap", "--over", "tcp", "--framing", "frames", "--connections", "8")
    subprocess.run([args.tool, "index", big], check=True, stderr=subprocess.DEVNULL)
    last = json.loads(pathlib.Path(f"{big}.index").read_text().splitlines()[-1])[5]  # the latest time
    end = f"{last // 10**9}.{last % 10**9:09}"
    plugin = args.folder / "qlprotocol.lua"
    subprocess.run([args.tool, "dissector", "-o", plugin], check=True)
    rows = [
        ("`cat FILE \\| wc -c`", f"cat {big} | wc -c", big, 3),
        ("`qlproto decode`", f"{args.tool} decode {big}", big, 3),
        ("`qlproto decode --format json`", f"{args.tool} decode --format json {big}", big, 3),
        ("`qlproto verify`", f"{args.tool} verify {big}", big, 3),
        (PCAP, f"{args.tool} stats {big}", big, 3),
        (PCAPNG, f"{args.tool} stats {pcapng}", pcapng, 3),
        (TCP, f"{args.tool} stats --framing frames {tcp}", tcp, 3),
        (ZSTD, f"{args.tool} stats {compressed}", compressed, 3),
        (ZCAT, f"zstd -dc {compressed} | wc -c", compressed, 3),
        (END, f"{args.tool} decode --from {end} {big}", big, 3),
        ("`qlproto latency`", f"{args.tool} latency {big}", big, 3),
        ("`capinfos`", f"capinfos {big}", big, 3),
        ("`tshark`, one line a packet", f"tshark -X lua_script:{plugin} -r {small}", small, 1),
        ("`tshark -T json`", f"tshark -X lua_script:{plugin} -r {small} -T json", small, 1),
    ]
    table = ["| | capture, MB | seconds | MB/s | memory, MB |", "|---|---:|---:|---:|---:|"]
    times = {}
    for name, command, path, repetitions in rows:
        seconds, memory = measure(command, repetitions)
        times[name] = seconds
        size = path.stat().st_size / 1e6
        # A pipe's memory is that of its last part only.
        shown = "" if "|" in command else f"{memory / 1e6:.0f}"
        table.append(f"| {name} | {size:.0f} | {seconds:.2f} | {size / seconds:.1f} | {shown} |")
        print(table[-1], file=sys.stderr)
    table += ["", "| | measured | should be |", "|---|---:|---:|"]
    for what, value, goal in [
        ("rate of `stats`, pcapng against pcap", times[PCAP] / times[PCAPNG], "0.9 or more"),
        ("rate of `stats`, TCP against pcap", times[PCAP] / times[TCP], "0.5 or more"),
        ("rate of `stats`, zstd against decompressing alone", times[ZCAT] / times[ZSTD], "0.8 or more"),
        ("seconds to the end by the index", times[END], "0.1 or less"),
    ]:
        table.append(f"| {what} | {value:.2f} | {goal} |")
        print(table[-1], file=sys.stderr)
    (args.folder / "table.md").write_text("\n".join(table) + "\n")
    print("\n".join(table))


if __name__ == "__main__":
    main()
