// Messages as text: on a line, on several lines, as JSON, or some of their values as CSV.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Capture/Packet.h"
#include "Inspect/Display.h"
#include "Inspect/Json.h"
#include "tools/qlproto/messages/FieldPath.h"
#include "tools/qlproto/messages/MessageReader.h"
#include "tools/qlproto/terminal/TimeText.h"

namespace qlproto {

enum class Format {
    line,  ///< time, name and fields
    lines, ///< time and name; then each value that is no zero and no empty text with its path, on a line of its own
    json,  ///< as in MessageLine.h
    csv,   ///< a row of chosen values
};

class Rendering {
  public:
    struct Options {
        Format format = Format::line;
        TimeForm time = TimeForm::raw;
        Inspect::Display display;
        bool hasTime = true; ///< bodies alone have none
        bool isColoured = false;
        Inspect::Integers integers = Inspect::Integers::strings; ///< in JSON
        std::vector<std::string> fields = {};                    ///< of rows: time, message, id, or paths of fields
    };

    /// Throws FilterError if no message has such a field.
    explicit Rendering(const Options& options);

    /// The first row of CSV: the names of the columns.
    std::string header() const;

    /// Appends the message and a line end. No character of a message can end a line or steer a terminal.
    void append(const Capture::Packet& packet, const MessageReader& reader, std::string& text);

  private:
    void appendLine(const MessageReader& reader, std::string& text);
    void appendLines(const MessageReader& reader, std::string& text);
    void appendJson(const Capture::Packet& packet, const MessageReader& reader, std::string& text);
    void appendRow(const Capture::Packet& packet, const MessageReader& reader, std::string& text);
    void appendName(const char* name, std::string& text) const;

    Options _options;
    std::vector<std::optional<FieldValue>> _columns; ///< none for what is no field
    std::unique_ptr<char[]> _room;
};

} // namespace qlproto
