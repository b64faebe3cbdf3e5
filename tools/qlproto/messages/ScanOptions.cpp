#include "tools/qlproto/messages/ScanOptions.h"

#include <algorithm>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "tools/qlproto/Tool.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/messages/Names.h"

namespace qlproto {

namespace {

void addWhich(CLI::App& command, ScanOptions& options) {
    command.add_option("--message", options.names, "Only messages of this name; * and ? stand for any characters")
        ->type_name(MESSAGE_VALUE);
    if (!thisTool.families.empty()) {
        std::vector<std::string> names;
        for (const Family& family : thisTool.families)
            if (std::find(names.begin(), names.end(), family.name) == names.end()) names.emplace_back(family.name);
        command.add_option("--family", options.families, "Only messages of this family")
            ->check(CLI::IsMember(names))
            ->allow_extra_args(false);
    }
    command.add_option("--id", options.ids, "Only messages of this identifier, decimal or 0x...")
        ->check(isIdentifier());
    command
        .add_option("--where", options.where,
                    "Only messages with such a value: FIELD=VALUE, also !=, <, <=, >, >=; FIELD~TEXT for texts that "
                    "contain it or, with * or ?, are of that pattern, !~ for others. FIELD is a name or a path with "
                    "dots, VALUE a number, a name, a text, or a date where the field is a station's time")
        ->type_name(CONDITION_VALUE);
    const CLI::Validator isTime(
        [](std::string& text) {
            if (parseTime(text) || parseClock(text)) return std::string();
            return fmt::format("'{}' is not a time; write 12:00, 2024-03-04T07:00:00.5 or 1709535600.5", text);
        },
        "TIME");
    command
        .add_option("--from", options.from,
                    "Only from this time on: a date, seconds since 1970, or a time of the day on which the capture "
                    "begins; of the zone of --time, or UTC")
        ->check(isTime);
    command.add_option("--to", options.to, "Only up to this time")->check(isTime);
    // Each takes one value, so that what follows is not taken for another one.
    for (const char* name : {"--message", "--id", "--where"}) command.get_option(name)->allow_extra_args(false);
    addNumber(command, "-n,--first", options.first, "Only so many messages, the first of those taken");
}

void addHow(CLI::App& command, ScanOptions& options) {
    const auto choose = [&options](const std::string& text) {
        options.time = text == "raw" ? TimeForm::raw : text == "utc" ? TimeForm::utc : TimeForm::zone;
        if (text != "raw")
            options.display.showTime =
                text == "utc" ? [](int64_t time, std::string& to) { appendTime(time, TimeForm::utc, to); }
                              : [](int64_t time, std::string& to) { appendTime(time, TimeForm::zone, to); };
    };
    command
        .add_option_function<std::string>("--time", choose,
                                          "How times are shown, those of stations in messages, too: raw (seconds since "
                                          "1970), utc, local, or a zone as in Europe/Zurich")
        ->check(CLI::Validator(
            [](std::string& text) {
                if (text == "raw" || text == "utc" || text == "local" || takeZone(text)) return std::string();
                return fmt::format("'{}' is neither raw, utc, local nor a zone of this system", text);
            },
            "FORM"))
        ->default_str("raw");
    addPriceScale(
        command, options.display.priceScale,
        "Divide prices and amounts by this power of ten; the protocol fixes no scale. Conditions of --where are "
        "on what is shown");
}

} // namespace

void addTelling(CLI::App& command, ScanOptions& options) {
    const auto choose = [&options](const std::string& text) {
        options.faults = text == "all" ? UINT64_MAX : numberIn<uint64_t>(text).value();
    };
    command
        .add_option_function<std::string>(
            "--faults", choose, "Tell of so many faults one by one, or of all; their kinds are counted in any case")
        ->check(CLI::Validator(
            [](std::string& text) {
                if (text == "all" || numberIn<uint64_t>(text)) return std::string();
                return fmt::format("'{}' is neither a number nor all", text);
            },
            "N"))
        ->default_str(std::to_string(options.faults));
    CLI::Option* const quiet =
        command.add_flag("--quiet", options.isQuiet, "Tell nothing on standard error; the exit status tells of faults");
    command
        .add_flag("--verbose", options.isVerbose,
                  "Tell how much was read and how fast, as on a terminal, wherever standard error goes")
        ->excludes(quiet);
}

void addSelectionOptions(CLI::App& command, ScanOptions& options) {
    addPolicy(command, options.policy);
    addWhich(command, options);
    addHow(command, options);
    addNetworkChoice(command, options.network);
    addTelling(command, options);
}

void addScanOptions(CLI::App& command, ScanOptions& options) {
    addSelectionOptions(command, options);
    command.add_flag_callback(
        "--redact", [&options] { options.display.secrets = Inspect::Secrets::hide; },
        "Hide passwords and other secrets");
}

} // namespace qlproto
