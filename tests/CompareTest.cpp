// Comparing definitions: random changes, judged by what a reader by definition makes of random bodies.
#include "generator/compare/Compare.h"
#include "generator/compare/Report.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <filesystem>
#include <functional>
#include <map>
#include <random>
#include <set>

#include <nlohmann/json.hpp>

#include "Backend/Velmora/FastCodec.h"
#include "Inspect/Verify.h"
#include "generator/Output.h"
#include "tests/Folder.h"
#include "tests/Hex.h"

namespace {

using namespace qlgen;
using namespace qlgen::compare;

// ------- definitions to change. What is the same in both keeps its `id`, whatever its name, type and place.

struct TestEnumerator {
    std::string id, name, doc;
    int value;
    std::string marks = ""; // as attributes
};
struct TestField {
    std::string id, name, doc, type; // `id` is empty for a field that only wraps others or is wrapped itself
    std::string marks = "";
    std::string element() const { return type.ends_with("[]") ? type.substr(0, type.size() - 2) : type; }
    bool isVector() const { return type.ends_with("[]"); }
};
struct TestType {
    std::string id, name, doc;
    int number = 0; // of a message
    std::vector<TestField> fields;
    std::vector<TestEnumerator> enumerators;
    std::string marks = "";
};
struct TestDefinition {
    std::string stem = "Test";
    std::vector<TestType> enumerations, records, messages;

    static const TestType* find(const std::vector<TestType>& types, const std::string& name) {
        const auto found = std::ranges::find(types, name, &TestType::name);
        return found == types.end() ? nullptr : &*found;
    }
    const TestType* enumeration(const std::string& name) const { return find(enumerations, name); }
    const TestType* record(const std::string& name) const { return find(records, name); }

    Definition parse() const {
        std::string xml = "<protocol name=\"Test\" version=\"1\" stem=\"" + stem + "\">\n";
        const auto head = [&](const char* element, const TestType& it, const std::string& more = "") {
            xml += std::string("<") + element + " name=\"" + it.name + "\" doc=\"" + it.doc + "\"" + it.marks + more
                   + ">\n";
        };
        const auto body = [&](const char* element, const TestType& it) {
            for (const TestField& field : it.fields)
                xml += "<field name=\"" + field.name + "\" type=\"" + field.type + "\" doc=\"" + field.doc + "\""
                       + field.marks + "/>\n";
            xml += std::string("</") + element + ">\n";
        };
        for (const TestType& it : enumerations) {
            head("enumeration", it);
            for (const TestEnumerator& e : it.enumerators)
                xml += "<enumerator name=\"" + e.name + "\" value=\"" + std::to_string(e.value) + "\""
                       + (e.doc.empty() ? "" : " doc=\"" + e.doc + "\"") + e.marks + "/>\n";
            xml += "</enumeration>\n";
        }
        for (const TestType& it : records) head("record", it), body("record", it);
        for (const TestType& it : messages)
            head("message", it, " id=\"" + std::to_string(it.number) + "\""), body("message", it);
        return parseDefinition(xml + "</protocol>\n", "test.xml");
    }
};

// ------- bodies by definition, coded with the library's own codec

struct Leaf {
    enum Kind { integer, real, text } kind;
    uint64_t bits = 0;
    bool isNegative = false;
    std::string bytes;
    const TestType* enumeration = nullptr;

