#include "tools/qlproto/messages/OpenCapture.h"

#include <sstream>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "Capture/ByteWindow.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/messages/FieldPath.h"
#include "tools/qlproto/terminal/Errors.h"

namespace qlproto {

namespace {

/// The text of a file, without what stands after a #.
std::string framingIn(const std::string& path) {
    constexpr std::size_t longest = 64 * 1024;
    Capture::ByteWindow file(path);
    std::istringstream lines(std::string(file.peek(longest).substr(0, longest)));
    std::string text;
    for (std::string line; std::getline(lines, line);) text += line.substr(0, line.find('#')) + ' ';
    return text;
}

} // namespace

Capture::Framing NetworkChoice::read() const {
    try {
        return Capture::Framing::of(framing.starts_with('@') ? framingIn(framing.substr(1)) : framing);
    } catch (const Capture::FramingError& error) {
        throw FilterError(fmt::format("--framing: {}", error.what()));
    }
}

std::optional<Capture::NetworkOptions> NetworkChoice::options() const {
    if (!isMade()) return std::nullopt;
    return Capture::NetworkOptions{read(), ports};
}

void addNetworkChoice(CLI::App& command, NetworkChoice& choice) {
    CLI::Option* const framing =
        command
            .add_option(
                "--framing", choice.framing,
                "How messages stand in TCP streams and UDP datagrams of captures of a network: fields with commas "
                "between them, as 'length:u32be, id:u16le, body', the name of a usual one (frames), or @ and a "
                "file that holds it")
            ->type_name("FRAMING");
    command.add_option("--port", choice.ports, "Only connections of this port, on either side")
        ->type_name(NUMBER_VALUE)
        ->needs(framing)
        ->allow_extra_args(false);
}

void addCaptures(CLI::App& command, std::vector<std::string>& captures) {
    command
        .add_option("capture", captures,
                    "The capture to read; - is standard input. Several are read as one, in the order of time")
        ->required()
        ->type_name(FILE_VALUE);
}

const Capture::Definition& ownDefinition() {
    static const Capture::Definition definition{std::string(thisTool.protocol.name), thisTool.protocol.version,
                                                std::string(thisTool.protocol.wireSignature),
                                                std::string(thisTool.protocol.namesSignature)};
    return definition;
}

std::unique_ptr<Capture::MessageSource> openCaptures(const std::vector<std::string>& paths,
                                                     const NetworkChoice& network) {
    std::vector<std::string> differences;
    for (const std::string& path : paths)
        differences.push_back(path == "-" ? "" : Capture::differenceOfDefinition(path, ownDefinition()));
    auto source = std::make_unique<Capture::MessageSource>(paths, thisTool.protocol, network.options());
    for (std::size_t i = 0; i < paths.size(); ++i) {
        if (differences[i].empty())
            differences[i] =
                Capture::differenceOfDefinition(paths[i], source->captures().definition(i), ownDefinition());
        if (!differences[i].empty()) tellFault(differences[i]);
    }
    return source;
}

std::optional<Capture::Index> openIndex(const std::string& path, const Capture::MessageSource& source) {
    if (source.captures().fileSize() == 0) return std::nullopt;
    std::string why;
    std::optional<Capture::Index> index = Capture::Index::beside(path, thisTool.protocol, why);
    if (!why.empty()) tellFault(why);
    return index;
}

std::string faultText(const Capture::Damage& fault, const std::vector<std::string>& paths) {
    return paths.size() > 1 ? fmt::format("{}: {}", paths[fault.capture], fault.text()) : fault.text();
}

} // namespace qlproto
