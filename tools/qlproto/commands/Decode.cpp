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
    std::string input;
    bool isHex = false;
    bool isRaw = false;
    std::string type; ///< of bodies without identifier
    Filter::Options filter;
    uint64_t first = UINT64_MAX;
    bool redact = false;
    Rendering::Options rendering;
    Inspect::Policy policy;
};

int decodeCapture(const DecodeOptions& options, const Filter& filter) {
    Capture::Output output;
    struct Handle {
        const Filter& filter;
        std::unique_ptr<Rendering> rendering;
        void operator()(const Capture::Packet& packet, const MessageReader& reader, std::string& text) const {
            if (filter.takes(packet, reader)) rendering->append(packet, reader, text);
        }
    };
    std::vector<Handle> handles;
    for (std::size_t i = 0; i < CaptureScan::workers(); ++i)
        handles.push_back({filter, std::make_unique<Rendering>(options.rendering)});

    uint64_t left = options.first;
    CaptureScan scan(options.policy);
    const auto write = [&](std::string_view text, const std::vector<CaptureScan::Piece>& pieces) {
        if (pieces.size() < left) {
            output.append(text);
            left -= pieces.size();
            return CaptureScan::MORE;
        }
        const CaptureScan::Piece& last = pieces[left - 1];
        output.append(text.substr(0, last.end));
        left = 0;
        return last.packet;
    };
    const bool isRead = Capture::whileRead([&] {
        if (left != 0) scan.runParallel(options.input, handles, write, [&] { output.flush(); });
        output.close();
    });
    if (isRead) scan.summarize(options.first - left);
    return scan.exitCode();
}

/// Bytes that come without a capture: packets, or bodies of a type that is known.
class Bytes {
  public:
    Bytes(const DecodeOptions& options, const Filter& filter)
        : _filter(filter), _left(options.first), _reader(options.policy), _rendering(withoutTime(options.rendering)) {
        if (options.type.empty()) return;
        _identifier = Capture::identifierBytes(findMessage(options.type)->id);
    }

    void decode(const std::string& where, std::string_view bytes) {
        const std::string packet = _identifier + std::string(bytes);
        if (!_reader.read(packet)) return complain(where, _reader.fault());
        if (_left == 0 || !_filter.takes({}, _reader)) return;
        --_left;
        _text.clear();
        _rendering.append({}, _reader, _text);
        _output.append(_text);
    }

    void complain(const std::string& where, const std::string& fault) {
        tellFault(fmt::format("{}: {}", where, fault));
        _exitCode = EXIT_BAD_DATA;
    }

    void finish() { _output.close(); }
    int exitCode() const { return _exitCode; }

  private:
    static Rendering::Options withoutTime(Rendering::Options options) {
        options.hasTime = false;
        return options;
    }

    const Filter& _filter;
    uint64_t _left;
    std::string _identifier;
    MessageReader _reader;
    Rendering _rendering;
    Capture::Output _output;
    std::string _text;
    int _exitCode = EXIT_FINE;
};

int decodeRaw(const DecodeOptions& options, const Filter& filter) {
    Capture::ByteWindow input(options.input);
    Bytes bytes(options, filter);
    Capture::whileRead([&] {
        bytes.decode(input.name(), input.peek(Capture::MAX_PACKET + 1));
        bytes.finish();
    });
    return bytes.exitCode();
}

int decodeHex(const DecodeOptions& options, const Filter& filter) {
    LineReader lines(options.input, LONGEST_HEX);
    Bytes bytes(options, filter);
    Capture::whileRead([&] {
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
    const Filter filter(options.filter);
    options.rendering.display.secrets = options.redact ? Inspect::Secrets::hide : Inspect::Secrets::show;
    options.rendering.isColoured = options.rendering.format != Format::json && mayHaveColours(STDOUT_FILENO);
    if (options.isRaw) return decodeRaw(options, filter);
    if (options.isHex) return decodeHex(options, filter);
    return decodeCapture(options, filter);
}

bool isPowerOfTen(std::string_view number) {
    return number.starts_with('1') && number.find_first_not_of('0', 1) == number.npos;
}

} // namespace

void addDecode(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<DecodeOptions>();
    CLI::App* const command = app.add_subcommand("decode", "Print messages as lines of text or JSON");
    command->add_option("input", options->input, "The capture to read; - is standard input")
        ->required()
        ->type_name(FILE_VALUE);
    CLI::Option* const hex = command->add_flag("--hex", options->isHex, "The input is text: a packet in hex per line");
    command->add_flag("--raw", options->isRaw, "The input is the bytes of one packet")->excludes(hex);
    command
        ->add_option("--type", options->type,
                     "With --hex or --raw: the input is bodies of this message, without the identifier in front")
        ->check(isMessage());
    addChoice(*command, "--format", options->rendering.format,
              {{"line", Format::line}, {"lines", Format::lines}, {"json", Format::json}},
              "line, lines (a value per line) or json (a line each)");
    addChoice(*command, "--time", options->rendering.time, {{"raw", TimeForm::raw}, {"utc", TimeForm::utc}},
              "raw (seconds since 1970) or utc");
    addNumber(*command, "--price-scale", options->rendering.display.priceScale,
              "Divide prices and amounts by this power of ten for display; the protocol fixes no scale", 1)
        ->check([](const std::string& text) { return isPowerOfTen(text) ? "" : text + " is no power of ten"; });
    command->add_flag("--redact", options->redact, "Hide passwords and other secrets");
    addPolicy(*command, options->policy);
    addNumber(*command, "-n,--first", options->first, "Stop after so many messages");
    Filter::addTo(*command, options->filter);
    addExamples(*command, "Packets and bodies without a capture have no time. --where compares undivided values.",
                {"$tool decode session.pcap | grep ' $message '", "$tool decode --message $message session.pcap",
                 "$tool decode --format json --price-scale 100000000 -n 3 session.pcap",
                 "$tool decode --format lines --time utc -n 2 session.pcap",
                 "$tool decode --from 2024-03-04T07:00:01 --to 2024-03-04T07:00:02 --redact session.pcap",
                 "$tool decode --policy rolling session.pcap"});
    commands.push_back({command, [options] { return decode(*options); }});
}

} // namespace qlproto
