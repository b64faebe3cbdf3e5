// Reading a ring: copies of bytes that publishers may be overwriting, believed only if they were not.
#include <climits>
#include <ctime>

#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "Host/MemRing.h"
#include "Host/RingLayout.h"

namespace Host {

using namespace detail;

RingReader::RingReader(const MemRing& ring, From from) : _header(&ring.header()) {
    if (from.kind != From::Kind::live) {
        catchUp();
        if (from.kind == From::Kind::sequence) _next = from.sequence;
        if (from.kind == From::Kind::time) _since = from.time;
        return;
    }
    do { // what comes and goes before the first is read is lost, too
        _position = _committed = load(_header->committed);
        _isAtStart = _position == 0;
        if (_isAtStart) return;
        copyWords(reinterpret_cast<char*>(&_next), _header->bytes() + _header->placeOf(_position - WORD), WORD);
    } while (isOverwritten(_position - WORD));
    ++_next;
}

bool RingReader::isOverwritten(uint64_t position) const { return load(_header->reserved) - position > _header->size; }

/// Goes to the oldest mark that will stand for a while.
void RingReader::catchUp() {
    const uint64_t committed = load(_header->committed), reserved = load(_header->reserved);
    const uint64_t margin = _header->section();
    const uint64_t least = reserved + margin > _header->size ? reserved + margin - _header->size : 0;
    _position = _committed = committed;
    for (const uint64_t& mark : _header->marks)
        if (const uint64_t it = load(mark); it >= least && it < _position) _position = it;
}

bool RingReader::next(Record& record) {
    for (;;) {
        if (_position == _committed) _committed = load(_header->committed);
        if (_position == _committed) return false;
        const char* const at = _header->bytes() + _header->placeOf(_position);
        RecordHeader header;
        copyWords(reinterpret_cast<char*>(&header), at, sizeof header);
        const size_t size = recordSize(header.bodySize);
        const bool isWhole = size <= _committed - _position && _header->placeOf(_position) + size <= _header->size;
        if (isWhole) {
            if (_copy.size() < size) _copy.resize(size);
            copyWords(_copy.data(), at, size);
        }
        if (isOverwritten(_position)) { // while it was copied, so that nothing of it may be believed
            catchUp();
            continue;
        }
        if (!isWhole) throw RingError("ring of messages: no record at byte " + std::to_string(_position));
        _position += size;
        if (header.isFiller != 0) continue;
        std::memcpy(&record.sequence, _copy.data() + size - WORD, WORD);
        if (_isAtStart) _next = load(_header->base) + 1;
        _isAtStart = false;
        if (record.sequence < _next || header.time < _since) continue;
        _since = INT64_MIN; // found
        record.id = header.id;
        record.body = {_copy.data() + sizeof header, header.bodySize};
        record.time = header.time;
        record.lost = _next != 0 && record.sequence > _next ? record.sequence - _next : 0;
        _lost += record.lost;
        _next = record.sequence + 1;
        return true;
    }
}

bool RingReader::wait(int milliseconds) {
    auto& header = const_cast<RingHeader&>(*_header);
    // Some microseconds awake, in which the next message mostly comes where many do: to be woken costs more than all else.
    for (int left = milliseconds > 0 ? 300 : 0; left > 0; --left) {
        if (load(_header->committed) != _position) return true;
        __builtin_ia32_pause();
    }
    if (load(_header->committed) != _position) return true;
    __atomic_add_fetch(&header.waiting, 1,
                       __ATOMIC_SEQ_CST); // if this process dies here, publishers wake nobody for ever
    const timespec time{milliseconds / 1000, milliseconds % 1000 * 1'000'000L};
    ::syscall(SYS_futex, header.committedHalf(), FUTEX_WAIT, static_cast<uint32_t>(_position), &time, nullptr, 0);
    __atomic_sub_fetch(&header.waiting, 1, __ATOMIC_SEQ_CST);
    return load(_header->committed) != _position;
}

} // namespace Host
