// The walk behind decode_verified(): that of Velmora::decode(), by a reader that stays within its range.
//
// A number is read without further tests where nine bytes remain, for none that is read in place takes more. A value
// that reaches beyond the end, a text or vector that the block has no room for, and a count that the remaining bytes
// cannot hold leave the cursor after the end. There it stays: what is read from then on is 0 or empty and takes nothing
// of the block. So the walk needs no way out, and one look at the cursor in the end tells whether all was good.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <string_view>

#include "Backend/Velmora/operations/Decode.h"
#include "Backend/Velmora/operations/Validate.h"
#include "Inspect/Checked.h"
#include "Inspect/Kernels.h"
#include "Inspect/MessageTable.h"

namespace Inspect::walk {

/// A body, the block that its message is built in, and what the walk over it has seen. In memory, as for other readers.
struct BodyRange : Velmora::Range {
    BodyRange(const char* begin_, const char* end_, const Velmora::BufferAllocator& block)
        : Range{const_cast<char*>(begin_), const_cast<char*>(end_)}, // only read
          afterLook(end - begin >= 9 ? reinterpret_cast<uintptr_t>(end - 8) : 0),
          free(block.end()),
          blockEnd(reinterpret_cast<uintptr_t>(block.buffer() + block.size())) {}

    /// `n` bytes of the block; null if it has fewer left. The allocator is told in the end, of all of them at once.
    QL_FORCE_INLINE char* take(size_t n) {
        // No message takes so much that the sum could wrap around.
        char* const taken = free;
        const uintptr_t next = reinterpret_cast<uintptr_t>(taken) + n;
        if (__builtin_expect(next > blockEnd, 0)) return nullptr;
        free = reinterpret_cast<char*>(next);
        return taken;
    }

    uintptr_t afterLook; ///< the first position from which fewer than nine bytes remain; 0 in a body of so few
    char* free;          ///< the next free byte of the block
    uintptr_t blockEnd;
    bool hasUnknown = false; ///< whether an enumerator without a name was read
};

/// A reader of fresh values, which own nothing yet.
template <class KernelType>
class BoundedReader : public Velmora::Reader<KernelType, Velmora::AtRange> {
    using Base = Velmora::Reader<KernelType, Velmora::AtRange>;
    using typename Base::Taken;

  public:
    using Bounds = BodyRange;

    BoundedReader(const char* cursor, BodyRange& range_, size_t = 0) : Base(cursor, range_, 0), range(range_) {}

    static constexpr bool isFollowed() { return false; }

    /// Whether `n` bytes remain. False for good once the cursor is after the end.
    QL_FORCE_INLINE bool has(size_t n) const { return static_cast<std::ptrdiff_t>(n) <= range.end - this->p; }
    QL_FORCE_INLINE void refuse() { this->taken(Base::beyond(range)); }

    QL_FORCE_INLINE unsigned char byte() {
        if (__builtin_expect(this->p < range.end, 1)) return Base::byte();
        refuse();
        return 0;
    }
    template <class T>
    QL_FORCE_INLINE T raw() {
        if (has(sizeof(T))) return Base::template raw<T>();
        refuse();
        return T{};
    }
    template <class T>
    QL_FORCE_INLINE T varint() {
        return isRoomy() ? Base::template varint<T, true>() : static_cast<T>(this->taken(last_varint(this->p, range)));
    }
    QL_FORCE_INLINE uint64_t special() {
        return isRoomy() ? Base::template special<true>() : this->taken(last_special(this->p, range));
    }
    QL_FORCE_INLINE size_t count() {
        const size_t first = byte();
        return first <= 127 ? first : (first << 8 | byte()) & 0x7FFF;
    }
    void text(Velmora::String auto& v, size_t n) {
        char* const storage = has(n) ? range.take(n + 1) : nullptr;
        if (storage == nullptr) return refuse();
        v.assign_at(storage, this->p, n);
        this->p += n;
    }

    BodyRange& range;

  private:
    /// Whether all of any number that is read in place remains.
    QL_FORCE_INLINE bool isRoomy() const {
        return __builtin_expect(reinterpret_cast<uintptr_t>(this->p) < range.afterLook, 1);
    }

    // Numbers among the last bytes. With the range by value, for one whose address is taken would have to be in memory.

