// A definition as it is compared: types by pointer instead of by name, every field with an identity.
//
// The identity of a field tells which field of the other definition it is, whatever its name and place there. In the
// old definition it is the field's name; what matches the two (Match.h) gives the fields of the new one theirs.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "generator/Definition.h"
#include "generator/LogicalTypes.h"

namespace qlgen::compare {

struct CompositeView;

struct EnumerationView {
    std::string name;
    std::string identity; ///< the old enumeration's name; of a new one without an old, its own after a '+'
    std::vector<Enumerator> enumerators;
    std::string deprecated; ///< why it is to be used no more; empty if it may be

    const Enumerator* find(const std::string& enumerator) const;
};

/// A logical type, an enumeration or a record; of the field itself or, of a vector, of its elements.
struct Type {
    std::string written; ///< as the definition says it: "int32[]"
    bool isVector = false;
    const LogicalType* logical = nullptr;
    const EnumerationView* enumeration = nullptr;
    const CompositeView* record = nullptr;
};

struct FieldView {
    std::string name;
    std::string doc;
    std::string identity; ///< within its composite; empty for a field that only wraps or is wrapped
    Type type;
    bool isSecret = false;
    std::string deprecated; ///< as of an enumeration
};

/// A record or a message.
struct CompositeView {
    std::string name;
    std::string doc;
    uint16_t id = 0; ///< of a message
    std::vector<FieldView> fields;
    std::string deprecated; ///< as of an enumeration

    const FieldView* find(const std::string& field) const;
};

/// A definition with all its types, at addresses that stay.
class Model {
  public:
    explicit Model(const Definition& definition);
    Model(const Model&) = delete;
    Model& operator=(const Model&) = delete;

    std::string name;
    std::string sources; ///< where the generated ones are: namespace, folder and stem
    std::deque<EnumerationView> enumerations;
    std::deque<CompositeView> records;
    std::deque<CompositeView> messages; ///< by index
    std::deque<CompositeView> wrappers; ///< copies of records for fields whose own fields have identities of their own

    const EnumerationView* enumeration(const std::string& type) const;
    const CompositeView* record(const std::string& type) const;
    const CompositeView* message(const std::string& type) const;
    const CompositeView* message(uint16_t id) const;
};

} // namespace qlgen::compare