    bool isZero() const { return bits == 0 && bytes.empty(); }
};
using Leaves = std::map<std::string, Leaf>; // by the ids on the way to them

Leaf signedLeaf(int64_t v) { return {Leaf::integer, static_cast<uint64_t>(v), v < 0, "", nullptr}; }
Leaf unsignedLeaf(uint64_t v) { return {Leaf::integer, v, false, "", nullptr}; }
Leaf textLeaf(const std::string& text) { return {Leaf::text, 0, false, text, nullptr}; }

std::string joined(const std::string& path, const std::string& id) {
    return path.empty() || id.empty() ? path + id : path + '.' + id;
}

/// Room for bodies. A codec that runs beyond the end of one finds zeros, and enough of them.
std::string& room() {
    static std::string bytes(200'000, '\0');
    return bytes;
}

class BodyReader {
  public:
    BodyReader(const TestDefinition& definition, const std::string& body, Reader kind)
        : _definition(definition), _size(body.size()), _kind(kind), _codec(room().data(), room().data() + _size) {
        room().replace(0, _size, body);
    }
    ~BodyReader() { std::fill_n(room().begin(), _size, '\0'); }

    /// All values; nothing if the body is refused.
    std::optional<Leaves> read(const TestType& message) {
        const bool isRead = fields(message, "", true);
        if (!isRead || (_codec.size() != _size && _kind != Reader::rolling)) return {};
        return _leaves;
    }

  private:
    bool fields(const TestType& type, const std::string& path, bool isLast) {
        for (const TestField& field : type.fields) {
            const std::string at = joined(path, field.id);
            _isMissing |= isLast && _kind == Reader::rolling && _codec.size() == _size;
            if (!field.isVector()) {
                if (!value(field.type, at, isLast && &field == &type.fields.back())) return false;
                continue;
            }
            const size_t count = _isMissing ? 0 : _codec.read_length();
            _leaves[at + "[]"] = unsignedLeaf(count);
            if (_codec.size() > _size) return false;
            for (size_t i = 0; i < count; ++i)
                if (!value(field.element(), at + '[' + std::to_string(i) + ']', false)) return false;
        }
        return true;
    }
    bool value(const std::string& type, const std::string& path, bool isLast) {
        if (const TestType* const record = _definition.record(type)) return fields(*record, path, isLast);
        _leaves[path] = _isMissing ? unsignedLeaf(0) : leaf(type);
        return _codec.size() <= _size;
    }
    Leaf leaf(const std::string& type) {
        if (const TestType* const enumeration = _definition.enumeration(type)) {
            Leaf it = unsignedLeaf(_codec.read_uint8());
            it.enumeration = enumeration;
            return it;
        }
        if (type == "bool") return unsignedLeaf(_codec.read_bool());
        if (type == "int8") return signedLeaf(static_cast<int8_t>(_codec.read_int8()));
        if (type == "int16") return signedLeaf(_codec.read_int16());
        if (type == "int32") return signedLeaf(_codec.read_int32());
        if (type == "int64") return signedLeaf(_codec.read_int64());
        if (type == "int64_fixed") return signedLeaf(_codec.read_int64_fixed());
        if (type == "price") return signedLeaf(_codec.read_qlfloat());
        if (type == "uint8") return unsignedLeaf(_codec.read_uint8());
        if (type == "uint16") return unsignedLeaf(_codec.read_uint16());
        if (type == "uint32") return unsignedLeaf(_codec.read_uint32());
        if (type == "uint64") return unsignedLeaf(_codec.read_uint64());
        if (type == "uint16_fixed") return unsignedLeaf(_codec.read_uint16_fixed());
        if (type == "uint32_fixed") return unsignedLeaf(_codec.read_uint32_fixed());
        if (type == "float4") return {Leaf::real, std::bit_cast<uint32_t>(_codec.read_float4()), false, "", nullptr};
        if (type == "float8") return {Leaf::real, std::bit_cast<uint64_t>(_codec.read_float8()), false, "", nullptr};
        if (type.starts_with("crypt")) return textLeaf(_codec.read_cryptstring());
        if (type != "string_fixed" && (type != "padding" || _kind != Reader::written))
            return textLeaf(_codec.read_string());
        std::string text(_codec.read_uint16_fixed(), '\0');
        for (char& c : text)
            c = static_cast<char>(_codec.size() < _size ? _codec.read_uint8() : (_codec.read_uint8(), 0));
        return textLeaf(text);
    }

    const TestDefinition& _definition;
    const size_t _size;
    const Reader _kind;
    Velmora::FastCodec _codec;
    bool _isMissing = false;
    Leaves _leaves;
};

class Random {
  public:
    size_t below(size_t n) { return n == 0 ? 0 : _engine() % n; }
    bool chance(size_t percent) { return below(100) < percent; }
    auto& of(auto& all) { return all[below(all.size())]; }

  private:
    std::mt19937 _engine{20'261'121};
};

class BodyWriter {
  public:
    BodyWriter(const TestDefinition& definition, Random& random)
        : _definition(definition), _random(random), _codec(room().data(), &room().back()) {}

    /// A body with random values, mostly small.
    std::string write(const TestType& message) {
        fields(message);
        std::string body = room().substr(0, _codec.size());
        std::fill_n(room().begin(), body.size(), '\0');
        return body;
    }

  private:
    void fields(const TestType& type) {
        for (const TestField& field : type.fields) {
            const size_t count = field.isVector() ? _random.below(3) : 1;
            if (field.isVector()) _codec.write_length(static_cast<unsigned short>(count));
            for (size_t i = 0; i < count; ++i) value(field.element());
        }
    }
    int64_t number() {
        if (_random.chance(60)) return static_cast<int64_t>(_random.below(5));
        const auto one = uint64_t{1} << _random.below(64);
        return static_cast<int64_t>(_random.chance(50) ? one : ~one + _random.below(3));
    }
    std::string text() {
        std::string text(_random.below(_random.chance(3) ? 200 : 4), 'a');
        for (char& c : text) c = static_cast<char>(_random.chance(50) ? _random.below(4) : _random.below(256));
        return text;
    }
    void value(const std::string& type) {
        if (const TestType* const record = _definition.record(type)) return fields(*record);
        if (const TestType* const enumeration = _definition.enumeration(type))
            return _codec.write_uint8(static_cast<uint8_t>(_random.of(enumeration->enumerators).value));
        const int64_t v = number();
        if (type == "bool") return _codec.write_bool(v & 1);
        if (type == "int8" || type == "uint8") return _codec.write_uint8(static_cast<uint8_t>(v));
        if (type == "int16") return _codec.write_int16(static_cast<int16_t>(v));
        if (type == "int32") return _codec.write_int32(static_cast<int32_t>(v));
        if (type == "int64") return _codec.write_int64(v);
        if (type == "int64_fixed" || type == "float8") return _codec.write_int64_fixed(v);
        if (type == "price") return _codec.write_qlfloat(v);
        if (type == "uint16") return _codec.write_uint16(static_cast<uint16_t>(v));
        if (type == "uint32") return _codec.write_uint32(static_cast<uint32_t>(v));
        if (type == "uint64") return _codec.write_uint64(static_cast<uint64_t>(v));
        if (type == "uint16_fixed") return _codec.write_uint16_fixed(static_cast<uint16_t>(v));
        if (type == "uint32_fixed" || type == "float4") return _codec.write_uint32_fixed(static_cast<uint32_t>(v));
        const std::string it = text();
        if (type.starts_with("crypt")) return _codec.write_cryptstring(it);
        if (type == "string" || type == "blob") return _codec.write_string(it);
        _codec.write_uint16_fixed(static_cast<uint16_t>(it.size()));
        for (const char c : it) _codec.write_uint8(static_cast<uint8_t>(c));
    }

    const TestDefinition& _definition;
    Random& _random;
    Velmora::FastCodec _codec;
};

bool areEqual(const Leaf& written, const Leaf& read) {
    if (written.kind != read.kind) return written.isZero() && read.isZero();
    if (written.bits != read.bits || written.isNegative != read.isNegative || written.bytes != read.bytes) return false;
    if (written.enumeration == nullptr || read.enumeration == nullptr) return true;
    const auto value = [](const TestEnumerator& it) { return static_cast<uint8_t>(it.value); };
    for (const TestEnumerator& meant : written.enumeration->enumerators) {
        if (value(meant) != written.bits) continue;
        for (const TestEnumerator& it : read.enumeration->enumerators)
            if ((it.id == meant.id) != (value(it) == written.bits)) return false;
    }
    return true;
}

/// Whether the reader got from a body what was written, as far as it knows it, and zero for what only it knows.
bool areEqual(const Leaves& written, const Leaves& read) {
    return std::ranges::all_of(read, [&](const auto& it) {
        const auto found = written.find(it.first);
        return found == written.end() ? it.second.isZero() : areEqual(found->second, it.second);
    });
}

// ------- random definitions, and a way to change them for every rule

class Changer {
  public:
    explicit Changer(Random& random) : _random(random) { make(); }

    TestDefinition definition;

    /// Changes the definition as the rule says; the place to be reported, or nothing if there is none for it.
    std::string change(Rule rule);

  private:
    std::string fresh() { return std::to_string(++_ids); }

    TestEnumerator enumerator(const TestType& in) {
        const std::string id = fresh();
        int value = 0;
        do {
            value = static_cast<int>(_random.below(_random.chance(80) ? 12 : 256));
        } while (std::ranges::count(in.enumerators, value, &TestEnumerator::value) != 0);
        return {id, "E" + id, _random.chance(50) ? "" : "doc " + id, value};
    }
    std::string scalar() {
        std::string type;
        do {
            type = logicalTypes()[_random.below(logicalTypes().size())].name;
        } while (type == "padding");
        return _random.chance(20) ? _random.of(definition.enumerations).name : type;
    }
    std::string type() {
        const bool isRecord = _random.chance(20) && !definition.records.empty();
        const std::string element = isRecord ? _random.of(definition.records).name : scalar();
        return element + (_random.chance(20) ? "[]" : "");
    }
    TestField field() {
        const std::string id = fresh();
        return {id, "f" + id, "doc " + id, type(), _random.chance(10) ? " secret=\"true\"" : ""};
    }
    TestType composite(const std::string& prefix, size_t fields) {
        const std::string id = fresh();
        TestType it{id, prefix + id, "doc " + id, static_cast<int>(2000 + _ids), {}, {}};
        for (size_t i = 0; i < fields; ++i) it.fields.push_back(field());
        return it;
    }
    TestType enumeration() {
        TestType it{fresh(), "E" + std::to_string(_ids), "doc", 0, {}, {}};
        for (size_t count = 2 + _random.below(4); count != 0; --count) it.enumerators.push_back(enumerator(it));
        return it;
    }
    void make() {
        for (int i = 0; i < 3; ++i) definition.enumerations.push_back(enumeration());
        for (int i = 0; i < 3; ++i) definition.records.push_back(composite("R", 1 + _random.below(3)));
        for (int i = 0; i < 3; ++i) definition.messages.push_back(composite("M", 2 + _random.below(5)));
        if (_random.chance(20)) definition.messages[0].fields.front().type = "padding";
        // Of one type, so that what follows a removed field moves into its place.
        TestType& even = definition.messages.emplace_back(composite("Even", 3));
        const std::string same = scalar();
        for (TestField& it : even.fields) it.type = same;
    }

    TestType& any(bool isMessage) {
        auto& types = isMessage || _random.chance(60) ? definition.messages : definition.records;
        return types[_random.below(types.size())];
    }
    /// A field for which `fits` holds; null if there is none.
    TestField* pick(TestType& type, const std::function<bool(const TestField&)>& fits) {
        std::vector<TestField*> fields;
        for (TestField& it : type.fields)
            if (fits(it)) fields.push_back(&it);
        return fields.empty() ? nullptr : _random.of(fields);
    }
    bool isScalar(const TestField& it) const { return !it.isVector() && definition.record(it.type) == nullptr; }
    bool hasPadding(const TestType& type) const {
        return std::ranges::any_of(type.fields, [](const TestField& it) { return it.type == "padding"; });
    }
    /// Declares a record before its first use in `user`.
    void declare(const TestType& record, const std::string& user) {
        const auto at = std::ranges::find(definition.records, user, &TestType::name);
        definition.records.insert(at, record);
    }

    std::string wrap(TestType& type);
    std::string box(TestType& type);
    std::string changeFields(Rule rule, TestType& type);
    std::string changeEnumerators(Rule rule);
    std::string changeMessages(Rule rule);
    std::string changeTypes(Rule rule);
    std::string changeMarks(Rule rule);

    Random& _random;
    int _ids = 0;
};

/// Some neighbours go into a record.
std::string Changer::wrap(TestType& type) {
    const std::string user = type.name;
    const size_t first = _random.below(type.fields.size()), count = 1 + _random.below(type.fields.size() - first);
    const auto from = type.fields.begin() + static_cast<std::ptrdiff_t>(first);
    const auto end = from + static_cast<std::ptrdiff_t>(count);
    TestType record = composite("R", 0);
    record.fields.assign(from, end);
    const std::string place = from->name;
    TestField wrapper = field();
    wrapper.id = "";
    wrapper.type = record.name;
    type.fields.insert(type.fields.erase(from, end), wrapper);
    declare(record, user); // may move `type`
    return user + '.' + place;
}

/// A value's type becomes a record of that value.
std::string Changer::box(TestType& type) {
    const std::string user = type.name;
    TestField* const boxed = pick(type, [&](const TestField& it) { return isScalar(it) && it.type != "padding"; });
    if (boxed == nullptr) return "";
    TestType record = composite("R", 1);
    record.fields[0].type = boxed->type;
    record.fields[0].id = "";
    boxed->type = record.name;
    const std::string place = user + '.' + boxed->name;
    declare(record, user);
    return place;
}

std::string Changer::changeFields(Rule rule, TestType& type) {
    auto& fields = type.fields;
    const size_t at = _random.below(fields.size());
    const auto here = fields.begin() + static_cast<std::ptrdiff_t>(at);
    const auto place = [&](const std::string& name) { return type.name + '.' + name; };
    TestField added = field();
    if (&type >= definition.records.data() && &type < definition.records.data() + definition.records.size())
        added.type = scalar(); // no record that is declared later
    switch (rule) {
    case Rule::fieldAppended:
        if (hasPadding(type)) return "";
        fields.push_back(added);
        return place(added.name);
    case Rule::fieldAdded:
        fields.insert(here, added);
        return place(added.name);
    case Rule::fieldRemoved: {
        const std::string name = here->name;
        if (fields.size() == 1) return "";
        fields.erase(here);
        return place(name);
    }
    case Rule::fieldReplaced: {
        const std::string name = here->name;
        if (here->id.empty()) return ""; // what holds one value is that value, whatever its name
        if (_random.chance(50)) added.type = here->type;
        *here = added;
        return place(name);
    }
    case Rule::fieldRenamed: {
        const std::string name = here->name;
        here->name = added.name;
        return place(name);
    }
    case Rule::fieldMoved: {
        if (at + 2 >= fields.size()) return "";
        const std::string name = here->name;
        std::rotate(here, here + 1, here + 3);
        return place(name);
    }
    case Rule::fieldsSwapped:
        if (at + 1 >= fields.size()) return "";
        std::iter_swap(here, here + 1 + static_cast<std::ptrdiff_t>(_random.below(fields.size() - at - 1)));
        return place("");
    case Rule::fieldRetyped:
    case Rule::elementRetyped: {
        const bool isElement = rule == Rule::elementRetyped;
        TestField* const it = pick(
            type, [&](const TestField& f) { return isElement ? f.isVector() : isScalar(f) && f.type != "padding"; });
        std::string other = scalar();
        if (it == nullptr || other == it->element()) return "";
        if (!isElement && _random.chance(20)) other = it->type + "[]";
        it->type = other + (isElement ? "[]" : "");
        return place(it->name);
    }
    case Rule::paddingChanged: {
        TestField* const it = pick(type, [&](const TestField& f) { return isScalar(f); });
        if (it == nullptr) return "";
        it->type = it->type == "padding" ? scalar() : "padding";
        return place(it->name);
    }
    case Rule::fieldWrapped:
        return _random.chance(50) ? wrap(type) : box(type);
    case Rule::fieldInlined: {
        TestField* const it = pick(type, [&](const TestField& f) { return definition.record(f.type) != nullptr; });
        if (it == nullptr) return "";
        const TestField wrapper = *it;
        std::vector<TestField> inner = definition.record(wrapper.type)->fields;
        for (TestField& f : inner) f.id = wrapper.id + '.' + f.id;
        const auto after = fields.erase(fields.begin() + (it - fields.data()));
        fields.insert(after, inner.begin(), inner.end());
        return place(wrapper.name);
    }
    default:
        return "";
    }
}

std::string Changer::changeEnumerators(Rule rule) {
    TestType& type = definition.enumerations[_random.below(definition.enumerations.size())];
    const size_t at = _random.below(type.enumerators.size());
    TestEnumerator& it = type.enumerators[at];
    const TestEnumerator added = enumerator(type);
    const std::string place = type.name + '.' + it.name;
    switch (rule) {
    case Rule::enumeratorAdded:
        type.enumerators.push_back(added);
        return type.name + '.' + added.name;
    case Rule::enumeratorRemoved:
        if (type.enumerators.size() == 1) return "";
        type.enumerators.erase(type.enumerators.begin() + static_cast<std::ptrdiff_t>(at));
        return place;
    case Rule::enumeratorRenumbered:
        if (_random.chance(50))
            std::swap(it.value, type.enumerators[(at + 1) % type.enumerators.size()].value);
        else
            it.value = added.value;
        return place;
    case Rule::enumeratorRenamed:
        it.name = added.name;
        return place;
    default: // replaced
        if (it.doc.empty() || added.doc.empty()) return "";
        it = {added.id, added.name, added.doc, it.value};
        return place;
    }
}

std::string Changer::changeMessages(Rule rule) {
    auto& messages = definition.messages;
    const size_t at = _random.below(messages.size());
    TestType& it = messages[at];
    TestType& other = messages[(at + 1) % messages.size()];
    const std::string place = it.name;
    switch (rule) {
    case Rule::messageAdded: {
        TestType added = composite("M", 1 + _random.below(3));
        added.fields.front().type = scalar();
        messages.insert(messages.begin() + static_cast<std::ptrdiff_t>(_random.below(messages.size() + 1)), added);
        return added.name;
    }
    case Rule::messageRemoved:
        messages.erase(messages.begin() + static_cast<std::ptrdiff_t>(at));
        return place;
    case Rule::messageRenamed:
        it.name = "M" + fresh();
        return place;
    case Rule::messageMoved:
        std::swap(it, other);
        return place;
    case Rule::identifierChanged:
        it.number = static_cast<int>(1000 + _random.below(900));
        return place;
    default: // taken over
        if (_random.chance(50)) {
            std::swap(it.number, other.number);
            return place;
        }
        other.number = it.number;
        messages.erase(messages.begin() + static_cast<std::ptrdiff_t>(at));
        return place;
    }
}

std::string Changer::changeTypes(Rule rule) {
    const std::string name = "T" + fresh();
    if (rule == Rule::sourcesMoved) {
        definition.stem = name;
        return "Test";
    }
    if (rule == Rule::typeAdded) {
        TestType added = _random.chance(50) ? enumeration() : composite("R", 2);
        (added.fields.empty() ? definition.enumerations : definition.records).push_back(added);
        return added.name;
    }
    auto& types = _random.chance(50) ? definition.enumerations : definition.records;
    TestType& it = types[_random.below(types.size())];
    const std::string place = it.name;
    size_t uses = 0;
    for (auto* const users : {&definition.records, &definition.messages})
        for (TestType& user : *users)
            for (TestField& field : user.fields)
                if (field.element() == it.name) {
                    ++uses;
                    if (rule == Rule::typeRenamed) field.type = name + (field.isVector() ? "[]" : "");
                }
    if ((uses == 0) != (rule == Rule::typeRemoved)) return "";
    if (rule == Rule::typeRenamed)
        it.name = name;
    else
        types.erase(types.begin() + (&it - types.data()));
    return place;
}

std::string Changer::changeMarks(Rule rule) {
    const std::string deprecated = " deprecated=\"why " + fresh() + "\"";
    TestType& type = _random.chance(30) ? _random.of(definition.enumerations) : any(false);
    if (rule == Rule::deprecatedChanged && _random.chance(30)) return type.marks = deprecated, type.name;
    if (type.fields.empty() && rule == Rule::secretChanged) return "";
    const size_t at = _random.below(type.fields.size() + type.enumerators.size());
    std::string& marks = type.fields.empty() ? type.enumerators[at].marks : type.fields[at].marks;
    marks = rule == Rule::deprecatedChanged ? deprecated : marks.empty() ? " secret=\"true\"" : "";
    return type.name + '.' + (type.fields.empty() ? type.enumerators[at].name : type.fields[at].name);
}

std::string Changer::change(Rule rule) {
    if (rule <= Rule::fieldInlined) return changeFields(rule, any(rule == Rule::fieldAppended));
    if (rule <= Rule::enumeratorReplaced) return changeEnumerators(rule);
    if (rule <= Rule::identifierTakenOver) return changeMessages(rule);
    if (rule <= Rule::sourcesMoved) return changeTypes(rule);
    if (rule <= Rule::deprecatedChanged) return changeMarks(rule);
    TestType& even = definition.messages.back();
    TestField added = field();
    added.type = even.fields.front().type;
    even.fields.erase(even.fields.begin());
    even.fields.push_back(added);
    return even.name;
}

// ------- the property

const TestType* withNumber(const TestDefinition& definition, int number) {
    const auto found = std::ranges::find(definition.messages, number, &TestType::number);
    return found == definition.messages.end() ? nullptr : &*found;
}
const TestType* withId(const TestDefinition& definition, const std::string& id) {
    const auto found = std::ranges::find(definition.messages, id, &TestType::id);
    return found == definition.messages.end() ? nullptr : &*found;
}

/// One side's bodies at the other.
struct Way {
    const TestDefinition& writer;
    const TestDefinition& reader;
    Direction Difference::*direction;

    /// What becomes of a body of `message`: nothing if it is refused, else whether it is read as it was meant.
    std::optional<bool> read(const TestType& message, const std::string& body, Reader kind) const {
        const TestType* const other = withNumber(reader, message.number);
        if (other == nullptr) return {};
        const auto result = BodyReader(reader, body, kind).read(*other);
        if (!result) return {};
        const auto meant = BodyReader(writer, body, Reader::written).read(message);
        return other->id == message.id && areEqual(meant.value(), *result);
    }

    /// The worst that is said of the message's bodies; nothing if nothing is.
    std::optional<Outcome> said(const Comparison& comparison, const TestType& message) const {
        std::set<std::string> names = {message.name};
        if (const TestType* const other = withNumber(reader, message.number)) names.insert(other->name);
        if (const TestType* const other = withId(reader, message.id)) names.insert(other->name);
        Outcome worst;
        bool isSaid = false;
        for (const Difference& it : comparison.differences) {
            if (!names.contains(it.place)
                && std::ranges::none_of(it.messages, [&](const std::string& name) { return names.contains(name); }))
                continue;
            const Outcome& outcome = (it.*direction).outcome;
            worst.verdict = std::max(worst.verdict, outcome.verdict);
            worst.rolling = std::max(worst.rolling, outcome.rolling);
            worst.isProved &= outcome.isProved && it.messages.size() < 2; // of several it tells the worst
            isSaid = true;
        }
        return isSaid ? std::optional(worst) : std::nullopt;
    }

    void check(const Comparison& comparison, Random& random, bool isSingle) const {
        for (const TestType& message : writer.messages) {
            const auto concerning = said(comparison, message);
            const Outcome outcome = concerning.value_or(Outcome());
            for (int count = concerning ? 12 : 1; count != 0; --count) {
                const std::string body = BodyWriter(writer, random).write(message);
                for (const Reader kind : {Reader::whole, Reader::rolling}) {
                    const Verdict verdict = kind == Reader::whole ? outcome.verdict : outcome.rolling;
                    const auto result = read(message, body, kind);
                    if (verdict == Verdict::same && withNumber(reader, message.number) != nullptr) {
                        // Unless not even its own reader reads it as it was meant: padding.
                        const Way own{writer, writer, direction};
                        ASSERT_TRUE(result == true || own.read(message, body, kind) != true)
                            << message.name << " " << hex(body);
                    } else if (verdict == Verdict::refused) {
                        ASSERT_TRUE(result.value_or(true)) << message.name << " misread " << hex(body);
                        ASSERT_FALSE(isSingle && outcome.isProved && result) << message.name << " accepted";
                    }
                }
            }
        }
    }

    /// The body that is to show a misreading shows one.
    void checkWitness(const Difference& difference) const {
        const Direction& it = difference.*direction;
        ASSERT_EQ(it.outcome.witness.has_value(), it.outcome.rolling == Verdict::silent);
        if (!it.outcome.witness) return;
        const Witness& witness = *it.outcome.witness;
        ASSERT_EQ(witness.isRolling, it.outcome.verdict != Verdict::silent);
        const TestType* const message = TestDefinition::find(writer.messages, it.message);
        ASSERT_NE(message, nullptr) << it.message;
        ASSERT_EQ(message->number, it.id);
        ASSERT_EQ(read(*message, witness.body, witness.isRolling ? Reader::rolling : Reader::whole), false);
    }
};

std::array<Way, 2> ways(const TestDefinition& before, const TestDefinition& after) {
    return {Way{before, after, &Difference::oldToNew}, Way{after, before, &Difference::newToOld}};
}

TEST(Compare, VerdictsHoldForRandomBodiesOfRandomChanges) {
    Random random;
    size_t unproved = 0, judged = 0;
    for (const RuleInfo& rule : rules()) {
        for (int count = 0; count < 68;) {
            Changer changer(random);
            const TestDefinition before = changer.definition;
            const std::string place = changer.change(rule.rule);
            if (place.empty()) continue;
            SCOPED_TRACE(std::string(rule.name) + " " + place);
            const Comparison comparison = compare::compare(before.parse(), changer.definition.parse());
            EXPECT_TRUE(std::ranges::any_of(comparison.differences, [&](const Difference& it) {
                return it.rule == rule.rule && it.place.starts_with(place);
            })) << asText(comparison, Level::wire);
            const bool isSingle = rule.rule != Rule::changesCombined;
            for (const Way& way : ways(before, changer.definition)) {
                way.check(comparison, random, isSingle);
                for (const Difference& it : comparison.differences)
                    if (isSingle || it.rule == rule.rule) way.checkWitness(it);
            }
            if (HasFailure()) FAIL() << asText(comparison, Level::wire);
            for (const Difference& it : comparison.differences) {
                judged += 2;
                unproved += !it.oldToNew.outcome.isProved + !it.newToOld.outcome.isProved;
            }
            ++count;
        }
    }
    EXPECT_LT(unproved * 20, judged) << "the search is to prove or find nearly all";
}

TEST(Compare, VerdictsHoldForSeveralChangesAtOnce) {
    Random random;
    for (int count = 0; count < 150; ++count) {
        Changer changer(random);
        const TestDefinition before = changer.definition;
        std::string trace;
        for (int changes = 0; changes < 3;) {
            const RuleInfo& rule = rules()[random.below(rules().size() - 1)];
            // What two changes make of one thing cannot be told from two things.
            const auto isAfter = [&](std::string_view start, const char* other) {
                return std::string_view(rule.name).starts_with(start) && trace.find(other) != trace.npos;
            };
            if (isAfter("enumerator-", "enumerator-") || isAfter("field-inlined", "field-wrapped")) continue;
            const std::string place = changer.change(rule.rule);
            if (!place.empty()) ++changes;
            if (!place.empty()) trace += std::string(rule.name) + " " + place + "; ";
        }
        SCOPED_TRACE(trace);
        const Comparison comparison = compare::compare(before.parse(), changer.definition.parse());
        for (const Way& way : ways(before, changer.definition)) way.check(comparison, random, false);
        if (HasFailure()) FAIL() << asText(comparison, Level::wire);
    }
}

// ------- what the random changes rarely meet

TEST(Compare, BodiesAreShownAsPeopleReadThemAndWrittenBack) {
    const Definition definition = parseDefinition(R"(<protocol name="Test" version="1">
<enumeration name="Side" doc="s"><enumerator name="BID" value="1"/><enumerator name="LAST" value="200"/></enumeration>
<record name="Box" doc="b"><field name="n" type="int16" doc="n"/></record>
<message name="M" id="1" doc="m">
  <field name="prices" type="price[]" doc="p"/><field name="sides" type="Side[]" doc="s"/>
  <field name="flag" type="bool" doc="f"/><field name="name" type="string" doc="n"/>
  <field name="real" type="float4" doc="r"/><field name="boxes" type="Box[]" doc="b"/>
</message></protocol>)",
                                                  "test.xml");
    const Model model(definition);
    const Sequence items = flatten(model.messages[0]);
    const std::string head = "0603050704802af8ffffffffffffffff07" // NMA, NDA, NA, 1, 1344 and -2
                             "03010200"                           // an enumerator, and two without a name
                             "01"
                             "0361220a"
                             "0000c03f";
    for (const size_t boxes : {0u, 127u, 128u}) {
        std::string body = unhex(head) + (boxes == 128 ? std::string("\x80\x80") : std::string(1, char(boxes)));
        for (size_t i = 0; i < boxes; ++i) body += '\3'; // -2
        const auto reading = compare::decode(items, body, Reader::written);
        ASSERT_TRUE(reading) << boxes;
        EXPECT_EQ(hex(compare::encode(*reading)), hex(body));
        std::vector<std::string> texts;
        for (const Place& place : *reading) texts.push_back(place.path() + ' ' + place.text());
        std::vector<std::string> expected{"prices 6 elements",   "prices[0] NMA",  "prices[1] NDA", "prices[2] NA",
                                          "prices[3] 1",         "prices[4] 1344", "prices[5] -2",  "sides 3 elements",
                                          "sides[0] BID",        "sides[1] 2",     "sides[2] 0",    "flag 1",
                                          "name \"a\\\"\\x0a\"", "real 1.5"};
        expected.push_back("boxes " + std::to_string(boxes) + " elements");
        for (size_t i = 0; i < boxes; ++i) expected.push_back("boxes[" + std::to_string(i) + "].n -2");
        EXPECT_EQ(texts, expected);
        EXPECT_FALSE(compare::decode(items, body.substr(0, body.size() - 1), Reader::whole));
        EXPECT_FALSE(compare::decode(items, body + '\0', Reader::whole));
        EXPECT_TRUE(compare::decode(items, body + '\0', Reader::rolling));
    }
}

// A message keeps its identity under another name only if identifier and doc say so, and its name is not another's.
TEST(Compare, MessagesAreRenamedIfIdentifierAndDocStay) {
    const auto messages = [](const std::string& list) {
        return parseDefinition("<protocol name=\"Test\" version=\"1\">" + list + "</protocol>", "test.xml");
    };
    const auto message = [](const char* name, int id, const char* doc) {
        return "<message name=\"" + std::string(name) + "\" id=\"" + std::to_string(id) + "\" doc=\"" + doc
               + "\"><field name=\"n\" type=\"int32\" doc=\"n\"/></message>";
    };
    using Rules = std::multiset<Rule>;
    const std::string both = message("A", 1, "a") + message("B", 2, "b");
    for (const auto& [after, expected] : std::vector<std::pair<std::string, Rules>>{
             {message("C", 1, "a") + message("B", 2, "b"), {Rule::messageRenamed}},
             {message("C", 1, "c") + message("B", 2, "b"),
              {Rule::messageRemoved, Rule::messageAdded, Rule::identifierTakenOver}},
             {message("C", 3, "a") + message("B", 2, "b"), {Rule::messageRemoved, Rule::messageAdded}},
             {message("B", 1, "a"),
              {Rule::messageRemoved, Rule::identifierChanged, Rule::messageMoved, Rule::identifierTakenOver}}}) {
        Rules found;
        const Comparison comparison = compare::compare(messages(both), messages(after));
        for (const Difference& it : comparison.differences) found.insert(it.rule);
        EXPECT_EQ(found, expected) << asText(comparison, Level::wire);
    }
}

// ------- the protocol of this project, and the program

const std::string ROOT = QL_ROOT;
const std::string PROTOCOL = readFile(ROOT + "/protocol/QLProtocol.xml");

std::string replaced(const std::string& text, const std::string& from, const std::string& to) {
    const size_t at = text.find(from);
    EXPECT_NE(at, text.npos) << from;
    return at == text.npos ? text : std::string(text).replace(at, from.size(), to);
}

TEST(Compare, ProtocolReadsWhatIsReleased) {
    const auto load = [](const std::string& file) { return parseDefinition(readFile(ROOT + file), file); };
    const Comparison comparison =
        compare::compare(load("/protocol/released/QLProtocol.xml"), load("/protocol/QLProtocol.xml"));
    EXPECT_TRUE(comparison.isCompatible(Level::wire)) << asText(comparison, Level::wire);
}

// What is said of this protocol, asked of the library's own verifier.
TEST(Compare, VerifierAcceptsTheWitnessesOfTheProtocol) {
    const Definition now = parseDefinition(PROTOCOL, "now.xml");
    for (const auto& [from, to] : std::vector<std::pair<std::string, std::string>>{
             {"<field name=\"price\" type=\"price\"/>", "<field name=\"price\" type=\"int64\"/>"},
             {"<field name=\"minAmount\" type=\"price\"/>", ""},
             {"<field name=\"orderID\" type=\"int64\"/>\n    <field name=\"clOrdID\" type=\"string\"/>",
              "<field name=\"clOrdID\" type=\"string\"/><field name=\"orderID\" type=\"int64\"/>"}}) {
        SCOPED_TRACE(to);
        const Comparison comparison = compare::compare(now, parseDefinition(replaced(PROTOCOL, from, to), "new.xml"));
        ASSERT_EQ(comparison.differences.size(), 1u) << asText(comparison, Level::wire);
        const Direction& it = comparison.differences[0].newToOld;
        ASSERT_EQ(it.outcome.verdict, Verdict::silent);
        const std::string& body = it.outcome.witness->body;
        EXPECT_TRUE(Inspect::verify(it.id, body.data(), body.data() + body.size(), Inspect::whole)) << hex(body);
    }
}

/// qlgen compare on two files of the protocol, the newer one changed.
class CompareCommand : public testing::Test {
  protected:
    Folder::Result run(const std::string& from, const std::string& to, const std::string& options = "") {
        folder.write("old.xml", PROTOCOL);
        folder.write("new.xml", replaced(PROTOCOL, from, to));
        return folder.run("'" QL_GENERATOR "' compare old.xml new.xml " + options);
    }

