// How reading and writing files fails.
#pragma once

#include <cstdint>
#include <exception>
#include <stdexcept>
#include <string>

namespace Capture {

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

/// A number and what is counted, for messages: "1 byte", "2 bytes".
inline std::string counted(uint64_t number, const char* thing) {
    return std::to_string(number) + ' ' + thing + (number == 1 ? "" : "s");
}

} // namespace Capture
