// Values for every message, for vectors at the limits of what can travel.
#pragma once

#include <string>

#include "Inspect/Reflection.h"

namespace qlproto::corpus {

enum class Filling {
    zeros,     ///< zeros, their enumerators or else the first, empty texts, one element in every vector
    small,     ///< one-byte numbers, texts of a few letters, two elements in every vector
    least,     ///< the least of every number and the first enumerator
    most,      ///< the greatest of every number and the last enumerator
    sentinels, ///< in every signed 64-bit number, one sentinel after the other
    bytes,     ///< all bytes in the first text, whose length takes two bytes thereby; one of them in each other
    counts,    ///< as small, with 130 elements in vectors of numbers and strings, whose counts take two bytes thereby
};

/// A message of that type as JSON, with all its fields.
std::string filledJson(const Inspect::TypeInfo& type, Filling filling);

} // namespace qlproto::corpus
