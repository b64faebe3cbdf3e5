#include "generator/Definition.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <map>
#include <optional>
#include <set>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <pugixml.hpp>

namespace qlgen {
namespace {

// Words that cannot be the name of anything in the generated code.
const std::set<std::string_view> keywords = {
    "alignas",     "alignof",  "and",        "and_eq",    "asm",       "auto",         "bitand",
    "bitor",       "bool",     "break",      "case",      "catch",     "char",         "char16_t",
    "char32_t",    "char8_t",  "class",      "co_await",  "co_return", "co_yield",     "compl",
    "concept",     "const",    "const_cast", "consteval", "constexpr", "constinit",    "continue",
    "decltype",    "default",  "delete",     "do",        "double",    "dynamic_cast", "else",
    "enum",        "explicit", "export",     "extern",    "false",     "float",        "for",
    "friend",      "goto",     "if",         "inline",    "int",       "long",         "mutable",
    "namespace",   "new",      "noexcept",   "not",       "not_eq",    "nullptr",      "operator",
    "or",          "or_eq",    "private",    "protected", "public",    "register",     "reinterpret_cast",
    "requires",    "return",   "short",      "signed",    "sizeof",    "static",       "static_assert",
    "static_cast", "struct",   "switch",     "template",  "this",      "thread_local", "throw",
    "true",        "try",      "typedef",    "typeid",    "typename",  "union",        "unsigned",
    "using",       "virtual",  "void",       "volatile",  "wchar_t",   "while",        "xor",
    "xor_eq"};

// Names that the generated code gives a meaning of its own: in the namespace, in a helper, in a record or message.
const std::set<std::string_view> takenByModule = {
    "Quillon",         "Velmora",     "bufstl",    "AsciiWriter",   "Atomic",
    "BufferAllocator", "DumbCrypt",   "FastCodec", "FastOStream",   "MsgDescriptor",
    "MsgHandler",      "MsgProtocol", "MsgType_t", "Protocol",      "QLProtocolError",
    "StaticOStream",   "Util",        "VERSION",   "VALIDATE_ENUM", "bufstring",
    "bufvector",       "bufvectox",   "dispatch",  "enumerationOf", "enumerations",
    "enumerators",     "fields",      "finalize",  "initialize",    "initialized",
    "messages",        "records",     "registry",  "validateEnum",  "allEnumerations",
    "allMessages",     "allRecords",  "cas_t",     "cas2_t"};
const std::set<std::string_view> takenByHelper = {"Type",     "Name",    "initialize", "finalize",  "isValid",
                                                  "toString", "toIndex", "fromValue",  "fromIndex", "fromString"};
const std::set<std::string_view> takenByComposite = {"ID", "INDEX", "set", "write", "read", "checkbounds"};

struct Builtin {
    const char* cppType;
    const char* encoding;
    bool holdsStorage;
};
const std::map<std::string_view, Builtin> builtins = {
    {"bool", {"bool", "plain", false}},         {"int8", {"int8_t", "plain", false}},
    {"int16", {"int16_t", "plain", false}},     {"int32", {"int32_t", "plain", false}},
    {"int64", {"int64_t", "plain", false}},     {"price", {"int64_t", "price", false}},
    {"string", {"bufstring", "plain", true}},   {"cryptstring", {"bufstring", "crypt", true}},
    {"padding", {"bufstring", "padding", true}}};

bool isIdentifier(std::string_view name) {
    const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    return !name.empty() && isLetter(name.front()) && name.find("__") == name.npos
           && std::ranges::all_of(name, [&](char c) { return isLetter(c) || (c >= '0' && c <= '9') || c == '_'; });
}

/// Decimal, or hexadecimal after 0x.
std::optional<int64_t> parseNumber(std::string_view text) {
    int base = 10;
    if (text.starts_with("0x")) {
        base = 16;
        text.remove_prefix(2);
        if (text.starts_with('-')) return {};
    }
    int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    if (error != std::errc() || end != text.data() + text.size()) return {};
    return number;
}

/// The type of a field as written, taken apart.
struct TypeName {
    std::string element;
    bool isVector;
};
TypeName splitType(const std::string& type) {
    if (type.ends_with("[]")) return {type.substr(0, type.size() - 2), true};
    return {type, false};
}

class Reader {
  public:
    Reader(const std::string& xml, const std::string& file) : _xml(xml), _file(file) {}

