#include "Host/Journal.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/inotify.h>
#include <unistd.h>

#include "Capture/Errors.h"
#include "Capture/PcapngForm.h"

namespace Host {

namespace {

constexpr const char* PART = "/.part";                              // what is no file of the journal yet
constexpr int64_t END_OF_TIME = (int64_t{1} << 32) * 1'000'000'000; // in captures

[[noreturn]] void failBySystem(const std::string& path) { throw Capture::IoError(path + ": " + std::strerror(errno)); }

} // namespace

// --- writing

Journal::Journal(const std::string& folder, JournalOptions options) : _folder(folder), _options(std::move(options)) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) throw Capture::IoError(folder + ": " + error.message());
    _path = folder + "/lock";
    _lock = Descriptor(::open(_path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0660));
    if (!_lock) failBySystem(_path);
    if (::flock(_lock.number(), LOCK_EX | LOCK_NB) != 0) fail("another one appends to it");
    recover();
}

void Journal::fail(const std::string& what) const { throw Capture::IoError(_folder + ": " + what); }

/// Goes on where the last file ends.
void Journal::recover() {
    const std::vector<JournalFile> files = JournalFile::in(_folder);
    if (files.empty()) return;
    _last = files.back().sequence - 1;
    _fileTime = files.back().time;
    _path = _folder + '/' + files.back().name;
    JournalFileReader reader(_path);
    bool isEmpty = true;
    for (Record record; reader.next(record); isEmpty = false) _last = std::max(_last, record.sequence);
    _size = reader.position();
    _damages = reader.damages();
    _cutOff = std::filesystem::file_size(_path) - (isEmpty ? 0 : _size);
    if (isEmpty) { // its first message had not been written in whole
        if (::unlink(_path.c_str()) != 0) failBySystem(_path);
        return;
    }
    Descriptor file(::open(_path.c_str(), O_WRONLY | O_CLOEXEC));
    if (!file || (_cutOff != 0 && ::ftruncate(file.number(), static_cast<off_t>(_size)) != 0)) failBySystem(_path);
    if (_damages == 0) _file = std::move(file);
}

uint64_t Journal::append(const Record& record) {
    Record numbered = record;
    if (record.sequence == 0) numbered.sequence = _last + 1;
    if (numbered.sequence <= _last)
        throw std::invalid_argument("Journal: sequence " + std::to_string(record.sequence) + " after "
                                    + std::to_string(_last));
    if (record.body.size() > LONGEST_JOURNAL_BODY || record.time < 0 || record.time >= END_OF_TIME)
        throw std::invalid_argument("Journal: " + std::to_string(record.body.size()) + " bytes at time "
                                    + std::to_string(record.time));
    const bool isFull = _size >= _options.rotateSize;
    const bool isOver = _options.rotateTime != 0 && record.time - _fileTime >= _options.rotateTime;
    if (_file && (isFull || isOver)) {
        sync();
        _file = Descriptor();
    }
    _bytes.clear();
    if (_file) {
        appendJournalBlock(_bytes, numbered);
        write(_bytes);
    } else {
        begin(numbered);
    }
    if (_options.syncsEach) sync();
    return _last = numbered.sequence;
}

/// A file whose first message this is. It has its name when it holds that message.
void Journal::begin(const Record& record) {
    const std::string part = _folder + PART;
    _path = _folder + '/' + JournalFile::nameOf(record.sequence, record.time);
    _bytes = Capture::pcapngStart(_options.definition);
    appendJournalBlock(_bytes, record);
    _file = Descriptor(::open(part.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0660));
    if (!_file) failBySystem(part);
    _size = 0;
    _fileTime = record.time;
    try {
        write(_bytes);
        if (::rename(part.c_str(), _path.c_str()) != 0) failBySystem(_path);
        if (_options.syncsEach) syncFolder();
    } catch (const Capture::IoError&) {
        ::unlink(part.c_str());
        _file = Descriptor();
        throw;
    }
}

