// Options whose values are more than a text: numbers and choices. What is no such value is a usage error, and never
// taken for another: numbers do not saturate or wrap, and nothing may be left over.
//
// The type that an option is given says what its value can be: help and manual show it, completions offer what it
// stands for (CommandTree.h).
#pragma once

#include <algorithm>
#include <charconv>
#include <concepts>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "Inspect/Verify.h"

namespace qlproto {

// Types of values besides choices, which show as {a,b}.
inline constexpr const char* FILE_VALUE = "FILE";
inline constexpr const char* FOLDER_VALUE = "FOLDER";
inline constexpr const char* MESSAGE_VALUE = "MESSAGE"; ///< a message by name or identifier
inline constexpr const char* TYPE_VALUE = "TYPE";       ///< a message or a record
inline constexpr const char* ENUMERATION_VALUE = "ENUMERATION";
inline constexpr const char* FIELD_VALUE = "FIELD";         ///< a name or a path of a field
inline constexpr const char* CONDITION_VALUE = "CONDITION"; ///< begins with one
inline constexpr const char* NUMBER_VALUE = "N";

/// The number that the whole text is: decimal, or hexadecimal digits after "0x". Nothing if it is none or does not fit.
template <std::integral T>
std::optional<T> numberIn(std::string_view text) {
    const bool isHex = text.starts_with("0x") || text.starts_with("0X");
    if (isHex) text.remove_prefix(2);
    if (isHex && text.starts_with('-')) return std::nullopt; // from_chars() would take it
    T number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, isHex ? 16 : 10);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

/// For options that take a number from `least` to `most`. To be added by transform(): the parser's own conversion then
/// sees decimal digits only, which it takes for what they are.
template <std::integral T>
CLI::Validator isNumberFrom(T least, T most) {
    return {[least, most](std::string& text) {
                const std::optional<T> number = numberIn<T>(text);
                if (!number || *number < least || *number > most)
                    return fmt::format("'{}' is no number from {} to {}", text, least, most);
                text = std::to_string(*number);
                return std::string();
            },
            ""};
}

/// Adds such an option.
template <std::integral T>
CLI::Option* addNumber(CLI::App& command, const std::string& name, T& number, const std::string& description,
                       std::type_identity_t<T> least = 0,
                       std::type_identity_t<T> most = std::numeric_limits<T>::max()) {
    return command.add_option(name, number, description)
        ->transform(isNumberFrom<T>(least, most))
        ->type_name(NUMBER_VALUE);
}

/// Adds an option that takes one of several names, and sets the value to the first of them.
template <class T>
CLI::Option* addChoice(CLI::App& command, const std::string& name, T& value,
                       const std::vector<std::pair<std::string, T>>& choices, const std::string& description) {
    std::vector<std::string> names;
    for (const auto& choice : choices) names.push_back(choice.first);
    value = choices.front().second;
    const auto choose = [&value, choices](const std::string& text) {
        value = std::find_if(choices.begin(), choices.end(), [&](const auto& it) { return it.first == text; })->second;
    };
    return command.add_option_function<std::string>(name, choose, description)
        ->check(CLI::IsMember(names))
        ->default_str(names.front());
}

enum class TableForm { table, csv, json };

/// Adds --format, and --csv and --json for short.
inline void addTableForm(CLI::App& command, TableForm& form) {
    CLI::Option* const all = addChoice(
        command, "--format", form, {{"table", TableForm::table}, {"csv", TableForm::csv}, {"json", TableForm::json}},
        "A table for people; or CSV or JSON for programs, with durations in nanoseconds");
    CLI::Option* const csv = command.add_flag_callback(
        "--csv", [&form] { form = TableForm::csv; }, "The same as --format csv");
    command
        .add_flag_callback(
            "--json", [&form] { form = TableForm::json; }, "The same as --format json")
        ->excludes(all)
        ->excludes(csv);
    csv->excludes(all);
}

/// Adds --policy: which bodies are sound.
inline void addPolicy(CLI::App& command, Inspect::Policy& policy) {
    addChoice(command, "--policy", policy,
              {{"whole", Inspect::whole},
               {"strict", Inspect::strict},
               {"tolerant", Inspect::tolerant},
               {"rolling", Inspect::rolling}},
              "Bodies to take: strict: as our own writer writes them; whole: all that can be read and end where their "
              "packets do; tolerant: also with bytes left over; rolling: also of older definitions, where fields at "
              "the end are missing and read as zero");
}

/// Adds --price-scale: a power of ten.
inline void addPriceScale(CLI::App& command, int64_t& scale, const std::string& description) {
    addNumber(command, "--price-scale", scale, description, 1)->check([](const std::string& text) {
        const bool isPower = text.starts_with('1') && text.find_first_not_of('0', 1) == text.npos;
        return isPower ? "" : text + " is no power of ten";
    });
}

inline constexpr const char* BUS_REMARK = "A bus is mem:NAME, shared memory of this machine (mem:/PATH or mem:./PATH: "
                                          "a file), or nats://HOST:PORT, a stream of a\n"
                                          "NATS server, if the program is built with it.";

/// Adds --bus.
inline void addBus(CLI::App& command, std::string& url) {
    command.add_option("--bus", url, "The URL of the bus")->required()->type_name("URL");
}

/// For texts that mean something only if they are there.
inline CLI::Validator isNotEmpty() {
    return {[](std::string& text) { return text.empty() ? "nothing is given" : ""; }, ""};
}

} // namespace qlproto
