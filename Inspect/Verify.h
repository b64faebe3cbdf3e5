// Verifying bytes from strangers before they are decoded.
//
//     const Inspect::Result result = Inspect::verify(id, begin, end, Inspect::whole);
//     if (!result) log(result.text());      // "truncated at byte 17 (contents.parameters[3].value)"
//
// The codec trusts its caller: on a body that is cut short it reads beyond the range. verify() walks a body without an
// object, allocates nothing and touches no byte outside [begin, end). What it accepts, read() decodes from the very
// same bytes, and takes exactly `blockBytes` of its block besides the message itself. The module need not be
// initialised.
//
// Bound on memory: an accepted body takes at most sizeof(message) + 33 block bytes per wire byte. Derivation: every
// value has a byte of its own on the wire. A string of length L takes L + 1 block bytes for at least L + 1 wire bytes.
// A vector element takes sizeof(element) plus a NUL for each of its strings; that sum is at most 33 times the element's
// smallest wire form (asserted for every type in VerifyWalk.h; an empty string as an element reaches it: 32 bytes of
// object and a NUL for one wire byte), and every wire byte beyond the smallest form adds at most 33 block bytes by the
// same argument. A count is refused at once when the remaining bytes cannot hold that many smallest elements.
// Where last fields may be missing, each missing string takes its NUL besides.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "Inspect/Protocol.h"

namespace Inspect {

enum class Fault : uint8_t {
    none,
    truncated,         ///< the body ends inside the value
    overlongVarint,    ///< more bytes than the widest value of the type takes
    varintOverflow,    ///< bits beyond the type's width, which the decoder drops
    nonMinimal,        ///< a longer form than the writer's for the same value
    lengthBeyondWidth, ///< a string's length beyond 16 bits, of which the decoder drops the high ones
    countBeyondBytes,  ///< more elements than the remaining bytes can hold
    unknownEnumerator, ///< a byte that no enumerator of the field travels as
    badBoolean,        ///< neither 0 nor 1
    reservedPriceBits, ///< bit 0 or 1 of a price that is no sentinel; the decoder complements on bit 1
    trailingBytes,     ///< bytes after the last value
    unknownIdentifier, ///< no such message
    blockTooSmall,     ///< decode_verified only: the block has fewer bytes left than the message takes
};

/// For people: "unknown enumerator".
const char* to_string(Fault fault);

/// Which liberties of the decoder are taken. All are refused unless set.
struct Policy {
    bool overlongVarints = false;
    bool droppedBits = false;        ///< of varints and of string lengths
    bool nonMinimal = false;         ///< varints and prices that a shorter form stands for, two-byte counts below 128
    bool unknownEnumerators = false; ///< bytes that no enumerator travels as
    bool anyBoolean = false;         ///< any byte but 0 as true
    bool reservedPriceBits = false;
    bool trailingBytes = false; ///< bytes after the last value; `consumed` tells where it ended
    /// A body that ends where a field of the message begins, or a field of the record that ends the message, all the way
    /// down: what is missing reads as zero, as if zeros followed. They are judged by the other liberties.
    bool missingLastFields = false;

    bool operator==(const Policy&) const = default;

    /// Whether it takes whatever the other one takes.
    constexpr bool accepts_all_of(const Policy& other) const {
        return overlongVarints >= other.overlongVarints && droppedBits >= other.droppedBits
               && nonMinimal >= other.nonMinimal && unknownEnumerators >= other.unknownEnumerators
               && anyBoolean >= other.anyBoolean && reservedPriceBits >= other.reservedPriceBits
               && trailingBytes >= other.trailingBytes && missingLastFields >= other.missingLastFields;
    }

    /// Whether whatever read() decodes without leaving the range is accepted, as far as it goes.
    constexpr bool accepts_every_form() const {
        return overlongVarints && droppedBits && nonMinimal && unknownEnumerators && anyBoolean && reservedPriceBits;
    }
};

/// Accepts only what write() produces from values whose enumerators are declared ones. One exception: the padding of a
/// PadMessage is verified as read() takes it, with a varint length; what write() produces is another form by contract.
inline constexpr Policy strict{};

/// Accepts all that read() decodes without leaving the range, bytes after the last value included.
inline constexpr Policy tolerant{true, true, true, true, true, true, true, false};

/// As tolerant, but the values must end where the range ends: for bodies whose length came from a frame.
inline constexpr Policy whole{true, true, true, true, true, true, false, false};

/// As tolerant, and with missing last fields: for bodies of peers whose definition has fewer or more fields at the end
/// of a message. Whoever decodes them by himself gives read() `Result::missing` zeros after the body.
inline constexpr Policy rolling{true, true, true, true, true, true, true, true};

/// What verify() found: the first fault, or that there is none.
struct Result {
    Fault fault = Fault::none;
    Velmora::MsgType_t id = 0;
    size_t offset = 0;     ///< of the first byte of the faulty value, in bytes from `begin`; 0 if accepted. Beyond the
                           ///< body only of an unknown enumerator that is missing
    size_t consumed = 0;   ///< bytes of the values that were accepted; all that read() takes if there is no fault
    size_t blockBytes = 0; ///< exact bytes of block that decoding into a fresh message takes; 0 if refused
    size_t missing = 0;    ///< zeros that stand for missing last fields; 0 if refused
    const char* begin = nullptr;
    const char* end = nullptr;
    const TypeInfo* type = nullptr; ///< of the message; null if there is none with that identifier

    explicit operator bool() const { return fault == Fault::none; }

    /// The faulty value, as in "contents.parameters[3].value". Found by a second walk: the bytes must still be there.
    /// Empty if there is no fault or it belongs to no value.
    std::string path() const;

    /// One line for a log: "truncated at byte 17 (contents.parameters[3].value)", "accepted".
    std::string text() const;
};

namespace detail {

inline Result verify(const Verifier& verifier, Velmora::MsgType_t id, const char* begin, const char* end,
                     const Policy& policy) {
    const Position last = verifier.canonical(begin, end);
    if (last.p == end && end != nullptr) // refused ones end at null, too
        return {.id = id,
                .consumed = static_cast<size_t>(end - begin),
                .blockBytes = last.blockBytes,
                .begin = begin,
                .end = end,
                .type = verifier.type};
    Result result = verifier.judge(begin, end, policy);
    result.type = verifier.type;
    return result;
}

} // namespace detail

/// Verifies the body of the message with that identifier.
Result verify(const Protocol& protocol, Velmora::MsgType_t id, const char* begin, const char* end,
              const Policy& policy);
inline Result verify(Velmora::MsgType_t id, const char* begin, const char* end, const Policy& policy) {
    return verify(default_protocol(), id, begin, end, policy);
}

/// Verifies the body of message T.
template <class T>
Result verify(const char* begin, const char* end, const Policy& policy) {
    return detail::verify(detail::entry_of<T>(&Protocol::verifiers), T::ID, begin, end, policy);
}

} // namespace Inspect
