// qlproto corpus: the test vectors in corpus/.
#include <filesystem>
#include <memory>

#include <fmt/format.h>

#include "Capture/Errors.h"
#include "Capture/Output.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/corpus/Vectors.h"
#include "tools/qlproto/terminal/Errors.h"

namespace qlproto {

namespace {

int writeCorpus(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) throw Capture::IoError(fmt::format("{}: {}", folder.string(), error.message()));
    for (const Inspect::MessageInfo& message : Inspect::all_messages(thisTool.protocol))
        Capture::writeText(corpus::vectorLines(message), folder / (std::string(message.type->name) + ".ndjson"));
    return EXIT_FINE;
}

} // namespace

void addCorpus(CLI::App& app, Commands& commands) {
    const auto folder = std::make_shared<std::string>();
    CLI::App* const command = app.add_subcommand(
        "corpus", "Write test vectors for other implementations: a file of JSON lines for each message");
    command->add_option("-o,--output", *folder, "The folder to write to")->required()->type_name(FOLDER_VALUE);
    addExamples(*command, "", {"$tool corpus -o corpus"});
    commands.push_back({command, [folder] { return writeCorpus(*folder); }});
}

} // namespace qlproto
