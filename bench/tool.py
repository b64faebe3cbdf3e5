"""Measures qlproto on a big capture against reading the file and against tshark with the plug-in; writes a table.

Every command runs as a process of its own with its output thrown away, three times; the median counts. tshark reads a
capture of the size given for it, because it takes minutes for what the tool does in seconds; all are compared by bytes a
second.
"""

import argparse
import os
import pathlib
import statistics
import subprocess
import sys
import time


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

    big, small = capture(args.megabytes), capture(args.analyser_megabytes)
    plugin = args.folder / "qlprotocol.lua"
    subprocess.run([args.tool, "dissector", "-o", plugin], check=True)
    rows = [
        ("`cat FILE \\| wc -c`", f"cat {big} | wc -c", big, 3),
        ("`qlproto decode`", f"{args.tool} decode {big}", big, 3),
        ("`qlproto decode --format json`", f"{args.tool} decode --format json {big}", big, 3),
        ("`qlproto verify`", f"{args.tool} verify {big}", big, 3),
        ("`qlproto stats`", f"{args.tool} stats {big}", big, 3),
        ("`qlproto latency`", f"{args.tool} latency {big}", big, 3),
        ("`tshark`, one line a packet", f"tshark -X lua_script:{plugin} -r {small}", small, 1),
        ("`tshark -T json`", f"tshark -X lua_script:{plugin} -r {small} -T json", small, 1),
    ]
    table = ["| | capture, MB | seconds | MB/s | memory, MB |", "|---|---:|---:|---:|---:|"]
    for name, command, path, repetitions in rows:
        seconds, memory = measure(command, repetitions)
        size = path.stat().st_size / 1e6
        # A pipe's memory is that of its last part only.
        shown = "" if "|" in command else f"{memory / 1e6:.0f}"
        table.append(f"| {name} | {size:.0f} | {seconds:.2f} | {size / seconds:.1f} | {shown} |")
        print(table[-1], file=sys.stderr)
    (args.folder / "table.md").write_text("\n".join(table) + "\n")
    print("\n".join(table))


if __name__ == "__main__":
    main()
