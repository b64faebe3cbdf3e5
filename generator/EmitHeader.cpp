// QLProtocol.h: declarations only.
//
//     struct Side {                              one helper per enumeration
//         enum Type : int32_t {
//             BID = 1,
//         };
//         ... the same static members in each
//     };
//
//     struct MDEntry {                           one structure per record and message
//         int64_t price{};        ///< price
//         bufstring components;   ///< parts
//         ... the same operations in each
//     };
//
//     initialize, finalize, __protocol           the module
#include <algorithm>

#include <fmt/format.h>

#include "generator/Emit.h"

namespace qlgen {
namespace {

void addEnumeration(Text& text, const Enumeration& enumeration) {
    text.add(R"(
/// $doc
struct $deprecated$T {
    enum Type : int32_t {
)",
             {{"doc", enumeration.doc},
              {"deprecated", deprecatedAttribute(enumeration.deprecated)},
              {"T", enumeration.name}});
    for (const Enumerator& enumerator : enumeration.enumerators) {
        const std::string doc = notedDoc(enumerator), attribute = deprecatedAttribute(enumerator.deprecated);
        text.add(
            "        $name$deprecated = $value,$doc\n",
            {{"name", enumerator.name},
             {"deprecated",
              attribute.empty() ? "" : fmt::format(" {}", std::string_view(attribute).substr(0, attribute.size() - 1))},
             {"value", fmt::to_string(enumerator.value)},
             {"doc", doc.empty() ? "" : " ///< " + doc}});
    }
    text.add(R"(    };
    static constexpr const char* Name = "$T";
    static bool _initialized;
    static constexpr unsigned int _maxValue = $max;
    static constexpr unsigned int _nbValues = $count;
    static const char* _names[_maxValue + 1];
    static unsigned char _toIndex[_maxValue + 1];
    static Type _fromIndex[_nbValues];

    static void initialize();
    static void finalize() {}
    static bool isValid(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<$T>(value) != nullptr;
    }
    static const char* toString(unsigned char value) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorName<$T>(value);
    }
    static unsigned char toIndex(Type value) { return Velmora::enumeratorIndex<$T>(value); }
    static Type fromValue(unsigned char value) { return Velmora::enumeratorFromValue<$T>(value); }
    static Type fromIndex(unsigned char index) { return _fromIndex[index]; }
    static Type fromString(const char* text) {
        QL_ASSERT(_initialized);
        return Velmora::enumeratorFromString<$T>(text);
    }
};
std::ostream& operator<<(std::ostream& os, $T::Type value);
FastOStream& operator<<(FastOStream& os, $T::Type value);
Velmora::of<$T> enumerationOf($T::Type);
)",
             {{"T", enumeration.name},
              {"max", fmt::to_string(enumeration.maxValue())},
              {"count", fmt::to_string(enumeration.enumerators.size())}});
}

/// The members, with their comments in one column as clang-format leaves them.
void addFields(Text& text, const Composite& type) {
    const auto declaration = [](const Field& field) {
        const bool initialised = !field.holdsStorage; // what holds storage is built by the constructor
        return fmt::format("{}{} {}{};", deprecatedAttribute(field.deprecated), field.cppType, field.name,
                           initialised ? "{}" : "");
    };
    size_t width = 0;
    for (const Field& field : type.fields) width = std::max(width, declaration(field).size());
    for (const Field& field : type.fields)
        text.add("    $field ///< $doc\n",
                 {{"field", fmt::format("{:{}}", declaration(field), width)}, {"doc", notedDoc(field)}});
}

/// "int32_t marketID_, int32_t feedID_": parameters are told from the members of the same name by the underscore.
std::string parameters(const Composite& type) {
    std::string list;
    for (const Field& field : type.fields)
        list += fmt::format("{}{} {}_", list.empty() ? "" : ", ", field.cppType, field.name);
    return list;
}

std::string initialisers(const Composite& type) {
    std::string list;
    for (const Field& field : type.fields)
        list += fmt::format("{}{}({}_)", list.empty() ? "" : ", ", field.name, field.name);
    return list;
}

std::string arguments(const Composite& type) {
    std::string list;
    for (const Field& field : type.fields) list += fmt::format("{}{}_", list.empty() ? "" : ", ", field.name);
    return list;
}

/// `index`: position of a message, null for a record.
void addComposite(Text& text, const Composite& type, const size_t* index) {
    text.add("\n/// $doc\nstruct $deprecated$T {\n",
             {{"doc", type.doc}, {"deprecated", deprecatedAttribute(type.deprecated)}, {"T", type.name}});
    if (index != nullptr)
        text.add("    static constexpr MsgType_t ID = $id;\n    static constexpr short INDEX = $index;\n\n",
                 {{"id", fmt::format("0x{:04X}", type.id)}, {"index", fmt::to_string(*index)}});
    addFields(text, type);
    if (type.holdsStorage()) {
        text.add(R"(
    explicit $T(BufferAllocator& alloc);
    ~$T();
    $T& operator=(const $T&) = default;
)",
                 {{"T", type.name}});
    } else {
        text.add(R"(
    $T() = default;
    explicit $T(BufferAllocator&) {}
    $T(const $T&) = default;
    ~$T() = default;
    $T& operator=(const $T&) = default;
)",
                 {{"T", type.name}});
        if (index == nullptr)
            text.add(R"(
    $explicit$T($parameters) : $initialisers {}
    void set($parameters) { *this = $T($arguments); }

)",
                     {{"T", type.name},
                      {"explicit", type.fields.size() == 1 ? "explicit " : ""},
                      {"parameters", parameters(type)},
                      {"initialisers", initialisers(type)},
                      {"arguments", arguments(type)}});
    }
    text.add(R"(    bool operator==(const $T& other) const;
    bool operator!=(const $T& other) const;
    bool operator<(const $T& other) const;
    void write(FastCodec& codec) const;
    void read(FastCodec& codec);
    void checkbounds(const void* begin, const void* end) const;
)",
             {{"T", type.name}});
    if (type.holdsStorage())
        text.add("\n  private:\n    $T() = delete;\n    $T(const $T&) = delete;\n", {{"T", type.name}});
    text.add(R"(};
std::ostream& operator<<(std::ostream& os, const $T& value);
FastOStream& operator<<(FastOStream& os, const $T& value);
)",
             {{"T", type.name}});
}

} // namespace

