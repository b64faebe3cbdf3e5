// qlproto verify: whether all messages of a capture are sound, and what is wrong with those that are not.
#include <map>
#include <memory>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "Capture/Output.h"
#include "Capture/Verification.h"
#include "Inspect/Reflection.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/commands/TableOutput.h"
#include "tools/qlproto/messages/CaptureScan.h"
#include "tools/qlproto/messages/OpenCapture.h"
#include "tools/qlproto/terminal/Errors.h"
#include "tools/qlproto/terminal/Table.h"

namespace qlproto {

namespace {

struct VerifyOptions {
    std::vector<std::string> captures;
    TableForm form;
    ScanOptions scan;
};

struct Count {
    uint64_t sound = 0, bad = 0;
};

class Report {
  public:
    Report(const ScanOptions& options, const std::vector<std::string>& paths) : _options(options), _paths(paths) {}

    void add(const Capture::Packet& packet, uint64_t number) {
        ++_packets;
        const bool isCut = packet.originalLength() != packet.bytes.size();
        const bool hasIdentifier = packet.bytes.size() >= Capture::IDENTIFIER_SIZE;
        const Velmora::MsgType_t id = hasIdentifier ? Capture::identifierOf(packet.bytes) : Velmora::MsgType_t{};
        Inspect::Result result;
        if (hasIdentifier) {
            Count& count = _byMessage[id];
            if (!isCut) {
                const std::string_view body = packet.bytes.substr(Capture::IDENTIFIER_SIZE);
                if (!Capture::isKnownSound(packet, _options.policy))
                    result = Capture::verifyBody(thisTool.protocol, id, body, _options.policy);
                if (result) {
                    ++_sound;
                    ++count.sound;
                    return;
                }
            }
            ++count.bad;
        }
        note(isCut           ? "cut by the capture"
             : hasIdentifier ? Inspect::to_string(result.fault)
                             : "no identifier",
             [&] {
                 Fault fault{.packet = number,
                             .offset = packet.offset,
                             .capture = nameOf(packet.capture),
                             .time = timeText(packet.time, _options.time)};
                 if (const Inspect::TypeInfo* const type = Inspect::reflect(thisTool.protocol, id);
                     hasIdentifier && type)
                     fault.message = type->name;
                 if (isCut) {
                     fault.what = cutText(packet, packet.originalLength());
                 } else if (hasIdentifier) {
                     fault.field = result.path();
                     fault.what =
                         fault.message.empty() ? result.text() : fmt::format("{}: {}", fault.message, result.text());
                 }
                 return fault;
             });
    }

    void add(const Capture::Damage& damage, uint64_t after) {
        note(damage.kind, [&] {
            return Fault{.packet = after,
                         .offset = damage.offset,
                         .capture = nameOf(damage.capture),
                         .what = damage.text(),
                         .isBetween = true};
        });
    }

    std::string text() const {
        std::string text = fmt::format("{:<30}{:>12}{:>12}\n", "message", "sound", "bad");
        for (const auto& [id, count] : _byMessage)
            text += fmt::format("{:<30}{:>12}{:>12}\n", nameOf(id), count.sound, count.bad);
        text += fmt::format("{:<30}{:>12}{:>12}\n", "all packets", _sound, _packets - _sound);
        if (_byFault.empty()) return text;
        text += fmt::format("\n{:<42}{:>12}\n", "fault", "count");
        for (const auto& [name, number] : _byFault) text += fmt::format("{:<42}{:>12}\n", name, number);
        if (!_first.empty()) text += "\nfirst faults\n";
        for (const Fault& it : _first)
            text += it.isBetween ? fmt::format("after packet {}: {}{}{}\n", it.packet, it.capture,
                                               it.capture.empty() ? "" : ": ", it.what)
                                 : fmt::format("packet {} at offset {}{}{} of {}: {}\n", it.packet, it.offset,
                                               it.capture.empty() ? "" : " of ", it.capture, it.time,
                                               it.what.empty() ? it.kind : it.what);
        return text;
    }

