// Options of the commands that write captures out of captures.
#pragma once

#include <cstdint>
#include <limits>
#include <string>

#include "Capture/CaptureWriter.h"
#include "tools/qlproto/commands/Arguments.h"
#include "tools/qlproto/messages/OpenCapture.h"

namespace qlproto {

struct CaptureOutput {
    std::string path = {};
    std::string container = {}; ///< empty: what the name says
    bool isCompressed = false;
    uint64_t rotateSize = 0; ///< MB
    int64_t rotateTime = 0;  ///< seconds

    Capture::CaptureWriter open(uint32_t linkType = Capture::LinkType::MESSAGE) const {
        constexpr uint64_t megabyte = 1'000'000;
        constexpr int64_t second = 1'000'000'000;
        Capture::WriterForm form = Capture::WriterForm::of(path);
        using Container = Capture::WriterForm::Container;
        if (!container.empty()) form.container = container == "pcapng" ? Container::pcapng : Container::pcap;
        form.isCompressed |= isCompressed;
        form.linkType = linkType;
        return {path, {form, ownDefinition(), rotateSize * megabyte, rotateTime * second}};
    }
};

inline void addCaptureOutput(CLI::App& command, CaptureOutput& output) {
    command.add_option("-o,--output", output.path, "The capture to write; - is standard output")
        ->required()
        ->type_name(FILE_VALUE);
    command
        .add_option("--container", output.container,
                    "The container to write, else pcapng if the name ends so, before .zst, and pcap if not")
        ->check(CLI::IsMember({"pcap", "pcapng"}));
    command.add_flag("--zstd", output.isCompressed, "Compress, as if the name ends in .zst: frames of 1 MB");
    addNumber(command, "--rotate-size", output.rotateSize, "Begin another file after so many MB, before compression", 1,
              std::numeric_limits<uint32_t>::max());
    addNumber(command, "--rotate-time", output.rotateTime, "Begin another file after so many seconds of messages", 1,
              std::numeric_limits<uint32_t>::max());
}

inline constexpr const char* ROTATION_REMARK =
    "Files that are rotated are numbered: session-00001.pcap and so on. Each is complete, and appears when it is.";

} // namespace qlproto
