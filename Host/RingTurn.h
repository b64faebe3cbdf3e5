// How a ring of messages is written to: by one at a time.
#pragma once

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <string>

#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "Backend/Common/Assert.h"
#include "Host/RingFile.h"
#include "Host/RingLayout.h"

namespace Host::detail {

/// A publisher's turn: the place of the next record, and its publication.
class RingTurn {
  public:
    explicit RingTurn(RingHeader& header) : _header(header) {
        const int error = pthread_mutex_lock(&_header.turn);
        QL_ASSERT(error == 0 || error == EOWNERDEAD);
        if (error == EOWNERDEAD) {
            // Whatever it wrote after the last published record is written again.
            pthread_mutex_consistent(&_header.turn);
            for (uint64_t& mark : _header.marks)
                if (mark > _header.committed) store(mark, 0);
        }
        _position = _header.committed;
    }
    RingTurn(const RingTurn&) = delete;
    RingTurn& operator=(const RingTurn&) = delete;
    ~RingTurn() { pthread_mutex_unlock(&_header.turn); }

    /// Throws RingError if nothing may be published. A keeper that has died forbids nothing.
    void demandAllowed() {
        if (_header.refuses == 0) return;
        if (::kill(_header.keeper, 0) != 0 && errno == ESRCH) {
            _header.refuses = 0;
            return;
        }
        throw RingError(std::string("nothing may be published: ") + _header.refusal);
    }
    /// Of the last message.
    uint64_t sequence() {
        uint64_t number = _header.base;
        if (_position != 0) std::memcpy(&number, at(_position - WORD), WORD);
        return number;
    }

    /// Room for a body of at most that size, in one piece.
    char* room(size_t body) {
        const size_t needed = recordSize(body);
        const size_t left = _header.size - _header.placeOf(_position);
        if (left < needed) {
            reserve(left);
            write({static_cast<uint32_t>(left - FRAME), 0, 1, 0}, left, sequence());
            _position += left;
        }
        reserve(needed);
        return at(_position) + sizeof(RecordHeader);
    }

    /// Publishes the record whose body stands there. Returns its sequence.
    uint64_t commit(Velmora::MsgType_t id, size_t body, int64_t time) {
        const uint64_t number = sequence() + 1;
        const size_t size = recordSize(body);
        mark();
        write({static_cast<uint32_t>(body), id, 0, time}, size, number);
        store(_header.committed, _position + size);
        if (__atomic_load_n(&_header.waiting, __ATOMIC_SEQ_CST) != 0)
            ::syscall(SYS_futex, _header.committedHalf(), FUTEX_WAKE, INT_MAX, nullptr, nullptr, 0);
        return number;
    }

  private:
    char* at(uint64_t position) { return _header.bytes() + _header.placeOf(position); }

    /// Before any word there is written: who reads one that was sees this, too. Some more is taken at once, so that readers,
    /// who look at it for each message, mostly have it in their cache.
    void reserve(size_t size) {
        if (const uint64_t end = _position + size; end > _header.reserved)
            __atomic_store_n(&_header.reserved, end + _header.section() / 4, __ATOMIC_RELEASE);
    }
    void write(const RecordHeader& header, size_t size, uint64_t number) {
        storeWords(at(_position), reinterpret_cast<const char*>(&header), sizeof header);
        storeWords(at(_position + size - WORD), reinterpret_cast<const char*>(&number), WORD);
    }
    /// Notes the first record that begins in a sixteenth of the ring.
    void mark() {
        const size_t section = _header.section();
        uint64_t& mark = _header.marks[_header.placeOf(_position) / section];
        if (mark / section != _position / section) store(mark, _position);
    }

    RingHeader& _header;
    uint64_t _position;
};

} // namespace Host::detail
