// qlproto diff: two captures message by message, field by field.
#include <algorithm>
#include <map>
#include <memory>
#include <optional>

#include <fmt/format.h>

#include "Capture/Errors.h"
#include "Capture/Output.h"
#include "Capture/Verification.h"
#include "Inspect/Display.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/analysis/CaptureDiff.h"
#include "tools/qlproto/analysis/FlatFields.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/messages/Filter.h"
#include "tools/qlproto/messages/MessageReader.h"
#include "tools/qlproto/messages/Names.h"
#include "tools/qlproto/messages/OpenCapture.h"
#include "tools/qlproto/messages/ScanOptions.h"
#include "tools/qlproto/terminal/Errors.h"
#include "tools/qlproto/terminal/Terminal.h"

namespace qlproto {

namespace {

using Side = CaptureDiff::Side;

struct DiffOptions {
    std::string a, b;
    std::vector<std::string> ignored;
    uint64_t shown = 20; ///< 0: all
    ScanOptions scan;
};

/// A message without the fields that do not count.
class Comparer {
  public:
    explicit Comparer(const DiffOptions& options)
        : _ignored(options.ignored), _display(options.scan.display), _reader(options.scan.policy) {}

    /// What counts of a packet if not all its bytes do: the values that are not ignored. Reading a pad can lose the end of
    /// its text, so that its values do not tell all.
    std::optional<std::string> key(const std::string& packet) {
        if (_ignored.empty() || !_reader.read(packet)) return std::nullopt;
        if (Capture::isPad(thisTool.protocol, _reader.descriptor().id()) && !isIgnored("padding")) return std::nullopt;
        return valueBytes(_reader.descriptor().id(), _reader.message(), _ignored);
    }

    /// The message's name; that of a bad packet says what is wrong.
    std::string name(const std::string& packet) {
        return _reader.read(packet) ? _reader.descriptor().name() : "bad packet: " + _reader.fault();
    }

    /// One line for each value that differs: path, the one, the other.
    std::vector<std::string> differences(const Side& a, const Side& b) {
        if (!_reader.read(a.packet)) return {"bad packet: " + _reader.fault()};
        const std::vector<FlatField> inA = fields();
        if (!_reader.read(b.packet)) return {"in the other a bad packet: " + _reader.fault()};
        const std::vector<FlatField> inB = fields();

        std::vector<std::string> lines;
        std::map<std::string_view, const FlatField*> others;
        for (const FlatField& field : inB) others[field.path] = &field;
        for (const FlatField& field : inA) {
            const auto other = others.find(field.path);
            if (other == others.end()) {
                lines.push_back(fmt::format("{}: {} -> nothing", field.path, shown(field)));
                continue;
            }
            if (other->second->text != field.text)
                lines.push_back(fmt::format("{}: {} -> {}", field.path, shown(field), shown(*other->second)));
            others.erase(other);
        }
        for (const FlatField& field : inB)
            if (others.contains(field.path))
                lines.push_back(fmt::format("{}: nothing -> {}", field.path, shown(field)));
        if (lines.empty())
            lines.push_back(a.key ? "other numbers of elements, of which all fields are ignored"
                                  : "other bytes for the same values");
        return lines;
    }

  private:
    static std::string shown(const FlatField& field) {
        return field.isSecret ? std::string(Inspect::HIDDEN) : field.text;
    }

    bool isIgnored(const char* field) const {
        return std::find(_ignored.begin(), _ignored.end(), field) != _ignored.end();
    }

    std::vector<FlatField> fields() const {
        return flatFields(_reader.descriptor().id(), _reader.message(), _display, _ignored);
    }

    std::vector<std::string> _ignored;
    Inspect::Display _display;
    MessageReader _reader;
};

/// Reads what is taken of a capture, as far as it can be read.
class Source {
  public:
    Source(const std::string& path, const ScanOptions& options, Comparer& comparer)
        : _path(path),
          _capture(openCaptures({path}, options.network)),
          _filter(options),
          _left(options.first),
          _comparer(comparer) {}

