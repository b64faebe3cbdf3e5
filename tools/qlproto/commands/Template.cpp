// qlproto template: a message of zeros as a line of JSON, for people to fill in.
#include <memory>

#include "Capture/Output.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/corpus/Filler.h"
#include "tools/qlproto/messages/MessageLine.h"
#include "tools/qlproto/messages/Names.h"
#include "tools/qlproto/terminal/Errors.h"

namespace qlproto {

namespace {

int printTemplate(const std::string& name) {
    const Inspect::MessageInfo& message = *findMessage(name);
    std::string text;
    MessageLineWriter line(text);
    line.time(0, TimeForm::utc);
    line.message(message.type->name, message.id);
    line.member("body", corpus::filledJson(*message.type, corpus::Filling::zeros));
    line.end();
    Capture::writeText(text);
    return EXIT_FINE;
}

} // namespace

void addTemplate(CLI::App& app, Commands& commands) {
    const auto name = std::make_shared<std::string>();
    CLI::App* const command = app.add_subcommand("template", "Print a message of zeros in JSON, to be filled in");
    command->add_option("message", *name, "A message by name or identifier")->required()->check(isMessage());
    addExamples(
        *command,
        "All fields are there, lists with one element. encode takes the line as it is; with --partial, also what "
        "is\n"
        "left of it.",
        {"$tool template $message", "$tool template $message | $tool encode - -o zeros.pcap"});
    commands.push_back({command, [name] { return printTemplate(*name); }});
}

} // namespace qlproto
