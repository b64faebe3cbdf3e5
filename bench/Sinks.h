// What reading every field means, and how decoded fields are checked: every peer shows its decoded fields, in wire
// order, to one of these. The code that is timed is thereby the code that was checked.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace bench {

/// Uses all it is shown, so that no read can be left out: numbers whole, of texts the length and the outermost bytes.
struct Sum {
    void number(int64_t v) { total += static_cast<uint64_t>(v); }
    void text(const char* p, size_t n) {
        total += n;
        if (n != 0)
            total += static_cast<unsigned char>(p[0]) + static_cast<uint64_t>(static_cast<unsigned char>(p[n - 1]));
    }
    void count(size_t n) { total += n; }

    uint64_t total = 0;
};

/// Writes down all it is shown.
struct Transcript {
    void number(int64_t v) { written += std::to_string(v) + ' '; }
    void text(const char* p, size_t n) { written.append("\"").append(p, n).append("\" "); }
    void count(size_t n) { written += '#' + std::to_string(n) + ' '; }

    std::string written;
};

/// Ends the program unless both are the same: figures for different values would be worthless.
inline void requireSame(const char* shape, const char* who, const std::string& expected, const std::string& found) {
    if (expected == found) return;
    std::fprintf(stderr, "%s: %s decodes other values\n  expected %s\n  found    %s\n", shape, who, expected.c_str(),
                 found.c_str());
    std::abort();
}

} // namespace bench
