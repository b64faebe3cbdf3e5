// qlproto annotate: a hex dump of a body that explains itself.
//
// The bytes come from a packet of a capture, from hexadecimal text or as they are. A packet has the identifier in front
// of the body; so has hexadecimal or raw input unless --type says what it is.
#include <memory>

#include <fmt/format.h>
#include <unistd.h>

#include "Capture/ByteWindow.h"
#include "Capture/Errors.h"
#include "Capture/Output.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/commands/Commands.h"
#include "tools/qlproto/commands/TableOutput.h"
#include "tools/qlproto/messages/Annotation.h"
#include "tools/qlproto/messages/Hex.h"
#include "tools/qlproto/messages/Names.h"
#include "tools/qlproto/messages/OpenCapture.h"
#include "tools/qlproto/terminal/Errors.h"

namespace qlproto {

namespace {

struct AnnotateOptions {
    std::string input;
    std::string type;
    NetworkChoice network;
    Inspect::Policy policy;
    uint64_t packet = 0; ///< counted from 1
    bool isRaw = false;
    bool redact = false;
    TableForm form;
};

/// A whole file of `longest` bytes at most.
std::string contentOf(const std::string& path, std::size_t longest) {
    Capture::ByteWindow input(path);
    const std::string_view bytes = input.peek(longest + 1);
    if (bytes.size() > longest)
        throw Capture::DamagedCapture(fmt::format("{}: more than the {} that a packet can have", input.name(),
                                                  Capture::counted(Capture::MAX_PACKET, "byte")));
    return std::string(bytes);
}

/// The bytes of that packet of a capture.
std::string packetOf(const std::string& path, const NetworkChoice& network, uint64_t number) {
    const auto source = openCaptures({path}, network);
    Capture::Packet packet;
    for (uint64_t i = 0; i < number; ++i) {
        const bool isThere = source->next(packet);
        i += source->passedOver().packets;
        if (!isThere)
            throw Capture::DamagedCapture(
                fmt::format("{}: has no packet {}, only {}", path, number, Capture::counted(i, "packet")));
        if (i != 0 || network.isMade()) continue;
        if (std::optional<Capture::Index> index = openIndex(path, *source)) {
            const Capture::Index::Part* const part = index->partOf(number);
            source->passOver(std::move(*index), [at = part != nullptr ? part->packet : 0](
                                                    const Capture::Index::Part& it) { return it.packet == at; });
        }
    }
    return std::string(packet.bytes);
}

/// A file where there is one of that name, else hexadecimal text.
std::string bytesOf(const AnnotateOptions& options) {
    if (options.packet != 0) return packetOf(options.input, options.network, options.packet);
    if (options.isRaw) return contentOf(options.input, Capture::MAX_PACKET);
    const bool isFile = options.input == "-" || ::access(options.input.c_str(), F_OK) == 0;
    return bytesFromHex(isFile ? contentOf(options.input, LONGEST_HEX) : options.input);
}

int annotateBytes(const AnnotateOptions& options, std::string_view bytes) {
    const Inspect::MessageInfo* message = nullptr;
    if (!options.type.empty()) {
        message = findMessage(options.type);
    } else {
        if (bytes.size() < Capture::IDENTIFIER_SIZE) {
            tellFault(fmt::format("{} cannot hold an identifier", Capture::counted(bytes.size(), "byte")));
            return EXIT_BAD_DATA;
        }
        const Velmora::MsgType_t id = Capture::identifierOf(bytes);
        bytes.remove_prefix(Capture::IDENTIFIER_SIZE);
        message = findMessage(std::to_string(id));
        if (message == nullptr) {
            tellFault(fmt::format("unknown message identifier {} (0x{:04X})", id, id));
            return EXIT_BAD_DATA;
        }
    }
    const Annotation annotation =
        annotate(*message, bytes, options.policy, options.redact ? Inspect::Secrets::hide : Inspect::Secrets::show);
    const std::string title = fmt::format("{} {} (0x{:04X}), body of {}\n", message->type->name, message->id,
                                          message->id, Capture::counted(bytes.size(), "byte"));
    Capture::writeText(options.form == TableForm::table ? title + annotation.text
                                                        : inForm(options.form, [&] { return annotation.table; }));
    if (annotation.fault) return EXIT_FINE;
    tellFault(fmt::format("{}: {}", message->type->name, annotation.fault.text()));
    return EXIT_BAD_DATA;
}

int annotateInput(const AnnotateOptions& options) {
    try {
        return annotateBytes(options, bytesOf(options));
    } catch (const HexError& error) {
        tellFault(fmt::format("{}: neither a file nor hexadecimal: {}", options.input, error.what()));
        return EXIT_USAGE;
    }
}

} // namespace

void addAnnotate(CLI::App& app, Commands& commands) {
    const auto options = std::make_shared<AnnotateOptions>();
    CLI::App* const command =
        app.add_subcommand("annotate", "Explain every byte of a body: offset, hex, field, type, value");
    command
        ->add_option("input", options->input,
                     "Hexadecimal text, or a file of it, or with --packet a capture; - is standard input")
        ->required()
        ->type_name(FILE_VALUE);
    CLI::Option* const packet =
        addNumber(*command, "--packet", options->packet, "The packet of a capture to take, counted from 1", 1);
    command
        ->add_option("--type", options->type,
                     "What the body is; without, the identifier stands in front of it, low byte first")
        ->check(isMessage())
        ->excludes(packet);
    command->add_flag("--raw", options->isRaw, "The input is a file of the bytes themselves")->excludes(packet);
    addNetworkChoice(*command, options->network);
    command->get_option("--framing")->needs(packet);
    addPolicy(*command, options->policy);
    addTableForm(*command, options->form);
    command->add_flag("--redact", options->redact, "Hide passwords and other secrets, bytes and value");
    addExamples(*command, "",
                {"$tool annotate session.pcap --packet 17", "$tool annotate --policy strict session.pcap --packet 17"});
    commands.push_back({command, [options] { return annotateInput(*options); }});
}

} // namespace qlproto
