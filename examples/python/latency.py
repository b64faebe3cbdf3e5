"""Plots how long market data took from station to station: latency.py CAPTURE PICTURE.png"""
import sys

import matplotlib
matplotlib.use("Agg")
import matplotlib.pyplot as plt
import numpy

import qlproto

STATIONS = ["timeExchange", "timeArrival", "timeHandler", "timeEnhanced", "timeApiServer", "timeApiClient"]

if len(sys.argv) != 3:
    sys.exit(__doc__)
capture = qlproto.open(sys.argv[1])
columns = capture.table("MktData", columns=["mvd." + it for it in STATIONS]).to_numpy()

figure, axes = plt.subplots(figsize=(9, 5))
for before, after in zip(STATIONS, STATIONS[1:]):
    took = columns["mvd." + after] - columns["mvd." + before]
    took = numpy.sort(took[~numpy.isnat(took)].astype("int64")) / 1000
    if len(took) == 0:
        continue
    share = numpy.arange(1, len(took) + 1) / len(took) * 100
    p99 = numpy.percentile(took, 99)
    label = f"{before.removeprefix('time')} to {after.removeprefix('time')}: p99 {p99:,.1f} µs"
    axes.plot(took, share, label=label)
axes.set_xscale("log")
axes.set_xlabel("µs")
axes.set_ylabel("% of messages within")
axes.set_title("Market data from station to station")
axes.grid(True, alpha=0.3)
axes.legend(loc="upper left", fontsize="small")
figure.tight_layout()
figure.savefig(sys.argv[2], dpi=120)
print(f"{len(columns['mvd.timeExchange'])} messages, {sys.argv[2]}")
