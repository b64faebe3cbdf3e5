// qlproto merge: captures of one stream as one, files that follow one another or taps that have seen the same. Packets stay as
// they are, those of networks, too: of what one tap has seen of a stream, the other's packets fill the gaps.
#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "Capture/Errors.h"
#include "Capture/MergedReader.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/analysis/TapMerge.h"
#include "tools/qlproto/analysis/TapOrder.h"
#include "tools/qlproto/commands/CaptureOutput.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/terminal/Errors.h"
#include "tools/qlproto/terminal/TimeText.h"

namespace qlproto {

namespace {

struct MergeOptions {
    std::vector<std::string> captures;
    CaptureOutput output;
    int64_t window = -1; ///< microseconds; negative: captures are no taps
    bool gaps = false;
};

std::string kindOfPackets(uint32_t linkType) {
    return linkType == Capture::LinkType::MESSAGE ? "messages" : fmt::format("a network, link type {}", linkType);
}

int merge(const MergeOptions& options) {
    const std::vector<std::string>& names = options.captures;
    for (const std::string& name : names) {
        const std::string difference = Capture::differenceOfDefinition(name, ownDefinition());
        if (!difference.empty()) tellFault(difference);
    }
    Capture::MergedReader captures(names, thisTool.protocol, Capture::Takes::networks);
    std::optional<Capture::CaptureWriter> writer; // once the packets are known
    uint32_t linkType = Capture::LinkType::MESSAGE;
    std::optional<TapMerge> taps;
    if (options.window >= 0)
        taps.emplace(names.size(), options.window * 1000, [&](const TapMerge::Gap& gap) {
            if (options.gaps)
                tell(fmt::format("{}: lacks {} from {} to {}", names[gap.tap], Capture::counted(gap.packets, "packet"),
                                 timeText(gap.from), timeText(gap.to)));
        });
    uint64_t packets = 0, faults = 0;
    int64_t latest = 0;
    const auto write = [&](const Capture::Packet& packet) {
        latest = std::max(latest, packet.time); // a capture's own order may be another
        if (taps && !taps->take({.time = latest, .bytes = packet.bytes, .linkType = linkType}, packet.capture)) return;
        ++packets;
        writer->packet(packet);
    };
    TapOrder order(names.size(), write);
    Capture::whileRead([&] {
        for (Capture::Packet packet;;) {
            const bool isThere = captures.next(packet);
            for (const Capture::Damage& damage : captures.faults()) {
                ++faults;
                tellFault(fmt::format("{}: {}", names[damage.capture], damage.text()));
            }
            if (!isThere) break;
            if (!writer) writer.emplace(options.output.open(linkType = packet.linkType));
            if (packet.linkType != linkType)
                throw Capture::DamagedCapture(
                    fmt::format("{}: packets of {} cannot follow those of {}; convert makes messages of either",
                                names[packet.capture], kindOfPackets(packet.linkType), kindOfPackets(linkType)));
            taps ? order.add(packet) : write(packet);
        }
        order.pass();
        if (!writer) writer.emplace(options.output.open());
        writer->close();
    });
    if (taps) {
        taps->finish();
        for (std::size_t i = 0; i < names.size(); ++i) {
            const TapMerge::Side& side = taps->sides()[i];
            tell(fmt::format("{}: {}, of which {} came from another, lacks {} in {}", names[i],
                             Capture::counted(side.packets, "packet"), side.duplicates, side.missing,
                             Capture::counted(side.gaps, "gap")));
        }
        if (taps->isOverfull()) tell("more came within a window than is held: some may stand there twice");
    }
    tell(fmt::format("{}{}", Capture::counted(packets, "packet"),
                     linkType == Capture::LinkType::MESSAGE ? "" : " of " + kindOfPackets(linkType)));
    return faults == 0 ? EXIT_FINE : EXIT_BAD_DATA;
}

} // namespace

void addMerge(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<MergeOptions>();
    CLI::App* const command = app.add_subcommand("merge", "Write captures as one, in the order of time");
    command->add_option("captures", options->captures, "The captures to read")
        ->required()
        ->expected(1, static_cast<int>(TapMerge::MOST_TAPS))
        ->type_name(FILE_VALUE);
    addCaptureOutput(*command, options->output);
    CLI::Option* const window =
        addNumber(*command, "--window", options->window,
                  "The captures are taps of one stream: packets of the same bytes in several of them are one, if their "
                  "times differ by so many microseconds at most",
                  0, 3'600'000'000);
    command->add_flag("--gaps", options->gaps, "Tell where each tap lacks what others have")->needs(window);
    addExamples(
        *command,
        fmt::format(
            "Of equal times, the capture named first comes first, but taps keep their own orders. A packet that comes\n"
            "from several taps has the time of the first that saw it. Packets of a network stay what they are; those\n"
            "that differ in frames or hops alone are one. Commands that take messages out of them (--framing) find\n"
            "what no single tap has seen whole.\n{}",
            ROTATION_REMARK),
        {"$tool merge session.pcap session.pcap -o twice.pcap",
         "$tool merge session.pcap session.pcap -o once.pcapng.zst --window 500 --gaps"});
    commands.push_back({command, [options] { return merge(*options); }});
}

} // namespace qlproto
