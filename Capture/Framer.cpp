#include "Capture/Framer.h"

#include "Capture/NumberAt.h"

namespace Capture {

void Framer::append(uint16_t id, std::string_view body, std::string& to) {
    if (_framing.message() != nullptr) {
        _message.clear();
        append(*_framing.message(), id, body, _message);
        body = _message;
    }
    append(_framing.frame(), id, body, to);
    ++_sequence;
}

/// Appends a row around what it holds, a body or messages.
void Framer::append(const Framing::Row& row, uint16_t id, std::string_view contents, std::string& to) const {
    using Kind = Framing::Field::Kind;
    for (const bool isAfterBody : {false, true}) {
        for (const Framing::Field& it : row.fields) {
            if (it.isAfterBody != isAfterBody) continue;
            uint64_t value = 0;
            if (it.kind == Kind::constant) value = it.value;
            if (it.kind == Kind::id) value = id;
            if (it.kind == Kind::count) value = 1;
            if (it.kind == Kind::sequence) value = it.size == 8 ? _sequence : _sequence % (uint64_t(1) << 8 * it.size);
            if (it.kind == Kind::length) {
                const int64_t length = row.lengthOf(static_cast<int64_t>(contents.size()));
                if (length < 0) throw FramingError("the length of a message would be negative");
                value = static_cast<uint64_t>(length);
            }
            if (it.size < 8 && value >> 8 * it.size != 0)
                throw FramingError(std::to_string(value) + " does not fit into " + std::to_string(it.size)
                                   + (it.size == 1 ? " byte" : " bytes") + " of the framing");
            appendNumber(to, value, it.size, it.isHighFirst);
        }
        if (!isAfterBody) to += contents;
    }
}

} // namespace Capture
