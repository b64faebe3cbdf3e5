// Two kinds of message lose something by contract and are counted on their own.
//
// A pad, a message that is nothing but padding, is written with a length of two bytes and read with one of variable
// length. With fewer than 128 bytes of padding the reader takes the length's high byte for the first byte of the text and
// leaves the last byte out. The bytes written again are as many, but shifted by one from the third on; they agree only by
// chance, as for an empty pad. Longer pads come back shorter.
//
// An enumerator above 255 travels as its low byte and reads back as that. The value is lost, but the low byte travels as
// itself again: the bytes agree, and have to.
#include <algorithm>
#include <map>
#include <memory>

#include <fmt/format.h>

#include "Capture/Errors.h"
#include "Capture/Output.h"
#include "Capture/Verification.h"
#include "Inspect/Reflection.h"
#include "tools/qlproto/Tool.h"
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

/// The name of a field of the type, or of a record in it, with an enumerator that does not fit its byte; empty if there
/// is none.
std::string_view cutField(const Inspect::TypeInfo& type) {
    for (const Inspect::FieldInfo& field : type.fields) {
        const Inspect::ValueInfo& value = field.value.element != nullptr ? *field.value.element : field.value;
        const auto isCut = [](const Inspect::EnumeratorInfo& it) { return it.value > UINT8_MAX; };
        if (value.enumeration != nullptr && std::ranges::any_of(value.enumeration->enumerators, isCut))
            return field.name;
        if (value.record == nullptr) continue;
        if (const std::string_view name = cutField(*value.record); !name.empty()) return name;
    }
    return {};
}

int roundtrip(const std::vector<std::string>& captures, const ScanOptions& options) {
    struct Count {
        uint64_t all = 0, changed = 0;
    };
    std::map<Velmora::MsgType_t, Count> counts;
    uint64_t identical = 0, different = 0;
    MessageWriter writer;
    CaptureScan scan(options);
    scan.run(captures, [&](const Capture::Packet& packet, const MessageReader& reader) {
        const std::string_view again = writer.write(reader);
        const bool same = again == reader.body();
        const Velmora::MsgType_t id = reader.descriptor().id();
        Count& count = counts[id];
        ++count.all;
        count.changed += !same;
        if (Capture::isPad(thisTool.protocol, id)) return;
        ++(same ? identical : different);
        if (!same)
            scan.complain(packet, "other bytes",
                          fmt::format("{}: {}", reader.descriptor().name(), difference(reader.body(), again)));
    });

    std::string pads, cut;
    for (const auto& [id, type] : Inspect::all_messages(thisTool.protocol)) {
        if (Capture::isPad(thisTool.protocol, id))
            pads += fmt::format("lossy by contract: {} {}, {} of them with other bytes\n", type->name, counts[id].all,
                                counts[id].changed);
        if (const std::string_view field = cutField(*type); !field.empty())
            cut +=
                fmt::format("lossy by contract: {} {}, their {} reads back as its low byte; their bytes are identical "
                            "and counted above\n",
                            type->name, counts[id].all, field);
    }
    Capture::writeText(fmt::format("identical {}\ndifferent {}\n{}{}", identical, different, pads, cut));
    scan.summarize();
    return scan.exitCode();
}

} // namespace

void addRoundTrip(CLI::App& app, Commands& commands) {
    const auto captures = std::make_shared<std::vector<std::string>>();
    CLI::App* const command = app.add_subcommand("roundtrip", "Decode, encode again and compare every message");
    addCaptures(*command, *captures);
    const auto options = std::make_shared<ScanOptions>();
    addNetworkChoice(*command, options->network);
    addTelling(*command, *options);
    addExamples(*command, "", {"$tool roundtrip session.pcap"});
    commands.push_back({command, [captures, options] { return roundtrip(*captures, *options); }});
}

} // namespace qlproto
