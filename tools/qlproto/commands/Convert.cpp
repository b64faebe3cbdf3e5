// qlproto convert: the packets of captures, whatever they hold, in another container.
#include <memory>

#include <fmt/format.h>

#include "Capture/Errors.h"
#include "Capture/MergedReader.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/commands/CaptureOutput.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/terminal/Errors.h"

namespace qlproto {

namespace {

struct ConvertOptions {
    std::string capture;
    CaptureOutput output;
};

int convert(const ConvertOptions& options) {
    Capture::Reader capture = openCapture(options.capture);
    Capture::CaptureWriter writer = options.output.open();
    uint64_t packets = 0, faults = 0;
    Capture::whileRead([&] {
        for (Capture::Packet packet;;) {
            if (!capture.isReady()) writer.flush();
            const bool isThere = capture.next(packet);
            if (const Capture::Damage* const damage = capture.damage()) {
                ++faults;
                tellFault(fmt::format("after packet {}: {}", packets, damage->text()));
            }
            if (!isThere) break;
            ++packets;
            writer.packet(packet);
        }
        writer.close();
    });
    tell(Capture::counted(packets, "packet"));
    return faults == 0 ? EXIT_FINE : EXIT_BAD_DATA;
}

} // namespace

void addConvert(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<ConvertOptions>();
    CLI::App* const command =
        app.add_subcommand("convert", "Write a capture in another container, compressed or not, or in several files");
    command->add_option("capture", options->capture, "The capture to read; - is standard input")
        ->required()
        ->type_name(FILE_VALUE);
    addCaptureOutput(*command, options->output);
    addExamples(*command,
                fmt::format("All packets are kept with their times and lengths, those with bad messages, too.\n{}",
                            ROTATION_REMARK),
                {"$tool convert session.pcap -o session.pcapng.zst",
                 "$tool convert session.pcapng.zst -o hourly.pcap --rotate-time 3600"});
    commands.push_back({command, [options] { return convert(*options); }});
}

} // namespace qlproto
