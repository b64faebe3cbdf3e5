// qlproto convert: the messages of captures, whatever they hold, in another container, or as packets of a network.
#include <memory>
#include <optional>
#include <utility>

#include <fmt/format.h>

#include "Capture/Errors.h"
#include "Capture/NetworkWriter.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/commands/CaptureOutput.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/messages/CaptureScan.h"
#include "tools/qlproto/messages/FieldPath.h"
#include "tools/qlproto/terminal/Errors.h"

namespace qlproto {

namespace {

struct ConvertOptions {
    std::vector<std::string> captures;
    NetworkChoice network;
    std::optional<Capture::Transport> over; ///< none: messages as they are
    std::size_t connections = 1;
    CaptureOutput output;
};

/// Copies all messages to the sink; tells what is wrong and returns how often.
uint64_t copy(const ConvertOptions& options, Capture::MessageSource& source, Capture::CaptureWriter& writer,
              Capture::PacketSink& sink, uint64_t& packets) {
    uint64_t faults = 0;
    const auto complain = [&](const std::string& text) {
        ++faults;
        tellFault(fmt::format("after packet {}: {}", packets, text));
    };
    for (Capture::Packet packet;;) {
        if (!source.isReady()) writer.flush();
        const bool isThere = source.next(packet);
        for (const Capture::Damage& fault : source.faults()) complain(faultText(fault, options.captures));
        if (!isThere) return faults;
        ++packets;
        if (options.over && packet.originalLength() != packet.bytes.size())
            complain("left out: " + cutText(packet, packet.originalLength()));
        else
            sink.packet(packet);
    }
}

int convert(const ConvertOptions& options) {
    const auto source = openCaptures(options.captures, options.network);
    Capture::CaptureWriter writer =
        options.output.open(options.over ? Capture::LinkType::ETHERNET : Capture::LinkType::MESSAGE);
    uint64_t packets = 0, faults = 0;
    try {
        Capture::whileRead([&] {
            if (options.over) {
                Capture::NetworkWriter network(writer, *options.over, options.network.read(), options.connections);
                faults = copy(options, *source, writer, network, packets);
                network.close();
            } else {
                faults = copy(options, *source, writer, writer, packets);
            }
            writer.close();
        });
    } catch (const Capture::FramingError& error) {
        throw FilterError(fmt::format("--framing: {}", error.what()));
    }
    tell(Capture::counted(packets, "packet"));
    return faults == 0 ? EXIT_FINE : EXIT_BAD_DATA;
}

} // namespace

void addConvert(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<ConvertOptions>();
    CLI::App* const command = app.add_subcommand(
        "convert", "Write captures in another container, compressed or not, in several files, or over a network");
    addCaptures(*command, options->captures);
    addNetworkChoice(*command, options->network);
    CLI::Option* const over =
        command
            ->add_option_function<std::string>(
                "--over",
                [options](const std::string& text) {
                    options->over = text == "tcp" ? Capture::Transport::tcp : Capture::Transport::udp;
                },
                "Write packets of a network: messages as the framing has them, in TCP streams or UDP datagrams")
            ->check(CLI::IsMember({"tcp", "udp"}))
            ->needs(command->get_option("--framing"));
    addNumber(*command, "--connections", options->connections,
              "Of so many connections; the message's identifier tells which", 1, 1000)
        ->needs(over);
    addCaptureOutput(*command, options->output);
    addExamples(
        *command,
        fmt::format("All packets are kept with their times and lengths, those with bad messages, too. Of packets of "
                    "a network the\nmessages are kept, unless --over sends them on.\n{}",
                    ROTATION_REMARK),
        {"$tool convert session.pcap -o session.pcapng.zst",
         "$tool convert session.pcapng.zst -o hourly.pcap --rotate-time 3600",
         "$tool convert session.pcap -o net.pcap --over tcp --framing frames --connections 4",
         "$tool convert net.pcap --framing frames -o messages.pcap"});
    commands.push_back({command, [options] { return convert(*options); }});
}

} // namespace qlproto
