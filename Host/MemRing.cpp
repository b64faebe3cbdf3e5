#include "Host/MemRing.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <ctime>
#include <random>
#include <system_error>

#include <fcntl.h>
#include <linux/futex.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "Backend/Common/Assert.h"
#include "Capture/Packet.h"
#include "Host/Descriptor.h"
#include "Inspect/Checked.h"

namespace Host {

using Velmora::MsgType_t;

namespace detail {

// Positions count bytes from the ring's making and never turn back; a position's place is what remains of it by the size.
struct RingHeader {
    static constexpr uint64_t MAGIC = 0x31474E4952'4C51; // "QLRING1"
    static constexpr uint64_t LAYOUT = 2;
    static constexpr size_t MARKS = 16;

    uint64_t magic;
    uint64_t layout; ///< another number for any change of what stands here or in a record
    uint64_t size;
    pthread_mutex_t turn; ///< of the publishers; the system frees it when its owner dies

    uint64_t base;                  ///< sequence before the first message
    uint32_t refuses;               ///< nothing may be published
    int32_t keeper;                 ///< the process that says so
    char folder[512], refusal[256]; ///< as in RingKeeper, ended by NUL; to be touched by whose turn it is

    /// All before are there in whole. The one word that publishes.
    alignas(64) uint64_t committed;
    uint32_t woken;   ///< changes with each message, for those who wait
    uint32_t waiting; ///< readers that do
    /// Bytes up to here less the size may be overwritten at any moment.
    alignas(64) uint64_t reserved;
    /// For each sixteenth of the ring, where the first record in it begins: readers that fell behind go on there.
    uint64_t marks[MARKS];

