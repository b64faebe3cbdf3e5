// qlproto decode: messages as text or JSON, from captures or from bytes alone.
#include <memory>

#include <unistd.h>

#include "Capture/ByteWindow.h"
#include "Capture/Errors.h"
#include "Capture/Output.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/messages/CaptureScan.h"
#include "tools/qlproto/messages/Filter.h"
#include "tools/qlproto/messages/Hex.h"
#include "tools/qlproto/messages/LineReader.h"
#include "tools/qlproto/messages/Names.h"
#include "tools/qlproto/messages/Rendering.h"
#include "tools/qlproto/terminal/Terminal.h"

namespace qlproto {

namespace {

struct DecodeOptions {
    std::vector<std::string> inputs;
    bool isHex = false;
    bool isRaw = false;
    std::string type; ///< of bodies without identifier
    ScanOptions scan;
    Rendering::Options rendering;
};

int decodeCapture(const DecodeOptions& options) {
    Capture::Output output;
    struct Handle {
        std::unique_ptr<Rendering> rendering;
        void operator()(const Capture::Packet& packet, const MessageReader& reader, std::string& text) const {
            rendering->append(packet, reader, text);
        }
    };
    std::vector<Handle> handles;
    for (std::size_t i = 0; i < CaptureScan::workers(); ++i)
        handles.push_back({std::make_unique<Rendering>(options.rendering)});

    CaptureScan scan(options.scan);
    const bool isRead = Capture::whileRead([&] {
        if (options.rendering.format == Format::csv) output.append(handles.front().rendering->header());
        scan.runParallel(
            options.inputs, handles, [&](std::string_view text) { output.append(text); }, [&] { output.flush(); });
        output.close();
    });
    if (isRead) scan.summarize();
    return scan.exitCode();
}

/// Bytes that come without a capture: packets, or bodies of a type that is known.
class Bytes {
  public:
    explicit Bytes(const DecodeOptions& options)
        : _filter(options.scan),
          _left(options.scan.first),
          _reader(options.scan.policy),
          _rendering(withoutTime(options.rendering)) {
        if (options.type.empty()) return;
        _identifier = Capture::identifierBytes(findMessage(options.type)->id);
    }

    void decode(const std::string& where, std::string_view bytes) {
        const std::string packet = _identifier + std::string(bytes);
        if (!_reader.read(packet)) return complain(where, _reader.fault());
        if (_left == 0 || !_filter.takes({.bytes = packet})) return;
        --_left;
        _text.clear();
        _rendering.append({}, _reader, _text);
        _output.append(_text);
    }

    void complain(const std::string& where, const std::string& fault) {
        tellFault(fmt::format("{}: {}", where, fault));
        _exitCode = EXIT_BAD_DATA;
    }

    void begin(Format format) {
        if (format == Format::csv) _output.append(_rendering.header());
    }
    void finish() { _output.close(); }
    int exitCode() const { return _exitCode; }

  private:
    static Rendering::Options withoutTime(Rendering::Options options) {
        options.hasTime = false;
        return options;
    }

    const Filter _filter;
    uint64_t _left;
    std::string _identifier;
    MessageReader _reader;
    Rendering _rendering;
    Capture::Output _output;
    std::string _text;
    int _exitCode = EXIT_FINE;
};

int decodeRaw(const DecodeOptions& options) {
    Capture::ByteWindow input(options.inputs.front());
    Bytes bytes(options);
    Capture::whileRead([&] {
        bytes.begin(options.rendering.format);
        bytes.decode(input.name(), input.peek(Capture::MAX_PACKET + 1));
        bytes.finish();
    });
    return bytes.exitCode();
}

int decodeHex(const DecodeOptions& options) {
    LineReader lines(options.inputs.front(), LONGEST_HEX);
    Bytes bytes(options);
    Capture::whileRead([&] {
        bytes.begin(options.rendering.format);
        for (std::string_view line; lines.next(line);) {
            const std::string where = fmt::format("{}:{}", lines.name(), lines.number());
            if (line.find_first_not_of(" \t\r") == line.npos) continue;
            try {
                if (lines.isCut())
                    bytes.complain(where, "more than a packet can have");
                else
                    bytes.decode(where, bytesFromHex(line));
            } catch (const HexError& error) {
                bytes.complain(where, error.what());
            }
        }
        bytes.finish();
    });
    return bytes.exitCode();
}

int decode(DecodeOptions options) {
    options.rendering.time = options.scan.time;
    options.rendering.display = options.scan.display;
    options.rendering.isColoured = options.rendering.format < Format::json && mayHaveColours(STDOUT_FILENO);
    if (options.isRaw) return decodeRaw(options);
    if (options.isHex) return decodeHex(options);
    return decodeCapture(options);
}

} // namespace

void addDecode(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<DecodeOptions>();
    CLI::App* const command = app.add_subcommand("decode", "Print messages as lines of text or JSON");
    addCaptures(*command, options->inputs);
    CLI::Option* const hex = command->add_flag("--hex", options->isHex, "The input is text: a packet in hex per line");
    command->add_flag("--raw", options->isRaw, "The input is the bytes of one packet")->excludes(hex);
    command
        ->add_option("--type", options->type,
                     "With --hex or --raw: the input is bodies of this message, without the identifier in front")
        ->check(isMessage());
    addChoice(*command, "--format", options->rendering.format,
              {{"line", Format::line}, {"lines", Format::lines}, {"json", Format::json}, {"csv", Format::csv}},
              "line, lines (a value per line), json (a line each) or csv (a row each, of --fields)");
    command
        ->add_option("--fields", options->rendering.fields,
                     "The columns of CSV: time, message, id, and names or paths of fields, with commas between them")
        ->delimiter(',')
        ->type_name(FIELD_VALUE)
        ->allow_extra_args(false);
    command->add_flag_callback(
        "--numbers", [options] { options->rendering.integers = Inspect::Integers::numbers; },
        "In JSON, write integers of 64 bits as numbers, which many readers round, and divided prices, too");
    command->final_callback([options] {
        if ((options->isRaw || options->isHex) && options->inputs.size() > 1)
            throw CLI::ValidationError("capture", "bytes and text are read from one input");
        if ((options->rendering.format == Format::csv) == options->rendering.fields.empty())
            throw CLI::ValidationError("--fields", "CSV is written of the fields that it names, and nothing else is");
    });
    addScanOptions(*command, options->scan);
    addExamples(*command,
                "Packets and bodies without a capture have no time. In JSON the times of stations stay numbers, which\n"
                "encode reads back.",
                {"$tool decode session.pcap | grep ' $message '", "$tool decode --message $message session.pcap",
                 "$tool decode --format json --price-scale 100000000 -n 3 session.pcap",
                 "$tool decode --format lines --time utc -n 2 session.pcap",
                 "$tool decode --from 2024-03-04T07:00:01 --to 2024-03-04T07:00:02 --redact session.pcap",
                 "$tool decode --policy rolling session.pcap"});
    commands.push_back({command, [options] { return decode(*options); }});
}

} // namespace qlproto
