#include <algorithm>
#include <charconv>
#include <functional>
#include <map>
#include <sstream>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <pugixml.hpp>

#include "generator/Definition.h"
#include "generator/Names.h"
#include "generator/Signature.h"
#include "generator/Xml.h"

namespace qlgen {
namespace {

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
    using Words = std::initializer_list<std::string_view>;

    enum class Kind { enumeration, record, message };
    /// Of a record, the following holds once its fields have been resolved, so that it may be used.
    struct Declared {
        Kind kind;
        Node node;
        size_t index; ///< among those of its kind
        bool isRead = false;
        bool holdsStorage = false;
        size_t values = 0; ///< with those of all that it embeds
        size_t depth = 0;  ///< steps to the deepest of them
    };
    /// What a name means wherever a field bears it.
    struct Meaning {
        std::string doc;
        std::string identifies;
        std::string station;
        bool isUsed = false;
    };

    void error(size_t offset, const std::string& text) { _errors.emplace(_lines.at(offset), text); }
    void error(Node node, const std::string& text) { error(static_cast<size_t>(node.offset_debug()), text); }

    void checkAttributes(Node node, Words required, Words optional = {});
    void checkChildren(Node node, Words allowed);
    void checkCount(Node node, const char* name, size_t most);
    std::string text(Node node, const char* attribute) { return node.attribute(attribute).value(); }
    std::string line(Node node, const char* attribute);
    std::string signature(Node node, const char* attribute);
    std::optional<int64_t> number(Node node, const char* attribute, int64_t min, int64_t max);
    size_t count(Node node, const char* attribute, int64_t most);
    bool flag(Node node, const char* attribute);
    std::string named(Node node, const char* attribute, NameOf of);

    void readModule(Node protocol, Definition& definition);
    void readTypes(Node protocol, Definition& definition);
    void readProtocol(Node protocol, Definition& definition);
    void readMeanings(Node meanings);
    void checkOrder(Node protocol);
    void declareTypes(Node protocol, const Definition& definition);
    void findCycles(Node protocol);
    Enumeration readEnumeration(Node node);
    void readValue(Node node, std::map<int64_t, std::string>& values, Enumerator& enumerator);
    Composite readComposite(Node node);
    std::optional<Field> readField(Node node);
    void readNotes(Node node, Field& field);
    bool resolveType(Node node, const std::string& type, FieldType& resolved);
    void deriveCpp(Field& field);
    void weigh(Node node, const Composite& composite);
    void readId(Node node, Composite& message);
    void assignSlots(Node protocol, Definition& definition);
    void checkMacros(Node protocol, const Definition& definition);

