#include "generator/Definition.h"

#include <algorithm>

namespace qlgen {

int32_t Enumeration::maxValue() const { return std::ranges::max(enumerators, {}, &Enumerator::value).value; }

bool Composite::holdsStorage() const { return std::ranges::any_of(fields, &Field::holdsStorage); }

} // namespace qlgen
