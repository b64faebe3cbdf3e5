#include <atomic>
#include <stdexcept>

#include <gtest/gtest.h>

#include "tools/qlproto/messages/OrderedPipeline.h"

namespace {

struct Job {
    int number = 0;
    int result = 0;
};
const auto ready = [] { return true; };

TEST(OrderedPipeline, FinishesAllJobsInOrderWhateverTheyTake) {
    for (const size_t workers : {1u, 2u, 5u}) {
        qlproto::OrderedPipeline<Job> pipeline(workers);
        int filled = 0, finished = 0;
        std::atomic<int> worked = 0;
        pipeline.run(
            ready, [&](Job& job) { return (job.number = filled) < 500 && ++filled; },
            [&](Job& job, size_t worker) {
                EXPECT_LT(worker, workers);
                if (job.number % 7 == 0) std::this_thread::sleep_for(std::chrono::microseconds(200));
                job.result = job.number * 2;
                ++worked;
            },
            [&](const Job& job) {
                EXPECT_EQ(job.number, finished++);
                EXPECT_EQ(job.result, job.number * 2);
                return true;
            });
        EXPECT_EQ(finished, 500);
        EXPECT_EQ(worked, 500);
    }
}

TEST(OrderedPipeline, EndsWhenAskedAndWhenAnythingThrows) {
    const auto run = [](int stopAt, int throwInFill, int throwInWork, int throwInFinish) {
        qlproto::OrderedPipeline<Job> pipeline(2);
        int filled = 0, finished = 0;
        const auto mayThrow = [](int number, int at) {
            if (number == at) throw std::runtime_error("thrown");
        };
        try {
            pipeline.run(
                ready,
                [&](Job& job) {
                    mayThrow(filled, throwInFill);
                    job.number = filled++;
                    return true; // for ever
                },
                [&](Job& job, size_t) { mayThrow(job.number, throwInWork); },
                [&](const Job& job) {
                    mayThrow(job.number, throwInFinish);
                    ++finished;
                    return job.number != stopAt;
                });
        } catch (const std::runtime_error&) {
            return -finished;
        }
        return finished;
    };
    EXPECT_EQ(run(20, -1, -1, -1), 21);
    EXPECT_EQ(run(-1, -1, 20, -1), -20);
    EXPECT_EQ(run(-1, -1, -1, 20), -20);
    EXPECT_EQ(run(-1, 20, -1, -1), -20);
}

TEST(OrderedPipeline, FinishesWhatIsThereBeforeItWaitsForMore) {
    qlproto::OrderedPipeline<Job> pipeline(2);
    int filled = 0, finished = 0;
    pipeline.run([] { return false; },
                 [&](Job&) {
                     EXPECT_EQ(finished, filled);
                     return ++filled < 10;
                 },
                 [](Job&, size_t) {}, [&](const Job&) { return ++finished, true; });
    EXPECT_EQ(finished, 9);
}

} // namespace
