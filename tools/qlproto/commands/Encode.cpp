// qlproto encode: lines of JSON to packets.
#include <memory>

#include <fmt/format.h>

#include "Capture/Errors.h"
#include "Capture/Output.h"
#include "Capture/Writer.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/messages/Hex.h"
#include "tools/qlproto/messages/LineReader.h"
#include "tools/qlproto/messages/MessageLine.h"
#include "tools/qlproto/messages/OpenCapture.h"
#include "tools/qlproto/terminal/Errors.h"

namespace qlproto {

namespace {

struct EncodeOptions {
    std::string input;
    std::string output = "-";
    std::string format = "capture";
    Inspect::Policy policy;
    bool isPartial = false;
};

/// Packets as lines of hexadecimal digits, identifier first, or their bodies one after the other as they are.
class BytesWriter : public Capture::PacketSink {
  public:
    BytesWriter(const std::string& path, bool isHex) : _output(path), _isHex(isHex) {}

    void packet(const Capture::Packet& packet) override {
        if (_isHex)
            _output.append(hexFromBytes(packet.bytes) + '\n');
        else
            _output.append(packet.bytes.substr(Capture::IDENTIFIER_SIZE));
    }
    void close() { _output.close(); }

  private:
    Capture::Output _output;
    bool _isHex;
};

/// Every line that is good goes to the writer; of the others standard error tells.
int encodeLines(LineReader& lines, const EncodeOptions& options, auto&& writer) {
    MessageLineReader reader(options.policy, options.isPartial);
    uint64_t bad = 0;
    Capture::whileRead([&] {
        for (std::string_view line; lines.next(line);) {
            if (line.find_first_not_of(" \t\r") == line.npos) continue;
            const auto tellOf = [&](const std::string& what) {
                tell(fmt::format("line {}: {}", lines.number(), what));
            };
            if (lines.isCut()) {
                tellOf(fmt::format("longer than {} bytes", LONGEST_LINE));
                ++bad;
                continue;
            }
            Capture::Packet packet;
            try {
                packet = reader.read(line);
            } catch (const Inspect::JsonError&) {
                for (const Inspect::JsonError& error : reader.errors()) tellOf(error.what());
                if (reader.errors().size() == reader.MOST_ERRORS) tellOf("no more errors are looked for");
                ++bad;
                continue;
            }
            writer.packet(packet);
        }
        writer.close();
    });
    if (bad != 0) tell(fmt::format("{} of {} bad", bad, Capture::counted(lines.number(), "line")));
    return bad == 0 ? EXIT_FINE : EXIT_BAD_DATA;
}

int encode(const EncodeOptions& options) {
    LineReader lines(options.input, LONGEST_LINE);
    if (options.format == "capture")
        return encodeLines(lines, options, Capture::Writer(options.output, ownDefinition()));
    return encodeLines(lines, options, BytesWriter(options.output, options.format == "hex"));
}

} // namespace

void addEncode(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<EncodeOptions>();
    CLI::App* const command = app.add_subcommand("encode", "Make packets of messages in JSON, one a line");
    command->add_option("input", options->input, "The lines, as decode --format json prints them; - is standard input")
        ->required()
        ->type_name(FILE_VALUE);
    command->add_option("-o,--output", options->output, "The file to write; - is standard output")
        ->capture_default_str()
        ->type_name(FILE_VALUE);
    command
        ->add_option("--format", options->format,
                     "capture; hex: a line of digits for each packet, identifier first, low byte first; raw: the "
                     "bodies alone, one after the other")
        ->check(CLI::IsMember({"capture", "hex", "raw"}))
        ->capture_default_str();
    addPolicy(*command, options->policy);
    command->add_flag("--partial", options->isPartial, "Fields may be missing: they are zero, texts never stored");
    addExamples(
        *command,
        "A line: {\"time\": \"1709535600.000000042\", \"message\": \"$message\", \"id\": $id, \"body\": $body}\n"
        "id and time may be left out. Bad lines are left out; all that is wrong with them is told, with its path, up "
        "to 20\n"
        "errors a line.\n\n"
        "Lines in JSON from this tool come out as the packets they were made of, byte for byte:\n"
        "where a body has another form than the encoder's, as pads do, the line has its bytes as hex, which must mean\n"
        "the same as body by the policy. Who alters such a body takes hex out. Of lines made with --redact or "
        "--price-scale no "
        "packet\n"
        "can be made; they say so and are refused. The bad packets of a capture are in no line.",
        {"$tool decode --format json session.pcap | $tool encode - -o same.pcap",
         "$tool template $message | $tool encode - -o zeros.pcap",
         "$tool encode --partial --format hex - <<<'{\"message\": \"$message\"}'",
         "$tool encode - -o one.pcap <<<'{\"message\": \"$message\", \"body\": $body}'",
         "$tool encode --format hex - <<<'{\"message\": \"$message\", \"body\": $body}'"});
    commands.push_back({command, [options] { return encode(*options); }});
}

} // namespace qlproto
