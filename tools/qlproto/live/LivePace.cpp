#include "tools/qlproto/live/LivePace.h"

#include <charconv>
#include <optional>
#include <string>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace qlproto {

namespace {

/// 0 for "max".
std::optional<double> speedOf(const std::string& text) {
    double speed = 0;
    if (text == "max") return speed;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), speed);
    if (error != std::errc() || end != text.data() + text.size() || !(speed >= 0.001 && speed <= 1e6))
        return std::nullopt;
    return speed;
}

} // namespace

void addPace(CLI::App& command, PacedCaptures& paced) {
    const auto choose = [&paced](const std::string& text) { paced.speed = speedOf(text).value(); };
    command
        .add_option_function<std::string>("--speed", choose,
                                          "So many times as fast as the capture was made, or max: as fast as it goes")
        ->check(CLI::Validator(
            [](std::string& text) {
                return speedOf(text) ? std::string()
                                     : fmt::format("'{}' is neither max nor a number from 0.001 to 1000000", text);
            },
            "SPEED"))
        ->default_str("1");
    command.add_flag("--loop", paced.isLooped, "Begin again at the end, until it is interrupted");
}

} // namespace qlproto
