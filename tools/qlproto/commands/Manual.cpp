// qlproto manpage and qlproto completion: the tool described by itself. The build installs what they print.
#include <memory>

#include "Capture/Output.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/manual/Completion.h"
#include "tools/qlproto/manual/ManualPage.h"
#include "tools/qlproto/terminal/Errors.h"

namespace qlproto {

namespace {

int print(const std::string& text) {
    Capture::writeText(text);
    return EXIT_FINE;
}

} // namespace

void addManual(CLI::App& app, Commands& commands) {
    CLI::App* const page = app.add_subcommand("manpage", "Print the manual page, for man");
    addExamples(*page, "", {"$tool manpage | man -l -"});
    commands.push_back({page, [&app] { return print(manualPage(commandTree(app), std::string(thisTool.version))); }});

    const auto shell = std::make_shared<std::string>();
    CLI::App* const completion =
        app.add_subcommand("completion", "Print the completion of this command line for a shell");
    completion->add_option("shell", *shell, "The shell")->required()->check(CLI::IsMember({"bash", "zsh"}));
    addExamples(*completion, "", {"$tool completion bash > $tool.bash"});
    commands.push_back({completion, [&app, shell] {
                            const CommandNode tool = commandTree(app);
                            return print(*shell == "bash" ? bashCompletion(tool) : zshCompletion(tool));
                        }});
}

} // namespace qlproto
