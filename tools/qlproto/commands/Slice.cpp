// qlproto slice: the messages of a capture that are chosen, as a capture again.
#include <memory>

#include "Capture/Errors.h"
#include "tools/qlproto/commands/CaptureOutput.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/messages/CaptureScan.h"

namespace qlproto {

namespace {

struct SliceOptions {
    std::vector<std::string> captures;
    CaptureOutput output;
    ScanOptions scan;
};

int slice(const SliceOptions& options) {
    CaptureScan scan(options.scan);
    scan.onlyVerify();
    Capture::whileRead([&] {
        Capture::CaptureWriter writer = options.output.open();
        scan.run(options.captures, [&](const Capture::Packet& packet, const MessageReader&) { writer.packet(packet); });
        writer.close();
    });
    scan.summarize();
    return scan.exitCode();
}

} // namespace

void addSlice(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<SliceOptions>();
    CLI::App* const command = app.add_subcommand("slice", "Write chosen messages of a capture as a capture");
    addCaptures(*command, options->captures);
    addCaptureOutput(*command, options->output);
    addSelectionOptions(*command, options->scan);
    addExamples(*command, fmt::format("Bad packets are told and left out.\n{}", ROTATION_REMARK),
                {"$tool slice session.pcap -o few.pcap --first 100",
                 "$tool slice session.pcap -o some.pcapng.zst --message $message"});
    commands.push_back({command, [options] { return slice(*options); }});
}

} // namespace qlproto