    bool next(Side& side) {
        if (_left == 0) return false;
        Capture::Packet packet;
        do {
            const bool isThere = _capture->next(packet);
            for (const Capture::Damage& fault : _capture->faults()) {
                tellFault(fmt::format("{} after packet {}: {}", _path, _packets, fault.text()));
                _isDamaged = true;
            }
            if (!isThere) return false;
            if (_packets++ == 0) _filter.beginAt(packet.time);
        } while (!_filter.takes(packet));
        --_left;
        side.number = _packets;
        side.packet = packet.bytes;
        side.key = _comparer.key(side.packet);
        return true;
    }

    bool isDamaged() const { return _isDamaged; }

  private:
    std::string _path;
    std::unique_ptr<Capture::MessageSource> _capture;
    Filter _filter;
    uint64_t _left;
    Comparer& _comparer;
    uint64_t _packets = 0;
    bool _isDamaged = false;
};

int diff(const DiffOptions& options) {
    Comparer comparer(options);
    Source a(options.a, options.scan, comparer), b(options.b, options.scan, comparer);
    Capture::Output output;
    uint64_t told = 0;

    CaptureDiff diff(
        [&](Side& side) { return a.next(side); }, [&](Side& side) { return b.next(side); },
        [&](const Side* inA, const Side* inB) {
            if (options.shown != 0 && told == options.shown) return;
            ++told;
            if (inB == nullptr) {
                output.append(visible(fmt::format("< {} {}", inA->number, comparer.name(inA->packet))));
            } else if (inA == nullptr) {
                output.append(visible(fmt::format("> {} {}", inB->number, comparer.name(inB->packet))));
            } else {
                output.append(visible(fmt::format("! {} {} {}", inA->number, inB->number, comparer.name(inA->packet))));
                for (const std::string& line : comparer.differences(*inA, *inB))
                    output.append("\n    " + visible(line));
            }
            output.append("\n");
        });
    Capture::whileRead([&] {
        diff.run();
        const uint64_t untold = diff.different() + diff.onlyInA() + diff.onlyInB() - told;
        if (untold != 0) output.append(fmt::format("and {} more\n", untold));
        output.append(fmt::format("equal {}, different {}, only in the first {}, only in the second {}\n", diff.equal(),
                                  diff.different(), diff.onlyInA(), diff.onlyInB()));
        output.close();
    });
    return told == 0 && !a.isDamaged() && !b.isDamaged() ? EXIT_FINE : EXIT_BAD_DATA;
}

} // namespace

void addDiff(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<DiffOptions>();
    CLI::App* const command = app.add_subcommand("diff", "Compare two captures message by message, field by field");
    command->add_option("first capture", options->a, "The one capture; - is standard input")
        ->required()
        ->type_name(FILE_VALUE);
    command->add_option("second capture", options->b, "The other capture; - is standard input")
        ->required()
        ->type_name(FILE_VALUE);
    command->add_option("--ignore", options->ignored, "Names of fields that do not count")
        ->delimiter(',')
        ->check(isField())
        ->allow_extra_args(false);
    addScanOptions(*command, options->scan);
    addNumber(*command, "--differences", options->shown, "Show that many messages that differ; 0 shows all")
        ->capture_default_str();
    addExamples(
        *command,
        "Secrets are never shown. Identifiers and bodies are compared, not the packets' times. A message that is in "
        "one capture only is told\n"
        "as < or > with its packet's number, a pair of the same type that differs as ! with both numbers and the\n"
        "fields that differ. Where the captures part, up to 16,384 packets or 16 MB of each are searched for the "
        "place\n"
        "where they meet again. Exit status: 0 if the captures are equal, 1 if not.",
        {"$tool diff session.pcap session.pcap"});
    command->final_callback([options] {
        if (options->a == "-" && options->b == "-")
            throw CLI::ValidationError("second capture", "standard input can be one of the two only");
    });
    commands.push_back({command, [options] { return diff(*options); }});
}

} // namespace qlproto
