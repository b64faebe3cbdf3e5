#include "tools/qlproto/messages/Names.h"

#include <algorithm>
#include <numeric>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "tools/qlproto/Tool.h"
#include "tools/qlproto/commands/Arguments.h"

namespace qlproto {

namespace {

using Names = std::vector<std::string_view>;

/// Whether the user means a number, of whatever size.
bool isNumber(std::string_view text) {
    const bool isHex = text.starts_with("0x") || text.starts_with("0X");
    const std::string_view digits = isHex ? "0123456789abcdefABCDEF" : "0123456789";
    return text.size() > (isHex ? 2 : 0) && text.find_first_not_of(digits, isHex ? 2 : 0) == text.npos;
}

std::string lower(std::string_view text) {
    std::string result(text);
    for (char& c : result)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
    return result;
}

/// Letters to insert, remove or replace to make `b` of `a`.
std::size_t editDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0]; // of the row before
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i] != b[j]);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, diagonal + 1, row[j] + 1});
        }
    }
    return row[b.size()];
}

Names messageNames() {
    Names names;
    for (const Inspect::MessageInfo& message : Inspect::all_messages(thisTool.protocol))
        names.push_back(message.type->name);
    return names;
}

Names typeNames() {
    Names names = messageNames();
    for (const Inspect::TypeInfo* record : Inspect::all_records(thisTool.protocol)) names.push_back(record->name);
    return names;
}

Names enumerationNames() {
    Names names;
    for (const Inspect::EnumerationInfo* enumeration : Inspect::all_enumerations(thisTool.protocol))
        names.push_back(enumeration->name);
    return names;
}

/// What is wrong with a name, and which others may be meant.
std::string suggesting(std::string text, std::string_view name, const Names& candidates) {
    const Names nearest = nearestNames(name, candidates);
    for (std::size_t i = 0; i < nearest.size(); ++i) {
        text += i == 0 ? "; did you mean " : i + 1 == nearest.size() ? " or " : ", ";
        text += nearest[i];
    }
    return nearest.empty() ? text : text + "?";
}

} // namespace

std::string noneNamed(const char* what, std::string_view name, const Names& candidates) {
    return suggesting(fmt::format("no {} is named '{}'", what, name), name, candidates);
}

Names fieldNames() {
    Names names;
    const auto add = [&](const Inspect::TypeInfo& type) {
        for (const Inspect::FieldInfo& field : type.fields)
            if (std::ranges::find(names, field.name) == names.end()) names.push_back(field.name);
    };
    for (const Inspect::MessageInfo& message : Inspect::all_messages(thisTool.protocol)) add(*message.type);
    for (const Inspect::TypeInfo* record : Inspect::all_records(thisTool.protocol)) add(*record);
    return names;
}

const Inspect::MessageInfo* findMessage(std::string_view nameOrId) {
    const std::optional<Velmora::MsgType_t> id = numberIn<Velmora::MsgType_t>(nameOrId);
    for (const Inspect::MessageInfo& message : Inspect::all_messages(thisTool.protocol))
        if (message.type->name == nameOrId || message.id == id) return &message;
    return nullptr;
}

NamedType findType(std::string_view nameOrId) {
    if (const Inspect::MessageInfo* const message = findMessage(nameOrId)) return {message->type, message->id};
    for (const Inspect::TypeInfo* record : Inspect::all_records(thisTool.protocol))
        if (record->name == nameOrId) return {record, {}};
    return {};
}

const Inspect::EnumerationInfo* findEnumeration(std::string_view name) {
    for (const Inspect::EnumerationInfo* enumeration : Inspect::all_enumerations(thisTool.protocol))
        if (enumeration->name == name) return enumeration;
    return nullptr;
}

std::vector<std::string_view> nearestNames(std::string_view name, const std::vector<std::string_view>& candidates) {
    constexpr std::size_t MOST = 3;
    struct Near {
        std::size_t distance;
        std::string_view name;
    };
    std::vector<Near> near;
    const std::string wanted = lower(name);
    for (std::string_view candidate : candidates) {
        const std::string other = lower(candidate);
        const bool isPart = wanted.size() >= 3 && other.find(wanted) != std::string::npos;
        const std::size_t distance = isPart ? 1 : editDistance(wanted, other);
        if (distance <= 1 + wanted.size() / 3) near.push_back({distance, candidate});
    }
    std::stable_sort(near.begin(), near.end(), [](const Near& a, const Near& b) {
        return std::pair(a.distance, a.name.size()) < std::pair(b.distance, b.name.size());
    });
    std::vector<std::string_view> names;
    for (const Near& it : near)
        if (names.size() < MOST) names.push_back(it.name);
    return names;
}

std::string noSuchMessage(std::string_view nameOrId) {
    if (isNumber(nameOrId)) return fmt::format("no message has the identifier {}", nameOrId);
    return noneNamed("message", nameOrId, messageNames());
}

std::string noSuchField(std::string_view name) {
    const std::string_view last = name.substr(name.rfind('.') + 1); // of a path
    return suggesting(fmt::format("no message has a field '{}'", name), last, fieldNames());
}

std::string noSuchEnumerator(const Inspect::EnumerationInfo& enumeration, std::string_view name) {
    Names names;
    for (const Inspect::EnumeratorInfo& it : enumeration.enumerators) names.push_back(it.name);
    std::string text = noneNamed(std::string(enumeration.name).c_str(), name, names);
    if (!text.ends_with('?')) text += fmt::format("; there are {}", fmt::join(names, ", "));
    return text;
}

CLI::Validator isMessage() {
    return {[](std::string& text) { return findMessage(text) != nullptr ? "" : noSuchMessage(text); }, MESSAGE_VALUE};
}

CLI::Validator isIdentifier() {
    return {[](std::string& text) {
                if (!isNumber(text)) return fmt::format("'{}' is no number", text);
                return findMessage(text) != nullptr ? "" : noSuchMessage(text);
            },
            "ID"};
}

CLI::Validator isType() {
    return {[](std::string& text) -> std::string {
                if (findType(text).type != nullptr) return "";
                return isNumber(text) ? noSuchMessage(text) : noneNamed("message or record", text, typeNames());
            },
            TYPE_VALUE};
}

CLI::Validator isField() {
    return {[](std::string& text) {
                const Names names = fieldNames();
                return std::ranges::find(names, text) != names.end() ? "" : noSuchField(text);
            },
            FIELD_VALUE};
}

CLI::Validator isEnumeration() {
    return {[](std::string& text) {
                return findEnumeration(text) != nullptr ? "" : noneNamed("enumeration", text, enumerationNames());
            },
            ENUMERATION_VALUE};
}

} // namespace qlproto
