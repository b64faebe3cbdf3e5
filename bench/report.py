"""Turns build/bench/results.json into table.md and plot.svg beside it, and with --record puts both into docs/.

Times are medians of the processor time over all repetitions. A ratio is the peer's time divided by ours: above 1, ours is
the faster.
"""

import argparse
import json
import math
import pathlib
import statistics

OURS = "QLProtocol"
# Peers that check what they read, or the bounds of what they write.
CHECKING = ("protobuf", "msgpack-c", "FlatBuffers", "QLProtocol")
# What has tables of its own.
APART = ("module", "session")
# What stands before a reader's first field: peers that read in place decode nothing beforehand, so theirs is compared
# with decoding and reading, too.
IN_PLACE = ("fixed layout read every field", "FlatBuffers verify and read every field", "Cap'n Proto read every field")


class Results:
    """Medians by shape, operation and who, in the order of the table whatever the order of the runs."""

    def __init__(self, path):
        data = json.loads(path.read_text())
        self.context = data["context"]
        self.time, self.bytes, self.spread = {}, {}, []
        for run in sorted(data["benchmarks"], key=lambda run: run["family_index"]):
            if run.get("aggregate_name") == "cv" and not run["run_name"].endswith("/manual_time"):
                self.spread.append(run["cpu_time"])
            if run.get("aggregate_name") != "median":
                continue
            shape, operation, who = run["run_name"].split("/", 2)
            key = shape, operation, who.removesuffix("/iterations:1/manual_time")
            # What is timed by hand has a processor time that tells nothing.
            self.time[key] = run["cpu_time" if key[2] == who else "real_time"]
            if "bytes" in run:
                self.bytes[key] = run["bytes"]
        self.shapes = list(dict.fromkeys(shape for shape, _, _ in self.time if shape not in APART))

    def operations(self):
        return list(dict.fromkeys(o for shape, o, _ in self.time if shape not in APART))

    def who(self, operation, shapes=None):
        return list(dict.fromkeys(who for shape, o, who in self.time
                                  if o == operation and shape in (shapes or self.shapes)))

    def row(self, operation, who):
        return [self.time.get((shape, operation, who)) for shape in self.shapes]


def number(value):
    if value is None:
        return ""
    return f"{value:.0f}" if value >= 100 else f"{value:.1f}"


def ratios(peer, ours):
    return [p / o if p and o else None for p, o in zip(peer, ours)]


def table(head, rows):
    lines = ["| " + " | ".join(head) + " |", "|---" + "|---:" * (len(head) - 1) + "|"]
    return "\n".join(lines + ["| " + " | ".join(row) + " |" for row in rows]) + "\n"


def ratio_table(results, base, peers):
    """Peers come as (operation, who)."""
    ours = results.row(base, OURS)
    rows = [[f"**{OURS}: {base}, ns**"] + [number(v) for v in ours] + [""]]
    for operation, who in peers:
        ratio = ratios(results.row(operation, who), ours)
        if who.startswith(OURS):  # an operation of ours besides the one that all are set against
            who = f"{operation}: {who}"
        known = [v for v in ratio if v]
        rows.append([who] + [f"{v:.2f}" if v else "" for v in ratio] + [f"{min(known):.2f}" if known else ""])
    return table([""] + results.shapes + ["lowest"], rows)


def machine():
    for line in pathlib.Path("/proc/cpuinfo").read_text().splitlines():
        if line.startswith("model name"):
            return line.split(":", 1)[1].strip()
    return "unknown processor"


def summary(results):
    """Ratios of ours to ours: what safety costs, and what need not be decoded."""
    rows = []
    for title, above, below in (
        ("safe decode ÷ decode", ("safe decode", OURS), ("decode", OURS)),
        ("safe encode ÷ encode", ("safe encode", OURS), ("encode", OURS)),
        ("verify ÷ decode", ("verify", OURS), ("decode", OURS)),
        ("peek ÷ decode", ("peek", OURS), ("decode", OURS)),
    ):
        ratio = ratios(results.row(*above), results.row(*below))
        known = [v for v in ratio if v]
        if known:
            rows.append([title] + [f"{v:.2f}" if v else "" for v in ratio]
                        + [f"{statistics.geometric_mean(known):.2f}", f"{max(known):.2f}"])
    return table([""] + results.shapes + ["mean", "highest"], rows)


