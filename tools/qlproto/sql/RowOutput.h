// Rows of results as people and programs want them.
#pragma once

#include <memory>
#include <string>

#include "Capture/Output.h"
#include "tools/qlproto/sql/Database.h"

namespace qlproto::sql {

enum class RowForm {
    table,  ///< in aligned columns, a thousand rows at a time
    csv,    ///< with a header; null is nothing
    ndjson, ///< an object a line
};

inline CellForm cellsOf(RowForm form) { return form == RowForm::ndjson ? CellForm::json : CellForm::text; }

/// REQUIRES: the output outlives it. Throws as that does.
std::unique_ptr<RowSink> makeRowSink(RowForm form, Capture::Output& output);

} // namespace qlproto::sql
