// What every command that reads a capture does: take its messages in turn, name the bad ones, count.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

#include <fmt/format.h>

#include "tools/qlproto/Capture.h"
#include "tools/qlproto/Errors.h"
#include "tools/qlproto/MessageReader.h"

namespace qlproto {

class CaptureScan {
  public:
    /// Calls `handle(packet, reader)` for each good message of the capture. Bad packets and damaged
    /// places are told on standard error.
    template <class Handle>
    void run(const std::string& path, Handle&& handle) {
        CaptureReader capture(path);
        MessageReader reader;
        Packet packet;
        while (next(capture, packet)) {
            if (capture.originalLength() != packet.bytes.size()) {
                complain(fmt::format("only {} of its {} bytes were captured", packet.bytes.size(),
                                     capture.originalLength()));
            } else if (!reader.read(packet.bytes)) {
                complain(reader.fault());
            } else {
                ++_messages;
                handle(packet, reader);
            }
        }
    }

    /// `listener(packet, fault)` is told of each fault, too. Packets count from 1.
    void onFault(std::function<void(uint64_t, const std::string&)> listener) { _onFault = std::move(listener); }

    /// Tells of something that is wrong with the packet just read.
    void complain(const std::string& fault);

    /// One line for people on standard error: messages, bytes, time and rate.
    void summarize() const;

    uint64_t messages() const { return _messages; } ///< good ones
    uint64_t packets() const { return _packets; }
    int exitCode() const { return _bad == 0 ? EXIT_FINE : EXIT_BAD_DATA; }

  private:
    bool next(CaptureReader& capture, Packet& packet);
    void note(const std::string& where, const std::string& fault);

    std::chrono::steady_clock::time_point _start = std::chrono::steady_clock::now();
    uint64_t _packets = 0;
    uint64_t _messages = 0;
    uint64_t _bytes = 0;
    uint64_t _bad = 0;
    uint64_t _offset = 0; ///< of the packet just read
    std::function<void(uint64_t, const std::string&)> _onFault;
};

} // namespace qlproto
