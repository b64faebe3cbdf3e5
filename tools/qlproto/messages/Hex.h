// Bytes as hexadecimal text and back.
//
// Read: pairs of digits of either case. Between pairs there may be blanks, tabs, line ends and colons; a pair may begin
// with 0x. The digits of a pair stand together: "0 8" is an error, so that a digit lost in copying does not shift all
// that follows.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

#include "Capture/Packet.h"

namespace qlproto {

/// A text that is not hexadecimal.
class HexError : public std::runtime_error {
  public:
    HexError(std::size_t position, const std::string& reason);

    /// Of the character concerned, from 0; the text's length if something is missing at its end.
    std::size_t position() const { return _position; }

  private:
    std::size_t _position;
};

/// Characters of a packet's bytes at most, as "0xHH " with a line end or a blank after each.
inline constexpr std::size_t LONGEST_HEX = 5 * Capture::MAX_PACKET;

/// The bytes that the text stands for. Throws HexError.
std::string bytesFromHex(std::string_view text);

/// Lower-case digits. With a separator, e.g. " ", it stands between the bytes.
std::string hexFromBytes(std::string_view bytes, std::string_view separator = "");

} // namespace qlproto
