// A message as a line of JSON, as `decode --format json` prints it, and back to bytes.
//
//     {"time": "1709535600.000000042", "message": "TimerMessage", "id": 53284, "body": {"tqid": 7}}
//
// Read strictly: an unknown name, a name given twice and a value of another form are errors that tell the JSON path.
// `id` may be left out and must otherwise be that of `message`; `time` may be left out and is then 0. The body is that
// of Inspect/Json.h.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "Inspect/Json.h"
#include "Inspect/Reflection.h"
#include "tools/qlproto/Packet.h"

namespace qlproto {

/// Makes packets of lines, in memory that is used again for the next. The protocol must be initialised.
class MessageLineReader {
  public:
    MessageLineReader();

    /// The line's packet, valid until the next call. Throws Inspect::JsonError.
    Packet read(std::string_view line);

  private:
    /// Writes the body after the identifier and returns its size.
    std::size_t encode(const Inspect::MessageInfo& message, std::string_view body);

    std::unique_ptr<char[]> _block;  ///< the message and what it owns
    std::unique_ptr<char[]> _packet; ///< identifier and body
};

} // namespace qlproto
