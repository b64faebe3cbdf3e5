// Decoding and encoding for hosts that face strangers: nothing outside the bytes, the block or the range is touched.
//
//     BufferAllocator alloc(block, blockSize, "gateway", "message");
//     auto order = Inspect::decode_verified<Quillon::SubmitOrderMessage>(bytes, alloc);
//     if (!order) return log(order.result.text());
//     use(order->contents.price);
//
// Where the policy accepts every form that the decoder reads, as `whole` and `tolerant` do, that is one walk which checks
// as it reads. Under other policies, and to tell what is wrong with a body, the bytes are verified first. Encoding is one
// walk that checks as it writes; messages that end within the last few hundred bytes of their range are measured first.
//
// The hook for enumerators without a name hears of those in messages that are accepted, never of one that is refused.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "Inspect/Verify.h"

namespace Inspect {

/// A message decoded into a block, or why there is none. Destroys the message in the end: the block, its allocator and
/// the module must still be there.
struct Decoded {
    Result result;
    void* object = nullptr; ///< the message, in the block, not aligned
    Velmora::MsgDescriptor* descriptor = nullptr;
    size_t needed = 0; ///< bytes of block that message and storage take together; 0 if the bytes were refused

    Decoded() = default;
    Decoded(const Result& result_, void* object_, Velmora::MsgDescriptor* descriptor_, size_t needed_)
        : result(result_), object(object_), descriptor(descriptor_), needed(needed_) {}
    Decoded(Decoded&& other) noexcept
        : result(other.result), object(other.release()), descriptor(other.descriptor), needed(other.needed) {}
    Decoded& operator=(Decoded&& other) noexcept {
        if (this != &other) {
            std::destroy_at(this);
            std::construct_at(this, std::move(other));
        }
        return *this;
    }
    ~Decoded() {
        if (object != nullptr) descriptor->destroy(object);
    }

    explicit operator bool() const { return object != nullptr; }

    /// Leaves the message to the caller, who destroys it through `descriptor`, or abandons it with its block.
    void* release() { return std::exchange(object, nullptr); }
};

/// Decodes the message that the bytes hold, and builds it at the next free byte of `block`. When anything is refused, also
/// for want of room (Fault::blockTooSmall), there is no message, and the block has as much left as before; its free bytes
/// may have changed. Asserts that the module is initialised, for the descriptor is the module's.
Decoded decode_verified(const Protocol& protocol, Velmora::MsgType_t id, std::string_view bytes,
                        Velmora::BufferAllocator& block, const Policy& policy = whole);
inline Decoded decode_verified(Velmora::MsgType_t id, std::string_view bytes, Velmora::BufferAllocator& block,
                               const Policy& policy = whole) {
    return decode_verified(default_protocol(), id, bytes, block, policy);
}

/// The same of message T.
template <class T>
struct DecodedMessage {
    struct Destroy {
        void operator()(T* message) const { message->~T(); }
    };

    using Owner = std::unique_ptr<T, Destroy>;

    Result result;
    Owner object;      ///< in the block, not aligned
    size_t needed = 0; ///< as in Decoded

    explicit operator bool() const { return object != nullptr; }
    T& operator*() const { return *object; }
    T* operator->() const { return object.get(); }
};

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

namespace detail {

/// Decodes in two walks what the one did not accept, or tells in `result` what is wrong.
void* decode_judged(const Decoder& decoder, const Verifier& verifier, std::string_view bytes,
                    Velmora::BufferAllocator& block, const Policy& policy, Result& result, size_t& needed);

/// Calls `make` with the outcome: result, message and needed bytes.
template <class Make>
QL_FORCE_INLINE auto decode(const Decoder& decoder, const Verifier& verifier, Velmora::MsgType_t id,
                            std::string_view bytes, Velmora::BufferAllocator& block, const Policy& policy, Make make) {
    if (policy.accepts_every_form()) {
        const Placed placed = decoder.fresh(bytes, block, policy.trailingBytes);
        if (__builtin_expect(placed.message != nullptr, 1)) {
            const auto needed = static_cast<size_t>(block.end() - static_cast<char*>(placed.message));
            return make(Result{.id = id,
                               .consumed = placed.consumed,
                               .blockBytes = needed - decoder.size,
                               .begin = bytes.data(),
                               .end = bytes.data() + bytes.size(),
                               .type = decoder.type},
                        placed.message, needed);
        }
    }
    Result result{.id = id};
    size_t needed = 0;
    void* const object = decode_judged(decoder, verifier, bytes, block, policy, result, needed);
    return make(result, object, needed);
}

QL_FORCE_INLINE Encoded encode(const Encoder& encoder, const void* value, char* begin, char* end) {
    if (const char* const last = encoder.within(value, begin, end); __builtin_expect(last != nullptr, 1))
        return {.refusal = Refusal::none, .size = static_cast<size_t>(last - begin), .field = {}};
    return encoder.measured(value, begin, end);
}

} // namespace detail

template <class T>
DecodedMessage<T> decode_verified(std::string_view bytes, Velmora::BufferAllocator& block,
                                  const Policy& policy = whole) {
    return detail::decode(detail::entry_of<T>(&Protocol::decoders), detail::entry_of<T>(&Protocol::verifiers), T::ID,
                          bytes, block, policy, [](const Result& result, void* message, size_t needed) {
                              using Owner = typename DecodedMessage<T>::Owner;
                              return DecodedMessage<T>{result, Owner(static_cast<T*>(message)), needed};
                          });
}

/// Writes the message at `begin`. When it is refused, bytes of the range may have changed, but none outside it.
Encoded encode_checked(const Protocol& protocol, Velmora::MsgType_t id, const void* message, char* begin, char* end);
inline Encoded encode_checked(Velmora::MsgType_t id, const void* message, char* begin, char* end) {
    return encode_checked(default_protocol(), id, message, begin, end);
}

template <class T>
Encoded encode_checked(const T& message, char* begin, char* end) {
    return detail::encode(detail::entry_of<T>(&Protocol::encoders), &message, begin, end);
}

} // namespace Inspect
