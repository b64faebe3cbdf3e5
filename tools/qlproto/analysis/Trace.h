// All that happened to one order, to one quote or by one user, across messages.
//
// The traced thing is known by one identifier at first; further ones are learnt from the messages that belong to it. So
// a message can come before the one that tells that it belongs: trace() is done over the messages again until nothing
// new was learnt. Memory grows with the steps found.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tools/qlproto/MessageReader.h"
#include "tools/qlproto/analysis/Identifiers.h"

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

class Trace {
  public:
    struct Step {
        int64_t time;       ///< of the packet
        uint64_t number;    ///< of the packet, from 1
        std::string packet; ///< its bytes
    };

    /// `user`: messages that name only other users are none of it.
    Trace(TraceRule rule, const std::string& name, std::optional<int32_t> user);

    /// Begins a pass over the messages; forgets steps, not names.
    void beginPass();

    /// A message of the pass, in the order of the capture.
    void add(const Packet& packet, const MessageReader& reader, uint64_t number);

    /// Whether this pass has learnt anything, so that another can find more.
    bool hasLearnt() const { return _known.size() != _knownBefore; }

    /// What the pass found, in order of time.
    std::vector<Step> steps() const;

  private:
    TraceRule _rule;
    std::optional<Identifier> _user;
    std::set<Identifier> _known;
    std::size_t _knownBefore = 0;
    std::vector<Step> _steps;
    std::vector<Identifier> _identifiers; ///< of the message at hand
};

} // namespace qlproto
