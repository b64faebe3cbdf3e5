// What depends on whether people watch.
#pragma once

#include <cstdlib>

#include <unistd.h>

namespace qlproto {

/// Whether text to this file descriptor may have colours: only on a terminal, and never against the user's wish.
inline bool mayHaveColours(int fd) {
    const char* const noColour = std::getenv("NO_COLOR");
    return isatty(fd) == 1 && (noColour == nullptr || *noColour == '\0');
}

} // namespace qlproto