/// All of the bytes or none.
void Journal::write(std::string_view bytes) {
    for (size_t done = 0; done < bytes.size();) {
        const ssize_t written =
            ::pwrite(_file.number(), bytes.data() + done, bytes.size() - done, static_cast<off_t>(_size + done));
        if (written > 0) {
            done += static_cast<size_t>(written);
        } else if (written == 0 || errno != EINTR) {
            const int reason = written == 0 ? ENOSPC : errno;
            // Should that fail, too, the next message is written over it, or it is cut off when the journal is opened.
            if (::ftruncate(_file.number(), static_cast<off_t>(_size)) != 0) static_cast<void>(0);
            errno = reason;
            failBySystem(_path);
        }
    }
    _size += bytes.size();
}

void Journal::sync() {
    if (_file && ::fdatasync(_file.number()) != 0) failBySystem(_path);
    if (!_options.syncsEach) syncFolder();
}

/// The names of its files are on the disk, too.
void Journal::syncFolder() {
    const Descriptor folder(::open(_folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder || ::fsync(folder.number()) != 0) failBySystem(_folder);
}

// --- reading

JournalReader::JournalReader(const std::string& folder, From from) : _folder(folder), _from(from) {
    const std::vector<JournalFile> files = JournalFile::in(folder);
    if (from.kind == From::Kind::sequence) _expected = from.sequence;
    if (files.empty()) return;
    auto file = files.begin();
    for (auto it = files.begin(); it != files.end(); ++it)
        if (from.kind == From::Kind::live || (from.kind == From::Kind::sequence && it->sequence <= from.sequence)
            || (from.kind == From::Kind::time && it->time < from.time))
            file = it;
    if (!open(*file) || from.kind != From::Kind::live) return;
    uint64_t last = file->sequence - 1;
    for (Record record; _file->next(record);) last = record.sequence;
    _expected = last + 1;
}

/// False if the file has been taken away.
bool JournalReader::open(const JournalFile& file) {
    const std::string path = _folder + '/' + file.name;
    if (_file) _damages += _file->damages();
    _file.reset();
    _name = file.name;
    _isLast = true;
    try {
        _file.emplace(path);
    } catch (const Capture::IoError&) {
        if (std::filesystem::exists(path)) throw;
    }
    return _file.has_value();
}

/// Goes to the file after this one, once there is one and nothing more comes in this. False if there is none.
bool JournalReader::openNext() {
    for (const JournalFile& file : JournalFile::in(_folder)) {
        if (file.name <= _name) continue;
        if (_file && _isLast) {
            _isLast = false; // one more look: what was written before that file was begun
            return true;
        }
        if (open(file)) return true;
    }
    return false;
}

bool JournalReader::next(Record& record) {
    for (;;) {
        if (!_file || !_file->next(record)) {
            if (!openNext()) return false;
            continue;
        }
        if (record.sequence < _expected) continue;
        if (_from.kind == From::Kind::time && record.time < _from.time) continue;
        _from = From::oldest(); // found
        record.lost = _expected != 0 ? record.sequence - _expected : 0;
        _lost += record.lost;
        _expected = record.sequence + 1;
        return true;
    }
}

bool JournalReader::wait(int milliseconds) {
    if (!_watch) { // only of those who wait: giving it back takes the system milliseconds
        _watch = Descriptor(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
        if (!_watch || ::inotify_add_watch(_watch.number(), _folder.c_str(), IN_MODIFY | IN_MOVED_TO) < 0)
            failBySystem(_folder);
        return true; // what was written before it began to watch
    }
    pollfd poll{_watch.number(), POLLIN, 0};
    if (::poll(&poll, 1, milliseconds) <= 0) return false;
    char events[4096];
    while (::read(_watch.number(), events, sizeof events) > 0) {
    }
    return true;
}

uint64_t JournalReader::damages() const { return _damages + (_file ? _file->damages() : 0); }

} // namespace Host
