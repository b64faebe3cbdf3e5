#include "Capture/Deframer.h"

#include <algorithm>
#include <utility>

#include "Capture/Errors.h"

namespace Capture {

using Kind = Framing::Field::Kind;

void Deframer::take(std::string_view bytes, const Origin& origin) {
    _frames.allowFor(bytes.size());
    _bytes.take(bytes, origin);
}

void Deframer::takeDatagram(std::string_view bytes, std::size_t missing, const Origin& origin) {
    _frames.allowFor(bytes.size());
    _frames.beginDatagram(missing);
    _bytes.takeDatagram(bytes, missing, origin);
    _isSearching = false;
    _isAtEnd = true;
}

void Deframer::goOn(uint64_t missing) {
    using Cause = Loss::Cause;
    if (!_isSearching) _loss = {Cause::gap, "", _bytes.here(), _bytes.originOf(UINT64_MAX), 0};
    if (_loss.cause != Cause::misfit) _loss.cause = Cause::gap;
    _loss.missing += missing;
    if (_loss.cause == Cause::gap)
        _loss.reason = counted(_loss.missing, "byte") + (_loss.missing == 1 ? " is missing" : " are missing");
    _bytes.passOver(missing);
    _isSearching = true;
    _isAtEnd = false;
    _sequence.reset();
}

void Deframer::beginInside() {
    _isSearching = true;
    _loss = {Loss::Cause::inside, "the capture does not hold the start of the stream"};
}

bool Deframer::next(DeframerContext& context, const Connection& connection, Packet& message) {
    if (advance(context, connection, message)) return true;
    _bytes.keep();
    return false;
}

/// As next().
bool Deframer::advance(DeframerContext& context, const Connection& connection, Packet& message) {
    for (;;) {
        if (_isOpen) {
            if (nextOfFrame(context, connection, message)) return true;
        } else if (_isSearching) {
            if (findStep(context, connection)) continue;
            if (_frames.isOfDatagrams()) close(context, connection);
            return false;
        } else if (!openFrame(context, connection)) {
            return false;
        }
    }
}

void Deframer::close(DeframerContext& context, const Connection& connection) {
    if (std::exchange(_isSearching, false)) tellLoss(context, connection, _loss, _bytes.here());
}

/// False if more bytes are needed.
bool Deframer::openFrame(DeframerContext& context, const Connection& connection) {
    const std::string_view bytes = _bytes.rest();
    if (bytes.empty()) return false;
    switch (_frames.frameAt(context.framing, bytes, _frame)) {
    case Fit::fits: {
        if (_isProven = _frames.isSound(context, bytes, _frame); _isProven) break;
        const Fit next = _frames.isFollowed(context, bytes.substr(_frame.size), _isAtEnd);
        if (next == Fit::needsMore) return false;
        if (next == Fit::fits && !_frames.holdsFrame(context, bytes.substr(0, _frame.size))) break;
        loseStep(Loss::Cause::misfit,
                 "its message does not verify, and no other follows it" + _frames.hint(context, bytes));
        return true;
    }
    case Fit::misfit: {
        std::string reason = _frames.misfit();
        loseStep(Loss::Cause::misfit, reason += _frames.hint(context, bytes));
        return true;
    }
    case Fit::needsMore:
        if (!_isAtEnd) return false;
        _isProven = false;
        if (_frame.size != 0 && _frames.missing() != 0) break; // the capture lacks the rest of it
        loseStep(Loss::Cause::end,
                 _frames.missing() != 0 ? "the capture lacks its fields" : "the stream ends inside it");
        return true;
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
    FramedMessage message;
    const Fit fit = isOver ? Fit::misfit : _frames.messageAt(context.framing, _bytes.rest(), _frame, _inner, message);
    if (fit == Fit::fits || (fit == Fit::needsMore && _frames.missing() != 0 && message.size != 0)) {
        emit(context, connection, message, packet);
        _inner += message.size;
        ++_taken;
        if (!isRow) closeFrame();
        return true;
    }
    if (!isOver || (isRow && _inner < _frame.end)) {
        std::string reason =
            isOver ? "left over after the messages of a frame: " : "no message in the rest of a frame: ";
        reason += counted(_frame.end - std::min(_inner, _frame.end), "byte");
        const uint64_t at = _bytes.here() + _inner;
        tellLoss(context, connection, {Loss::Cause::misfit, std::move(reason), at, _bytes.originOf(at), 0},
                 _bytes.here() + _frame.end);
    }
    closeFrame();
    return false;
}

void Deframer::closeFrame() {
    _isOpen = false;
    _bytes.advance(_frame.size);
}

void Deframer::emit(const DeframerContext& context, const Connection& connection, const FramedMessage& it,
                    Packet& packet) {
    const std::string_view frame = _bytes.rest();
    const std::size_t end = std::min(it.end, frame.size());
    if (context.framing.isAsInPackets()) {
        packet.bytes = frame.substr(it.begin - IDENTIFIER_SIZE, end - it.begin + IDENTIFIER_SIZE);
    } else {
        _message = identifierBytes(static_cast<uint16_t>(it.id));
        packet.bytes = _message.append(frame.substr(it.begin, end - it.begin));
    }
    const Origin& origin = _bytes.originOf(_bytes.here() + (end == 0 ? 0 : end - 1));
    packet.time = origin.time;
    packet.offset = origin.offset;
    packet.capture = origin.capture;
    packet.original = it.end - it.begin + IDENTIFIER_SIZE;
    packet.linkType = LinkType::MESSAGE;
    packet.isProven = _isProven && _taken == 0;
    packet.connection = &connection;
}

/// No frame begins here.
void Deframer::loseStep(Loss::Cause cause, std::string reason) {
    _loss = {cause, std::move(reason), _bytes.here(), _bytes.originOf(_bytes.here()), 0};
    _bytes.advance(1);
    _isSearching = true;
    _sequence.reset();
}

/// Goes on to the next frame that is believed; false if more bytes are needed.
bool Deframer::findStep(DeframerContext& context, const Connection& connection) {
    for (; !_bytes.rest().empty(); _bytes.advance(1)) {
        const std::string_view bytes = _bytes.rest();
        Frame frame;
        const Fit fit = _frames.frameAt(context.framing, bytes, frame);
        if (fit == Fit::needsMore && !_isAtEnd && _frames.mayBecomeFrame(context, bytes, frame)) return false;
        const Fit belief =
            fit == Fit::fits ? _frames.isBelieved(context, context.framing, bytes, _isAtEnd) : Fit::misfit;
        if (belief == Fit::needsMore) return false;
        if (belief == Fit::misfit) continue;
        tellLoss(context, connection, _loss, _bytes.here());
        _isSearching = false;
        return true;
    }
    return false;
}

/// Tells of the bytes from where the step was lost up to here.
void Deframer::tellLoss(DeframerContext& context, const Connection& connection, const Loss& loss, uint64_t here) const {
    const uint64_t skipped = here > loss.at + loss.missing ? here - loss.at - loss.missing : 0;
    if (loss.cause == Loss::Cause::inside && skipped == 0) return;
    Damage damage{loss.origin.offset, skipped, {}};
    damage.kind = loss.cause == Loss::Cause::gap ? "gap in a stream" : "no frame";
    damage.capture = loss.origin.capture;
    damage.reason = "byte " + std::to_string(loss.at) + " of " + (_frames.isOfDatagrams() ? "a datagram " : "")
                    + connection.way() + ": " + loss.reason;
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
            FramedMessage message;
            for (std::size_t at = _frame.begin; at < _frame.end; at += message.size, ++step)
                if (_frames.messageAt(context.framing, _bytes.rest(), _frame, at, message) != Fit::fits) break;
        }
    }
    _sequence = (_frame.sequence + step) & mask;
}

} // namespace Capture
