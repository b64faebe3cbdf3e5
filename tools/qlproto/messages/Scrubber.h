// Bodies without what tells who traded and what they said: fit to be shown to others.
//
// What becomes of a value the definition decides: secrets are emptied, texts and identifiers become pseudonyms, times at
// stations move by what is asked for; enumerators, booleans and all other numbers stay. Prices and amounts, which travel alike,
// are scaled if that is asked for.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Inspect/BodyWalk.h"
#include "tools/qlproto/messages/Pseudonyms.h"

namespace qlproto {

struct ScrubRules {
    std::vector<std::string> kept = {}; ///< names of fields that stay as they are; not if they are secret
    double scale = 1;                   ///< of prices and amounts
    int64_t shift = 0;                  ///< of times, nanoseconds
};

class Scrubber {
  public:
    enum class Deed : uint8_t { kept, renamed, emptied, scaled, shifted };
    static const char* toText(Deed deed);

    Scrubber(std::string_view key, ScrubRules rules) : _pseudonyms(key), _rules(std::move(rules)) {}

    /// A message's body as others may see it. REQUIRES: verify() takes it under `whole`.
    std::string body(Velmora::MsgType_t id, std::string_view body);

    /// Values of each field of each message to which something was done, or that were kept as they were asked to be.
    struct Done {
        std::string message, field;
        Deed deed;
        auto operator<=>(const Done&) const = default;
    };
    const std::map<Done, uint64_t>& done() const { return _done; }

  private:
    std::optional<Deed> deedFor(const Inspect::BodyValue& value) const; ///< none: nothing, without being asked
    void writeText(const Inspect::BodyValue& value, Deed deed, std::string_view body, std::string& to);
    int64_t numberFor(const Inspect::BodyValue& value, Deed deed);

    Pseudonyms _pseudonyms;
    const ScrubRules _rules;
    std::map<Done, uint64_t> _done;
};

} // namespace qlproto
