#include "tools/qlproto/messages/Annotation.h"

#include <fmt/format.h>

#include "Backend/Velmora/Wire.h"
#include "Capture/Errors.h"
#include "Capture/Verification.h"
#include "Inspect/BodyWalk.h"
#include "Inspect/Display.h"
#include "Inspect/SafeText.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/messages/Hex.h"
#include "tools/qlproto/terminal/Table.h"

namespace qlproto {

namespace {

using Inspect::BodyValue;
using Inspect::Kind;

/// Enough for any number.
constexpr std::size_t BYTES_A_LINE = 10;

/// Of what follows a fault, this much is shown.
constexpr std::size_t BYTES_AFTER_FAULT = 4 * BYTES_A_LINE;

std::string valueText(const BodyValue& value) {
    switch (value.value.kind) {
    case Kind::boolean:
        return value.number != 0 ? "true" : "false";
    case Kind::int64:
    case Kind::int64Fixed:
    case Kind::price:
        if (const auto sentinel = Velmora::sentinelName(value.number); !sentinel.empty()) return std::string(sentinel);
        break;
    case Kind::uint64:
        return fmt::format("{}", static_cast<uint64_t>(value.number));
    case Kind::float4:
    case Kind::float8:
        return fmt::format("{}", value.real);
    case Kind::enumeration:
        for (const Inspect::EnumeratorInfo& it : value.value.enumeration->enumerators) {
            if (it.value == value.number) return std::string(it.name);
            // All that is left of a value beyond a byte.
            if ((it.value & 0xFF) == value.number) return fmt::format("{}, the low byte of {}", value.number, it.name);
        }
        return fmt::format("{}, no enumerator of {}", value.number, value.value.enumeration->name);
    case Kind::vector:
        return Capture::counted(static_cast<uint64_t>(value.number), "element");
    default:
        if (Inspect::is_bytes(value.value.kind)) return Inspect::quoted(value.text());
        break;
    }
    return fmt::format("{}", value.number);
}

/// Whether a pad's body has the form that it is written in: a length of two bytes, low byte first, and the text.
bool isWrittenPad(const Inspect::MessageInfo& message, std::string_view body) {
    if (!Capture::isPad(thisTool.protocol, message.id) || body.size() < 2) return false;
    return body.size() == 2u + static_cast<unsigned char>(body[0]) + 256u * static_cast<unsigned char>(body[1]);
}

class Lines {
  public:
    /// Bytes of the body and what they are. Those that do not fit a line go on in further ones.
    void add(std::size_t offset, std::string_view bytes, std::string path, std::string type, std::string value) {
        std::vector<Cell> explanation = {std::move(path), std::move(type), std::move(value)};
        std::vector<Cell> whole = {std::to_string(offset), hexFromBytes(bytes)};
        whole.insert(whole.end(), explanation.begin(), explanation.end());
        _rows.add(std::move(whole));
        do {
            std::vector<Cell> row = {fmt::format("{}", offset), hexFromBytes(bytes.substr(0, BYTES_A_LINE), " ")};
            row.insert(row.end(), explanation.begin(), explanation.end());
            _table.add(std::move(row));
            explanation.clear();
            offset += BYTES_A_LINE;
            bytes.remove_prefix(std::min(bytes.size(), BYTES_A_LINE));
        } while (!bytes.empty());
    }

    /// The same of bytes that are not to be seen.
    void addHidden(std::size_t offset, const std::string& path, const std::string& type, const std::string& value) {
        for (Table* const table : {&_table, &_rows})
            table->add({std::to_string(offset), std::string(Inspect::HIDDEN), path, type, value});
    }

    std::string text() const { return _table.text(); }
    const Table& rows() const { return _rows; }

  private:
    static Table titled() {
        using enum Table::Align;
        Table table({right, left, left, left, left});
        table.add({"offset", "bytes", "field", "type", "value"});
        return table;
    }
    Table _table = titled(), _rows = titled();
};

} // namespace

Annotation annotate(const Inspect::MessageInfo& message, std::string_view body, const Inspect::Policy& policy,
                    Inspect::Secrets secrets) {
    const bool isPad = isWrittenPad(message, body);
    Annotation result;
    if (!isPad)
        result.fault = Inspect::verify(thisTool.protocol, message.id, body.data(), body.data() + body.size(), policy);
    const bool isGood = static_cast<bool>(result.fault);
    const std::size_t sound = isGood ? body.size() : result.fault.offset;

    const bool isHiding = secrets == Inspect::Secrets::hide;
    Lines lines;
    std::string path, type; // of the faulty value
    std::size_t end = 0;
    Inspect::walk_body(
        *message.type, body,
        [&](const BodyValue& value) {
            if (!isGood && value.begin >= sound) {
                path = value.path;
                type = type_text(value.value);
                return false;
            }
            if (isHiding && value.isSecret)
                lines.addHidden(value.begin, std::string(value.path), type_text(value.value),
                                std::string(Inspect::HIDDEN));
            else
                lines.add(value.begin, body.substr(value.begin, value.end - value.begin), std::string(value.path),
                          type_text(value.value), valueText(value));
            end = value.end;
            return true;
        },
        isPad ? Inspect::PadForm::written : Inspect::PadForm::read);

    const std::string_view rest = body.substr(end);
    if (!isGood || !rest.empty()) { // a fault, or what a tolerant policy lets pass
        const std::string what = isGood ? "after the last field" : fmt::format("<-- {}", to_string(result.fault.fault));
        if (isHiding && holds_secret(*message.type))
            lines.addHidden(end, path, type, what);
        else
            lines.add(end, rest.substr(0, BYTES_AFTER_FAULT), path, type, what);
    }
    result.text = lines.text();
    result.table = lines.rows();
    if (rest.size() > BYTES_AFTER_FAULT)
        result.text += fmt::format("and {} more\n", Capture::counted(rest.size() - BYTES_AFTER_FAULT, "byte"));
    return result;
}

} // namespace qlproto
