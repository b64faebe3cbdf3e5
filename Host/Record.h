// A message at its place in a sequence, and where to begin reading one: what rings, journals and buses have in common.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Backend/Velmora/MsgDescriptor.h"

namespace Host {

struct Record {
    Velmora::MsgType_t id = 0;
    std::string_view body;
    int64_t time = 0;      ///< as its publisher gave it: nanoseconds since 1970
    uint64_t sequence = 0; ///< from 1; set by whoever publishes it
    uint64_t lost = 0;     ///< messages between this one and the one read before that came and went unread
};

/// With which message a reader begins.
struct From {
    enum class Kind { live, oldest, sequence, time };

    Kind kind = Kind::live;
    uint64_t sequence = 0; ///< or the next there is; those in between are lost
    int64_t time = 0;      ///< the first message of that time or a later one

    static From live() { return {}; }                     ///< the next that is published
    static From oldest() { return {Kind::oldest, 0, 0}; } ///< the oldest that is kept
    static From at(uint64_t sequence) { return {Kind::sequence, sequence, 0}; }
    static From since(int64_t time) { return {Kind::time, 0, time}; }
};

/// Bytes of the name of a reader that goes on where one of that name stopped.
inline constexpr size_t LONGEST_READER_NAME = 48;

/// Messages one after the other, from wherever they are read.
class Source {
  public:
    virtual ~Source() = default;

    /// The next message; false if there is none yet. Its body is valid until the next call. It comes from others: verify it
    /// before it is decoded.
    virtual bool next(Record& record) = 0;
    /// Waits until there may be one, for so many milliseconds at most. False if there is none.
    virtual bool wait(int milliseconds) = 0;
    /// All that was given out has been dealt with: the next reader of this one's name, if it has one, goes on after it.
    virtual void done() {}
};

} // namespace Host
