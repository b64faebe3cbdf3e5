// The text of a message for logs that strangers can write into: bounded, escaped, and with secrets hidden on request.
//
//     char line[512];
//     const Inspect::Rendered text = Inspect::render(id, message, line, line + sizeof line, Inspect::Secrets::hide);
//
// The layout and the fields are those of the stream operators: "<Type name=value ...>". What differs:
//
//   strings      never leave their quotes or the line: the quote and the backslash as \" and \\, line feed, carriage
//                return and tab as \n, \r and \t, any other control character and every byte that is no valid UTF-8 as
//                \xHH, and so the invisible characters that break or reorder lines
//   secrets      when hidden: name=***, which a string cannot show, for it stands in quotes
//   no room      the text ends at the last value, character or escape that fits whole, and then "...[cut]". A text that
//                is whole ends with ">", one that was cut never does.
//
// Values without special characters are rendered exactly as the stream operators do. The module must be initialised.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "Inspect/Protocol.h"

namespace Inspect {

enum class Secrets { show, hide };

struct Rendered {
    size_t size = 0;    ///< characters written; there is no NUL
    bool isCut = false; ///< whether room was missing
};

/// Renders the message into [begin, end). With an unknown identifier the text is "<unknown message ID>".
Rendered render(const Protocol& protocol, Velmora::MsgType_t id, const void* message, char* begin, char* end,
                Secrets secrets);
inline Rendered render(Velmora::MsgType_t id, const void* message, char* begin, char* end, Secrets secrets) {
    return render(default_protocol(), id, message, begin, end, secrets);
}

/// The same, with prices divided for display.
Rendered render(const Protocol& protocol, Velmora::MsgType_t id, const void* message, char* begin, char* end,
                const Display& display);
inline Rendered render(Velmora::MsgType_t id, const void* message, char* begin, char* end, const Display& display) {
    return render(default_protocol(), id, message, begin, end, display);
}

template <class T>
Rendered render(const T& message, char* begin, char* end, Secrets secrets) {
    return render(protocol_of<Velmora::ProtocolOf<T>>(), T::ID, &message, begin, end, secrets);
}

/// Appends the bytes as a string's contents are rendered, without the quotes.
void append_safe(std::string_view bytes, std::string& text);

/// The same for a text that stands in no quotes: quotes and backslashes stay as they are, so that a text which is safe
/// already does not change. For lines that quote from what strangers hand over: names of files, errors, arguments.
void append_visible(std::string_view bytes, std::string& text);

/// The text in quotes, escaped as render() does.
std::string quoted(std::string_view text);

} // namespace Inspect
