// qlproto index: where the packets of a large capture stand, so that parts of it can be passed over.
#include <memory>

#include <fmt/format.h>

#include "Capture/Errors.h"
#include "Capture/Index.h"
#include "Capture/Reader.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/messages/MessageReader.h"
#include "tools/qlproto/terminal/Errors.h"

namespace qlproto {

namespace {

int makeIndex(const std::string& path) {
    Capture::Index index(path, thisTool.protocol);
    Capture::Reader capture(path, thisTool.protocol);
    MessageReader reader;
    Capture::Packet packet;
    uint64_t faults = 0, descriptions = 0;
    while (capture.next(packet)) {
        const bool isBad = capture.damage() != nullptr || packet.originalLength() != packet.bytes.size()
                           || !reader.verify(packet.bytes);
        faults += isBad ? 1 : 0;
        index.add(packet, isBad);
        if (index.packets() == 1) descriptions = capture.descriptions();
        if (capture.descriptions() != descriptions)
            throw Capture::DamagedCapture(path
                                          + ": tells of itself between packets, and can only be read from its start");
    }
    index.write();
    tell(fmt::format("{} in {}, {} bad", Capture::counted(index.packets(), "packet"),
                     Capture::counted(index.parts().size(), "part"), faults));
    return faults == 0 && capture.damage() == nullptr ? EXIT_FINE : EXIT_BAD_DATA;
}

} // namespace

void addIndex(CLI::App& app, Commands& commands) {
    const auto path = std::make_shared<std::string>();
    CLI::App* const command =
        app.add_subcommand("index", "Write where the packets of a large capture stand, for reading parts of it");
    command->add_option("capture", *path, "The capture, a file: plain, or compressed in frames")
        ->required()
        ->type_name(FILE_VALUE);
    addExamples(
        *command,
        "The index is a file beside the capture, CAPTURE.index. By it, commands that are asked for messages of some\n"
        "kind or time pass over all parts without them: what is bad there is counted, not told one by one. An index\n"
        "of a capture that has changed since is told and not used.",
        {"$tool index session.pcap"});
    commands.push_back({command, [path] { return makeIndex(*path); }});
}

} // namespace qlproto
