// A text that is drawn again and again where it stands on the terminal, while what it tells of goes on. As much of it as
// the screen holds.
#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace qlproto {

class LiveView {
  public:
    /// Shows what `text` gives from now on.
    void start(std::function<std::string()> text) { _text = std::move(text); }
    bool isOn() const { return _text != nullptr; }

    /// Until the text may be drawn again: not more often than people can read. 0 if it may.
    std::chrono::milliseconds untilDue() const;

    void draw();

    /// Takes it off the terminal, to make room for something else.
    void clear();

  private:
    using Clock = std::chrono::steady_clock;

    std::function<std::string()> _text;
    Clock::time_point _next{};
    std::size_t _lines = 0; ///< that are shown
};

/// A text that fits a screen: of each line the first characters, and if there are too many lines the first of them and the
/// last, which tells of all. REQUIRES: height > 1
std::string fitted(const std::string& text, std::size_t width, std::size_t height);

} // namespace qlproto
