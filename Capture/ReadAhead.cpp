#include "Capture/ReadAhead.h"

#include <algorithm>
#include <csignal>
#include <iterator>
#include <utility>

namespace Capture {

void ReadAhead::start() {
    // Signals go to the threads that expect them.
    sigset_t all, old;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &old);
    _thread = std::thread([this] { work(); });
    pthread_sigmask(SIG_SETMASK, &old, nullptr);
}

ReadAhead::~ReadAhead() {
    if (!_thread.joinable()) return;
    {
        const std::lock_guard lock(_mutex);
        _isStopped = true;
    }
    _changed.notify_all();
    _thread.join();
}

void ReadAhead::work() {
    for (;;) {
        std::unique_lock lock(_mutex);
        _changed.wait(lock, [&] { return _isStopped || _filled - _emptied < CHUNKS; });
        if (_isStopped) return;
        Chunk& chunk = _chunks[_filled % CHUNKS];
        lock.unlock();
        try {
            chunk.bytes.resize(CHUNK);
            chunk.size = _source->read(chunk.bytes.data(), CHUNK);
        } catch (...) {
            _failure = std::current_exception();
            chunk.size = 0;
        }
        chunk.faults = std::exchange(_source->faults, {});
        const bool isEnd = chunk.size == 0;
        lock.lock();
        ++_filled;
        lock.unlock();
        _changed.notify_all();
        if (isEnd) return;
    }
}

void ReadAhead::take(std::deque<SourceFault>& from) {
    std::ranges::move(from, std::back_inserter(faults));
    from.clear();
}

std::size_t ReadAhead::read(char* bytes, std::size_t size) {
    if (_direct < CHUNK) {
        const std::size_t got = _source->read(bytes, size);
        take(_source->faults);
        _direct += got;
        return got;
    }
    if (!_thread.joinable()) start();
    std::unique_lock lock(_mutex);
    _changed.wait(lock, [&] { return _filled != _emptied; });
    lock.unlock();
    Chunk& chunk = _chunks[_emptied % CHUNKS];
    take(chunk.faults);
    if (chunk.size == 0) { // stays, for those who ask once more
        if (_failure) std::rethrow_exception(_failure);
        return 0;
    }
    const std::size_t got = std::min(size, chunk.size - _used);
    std::copy_n(chunk.bytes.data() + _used, got, bytes);
    _used += got;
    if (_used < chunk.size) return got;
    _used = 0;
    lock.lock();
    ++_emptied;
    lock.unlock();
    _changed.notify_all();
    return got;
}

} // namespace Capture
