#include "tools/qlproto/messages/FieldPath.h"

#include <algorithm>
#include <sstream>

#include <fmt/format.h>

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

PacketValue::PacketValue(std::string_view name) {
    constexpr const auto& facts = Capture::CONNECTION_FACTS;
    const auto found = std::ranges::find(facts, name.substr(1));
    if (found == facts.end())
        throw FilterError(
            fmt::format("'{}' is nothing that is known of messages: there are _{}", name, fmt::join(facts, ", _")));
    _fact = static_cast<Capture::ConnectionFact>(found - facts.begin());
}

std::optional<Inspect::Value> PacketValue::of(const Capture::Packet& packet, std::string& room) const {
    if (packet.connection == nullptr) return std::nullopt;
    if (isNumber())
        return Inspect::Value{
            .kind = Inspect::Kind::uint64, .number = static_cast<int64_t>(packet.connection->number), .text = {}};
    room = Capture::textOf(_fact, *packet.connection);
    return Inspect::Value{.kind = Inspect::Kind::string, .text = room};
}

FieldValue::FieldValue(const std::string& path) : _path(path) {
    if (PacketValue::isName(path)) {
        _ofPacket.emplace(path);
        return;
    }
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

std::optional<std::string> FieldValue::of(const Capture::Packet& packet, const MessageReader& reader,
                                          const Inspect::Display& display) const {
    std::optional<std::string> text;
    each(packet, reader, [&](const Inspect::Value& value) {
        text = shownText(value, display);
        return false;
    });
    return text;
}

} // namespace qlproto
