#include "Capture/Deframer.h"

#include <algorithm>
#include <utility>

#include "Capture/Errors.h"
#include "Capture/NumberAt.h"
#include "Capture/Verification.h"
#include "Inspect/Reflection.h"

namespace Capture {

namespace {

using Kind = Framing::Field::Kind;

/// What has gathered in a burst is not kept for ever.
constexpr std::size_t USUAL = 64 * 1024;

bool isKnown(const Inspect::Protocol& protocol, uint64_t id) {
    return id <= UINT16_MAX && Inspect::reflect(protocol, static_cast<Velmora::MsgType_t>(id)) != nullptr;
}

} // namespace

void Deframer::take(std::string_view bytes, const Origin& origin) {
    if (_at >= _bytes.size() / 2) { // else more would be moved than is gone
        _bytes.erase(0, _at);
        _position += std::exchange(_at, 0);
        if (_bytes.size() < USUAL && _bytes.capacity() > 2 * USUAL) _bytes.shrink_to_fit();
        const auto isHeld = [&](const Mark& it) { return it.end > _position; };
        _marks.erase(_marks.begin(), std::ranges::find_if(_marks, isHeld));
    }
    _bytes.append(bytes);
    _marks.push_back({_position + _bytes.size(), origin});
}

void Deframer::takeDatagram(std::string_view bytes, std::size_t missing, const Origin& origin) {
    _bytes.assign(bytes);
    _position = _at = 0;
    _marks.assign(1, {bytes.size() + missing, origin});
    _isSearching = false;
    _isDatagram = _isAtEnd = true;
    _missing = missing;
}

void Deframer::goOn(uint64_t missing) {
    if (!_isSearching) {
        _loss = Loss::gap;
        _lostAt = _position + _at;
        _lostMissing = 0;
        _lostOrigin = _marks.empty() ? Origin() : _marks.back().origin;
    }
    if (_loss != Loss::misfit) _loss = Loss::gap;
    _position += _bytes.size() + missing;
    _lostMissing += missing;
    if (_loss == Loss::gap)
        _reason = counted(_lostMissing, "byte") + (_lostMissing == 1 ? " is missing" : " are missing");
    _bytes.clear();
    _marks.clear();
    _at = 0;
    _isSearching = true;
    _isAtEnd = false;
    _sequence.reset();
}

void Deframer::beginInside() {
    _isSearching = true;
    _loss = Loss::inside;
    _reason = "the capture does not hold the start of the stream";
}

bool Deframer::next(DeframerContext& context, const Connection& connection, Packet& message) {
    for (;;) {
        if (_isOpen) {
            if (nextOfFrame(context, connection, message)) return true;
        } else if (_isSearching) {
            if (findStep(context, connection)) continue;
            if (_isDatagram) close(context, connection);
            return false;
        } else if (!openFrame(context, connection)) {
            return false;
        }
    }
}

void Deframer::close(DeframerContext& context, const Connection& connection) {
    if (std::exchange(_isSearching, false)) tellLoss(context, connection);
}

Deframer::Fit Deframer::misfit(const Misfit& why) {
    _misfit = why;
    return Fit::misfit;
}

/// The frame that the bytes begin with.
Deframer::Fit Deframer::frameAt(const Framing& framing, std::string_view bytes, Frame& frame) {
    const std::size_t whole = _isDatagram ? bytes.size() + _missing : SIZE_MAX;
    const bool isOfMessages = framing.message() != nullptr;
    return rowAt(framing.frame(), bytes, whole, isOfMessages ? LONGEST : MAX_PACKET - IDENTIFIER_SIZE, frame);
}

/// The row of fields that the bytes begin with, with a body of `longest` bytes at most. Of `whole` bytes these are the ones
/// that are there. Of a row that needs more, what is known is told.
Deframer::Fit Deframer::rowAt(const Framing::Row& row, std::string_view bytes, std::size_t whole, std::size_t longest,
                              Frame& frame) {
    frame = {};
    const std::size_t around = row.before + row.after;
    if (around > whole) return misfit({"the fields of ", around, " bytes are more than the ", whole});
    uint64_t length = 0;
    for (const Framing::Field& field : row.fields) {
        if (field.isAfterBody) continue;
        if (field.at + field.size > bytes.size()) return Fit::needsMore;
        const uint64_t value = numberAt(bytes, field.at, field.size, field.isHighFirst);
        switch (field.kind) {
        case Kind::constant:
            if (value != field.value) return misfit({"the number ", value, " is not ", field.value});
            break;
        case Kind::length:
            length = value;
            break;
        case Kind::id:
            if (value > UINT16_MAX) return misfit({"the identifier ", value, " is more than ", UINT16_MAX});
            frame.id = value;
            break;
        case Kind::count:
            frame.count = value;
            break;
        case Kind::sequence:
            frame.sequence = value;
            break;
        case Kind::skip:
            break;
        }
    }
    if (bytes.size() < row.before) return Fit::needsMore;
    frame.begin = row.before;
    if (row.hasLength()) {
        const auto least = static_cast<uint64_t>(std::max<int64_t>(row.lengthOf(0), 0));
        if (length < least) return misfit({"the length ", length, " is less than ", least});
        const auto most = static_cast<uint64_t>(row.lengthOf(static_cast<int64_t>(longest)));
        if (length > most) return misfit({"the length ", length, " is more than ", most});
        frame.end = frame.begin + static_cast<std::size_t>(std::max<int64_t>(row.bodyOf(length), 0));
    } else {
        frame.end = whole - row.after;
    }
    if (frame.end + row.after > whole)
        return misfit({"the length ", length, " is more than what follows, ", whole - around});
    frame.size = frame.end + row.after;
    if (frame.size > bytes.size()) return Fit::needsMore;
    for (const Framing::Field& field : row.fields) {
        if (!field.isAfterBody) continue;
        const uint64_t value = numberAt(bytes, frame.end + field.at, field.size, field.isHighFirst);
        if (field.kind == Kind::sequence) frame.sequence = value;
        if (field.kind == Kind::constant && value != field.value)
            return misfit({"the number ", value, " is not ", field.value});
    }
    return Fit::fits;
}

/// The message `at` bytes inside the frame that the bytes begin with.
Deframer::Fit Deframer::messageAt(const Framing& framing, std::string_view bytes, const Frame& frame, std::size_t at,
                                  Message& message) {
    if (framing.message() == nullptr) {
        message = {frame.size, frame.begin, frame.end, frame.id};
        return frame.end <= bytes.size() ? Fit::fits : Fit::needsMore;
    }
    Frame row;
    const std::size_t whole = frame.end - at;
    const std::string_view there = bytes.substr(std::min(at, bytes.size()), whole);
    const Fit fit = rowAt(*framing.message(), there, whole, MAX_PACKET - IDENTIFIER_SIZE, row);
    message = {row.size, at + row.begin, at + row.end, row.id};
    return fit;
}

/// Whether the first message of the frame that the bytes begin with is known and verifies.
bool Deframer::isSound(DeframerContext& context, const Framing& framing, std::string_view bytes, const Frame& frame) {
    Message message;
    if (messageAt(framing, bytes, frame, frame.begin, message) != Fit::fits || !isKnown(context.protocol, message.id))
        return false;
    const std::string_view body = bytes.substr(message.begin, message.end - message.begin);
    const Inspect::Result result =
        verifyBody(context.protocol, static_cast<Velmora::MsgType_t>(message.id), body, PROOF);
    _verified += workOf(result, body.size());
    return bool(result);
}

/// Whether the fields of a frame in front of its messages fit there.
Deframer::Fit Deframer::headerAt(const Framing& framing, std::string_view bytes, Frame& frame) {
    const Fit fit = frameAt(framing, bytes, frame);
    return frame.size != 0 ? Fit::fits : fit;
}

/// Whether the bytes, perhaps all that come, begin with a frame that is sound; if it is short, another must be able to follow.
Deframer::Fit Deframer::isBelieved(DeframerContext& context, const Framing& framing, std::string_view bytes,
                                   bool isEnd) {
    constexpr uint64_t ration = 8; // for each byte of the stream: whoever sends it chooses the lengths
    constexpr std::size_t isShort = 16;
    Frame frame, other;
    if (_verified > ration * (_position + _bytes.size() + MAX_PACKET)) return Fit::misfit;
    if (frameAt(framing, bytes, frame) != Fit::fits || !isSound(context, framing, bytes, frame)) return Fit::misfit;
    if (frame.size >= isShort) return Fit::fits;
    if (frame.size == bytes.size()) return isEnd ? Fit::fits : Fit::needsMore;
    const Fit next = headerAt(framing, bytes.substr(frame.size), other);
    return next == Fit::needsMore && isEnd ? Fit::fits : next;
}

/// Whether a frame stands inside those bytes, after the first.
bool Deframer::holdsFrame(DeframerContext& context, std::string_view bytes) {
    while (bytes.size() > 1) {
        bytes.remove_prefix(1);
        if (isBelieved(context, context.framing, bytes, true) == Fit::fits) return true;
    }
    return false;
}

/// Whether the bytes after a frame begin with the start of another one, of a known message, or nothing follows.
Deframer::Fit Deframer::isFollowed(DeframerContext& context, std::string_view bytes) {
    if (bytes.empty()) return _isAtEnd ? Fit::fits : Fit::needsMore;
    Frame frame;
    const Fit fit = headerAt(context.framing, bytes, frame);
    if (fit != Fit::fits) return fit == Fit::needsMore && _isAtEnd ? Fit::misfit : fit;
    Message message;
    const Fit first = messageAt(context.framing, bytes, frame, frame.begin, message);
    if (first == Fit::needsMore && message.size == 0 && !_isAtEnd) return first; // not even its fields are there
    return isKnown(context.protocol, message.id) ? Fit::fits : Fit::misfit;
}

/// Whether a frame of which bytes are still to come may be one.
bool Deframer::mayBecomeFrame(DeframerContext& context, std::string_view bytes, const Frame& frame) {
    if (frame.size == 0) return true; // not even its header is there
    Message message;
    const Fit fit = messageAt(context.framing, bytes, frame, frame.begin, message);
    return fit != Fit::misfit && (isKnown(context.protocol, message.id) || message.begin == message.end);
}

/// False if more bytes are needed.
bool Deframer::openFrame(DeframerContext& context, const Connection& connection) {
    const std::string_view bytes = rest(_at);
    if (bytes.empty()) return false;
    switch (frameAt(context.framing, bytes, _frame)) {
    case Fit::fits: {
        const uint64_t before = _verified;
        const bool isSure = isSound(context, context.framing, bytes, _frame);
        _verified = before; // what is in step is verified once
        const Fit next = isSure ? Fit::fits : isFollowed(context, bytes.substr(_frame.size));
        if (next == Fit::needsMore) return false;
        if (next == Fit::fits && (isSure || !holdsFrame(context, bytes.substr(0, _frame.size)))) break;
        loseStep(Loss::misfit, "its message does not verify, and no other follows it" + hint(context));
        return true;
    }
    case Fit::misfit: {
        std::string reason = _misfit.what + std::to_string(_misfit.value) + _misfit.is + std::to_string(_misfit.limit);
        loseStep(Loss::misfit, reason += hint(context));
        return true;
    }
    case Fit::needsMore:
        if (!_isAtEnd) return false;
        if (_frame.size == 0 || _missing == 0) {
            loseStep(Loss::end, _missing != 0 ? "the capture lacks its fields" : "the stream ends inside it");
            return true;
        }
        break; // the capture lacks the rest of it
    }
    _isOpen = true;
    _inner = _frame.begin;
    _taken = 0;
    checkSequence(context, connection);
    return true;
}

/// The next message of the frame that is open; closes it if there is none.
bool Deframer::nextOfFrame(DeframerContext& context, const Connection& connection, Packet& packet) {
    const bool isRow = context.framing.message() != nullptr;
    const bool isOver = isRow ? (_frame.count != 0 ? _taken == _frame.count : _inner >= _frame.end) : _taken == 1;
    Message message;
    const Fit fit = isOver ? Fit::misfit : messageAt(context.framing, rest(_at), _frame, _inner, message);
    if (fit == Fit::fits || (fit == Fit::needsMore && _missing != 0 && message.size != 0)) {
        _inner += message.size;
        ++_taken;
        emit(context, connection, message, packet);
        return true;
    }
    if (!isOver || (isRow && _inner < _frame.end)) {
        std::string reason =
            isOver ? "left over after the messages of a frame: " : "no message in the rest of a frame: ";
        reason += counted(_frame.end - std::min(_inner, _frame.end), "byte");
        _lostAt = _position + _at + _inner;
        _lostMissing = 0;
        _lostOrigin = originOf(_lostAt);
        _loss = Loss::misfit;
        _reason = std::move(reason);
        tellLoss(context, connection);
    }
    closeFrame();
    return false;
}

void Deframer::closeFrame() {
    _isOpen = false;
    _at = std::min(_at + _frame.size, _bytes.size());
}

void Deframer::emit(DeframerContext& context, const Connection& connection, const Message& it, Packet& packet) {
    const std::string_view frame = rest(_at);
    const std::size_t end = std::min(it.end, frame.size());
    if (context.framing.isAsInPackets()) {
        packet.bytes = frame.substr(it.begin - IDENTIFIER_SIZE, end - it.begin + IDENTIFIER_SIZE);
    } else {
        _message = identifierBytes(static_cast<uint16_t>(it.id));
        packet.bytes = _message.append(frame.substr(it.begin, end - it.begin));
    }
    const Origin& origin = originOf(_position + _at + (end == 0 ? 0 : end - 1));
    packet.time = origin.time;
    packet.offset = origin.offset;
    packet.capture = origin.capture;
    packet.original = it.end - it.begin + IDENTIFIER_SIZE;
    packet.linkType = LinkType::MESSAGE;
    packet.connection = &connection;
}

/// The frame at _at is none.
void Deframer::loseStep(Loss loss, std::string reason) {
    _loss = loss;
    _reason = std::move(reason);
    _lostAt = _position + _at;
    _lostMissing = 0;
    _lostOrigin = originOf(_lostAt);
    ++_at;
    _isSearching = true;
    _sequence.reset();
}

/// Goes on to the next frame that is believed; false if more bytes are needed.
bool Deframer::findStep(DeframerContext& context, const Connection& connection) {
    for (; _at < _bytes.size(); ++_at) {
        const std::string_view bytes = rest(_at);
        Frame frame;
        const Fit fit = frameAt(context.framing, bytes, frame);
        if (fit == Fit::needsMore && !_isAtEnd && mayBecomeFrame(context, bytes, frame)) return false;
        const Fit belief = fit == Fit::fits ? isBelieved(context, context.framing, bytes, _isAtEnd) : Fit::misfit;
        if (belief == Fit::needsMore) return false;
        if (belief == Fit::misfit) continue;
        tellLoss(context, connection);
        _isSearching = false;
        return true;
    }
    return false;
}

/// Tells of the bytes from where the step was lost up to here.
void Deframer::tellLoss(DeframerContext& context, const Connection& connection) {
    const uint64_t here = _position + (_isOpen ? _at + _frame.end : _at);
    const uint64_t skipped = here > _lostAt + _lostMissing ? here - _lostAt - _lostMissing : 0;
    if (_loss == Loss::inside && skipped == 0) return;
    Damage damage{_lostOrigin.offset, skipped, {}};
    damage.kind = _loss == Loss::gap ? "gap in a stream" : "no frame";
    damage.capture = _lostOrigin.capture;
    damage.reason = "byte " + std::to_string(_lostAt) + " of " + (_isDatagram ? "a datagram " : "") + connection.way()
                    + ": " + _reason;
    context.faults.tell(std::move(damage));
}

void Deframer::checkSequence(DeframerContext& context, const Connection& connection) {
    const auto& fields = context.framing.frame().fields;
    const auto field = std::ranges::find(fields, Kind::sequence, &Framing::Field::kind);
    if (field == fields.end()) return;
    const uint64_t mask = field->size == 8 ? UINT64_MAX : (uint64_t(1) << 8 * field->size) - 1;
    if (_sequence && *_sequence != _frame.sequence)
        context.faults.tell("gap in the sequence", connection.way() + ": " + std::to_string(_frame.sequence)
                                                       + " instead of " + std::to_string(*_sequence));
    uint64_t step = 1;
    if (context.framing.countsMessages()) {
        step = _frame.count;
        if (step == 0) { // to be counted
            Message message;
            for (std::size_t at = _frame.begin; at < _frame.end; at += message.size, ++step)
                if (messageAt(context.framing, rest(_at), _frame, at, message) != Fit::fits) break;
        }
    }
    _sequence = (_frame.sequence + step) & mask;
}

/// What framing would fit instead.
std::string Deframer::hint(DeframerContext& context) {
    if (context.hints == 0) return "";
    --context.hints;
    for (const Framing& it : context.framing.relatives())
        if (isBelieved(context, it, rest(_at), true) == Fit::fits) return "; '" + it.text() + "' would fit";
    return "";
}

const Origin& Deframer::originOf(uint64_t position) const {
    const auto mark = std::ranges::find_if(_marks, [&](const Mark& it) { return it.end > position; });
    return mark != _marks.end() ? mark->origin : _marks.back().origin;
}

} // namespace Capture
