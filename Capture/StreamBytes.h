// The bytes of one direction of a connection that are held, and the packets that they came in.
//
// Most packets end where a frame does. So their bytes are looked at where the taker has them, and only what is left of them
// is copied.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Capture {

/// Where bytes come from: the time and place of their packet.
struct Origin {
    int64_t time = 0;
    uint64_t offset = 0;
    std::size_t capture = 0;
};

class StreamBytes {
  public:
    /// The next bytes of the stream. What has been gone past may be forgotten. REQUIRES: they are valid until keep().
    void take(std::string_view bytes, const Origin& origin);

    /// These bytes alone, and so many more that the capture lacks. REQUIRES: as above.
    void takeDatagram(std::string_view bytes, std::size_t missing, const Origin& origin);

    /// What was taken is valid no longer: holds what is left of it.
    void keep() {
        if (!_isKept && _at != _taken.size()) copyRest();
    }

    /// Forgets all bytes, and goes on after so many more, which are missing.
    void passOver(uint64_t missing);

    /// Goes past so many bytes, or all that there are.
    void advance(std::size_t size);

    std::string_view rest() const { return all().substr(_at); } ///< from here on

    uint64_t here() const { return _position + _at; } ///< in the stream

    /// Of the byte at that position, or the last one before it.
    const Origin& originOf(uint64_t position) const;

    std::size_t memory() const { return _bytes.capacity() + _marks.capacity() * sizeof(Mark); }

  private:
    /// Of the bytes up to a position of the stream, from the mark before on.
    struct Mark {
        uint64_t end;
        Origin origin;
    };

    std::string_view all() const { return _isKept ? std::string_view(_bytes) : _taken; }
    void copyRest();
    void shrink();

    std::string _bytes;
    std::string_view _taken; ///< instead of those, until they are kept
    bool _isKept = true;
    uint64_t _position = 0; ///< of the first of them in the stream
    std::size_t _at = 0;    ///< where we are in them
    std::vector<Mark> _marks;
    Origin _last; ///< of all until now
};

} // namespace Capture
