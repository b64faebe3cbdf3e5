// Messages as text: on a line, on several lines, or as JSON.
#pragma once

#include <memory>
#include <string>

#include "Capture/Packet.h"
#include "Inspect/Display.h"
#include "tools/qlproto/messages/MessageReader.h"
#include "tools/qlproto/terminal/TimeText.h"

namespace qlproto {

enum class Format {
    line,  ///< time, name and fields
    lines, ///< time and name; then each value that is no zero and no empty text with its path, on a line of its own
    json,  ///< as in MessageLine.h
};

class Rendering {
  public:
    struct Options {
        Format format = Format::line;
        TimeForm time = TimeForm::raw;
        Inspect::Display display;
        bool hasTime = true; ///< bodies alone have none
        bool isColoured = false;
    };

    explicit Rendering(const Options& options);

    /// Appends the message and a line end. No character of a message can end a line or steer a terminal.
    void append(const Capture::Packet& packet, const MessageReader& reader, std::string& text);

  private:
    void appendLine(const MessageReader& reader, std::string& text);
    void appendLines(const MessageReader& reader, std::string& text);
    void appendJson(const Capture::Packet& packet, const MessageReader& reader, std::string& text);
    void appendName(const char* name, std::string& text) const;

    Options _options;
    std::unique_ptr<char[]> _room;
};

} // namespace qlproto
