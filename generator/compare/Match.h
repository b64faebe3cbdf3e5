// Which parts of two definitions are the same ones, and what differs.
//
// Enumerations, records, messages, fields and enumerators are the same by their names. One with a new name in the place
// of one that is gone is the same renamed: a field or message if it has the old doc, an enumerator if it has the old
// value and no other doc, a record or enumeration if it is the type of a field that had the other. A field or message that has neither
// the name nor the doc is another one: peers would take the values of the one for those of the other.
#pragma once

#include <string>
#include <vector>

#include "generator/compare/Rules.h"
#include "generator/compare/WireGrammar.h"

namespace qlgen::compare {

/// One change of a definition.
struct Change {
    Rule rule;
    std::string place;   ///< "MDEntry.price", "Side.BID", "LogMessage"
    std::string details; ///< "int32 is now int64"
    Edit edit;           ///< the old definition with this change alone; empty if bodies do not show it
    const CompositeView* oldMessage = nullptr; ///< of identifiers: what the old definition reads under it
    const CompositeView* newMessage = nullptr;
};

/// A message that both definitions have.
struct MessagePair {
    const CompositeView* oldMessage;
    const CompositeView* newMessage;
};

struct Matched {
    std::vector<Change> changes;
    std::vector<MessagePair> messages;
};

/// Finds the changes, and gives the new definition's enumerations and fields the identities of the old ones.
Matched match(const Model& oldModel, Model& newModel);

} // namespace qlgen::compare
