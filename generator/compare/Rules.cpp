#include "generator/compare/Rules.h"

namespace qlgen::compare {
namespace {

constexpr RuleInfo RULES[] = {
    {Rule::fieldAppended, "field-appended", "a field added where the message ends",
     "refused; read by readers that take missing last fields as zero and bytes after the last", Level::json, true},
    {Rule::fieldAdded, "field-added", "a field added elsewhere", "refused or silent", Level::json, false},
    {Rule::fieldRemoved, "field-removed", "a field removed", "refused or silent", Level::json, false},
    {Rule::fieldReplaced, "field-replaced", "another field, by name and by doc, in the place of one",
     "silent if their forms are alike", Level::json, false},
    {Rule::fieldRenamed, "field-renamed", "a new name in the old place with the old doc", "same", Level::json, false},
    {Rule::fieldMoved, "field-moved", "a field in another place", "silent or refused", Level::source, false},
    {Rule::fieldsSwapped, "fields-swapped", "two fields in each other's place", "silent if their forms are alike",
     Level::source, false},
    {Rule::fieldRetyped, "field-retyped", "a field of another type",
     "silent; widening an integer is same from old to new", Level::json, false},
    {Rule::elementRetyped, "element-retyped", "a vector with elements of another type", "as field-retyped", Level::json,
     false},
    {Rule::paddingChanged, "padding-changed", "a field made padding, or padding made something else",
     "silent or refused; a string made padding is same from old to new", Level::json, false},
    {Rule::fieldWrapped, "field-wrapped", "fields put into a record in their place", "same", Level::json, false},
    {Rule::fieldInlined, "field-inlined", "a record's fields put in its place", "same", Level::json, false},
    {Rule::enumeratorAdded, "enumerator-added", "an enumerator added",
     "same: older readers keep the number, without a name", Level::json, false},
    {Rule::enumeratorRemoved, "enumerator-removed", "an enumerator removed",
     "same: newer readers keep the number, without a name", Level::json, false},
    {Rule::enumeratorRenumbered, "enumerator-renumbered", "an enumerator with another value", "silent", Level::source,
     false},
    {Rule::enumeratorRenamed, "enumerator-renamed", "a new name for an enumerator's value", "same", Level::json, false},
    {Rule::enumeratorReplaced, "enumerator-replaced", "another enumerator, by name and by doc, with the value of one",
     "silent", Level::json, false},
    {Rule::messageAdded, "message-added", "a message added", "refused by older readers, which do not know it",
     std::nullopt, true},
    {Rule::messageRemoved, "message-removed", "a message removed", "refused by newer readers", Level::json, false},
    {Rule::messageRenamed, "message-renamed", "a new name for a message with the old identifier and doc", "same",
     Level::json, false},
    {Rule::messageMoved, "message-moved", "a message with another index", "same", Level::source, false},
    {Rule::identifierChanged, "identifier-changed", "a message with another identifier",
     "refused, unless another message has its old one", Level::json, false},
    {Rule::identifierTakenOver, "identifier-taken-over", "another message, by name and by doc, under an identifier",
     "silent where the one's bodies are bodies of the other", Level::json, false},
    {Rule::typeAdded, "type-added", "a record or enumeration added", "same", std::nullopt, false},
    {Rule::typeRemoved, "type-removed", "a record or enumeration removed", "same", Level::source, false},
    {Rule::typeRenamed, "type-renamed", "a new name for a record or enumeration", "same", Level::source, false},
    {Rule::sourcesMoved, "sources-moved", "another namespace, folder or stem of the generated files", "same",
     Level::source, false},
    {Rule::secretChanged, "secret-changed", "a field made secret, or secret no more", "same", std::nullopt, false},
    {Rule::deprecatedChanged, "deprecated-changed",
     "a field, enumerator or type deprecated, no longer, or for another reason", "same", std::nullopt, false},
    {Rule::changesCombined, "changes-combined", "changes of one message that do worse together than each by itself",
     "refused or silent", std::nullopt, false},
};

constexpr bool isInOrder() {
    for (size_t i = 0; i < std::size(RULES); ++i)
        if (static_cast<size_t>(RULES[i].rule) != i) return false;
    return true;
}
static_assert(isInOrder());

} // namespace

const char* toText(Level level) { return level == Level::wire ? "wire" : level == Level::json ? "json" : "source"; }

std::span<const RuleInfo> rules() { return RULES; }

const RuleInfo& info(Rule rule) { return RULES[static_cast<size_t>(rule)]; }

} // namespace qlgen::compare
