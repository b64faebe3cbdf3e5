// Fields of messages by their name or the end of their path, as users write them: "side", "contents.price". What is known of
// a message besides has names that begin with "_": see PacketValue.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Capture/Connection.h"
#include "Capture/Packet.h"
#include "Inspect/Display.h"
#include "Inspect/Selection.h"
#include "tools/qlproto/messages/MessageReader.h"

namespace qlproto {

/// What cannot be meant: no such message, field or enumerator.
class FilterError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

class FieldPath {
  public:
    explicit FieldPath(const std::string& text);

    /// Whether it is the path's field or the end of it. Indices do not belong to it.
    bool isEndOf(Inspect::Path path) const;

  private:
    std::vector<std::string> _names;
};

/// What is known of a message by how it came: "_connection" and so on, the names of Capture::ConnectionFact. One that came by
/// no connection has no such values.
class PacketValue {
  public:
    /// Throws FilterError if there is none of that name.
    explicit PacketValue(std::string_view name);

    static bool isName(std::string_view name) { return name.starts_with('_'); }

    bool isNumber() const { return _fact == Capture::ConnectionFact::connectionID; }

    /// The value, whose text lies in `room`.
    std::optional<Inspect::Value> of(const Capture::Packet& packet, std::string& room) const;

  private:
    Capture::ConnectionFact _fact;
};

/// A value as text without quotes, as the options have it.
std::string shownText(const Inspect::Value& value, const Inspect::Display& display);

/// The values of a path in each message.
class FieldValue {
  public:
    /// Throws FilterError if no message has such a field.
    explicit FieldValue(const std::string& path);

    const std::string& path() const { return _path; }

    /// Calls `visit(value)` for each value of the path in the message, until it returns false.
    template <class Visit>
    void each(const Capture::Packet& packet, const MessageReader& reader, Visit&& visit) const {
        if (_ofPacket) {
            std::string room;
            if (const std::optional<Inspect::Value> value = _ofPacket->of(packet, room)) visit(*value);
            return;
        }
        _values[static_cast<std::size_t>(reader.descriptor().index())].read(reader.body(), visit);
    }

    /// The first as text; nothing if the message has no such field or the body no such element.
    std::optional<std::string> of(const Capture::Packet& packet, const MessageReader& reader,
                                  const Inspect::Display& display) const;

  private:
    std::string _path;
    std::optional<PacketValue> _ofPacket;
    std::vector<Inspect::Selection> _values; ///< by INDEX
};

} // namespace qlproto