    const std::string enumerator = "<enumerator name=\"BID\" value=\"1\"/>";
    const Folder folder;
};

TEST_F(CompareCommand, ExitStatusFollowsTheLevel) {
    EXPECT_EQ(run(enumerator, enumerator, "--level source").exitCode, 0);
    for (const auto& [to, wire, json] : std::vector<std::tuple<std::string, int, int>>{
             {"<enumerator name=\"BUY\" value=\"1\"/>", 0, 1}, {"<enumerator name=\"BID\" value=\"9\"/>", 1, 1}}) {
        EXPECT_EQ(run(enumerator, to).exitCode, wire) << to;
        EXPECT_EQ(run(enumerator, to, "--level json").exitCode, json) << to;
    }
    EXPECT_EQ(run("namespace=\"Quillon\"", "namespace=\"Other\"", "--level json").exitCode, 0);
    EXPECT_EQ(run("namespace=\"Quillon\"", "namespace=\"Other\"", "--level source").exitCode, 1);
    EXPECT_EQ(run(enumerator, "<enumerator/>").exitCode, 1);
    EXPECT_EQ(run(enumerator, enumerator, "--level all").exitCode, 2);
    EXPECT_EQ(folder.run("'" QL_GENERATOR "' compare old.xml none.xml").exitCode, 3);
    EXPECT_EQ(folder.run("'" QL_GENERATOR "' compare old.xml new.xml --rules >/dev/full").exitCode, 3);
    EXPECT_EQ(folder.run("'" QL_GENERATOR "' compare old.xml old.xml >/dev/full").exitCode, 3);
}

TEST_F(CompareCommand, ProgramsAreToldInJson) {
    const Folder::Result result =
        run("<field name=\"timeInForce\" type=\"TimeInForce\"/>", "", "--format json --level json");
    EXPECT_EQ(result.exitCode, 1);
    const auto json = nlohmann::json::parse(result.out);
    EXPECT_EQ(json["old"], "old.xml");
    EXPECT_EQ(json["new"], "new.xml");
    EXPECT_EQ(json["level"], "json");
    EXPECT_EQ(json["compatible"], false);
    ASSERT_EQ(json["differences"].size(), 1u);
    const auto& it = json["differences"][0];
    EXPECT_EQ(it["rule"], "field-removed");
    EXPECT_EQ(it["place"], "SubmitOrder.timeInForce");
    EXPECT_EQ(it["details"], "TimeInForce");
    EXPECT_EQ(it["breaks"], "wire");
    EXPECT_EQ(it["compatible"], false);
    EXPECT_TRUE(it["exception"].is_null());
    EXPECT_EQ(it["messages"], nlohmann::json({"SubmitOrderMessage"}));
    for (const char* const way : {"oldToNew", "newToOld"}) {
        const auto& witness = it[way]["witness"];
        EXPECT_EQ(it[way]["verdict"], "silent");
        EXPECT_EQ(it[way]["rolling"], "silent");
        EXPECT_EQ(it[way]["proved"], true);
        EXPECT_EQ(witness["message"], "SubmitOrderMessage");
        EXPECT_EQ(witness["id"], 61673);
        EXPECT_EQ(witness["reader"], "whole");
        EXPECT_FALSE(witness["body"].get<std::string>().empty());
        EXPECT_NE(witness["written"], witness["read"]);
    }
}

TEST_F(CompareCommand, ExceptionsAcceptWhatTheyNameAndHaveAReason) {
    const std::string to = "<enumerator name=\"BID\" value=\"9\"/>";
    const auto with = [&](const std::string& line) {
        folder.write("fine.txt", "# accepted\n\n" + line + "\n");
        return run(enumerator, to, "--exceptions fine.txt");
    };
    Folder::Result result = with("enumerator-renumbered Side.BID: nobody sends it");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_NE(result.out.find("accepted: nobody sends it"), std::string::npos) << result.out;
    EXPECT_EQ(with("enumerator-renumbered *: all were told").exitCode, 0);
    result = with("enumerator-renumbered Side.OFR: another");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "fine.txt:3: nothing differs by enumerator-renumbered in Side.OFR\n");
    for (const auto& [line, error] : std::vector<std::pair<std::string, std::string>>{
             {"enumerator-renumbered Side.BID", "not RULE PLACE: REASON"},
             {"enumerator-renumbered Side.BID:", "not RULE PLACE: REASON"},
             {"enumerator-renumbered: all", "not RULE PLACE: REASON"},
             {"enumerator-counted Side.BID: x", "there is no rule 'enumerator-counted'"}}) {
        result = with(line);
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(result.err, "fine.txt:3: " + error + "\n");
    }
}

TEST_F(CompareCommand, PageForOwnersHasTheTableOfRules) {
    const Folder::Result result = folder.run("'" QL_GENERATOR "' compare --rules");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.lines(), rules().size() + 2);
    EXPECT_NE(readFile(ROOT + "/docs/evolution.md").find("\n\n" + result.out + "\n"), std::string::npos);
}

} // namespace
