#include "Host/Topics.h"

#include <algorithm>
#include <stdexcept>

#include "Inspect/Reflection.h"

namespace Host {

namespace {

/// The path of the first field of that name that stands in no vector; empty if there is none.
std::string pathOf(const Inspect::TypeInfo& type, std::string_view name) {
    for (const Inspect::FieldInfo& field : type.fields)
        if (field.name == name && field.value.record == nullptr && field.value.element == nullptr)
            return std::string(name);
    for (const Inspect::FieldInfo& field : type.fields) {
        if (field.value.kind != Inspect::Kind::record) continue;
        const std::string inner = pathOf(*field.value.record, name);
        if (!inner.empty()) return std::string(field.name) + '.' + inner;
    }
    return "";
}

bool holds(const std::vector<std::string>& all, std::string_view it) {
    return all.empty() || std::ranges::find(all, it) != all.end();
}

} // namespace

Topics::Topics(const Inspect::Protocol& protocol, std::span<const Family> families,
               std::span<const std::string_view> keys)
    : _protocol(&protocol), _families(families.begin(), families.end()) {
    for (const Inspect::MessageInfo& message : protocol.messages) {
        _keys.emplace_back();
        for (const std::string_view name : keys) {
            const std::string path = pathOf(*message.type, name);
            if (path.empty()) continue;
            _keys.back() = Inspect::Selection::at(*message.type, path);
            break;
        }
    }
}

std::string Topics::family(Velmora::MsgType_t id) const {
    const unsigned high = id >> 8;
    for (const Family& it : _families)
        if (it.highByte == high) return std::string(it.name);
    constexpr const char* digits = "0123456789abcdef";
    return {digits[high >> 4], digits[high & 15]};
}

std::string_view Topics::name(Velmora::MsgType_t id) const {
    const Inspect::TypeInfo* const type = Inspect::reflect(*_protocol, id);
    return type != nullptr ? type->name : std::string_view();
}

size_t Topics::indexOf(Velmora::MsgType_t id) const { return _protocol->index.find(id)->index; }

bool Topics::hasKey(Velmora::MsgType_t id) const { return _keys[indexOf(id)].has_value(); }

std::string Topics::key(Velmora::MsgType_t id, std::string_view body) const {
    std::string text;
    if (const std::optional<Inspect::Selection>& key = _keys[indexOf(id)])
        key->read(body, [&](const Inspect::Value& value) {
            text = value.is_text() ? std::string(value.text) : Inspect::number_text(value);
            return true;
        });
    return text;
}

Chooser::Chooser(const Topics& topics, const Filter& filter) : _topics(topics), _keys(filter.keys) {
    const auto messages = topics.protocol().messages;
    for (const std::string& name : filter.messages)
        if (std::ranges::none_of(messages, [&](const auto& it) { return it.type->name == name; }))
            throw std::invalid_argument("no message is named '" + name + "'");
    for (const std::string& name : filter.families)
        if (std::ranges::none_of(messages, [&](const auto& it) { return topics.family(it.id) == name; }))
            throw std::invalid_argument("no family of messages is named '" + name + "'");
    for (const Inspect::MessageInfo& it : messages)
        _isTaken.push_back(holds(filter.messages, it.type->name) && holds(filter.families, topics.family(it.id)));
}

bool Chooser::takes(const Record& record) const {
    return _isTaken[_topics.protocol().index.find(record.id)->index]
           && (_keys.empty() || holds(_keys, _topics.key(record.id, record.body)));
}

} // namespace Host