def session_table(results):
    rows = [[who, operation, number(results.time["session", operation, who]),
             number(results.bytes.get(("session", operation, who)))]
            for operation in ("safe encode", "safe decode", "print") for who in results.who(operation, ["session"])]
    return table(["", "", "ns a message", "bytes a message"], rows)


def write_table(results, args, path):
    context = results.context
    bmi2 = " bmi2 " in pathlib.Path("/proc/cpuinfo").read_text()
    out = [
        f"{machine()}, {context['num_cpus']} processors, BMI2 {'present' if bmi2 else 'absent'}; {args.compiler}; "
        f"{context['date'][:10]}; load at start {context['load_avg'][0]:.2f}. Medians of {args.repetitions} repetitions, "
        f"median coefficient of variation {100 * statistics.median(results.spread):.1f} %.\n"
    ]

    def section(title, body):
        out.append(f"### {title}\n\n{body}")

    def rows_of(base, *operations):
        return [(o, who) for o in operations for who in results.who(o) if (o, who) != (base, OURS)]

    def checking(rows):
        return [(o, who) for o, who in rows if who.startswith(CHECKING) and who not in IN_PLACE]

    in_place = [(o, who) for o, who in rows_of("", "decode") if who in IN_PLACE]
    section("What safety costs, ours ÷ ours", summary(results))
    section("Safe decode into a fresh message: peer’s time ÷ ours",
            ratio_table(results, "safe decode", checking(rows_of("safe decode", "safe decode", "decode"))))
    section("Peers that verify and read in place, time ÷ ours safely decoded and read",
            ratio_table(results, "safe decode+read", [row for row in in_place if "verify" in row[1]]))
    section("Safe encode: peer’s time ÷ ours",
            ratio_table(results, "safe encode", checking(rows_of("safe encode", "safe encode", "encode"))))
    section("One field of a body: peer’s time ÷ ours", ratio_table(results, "peek", rows_of("peek", "peek")))
    for operation, others in (("safe decode", "decode"), ("safe decode+read", "decode"), ("safe encode", "encode")):
        section(f"Caches cold, {operation}: peer’s time ÷ ours",
                ratio_table(results, f"cold {operation}", rows_of("", f"cold {others}", "cold harness")))
    section(f"A session, {context['session']}", session_table(results))
    section("Encode: peer’s time ÷ ours", ratio_table(results, "encode", rows_of("encode", "encode")))
    section("Decode into a fresh message: peer’s time ÷ ours",
            ratio_table(results, "decode", rows_of("decode", "decode")))
    section("Peers that read in place, time ÷ ours decoded and read", ratio_table(results, "decode+read", in_place))

    sizes = [[who] + [number(results.bytes.get((shape, "encode", who))) for shape in results.shapes]
             for who in results.who("encode") if any((s, "encode", who) in results.bytes for s in results.shapes)]
    section("Bytes on the wire, mean", table([""] + results.shapes, sizes))

    rows = [[f"{operation}: {who}"] + [number(v) for v in results.row(operation, who)]
            for operation in results.operations() for who in results.who(operation)]
    section("All times, ns", table([""] + results.shapes, rows))

    rows = [[f"{operation}: {who}", f"{t:.1f} ns"] for (shape, operation, who), t in results.time.items() if shape == "module"]
    rows.append(["initialize(), cold", f"{float(context['initialize_us']):.0f} µs"])
    rows.append(["code of the library (.text)", f"{int(args.text) / 1024:.0f} KiB"])
    section("The module", table(["", ""], rows))
    path.write_text("\n".join(out))


# --- the plot: panels of ratios over the messages, on a logarithmic scale, ours at 1

COLOURS = ["#4c78a8", "#72b7b2", "#f58518", "#54a24b", "#b279a2", "#9d755d", "#e45756"]
PANEL = (
    ("Safe decode", "safe decode", "decode",
     ["protobuf parse, object reused", "protobuf parse, arena", "msgpack-c unpack"]),
    ("Safe decode, every field read", "safe decode+read", "decode", ["FlatBuffers verify and read every field"]),
    ("Safe encode", "safe encode", "encode",
     ["protobuf serialise", "protobuf fill and serialise", "FlatBuffers build", "msgpack-c pack"]),
    ("Encode, trusting", "encode", "encode",
     ["plain byte loop", "fixed layout", "protobuf serialise", "protobuf fill and serialise", "FlatBuffers build",
      "Cap'n Proto flat", "msgpack-c pack"]),
    ("Decode into a fresh message, trusting", "decode", "decode",
     ["plain byte loop", "fixed layout read every field", "protobuf parse, object reused", "protobuf parse, arena",
      "FlatBuffers verify and read every field", "Cap'n Proto read every field", "msgpack-c unpack"]),
)


