// What reaches a terminal.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <string>
#include <string_view>

#include <sys/stat.h>
#include <unistd.h>

#include "Inspect/SafeText.h"

namespace qlproto {

/// Whether people watch on standard output what comes in bit by bit from the capture: "-" is standard input.
inline bool isWatched(const std::string& capture) {
    struct stat it {};
    const bool isThere = (capture == "-" ? fstat(STDIN_FILENO, &it) : stat(capture.c_str(), &it)) == 0;
    return isThere && !S_ISREG(it.st_mode) && isatty(STDOUT_FILENO) == 1;
}

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
