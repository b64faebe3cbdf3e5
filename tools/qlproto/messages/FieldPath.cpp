#include "tools/qlproto/messages/FieldPath.h"

#include <sstream>

#include "Inspect/Reflection.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/messages/Names.h"

namespace qlproto {

FieldPath::FieldPath(const std::string& text) {
    std::istringstream names(text);
    for (std::string name; std::getline(names, name, '.');) _names.push_back(name);
}

bool FieldPath::isEndOf(Inspect::Path path) const {
    auto piece = path.rbegin();
    for (auto name = _names.rbegin(); name != _names.rend(); ++name, ++piece) {
        while (piece != path.rend() && piece->name.empty()) ++piece; // elements have no names
        if (piece == path.rend() || piece->name != *name) return false;
    }
    return true;
}

FieldValue::FieldValue(const std::string& path) : _path(path) {
    const FieldPath field(path);
    bool isField = false;
    for (const Inspect::MessageInfo& message : Inspect::all_messages(thisTool.protocol)) {
        _values.emplace_back(*message.type, [&](Inspect::Path at, const Inspect::ValueInfo& value) {
            return value.kind != Inspect::Kind::vector && field.isEndOf(at);
        });
        isField |= !_values.back().isEmpty();
    }
    if (!isField) throw FilterError(noSuchField(path));
}

std::string shownText(const Inspect::Value& value, const Inspect::Display& display) {
    if (value.isSecret && display.secrets == Inspect::Secrets::hide) return std::string(Inspect::HIDDEN);
    return value.is_text() ? std::string(value.text) : Inspect::number_text(value, display);
}

std::optional<std::string> FieldValue::of(const MessageReader& reader, const Inspect::Display& display) const {
    std::optional<std::string> text;
    each(reader, [&](const Inspect::Value& value) {
        text = shownText(value, display);
        return false;
    });
    return text;
}

} // namespace qlproto
