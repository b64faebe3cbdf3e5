// How a ring of messages lies in its file, for those who write and read it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include <pthread.h>

namespace Host::detail {

// Positions count bytes from the ring's making and never turn back; a position's place is what remains of it by the size.
struct RingHeader {
    static constexpr uint64_t MAGIC = 0x31474E4952'4C51; // "QLRING1"
    static constexpr uint64_t LAYOUT = 4;
    static constexpr size_t MARKS = 16, PLACES = 64;

    /// Of a reader with a name.
    struct Place {
        char name[56]; ///< ended by NUL; empty: of nobody
        uint64_t next; ///< sequence of the message to go on with; 0: it has not begun
    };

    uint64_t magic;
    uint64_t layout; ///< another number for any change of what stands here or in a record
    uint64_t size;
    pthread_mutex_t turn; ///< of the publishers; the system frees it when its owner dies

    uint64_t base;                  ///< sequence before the first message
    uint32_t refuses;               ///< nothing may be published
    int32_t keeper;                 ///< the process that says so
    char folder[512], refusal[256]; ///< as in RingKeeper, ended by NUL; to be touched by whose turn it is

    /// All before are there in whole. The one word that publishes; readers wait for its lower half to change.
    alignas(64) uint64_t committed;
    uint32_t waiting; ///< readers that do
    /// Bytes up to here less the size may be overwritten at any moment.
    alignas(64) uint64_t reserved;
    /// For each sixteenth of the ring, where the first record in it begins: readers that fell behind go on there.
    uint64_t marks[MARKS];
    Place places[PLACES]; ///< names are given by whose turn it is, and stay

    char* bytes() { return reinterpret_cast<char*>(this) + offset(); }
    const char* bytes() const { return reinterpret_cast<const char*>(this) + offset(); }
    static size_t offset() { return (sizeof(RingHeader) + 4095) / 4096 * 4096; }
    size_t placeOf(uint64_t position) const { return position & (size - 1); }
    size_t section() const { return size / MARKS; }
    uint32_t* committedHalf() { return reinterpret_cast<uint32_t*>(&committed); } // the lower one, as x86-64 has it
};

/// Stands before the body. The last word of a record is its sequence: that of the next is known by the word before it.
struct RecordHeader {
    uint32_t bodySize;
    uint16_t id;
    uint16_t isFiller; ///< of the end of the ring, which no record crosses; its sequence is that of the record before
    int64_t time;
};

inline constexpr size_t WORD = 8;
inline constexpr size_t FRAME = sizeof(RecordHeader) + WORD; // around a body
inline constexpr size_t UNIT = 32; // of records, so that at the end of the ring there is room for a filler

constexpr size_t recordSize(size_t body) { return (body + FRAME + UNIT - 1) / UNIT * UNIT; }

inline uint64_t load(const uint64_t& word) { return __atomic_load_n(&word, __ATOMIC_SEQ_CST); }
inline void store(uint64_t& word, uint64_t value) { __atomic_store_n(&word, value, __ATOMIC_SEQ_CST); }

// Copies what a publisher may be overwriting: word by word, so that it is no race, only a copy of no use. The order keeps a
// publisher's words after its reservation, and a reader's look at the reservation after its words.

/// REQUIRES: whole words.
inline void copyWords(char* to, const char* from, size_t size) {
    for (size_t i = 0; i < size; i += WORD) {
        const uint64_t word = __atomic_load_n(reinterpret_cast<const uint64_t*>(from + i), __ATOMIC_ACQUIRE);
        std::memcpy(to + i, &word, WORD);
    }
}
/// The last word is filled with zeros.
inline void storeWords(char* to, const char* from, size_t size) {
    const auto storeWord = [&](size_t at, size_t bytes) {
        uint64_t word = 0;
        std::memcpy(&word, from + at, bytes);
        __atomic_store_n(reinterpret_cast<uint64_t*>(to + at), word, __ATOMIC_RELEASE);
    };
    size_t at = 0;
    for (; at + WORD <= size; at += WORD) storeWord(at, WORD);
    if (at != size) storeWord(at, size - at);
}

} // namespace Host::detail
