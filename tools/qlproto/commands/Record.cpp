// qlproto record: what is published on a bus, as a journal or a capture.
#include <filesystem>
#include <memory>

#include "Capture/Errors.h"
#include "Host/Recorder.h"
#include "tools/qlproto/commands/CaptureOutput.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/live/Live.h"
#include "tools/qlproto/terminal/Errors.h"

namespace qlproto {

namespace {

struct RecordOptions {
    std::string bus;
    CaptureOutput output;
    LiveSpan span{.start = "oldest"};
    bool isSynced = false;
};

int summarizeRecord(uint64_t messages, uint64_t lost) {
    tell(Capture::counted(messages, "message") + " recorded, " + std::to_string(lost) + " lost");
    return lost == 0 ? EXIT_FINE : EXIT_BAD_DATA;
}

int recordJournal(const RecordOptions& options, Host::Bus& bus) {
    Host::JournalOptions form{.syncsEach = options.isSynced, .definition = ownDefinition()};
    if (options.output.rotateSize != 0) form.rotateSize = options.output.rotateSize * 1'000'000;
    form.rotateTime = options.output.rotateTime * 1'000'000'000;
    Host::Journal journal(options.output.path, form);
    if (journal.cutOff() != 0)
        tellFault(fmt::format("{}: cut off {} of a message that was not whole", options.output.path,
                              Capture::counted(journal.cutOff(), "byte")));
    Host::Recorder recorder(bus, journal);
    Every second(std::chrono::seconds(1)), end(std::chrono::seconds(options.span.seconds));
    uint64_t messages = 0;
    bool wasRefused = false;
    while (messages < options.span.messages && !isInterrupted() && !end.isDue()) {
        messages += recorder.poll(100);
        if (recorder.refusal().empty() == wasRefused) {
            wasRefused = !wasRefused;
            tellFault(wasRefused ? recorder.refusal() + "; nothing may be published meanwhile" : "recording again");
        }
        if (second.isDue() && !wasRefused) journal.sync();
    }
    journal.sync();
    return summarizeRecord(messages, recorder.lost());
}

int recordCapture(const RecordOptions& options, Host::Bus& bus) {
    Capture::CaptureWriter writer = options.output.open();
    const std::unique_ptr<Host::Source> source = bus.read(options.span.from());
    Every end(std::chrono::seconds(options.span.seconds));
    uint64_t messages = 0, lost = 0;
    Host::Record record;
    std::string packet;
    while (messages < options.span.messages && !isInterrupted() && !end.isDue()) {
        if (!source->next(record)) {
            if (!source->wait(0)) writer.flush();
            source->wait(100);
            continue;
        }
        lost += record.lost;
        packet.assign(Capture::identifierBytes(record.id)).append(record.body);
        writer.packet({record.time, packet});
        ++messages;
    }
    writer.close();
    return summarizeRecord(messages, lost);
}

int record(const RecordOptions& options) {
    endOnInterrupt();
    const std::unique_ptr<Host::Bus> bus = openLiveBus(options.bus);
    const bool isFolder = options.output.path.ends_with('/') || std::filesystem::is_directory(options.output.path);
    return isFolder ? recordJournal(options, *bus) : recordCapture(options, *bus);
}

} // namespace

void addRecord(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<RecordOptions>();
    CLI::App* const command = app.add_subcommand("record", "Record what is published on a bus");
    addBus(*command, options->bus);
    addCaptureOutput(*command, options->output);
    command->get_option("--output")
        ->description("The capture to write, or the folder of a journal if there is one or the name ends in /; - is "
                      "standard output");
    addLiveSpan(*command, options->span);
    command->add_flag("--sync", options->isSynced,
                      "Of a journal, have each message on the disk before the next one is taken, not once a second");
    addExamples(*command,
                std::string("A journal goes on after its last message, whatever --start says. Other processes of a bus "
                            "mem: get from it\n"
                            "what the bus no longer holds; while it cannot be written, nobody can publish there.\n\n")
                    + BUS_REMARK,
                {"$tool record --bus mem:./bus -o journal/ --seconds 1",
                 "$tool record --bus mem:./bus -o some.pcapng.zst --messages 1000 --seconds 5"});
    commands.push_back({command, [options] { return record(*options); }});
}

} // namespace qlproto
