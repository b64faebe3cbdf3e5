// What a message is about, as filters and subjects name it: its family, its name, and a key out of its body.
//
//     const Topics topics(protocol, FAMILIES, KEYS); // such as "marketID" and "userID"
//     topics.family(id); topics.name(id); topics.key(id, body);        // "orders", "SubmitOrderMessage", "7"
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Host/Record.h"
#include "Inspect/Selection.h"

namespace Host {

/// Messages that belong together, told by the high byte of their identifiers. No receiver may rely on them.
struct Family {
    unsigned highByte;
    std::string_view name;
};

class Topics {
  public:
    /// The key of a message is the first of these fields that it has, itself or in its records.
    explicit Topics(const Inspect::Protocol& protocol, std::span<const Family> families = {},
                    std::span<const std::string_view> keys = {});

    const Inspect::Protocol& protocol() const { return *_protocol; }
    /// Of an identifier in no family: its high byte as two hexadecimal digits.
    std::string family(Velmora::MsgType_t id) const;
    std::string_view name(Velmora::MsgType_t id) const; ///< empty if there is no such message
    /// The value as text; empty if the message has none, or the body is bad. REQUIRES: the message is known.
    std::string key(Velmora::MsgType_t id, std::string_view body) const;
    bool hasKey(Velmora::MsgType_t id) const; ///< REQUIRES: as above

  private:
    size_t indexOf(Velmora::MsgType_t id) const;

    const Inspect::Protocol* _protocol;
    std::vector<Family> _families;
    std::vector<std::optional<Inspect::Selection>> _keys; ///< by INDEX
};

/// Which messages a subscriber wants. Alternatives of one kind; of several kinds all must hold. What is empty is any.
struct Filter {
    std::vector<std::string> families = {};
    std::vector<std::string> messages = {}; ///< by name
    std::vector<std::string> keys = {};
};

/// A filter made ready.
class Chooser {
  public:
    /// Throws std::invalid_argument for a name that no message has. REQUIRES: the topics outlive it.
    Chooser(const Topics& topics, const Filter& filter);

    /// REQUIRES: the message is known.
    bool takes(const Record& record) const;

  private:
    const Topics& _topics;
    std::vector<bool> _isTaken; ///< by INDEX
    std::vector<std::string> _keys;
};

} // namespace Host
