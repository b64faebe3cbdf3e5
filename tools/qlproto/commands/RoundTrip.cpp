// Two kinds of message lose something by contract and are counted on their own.
//
// PadMessage is written with a length of two bytes and read with one of variable length. With fewer than 128 bytes of
// padding the reader takes the length's high byte for the first byte of the text and leaves the last byte out. The
// bytes written again are as many, but shifted by one from the third on; they agree only by chance, as for an empty
// pad. Longer pads come back shorter.
//
// RequestMessage's request is 53327 and travels as its low byte, 79, which reads back as 79. The value is lost, but 79
// travels as 79 again: the bytes agree, and have to.
#include <memory>

#include <fmt/format.h>

#include "Capture/Errors.h"
#include "Capture/Output.h"
#include "Capture/Verification.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/messages/CaptureScan.h"

namespace qlproto {

namespace {

/// Encodes messages. A price can be one byte on the wire of a peer and ten on ours; nothing grows more than that.
class MessageWriter {
  public:
    std::string_view write(const MessageReader& reader) {
        Velmora::FastCodec codec(_room.get(), _room.get() + ROOM);
        reader.descriptor().write(reader.message(), codec);
        return {_room.get(), codec.size()};
    }

  private:
    static constexpr std::size_t ROOM = 10 * Capture::MAX_PACKET;
    std::unique_ptr<char[]> _room = std::make_unique_for_overwrite<char[]>(ROOM);
};

std::string difference(std::string_view body, std::string_view again) {
    std::size_t at = 0;
    while (at < body.size() && at < again.size() && body[at] == again[at]) ++at;
    return fmt::format("encodes to {} instead of {}, different from offset {} of the body on",
                       Capture::counted(again.size(), "byte"), body.size(), at);
}

int roundtrip(const std::string& capture) {
    uint64_t identical = 0, different = 0, pads = 0, padsChanged = 0, requests = 0;
    MessageWriter writer;
    CaptureScan scan;
    scan.run(capture, [&](const Capture::Packet&, const MessageReader& reader) {
        const std::string_view again = writer.write(reader);
        const bool same = again == reader.body();
        const Velmora::MsgType_t id = reader.descriptor().id();
        if (id == Quillon::RequestMessage::ID) ++requests;
        if (Capture::isPad(id)) {
            ++pads;
            if (!same) ++padsChanged;
        } else if (same) {
            ++identical;
        } else {
            ++different;
            scan.complain(fmt::format("{}: {}", reader.descriptor().name(), difference(reader.body(), again)));
        }
    });

    Capture::writeText(
        fmt::format("identical {}\n"
                    "different {}\n"
                    "lossy by contract: PadMessage {}, {} of them with other bytes\n"
                    "lossy by contract: RequestMessage {}, their request reads back as its low byte; their bytes are "
                    "identical and counted above\n",
                    identical, different, pads, padsChanged, requests));
    scan.summarize();
    return scan.exitCode();
}

} // namespace

void addRoundTrip(CLI::App& app, Commands& commands) {
    const auto capture = std::make_shared<std::string>();
    CLI::App* const command = app.add_subcommand("roundtrip", "Decode, encode again and compare every message");
    command->add_option("capture", *capture, "The capture to read; - is standard input")
        ->required()
        ->type_name(FILE_VALUE);
    command->footer("Example:\n  qlproto roundtrip session.pcap");
    commands.push_back({command, [capture] { return roundtrip(*capture); }});
}

} // namespace qlproto
