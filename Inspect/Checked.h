// Decoding and encoding for hosts that face strangers: nothing is read or written before it is known to fit.
//
//     BufferAllocator alloc(block, blockSize, "gateway", "message");
//     Inspect::Decoded message = Inspect::decode_verified(id, bytes, alloc);
//     if (!message) return log(message.result.text());
//     message.descriptor->checkbounds(...); use; message.descriptor->destroy(message.object);
//
// decode_verified() asserts that the module is initialised, for the descriptor is the module's; encode_checked() needs no
// module.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "Inspect/Verify.h"

namespace Inspect {

/// A message decoded into a block, or why there is none.
struct Decoded {
    Result result;
    void* object = nullptr; ///< the message, in the block, not aligned; the caller destroys it through `descriptor`
    Velmora::MsgDescriptor* descriptor = nullptr;
    size_t needed = 0; ///< bytes of block that message and storage take together; 0 if the bytes were refused

    explicit operator bool() const { return object != nullptr; }
};

/// Verifies the bytes, then builds the message at the next free byte of `block` and reads it. When anything is refused,
/// also for want of room (Fault::blockTooSmall), nothing was built and the block is as it was.
Decoded decode_verified(const Protocol& protocol, Velmora::MsgType_t id, std::string_view bytes,
                        Velmora::BufferAllocator& block, const Policy& policy = whole);
inline Decoded decode_verified(Velmora::MsgType_t id, std::string_view bytes, Velmora::BufferAllocator& block,
                               const Policy& policy = whole) {
    return decode_verified(default_protocol(), id, bytes, block, policy);
}

enum class Refusal : uint8_t {
    none,
    tooSmall,          ///< the range is smaller than the encoding
    textTooLong,       ///< a string of more than 65,535 characters
    tooManyElements,   ///< a vector of more than 32,767 elements
    unknownIdentifier, ///< no such message
};

/// The outcome of encoding into a range.
struct Encoded {
    Refusal refusal = Refusal::none;
    size_t size = 0;   ///< bytes written, or needed where the range is too small; 0 otherwise
    std::string field; ///< the path of the string or vector that is too long

    explicit operator bool() const { return refusal == Refusal::none; }

    /// One line for a log: "string too long (contents.clOrdID)".
    std::string text() const;
};

/// Writes the message at `begin` unless it is refused; then no byte is written.
Encoded encode_checked(const Protocol& protocol, Velmora::MsgType_t id, const void* message, char* begin, char* end);
inline Encoded encode_checked(Velmora::MsgType_t id, const void* message, char* begin, char* end) {
    return encode_checked(default_protocol(), id, message, begin, end);
}

template <class T>
Encoded encode_checked(const T& message, char* begin, char* end) {
    return detail::operations_of<T>().encode(&message, begin, end);
}

} // namespace Inspect