std::string emitHeader(const Definition& definition) {
    Text text(definition);
    text.add(R"(//
// The types of the protocol and the entry points of its module. A host calls initialize() once, alone and before
// anything else, and then works with the structures below or, by message identifier, with __protocol.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <stdexcept>
#include <string>

#include "Backend/Common/Assert.h"
#include "Backend/Common/FastOStream.h"
#include "Backend/Velmora/BufferAllocator.h"
#include "Backend/Velmora/Codec.h"
#include "Backend/Velmora/Enumeration.h"
#include "Backend/Velmora/FastCodec.h"
#include "Backend/Velmora/FieldList.h"
#include "Backend/Velmora/MsgDescriptor.h"
#include "Backend/Velmora/MsgErrors.h"
#include "Backend/Velmora/MsgProtocol.h"
#include "Backend/Velmora/TextCodec.h"
#include "Backend/Velmora/bufstl/bufstring.h"
#include "Backend/Velmora/bufstl/bufvector.h"
)");
    text.open();
    text.add(R"(
using bufstl::bufstring;
using bufstl::bufvector;
using bufstl::bufvectox;
using Velmora::BufferAllocator;
using Velmora::FastCodec;
using Velmora::MsgDescriptor;
using Velmora::MsgProtocol;
using Velmora::MsgType_t;
$services
// Enumerations. Each helper has no instances, only static members, the same in all:
//
//   Type             the enumeration; a field may hold any byte, also one without a name
//   Name             the helper's own name
//   initialize()     fills the tables; called by the module's initialize(). finalize() has no effect.
//   isValid(byte)    whether an enumerator has that value
//   toString(byte)   its name, or null
//   toIndex(value)   its ordinal in declaration order; 0 if there is none
//   fromIndex(ordinal)                  the way back, unchecked
//   fromValue(byte), fromString(text)   the enumerator; throw std::invalid_argument if there is none
//
// isValid, toString, fromString and what relies on them assert that initialize() has run. The operators << write the
// name, and nothing for a value without one, which turns a standard stream bad. enumerationOf is never defined: it
// names the helper of a value.
)",
             {{"services", definition.cppNamespace == "Quillon" ? "" : "using Quillon::FastOStream;\n"}});
    text.add(hideMacros(definition));
    for (const Enumeration& enumeration : definition.enumerations) addEnumeration(text, enumeration);
    text.add(restoreMacros(definition));
    text.add(R"(
// Records and messages. All have the same operations, over their fields in declaration order:
//
//   X(alloc)         every field zero; strings and vectors empty, bound to `alloc` and taking all storage from it
//   ==, !=, <        by the first field that differs
//   write(codec)     appends the encoding; the caller leaves enough room
//   read(codec)      overwrites the fields from a complete encoding; throws when the message block is exhausted
//   checkbounds      asserts that the value and all it owns lie inside [begin, end)
//   operators <<     one line of text, "<X name=value ...>"
//
// A value with strings or vectors lives in a message block: it is built with an allocator only, and copied by
// assignment, which rebuilds what it owns in the block of the target. The others are plain bytes.

// Records: travel inside messages.
)");
    for (const Composite& record : definition.records) addComposite(text, record, nullptr);
    text.add(R"(
// Messages. ID travels beside the encoded body; INDEX is the position in the protocol's message index.
)");
    for (size_t i = 0; i < definition.messages.size(); ++i) addComposite(text, definition.messages[i], &i);
    text.add(R"(
// The module.

inline const int VERSION = $version;

/// The protocol, from initialize() to finalize(); null otherwise.
extern MsgProtocol* __protocol;

/// Chooses the faster way of coding for this processor, fills the tables of the enumerations and registers every
/// message. To be called exactly once, while nothing else uses the module; a second call leaks what the first one built.
///
/// To be called from main() on, not by the constructor of a global object: such constructors run in any order, and the
/// registry, whose map the module constructs in the same way, may not be there yet.
void initialize();

/// Releases the protocol and its descriptors, while nothing else uses the module. May be called at any time.
void finalize();

/// The hook through which every enumeration byte without a name passes, with the name of its field; `valid` is false.
void validateEnum(const std::string& fieldName, bool valid);

/// The same for the decoders, which find it by the enumeration.
template <class H>
void validateEnum(Velmora::of<H>, const char* fieldName, bool valid) {
    VALIDATE_ENUM(fieldName, valid)
}

/// For hosts; the module never throws it.
class $stemError : public std::runtime_error {
  public:
    explicit $stemError(const char* text) : std::runtime_error(text) {}
    ~$stemError() override = default;
};

struct $stemTraits; // $folder/$stem.traits.h

/// From a type of the protocol to its traits. Never defined, found by the argument.
template <class T>
$stemTraits protocolOf(Velmora::of<T>);
)",
             {{"version", fmt::to_string(definition.version)},
              {"stemError", definition.stem + "Error"},
              {"stemTraits", definition.stem + "Traits"}});
    return text.close();
}

} // namespace qlgen