    char* bytes() { return reinterpret_cast<char*>(this) + offset(); }
    const char* bytes() const { return reinterpret_cast<const char*>(this) + offset(); }
    static size_t offset() { return (sizeof(RingHeader) + 4095) / 4096 * 4096; }
    size_t placeOf(uint64_t position) const { return position & (size - 1); }
    size_t section() const { return size / MARKS; }
};

/// Stands before the body. The last word of a record is its sequence: that of the next is known by the word before it.
struct RecordHeader {
    uint32_t bodySize;
    uint16_t id;
    uint16_t isFiller; ///< of the end of the ring, which no record crosses; its sequence is that of the record before
    int64_t time;
};

} // namespace detail

using detail::RecordHeader;
using detail::RingHeader;

namespace {

constexpr size_t WORD = 8;
constexpr size_t FRAME = sizeof(RecordHeader) + WORD; // around a body
constexpr size_t UNIT = 32; // of records, so that at the end of the ring there is room for a filler

constexpr size_t recordSize(size_t body) { return (body + FRAME + UNIT - 1) / UNIT * UNIT; }

uint64_t load(const uint64_t& word) { return __atomic_load_n(&word, __ATOMIC_SEQ_CST); }
void store(uint64_t& word, uint64_t value) { __atomic_store_n(&word, value, __ATOMIC_SEQ_CST); }

// Copies what a publisher may be overwriting: word by word, so that it is no race, only a copy of no use. The order keeps a
// publisher's words after its reservation, and a reader's look at the reservation after its words.
void copyWords(char* to, const char* from, size_t size) {
    for (size_t i = 0; i < size; i += WORD) {
        const uint64_t word = __atomic_load_n(reinterpret_cast<const uint64_t*>(from + i), __ATOMIC_ACQUIRE);
        std::memcpy(to + i, &word, std::min(WORD, size - i));
    }
}
void storeWords(char* to, const char* from, size_t size) {
    for (size_t i = 0; i < size; i += WORD) {
        uint64_t word = 0;
        std::memcpy(&word, from + i, std::min(WORD, size - i));
        __atomic_store_n(reinterpret_cast<uint64_t*>(to + i), word, __ATOMIC_RELEASE);
    }
}

[[noreturn]] void fail(const std::string& path, const std::string& what) { throw RingError(path + ": " + what); }
[[noreturn]] void failBySystem(const std::string& path) { fail(path, std::generic_category().message(errno)); }

/// Makes the ring under another name first: nobody sees it before it is whole. Another one may have the name by then.
void make(const std::string& path, size_t size) {
    std::random_device random;
    const std::string part = path + ".part-" + std::to_string(random());
    const Descriptor file(::open(part.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0660));
    if (!file) failBySystem(part);
    const size_t all = RingHeader::offset() + size;
    // Its pages are taken now: a full disk is told here, and never by a signal while a message is written.
    const int error = ::posix_fallocate(file.number(), 0, static_cast<off_t>(all));
    bool isDone = error == 0;
    if (isDone) {
        void* const memory =
            ::mmap(nullptr, RingHeader::offset(), PROT_READ | PROT_WRITE, MAP_SHARED, file.number(), 0);
        isDone = memory != MAP_FAILED;
        if (isDone) {
            auto* const header = new (memory) RingHeader{};
            header->magic = RingHeader::MAGIC;
            header->layout = RingHeader::LAYOUT;
            header->size = size;
            pthread_mutexattr_t attributes;
            pthread_mutexattr_init(&attributes);
            pthread_mutexattr_setpshared(&attributes, PTHREAD_PROCESS_SHARED);
            pthread_mutexattr_setrobust(&attributes, PTHREAD_MUTEX_ROBUST);
            pthread_mutex_init(&header->turn, &attributes);
            pthread_mutexattr_destroy(&attributes);
            ::munmap(memory, RingHeader::offset());
        }
    } else {
        errno = error;
    }
    const bool isNamed = isDone && ::link(part.c_str(), path.c_str()) == 0;
    const int reason = errno;
    ::unlink(part.c_str());
    errno = reason;
    if (!isNamed && (!isDone || reason != EEXIST)) failBySystem(path);
}

} // namespace

// --- the file

void MemRing::Unmap::operator()(RingHeader* header) const { ::munmap(header, size); }

MemRing MemRing::open(const std::string& path, size_t size) {
    for (;;) {
        const Descriptor file(::open(path.c_str(), O_RDWR | O_CLOEXEC));
        if (file) return MemRing(file.number(), path);
        if (errno != ENOENT) failBySystem(path);
        if (size > SIZE_MAX / 4) fail(path, "too large");
        make(path, std::bit_ceil(std::max(size, LEAST_SIZE)));
    }
}

MemRing::MemRing(int file, const std::string& path) {
    struct stat status;
    if (::fstat(file, &status) != 0) failBySystem(path);
    const auto all = static_cast<size_t>(status.st_size);
    if (!S_ISREG(status.st_mode) || all < RingHeader::offset() + LEAST_SIZE) fail(path, "is no ring of messages");
    void* const memory = ::mmap(nullptr, all, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    if (memory == MAP_FAILED) failBySystem(path);
    _header = {static_cast<RingHeader*>(memory), Unmap{all}};
    if (_header->magic != RingHeader::MAGIC) fail(path, "is no ring of messages");
    if (_header->layout != RingHeader::LAYOUT)
        fail(path,
             "is a ring of layout " + std::to_string(_header->layout) + ", not " + std::to_string(RingHeader::LAYOUT));
    if (!std::has_single_bit(_header->size) || RingHeader::offset() + _header->size != all)
        fail(path, "is a ring of another size than its file");
}

size_t MemRing::size() const { return _header->size; }
size_t MemRing::longestBody() const {
    return std::min(_header->size / 8, Capture::MAX_PACKET - Capture::IDENTIFIER_SIZE);
}

// --- publishing

/// A publisher's turn: the place of the next record, and its publication.
class MemRing::Turn {
  public:
    explicit Turn(RingHeader& header) : _header(header) {
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
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;
    ~Turn() { pthread_mutex_unlock(&_header.turn); }

    /// Throws RingError if nothing may be published. A keeper that has died forbids nothing.
    void demandAllowed() {
        if (_header.refuses == 0) return;
        if (::kill(_header.keeper, 0) != 0 && errno == ESRCH) {
            _header.refuses = 0;
            return;
        }
        throw RingError(std::string("nothing may be published: ") + _header.refusal);
    }
    RingHeader& header() { return _header; }
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
    uint64_t commit(MsgType_t id, size_t body, int64_t time) {
        const uint64_t number = sequence() + 1;
        const size_t size = recordSize(body);
        mark();
        write({static_cast<uint32_t>(body), id, 0, time}, size, number);
        store(_header.committed, _position + size);
        __atomic_add_fetch(&_header.woken, 1, __ATOMIC_SEQ_CST);
        if (__atomic_load_n(&_header.waiting, __ATOMIC_SEQ_CST) != 0)
            ::syscall(SYS_futex, &_header.woken, FUTEX_WAKE, INT_MAX, nullptr, nullptr, 0);
        return number;
    }

  private:
    char* at(uint64_t position) { return _header.bytes() + _header.placeOf(position); }

    void reserve(size_t size) { store(_header.reserved, std::max(_header.reserved, _position + size)); }
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

uint64_t MemRing::publish(const Record& record) {
    if (record.body.size() > longestBody())
        throw std::length_error("MemRing: body of " + std::to_string(record.body.size()) + " bytes, more than "
                                + std::to_string(longestBody()));
    Turn turn(*_header);
    turn.demandAllowed();
    storeWords(turn.room(record.body.size()), record.body.data(), record.body.size());
    return turn.commit(record.id, record.body.size(), record.time);
}

Inspect::Encoded MemRing::publish(const Inspect::Protocol& protocol, MsgType_t id, const void* message, int64_t time,
                                  uint64_t& sequence) {
    sequence = 0;
    // Beside the ring, while others have their turns.
    char some[1024];
    Inspect::Encoded encoded = Inspect::encode_checked(protocol, id, message, some, some + sizeof some);
    if (encoded) {
        sequence = publish({.id = id, .body = {some, encoded.size}, .time = time});
    } else if (encoded.refusal == Inspect::Refusal::tooSmall && encoded.size <= longestBody()) {
        std::string more(encoded.size, '\0');
        encoded = Inspect::encode_checked(protocol, id, message, more.data(), more.data() + more.size());
        if (encoded) sequence = publish({.id = id, .body = more, .time = time});
    }
    return encoded;
}

void MemRing::startAfter(uint64_t sequence) {
    Turn turn(*_header);
    if (turn.sequence() >= sequence) return;
    if (_header->committed != 0)
        throw RingError("the ring is at message " + std::to_string(turn.sequence()) + ", before "
                        + std::to_string(sequence));
    store(_header->base, sequence);
}

void MemRing::setKeeper(const RingKeeper& keeper) {
    const auto put = [](auto& to, const std::string& text) {
        std::memset(to, 0, sizeof to);
        text.copy(to, sizeof to - 1);
    };
    Turn turn(*_header);
    put(_header->folder, keeper.folder);
    put(_header->refusal, keeper.refusal);
    _header->keeper = ::getpid();
    _header->refuses = keeper.refusal.empty() ? 0 : 1;
}

RingKeeper MemRing::keeper() const {
    const auto text = [](const auto& from) { return std::string(from, ::strnlen(from, sizeof from)); };
    const Turn turn(*_header);
    return {text(_header->folder), text(_header->refusal)};
}

// --- reading

RingReader::RingReader(const MemRing& ring, From from) : _header(ring._header.get()) {
    if (from.kind != From::Kind::live) {
        catchUp();
        if (from.kind == From::Kind::sequence) _next = from.sequence;
        if (from.kind == From::Kind::time) _since = from.time;
        return;
    }
    do { // what comes and goes before the first is read is lost, too
        _position = load(_header->committed);
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
    _position = committed;
    for (const uint64_t& mark : _header->marks)
        if (const uint64_t it = load(mark); it >= least && it < _position) _position = it;
}

bool RingReader::next(Record& record) {
    for (;;) {
        const uint64_t committed = load(_header->committed);
        if (_position == committed) return false;
        const char* const at = _header->bytes() + _header->placeOf(_position);
        RecordHeader header;
        copyWords(reinterpret_cast<char*>(&header), at, sizeof header);
        const size_t size = recordSize(header.bodySize);
        const bool isWhole = size <= committed - _position && _header->placeOf(_position) + size <= _header->size;
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
    // A few microseconds awake, in which the next message mostly comes where many do: waking a reader costs its publisher more
    // than all else.
    for (int left = milliseconds > 0 ? 300 : 0; left > 0; --left) {
        if (load(_header->committed) != _position) return true;
        __builtin_ia32_pause();
    }
    const uint32_t seen = __atomic_load_n(&header.woken, __ATOMIC_SEQ_CST);
    if (load(_header->committed) != _position) return true;
    __atomic_add_fetch(&header.waiting, 1,
                       __ATOMIC_SEQ_CST); // if this process dies here, publishers wake nobody for ever
    const timespec time{milliseconds / 1000, milliseconds % 1000 * 1'000'000L};
    ::syscall(SYS_futex, &header.woken, FUTEX_WAIT, seen, &time, nullptr, 0);
    __atomic_sub_fetch(&header.waiting, 1, __ATOMIC_SEQ_CST);
    return load(_header->committed) != _position;
}

} // namespace Host
