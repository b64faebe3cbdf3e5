// What the tool finds out about captures: the figures themselves, and the commands that tell them.
#include <random>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/ToolFolder.h"
#include "tools/qlproto/Plot.h"
#include "tools/qlproto/analysis/Histogram.h"
#include "tools/qlproto/analysis/RateSeries.h"

using namespace Quillon;
using nlohmann::json;
using qlproto::Histogram;
using qlproto::RateSeries;

namespace {

class Analysis : public testing::Test {
  protected:
    void SetUp() override { initialize(); }
    void TearDown() override { finalize(); }

    ToolFolder folder;
};

std::string timer(int32_t tqid) {
    return ToolFolder::packet<TimerMessage>([&](TimerMessage& it) { it.tqid = tqid; });
}

// --- distributions

TEST(Distribution, PercentilesAreWithinTheirBoundOfTheExactOnes) {
    std::mt19937_64 random(1);
    for (int bits : {4, 11, 12, 20, 40, 63}) {
        std::vector<int64_t> values;
        Histogram whole, one, other;
        for (int i = 0; i < 20000; ++i) {
            const auto value =
                static_cast<int64_t>(random() >> (64 - bits) >> (random() % static_cast<unsigned>(bits)));
            values.push_back(value);
            whole.add(value);
            (i % 3 == 0 ? one : other).add(value);
        }
        one.merge(other);
        std::sort(values.begin(), values.end());
        for (size_t hundredths : {1u, 5000u, 9000u, 9900u, 9990u, 10000u}) { // of a percent
            const size_t rank = (hundredths * values.size() + 9999) / 10000;
            const int64_t exact = values[rank - 1];
            const double percent = static_cast<double>(hundredths) / 100;
            const int64_t found = whole.percentile(percent);
            EXPECT_LE(std::abs(static_cast<double>(found - exact)),
                      exact < 2048 ? 0 : static_cast<double>(exact) / 2000)
                << percent << " % of " << bits << " bits";
            EXPECT_EQ(one.percentile(percent), found);
        }
        EXPECT_EQ(whole.min(), values.front());
        EXPECT_EQ(whole.max(), values.back());
        EXPECT_EQ(one.count(), values.size());
    }
}

// --- rates over time

TEST(Rate, IsTheSameInWhateverOrderAndPartsMessagesCome) {
    // One message a microsecond for a second, then two: 100,000 nanoseconds are a stretch at most.
    RateSeries forwards, parts[2];
    constexpr int64_t start = 1'709'535'600'000'000'000;
    const auto add = [](RateSeries& series, int64_t i) {
        for (int64_t n = 0; n < (i < 1'000'000 ? 1 : 2); ++n) series.add(start + i * 1000, 10);
    };
    for (int64_t i = 0; i < 2'000'000; ++i) add(forwards, i);
    for (int64_t i = 2'000'000; i-- > 0;) add(parts[i / 1000 % 2], i);
    parts[0].merge(parts[1]);

    for (const RateSeries* series : {&forwards, &parts[0]}) {
        EXPECT_NEAR(series->seconds(), 2, 0.00001);
        const auto rates = series->rates(20, series->first(), series->last());
        for (size_t i = 0; i < 20; ++i) {
            EXPECT_NEAR(rates[i].messages, i < 10 ? 1e6 : 2e6, 1e4) << i;
            EXPECT_NEAR(rates[i].bytes, i < 10 ? 1e7 : 2e7, 1e5) << i;
        }
    }
}

// --- plots

TEST(Plot, FillsCellsInEighths) {
    EXPECT_EQ(qlproto::plotCurve({0, 0.001, 4, 9, 16}, 2, "16"), "16 ┤   ▁█\n"
                                                                 " 0 │ ▁▄██\n");
    EXPECT_EQ(qlproto::plotBars({{"a", 16, "16"}, {"bc", 1, "1"}, {"d", 0, "0"}}, 20),
              " a │█████████████ 16\nbc │▉ 1\n d │ 0\n");
}

// --- the commands

TEST_F(Analysis, StatsTellsCountsRatesAndSizes) {
    folder.store("a.pcap",
                 {{1'000'000'000, timer(7)},
                  {1'500'000'000, timer(1'000'000)},
                  {2'000'000'000, timer(8)},
                  {5'000'000'000, ToolFolder::packet<PadMessage>([](PadMessage& it) { it.padding = "xyz"; })}});
    const ToolFolder::Result text = folder.run("qlproto stats a.pcap");
    EXPECT_EQ(text.exitCode, 0);
    EXPECT_EQ(text.out, "message       count  bytes  per s  min  median  p99  max\n"
                        "TimerMessage      3     11    0.8    3       3    5    5\n"
                        "PadMessage        1      7    0.2    7       7    7    7\n"
                        "all               4     18    1.0    3       3    7    7\n");

    std::istringstream plot(folder.run("COLUMNS=50 qlproto stats --plot a.pcap").out.substr(text.out.size()));
    size_t lines = 0;
    for (std::string line; std::getline(plot, line); ++lines)
        EXPECT_LE(std::count_if(line.begin(), line.end(), [](char c) { return (c & 0xC0) != 0x80; }), 50) << line;
    EXPECT_EQ(lines, 2u + 8 + 2 + 2);

    const json told = json::parse(folder.run("qlproto stats --json a.pcap").out);
    EXPECT_EQ(told["seconds"], 4.0);
    EXPECT_EQ(told["all"], json::parse(R"({"count": 4, "bytes": 18, "perSecond": 1.0,
                                           "sizes": {"min": 3, "median": 3, "p99": 7, "max": 7}})"));
    EXPECT_EQ(told["messages"]["TimerMessage"]["bytes"], 11);
    EXPECT_EQ(told["messages"].size(), 2u);
}

} // namespace
