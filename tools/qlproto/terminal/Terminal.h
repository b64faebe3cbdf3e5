// What reaches a terminal.
#pragma once

#include <cstdlib>
#include <string>
#include <string_view>

#include <unistd.h>

#include "Inspect/SafeText.h"

namespace qlproto {

/// Whether text to this file descriptor may have colours: only on a terminal, and never against the user's wish.
inline bool mayHaveColours(int fd) {
    const char* const noColour = std::getenv("NO_COLOR");
    return isatty(fd) == 1 && (noColour == nullptr || *noColour == '\0');
}

/// A text in which nothing ends the line or steers a terminal. All that strangers can write into goes through it on its
/// way to people: names of files, arguments, errors, cells of tables.
inline std::string visible(std::string_view text) {
    std::string result;
    Inspect::append_visible(text, result);
    return result;
}

} // namespace qlproto
