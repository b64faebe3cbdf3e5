// Capture files: pcap with times in nanoseconds and link type USER0, one message a packet.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

#include <pcap/pcap.h>

#include "tools/qlproto/Packet.h"

namespace qlproto {

class CaptureReader {
  public:
    /// Opens the capture; "-" is standard input. Throws IoError, or DamagedCapture if it is none of ours.
    explicit CaptureReader(const std::string& path);

    /// Reads the next packet; false at the end. Its bytes are valid until the next call. Throws DamagedCapture or
    /// IoError.
    bool next(Packet& packet);

    /// Bytes that the last packet had before it was cut to what the capture holds of it; as many as it has if it was
    /// not.
    uint64_t originalLength() const { return _originalLength; }

  private:
    struct Close {
        void operator()(pcap_t* p) const { pcap_close(p); }
    };

    [[noreturn]] void fail(const char* what) const;

    std::string _path;
    std::FILE* _file = nullptr; // owned by _pcap once that is open
    std::unique_ptr<pcap_t, Close> _pcap;
    uint64_t _originalLength = 0;
};

class CaptureWriter : public PacketSink {
  public:
    /// Creates the capture; "-" is standard output. Throws IoError.
    explicit CaptureWriter(const std::string& path);

    /// Throws IoError or ClosedPipe.
    void packet(const Packet& packet) override;

    /// Writes what is left. To be called before the end; the destructor cannot tell of errors.
    void close();

  private:
    struct Close {
        void operator()(pcap_t* p) const { pcap_close(p); }
    };
    struct CloseDump {
        void operator()(pcap_dumper_t* p) const { pcap_dump_close(p); }
    };

    [[noreturn]] void fail() const;

    std::string _path;
    std::unique_ptr<pcap_t, Close> _pcap;
    std::unique_ptr<pcap_dumper_t, CloseDump> _dump;
};

} // namespace qlproto
