// qlproto verify: whether all messages of a capture are sound, and what is wrong with those that are not.
#include <map>
#include <memory>

#include <fmt/format.h>

#include "Capture/Output.h"
#include "Capture/Reader.h"
#include "Capture/Verification.h"
#include "Inspect/Reflection.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/messages/CaptureScan.h"
#include "tools/qlproto/messages/OpenCapture.h"
#include "tools/qlproto/terminal/Errors.h"

namespace qlproto {

namespace {

struct VerifyOptions {
    std::string capture;
    ScanOptions scan;
    uint64_t listed = 10;
};

struct Count {
    uint64_t sound = 0, bad = 0;
};

class Report {
  public:
    explicit Report(const VerifyOptions& options) : _options(options) {}

    void add(const Capture::Packet& packet, uint64_t number, uint64_t originalLength) {
        ++_packets;
        const auto where = [&] { return fmt::format("packet {} at offset {}", number, packet.offset); };
        if (originalLength != packet.bytes.size()) {
            if (packet.bytes.size() >= Capture::IDENTIFIER_SIZE) ++_byMessage[Capture::identifierOf(packet.bytes)].bad;
            return fault("cut by the capture", where(), cutText(packet, originalLength));
        }
        if (packet.bytes.size() < Capture::IDENTIFIER_SIZE) return fault("no identifier", where(), "");
        const Velmora::MsgType_t id = Capture::identifierOf(packet.bytes);
        const Inspect::Result result = Capture::verifyBody(
            thisTool.protocol, id, packet.bytes.substr(Capture::IDENTIFIER_SIZE), _options.scan.policy);
        if (result) {
            ++_sound;
            ++_byMessage[id].sound;
            return;
        }
        ++_byMessage[id].bad;
        const Inspect::TypeInfo* const type = Inspect::reflect(thisTool.protocol, id);
        fault(Inspect::to_string(result.fault), where(),
              type != nullptr ? fmt::format("{}: {}", type->name, result.text()) : result.text());
    }

    void add(const Capture::Damage& damage, uint64_t after) {
        fault("damaged record", fmt::format("after packet {}", after), damage.text());
    }

    std::string text() const {
        std::string text = fmt::format("{:<30}{:>12}{:>12}\n", "message", "sound", "bad");
        for (const auto& [id, count] : _byMessage) {
            const Inspect::TypeInfo* const type = Inspect::reflect(thisTool.protocol, id);
            const std::string name = type != nullptr ? std::string(type->name) : fmt::format("0x{:04X}", id);
            text += fmt::format("{:<30}{:>12}{:>12}\n", name, count.sound, count.bad);
        }
        text += fmt::format("{:<30}{:>12}{:>12}\n", "all packets", _sound, _packets - _sound);
        if (_byFault.empty()) return text;
        text += fmt::format("\n{:<42}{:>12}\n", "fault", "count");
        for (const auto& [name, number] : _byFault) text += fmt::format("{:<42}{:>12}\n", name, number);
        text += "\nfirst faults\n";
        for (const std::string& line : _first) text += line;
        return text;
    }

    int exitCode() const { return _byFault.empty() ? EXIT_FINE : EXIT_BAD_DATA; }

  private:
    void fault(const std::string& kind, const std::string& where, const std::string& what) {
        ++_byFault[kind];
        if (_first.size() < _options.listed)
            _first.push_back(what.empty() ? fmt::format("{}: {}\n", where, kind)
                                          : fmt::format("{}: {}\n", where, what));
    }

    const VerifyOptions& _options;
    uint64_t _packets = 0, _sound = 0;
    std::map<Velmora::MsgType_t, Count> _byMessage;
    std::map<std::string, uint64_t> _byFault;
    std::vector<std::string> _first;
};

int verify(const VerifyOptions& options) {
    Filter filter(options.scan);
    Capture::Reader capture = openCapture(options.capture);
    Report report(options);
    Capture::Packet packet;
    uint64_t left = options.scan.first;
    for (uint64_t number = 1; left != 0; ++number) {
        const bool isThere = capture.next(packet);
        if (capture.damage() != nullptr) report.add(*capture.damage(), number - 1);
        if (!isThere) break;
        if (number == 1) filter.beginAt(packet.time);
        if (!filter.takes(packet)) continue;
        report.add(packet, number, capture.originalLength());
        --left;
    }
    Capture::writeText(report.text());
    return report.exitCode();
}

} // namespace

void addVerify(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<VerifyOptions>();
    CLI::App* const command = app.add_subcommand("verify", "Check all messages; count by message and by fault");
    command->add_option("capture", options->capture, "The capture to read; - is standard input")
        ->required()
        ->type_name(FILE_VALUE);
    addScanOptions(*command, options->scan);
    addNumber(*command, "--list", options->listed, "How many faults to list")->capture_default_str();
    addExamples(*command, "", {"$tool verify session.pcap", "$tool verify --policy strict --list 3 session.pcap"});
    commands.push_back({command, [options] { return verify(*options); }});
}

} // namespace qlproto
