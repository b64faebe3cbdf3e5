// qlproto scrub: a capture that can be shown to others.
#include <charconv>
#include <fstream>
#include <limits>
#include <memory>
#include <random>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "Capture/Errors.h"
#include "Capture/Output.h"
#include "tools/qlproto/commands/CaptureOutput.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/messages/CaptureScan.h"
#include "tools/qlproto/messages/Names.h"
#include "tools/qlproto/messages/Scrubber.h"

namespace qlproto {

namespace {

constexpr int64_t SHIFT_UNIT = 1'000'000'000, END_OF_TIMES = (int64_t{1} << 32) * SHIFT_UNIT; // of captures

struct ScrubOptions {
    std::vector<std::string> captures;
    std::string key, report;
    CaptureOutput output;
    ScanOptions scan;
    ScrubRules rules;
    int64_t shift = 0; ///< seconds
};

/// What the file holds, or else a key that nobody will know.
std::string keyOf(const std::string& path) {
    if (path.empty()) {
        std::string key;
        for (std::random_device random; key.size() < 32;) key += static_cast<char>(random());
        return key;
    }
    std::ifstream file(path, std::ios::binary);
    std::string key(4096, '\0');
    file.read(key.data(), static_cast<std::streamsize>(key.size()));
    key.resize(static_cast<std::size_t>(file.gcount()));
    if (file.bad() || (key.empty() && !file.eof())) throw Capture::IoError(path + ": cannot be read");
    if (key.empty()) throw FilterError(path + " holds no key");
    return key;
}

CLI::Validator isFactor() {
    return {[](std::string& text) {
                double factor = 0;
                const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), factor);
                const bool isFine = error == std::errc() && end == text.data() + text.size() && factor > 0
                                    && factor <= std::numeric_limits<double>::max();
                return isFine ? "" : fmt::format("'{}' is no number above 0", text);
            },
            ""};
}

void writeReport(const std::string& path, const Scrubber& scrubber) {
    std::string lines;
    for (const auto& [what, values] : scrubber.done())
        lines += nlohmann::ordered_json{{"message", what.message},
                                        {"field", what.field},
                                        {"done", Scrubber::toText(what.deed)},
                                        {"values", values}}
                     .dump()
                 + '\n';
    Capture::writeText(lines, path);
}

/// "74,120 values pseudonyms, 12 emptied".
std::string summaryOf(const Scrubber& scrubber) {
    std::map<Scrubber::Deed, uint64_t> sums;
    for (const auto& [what, values] : scrubber.done()) sums[what.deed] += values;
    std::string text;
    for (const auto& [deed, values] : sums)
        text +=
            fmt::format("{}{} {}", text.empty() ? "" : ", ", Capture::counted(values, "value"), Scrubber::toText(deed));
    return text.empty() ? "nothing to scrub" : text;
}

int scrub(const ScrubOptions& options) {
    CaptureScan scan(options.scan);
    ScrubRules rules = options.rules;
    rules.shift = options.shift * SHIFT_UNIT;
    Scrubber scrubber(keyOf(options.key), rules);
    Capture::whileRead([&] {
        Capture::CaptureWriter writer = options.output.open();
        scan.run(options.captures, [&](const Capture::Packet& packet, const MessageReader& reader) {
            const Velmora::MsgType_t id = reader.descriptor().id();
            const std::string bytes = Capture::identifierBytes(id) + scrubber.body(id, reader.body());
            const int64_t time = packet.time + rules.shift;
            if (time < 0 || time >= END_OF_TIMES)
                return scan.complain(packet, "time", "a time that no capture holds, after the shift: left out");
            writer.packet({time, bytes});
        });
        writer.close();
    });
    if (!options.report.empty()) writeReport(options.report, scrubber);
    scan.summarize();
    tell(summaryOf(scrubber));
    return scan.exitCode();
}

} // namespace

void addScrub(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<ScrubOptions>();
    CLI::App* const command =
        app.add_subcommand("scrub", "Write a capture without names, secrets and texts, to be shared");
    addCaptures(*command, options->captures);
    addCaptureOutput(*command, options->output);
    command
        ->add_option("--key", options->key,
                     "A file whose bytes, up to 4096, are the key: under one key the same values have the same "
                     "pseudonyms in all captures. Without it the key is drawn at random and forgotten")
        ->type_name(FILE_VALUE);
    command->add_option("--keep", options->rules.kept, "Names of fields that stay as they are")
        ->check(isField())
        ->type_name(FIELD_VALUE);
    command->add_option("--scale", options->rules.scale, "Multiply prices and amounts, but none that stands for none")
        ->check(isFactor())
        ->type_name(NUMBER_VALUE);
    addNumber(*command, "--shift-times", options->shift, "Seconds to add to the times of packets and stations",
              -END_OF_TIMES / SHIFT_UNIT, END_OF_TIMES / SHIFT_UNIT);
    command->add_option("--report", options->report, "Write what was done to which fields, as lines of JSON")
        ->type_name(FILE_VALUE);
    addSelectionOptions(*command, options->scan);
    addExamples(
        *command,
        "Texts and identifiers become pseudonyms of the same length, digits for digits and letters for letters, so\n"
        "that orders are found and traced as before. Secrets are emptied. Enumerators, all other numbers and, unless\n"
        "they are scaled, prices and amounts stay. Bad packets are told and left out. Whoever has the key can find\n"
        "out what a pseudonym stands for.",
        {"$tool scrub session.pcap -o shared.pcap",
         "$tool scrub session.pcap -o shared.pcapng.zst --shift-times -86400 --report done.json"});
    commands.push_back({command, [options] { return scrub(*options); }});
}

} // namespace qlproto