    const std::string& _xml;
    const std::string& _file;
    const Lines _lines{_xml};
    std::multimap<size_t, std::string> _errors; // by line
    std::map<std::string, Meaning> _meanings;
    std::map<std::string, Declared> _types;
    std::set<std::string> _onCycle;
    std::map<int64_t, std::string> _ids; // messages by identifier
};

/// Reports attributes that are unknown, given twice, missing or empty.
void Reader::checkAttributes(Node node, Words required, Words optional) {
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
void Reader::checkChildren(Node node, Words allowed) {
    for (const Node child : node.children()) {
        if (child.type() != pugi::node_element)
            error(child, fmt::format("<{}> takes no text", node.name()));
        else if (std::ranges::find(allowed, std::string_view(child.name())) == allowed.end())
            error(child, fmt::format("<{}> takes no element <{}>", node.name(), child.name()));
    }
}

/// Reports the first child of that name beyond `most`.
void Reader::checkCount(Node node, const char* name, size_t most) {
    size_t count = 0;
    for (const Node child : node.children(name))
        if (++count == most + 1)
            error(child, fmt::format("<{}> takes at most {} elements <{}>", node.name(), most, name));
}

/// A text that ends up in a one-line comment.
std::string Reader::line(Node node, const char* attribute) {
    std::string text = this->text(node, attribute);
    if (text.ends_with('\\') || std::ranges::any_of(text, [](char c) { return c >= 0 && c < ' '; }))
        error(node, fmt::format("the {} must be one line and not end with a backslash", attribute));
    if (countCharacters(text) > MAX_LINE)
        error(node, fmt::format("the {} has more than {} characters", attribute, MAX_LINE));
    if (turnsText(text))
        error(node, fmt::format("the {} holds a character that turns the direction of text", attribute));
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

/// The same of a number of things; 0 if it is not given.
size_t Reader::count(Node node, const char* attribute, int64_t most) {
    return static_cast<size_t>(number(node, attribute, 1, most).value_or(0));
}

bool Reader::flag(Node node, const char* attribute) {
    const std::string text = this->text(node, attribute);
    if (!text.empty() && text != "true" && text != "false")
        error(node, fmt::format("{} '{}' is neither true nor false", attribute, text));
    return text == "true";
}

/// A name, or nothing.
std::string Reader::named(Node node, const char* attribute, NameOf of) {
    std::string name = text(node, attribute);
    if (name.empty()) return name;
    if (const std::string why = whyNotName(of, name); !why.empty()) error(node, why);
    return name;
}

void Reader::readMeanings(Node meanings) {
    checkAttributes(meanings, {});
    checkChildren(meanings, {"meaning"});
    for (const Node node : meanings.children("meaning")) {
        checkAttributes(node, {"name", "doc"}, {"identifies", "station"});
        checkChildren(node, {});
        const std::string name = text(node, "name");
        const Meaning meaning{line(node, "doc"), named(node, "identifies", NameOf::mark),
                              named(node, "station", NameOf::mark)};
        if (!_meanings.emplace(name, meaning).second) error(node, fmt::format("meaning '{}' is given twice", name));
    }
}

/// Reports the first element that stands after one of a later kind.
void Reader::checkOrder(Node protocol) {
    static const std::map<std::string_view, int> ranks = {
        {"meanings", 0}, {"enumeration", 1}, {"record", 2}, {"message", 3}};
    Node latest;
    int highest = 0;
    for (const Node node : protocol.children()) {
        const auto rank = ranks.find(node.name());
        if (rank == ranks.end()) continue; // has been reported
        if (rank->second < highest || (rank->second == 0 && !latest.empty()))
            return error(node, fmt::format("a <{}> cannot stand after a <{}>", node.name(), latest.name()));
        highest = rank->second;
        latest = node;
    }
}

/// Makes all type names known before any field is read, so that a use before the declaration can be told from a typing
/// error.
void Reader::declareTypes(Node protocol, const Definition& definition) {
    static const std::map<std::string_view, Kind> kinds = {
        {"enumeration", Kind::enumeration}, {"record", Kind::record}, {"message", Kind::message}};
    const std::set<std::string> own = {definition.stem + "Error", definition.stem + "Traits"};
    const std::string inside = "::" + definition.cppNamespace + "::";
    std::map<std::string, std::string> spellings; // by what is left of them without capitals
    size_t counts[3] = {};
    for (const Node node : protocol.children()) {
        const auto kind = kinds.find(node.name());
        if (kind == kinds.end()) continue;
        const size_t index = counts[static_cast<size_t>(kind->second)]++;
        const std::string name = named(node, "name", NameOf::type);
        if (name.empty()) continue;
        if (own.contains(name)) error(node, fmt::format("the name '{}' is taken by the generated code", name));
        if (inside.find("::" + name + "::") != inside.npos)
            error(node, fmt::format("'{}' is the name of the namespace", name));
        const auto [other, isNew] = spellings.emplace(lowered(name), name);
        if (!isNew && other->second != name)
            error(node, fmt::format("types '{}' and '{}' differ in nothing but case", other->second, name));
        if (!_types.emplace(name, Declared{kind->second, node, index}).second)
            error(node, fmt::format("type '{}' is declared twice", name));
    }
}

/// Reports records that contain themselves, each cycle once: a walk over what they embed, which goes into each once.
void Reader::findCycles(Node protocol) {
    std::vector<std::string> path;
    std::set<std::string> visited;
    const std::function<void(const std::string&)> follow = [&](const std::string& record) {
        const auto declared = _types.find(record);
        if (declared == _types.end() || declared->second.kind != Kind::record) return;
        if (const auto first = std::ranges::find(path, record); first != path.end()) {
            _onCycle.insert(first, path.end());
            const std::vector<std::string> cycle(first, path.end());
            error(declared->second.node,
                  fmt::format("records contain each other: {} -> {}", fmt::join(cycle, " -> "), record));
            return;
        }
        if (!visited.insert(record).second) return;
        path.push_back(record);
        std::set<std::string> embedded;
        for (const Node field : declared->second.node.children("field"))
            if (const std::string type = splitType(text(field, "type")).element; embedded.insert(type).second)
                follow(type);
        path.pop_back();
    };
    for (const Node record : protocol.children("record")) follow(text(record, "name"));
}

/// A value that does not fit the byte in which enumerators travel has to say that this is meant.
void Reader::readValue(Node node, std::map<int64_t, std::string>& values, Enumerator& enumerator) {
    const bool isCut = flag(node, "cut");
    const std::optional<int64_t> value = number(node, "value", 0, MAX_ENUMERATOR);
    if (!value) return;
    enumerator.value = static_cast<int32_t>(*value);
    if (*value > UINT8_MAX && !isCut)
        error(node,
              fmt::format("value {} does not travel: an enumerator is one byte, unless it is marked as cut", *value));
    if (*value <= UINT8_MAX && isCut) error(node, fmt::format("value {} is not cut: it fits a byte", *value));
    const auto [other, isNew] = values.emplace(*value & UINT8_MAX, enumerator.name);
    if (!isNew)
        error(node, fmt::format("enumerators '{}' and '{}' travel as the same byte", other->second, enumerator.name));
}

Enumeration Reader::readEnumeration(Node node) {
    checkAttributes(node, {"name", "doc"}, {"deprecated"});
    checkChildren(node, {"enumerator"});
    checkCount(node, "enumerator", MAX_ENUMERATORS);
    Enumeration enumeration{text(node, "name"), line(node, "doc"), line(node, "deprecated"), {}};
    std::set<std::string> names;
    std::map<int64_t, std::string> values; // by byte
    for (const Node child : node.children("enumerator")) {
        checkAttributes(child, {"name", "value"}, {"doc", "deprecated", "cut"});
        checkChildren(child, {});
        Enumerator enumerator{named(child, "name", NameOf::enumerator), line(child, "doc"), line(child, "deprecated")};
        if (!enumerator.name.empty() && enumerator.name == enumeration.name)
            error(child, fmt::format("enumerator '{}' has the name of its enumeration", enumerator.name));
        if (!enumerator.name.empty() && !names.insert(enumerator.name).second)
            error(child, fmt::format("enumerator '{}' is declared twice in '{}'", enumerator.name, enumeration.name));
        readValue(child, values, enumerator);
        enumeration.enumerators.push_back(enumerator);
    }
    if (node.child("enumerator").empty()) error(node, "an enumeration needs an enumerator");
    return enumeration;
}

/// Returns false, having reported why, if the type cannot be used here.
bool Reader::resolveType(Node node, const std::string& type, FieldType& resolved) {
    const auto [element, isVector] = splitType(type);
    const auto declared = _types.find(element);
    resolved.name = element;
    resolved.isVector = isVector;
    resolved.logical = findLogicalType(element);
    if (resolved.logical != nullptr) {
        if (!isVector || resolved.logical->form != WireForm::padding) return true;
        error(node, "there are no vectors of 'padding'");
        return false;
    }
    if (declared == _types.end()) {
        error(node, fmt::format("unknown type '{}'", element));
        return false;
    }
    if (declared->second.kind == Kind::message) {
        error(node, fmt::format("message '{}' cannot be the type of a field", element));
        return false;
    }
    resolved.isRecord = declared->second.kind == Kind::record;
    resolved.index = declared->second.index;
    if (!resolved.isRecord || declared->second.isRead) return true;
    if (!_onCycle.contains(element)) error(node, fmt::format("record '{}' is used before it is declared", element));
    return false;
}

/// What follows from the type. A vector of what holds storage must build its elements with the allocator.
void Reader::deriveCpp(Field& field) {
    const FieldType& type = field.type;
    field.encoding = "plain";
    if (type.logical != nullptr) {
        field.cppType = type.logical->cppType;
        field.encoding = type.logical->encoding;
        field.holdsStorage = type.logical->holdsStorage();
    } else {
        field.cppType = type.isRecord ? type.name : type.name + "::Type";
        field.holdsStorage = type.isRecord && _types.find(type.name)->second.holdsStorage;
    }
    if (!type.isVector) return;
    if (field.cppType == "int32_t") field.cppType = "int"; // as hosts know it
    field.cppType = fmt::format("{}<{}>", field.holdsStorage ? "bufvectox" : "bufvector", field.cppType);
    field.holdsStorage = true;
}

/// What the definition says beyond name and type. What it does not say, the meaning of the name may.
void Reader::readNotes(Node node, Field& field) {
    field.isSecret = flag(node, "secret");
    field.deprecated = line(node, "deprecated");
    field.doc = line(node, "doc");
    field.identifies = named(node, "identifies", NameOf::mark);
    field.station = named(node, "station", NameOf::mark);
    const auto meaning = _meanings.find(field.name);
    if (meaning == _meanings.end()) {
        if (field.doc.empty()) error(node, fmt::format("'{}' has neither a meaning nor a doc", field.name));
        return;
    }
    if (field.doc.empty() || !meaning->second.identifies.empty() || !meaning->second.station.empty())
        meaning->second.isUsed = true;
    if (field.doc.empty()) field.doc = meaning->second.doc;
    if (field.identifies.empty()) field.identifies = meaning->second.identifies;
    if (field.station.empty()) field.station = meaning->second.station;
}

std::optional<Field> Reader::readField(Node node) {
    checkAttributes(node, {"name", "type"}, {"doc", "secret", "deprecated", "identifies", "station"});
    checkChildren(node, {});
    Field field;
    field.name = named(node, "name", NameOf::field);
    if (_types.contains(field.name)) error(node, fmt::format("'{}' is the name of a type", field.name));
    readNotes(node, field);
    const std::string type = text(node, "type");
    if (type.empty() || !resolveType(node, type, field.type)) return {};
    deriveCpp(field);
    const LogicalType* const logical = field.type.isVector ? nullptr : field.type.logical;
    const bool isInteger = logical != nullptr
                           && (logical->kind == ValueKind::signedInteger || logical->kind == ValueKind::unsignedInteger)
                           && logical->form != WireForm::special;
    if (!field.identifies.empty() && !isInteger && (logical == nullptr || !logical->holdsStorage()))
        error(node, fmt::format("'{}' cannot be an identifier: those are integers and strings", field.name));
    if (!field.station.empty() && (!isInteger || logical->bits != 64))
        error(node, fmt::format("'{}' cannot be the time at a station: those are integers of 64 bits", field.name));
    return field;
}

/// Name, doc and fields of a record or message.
Composite Reader::readComposite(Node node) {
    checkChildren(node, {"field"});
    checkCount(node, "field", MAX_FIELDS);
    Composite composite;
    composite.name = text(node, "name");
    composite.doc = line(node, "doc");
    composite.deprecated = line(node, "deprecated");
    const bool isSecret = flag(node, "secret");
    std::set<std::string> names;
    for (const Node child : node.children("field")) {
        const std::string name = text(child, "name");
        if (!name.empty() && !names.insert(name).second)
            error(child, fmt::format("field '{}' is declared twice in '{}'", name, composite.name));
        if (std::optional<Field> field = readField(child)) {
            field->isSecret |= isSecret;
            composite.fields.push_back(*field);
        }
    }
    if (node.child("field").empty()) error(node, fmt::format("a {} needs a field", node.name()));
    weigh(node, composite);
    return composite;
}

/// Notes what others must know to embed a record, and keeps the whole within what is bearable.
void Reader::weigh(Node node, const Composite& composite) {
    size_t values = 0, depth = 0;
    for (const Field& field : composite.fields) {
        const bool isRecord = field.type.isRecord;
        const Declared* const record = isRecord ? &_types.find(field.type.name)->second : nullptr;
        values += isRecord && !field.type.isVector ? record->values : 1;
        depth = std::max(depth, size_t{1} + field.type.isVector + (isRecord ? record->depth : 0));
    }
    if (values > MAX_VALUES)
        error(node, fmt::format("'{}' holds {} values with all that it embeds; {} are the most", composite.name, values,
                                MAX_VALUES));
    if (depth > MAX_DEPTH)
        error(node, fmt::format("'{}' nests {} deep; {} is the most", composite.name, depth, MAX_DEPTH));
    const auto declared = _types.find(composite.name);
    if (declared == _types.end()) return;
    declared->second.isRead = true;
    declared->second.holdsStorage = composite.holdsStorage();
    declared->second.values = std::min(values, MAX_VALUES);
    declared->second.depth = std::min(depth, MAX_DEPTH); // reported once, not for all that embed it
}

void Reader::readId(Node node, Composite& message) {
    const std::optional<int64_t> id = number(node, "id", 0, UINT16_MAX);
    if (!id) return;
    message.id = static_cast<uint16_t>(*id);
    const auto [sameId, isNew] = _ids.emplace(*id, message.name);
    if (!isNew) error(node, fmt::format("messages '{}' and '{}' have the same id", sameId->second, message.name));
}

/// Checks the size given for the direct table, or finds the smallest.
void Reader::assignSlots(Node protocol, Definition& definition) {
    if (_ids.size() != definition.messages.size()) return; // some have no identifier, or one that others have
    std::vector<size_t> takenFor(UINT16_MAX + 1);          // by slot: the size with which it was last found taken
    const auto firstInTakenSlot = [&](size_t slots) -> const Composite* {
        for (const Composite& message : definition.messages) {
            if (takenFor[message.id % slots] == slots) return &message;
            takenFor[message.id % slots] = slots;
        }
        return nullptr;
    };
    if (definition.slots == 0) {
        definition.slots = definition.messages.size();
        while (firstInTakenSlot(definition.slots) != nullptr) ++definition.slots;
    } else if (const Composite* const second = firstInTakenSlot(definition.slots)) {
        const size_t slot = second->id % definition.slots;
        const auto first =
            std::ranges::find(definition.messages, slot, [&](const Composite& it) { return it.id % definition.slots; });
        Node node = protocol.child("message");
        for (const Composite* it = definition.messages.data(); it != second; ++it) node = node.next_sibling("message");
        error(node, fmt::format("messages '{}' and '{}' share slot {} of the direct table (id modulo {})", first->name,
                                second->name, slot, definition.slots));
    }
}

/// Every name that is to be shielded must be one.
void Reader::checkMacros(Node protocol, const Definition& definition) {
    if (!definition.macros) return;
    std::set<std::string> names;
    for (const auto& [name, declared] : _types) names.insert(name);
    for (const Enumeration& enumeration : definition.enumerations)
        for (const Enumerator& it : enumeration.enumerators) names.insert(it.name);
    for (const auto* types : {&definition.records, &definition.messages})
        for (const Composite& type : *types)
            for (const Field& field : type.fields) names.insert(field.name);
    for (const std::string& macro : *definition.macros)
        if (!names.contains(macro)) error(protocol, fmt::format("macros: nothing has the name '{}'", macro));
}

/// Attributes of the root element.
void Reader::readModule(Node protocol, Definition& definition) {
    checkAttributes(protocol, {"name", "version"},
                    {"namespace", "folder", "stem", "slots", "entries", "signature", "signatureAPI", "signatureStorage",
                     "definitionText", "definitionBytes", "macros",
                     // these tell editors where the schema is
                     "xmlns:xsi", "xsi:noNamespaceSchemaLocation"});
    const auto given = [](const std::string& text, const std::string& otherwise) {
        return text.empty() ? otherwise : text;
    };
    definition.name = named(protocol, "name", NameOf::protocol);
    definition.version = static_cast<int32_t>(number(protocol, "version", 0, UINT16_MAX).value_or(0));
    definition.cppNamespace = given(named(protocol, "namespace", NameOf::cppNamespace), "Quillon");
    definition.stem = given(named(protocol, "stem", NameOf::stem), "QLProtocol");
    definition.folder = given(named(protocol, "folder", NameOf::folder), "generated/" + definition.stem);
    definition.slots = count(protocol, "slots", UINT16_MAX);
    definition.entries = count(protocol, "entries", UINT16_MAX);
    definition.signature = signature(protocol, "signature");
    definition.signatureAPI = signature(protocol, "signatureAPI");
    definition.signatureStorage = signature(protocol, "signatureStorage");
    definition.definitionText = given(line(protocol, "definitionText"), "(Not supported.)");
    definition.definitionBytes = count(protocol, "definitionBytes", UINT16_MAX);
    if (const pugi::xml_attribute macros = protocol.attribute("macros")) {
        definition.macros.emplace();
        std::istringstream names(macros.value());
        for (std::string name; std::getline(names, name, ' ');) definition.macros->insert(name);
    }
}

void Reader::readTypes(Node protocol, Definition& definition) {
    for (const Node node : protocol.children("enumeration")) definition.enumerations.push_back(readEnumeration(node));
    for (const Node node : protocol.children("record")) {
        checkAttributes(node, {"name", "doc"}, {"secret", "deprecated"});
        definition.records.push_back(readComposite(node));
    }
    for (const Node node : protocol.children("message")) {
        checkAttributes(node, {"name", "id", "doc"}, {"secret", "deprecated"});
        Composite message = readComposite(node);
        readId(node, message);
        definition.messages.push_back(message);
    }
}

/// The whole protocol. What is filled in is of use only if nothing was reported.
void Reader::readProtocol(Node protocol, Definition& definition) {
    checkChildren(protocol, {"meanings", "enumeration", "record", "message"});
    checkOrder(protocol);
    readModule(protocol, definition);
    for (const Node node : protocol.children("meanings")) readMeanings(node);
    declareTypes(protocol, definition);
    findCycles(protocol);
    readTypes(protocol, definition);
    if (definition.messages.empty()) error(protocol, "a protocol needs at least one <message>");
    assignSlots(protocol, definition);
    checkMacros(protocol, definition);
    for (const Node node : protocol.child("meanings").children("meaning"))
        if (const auto it = _meanings.find(text(node, "name")); !it->second.isUsed)
            error(node, fmt::format("no field uses the meaning '{}'", it->first));
}

Definition Reader::read() {
    Definition definition;
    pugi::xml_document document;
    if (const auto fault = findXmlFault(_xml)) error(fault->offset, "not well-formed XML: " + fault->text);
    const pugi::xml_parse_result result =
        document.load_buffer(_xml.data(), _xml.size(), pugi::parse_default, pugi::encoding_utf8);
    const Node root = document.document_element();
    if (!_errors.empty()) {
        // Found something already; what the parser says could only mislead.
    } else if (!result) {
        error(static_cast<size_t>(result.offset), fmt::format("not well-formed XML: {}", result.description()));
    } else if (root.next_sibling()) {
        error(root.next_sibling(), "not well-formed XML: there is a second root element");
    } else if (std::string_view(root.name()) != "protocol") {
        error(root, "the root element must be <protocol>");
    } else {
        for (const char* name : {"enumeration", "record", "message"}) checkCount(root, name, MAX_TYPES);
        if (_errors.empty()) readProtocol(root, definition);
    }

    if (!_errors.empty()) {
        std::string all;
        for (const auto& [line, text] : _errors)
            all += fmt::format("{}{}:{}: {}", all.empty() ? "" : "\n", _file, line, text);
        throw DefinitionError(all);
    }
    if (definition.entries == 0) definition.entries = definition.messages.size();
    deriveSignatures(definition);
    return definition;
}

} // namespace

Definition parseDefinition(const std::string& xml, const std::string& file) { return Reader(xml, file).read(); }

} // namespace qlgen
