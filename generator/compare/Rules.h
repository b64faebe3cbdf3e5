// What can differ between two definitions. The one table behind the comparison, its output, its exceptions and
// docs/evolution.md.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace qlgen::compare {

/// What must still work, each with all before it.
enum class Level : uint8_t {
    wire,   ///< the bytes of bodies
    json,   ///< messages as JSON, which has the names of fields and enumerators
    source, ///< C++ sources of hosts
};

const char* toText(Level level);

enum class Rule : uint8_t {
    fieldAppended,
    fieldAdded,
    fieldRemoved,
    fieldReplaced,
    fieldRenamed,
    fieldMoved,
    fieldsSwapped,
    fieldRetyped,
    elementRetyped,
    paddingChanged,
    fieldWrapped,
    fieldInlined,
    enumeratorAdded,
    enumeratorRemoved,
    enumeratorRenumbered,
    enumeratorRenamed,
    enumeratorReplaced,
    messageAdded,
    messageRemoved,
    messageRenamed,
    messageMoved,
    identifierChanged,
    identifierTakenOver,
    typeAdded,
    typeRemoved,
    typeRenamed,
    sourcesMoved,
    secretChanged,
    deprecatedChanged,
    changesCombined,
};

struct RuleInfo {
    Rule rule;
    std::string_view name; ///< "field-appended"
    std::string_view change;
    std::string_view bytes; ///< what the other side makes of the bytes
    /// Where the names or the shape that changed matter, whatever becomes of the bytes; nowhere if there is none.
    std::optional<Level> breaks;
    /// Whether peers can meet it with readers that take trailing bytes, and missing last fields as zero.
    bool canRoll;
};

/// All of them, in the order of Rule.
std::span<const RuleInfo> rules();
const RuleInfo& info(Rule rule);

} // namespace qlgen::compare
