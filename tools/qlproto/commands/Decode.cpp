#include <memory>

#include <unistd.h>

#include "generated/QLProtocol/AsciiWriter.h"
#include "generated/QLProtocol/MsgHandler.h"
#include "tools/qlproto/CaptureScan.h"
#include "tools/qlproto/Output.h"
#include "tools/qlproto/commands/Commands.h"

namespace qlproto {

namespace {

/// Renders messages as lines of text. The text stream does not check its room, so it has enough for the longest packet:
/// no byte of a sound body becomes more than 64 characters, field name included.
class LinePrinter {
  public:
    explicit LinePrinter(Output& output) : _output(output), _room(std::make_unique_for_overwrite<char[]>(ROOM)) {}

    void print(const Packet& packet, const MessageReader& reader) {
        Quillon::FastOStream os(_room.get(), _room.get() + ROOM);
        printTime(os, packet.time);
        os << ' ' << reader.descriptor().name() << ' ';
        Velmora::TextCodec<Quillon::FastOStream> codec(os);
        Quillon::AsciiWriter writer(codec, false, 0);
        Quillon::dispatch(reader.descriptor().id(), reader.message(), writer);
        _output.appendVisible({os.begin(), os.size()});
        _output.append("\n");
    }

  private:
    static constexpr std::size_t ROOM = 64 * MAX_PACKET + 4096;

    /// As the capture has it, which fixes no calendar: seconds, point, nine digits.
    static void printTime(Quillon::FastOStream& os, int64_t time) {
        constexpr int64_t second = 1'000'000'000;
        const int64_t nanoseconds = time % second;
        os << time / second << '.';
        for (int64_t power = second / 10; power > nanoseconds && power > 1; power /= 10) os << '0';
        os << nanoseconds;
    }

    Output& _output;
    std::unique_ptr<char[]> _room;
};

int decode(const std::string& capture) {
    Output output(STDOUT_FILENO);
    LinePrinter printer(output);
    CaptureScan scan;
    scan.run(capture, [&](const Packet& packet, const MessageReader& reader) { printer.print(packet, reader); });
    output.flush();
    scan.summarize();
    return scan.exitCode();
}

} // namespace

void addDecode(CLI::App& app, Commands& commands) {
    const auto capture = std::make_shared<std::string>();
    CLI::App* const command = app.add_subcommand("decode", "Print messages, one a line: time, name, fields");
    command->add_option("capture", *capture, "The capture to read; - is standard input")->required();
    command->footer("Example:\n  qlproto decode session.pcap | grep ' SubmitOrderMessage '");
    commands.push_back({command, [capture] { return decode(*capture); }});
}

} // namespace qlproto
