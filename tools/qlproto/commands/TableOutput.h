// What a command has found out, in the form that was asked for.
#pragma once

#include <string>

#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/terminal/Table.h"

namespace qlproto {

/// `table()` gives the table, `json()` the text that programs read instead.
template <class MakeTable, class Json>
std::string inForm(TableForm form, MakeTable table, Json json) {
    switch (form) {
    case TableForm::json:
        return json();
    case TableForm::csv:
        return table().csv();
    case TableForm::table:
        break;
    }
    return table().text();
}

/// The same of what has no JSON of its own.
template <class MakeTable>
std::string inForm(TableForm form, MakeTable table) {
    return inForm(form, table, [&] { return table().json(); });
}

} // namespace qlproto