    [[gnu::noinline]] static Taken last_varint(const char* p, Velmora::Range range) {
        return Base::lastVarint(p, range);
    }
    [[gnu::noinline]] static Taken last_special(const char* p, Velmora::Range range) {
        if (p >= range.end) return Base::beyond(range);
        Base in(p, range);
        const uint64_t value = in.special();
        return {value, in.p};
    }
};

// Numbers, and the forms of a text, go by the overloads of Velmora::get; these are for what needs more.

template <class Kernel>
QL_FORCE_INLINE void get(BoundedReader<Kernel>& in, Velmora::plain_t, Velmora::String auto& v, const char*) {
    if (__builtin_expect(in.p >= in.range.end, 0)) return in.refuse();
    const size_t first = static_cast<unsigned char>(*in.p);
    if (__builtin_expect(first > Quillon::SHORT_COPY, 0)) {
        in.p = Velmora::getRareText<BoundedReader<Kernel>>(v, in.p, in.range);
        return;
    }
    const char* const next = in.p + 1 + first;
    char* storage;
    if (__builtin_expect(next > in.range.end || (storage = in.range.take(first + 1)) == nullptr, 0)) return in.refuse();
    v.assign_at(storage, in.p + 1, first);
    in.p = next;
}

/// Whether it has a name is noted, not reported: the hook hears only of what is accepted in the end.
template <class Kernel, Velmora::Enumerator E>
QL_FORCE_INLINE void get(BoundedReader<Kernel>& in, Velmora::plain_t, E& v, const char*) {
    const unsigned char byte = in.byte();
    v = static_cast<E>(byte);
    if (Velmora::isDoubtful<Velmora::EnumerationOf<E>>(byte)) in.range.hasUnknown = true;
}

template <class Kernel, class Encoding>
QL_FORCE_INLINE void get(BoundedReader<Kernel>& in, Encoding encoding, Velmora::Vector auto& v, const char* name) {
    using Element = typename std::remove_cvref_t<decltype(v)>::value_type;
    const size_t count = in.count();
    if (!in.has(count * Velmora::leastBytes<Element, Encoding>())) return in.refuse();
    if (count == 0) return;
    char* const storage = in.range.take(count * sizeof(Element));
    if (storage == nullptr) return in.refuse();
    if constexpr (Velmora::travelsAsHeld<Element, Encoding>) {
        const char* const held = in.p;
        in.p += count * sizeof(Element);
        v.append_each_at(storage, count, [](auto&) {});
        std::memcpy(storage, held, count * sizeof(Element));
    } else {
        v.append_each_at(storage, count,
                         [&](auto& element) QL_FORCE_INLINE_LAMBDA { get(in, encoding, element, name); });
    }
}

/// Reports the enumerators of a message that was accepted, which ends if the hook throws.
template <class T>
QL_COLD_PATH void report_or_destroy(T& message) {
    try {
        Velmora::validateAll(message);
    } catch (...) {
        message.~T();
        throw;
    }
}

template <class Kernel, Velmora::Message T>
QL_FORCE_INLINE detail::Placed decode_by(const char* begin, const char* end, Velmora::BufferAllocator* block,
                                         bool mayTrail) {
    return Kernel::run(
        [](const char* first, const char* last, Velmora::BufferAllocator* alloc, bool isPrefix)
            QL_FORCE_INLINE_LAMBDA -> detail::Placed {
                if (__builtin_expect(alloc->unused_size() < sizeof(T), 0)) return {};
                BodyRange range(first, last, *alloc);
                char* const place = range.take(sizeof(T));
                T* const message = new (place) T(*alloc);
                const char* const read = Velmora::readFields<BoundedReader<Kernel>, T, false>(*message, first, range);
                if (__builtin_expect(read != last, 0) && (read > last || !isPrefix)) return {};
                char* all;
                alloc->tryAllocate(static_cast<size_t>(range.free - place), all); // it has them
                if (__builtin_expect(range.hasUnknown, 0)) report_or_destroy(*message);
                return {message, static_cast<size_t>(read - first)};
            },
        begin, end, block, mayTrail);
}

/// Builds a T at the next free byte of `block` and reads it. No message, and the block as before, where the bytes or the
/// block do not suffice, or where bytes follow and may not. What was built by then is abandoned: all it owns is in the
/// free bytes of the block.
template <Velmora::Message T>
detail::Placed decode_fresh(std::string_view bytes, Velmora::BufferAllocator& block, bool mayTrail) {
    const char* const begin = bytes.data();
    const char* const end = begin + bytes.size();
    return has_fast_kernel() ? decode_by<Velmora::Bmi2, T>(begin, end, &block, mayTrail)
                             : decode_by<Velmora::Baseline, T>(begin, end, &block, mayTrail);
}

/// The same of bytes that verify() accepted, into a block that has the room.
template <Velmora::Message T>
void* decode_trusted(std::string_view bytes, Velmora::BufferAllocator& block) {
    T* const message = new (block.allocate(sizeof(T))) T(block);
    // The codec takes a mutable range, but reading leaves it as it is.
    char* const begin = const_cast<char*>(bytes.data());
    Velmora::FastCodec codec(begin, begin + bytes.size());
    try {
        message->read(codec);
    } catch (...) { // the bytes are good and fit; the hook, or the heap for the name of a field, may still fail
        message->~T();
        throw;
    }
    return message;
}

} // namespace Inspect::walk

namespace Inspect::detail {

template <class T>
constexpr Decoder entry(Velmora::of<Decoder>, Velmora::of<T>) {
    return {&tables::type_of<T>(), sizeof(T), &walk::decode_fresh<T>, &walk::decode_trusted<T>};
}

} // namespace Inspect::detail
