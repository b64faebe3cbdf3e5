// Captures as commands open them, and the definition that they make captures with.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Capture/Definition.h"
#include "Capture/MessageSource.h"

namespace CLI {
class App;
}

namespace qlproto {

/// What users say of the messages in packets of a network.
struct NetworkChoice {
    std::string framing = {}; ///< a text or preset, or @ and a file of it; empty: captures hold messages alone
    std::vector<uint16_t> ports = {};

    bool isMade() const { return !framing.empty(); }

    /// The framing. Throws FilterError if it is none, IoError if its file cannot be read. REQUIRES: isMade().
    Capture::Framing read() const;

    /// What readers of captures take of it; nothing if it is not made. Throws as read() does.
    std::optional<Capture::NetworkOptions> options() const;
};

/// Adds --framing and --port.
void addNetworkChoice(CLI::App& command, NetworkChoice& choice);

/// Adds the captures by position.
void addCaptures(CLI::App& command, std::vector<std::string>& captures);

/// The definition that this program is built with.
const Capture::Definition& ownDefinition();

/// Opens captures as one stream; "-" is standard input. Tells on standard error if one was made with another definition.
std::unique_ptr<Capture::MessageSource> openCaptures(const std::vector<std::string>& paths,
                                                     const NetworkChoice& network = {});

/// The index beside a capture that was opened; none if there is none, or it is of no use, of which standard error tells.
std::optional<Capture::Index> openIndex(const std::string& path, const Capture::MessageSource& source);

/// What is said of a fault between messages: with the capture's name, if there are several.
std::string faultText(const Capture::Damage& fault, const std::vector<std::string>& paths);

} // namespace qlproto