def panel(results, title, base, operation, peers, left, top):
    width, height, low, high = 640, 300, 0.05, 40.0

    def y(value):
        share = math.log(value / low) / math.log(high / low)
        return top + height * (1 - min(max(share, 0), 1))

    out = [f'<text x="{left}" y="{top - 14}" font-weight="bold">{title}: peer’s time ÷ ours</text>']
    for tick in (0.05, 0.1, 0.2, 0.5, 1, 2, 5, 10, 20, 40):
        bold = tick == 1
        out.append(f'<line x1="{left}" x2="{left + width}" y1="{y(tick):.1f}" y2="{y(tick):.1f}" '
                   f'stroke="{"#000" if bold else "#ddd"}"/>')
        out.append(f'<text x="{left - 6}" y="{y(tick) + 4:.1f}" text-anchor="end">{tick:g}</text>')
    step = width / max(len(results.shapes), 1)
    for i, shape in enumerate(results.shapes):
        out.append(f'<text x="{left + step * (i + 0.5):.1f}" y="{top + height + 18}" text-anchor="middle">{shape}</text>')
    ours = results.row(base, OURS)
    bar = step * 0.8 / len(peers)
    for k, (who, colour) in enumerate(zip(peers, COLOURS)):
        for i, ratio in enumerate(ratios(results.row(operation, who), ours)):
            if ratio is None:
                continue
            x = left + step * (i + 0.1) + bar * k
            high_y, low_y = sorted((y(ratio), y(1)))
            out.append(f'<rect x="{x:.1f}" y="{high_y:.1f}" width="{bar - 1:.1f}" height="{max(low_y - high_y, 1):.1f}" '
                       f'fill="{colour}"><title>{shape_title(results.shapes[i], who, ratio)}</title></rect>')
        column, line = k % 4, k // 4
        out.append(f'<rect x="{left + column * 145}" y="{top + height + 34 + 20 * line}" width="10" height="10" fill="{colour}"/>')
        out.append(f'<text x="{left + column * 145 + 14}" y="{top + height + 43 + 20 * line}" font-size="10">'
                   f'{short(who)}</text>')
    return out


def short(who):
    return who.replace(" read every field", " read").replace(" and read", ", read").replace(", object reused", ", reused")


def shape_title(shape, who, ratio):
    return f"{shape}, {who}: {ratio:.2f}"


def write_plot(results, args, path):
    height = 410 * len(PANEL) + 30
    out = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 740 {height}" font-family="sans-serif" font-size="11">',
           f'<rect width="740" height="{height}" fill="#fff"/>']
    for i, what in enumerate(PANEL):
        out += panel(results, *what, 60, 40 + 410 * i)
    out.append(f'<text x="60" y="{height - 12}" fill="#666">Bars above 1: {OURS} is faster. {machine()}; {args.compiler}.</text></svg>')
    path.write_text("\n".join(out) + "\n")


def record(folder, docs):
    """Replaces the figures in performance.md, from the heading on to the next one of its level, and the plot."""
    page = docs / "performance.md"
    before, rest = page.read_text().split("## Figures\n", 1)
    after = rest[rest.index("\n## "):]
    intro, tables = (folder / "table.md").read_text().split("\n", 1)
    picture = "![Peers' times divided by ours](performance.svg)\n"
    page.write_text(f"{before}## Figures\n\n{intro}\n\n{picture}{tables}{after}")
    (docs / "performance.svg").write_text((folder / "plot.svg").read_text())


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--compiler", default="")
    parser.add_argument("--repetitions", default="")
    parser.add_argument("--text", default="0", help="size of the library's code in bytes")
    parser.add_argument("--record", type=pathlib.Path, metavar="DOCS", help="the folder of performance.md")
    args = parser.parse_args()
    results = Results(args.folder / "results.json")
    write_table(results, args, args.folder / "table.md")
    write_plot(results, args, args.folder / "plot.svg")
    if args.record:
        record(args.folder, args.record)


if __name__ == "__main__":
    main()
