// How the commands end.
//
// Data goes to standard output, everything else to standard error. Bad data does not end a command: it says where and
// goes on as far as it can.
#pragma once

#include <string_view>

namespace qlproto {

// Exit statuses; there are no others.
inline constexpr int EXIT_FINE = 0;
inline constexpr int EXIT_BAD_DATA = 1; ///< the input was read, but holds something that is wrong
inline constexpr int EXIT_USAGE = 2;
inline constexpr int EXIT_IO = 3; ///< a file cannot be opened, read or written, or the system lacks memory or threads

/// Tells people something on standard error, on one line that is not endless, whatever a stranger's text in it holds.
/// Nothing can be done if even that fails, so it is not an error.
void tell(std::string_view line) noexcept;

/// The same of what is wrong, with the name of the program in front.
void tellFault(std::string_view what) noexcept;

} // namespace qlproto
