"""Measures SQL over a capture: three questions by `qlproto query`, and the same over the JSON of `qlproto decode` by the same engine;
export; what columns cost in C++ and in Python, and json.loads of the same messages. Prints a table.

    cmake --build --preset release --target qlproto qlcolumns qlproto_python
    python3 bench/sql.py build/release FOLDER MESSAGES

The engine has to be there: scripts/setup sql. The JSON takes some 750 bytes a message in FOLDER, and tshark reads a hundredth.
"""
import os
import subprocess
import sys
import time

QUESTIONS = {
    "count": ("SELECT name, count(*) FROM messages GROUP BY name",
              "SELECT message, count(*) FROM lines GROUP BY message"),
    "p99 by hop": (
        "SELECT feed, hop, quantile_cont(took, 0.99) FROM (SELECT mvd.fmID.feedID AS feed, unnest(['wire', 'handler', 'server']) "
        "AS hop, unnest([epoch_ns(mvd.timeArrival) - epoch_ns(mvd.timeExchange), epoch_ns(mvd.timeHandler) - "
        "epoch_ns(mvd.timeArrival), epoch_ns(mvd.timeApiServer) - epoch_ns(mvd.timeHandler)]) AS took FROM MktData) "
        "GROUP BY feed, hop",
        "SELECT feed, hop, quantile_cont(took, 0.99) FROM (SELECT feed, unnest(['wire', 'handler', 'server']) AS hop, "
        "unnest([a - e, h - a, s - h]) AS took FROM (SELECT (body->>'$.mvd.fmID.feedID')::INT AS feed, "
        "NULLIF((body->>'$.mvd.timeExchange')::BIGINT, 0) AS e, NULLIF((body->>'$.mvd.timeArrival')::BIGINT, 0) AS a, "
        "NULLIF((body->>'$.mvd.timeHandler')::BIGINT, 0) AS h, NULLIF((body->>'$.mvd.timeApiServer')::BIGINT, 0) AS s "
        "FROM lines WHERE message = 'MktDataMessage')) GROUP BY feed, hop"),
    "asof": (
        "SELECT count(*), avg(o.price - q.price) FROM "
        "(SELECT _time AS t, contents.feedID AS f, contents.marketID AS m, contents.price AS price FROM SubmitOrder) o ASOF JOIN "
        "(SELECT _time AS t, mvd.fmID.feedID AS f, mvd.fmID.marketID AS m, mvd.mdEntryList[1].price AS price FROM MktData) q "
        "ON o.f = q.f AND o.m = q.m AND o.t >= q.t",
        "SELECT count(*), avg(o.price - q.price) FROM "
        "(SELECT time AS t, (body->>'$.contents.feedID')::INT AS f, (body->>'$.contents.marketID')::INT AS m, "
        "TRY_CAST(body->>'$.contents.price' AS BIGINT) AS price FROM lines WHERE message = 'SubmitOrderMessage') o ASOF JOIN "
        "(SELECT time AS t, (body->>'$.mvd.fmID.feedID')::INT AS f, (body->>'$.mvd.fmID.marketID')::INT AS m, "
        "TRY_CAST(body->>'$.mvd.mdEntryList[0].price' AS BIGINT) AS price FROM lines WHERE message = 'MktDataMessage') q "
        "ON o.f = q.f AND o.m = q.m AND o.t >= q.t"),
}
LINES = "WITH lines AS (SELECT * FROM read_json('{}', format = 'newline_delimited', " \
        "columns = {{time: 'DECIMAL(20,9)', message: 'VARCHAR', body: 'JSON'}})) "


def run(what, *command, output=subprocess.DEVNULL, environment=None):
    """Tells seconds, processor time and the most memory of a command; returns the seconds."""
    start = time.monotonic()
    process = subprocess.Popen(command, stdout=output, env={**os.environ, **(environment or {})})
    _, status, usage = os.wait4(process.pid, 0)
    seconds = time.monotonic() - start
    if status != 0:
        sys.exit(f"failed: {command}")
    print(f"| {what} | {seconds:.2f} | {usage.ru_utime + usage.ru_stime:.2f} | {usage.ru_maxrss / 1024:.0f} |", flush=True)
    return seconds


