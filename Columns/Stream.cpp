// The scan as a stream: threads work off batches, which are handed over in their order.
#include <cerrno>
#include <condition_variable>
#include <exception>
#include <map>
#include <thread>

#include "Columns/Scan.h"

namespace Columns {

namespace {

class Stream {
  public:
    Stream(std::vector<std::string> captures, const Inspect::Protocol& protocol, Request request)
        : _scan(std::move(captures), protocol, std::move(request)), _first(_scan) {}

    ~Stream() {
        {
            const std::lock_guard lock(_mutex);
            _isStopped = true;
        }
        _changed.notify_all();
    }

    void schema(ArrowSchema& to) const { _first.exportSchema(to); }

    /// The next batch with rows; one that is released at the end.
    void next(ArrowArray& to) {
        to.release = nullptr;
        if (_threads.empty()) start();
        std::unique_lock lock(_mutex);
        for (;;) {
            _changed.wait(lock, [&] { return _done.contains(_next) || _working == 0; });
            const auto found = _done.find(_next);
            if (found == _done.end()) return;
            if (found->second.error) std::rethrow_exception(found->second.error);
            found->second.moveTo(to);
            _done.erase(found);
            ++_next;
            _changed.notify_all();
            if (to.length != 0) return;
            to.release(&to);
        }
    }

    std::string lastError;

  private:
    struct Done {
        ArrowArray array{};
        std::exception_ptr error;

        Done() = default;
        Done(const Done&) = delete;
        Done& operator=(const Done&) = delete;
        ~Done() {
            if (array.release != nullptr) array.release(&array);
        }
        void moveTo(ArrowArray& to) {
            to = array;
            array.release = nullptr;
        }
    };

    void start() {
        const unsigned threads = std::max(1u, std::thread::hardware_concurrency());
        const std::lock_guard lock(_mutex);
        for (unsigned i = 0; i < threads; ++i) {
            _threads.emplace_back([this] { work(); });
            ++_working;
        }
    }

    void work() {
        {
            Scan::Worker worker(_scan);
            while (step(worker)) {
            }
        }
        const std::lock_guard lock(_mutex);
        --_working;
        _changed.notify_all();
    }

    bool step(Scan::Worker& worker) {
        std::exception_ptr error;
        try {
            if (!worker.next()) return false;
        } catch (...) {
            error = std::current_exception(); // told in the batch's turn
        }
        const uint64_t number = worker.batch();
        std::unique_lock lock(_mutex);
        // A batch waits until those before it are nearly all taken. The first of those never waits.
        _changed.wait(lock, [&] { return _isStopped || number < _next + _threads.size(); });
        if (_isStopped) return false;
        Done& done = _done[number];
        done.error = error;
        if (!error) worker.exportBatch(done.array);
        _changed.notify_all();
        return true;
    }

    Scan _scan;
    Scan::Worker _first; ///< tells the schema
    std::mutex _mutex;   ///< guards the following
    std::condition_variable _changed;
    std::map<uint64_t, Done> _done;
    uint64_t _next = 0;
    size_t _working = 0;
    bool _isStopped = false;
    std::vector<std::jthread> _threads; // joined before all else goes
};

Stream& of(ArrowArrayStream* stream) { return *static_cast<Stream*>(stream->private_data); }

/// Does it, or keeps what went wrong.
template <class Do>
int attempt(ArrowArrayStream* stream, Do&& it) {
    try {
        it(of(stream));
        return 0;
    } catch (const std::bad_alloc& error) {
        of(stream).lastError = error.what();
        return ENOMEM;
    } catch (const std::exception& error) {
        of(stream).lastError = error.what();
        return EIO;
    }
}

} // namespace

void exportStream(std::vector<std::string> captures, const Inspect::Protocol& protocol, Request request,
                  ArrowArrayStream& to) {
    auto stream = std::make_unique<Stream>(std::move(captures), protocol, std::move(request));
    to = {.get_schema = [](ArrowArrayStream* it,
                           ArrowSchema* out) { return attempt(it, [&](Stream& from) { from.schema(*out); }); },
          .get_next = [](ArrowArrayStream* it,
                         ArrowArray* out) { return attempt(it, [&](Stream& from) { from.next(*out); }); },
          .get_last_error =
              [](ArrowArrayStream* it) { return of(it).lastError.empty() ? nullptr : of(it).lastError.c_str(); },
          .release =
              [](ArrowArrayStream* it) {
                  delete &of(it);
                  it->release = nullptr;
              },
          .private_data = stream.get()};
    stream.release();
}

} // namespace Columns
