// What all commands that read captures let users choose: which messages they take, and how these are shown.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Inspect/Display.h"
#include "Inspect/Verify.h"
#include "tools/qlproto/messages/OpenCapture.h"
#include "tools/qlproto/terminal/TimeText.h"

namespace CLI {
class App;
}

namespace qlproto {

struct ScanOptions {
    Inspect::Policy policy = Inspect::whole;
    std::vector<std::string> names = {};    ///< with * and ?
    std::vector<std::string> families = {}; ///< as the tool has them
    std::vector<std::string> ids = {};      ///< decimal or 0x..., of messages
    std::vector<std::string> where = {};    ///< see Condition
    std::string from = {}, to = {};         ///< see parseTime and parseClock
    uint64_t first = UINT64_MAX;            ///< messages at most
    uint64_t faults = 3;                    ///< of which people are told, one by one
    bool isQuiet = false;                   ///< people are told of nothing
    bool isVerbose = false;                 ///< people are told how much was read, also if they do not watch
    TimeForm time = TimeForm::raw;
    Inspect::Display display = {};
    NetworkChoice network = {};

    /// The same without what chooses among messages.
    ScanOptions ofAll() const {
        ScanOptions all = *this;
        all.names = all.families = all.ids = all.where = {};
        all.from = all.to = {};
        all.first = UINT64_MAX;
        return all;
    }
};

/// Adds the options about what people are told, which are among those below.
void addTelling(CLI::App& command, ScanOptions& options);

/// Adds the options to a command.
void addScanOptions(CLI::App& command, ScanOptions& options);

/// Those of them that make sense where messages are copied as they are: none hides secrets.
void addSelectionOptions(CLI::App& command, ScanOptions& options);

} // namespace qlproto
