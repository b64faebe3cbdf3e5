#include "tools/qlproto/live/Live.h"

#include <csignal>

#include <CLI/CLI.hpp>

#include "Host/Engines.h"
#include "Host/Journal.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/messages/OpenCapture.h"
#include "tools/qlproto/terminal/TimeText.h"

namespace qlproto {

namespace {

volatile std::sig_atomic_t interrupted = 0;

extern "C" void noteInterrupt(int) { interrupted = 1; }

/// The packets of a capture, numbered.
class CaptureSource : public Host::Source {
  public:
    explicit CaptureSource(const std::string& path) : _capture(openCaptures({path})) {}

    bool next(Host::Record& record) override {
        do {
            if (!_capture->next(_packet)) return false;
            ++record.sequence;
        } while (_packet.bytes.size() < Capture::IDENTIFIER_SIZE);
        record = {.id = Capture::identifierOf(_packet.bytes),
                  .body = _packet.bytes.substr(Capture::IDENTIFIER_SIZE),
                  .time = _packet.time,
                  .sequence = record.sequence};
        return true;
    }
    bool wait(int) override { return false; }

  private:
    std::unique_ptr<Capture::MessageSource> _capture;
    Capture::Packet _packet;
};

} // namespace

std::unique_ptr<Host::Bus> openLiveBus(const std::string& url) {
    return Host::openBus(url, Host::Topics(thisTool.protocol, thisTool.families, thisTool.busKeys), Host::engines());
}

Live openLive(const std::string& what, Host::From from) {
    if (what == "-") return {nullptr, std::make_unique<CaptureSource>(what), true};
    if (!Host::isUrl(what)) return {nullptr, std::make_unique<Host::JournalReader>(what, from), false};
    std::unique_ptr<Host::Bus> bus = openLiveBus(what);
    std::unique_ptr<Host::Source> source = bus->read(from);
    return {std::move(bus), std::move(source), false};
}

Host::From LiveSpan::from() const {
    if (start == "live") return Host::From::live();
    if (start == "oldest") return Host::From::oldest();
    if (const auto sequence = numberIn<uint64_t>(start)) return Host::From::at(*sequence);
    return Host::From::since(parseTime(start).value());
}

void addLiveSpan(CLI::App& command, LiveSpan& span) {
    command
        .add_option("--start", span.start,
                    "Begin with the next message (live), the oldest that is kept (oldest), a sequence, or a time")
        ->check(CLI::Validator(
            [](std::string& text) {
                if (text == "live" || text == "oldest" || numberIn<uint64_t>(text) || parseTime(text))
                    return std::string();
                return fmt::format("'{}' is neither live, oldest, a sequence nor a time", text);
            },
            "WHERE"))
        ->capture_default_str();
    addNumber(command, "--messages", span.messages, "End after so many messages", 1);
    addNumber(command, "--seconds", span.seconds, "End after so many seconds", 1, UINT32_MAX);
}

void endOnInterrupt() {
    struct sigaction action {};
    action.sa_handler = noteInterrupt;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaction(signal, &action, nullptr);
}

bool isInterrupted() { return interrupted != 0; }

int64_t timeNow() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

} // namespace qlproto
