// Writes capture files: pcap or pcapng with times in nanoseconds, of link type USER0 with one message a packet unless told
// otherwise, compressed or not. For files that follow one another see CaptureWriter.h.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Capture/Definition.h"
#include "Capture/Output.h"
#include "Capture/Packet.h"

namespace Capture {

class ZstdFrames;

/// What a capture is written as.
struct WriterForm {
    enum class Container { pcap, pcapng };

    Container container = Container::pcap;
    bool isCompressed = false; ///< by Zstandard, in frames that can be sought
    uint32_t linkType = LinkType::MESSAGE;

    /// What the end of the name says: ".pcapng" or anything else, and ".zst" after that.
    static WriterForm of(std::string_view path);
};

class Writer : public PacketSink {
  public:
    /// Creates the capture; "-" is standard output. Throws IoError. If the definition is given, it is told: in the capture
    /// if the container has a place for it, else beside it where the output allows that.
    explicit Writer(const std::string& path, std::optional<Definition> definition = std::nullopt)
        : Writer(path, WriterForm::of(path), std::move(definition)) {}
    Writer(const std::string& path, const WriterForm& form, std::optional<Definition> definition = std::nullopt);
    ~Writer() override;

    /// Throws IoError or ClosedPipe. REQUIRES: packet.bytes.size() <= MAX_PACKET, and a time from 1970 to 2106.
    void packet(const Packet& packet) override;

    /// Writes all packets until now. What was written without it ends with a whole packet, too; it gathers up to 256 kB, and
    /// some 1 MB more if it is compressed: a frame, which this ends.
    void flush();

    /// Writes what is left and puts the capture in its place. To be called at the end: without, there is no capture.
    void close();

    uint64_t size() const { return _size; } ///< bytes until now, before they are compressed

  private:
    void append(std::string_view bytes);

    const std::string _path;
    const WriterForm _form;
    const std::optional<Definition> _definition;
    Output _output;
    std::unique_ptr<ZstdFrames> _frames; ///< null if it is not compressed
    std::string _record;
    uint64_t _size = 0;
};

} // namespace Capture
