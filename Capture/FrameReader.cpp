#include "Capture/FrameReader.h"

#include <algorithm>

#include "Capture/NumberAt.h"

namespace Capture {

using Kind = Framing::Field::Kind;

void FrameReader::beginDatagram(std::size_t missing) {
    _isDatagram = true;
    _missing = missing;
}

Fit FrameReader::misfit(const Misfit& why) {
    _misfit = why;
    return Fit::misfit;
}

std::string FrameReader::misfit() const {
    return _misfit.what + std::to_string(_misfit.value) + _misfit.is + std::to_string(_misfit.limit);
}

Fit FrameReader::frameAt(const Framing& framing, std::string_view bytes, Frame& frame) {
    const std::size_t whole = _isDatagram ? bytes.size() + _missing : SIZE_MAX;
    const bool isOfMessages = framing.message() != nullptr;
    return rowAt(framing.frame(), bytes, whole, isOfMessages ? LONGEST : MAX_PACKET - IDENTIFIER_SIZE, frame);
}

Fit FrameReader::headerAt(const Framing& framing, std::string_view bytes, Frame& frame) {
    const Fit fit = frameAt(framing, bytes, frame);
    return frame.size != 0 ? Fit::fits : fit;
}

Fit FrameReader::messageAt(const Framing& framing, std::string_view bytes, const Frame& frame, std::size_t at,
                           FramedMessage& message) {
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

/// The row of fields that the bytes begin with, with a body of `longest` bytes at most. Of `whole` bytes these are the ones
/// that are there. Of a row that needs more, what is known is told.
Fit FrameReader::rowAt(const Framing::Row& row, std::string_view bytes, std::size_t whole, std::size_t longest,
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
    if (const Fit fit = endOf(row, length, whole, longest, frame); fit != Fit::fits) return fit;
    if (frame.size > bytes.size()) return Fit::needsMore;
    if (row.after == 0) return Fit::fits;
    for (const Framing::Field& field : row.fields) {
        if (!field.isAfterBody) continue;
        const uint64_t value = numberAt(bytes, frame.end + field.at, field.size, field.isHighFirst);
        if (field.kind == Kind::sequence) frame.sequence = value;
        if (field.kind == Kind::constant && value != field.value)
            return misfit({"the number ", value, " is not ", field.value});
    }
    return Fit::fits;
}

/// Where the body and the row end, by the length if there is one.
Fit FrameReader::endOf(const Framing::Row& row, uint64_t length, std::size_t whole, std::size_t longest, Frame& frame) {
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
        return misfit({"the length ", length, " is more than what follows, ", whole - row.before - row.after});
    frame.size = frame.end + row.after;
    return Fit::fits;
}

} // namespace Capture
