// All that happened to one order, to one quote or by one user, across messages.
//
// The traced thing is known by one identifier at first; further ones are learnt from the messages that belong to it, and
// a message can come before the one that tells that it belongs. So all messages that may belong are kept, with what they
// say of identifiers, and which of them do is found out at the end. The messages are kept in a file if they are many;
// memory grows with the identifiers in the capture, by some 100 bytes for each and 12 for each time it occurs, and with
// the steps found.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "Capture/SeededHash.h"
#include "tools/qlproto/analysis/PacketSpool.h"
#include "tools/qlproto/messages/MessageReader.h"
#include "tools/qlproto/trading/Identifiers.h"

namespace qlproto {

/// Which identifiers lead from message to message.
struct TraceRule {
    std::vector<IdKind> names;     ///< identify the traced thing; a message that has one of these belongs by it alone
    std::vector<IdKind> followUps; ///< say to which messages one belongs that has none of the names
    bool namesLead;                ///< further names in a message of it name it, too

    static TraceRule order();
    static TraceRule quote();
    static TraceRule user();
};

/// Whether a message with that identifier has fields for such identifiers.
bool mayTellOf(const TraceRule& rule, Velmora::MsgType_t id);

class Trace {
  public:
    struct Step {
        int64_t time;                                       ///< of the packet
        uint64_t number;                                    ///< of the packet, from 1
        std::string packet;                                 ///< its bytes
        std::optional<Capture::Connection> connection = {}; ///< by which it came, if that is known
    };

    /// `user`: messages that name only other users are none of it.
    Trace(TraceRule rule, const std::string& name, std::optional<int32_t> user);

    /// A message, in the order of the capture. Throws IoError if it cannot be kept.
    void add(const Capture::Packet& packet, const MessageReader& reader, uint64_t number);

    /// What belongs of all messages, in order of time. To be asked once. Throws IoError.
    std::vector<Step> steps();

  private:
    /// The identifiers in a message that was kept: their place in _linked, up to that of the next message; the names
    /// come first.
    struct Link {
        std::size_t begin;
        std::size_t names;
    };
    using Ids = std::span<const uint32_t>;

    uint32_t numberOf(const Identifier& identifier);
    Ids idsOf(std::size_t message) const;
    Ids leading(std::size_t message) const; ///< it belongs if one of these is known
    Ids learnt(std::size_t message) const;  ///< which are known if it belongs
    std::vector<bool> findBelonging() const;

    TraceRule _rule;
    std::optional<Identifier> _user;
    std::vector<uint32_t> _known; ///< from the start
    Capture::SeededMap<std::string, uint32_t> _numbers;
    std::vector<uint32_t> _linked;
    std::vector<Link> _links; ///< one for each message kept
    PacketSpool _kept;
    std::vector<Identifier> _identifiers; ///< of the message at hand
};

} // namespace qlproto