    Definition read();

  private:
    using Node = pugi::xml_node;
    using Names = std::initializer_list<std::string_view>;

    enum class Kind { enumeration, record, message };
    struct Declared {
        Kind kind;
        Node node;
        bool isRead = false;       // a record whose fields have been resolved, so that it may be used
        bool holdsStorage = false; // of such a record
    };

    void error(size_t offset, const std::string& text);
    void error(Node node, const std::string& text) { error(static_cast<size_t>(node.offset_debug()), text); }

    void checkAttributes(Node node, Names required, Names optional = {});
    void checkChildren(Node node, Names allowed);
    std::string text(Node node, const char* attribute) { return node.attribute(attribute).value(); }
    std::string doc(Node node);
    std::string signature(Node node, const char* attribute);
    std::optional<int64_t> number(Node node, const char* attribute, int64_t min, int64_t max);
    std::string identifier(Node node, const std::set<std::string_view>& taken);

    Definition readProtocol(Node protocol);
    void readMeanings(Node meanings);
    void declareTypes(Node protocol);
    void findCycles(Node protocol);
    Enumeration readEnumeration(Node node);
    Composite readComposite(Node node);
    std::optional<Field> readField(Node node);
    bool resolveType(Node node, const std::string& type, Field& field);
    bool resolveVector(Node node, const std::string& element, Field& field);
    void readId(Node node, Composite& message);

