// Takes packets apart: identifier, body, message.
//
// Bodies are decoded checked. The message and its storage lie in one block that the next packet reuses; whatever the
// bytes are, memory stays bounded.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "Backend/Common/Inline.h"
#include "Backend/Velmora/BufferAllocator.h"
#include "Backend/Velmora/MsgDescriptor.h"
#include "Capture/Packet.h"
#include "Inspect/Checked.h"

namespace qlproto {

class MessageReader {
  public:
    explicit MessageReader(const Inspect::Policy& policy = Inspect::whole);
    MessageReader(const MessageReader&) = delete; // the message refers to the allocator
    MessageReader& operator=(const MessageReader&) = delete;

    /// Decodes the message of a packet. False if it is bad by the policy; fault() then says why and there is no message.
    bool read(std::string_view packet);

    /// The same without decoding it: there is no message then either way.
    bool verify(std::string_view packet);
    bool verify(const Capture::Packet& packet);

    /// What kind of fault, as in "truncated".
    const std::string& faultKind() const { return _faultKind; }

    /// One line: "TimerMessage: truncated at byte 0 (tqid)"; bytes count from the body's begin.
    const std::string& fault() const { return _fault; }

    // REQUIRES: the last read() was true, or for what is no message, verify(). Valid until the next one; the body as long
    // as the packet.
    const Velmora::MsgDescriptor& descriptor() const { return *_descriptor; }
    const void* message() const { return _message.object; }
    std::string_view body() const { return _body; }

  private:
    bool begin(std::string_view packet);
    QL_COLD_PATH bool bad(std::string kind, std::string fault);
    QL_COLD_PATH bool bad(const Inspect::Result& result);

    // A verified body takes at most 33 bytes of block for each of its own, besides the object. Pages that no message
    // touches cost nothing.
    static constexpr std::size_t BLOCK = 33 * Capture::MAX_PACKET + 65536;

    const Inspect::Policy _policy;
    std::unique_ptr<char[]> _block;
    Velmora::BufferAllocator _alloc; ///< over the block; the message refers to it until it is destroyed
    Velmora::MsgDescriptor* _descriptor = nullptr;
    Inspect::Decoded _message;
    std::string_view _body;
    std::string _pad; ///< the last pad and what reading it may reach after its end
    std::string _fault, _faultKind;
};

} // namespace qlproto
