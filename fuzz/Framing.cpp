// Any text as a framing, and any bytes as a stream of it: what is a framing says so of itself, and the messages are the same
// however the stream is cut.
//
// An input: the length of the framing in one byte, the framing, the stream. A framing of less than two bytes is a preset.
#include "fuzz/Input.h"

#include <string>
#include <vector>

#include "Capture/Deframer.h"

namespace {

/// Cut into pieces of that size. To look for framings that would fit takes longer than all else, and is no matter of pieces.
std::vector<std::string> messagesOf(const Capture::Framing& framing, std::string_view stream, size_t piece) {
    Capture::Faults faults;
    Capture::DeframerContext context{framing, Inspect::default_protocol(), faults, piece == SIZE_MAX ? 1 : 0};
    Capture::Deframer deframer;
    const Capture::Connection connection;
    std::vector<std::string> messages;
    const auto drain = [&] {
        for (Capture::Packet it; deframer.next(context, connection, it);) messages.emplace_back(it.bytes);
    };
    for (; !stream.empty(); stream.remove_prefix(std::min(piece, stream.size()))) {
        deframer.take(stream.substr(0, piece), {});
        drain();
    }
    deframer.end();
    drain();
    deframer.close(context, connection);
    for (const Capture::Damage& it : faults.all()) FUZZ_CHECK(!it.text().empty());
    return messages;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    initializeOnce();
    std::string_view input(reinterpret_cast<const char*>(data), size);
    if (input.empty()) return 0;
    std::string_view text = input.substr(1, data[0]), stream = input.substr(1 + text.size());
    if (text.size() < 2) text = "frames";
    try {
        const Capture::Framing framing = Capture::Framing::of(text);
        const std::string again = framing.text();
        FUZZ_CHECK(Capture::Framing::of(again).text() == again);
        if (framing.fitsStreams()) {
            const std::vector<std::string> messages = messagesOf(framing, stream, SIZE_MAX);
            for (const size_t piece : {1u, 7u}) FUZZ_CHECK(messagesOf(framing, stream, piece) == messages);
        }
        Capture::Faults faults;
        Capture::DeframerContext context{framing, Inspect::default_protocol(), faults, 0};
        Capture::Deframer deframer;
        for (const size_t missing : {0u, 1u, 1000u}) {
            deframer.takeDatagram(stream, missing, {});
            for (Capture::Packet it; deframer.next(context, {}, it);) FUZZ_CHECK(it.bytes.size() <= it.original);
        }
    } catch (const Capture::FramingError&) { // most texts are none
    }
    return 0;
}
