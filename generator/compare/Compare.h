// Two definitions compared: what changed, what each change does to peers of both, and what passes as compatible.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "generator/compare/Rules.h"
#include "generator/compare/Verdict.h"

namespace qlgen::compare {

/// What becomes of the bodies of one side at the other, in the message where it is worst.
struct Direction {
    Outcome outcome;
    std::string message; ///< of the witness
    uint16_t id = 0;
};

/// A change and what it does by itself, all else being as in the old definition.
struct Difference {
    Rule rule;
    std::string place;                 ///< "MDEntry.price", "Side.BID", "LogMessage"
    std::string details;               ///< "int32 is now int64"
    std::vector<std::string> messages; ///< those whose bodies it concerns
    Direction oldToNew;
    Direction newToOld;
    std::optional<Level> breaks; ///< from which level on it is not compatible
    std::string exception;       ///< why it is accepted all the same; empty if it is not
};

struct Comparison {
    std::vector<Difference> differences;

    bool isCompatible(Level level) const;
};

bool isCompatible(const Difference& difference, Level level);

Comparison compare(const Definition& oldDefinition, const Definition& newDefinition);

} // namespace qlgen::compare
