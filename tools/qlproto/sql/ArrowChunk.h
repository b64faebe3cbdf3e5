// Columns in the Arrow layout as columns of the engine. They are copied: what the engine offers to take them over works for
// chunks of all columns only, does not take parts of records, and is no older than a few versions.
#pragma once

#include <cstddef>

#include "Columns/Arrow.h"
#include "tools/qlproto/sql/DuckDb.h"

namespace qlproto::sql {

/// The engine's type of a column. The caller destroys it. Enumerations are texts.
engine::LogicalType typeOf(const ArrowSchema& column);

/// Fills a vector with the column of a batch. `whole` is what the engine knows of the column; `schema`, that of the array, has
/// parts of it, in the same order. What is missing becomes null.
void fill(engine::Vector vector, const ArrowSchema& whole, const ArrowSchema& schema, const ArrowArray& array);

/// Fills a vector, which is for such a column, with nulls.
void fillWithNulls(engine::Vector vector, const ArrowSchema& column, size_t count);

} // namespace qlproto::sql
