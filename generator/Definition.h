// The protocol definition in memory: read from its XML file, checked as a whole, and resolved to C++ types.
//
// What is checked here cannot fail in the compiler later: the generated code builds for every definition that loads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "generator/LogicalTypes.h"

namespace qlgen {

// What definitions may hold, so that whoever walks types and values can rely on bounds.
inline constexpr size_t MAX_NAME = 128;          ///< characters of a name
inline constexpr size_t MAX_LINE = 1000;         ///< characters of a doc and of other texts for people
inline constexpr size_t MAX_TYPES = 1024;        ///< enumerations, records and messages, of each
inline constexpr size_t MAX_ENUMERATORS = 256;   ///< of an enumeration
inline constexpr size_t MAX_FIELDS = 512;        ///< of a record or message
inline constexpr size_t MAX_VALUES = 4096;       ///< of a record or message with all that it embeds
inline constexpr size_t MAX_DEPTH = 16;          ///< steps from a message to a value in it: fields and elements
inline constexpr int32_t MAX_ENUMERATOR = 65535; ///< for the tables of a helper are as long as its largest value

struct Enumerator {
    std::string name;
    std::string doc;
    std::string deprecated; ///< why it is to be used no more; empty if it may be
    int32_t value = 0;      ///< 0 or more; above 255 only if it is deliberate
};

struct Enumeration {
    std::string name;
    std::string doc;
    std::string deprecated;              ///< as of an enumerator
    std::vector<Enumerator> enumerators; ///< at least one

    int32_t maxValue() const;
};

/// A logical type, an enumeration or a record; or a vector of one.
struct FieldType {
    std::string name;                     ///< in the definition; of a vector, that of its elements
    const LogicalType* logical = nullptr; ///< null for a type of the definition's own
    bool isRecord = false;
    bool isVector = false;
    size_t index = 0; ///< of a type of the definition's own: position among the records or the enumerations

    bool isEnumeration() const { return logical == nullptr && !isRecord; }
};

struct Field {
    std::string name;
    std::string doc;
    FieldType type;
    std::string cppType;       ///< as the member is declared: "int64_t", "Side::Type", "bufvectox<MDEntry>"
    std::string encoding;      ///< the tag of Velmora, of a vector that of its elements: "plain", "price"
    bool holdsStorage = false; ///< is or contains a string or a vector
    bool isSecret = false;     ///< not to be shown in logs, and neither is what it holds
    std::string deprecated;    ///< as of an enumerator
    std::string identifies;    ///< what its value is the identifier of, as in "order"; empty if of nothing
    std::string station;       ///< where the time that it holds was taken; empty if it holds none
};

/// A record or a message.
struct Composite {
    std::string name;
    std::string doc;
    std::string deprecated;    ///< as of an enumerator
    uint16_t id = 0;           ///< of a message only
    std::vector<Field> fields; ///< at least one

    bool holdsStorage() const;
};

struct Definition {
    std::string name;
    std::string cppNamespace; ///< of all that is generated: "Quillon", "Acme::Chat"
    std::string folder;       ///< of the generated files, as #include names it: "generated/QLProtocol"
    std::string stem;         ///< of their names, and of the classes named after the protocol: "QLProtocol"
    int32_t version = 0;
    std::string signature; ///< of the whole; 32 hexadecimal digits, as the others
    std::string signatureAPI;
    std::string signatureStorage;
    size_t slots = 0;                            ///< of the direct table; no two identifiers are the same modulo this
    size_t entries = 0;                          ///< that the map of descriptors is made for
    std::string definitionText;                  ///< answers those who ask for the compressed definition
    size_t definitionBytes = 0;                  ///< of the array that is declared for it; 0: there is none
    std::optional<std::set<std::string>> macros; ///< names to be shielded from macros; all, if not given
    std::vector<Enumeration> enumerations;
    std::vector<Composite> records;
    std::vector<Composite> messages; ///< at least one; a message's position is its index
};

/// All that is wrong with a definition: one line "FILE:LINE: what is wrong" per error, in the order of lines.
class DefinitionError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Reads the definition from the text `xml`; `file` is its name in error texts. Throws DefinitionError.
Definition parseDefinition(const std::string& xml, const std::string& file);

} // namespace qlgen
