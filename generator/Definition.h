// The protocol definition in memory: read from its XML file, checked as a whole, and resolved to C++ types.
//
// What is checked here cannot fail in the compiler later: the generated code builds for every definition that loads.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace qlgen {

/// Slots of the registry's direct table, indexed by identifier modulo this. No two messages may share one.
inline constexpr int directTableSlots = 350;

struct Enumerator {
    std::string name;
    int32_t value = 0; ///< 0 or more
};

struct Enumeration {
    std::string name;
    std::string doc;
    std::vector<Enumerator> enumerators; ///< at least one

    int32_t maxValue() const;
};

struct Field {
    std::string name;
    std::string doc;
    std::string cppType;       ///< as the member is declared: "int64_t", "Side::Type", "bufvectox<MDEntry>"
    std::string encoding;      ///< the tag of Velmora: "plain", "price", "crypt", "padding"
    bool holdsStorage = false; ///< is or contains a string or a vector
    bool isRecord = false;
    bool isSecret = false; ///< not to be shown in logs
};

/// A record or a message.
struct Composite {
    std::string name;
    std::string doc;
    uint16_t id = 0;           ///< of a message only
    std::vector<Field> fields; ///< at least one

    bool holdsStorage() const;
};

struct Definition {
    std::string name;
    int32_t version = 0;
    std::string signature;
    std::string signatureAPI;
    std::string signatureStorage;
    std::vector<Enumeration> enumerations;
    std::vector<Composite> records;
    std::vector<Composite> messages; ///< a message's position is its index
};

/// All that is wrong with a definition: one line "FILE:LINE: what is wrong" per error, in the order of lines.
class DefinitionError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Reads the definition from the text `xml`; `file` is its name in error texts. Throws DefinitionError.
Definition parseDefinition(const std::string& xml, const std::string& file);

} // namespace qlgen
