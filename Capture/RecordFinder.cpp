#include "Capture/RecordFinder.h"

#include <algorithm>

#include "Capture/Verification.h"
#include "Inspect/Reflection.h"

namespace Capture {

namespace {

constexpr std::size_t HEADER = RecordHeader::SIZE;

/// Two records of one capture are seldom further apart, in seconds.
constexpr uint32_t NEAR = 30 * 24 * 3600;

/// So many headers in a row are no accident, even if none of their packets has a known identifier.
constexpr int LINKS = 32;
/// How far they are followed: the window must also hold what is looked at from there.
constexpr std::size_t REACH = ByteWindow::CAPACITY - 2 * (HEADER + MAX_PACKET);

/// How far before the end of a record another is looked for that overlaps it, or ends with it.
constexpr std::size_t TAIL = 512;

/// Whoever makes a capture chooses its lengths, and with them how many bytes might be packets. Only so many bytes are
/// verified for each byte of the capture, and of one more packet. Damage that nobody intended takes far less.
constexpr uint64_t RATION = 8;

/// As packets are verified elsewhere, but without overlong numbers, which no writer of ours makes: they take longer to
/// refuse than the place of the fault tells.
constexpr Inspect::Policy PROOF = [] {
    Inspect::Policy policy = Inspect::whole;
    policy.overlongVarints = false;
    return policy;
}();

bool areNear(uint32_t a, uint32_t b) { return (a < b ? b - a : a - b) <= NEAR; }

} // namespace

std::optional<RecordFinder::Found> RecordFinder::recordHere() {
    const std::string_view bytes = _window.peek(HEADER);
    if (bytes.size() < HEADER) return std::nullopt;
    const RecordHeader header = _form.headerOf(bytes);
    const bool isWellFormed = _form.isWellFormed(header);
    const std::size_t size = HEADER + header.captured;
    const auto believe = [&](bool isSound, bool isFollowed) {
        noteTime(header.seconds);
        if (isFollowed && header.captured < header.original) _longest = header.captured;
        if (isFollowed && header.isWhole() && header.captured > _longest) _longest = MAX_PACKET;
        return Found{header.captured, isSound, isFollowed};
    };

    if (isWellFormed) {
        const std::string_view record = _window.peek(size);
        if (record.size() < size) return std::nullopt; // the capture ends inside it
        if (header.isWhole()) {
            if (isWholeHeader(record.substr(size))) return believe(false, true); // nearly always
            if (isSound(0, header.captured)) return believe(true, false);
        }
        if (isFollowed(0, header) && (header.captured == _longest || !leadsTo(size))) return believe(false, true);
    }
    for (const uint32_t length : {header.captured, header.original})
        if (length <= _longest && isSound(0, length) && !holdsRecord(HEADER + length))
            return Found{length, true, false};

    const bool isCredible = isWellFormed && isKnown(header, peek(HEADER, IDENTIFIER_SIZE))
                            && (!_seconds || areNear(header.seconds, *_seconds))
                            && !holdsRecord(size - std::min(size, TAIL));
    return isCredible ? std::optional(believe(false, false)) : std::nullopt;
}

std::optional<RecordFinder::Found> RecordFinder::search() {
    while (!_window.peek(1).empty()) {
        _window.skip(1);
        if (!isRecord(0)) continue;
        if (const std::optional<Found> found = recordHere()) return found;
    }
    return std::nullopt;
}

bool RecordFinder::pass(const Found& found) {
    const std::size_t size = HEADER + found.length;
    const std::optional<std::size_t> next = found.isFollowed ? std::nullopt : overlapping(found);
    _window.skip(next.value_or(size));
    return next.has_value();
}

/// How far ahead a record begins before the one found ends, if one does.
std::optional<std::size_t> RecordFinder::overlapping(const Found& found) {
    const std::size_t size = HEADER + found.length;
    RecordHeader header = _form.headerOf(_window.peek(size));
    header.captured = found.length;
    if (found.isSound && isFollowed(0, header)) return std::nullopt;
    for (std::size_t at = size - std::min(size - 1, TAIL); at < size; ++at) {
        if (!isRecord(at)) continue;
        // A text can hold a record, all of it.
        if (!found.isSound || at + HEADER + _form.headerOf(peek(at, HEADER)).captured > size) return at;
    }
    return std::nullopt;
}

/// The bytes from `at` on, `size` or more; fewer only where the capture ends.
std::string_view RecordFinder::peek(std::size_t at, std::size_t size) {
    const std::string_view bytes = _window.peek(at + size);
    return bytes.substr(std::min(at, bytes.size()));
}

/// Whether the bytes begin with the header of a whole packet.
bool RecordFinder::isWholeHeader(std::string_view bytes) const {
    if (bytes.size() < HEADER) return false;
    const RecordHeader header = _form.headerOf(bytes);
    return _form.isWellFormed(header) && header.isWhole();
}

/// Whether the packet of that header, as far as the bytes hold it, has a known identifier.
bool RecordFinder::isKnown(const RecordHeader& header, std::string_view packet) const {
    return header.captured >= IDENTIFIER_SIZE && packet.size() >= IDENTIFIER_SIZE
           && Inspect::reflect(_protocol, identifierOf(packet)) != nullptr;
}

/// Whether a record begins `at` bytes ahead, where nothing else speaks for it.
bool RecordFinder::isRecord(std::size_t at) {
    const std::string_view bytes = peek(at, HEADER + IDENTIFIER_SIZE);
    if (bytes.size() < HEADER + IDENTIFIER_SIZE) return false;
    const RecordHeader header = _form.headerOf(bytes);
    if (!_form.isWellFormed(header) || !isKnown(header, bytes.substr(HEADER))) return false;
    if (peek(at, HEADER + header.captured).size() < HEADER + header.captured) return false;
    if (_seconds && areNear(header.seconds, *_seconds)) return true;
    if (header.isWhole()) return isSound(at, header.captured);
    return !_seconds && isFollowed(at, header);
}

/// A time that may be damaged counts only if it is near the one before.
void RecordFinder::noteTime(uint32_t seconds) {
    if (!_seconds || areNear(seconds, *_seconds) || areNear(seconds, _lastSeconds)) _seconds = seconds;
    _lastSeconds = seconds;
}

/// Whether another record, or the end, follows the one that is `at` bytes ahead. Of two headers of whole packets the
/// equal lengths say enough. Else the identifier must be known and the time near. Headers of which not even that can be
/// said, such as those of empty packets, must lead to one of which it can.
bool RecordFinder::isFollowed(std::size_t at, const RecordHeader& header) {
    at += HEADER + header.captured;
    for (int link = 0; link < LINKS && at <= REACH; ++link) {
        const std::string_view bytes = peek(at, HEADER + IDENTIFIER_SIZE);
        if (bytes.empty()) return true;
        if (bytes.size() < HEADER) return false;
        const RecordHeader next = _form.headerOf(bytes);
        if (!_form.isWellFormed(next)) return false;
        if (header.isWhole() && next.isWhole()) return true;
        if (isKnown(next, bytes.substr(HEADER)) && areNear(next.seconds, header.seconds)) return true;
        if (!areNear(next.seconds, _seconds.value_or(header.seconds))) return false;
        at += HEADER + next.captured;
    }
    return true;
}

/// Whether the packet of the record `at` bytes ahead is a message if it has that length.
bool RecordFinder::isSound(std::size_t at, uint32_t length) {
    if (length < IDENTIFIER_SIZE || length > MAX_PACKET) return false;
    if (_verified > RATION * (_window.position() + MAX_PACKET)) return false;
    const std::string_view packet = peek(at + HEADER, length).substr(0, length);
    if (packet.size() < length) return false;
    const Inspect::Result result = verifyBody(_protocol, identifierOf(packet), packet.substr(IDENTIFIER_SIZE), PROOF);
    // Only too many elements are looked through before they are refused where they begin.
    _verified += result.fault == Inspect::Fault::countBeyondBytes ? length : result.consumed;
    return bool(result);
}

/// Whether a record that begins later leads to the same place: a damaged length can skip records, and bytes can be
/// missing from this one.
bool RecordFinder::leadsTo(std::size_t size) {
    for (std::size_t at = std::max(HEADER, size - std::min(size, TAIL)); at + HEADER < size; ++at)
        if (at + HEADER + _form.headerOf(peek(at, HEADER)).captured == size && isRecord(at)) return true;
    return false;
}

/// Whether a record begins inside the next `size` bytes, after the first.
bool RecordFinder::holdsRecord(std::size_t size) {
    for (std::size_t at = 1; at < size; ++at)
        if (isRecord(at)) return true;
    return false;
}

} // namespace Capture
