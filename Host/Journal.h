// Messages kept in a folder of captures, in the order of their sequences, for whoever comes later.
//
//     Journal journal("/var/journal/prices");
//     const uint64_t sequence = journal.append({.id = id, .body = body, .time = now});
//     JournalReader reader("/var/journal/prices", From::at(sequence));      // in this process or another, at any time
//     for (Record record; reader.next(record) || reader.wait(1000);) ...
//
// Each file is a capture that every reader of captures takes as it is (JournalFile.h). The next one begins when one is large
// or old enough. Files may be taken away from the front: readers are told how much they missed.
//
// What is promised: append() returns when the system has the message, so that it outlives the process. It outlives the loss of
// power once sync() has returned, or as soon as append() has if `syncsEach` is set. A message is there in whole or not at all.
// If it cannot be written, as on a full disk, append() throws, and nothing of it stays; the next one may be tried at any time.
//
// Who opens a journal that was cut off goes on after the last message that is whole, and cuts off what follows it. If whole
// messages follow damage, nothing is cut off, and the journal goes on in a new file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "Capture/Definition.h"
#include "Host/JournalFile.h"

namespace Host {

struct JournalOptions {
    uint64_t rotateSize = 64 << 20; ///< bytes after which the next file begins
    int64_t rotateTime = 0;         ///< nanoseconds of messages' time after which it does; 0: no limit
    bool syncsEach = false;         ///< each message is on the disk before append() returns: slow
    std::optional<Capture::Definition> definition = {}; ///< told in each file
};

class Journal {
  public:
    /// Opens the journal in that folder, which is made if need be, to append to it. Throws Capture::IoError, also if
    /// another one has it open.
    explicit Journal(const std::string& folder, JournalOptions options = {});

    /// Appends the message under its sequence or, if that is 0, the next one; returns it. Throws std::invalid_argument if
    /// its sequence is not beyond the last one, its body too long or its time not one from 1970 to 2106, and
    /// Capture::IoError.
    uint64_t append(const Record& record);

    /// Has all messages written to the disk. Throws Capture::IoError.
    void sync();

    uint64_t last() const { return _last; }     ///< sequence of the last message; 0 if there never was one
    uint64_t cutOff() const { return _cutOff; } ///< bytes that were cut off when it was opened
    uint64_t damages() const {
        return _damages;
    } ///< places in the last file, then, that are damaged before whole messages
    const std::string& folder() const { return _folder; }

  private:
    void recover();
    void begin(const Record& record);
    void write(std::string_view bytes);
    void syncFolder();
    [[noreturn]] void fail(const std::string& what) const;

    const std::string _folder;
    const JournalOptions _options;
    Descriptor _lock;
    Descriptor _file; ///< none: the next message begins one
    std::string _path;
    uint64_t _size = 0; ///< of the file, in whole messages
    int64_t _fileTime = 0;
    uint64_t _last = 0;
    uint64_t _cutOff = 0, _damages = 0;
    std::string _bytes;
};

/// Reads a journal, also while it is written.
class JournalReader : public Source {
  public:
    /// Throws Capture::IoError, as all do that read.
    explicit JournalReader(const std::string& folder, From from = From::oldest());

    bool next(Record& record) override;
    bool wait(int milliseconds) override; ///< the first time there may be one in any case

    uint64_t lost() const { return _lost; }         ///< messages that are missing between those that were read
    uint64_t damages() const;                       ///< places in files at which something was stepped over
    uint64_t expected() const { return _expected; } ///< sequence of the next message; 0: not known yet

  private:
    bool open(const JournalFile& file);
    bool openNext();

    const std::string _folder;
    Descriptor _watch;
    std::optional<JournalFileReader> _file;
    std::string _name; ///< of the file
    bool _isLast = true;
    From _from;
    uint64_t _expected = 0;
    uint64_t _lost = 0, _damages = 0;
};

} // namespace Host
