// How the commands end.
//
// Data goes to standard output, everything else to standard error. Bad data does not end a command: it says where and
// goes on as far as it can.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace qlproto {

enum ExitCode : int {
    EXIT_FINE = 0,
    EXIT_BAD_DATA = 1, ///< the input was read, but holds something that is wrong
    EXIT_USAGE = 2,
    EXIT_IO = 3, ///< a file cannot be opened, read or written, or the system lacks memory or threads
};

/// Tells people something on standard error, on one line that is not endless, whatever a stranger's text in it holds.
/// Nothing can be done if even that fails, so it is not an error.
void tell(std::string_view line) noexcept;

/// A number and what is counted: "1 byte", "2 bytes".
inline std::string counted(uint64_t number, const char* thing) {
    return std::to_string(number) + ' ' + thing + (number == 1 ? "" : "s");
}

/// A file cannot be opened, read or written.
class IoError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// A file is no capture of ours, or so damaged that nothing of it can be read.
class DamagedCapture : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The reader of the output has gone. Not an error: nobody wants the rest.
class ClosedPipe : public std::exception {};

/// Does `work` up to its end, or until the reader of its output has gone: false. What it found until then still counts.
template <class Work>
bool whileRead(Work&& work) {
    try {
        work();
        return true;
    } catch (const ClosedPipe&) {
        return false;
    }
}

} // namespace qlproto