    Table table() const {
        Table table({"message", "sound", "bad"});
        for (const auto& [id, count] : _byMessage)
            table.add({nameOf(id), std::to_string(count.sound), std::to_string(count.bad)});
        table.add({"all packets", std::to_string(_sound), std::to_string(_packets - _sound)});
        return table;
    }

    std::string json() const {
        using nlohmann::ordered_json;
        ordered_json json{{"all", {{"sound", _sound}, {"bad", _packets - _sound}}},
                          {"messages", ordered_json::object()},
                          {"faults", ordered_json::object()},
                          {"first", ordered_json::array()}};
        for (const auto& [id, count] : _byMessage)
            json["messages"][nameOf(id)] = {{"sound", count.sound}, {"bad", count.bad}};
        for (const auto& [name, number] : _byFault) json["faults"][name] = number;
        for (const Fault& it : _first) {
            ordered_json fault{{it.isBetween ? "afterPacket" : "packet", it.packet}, {"offset", it.offset}};
            for (const auto& [name, value] : {std::pair{"capture", it.capture},
                                              {"time", it.time},
                                              {"message", it.message},
                                              {"field", it.field},
                                              {"kind", it.kind},
                                              {"text", it.what}})
                if (!value.empty()) fault[name] = value;
            json["first"].push_back(std::move(fault));
        }
        return json.dump(2) + '\n';
    }

    int exitCode() const { return _byFault.empty() ? EXIT_FINE : EXIT_BAD_DATA; }

  private:
    struct Fault {
        uint64_t packet;
        uint64_t offset;
        std::string capture = {}; ///< if there are several
        std::string time = {}, message = {}, field = {}, kind = {}, what = {};
        bool isBetween = false; ///< after the packet
    };

    static std::string nameOf(Velmora::MsgType_t id) {
        const Inspect::TypeInfo* const type = Inspect::reflect(thisTool.protocol, id);
        return type != nullptr ? std::string(type->name) : fmt::format("0x{:04X}", id);
    }

    std::string nameOf(std::size_t capture) const { return _paths.size() > 1 ? _paths[capture] : ""; }

    /// Counts one, and calls `describe` if it is among the first: of a million faults most are only counted.
    template <class Describe>
    void note(const std::string& kind, Describe&& describe) {
        ++_byFault[kind];
        if (_first.size() >= _options.faults) return;
        _first.push_back(describe());
        _first.back().kind = kind;
    }

    const ScanOptions& _options;
    const std::vector<std::string>& _paths;
    uint64_t _packets = 0, _sound = 0;
    std::map<Velmora::MsgType_t, Count> _byMessage;
    std::map<std::string, uint64_t> _byFault;
    std::vector<Fault> _first;
};

int verify(const VerifyOptions& options) {
    Filter filter(options.scan);
    const auto source = openCaptures(options.captures, options.scan.network);
    Report report(options.scan, options.captures);
    Capture::Packet packet;
    uint64_t left = options.scan.first;
    for (uint64_t number = 1; left != 0; ++number) {
        const bool isThere = source->next(packet);
        for (const Capture::Damage& fault : source->faults()) report.add(fault, number - 1);
        if (!isThere) break;
        if (number == 1) filter.beginAt(packet.time);
        if (!filter.takes(packet)) continue;
        report.add(packet, number);
        --left;
    }
    Capture::writeText(options.form == TableForm::table
                           ? report.text()
                           : inForm(
                               options.form, [&] { return report.table(); }, [&] { return report.json(); }));
    return report.exitCode();
}

} // namespace

void addVerify(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<VerifyOptions>();
    CLI::App* const command = app.add_subcommand("verify", "Check all messages; count by message and by fault");
    addCaptures(*command, options->captures);
    addTableForm(*command, options->form);
    options->scan.faults = 10;
    addScanOptions(*command, options->scan);
    addExamples(*command, "", {"$tool verify session.pcap", "$tool verify --policy strict --faults 3 session.pcap"});
    commands.push_back({command, [options] { return verify(*options); }});
}

} // namespace qlproto
