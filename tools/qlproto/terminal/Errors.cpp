#include "tools/qlproto/terminal/Errors.h"

#include <cstdio>

#include "tools/qlproto/Tool.h"
#include "tools/qlproto/terminal/Terminal.h"

namespace qlproto {

namespace {

void tellOfNoMemory() {
    std::fprintf(stderr, "%.*s: no memory to tell what happened\n", static_cast<int>(thisTool.program.size()),
                 thisTool.program.data());
}

} // namespace

void tell(std::string_view line) noexcept {
    constexpr std::size_t longest = 4096;
    try {
        const std::string text = visible(line.substr(0, longest)) + (line.size() > longest ? "...[cut]\n" : "\n");
        std::fwrite(text.data(), 1, text.size(), stderr);
    } catch (const std::exception&) {
        tellOfNoMemory();
    }
}

void tellFault(std::string_view what) noexcept {
    try {
        tell(std::string(thisTool.program).append(": ").append(what));
    } catch (const std::exception&) {
        tellOfNoMemory();
    }
}

} // namespace qlproto
