#include "tools/qlproto/terminal/Errors.h"

#include <cstdio>

#include "tools/qlproto/terminal/Terminal.h"

namespace qlproto {

void tell(std::string_view line) noexcept {
    constexpr std::size_t longest = 4096;
    try {
        const std::string text = visible(line.substr(0, longest)) + (line.size() > longest ? "...[cut]\n" : "\n");
        std::fwrite(text.data(), 1, text.size(), stderr);
    } catch (const std::exception&) {
        std::fputs("qlproto: no memory to tell what happened\n", stderr);
    }
}

} // namespace qlproto