SOME_COLUMNS = ["_time", "mvd.timeExchange", "mvd.timeApiClient", "mvd.fmID.feedID", "mvd.fmID.marketID"]
BATCHES = "import qlproto; print(sum(map(len, qlproto.open({!r}).table('MktData', {}).batches())))"
ARRAYS = "import qlproto; print(len(qlproto.open({!r}).table('MktData', {}).to_numpy()['_time']))"
# What json.loads takes of the lines of MktData, those alone.
LOADS = """
import itertools, json, time
took = count = 0
with open({!r}) as lines:
    lines = (line for line in lines if '"message":"MktDataMessage"' in line[:200])
    while some := list(itertools.islice(lines, 50000)):
        start = time.perf_counter()
        for line in some: json.loads(line)
        took += time.perf_counter() - start
        count += len(some)
print(f"json.loads of {{count}} MktData: {{took:.1f}} s")
"""


def python(what, build, script):
    return run(what, "/usr/bin/python3", "-c", script, environment={"PYTHONPATH": build + "/python"})


def columns(build, capture):
    """Rates of columns by each road."""
    for name, chosen in {"5 columns": SOME_COLUMNS, "all columns": []}.items():
        ours = run(f"{name} of MktData, C++", build + "/bench/columns/qlcolumns", capture, "MktDataMessage", *chosen)
        theirs = python(f"{name} of MktData, Python", build, BATCHES.format(capture, chosen))
        print(f"\n{name}: Python has {ours / theirs:.2f} of the rate of C++\n", flush=True)
    python("5 columns of MktData, Python, as arrays", build, ARRAYS.format(capture, SOME_COLUMNS))


def main():
    build, folder, messages = os.path.abspath(sys.argv[1]), sys.argv[2], int(sys.argv[3])
    tool = build + "/tools/qlproto/qlproto"
    os.makedirs(folder, exist_ok=True)
    capture, lines = f"{folder}/{messages}.pcap", f"{folder}/{messages}.ndjson"
    if not os.path.exists(capture):
        subprocess.run([tool, "generate", "--messages", str(messages), "--seed", "3", "-o", capture], check=True)
    print("| what | seconds | processor | MB |\n|---|---:|---:|---:|")
    ours = {name: run(f"{name}, query", tool, "query", capture, sql) for name, (sql, _) in QUESTIONS.items()}
    few = run("3 columns of MktData", tool, "query", capture,
              "SELECT max(_time), max(mvd.fmID.feedID), max(mvd.timeExchange) FROM MktData")
    every = run("all columns of MktData", tool, "query", capture, "SELECT any_value(COLUMNS(*)) FROM MktData")
    run("export, parquet", tool, "export", capture, "-o", folder + "/columns", "--format", "parquet")
    run("p99 by hop, parquet", tool, "query", capture,
        QUESTIONS["p99 by hop"][0].replace("MktData", f"read_parquet('{folder}/columns/MktData/*/*.parquet')"))
    columns(build, capture)
    small, plugin = folder + "/small.pcap", folder + "/plugin.lua"
    subprocess.run([tool, "slice", capture, "-o", small, "--first", str(messages // 100)], check=True)
    subprocess.run([tool, "dissector", "-o", plugin], check=True)
    run(f"{messages // 100} messages, tshark", "tshark", "-X", "lua_script:" + plugin, "-r", small, "-T", "fields",
        "-e", "frame.time_epoch", "-e", "ql.message", "-e", "ql.mktdata.timeExchange", "-e", "ql.mktdata.timeApiClient")
    written = 0.0
    if not os.path.exists(lines):
        with open(lines, "wb") as output:
            written = run("decode --format json", tool, "decode", "--format", "json", "--time", "raw", capture, output=output)
    theirs = {name: run(f"{name}, JSON", tool, "query", capture, LINES.format(lines) + sql)
              for name, (_, sql) in QUESTIONS.items()}
    subprocess.run(["/usr/bin/python3", "-c", LOADS.format(lines)], check=True)
    print("\nto the first answer, JSON to ours: " + ", ".join(
        f"{name} {(written + theirs[name]) / seconds:.1f}" for name, seconds in ours.items()))
    print(f"all columns to three: {every / few:.1f}")


if __name__ == "__main__":
    main()
