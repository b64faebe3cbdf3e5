#include "tools/qlproto/messages/Rendering.h"

#include <string_view>

#include "Inspect/SafeText.h"
#include "Inspect/Values.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/messages/MessageLine.h"
#include "tools/qlproto/terminal/Table.h"

namespace qlproto {

namespace {

constexpr const char* BOLD = "\x1B[1m";
constexpr const char* PLAIN = "\x1B[0m";

/// Values on lines of their own.
class ValueLines : public Inspect::ValueVisitor {
  public:
    ValueLines(const Inspect::Display& display, std::string& text) : _display(display), _text(text) {}

    bool value(Inspect::Path path, const Inspect::Value& value) override {
        if (value.number == 0 && value.text.empty() && value.kind != Inspect::Kind::enumeration) return true;
        (_text += "    ").append(Inspect::path_text(path)).append(" = ");
        if (value.isSecret && _display.secrets == Inspect::Secrets::hide)
            _text += Inspect::HIDDEN;
        else if (value.is_text())
            appendQuoted(value.text);
        else
            _text += Inspect::number_text(value, _display);
        _text += '\n';
        return true;
    }

  private:
    void appendQuoted(std::string_view bytes) {
        _text += '"';
        Inspect::append_safe(bytes, _text);
        _text += '"';
    }

    const Inspect::Display& _display;
    std::string& _text;
};

} // namespace

Rendering::Rendering(const Options& options)
    : _options(options), _room(std::make_unique_for_overwrite<char[]>(LONGEST_LINE)) {
    for (const std::string& it : options.fields)
        _columns.push_back(it == "time" || it == "message" || it == "id" ? std::nullopt
                                                                         : std::optional<FieldValue>(it));
}

std::string Rendering::header() const {
    std::string row;
    for (const std::string& it : _options.fields) {
        if (!row.empty()) row += ',';
        appendCsv(it, row);
    }
    return row + '\n';
}

void Rendering::append(const Capture::Packet& packet, const MessageReader& reader, std::string& text) {
    if (_options.format == Format::json) {
        appendJson(packet, reader, text);
    } else if (_options.format == Format::csv) {
        appendRow(packet, reader, text);
    } else {
        if (_options.hasTime) {
            appendTime(packet.time, _options.time, text);
            text += ' ';
        }
        if (_options.format == Format::line)
            appendLine(reader, text);
        else
            appendLines(reader, text);
    }
}

void Rendering::appendLine(const MessageReader& reader, std::string& text) {
    const char* const name = reader.descriptor().name();
    const Inspect::Rendered rendered = Inspect::render(thisTool.protocol, reader.descriptor().id(), reader.message(),
                                                       _room.get(), _room.get() + LONGEST_LINE, _options.display);
    // Of "<Name fields>" the frame is left out: names are then words of their own, for grep and cut.
    std::string_view whole(_room.get(), rendered.size);
    whole.remove_prefix(1 + std::string_view(name).size());
    whole.remove_suffix(1);
    appendName(name, text);
    text.append(whole) += '\n';
}

void Rendering::appendLines(const MessageReader& reader, std::string& text) {
    appendName(reader.descriptor().name(), text);
    text += '\n';
    ValueLines lines(_options.display, text);
    Inspect::walk_values(thisTool.protocol, reader.descriptor().id(), reader.message(), lines);
}

void Rendering::appendJson(const Capture::Packet& packet, const MessageReader& reader, std::string& text) {
    MessageLineWriter line(text);
    if (_options.hasTime) line.time(packet.time, _options.time);
    line.message(reader, _options.display, _options.integers);
    line.end();
}

/// Several values of a column stand in one cell, with blanks between them.
void Rendering::appendRow(const Capture::Packet& packet, const MessageReader& reader, std::string& text) {
    std::string cell;
    for (std::size_t i = 0; i < _columns.size(); ++i) {
        if (i != 0) text += ',';
        cell.clear();
        if (_columns[i])
            _columns[i]->each(packet, reader, [&](const Inspect::Value& value) {
                if (!cell.empty()) cell += ' ';
                Inspect::append_visible(shownText(value, _options.display), cell);
                return true;
            });
        else if (_options.fields[i] == "message")
            cell = reader.descriptor().name();
        else if (_options.fields[i] == "id")
            cell = std::to_string(reader.descriptor().id());
        else if (_options.hasTime)
            appendTime(packet.time, _options.time, cell);
        appendCsv(cell, text);
    }
    text += '\n';
}

void Rendering::appendName(const char* name, std::string& text) const {
    if (_options.isColoured) text += BOLD;
    text += name;
    if (_options.isColoured) text += PLAIN;
}

} // namespace qlproto
