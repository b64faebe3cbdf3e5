// Takes packets apart: identifier, body, message.
//
// The message and its storage lie in one block that the next packet reuses; whatever the bytes are, memory stays
// bounded.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "generated/QLProtocol/QLProtocol.h"
#include "tools/qlproto/Packet.h"

namespace qlproto {

class MessageReader {
  public:
    MessageReader();
    ~MessageReader() { discard(); }
    MessageReader(const MessageReader&) = delete;
    MessageReader& operator=(const MessageReader&) = delete;

    /// Decodes the message of a packet. False if it is bad; fault() then says why and there is no message.
    bool read(std::string_view packet);

    const std::string& fault() const { return _fault; }

    // REQUIRES: the last read() was true. Valid until the next one.
    const Velmora::MsgDescriptor& descriptor() const { return *_descriptor; }
    const void* message() const { return _message; }
    std::string_view body() const { return _body; }

  private:
    bool decode();
    bool bad(std::string fault);
    void discard();

    // Reading does not stop at the body's end, so a bad body makes the codec run on. It is read from a copy with zeros
    // behind it: where there are only zeros, strings and vectors are empty and every number is one byte, so what is
    // left of the message is at most what was begun inside the body: one string of 65,535 bytes, and two nested vectors
    // of 32,767 elements, none of which takes more than 15 bytes of zeros.
    static constexpr std::size_t SLACK = 2 * 32767 * 15 + 65535 + 4096;

    // A valid body becomes at most 33 times as long in memory: an empty string is a byte on the wire, and an object and
    // a NUL in the block. Pages that no message touches cost nothing.
    static constexpr std::size_t BLOCK = 64 * MAX_PACKET;

    std::unique_ptr<char[]> _bytes; ///< the body and the zeros behind it
    std::size_t _dirty = 0;         ///< bytes of the last body; all behind them are zero
    std::unique_ptr<char[]> _block;
    Velmora::BufferAllocator _alloc; ///< over the block; the message refers to it until it is destroyed
    Velmora::MsgDescriptor* _descriptor = nullptr;
    void* _message = nullptr;
    std::string_view _body;
    std::string _fault;
};

} // namespace qlproto
