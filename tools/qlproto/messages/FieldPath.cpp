#include "tools/qlproto/messages/FieldPath.h"

#include <algorithm>
#include <iterator>
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

constexpr std::pair<std::string_view, PacketValue::What> PacketValue::NAMES[] = {{"_connection", What::connection},
                                                                                 {"_connectionID", What::connectionID},
                                                                                 {"_from", What::from},
                                                                                 {"_to", What::to},
                                                                                 {"_direction", What::direction}};

PacketValue::PacketValue(std::string_view name) {
    const auto found = std::ranges::find(NAMES, name, &std::pair<std::string_view, What>::first);
    if (found == std::end(NAMES)) {
        std::string names;
        for (const auto& it : NAMES) names.append(names.empty() ? "" : ", ").append(it.first);
        throw FilterError(fmt::format("'{}' is nothing that is known of messages: there are {}", name, names));
    }
    _what = found->second;
}

bool PacketValue::isNumber() const { return _what == What::connectionID; }

std::optional<Inspect::Value> PacketValue::of(const Capture::Packet& packet, std::string& room) const {
    if (packet.connection == nullptr) return std::nullopt;
    const Capture::Connection& it = *packet.connection;
    Inspect::Value value{.kind = Inspect::Kind::string, .text = {}};
    switch (_what) {
    case What::connectionID:
        value.kind = Inspect::Kind::uint64;
        value.number = static_cast<int64_t>(it.number);
        return value;
    case What::connection:
        room = it.text();
        break;
    case What::from:
        room = it.sender().text();
        break;
    case What::to:
        room = it.receiver().text();
        break;
    case What::direction:
        room = it.isBack ? "back" : "there";
        break;
    }
    value.text = room;
    return value;
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
