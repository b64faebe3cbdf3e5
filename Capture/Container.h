// One way in which packets stand in a file: how their records are told, even from what damage has left of them.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "Capture/ByteWindow.h"
#include "Capture/Packet.h"
#include "Inspect/Protocol.h"

namespace Capture {

/// Damage to a capture's records. A damaged body alone is not: its packet comes out and is found bad by its reader.
struct Damage {
    uint64_t offset = 0;  ///< of the record's header in the file, of the contents if it is compressed
    uint64_t skipped = 0; ///< bytes that belong to no record that could be told; 0 if the packet came out all the same
    std::string reason;   ///< what is wrong with the header
    bool isOfRecord = true; ///< else of the file as such
    const char* kind = RECORD;
    std::size_t capture = 0; ///< its number, if it is one of several

    static constexpr const char* RECORD = "damaged record"; ///< else what it is is told by its kind

    std::string text() const;
};

class Container {
  public:
    virtual ~Container() = default;

    /// Reads the next packet; false at the end. Its bytes are valid until the next call. Throws IoError, or DamagedCapture
    /// if what comes is none of ours.
    virtual bool next(Packet& packet) = 0;

    /// Whether the next packet can be had without waiting for its writer.
    virtual bool isReady() const = 0;

    /// The window was taken to the start of another record: what was known of the last one does not hold.
    virtual void jumped() = 0;

    /// How often the file has told of itself until now. What comes later is lost on those who jump over it.
    virtual uint64_t descriptions() const { return 0; }

    /// What was wrong between the packet before and this one, or the end. Null if nothing was.
    const Damage* damage() const { return _damage ? &*_damage : nullptr; }

    /// What the file's writer says of the definition that it was made with: a text of his. Empty if he says nothing, or has
    /// not yet.
    const std::string& definition() const { return _definition; }

  protected:
    /// Tells of damage, once for all between two packets.
    void damaged(Damage damage);

    std::optional<Damage> _damage;
    std::string _definition;
};

/// The container that the window begins with. Throws IoError, or DamagedCapture if it is none of ours. REQUIRES: the window
/// outlives it.
std::unique_ptr<Container> containerOf(ByteWindow& window, const Inspect::Protocol& protocol, Takes takes);

} // namespace Capture
