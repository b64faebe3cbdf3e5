// What becomes of one side's bodies at the other.
//
//   same      the reader reads every body of the writer as it was meant
//   refused   it refuses every one, or at least every one that it would not read as it was meant
//   silent    it accepts some body whole and reads other values; a witness shows one
//
// `same` is always proved: the two grammars agree value by value, and every form of the writer's is read by the
// reader's without loss. `silent` is shown by its witness. `refused` is proved where `isProved` says so: the values of
// both sides end at the same bytes up to a place where one of them has no more, or no sequence of bytes fits both
// grammars. Elsewhere bodies were searched for in vain, from the states of both parsers run side by side.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "generator/compare/Body.h"

namespace qlgen::compare {

enum class Verdict : uint8_t { same, refused, silent };

const char* toText(Verdict verdict);

struct Witness {
    std::string body;
    bool isRolling;                                           ///< whether only a rolling reader accepts it
    std::vector<std::pair<std::string, std::string>> written; ///< places and values, but those that are zero
    std::vector<std::pair<std::string, std::string>> read;
};

struct Outcome {
    Verdict verdict = Verdict::same; ///< of a reader behind the policy `whole`
    Verdict rolling = Verdict::same; ///< of one that also takes trailing bytes, and missing last fields as zero
    bool isProved = true;            ///< both of them
    std::optional<Witness> witness;  ///< of the worse, if that is silent
};

/// What `reader` makes of the bodies of `writer`. `isOther`: they are of different messages under one identifier, so that
/// to accept is to misread.
Outcome judge(Items writer, Items reader, bool isOther = false);

} // namespace qlgen::compare
