// The walk behind encode_checked(): that of Velmora::encode(), by a writer that stays within its range.
//
// Numbers take a bounded number of bytes, and so do texts short enough to be written in place. Where all that may follow
// up to the next test is certain to fit, no test is needed on the way; tests stand before and after each element of a
// vector, and at each longer text. A walk gives up where it is not certain. So it does within the last bytes of a range:
// then a short message is written elsewhere and copied, a longer one looked through for what cannot travel, measured, and
// written.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "Backend/Velmora/operations/Encode.h"
#include "Backend/Velmora/operations/Validate.h"
#include "Inspect/Checked.h"
#include "Inspect/Kernels.h"
#include "Inspect/MessageTable.h"
#include "Inspect/SizeWalk.h"

namespace Inspect::walk {

/// The most bytes that a walk over a T touches from one test to the next.
template <class T>
constexpr size_t longest_stretch() {
    // All values outside vectors as if no test stood between them. Then, a number is stored as a word that may spill
    // over what follows, and a count may take a second byte.
    size_t most = max_encoded_size<T>({.text = Quillon::SHORT_COPY, .count = 0}) + 8;
    if constexpr (Velmora::Vector<T>)
        most = std::max(most, longest_stretch<typename T::value_type>());
    else if constexpr (Velmora::Composite<T>)
        fields(Velmora::of<T>{}, [&](const char*, auto member, auto) {
            most = std::max(most, longest_stretch<Velmora::MemberType<decltype(member)>>());
            return true;
        });
    return most;
}

/// A walk's range, and what it has seen. In memory, for it is looked at too rarely to be worth registers.
struct Room {
    const char* brake;       ///< where a stretch may begin at most
    bool hasUnknown = false; ///< whether an enumerator without a name was written
};

/// A writer that writes what is certain to fit and to be read again. Else it is closed for good: the cursor is null.
template <class KernelType>
class BoundedWriter : public Velmora::Writer<KernelType> {
    using Base = Velmora::Writer<KernelType>;

  public:
    using Bounds = Room*;

    /// REQUIRES: a stretch may begin at `begin`.
    BoundedWriter(char* begin, size_t least, Room* room) : Base(begin, least), bounds(room) {}

    QL_FORCE_INLINE bool isOpen() const { return this->p != nullptr; }

    /// Whether another stretch may begin at the cursor. Closes the writer if not.
    QL_FORCE_INLINE bool fits() {
        // As numbers, of which that of null becomes the largest.
        const bool isFit = reinterpret_cast<uintptr_t>(this->p) - 1 < reinterpret_cast<uintptr_t>(bounds->brake);
        if (__builtin_expect(!isFit, 0)) this->p = nullptr;
        return isFit;
    }

    QL_FORCE_INLINE void text(const char* from, size_t n) {
        if (__builtin_expect(n > Quillon::SHORT_COPY, 0))
            this->p = long_text(this->p, from, n, bounds);
        else
            Base::text(from, n);
    }
    void fixedText(const char* from, size_t n) {
        if (n <= MAX_TEXT && has(n))
            Base::fixedText(from, n);
        else
            this->p = nullptr;
    }
    QL_FORCE_INLINE void count(size_t n) {
        if (__builtin_expect(n <= MAX_COUNT, 1))
            Base::count(n);
        else
            this->p = nullptr;
    }
    void held(const void* from, size_t n) {
        if (isOpen() && has(n))
            Base::held(from, n);
        else
            this->p = nullptr;
    }

    Bounds bounds;

  private:
    /// Whether a stretch may begin `n` bytes after the cursor.
    bool has(size_t n) const { return static_cast<std::ptrdiff_t>(n) <= bounds->brake - this->p; }

