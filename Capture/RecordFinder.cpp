#include "Capture/RecordFinder.h"

#include <algorithm>

#include "Capture/Erf.h"
#include "Capture/Pcap.h"
#include "Capture/Verification.h"
#include "Inspect/Reflection.h"

namespace Capture {

namespace {

/// Two records of one capture are seldom further apart, in seconds.
constexpr uint32_t NEAR = 30 * 24 * 3600;

/// So many headers in a row are no accident, even if none of their packets has a known identifier.
constexpr int LINKS = 32;
/// How far they are followed: the window must also hold what is looked at from there.
constexpr std::size_t REACH = ByteWindow::CAPACITY - 2 * (1024 + MAX_PACKET);

/// How far before the end of a record another is looked for that overlaps it, or ends with it.
constexpr std::size_t TAIL = 512;

bool areNear(uint32_t a, uint32_t b) { return (a < b ? b - a : a - b) <= NEAR; }

} // namespace

template <class Form>
auto RecordFinder<Form>::recordHere() -> std::optional<Found> {
    const std::string_view bytes = peekHeader(0);
    if (bytes.size() < Form::HEADER) return std::nullopt;
    const Record record = _form.recordAt(bytes);
    const bool isWellFormed = _form.isWellFormed(record);
    const std::size_t size = record.size();
    const auto believe = [&](bool isSound, bool isFollowed) {
        // What is only credible is so by its time, which says nothing new.
        if (isSound || isFollowed || !_seconds) noteTime(record.seconds);
        if (isFollowed && record.captured < record.original) _longest = record.captured;
        if (isFollowed && record.isWhole() && record.captured > _longest) _longest = MAX_PACKET;
        return Found{record, record.captured, isSound, isFollowed};
    };

    if (isWellFormed) {
        const std::string_view all = _window.peek(size);
        if (all.size() < size) return std::nullopt; // the capture ends inside it
        if (record.isWhole()) {
            if (isWholeHeader(all.substr(size))) return believe(false, true); // nearly always
            if (isSound(record, 0, record.captured)) return believe(true, false);
        }
        if (isFollowed(0, size, record) && (record.captured == _longest || !leadsTo(size))) return believe(false, true);
    }
    for (const uint32_t length : {record.captured, record.original})
        if (length <= _longest && isSound(record, 0, length) && !holdsRecord(record.packetAt() + length))
            return Found{record, length, true, false};

    const bool isCredible = isWellFormed && isKnown(record, peek(0, record.packetAt() + startSize(record)))
                            && (!_seconds || areNear(record.seconds, *_seconds))
                            && !holdsRecord(size - std::min(size, TAIL));
    return isCredible ? std::optional(believe(false, false)) : std::nullopt;
}

template <class Form>
auto RecordFinder<Form>::search() -> std::optional<Found> {
    _lastSeconds.reset();
    while (!_window.peek(1).empty()) {
        _window.skip(1);
        if (!isRecord(0)) continue;
        if (const std::optional<Found> found = recordHere()) return found;
    }
    return std::nullopt;
}

template <class Form>
bool RecordFinder<Form>::pass(const Found& found) {
    const std::size_t size = sizeOf(found);
    const std::optional<std::size_t> next = found.isFollowed ? std::nullopt : overlapping(found);
    _window.skip(next.value_or(size));
    return next.has_value();
}

/// Bytes of a record, with what fills it up as far as that is there.
template <class Form>
std::size_t RecordFinder<Form>::sizeOf(const Found& found) {
    if (found.length == found.record.captured && _form.isWellFormed(found.record)) return found.record.size();
    const std::size_t size = Form::filled(found.record.packetAt() + found.length);
    return std::min(size, _window.peek(size).size());
}

/// How far ahead a record begins before the one found ends, if one does.
template <class Form>
std::optional<std::size_t> RecordFinder<Form>::overlapping(const Found& found) {
    const std::size_t size = sizeOf(found);
    Record record = found.record;
    record.captured = found.length;
    if (found.isSound && isFollowed(0, size, record)) return std::nullopt;
    for (std::size_t at = size - std::min(size - 1, TAIL); at < size; ++at) {
        if (!isRecord(at)) continue;
        // A text can hold a record, all of it.
        if (!found.isSound || at + _form.recordAt(peekHeader(at)).size() > size) return at;
    }
    return std::nullopt;
}

/// The bytes from `at` on, `size` or more; fewer only where the capture ends.
template <class Form>
std::string_view RecordFinder<Form>::peek(std::size_t at, std::size_t size) {
    const std::string_view bytes = _window.peek(at + size);
    return bytes.substr(std::min(at, bytes.size()));
}

/// A header, with all that belongs to it, and `more` bytes.
template <class Form>
std::string_view RecordFinder<Form>::peekHeader(std::size_t at, std::size_t more) {
    const std::string_view bytes = peek(at, Form::HEADER + more);
    if constexpr (Form::LONGEST_HEADER > Form::HEADER)
        if (bytes.size() >= Form::HEADER && Form::isExtended(bytes)) return peek(at, Form::LONGEST_HEADER + more);
    return bytes;
}

/// Whether the bytes begin with the header of a whole packet.
template <class Form>
bool RecordFinder<Form>::isWholeHeader(std::string_view bytes) const {
    if (bytes.size() < Form::HEADER) return false;
    const Record record = _form.recordAt(bytes);
    return _form.isWellFormed(record) && record.isWhole();
}

/// Whether the packet of that record, as far as the bytes hold it, has a known identifier.
template <class Form>
bool RecordFinder<Form>::isKnown(const Record& record, std::string_view bytes) const {
    if (record.captured < IDENTIFIER_SIZE || bytes.size() < record.packetAt() + IDENTIFIER_SIZE) return false;
    const std::string_view packet = bytes.substr(record.packetAt(), record.captured);
    const uint32_t linkType = _form.linkTypeOf(record);
    if (isNetwork(linkType)) return beginsAsFrame(linkType, packet);
    return Inspect::reflect(_protocol, identifierOf(packet)) != nullptr;
}

/// Bytes of a packet that tell whether it is known.
template <class Form>
std::size_t RecordFinder<Form>::startSize(const Record& record) const {
    return isNetwork(_form.linkTypeOf(record)) ? FRAME_START : IDENTIFIER_SIZE;
}

/// Whether a record begins `at` bytes ahead, where nothing else speaks for it.
template <class Form>
bool RecordFinder<Form>::isRecord(std::size_t at) {
    const std::string_view bytes = peekHeader(at, IDENTIFIER_SIZE);
    if (bytes.size() < Form::HEADER + IDENTIFIER_SIZE) return false;
    const Record record = _form.recordAt(bytes);
    if (!_form.isWellFormed(record) || !isKnown(record, bytes)) return false;
    if (peek(at, record.size()).size() < record.size()) return false;
    if (_seconds && areNear(record.seconds, *_seconds)) return true;
    if (!record.isWhole()) return !_seconds && isFollowed(at, record.size(), record);
    if (!isSound(record, at, record.captured)) return false;
    return record.captured >= SHORT_PROOF || isFollowed(at, record.size(), record);
}

/// A time that may be damaged counts only if it is near the one before, with nothing in between that is no record.
template <class Form>
void RecordFinder<Form>::noteTime(uint32_t seconds) {
    if (areNear(seconds, _seconds.value_or(seconds)) || (_lastSeconds && areNear(seconds, *_lastSeconds)))
        _seconds = seconds;
    _lastSeconds = seconds;
}

/// Whether another record, or the end, follows `size` bytes after the place of one that is `at` bytes ahead. Of two headers
/// of whole packets the equal lengths say enough. Else the identifier must be known and the time near. Headers of which not
/// even that can be said, such as those of empty packets, must lead to one of which it can.
template <class Form>
bool RecordFinder<Form>::isFollowed(std::size_t at, std::size_t size, const Record& record) {
    at += size;
    for (int link = 0; link < LINKS && at <= REACH; ++link) {
        const std::string_view bytes = peekHeader(at, IDENTIFIER_SIZE);
        if (bytes.empty()) return true;
        if (bytes.size() < Form::HEADER) return false;
        const Record next = _form.recordAt(bytes);
        if (!_form.isWellFormed(next)) return false;
        if (record.isWhole() && next.isWhole()) return true;
        if (isKnown(next, bytes) && areNear(next.seconds, record.seconds)) return true;
        if (!areNear(next.seconds, _seconds.value_or(record.seconds))) return false;
        at += next.size();
    }
    return true;
}

/// Whether the packet of the record `at` bytes ahead is a message, or a frame of a network, if it has that length.
template <class Form>
bool RecordFinder<Form>::isSound(const Record& record, std::size_t at, uint32_t length) {
    if (length < IDENTIFIER_SIZE || length > MAX_PACKET) return false;
    if (_verified > PROOF_RATION * (_window.position() + MAX_PACKET)) return false;
    const std::string_view packet = peek(at + record.packetAt(), length).substr(0, length);
    if (packet.size() < length) return false;
    const uint32_t linkType = _form.linkTypeOf(record);
    if (isNetwork(linkType)) return isSoundFrame(linkType, packet);
    const Inspect::Result result = verifyBody(_protocol, identifierOf(packet), packet.substr(IDENTIFIER_SIZE), PROOF);
    _verified += workOf(result, length);
    return bool(result);
}

/// Whether a record that begins later leads to the same place: a damaged length can skip records, and bytes can be
/// missing from this one.
template <class Form>
bool RecordFinder<Form>::leadsTo(std::size_t size) {
    for (std::size_t at = std::max(Form::HEADER, size - std::min(size, TAIL)); at + Form::HEADER < size; ++at)
        if (at + _form.recordAt(peekHeader(at)).size() == size && isRecord(at)) return true;
    return false;
}

/// Whether a record begins inside the next `size` bytes, after the first.
template <class Form>
bool RecordFinder<Form>::holdsRecord(std::size_t size) {
    for (std::size_t at = 1; at < size; ++at)
        if (isRecord(at)) return true;
    return false;
}

template class RecordFinder<PcapForm>;
template class RecordFinder<ErfForm>;

} // namespace Capture