    const std::string& _xml;
    const std::string& _file;
    std::multimap<size_t, std::string> _errors; // by line
    std::map<std::string, std::string> _meanings;
    std::set<std::string> _usedMeanings;
    std::map<std::string, Declared> _types;
    std::set<std::string> _onCycle;
    std::map<int64_t, std::string> _ids;   // messages by identifier
    std::map<int64_t, std::string> _slots; // and by slot of the direct table
};

void Reader::error(size_t offset, const std::string& text) {
    const auto end = _xml.begin() + static_cast<std::ptrdiff_t>(std::min(offset, _xml.size()));
    const auto line = static_cast<size_t>(std::count(_xml.begin(), end, '\n')) + 1;
    _errors.emplace(line, fmt::format("{}:{}: {}", _file, line, text));
}

/// Reports attributes that are unknown, given twice, missing or empty.
void Reader::checkAttributes(Node node, Names required, Names optional) {
    std::set<std::string_view> seen;
    for (const pugi::xml_attribute attribute : node.attributes()) {
        const std::string_view name = attribute.name();
        if (std::ranges::find(required, name) == required.end() && std::ranges::find(optional, name) == optional.end())
            error(node, fmt::format("<{}> has no attribute '{}'", node.name(), name));
        if (!seen.insert(name).second) error(node, fmt::format("attribute '{}' is given twice", name));
        if (*attribute.value() == '\0') error(node, fmt::format("attribute '{}' is empty", name));
    }
    for (const std::string_view name : required)
        if (!seen.contains(name)) error(node, fmt::format("<{}> lacks the attribute '{}'", node.name(), name));
}

/// Reports children that are not `allowed`, texts among them.
void Reader::checkChildren(Node node, Names allowed) {
    for (const Node child : node.children()) {
        if (child.type() != pugi::node_element)
            error(child, fmt::format("<{}> takes no text", node.name()));
        else if (std::ranges::find(allowed, std::string_view(child.name())) == allowed.end())
            error(child, fmt::format("<{}> takes no element <{}>", node.name(), child.name()));
    }
}

/// A text that ends up in a one-line comment.
std::string Reader::doc(Node node) {
    std::string text = this->text(node, "doc");
    if (text.ends_with('\\') || std::ranges::any_of(text, [](char c) { return c >= 0 && c < ' '; }))
        error(node, "the doc must be one line and not end with a backslash");
    return text;
}

std::string Reader::signature(Node node, const char* attribute) {
    std::string text = this->text(node, attribute);
    if (!text.empty() && (text.size() != 32 || text.find_first_not_of("0123456789abcdef") != text.npos))
        error(node, fmt::format("{} '{}' is not 32 hexadecimal digits in lower case", attribute, text));
    return text;
}

/// The attribute's value, or nothing if it is none in [min, max]; that it is missing has been reported already.
std::optional<int64_t> Reader::number(Node node, const char* attribute, int64_t min, int64_t max) {
    const std::string text = this->text(node, attribute);
    if (text.empty()) return {};
    const std::optional<int64_t> number = parseNumber(text);
    if (!number)
        error(node, fmt::format("{} '{}' is not a number", attribute, text));
    else if (*number < min || *number > max)
        error(node, fmt::format("{} {} is not in {}..{}", attribute, text, min, max));
    else
        return number;
    return {};
}

std::string Reader::identifier(Node node, const std::set<std::string_view>& taken) {
    std::string name = text(node, "name");
    if (name.empty()) return name;
    if (!isIdentifier(name))
        error(node, fmt::format("'{}' is not an identifier", name));
    else if (keywords.contains(name))
        error(node, fmt::format("'{}' is a word of C++", name));
    else if (taken.contains(name))
        error(node, fmt::format("the name '{}' is taken by the generated code", name));
    return name;
}

void Reader::readMeanings(Node meanings) {
    checkAttributes(meanings, {});
    checkChildren(meanings, {"meaning"});
    for (const Node node : meanings.children("meaning")) {
        checkAttributes(node, {"name", "doc"});
        checkChildren(node, {});
        const std::string name = text(node, "name");
        if (!_meanings.emplace(name, doc(node)).second) error(node, fmt::format("meaning '{}' is given twice", name));
    }
}

/// Makes all type names known before any field is read, so that a use before the declaration can be told from a typing
/// error.
void Reader::declareTypes(Node protocol) {
    const std::map<std::string_view, Kind> kinds = {
        {"enumeration", Kind::enumeration}, {"record", Kind::record}, {"message", Kind::message}};
    for (const Node node : protocol.children()) {
        const auto kind = kinds.find(node.name());
        if (kind == kinds.end()) continue;
        const std::string name = identifier(node, takenByModule);
        if (name.empty()) continue;
        if (builtins.contains(name)) error(node, fmt::format("'{}' is a built-in type", name));
        if (!_types.emplace(name, Declared{kind->second, node}).second)
            error(node, fmt::format("type '{}' is declared twice", name));
    }
}

/// Reports records that contain themselves, each cycle once.
void Reader::findCycles(Node protocol) {
    for (const Node start : protocol.children("record")) {
        const std::string name = text(start, "name");
        if (_onCycle.contains(name)) continue;
        std::vector<std::string> path;
        std::set<std::string> visited;
        const std::function<bool(const std::string&)> leadsBack = [&](const std::string& record) {
            path.push_back(record);
            if (record == name && path.size() > 1) return true;
            const auto declared = _types.find(record);
            if (declared != _types.end() && declared->second.kind == Kind::record && visited.insert(record).second)
                for (const Node field : declared->second.node.children("field"))
                    if (leadsBack(splitType(text(field, "type")).element)) return true;
            path.pop_back();
            return false;
        };
        if (!leadsBack(name)) continue;
        error(start, fmt::format("records contain each other: {}", fmt::join(path, " -> ")));
        _onCycle.insert(path.begin(), path.end());
    }
}

Enumeration Reader::readEnumeration(Node node) {
    checkAttributes(node, {"name", "doc"});
    checkChildren(node, {"enumerator"});
    Enumeration enumeration{text(node, "name"), doc(node), {}};
    std::set<std::string> names;
    std::map<int64_t, std::string> values;
    for (const Node child : node.children("enumerator")) {
        checkAttributes(child, {"name", "value"});
        checkChildren(child, {});
        const std::string name = identifier(child, takenByHelper);
        if (!name.empty() && !names.insert(name).second)
            error(child, fmt::format("enumerator '{}' is declared twice in '{}'", name, enumeration.name));
        // Up to here only, because the helper's tables are as long as the largest value.
        const std::optional<int64_t> value = number(child, "value", 0, UINT16_MAX);
        if (!value) continue;
        const auto [other, isNew] = values.emplace(*value, name);
        if (!isNew) error(child, fmt::format("enumerators '{}' and '{}' have the same value", other->second, name));
        enumeration.enumerators.push_back({name, static_cast<int32_t>(*value)});
    }
    if (node.child("enumerator").empty()) error(node, "an enumeration needs an enumerator");
    if (enumeration.enumerators.size() > 256) error(node, "an enumeration has at most 256 enumerators");
    return enumeration;
}

/// A vector's type follows from its elements: those that hold storage must be built with the allocator.
bool Reader::resolveVector(Node node, const std::string& element, Field& field) {
    field.encoding = "plain";
    field.holdsStorage = true;
    const auto declared = _types.find(element);
    if (declared != _types.end() && declared->second.kind == Kind::record)
        field.cppType = fmt::format("{}<{}>", declared->second.holdsStorage ? "bufvectox" : "bufvector", element);
    else if (element == "int32")
        field.cppType = "bufvector<int>";
    else if (element == "string")
        field.cppType = "bufvectox<bufstring>";
    else {
        error(node, fmt::format("there are no vectors of '{}', only of int32, string and records", element));
        return false;
    }
    return true;
}

/// Fills in what follows from the type. Returns false, having reported why, if it cannot be used here.
bool Reader::resolveType(Node node, const std::string& type, Field& field) {
    const auto [element, isVector] = splitType(type);
    const auto declared = _types.find(element);
    const auto builtin = builtins.find(element);
    if (declared == _types.end() && builtin == builtins.end()) {
        error(node, fmt::format("unknown type '{}'", element));
        return false;
    }
    if (builtin == builtins.end()) {
        if (declared->second.kind == Kind::message) {
            error(node, fmt::format("message '{}' cannot be the type of a field", element));
            return false;
        }
        if (declared->second.kind == Kind::record && !declared->second.isRead) {
            if (!_onCycle.contains(element))
                error(node, fmt::format("record '{}' is used before it is declared", element));
            return false;
        }
    }
    if (isVector) return resolveVector(node, element, field);
    if (builtin != builtins.end()) {
        field.cppType = builtin->second.cppType;
        field.encoding = builtin->second.encoding;
        field.holdsStorage = builtin->second.holdsStorage;
        return true;
    }
    field.isRecord = declared->second.kind == Kind::record;
    field.cppType = field.isRecord ? element : element + "::Type";
    field.encoding = "plain";
    field.holdsStorage = declared->second.holdsStorage;
    return true;
}

std::optional<Field> Reader::readField(Node node) {
    checkAttributes(node, {"name", "type"}, {"doc", "secret"});
    checkChildren(node, {});
    Field field;
    field.name = identifier(node, takenByComposite);
    if (_types.contains(field.name)) error(node, fmt::format("'{}' is the name of a type", field.name));
    field.doc = doc(node);
    if (field.doc.empty()) {
        const auto meaning = _meanings.find(field.name);
        if (meaning == _meanings.end())
            error(node, fmt::format("'{}' has neither a meaning nor a doc", field.name));
        else
            field.doc = meaning->second;
        _usedMeanings.insert(field.name);
    }
    const std::string secret = text(node, "secret");
    field.isSecret = secret == "true";
    if (!secret.empty() && secret != "true" && secret != "false")
        error(node, fmt::format("secret '{}' is neither true nor false", secret));
    const std::string type = text(node, "type");
    if (type.empty() || !resolveType(node, type, field)) return {};
    return field;
}

/// Name, doc and fields of a record or message.
Composite Reader::readComposite(Node node) {
    checkChildren(node, {"field"});
    Composite composite;
    composite.name = text(node, "name");
    composite.doc = doc(node);
    std::set<std::string> names;
    for (const Node child : node.children("field")) {
        const std::string name = text(child, "name");
        if (!name.empty() && !names.insert(name).second)
            error(child, fmt::format("field '{}' is declared twice in '{}'", name, composite.name));
        if (const std::optional<Field> field = readField(child)) composite.fields.push_back(*field);
    }
    if (node.child("field").empty()) error(node, fmt::format("a {} needs a field", node.name()));
    return composite;
}

void Reader::readId(Node node, Composite& message) {
    const std::optional<int64_t> id = number(node, "id", 0, UINT16_MAX);
    if (!id) return;
    message.id = static_cast<uint16_t>(*id);
    const auto [sameId, isNew] = _ids.emplace(*id, message.name);
    if (!isNew) {
        error(node, fmt::format("messages '{}' and '{}' have the same id", sameId->second, message.name));
        return;
    }
    const auto [sameSlot, isFree] = _slots.emplace(*id % directTableSlots, message.name);
    if (!isFree)
        error(node, fmt::format("messages '{}' and '{}' share slot {} of the direct table (id modulo {})",
                                sameSlot->second, message.name, *id % directTableSlots, directTableSlots));
}

/// The whole protocol. What is returned is of use only if nothing was reported.
Definition Reader::readProtocol(Node protocol) {
    Definition definition;
    checkAttributes(protocol, {"name", "version", "signature", "signatureAPI", "signatureStorage"},
                    {"xmlns:xsi", "xsi:noNamespaceSchemaLocation"}); // these tell editors where the schema is
    checkChildren(protocol, {"meanings", "enumeration", "record", "message"});
    for (const char* name : {"enumeration", "record", "message"})
        if (protocol.child(name).empty()) error(protocol, fmt::format("a protocol needs at least one <{}>", name));
    definition.name = identifier(protocol, {});
    definition.version = static_cast<int32_t>(number(protocol, "version", 0, INT32_MAX).value_or(0));
    definition.signature = signature(protocol, "signature");
    definition.signatureAPI = signature(protocol, "signatureAPI");
    definition.signatureStorage = signature(protocol, "signatureStorage");

    for (const Node node : protocol.children("meanings")) readMeanings(node);
    declareTypes(protocol);
    findCycles(protocol);
    for (const Node node : protocol.children("enumeration")) definition.enumerations.push_back(readEnumeration(node));
    for (const Node node : protocol.children("record")) {
        checkAttributes(node, {"name", "doc"});
        const Composite record = readComposite(node);
        if (const auto declared = _types.find(record.name); declared != _types.end()) {
            declared->second.isRead = true;
            declared->second.holdsStorage = record.holdsStorage();
        }
        definition.records.push_back(record);
    }
    for (const Node node : protocol.children("message")) {
        checkAttributes(node, {"name", "id", "doc"});
        Composite message = readComposite(node);
        readId(node, message);
        definition.messages.push_back(message);
    }
    for (const Node meanings : protocol.children("meanings"))
        for (const Node node : meanings.children("meaning"))
            if (const std::string name = text(node, "name"); !_usedMeanings.contains(name))
                error(node, fmt::format("no field uses the meaning '{}'", name));
    return definition;
}

Definition Reader::read() {
    Definition definition;
    pugi::xml_document document;
    const pugi::xml_parse_result result = document.load_buffer(_xml.data(), _xml.size());
    const Node root = document.document_element();
    if (!result)
        error(static_cast<size_t>(result.offset), fmt::format("not well-formed XML: {}", result.description()));
    else if (root.next_sibling())
        error(root.next_sibling(), "not well-formed XML: there is a second root element");
    else if (std::string_view(root.name()) != "protocol")
        error(root, "the root element must be <protocol>");
    else
        definition = readProtocol(root);

    if (_errors.empty()) return definition;
    std::string all;
    for (const auto& [line, text] : _errors) all += (all.empty() ? "" : "\n") + text;
    throw DefinitionError(all);
}

} // namespace

int32_t Enumeration::maxValue() const { return std::ranges::max(enumerators, {}, &Enumerator::value).value; }

bool Composite::holdsStorage() const { return std::ranges::any_of(fields, &Field::holdsStorage); }

Definition parseDefinition(const std::string& xml, const std::string& file) { return Reader(xml, file).read(); }

} // namespace qlgen
