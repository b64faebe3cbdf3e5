#include "Capture/ReadAhead.h"

#include <algorithm>
#include <csignal>
#include <iterator>
#include <utility>

namespace Capture {

ReadAhead::ReadAhead(std::unique_ptr<ByteSource> source) : _source(std::move(source)) {
    // Signals go to the threads that expect them.
    sigset_t all, old;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &old);
    _thread = std::thread([this] { work(); });
    pthread_sigmask(SIG_SETMASK, &old, nullptr);
}

ReadAhead::~ReadAhead() {
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

std::size_t ReadAhead::read(char* bytes, std::size_t size) {
    std::unique_lock lock(_mutex);
    _changed.wait(lock, [&] { return _filled != _emptied; });
    lock.unlock();
    Chunk& chunk = _chunks[_emptied % CHUNKS];
    if (_used == 0) std::move(chunk.faults.begin(), chunk.faults.end(), std::back_inserter(faults));
    if (chunk.size == 0) { // stays, for those who ask once more
        chunk.faults.clear();
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
