// Fields of messages by their name or the end of their path, as users write them: "side", "contents.price".
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

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
    void each(const MessageReader& reader, Visit&& visit) const {
        _values[static_cast<std::size_t>(reader.descriptor().index())].read(reader.body(), visit);
    }

    /// The first as text; nothing if the message has no such field or the body no such element.
    std::optional<std::string> of(const MessageReader& reader, const Inspect::Display& display) const;

  private:
    std::string _path;
    std::vector<Inspect::Selection> _values; ///< by INDEX
};

} // namespace qlproto
