// Signatures of a definition: equal for definitions that say the same, and else different but for chance.
//
// They are made of what the definition says in canonical lines, apart from docs, marks and the spelling of the file:
// what the bytes depend on, and what programs and texts know by name. So peers can tell whether they understand each
// other's bytes from whether they understand each other's names.
#pragma once

#include <string>

#include "generator/Definition.h"

namespace qlgen {

/// What the wire depends on: identifiers and the forms of fields, in order. Says nothing of names.
std::string canonicalWire(const Definition& definition);

/// Names of types, fields and enumerators, with the types of fields as written.
std::string canonicalNames(const Definition& definition);

/// 32 hexadecimal digits: FNV-1a of 128 bits.
std::string signatureOf(const std::string& text);

/// Fills in the signatures that the definition does not give.
void deriveSignatures(Definition& definition);

} // namespace qlgen