    [[gnu::noinline]] static char* long_text(char* p, const char* from, size_t n, Room* room) {
        BoundedWriter out(p, 0, room);
        if (n > MAX_TEXT || !out.has(3 + n)) return nullptr;
        out.Base::text(from, n);
        return out.p;
    }
};

template <class T>
QL_COLD_PATH void report_unknown(const T& value) {
    Velmora::validateAll(value);
}

/// Whether it has a name is noted, not reported: the hook hears only of what is encoded in the end.
template <class Kernel, Velmora::Enumerator E>
QL_FORCE_INLINE void put(BoundedWriter<Kernel>& out, Velmora::plain_t, E v, const char*) {
    const auto byte = static_cast<unsigned char>(v);
    if (Velmora::isDoubtful<Velmora::EnumerationOf<E>>(byte)) out.bounds->hasUnknown = true;
    out.byte(byte);
}

template <class Kernel, Velmora::Message T>
QL_FORCE_INLINE const char* encode_by(const T* value, char* begin, char* end, size_t allowed) {
    return Kernel::run(
        [](const T* v, char* first, char* last, size_t most) QL_FORCE_INLINE_LAMBDA -> const char* {
            constexpr auto stretch = static_cast<std::ptrdiff_t>(longest_stretch<T>());
            if (last - first < stretch) return nullptr;
            Room room{last - stretch};
            const char* const written = Velmora::writeFields<BoundedWriter<Kernel>, T, false>(*v, first, &room);
            if (__builtin_expect(room.hasUnknown, 0) && written != nullptr
                && static_cast<size_t>(written - first) <= most)
                report_unknown(*v);
            return written;
        },
        value, begin, end, allowed);
}

/// Encodes `message`, a T, from `begin` on. Returns the end of what was written, or null where the walk gave up. One of more
/// than `allowed` bytes is not reported to the hook.
template <Velmora::Message T>
const char* encode_up_to(const void* message, char* begin, char* end, size_t allowed) {
    const T* const value = static_cast<const T*>(message);
    return has_fast_kernel() ? encode_by<Velmora::Bmi2>(value, begin, end, allowed)
                             : encode_by<Velmora::Baseline>(value, begin, end, allowed);
}
template <Velmora::Message T>
const char* encode_within(const void* message, char* begin, char* end) {
    return encode_up_to<T>(message, begin, end, SIZE_MAX);
}

// --- where one walk does not do

/// Looks for what cannot travel: its refusal, with the path in `path`, which begins with a dot.
template <class T>
Refusal find_unencodable(const T& value, std::string& path) {
    if constexpr (Velmora::String<T>) {
        if (value.size() > MAX_TEXT) return Refusal::textTooLong;
    } else if constexpr (Velmora::Vector<T>) {
        if (value.size() > MAX_COUNT) return Refusal::tooManyElements;
        if constexpr (Velmora::holdsStorage<typename T::value_type>())
            for (size_t i = 0; i < value.size(); ++i) {
                if (const Refusal refusal = find_unencodable(value[i], path); refusal != Refusal::none) {
                    path.insert(0, '[' + std::to_string(i) + ']');
                    return refusal;
                }
            }
    } else {
        Refusal refusal = Refusal::none;
        fields(Velmora::of<T>{}, [&](const char* name, auto member, auto) {
            if constexpr (Velmora::holdsStorage<Velmora::MemberType<decltype(member)>>()) {
                refusal = find_unencodable(value.*member, path);
                if (refusal != Refusal::none) path.insert(0, std::string(".") + name);
            }
            return refusal == Refusal::none;
        });
        return refusal;
    }
    return Refusal::none;
}

/// Encodes to the byte: whether it fits is found out before anything is written. A short message by one walk into memory
/// of its own, where it has the room that such a walk needs; others in three walks.
template <class T>
Encoded encode_measured(const void* message, char* begin, char* end) {
    const T& value = *static_cast<const T*>(message);
    const auto room = static_cast<size_t>(end - begin);
    Encoded result;
    constexpr size_t SHORT = 1024;
    if (room <= SHORT) {
        char draft[SHORT + longest_stretch<T>()];
        if (const char* const last = encode_up_to<T>(message, draft, draft + sizeof draft, room)) {
            result.size = static_cast<size_t>(last - draft);
            if (result.size <= room)
                std::copy_n(draft, result.size, begin);
            else
                result.refusal = Refusal::tooSmall;
            return result;
        }
    }
    result.refusal = find_unencodable(value, result.field);
    if (!result) {
        result.field.erase(0, 1);
        return result;
    }
    result.size = encoded_size(value);
    if (result.size > room) {
        result.refusal = Refusal::tooSmall;
        return result;
    }
    Velmora::FastCodec codec(begin, end);
    value.write(codec);
    return result;
}

} // namespace Inspect::walk

namespace Inspect::detail {

template <class T>
constexpr Encoder entry(Velmora::of<Encoder>, Velmora::of<T>) {
    return {&walk::encode_within<T>, &walk::encode_measured<T>};
}

} // namespace Inspect::detail
