// Reads captures: pcap, pcapng and ERF, plain or compressed, packet by packet.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "Capture/ByteWindow.h"
#include "Capture/Container.h"
#include "Capture/Index.h"
#include "Capture/Packet.h"
#include "Inspect/Protocol.h"

namespace Capture {

/// Reads captures, even damaged ones: the usual library ends at the first record whose header is damaged, and a damaged
/// length would make it swallow or misread the good packets after it. What the file is, is told by its contents: gzip and
/// Zstandard (Decompression.h has the limits), pcap (Pcap.h), pcapng (Pcapng.h), ERF (Erf.h).
class Reader {
  public:
    /// Opens the capture; "-" is standard input. What is damaged is searched for messages of the protocol, or for frames of
    /// networks if those are taken. Throws IoError, or DamagedCapture if it is none of ours.
    explicit Reader(const std::string& path, const Inspect::Protocol& protocol = Inspect::default_protocol(),
                    Takes takes = Takes::messages);

    /// Reads the next packet; false at the end. Its bytes are valid until the next call. Throws IoError, or DamagedCapture
    /// if its packets turn out to be none of ours, or to be compressed beyond the limits.
    bool next(Packet& packet);

    /// Goes on at the record of a packet, by an index. Throws IoError. REQUIRES: a packet was read already, and the capture
    /// is a regular file.
    void jump(const Index::Part& part);

    /// What was wrong between the packet before and this one, or the end. Null if nothing was.
    const Damage* damage() const { return _fileDamage ? &*_fileDamage : _container->damage(); }

    /// Whether the next packet can be had without waiting for its writer.
    bool isReady() const { return _window->isFile() || _container->isReady(); }

    /// Waits for the writer up to so many milliseconds; whether he has sent something by then, or ended.
    bool hasInput(int milliseconds) const { return isReady() || _window->hasInput(milliseconds); }

    /// What the capture's writer says of the definition that it was made with (Definition.h). Empty if he says nothing, or
    /// no packet was read yet.
    const std::string& definition() const { return _container->definition(); }

    /// How often the file has told of itself until now (Container).
    uint64_t descriptions() const { return _container->descriptions(); }

    /// Bytes that the last packet had before it was cut to what the capture holds of it; as many as it has if it was
    /// not.
    uint64_t originalLength() const { return _originalLength; }

    uint64_t position() const { return _window->filePosition(); } ///< offset in the file up to which all was read
    uint64_t fileSize() const { return _window->fileSize(); }     ///< 0 if it is not known

  private:
    void noteFault();

    std::unique_ptr<ByteWindow> _window;
    std::unique_ptr<Container> _container;
    std::optional<Damage> _fileDamage; ///< with that of the container, if there is any
    uint64_t _originalLength = 0;
};

} // namespace Capture
