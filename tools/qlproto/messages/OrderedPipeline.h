// Jobs filled in order on the calling thread, worked on by several threads, and finished in order on the calling
// thread. Memory is bounded: a few jobs are reused for ever.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace qlproto {

template <class Job>
class OrderedPipeline {
  public:
    explicit OrderedPipeline(std::size_t workers) : _workers(workers), _slots(3 * workers) {}

    /// `fill(job)` is asked for jobs until it returns false; the job then counts for nothing. `isReady()` tells whether
    /// filling would not have to wait for input: if it would, what is there is finished first. `work(job, worker)` runs
    /// on thread `worker`, from 0. `finish(job)` gets the jobs in order; false ends all. What any of them throws is
    /// thrown here, that of `work` in its job's turn.
    template <class IsReady, class Fill, class Work, class Finish>
    void run(IsReady isReady, Fill fill, Work work, Finish finish) {
        std::vector<std::jthread> threads;
        const Stopper stopper{*this}; // stops them before they are joined
        for (std::size_t i = 0; i < _workers; ++i) threads.emplace_back([this, i, &work] { labour(i, work); });

        bool isMore = true;
        std::exception_ptr error; // of filling: what was filled before is finished first
        uint64_t finished = 0;
        for (;;) {
            const bool hasRoom = _filled - finished < _slots.size(); // only this thread changes either
            if (isMore && hasRoom && (finished == _filled || isReady())) {
                try {
                    isMore = fill(slot(_filled).job);
                } catch (...) {
                    isMore = false;
                    error = std::current_exception();
                }
                if (isMore) release();
                continue;
            }
            if (finished == _filled) break;
            Slot& next = slot(finished);
            await(next);
            if (next.error) std::rethrow_exception(next.error);
            if (!finish(next.job)) return;
            ++finished;
        }
        if (error) std::rethrow_exception(error);
    }

  private:
    struct Slot {
        Job job;
        bool isDone = false;
        std::exception_ptr error;
    };
    struct Stopper {
        OrderedPipeline& pipeline;
        ~Stopper() {
            const std::lock_guard lock(pipeline._mutex);
            pipeline._isStopped = true;
            pipeline._work.notify_all();
        }
    };

    Slot& slot(uint64_t number) { return _slots[number % _slots.size()]; }

    void release() {
        const std::lock_guard lock(_mutex);
        slot(_filled).isDone = false;
        ++_filled;
        _work.notify_one();
    }

    void await(const Slot& next) {
        std::unique_lock lock(_mutex);
        _done.wait(lock, [&] { return next.isDone; });
    }

    template <class Work>
    void labour(std::size_t worker, Work& work) {
        for (;;) {
            std::unique_lock lock(_mutex);
            _work.wait(lock, [this] { return _isStopped || _taken < _filled; });
            if (_isStopped) return;
            Slot& mine = slot(_taken++);
            lock.unlock();
            try {
                work(mine.job, worker);
            } catch (...) {
                mine.error = std::current_exception();
            }
            lock.lock();
            mine.isDone = true;
            _done.notify_one();
        }
    }

    const std::size_t _workers;
    std::vector<Slot> _slots;
    std::mutex _mutex;
    std::condition_variable _work, _done;
    uint64_t _filled = 0; ///< jobs filled so far; with `_taken` guarded by the mutex
    uint64_t _taken = 0;
    bool _isStopped = false;
};

} // namespace qlproto
