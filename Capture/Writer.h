// Writes capture files: pcap with times in nanoseconds and link type USER0, one message a packet.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>

#include "Capture/Output.h"
#include "Capture/Packet.h"

namespace Capture {

class Writer : public PacketSink {
  public:
    /// Creates the capture; "-" is standard output. Throws IoError.
    explicit Writer(const std::string& path);

    /// Throws IoError or ClosedPipe.
    void packet(const Packet& packet) override;

    /// Writes what is left and puts the capture in its place. To be called at the end: without, there is no capture.
    void close();

  private:
    void append(std::initializer_list<uint32_t> words);

    Output _output;
};

} // namespace Capture
