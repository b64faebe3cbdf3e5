#include "Host/Frames.h"

#include <algorithm>
#include <cstring>

namespace Host {

namespace {

constexpr size_t HEAD = FrameReader::LENGTH_SIZE + FrameReader::IDENTIFIER_SIZE;

template <size_t SIZE>
uint32_t number(const char* p) {
    uint32_t value = 0;
    for (size_t i = 0; i < SIZE; ++i) value |= uint32_t{static_cast<unsigned char>(p[i])} << 8 * i;
    return value;
}

void put(char* p, MsgType_t id, size_t body) {
    const auto length = static_cast<uint32_t>(FrameReader::IDENTIFIER_SIZE + body);
    for (size_t i = 0; i < FrameReader::LENGTH_SIZE; ++i) *p++ = static_cast<char>(length >> 8 * i);
    for (size_t i = 0; i < FrameReader::IDENTIFIER_SIZE; ++i) *p++ = static_cast<char>(id >> 8 * i);
}

} // namespace

FrameReader::FrameReader(size_t longestBody) : _longestBody(longestBody) {}

std::span<char> FrameReader::room() {
    if (_begin != 0) { // frames are taken before more is asked for, so that hardly anything is moved
        std::memmove(_buffer.data(), _buffer.data() + _begin, _end - _begin);
        _end -= _begin;
        _begin = 0;
    }
    if (_buffer.size() - _end < ROOM)
        _buffer.resize(std::max(_end + ROOM, std::min(2 * _end, HEAD + _longestBody + ROOM)));
    return {_buffer.data() + _end, _buffer.size() - _end};
}

void FrameReader::received(size_t size) { _end += std::min(size, _buffer.size() - _end); }

bool FrameReader::next(Frame& frame) {
    const size_t there = _end - _begin;
    if (there < LENGTH_SIZE) return false;
    const char* const p = _buffer.data() + _begin;
    const size_t length = number<LENGTH_SIZE>(p);
    if (length < IDENTIFIER_SIZE || length - IDENTIFIER_SIZE > _longestBody)
        throw FrameError(_offset, "frame at byte " + std::to_string(_offset) + " of the stream: length "
                                      + std::to_string(length) + ", not " + std::to_string(IDENTIFIER_SIZE) + " to "
                                      + std::to_string(IDENTIFIER_SIZE + _longestBody));
    if (there - LENGTH_SIZE < length) return false;
    frame.id = static_cast<MsgType_t>(number<IDENTIFIER_SIZE>(p + LENGTH_SIZE));
    frame.body = {p + HEAD, length - IDENTIFIER_SIZE};
    _begin += LENGTH_SIZE + length;
    _offset += LENGTH_SIZE + length;
    return true;
}

void FrameWriter::append(MsgType_t id, std::string_view body) {
    if (body.size() > _longestBody)
        throw std::length_error("FrameWriter: body of " + std::to_string(body.size()) + " bytes, more than "
                                + std::to_string(_longestBody));
    const size_t at = _buffer.size();
    _buffer.resize(at + HEAD + body.size());
    put(_buffer.data() + at, id, body.size());
    std::ranges::copy(body, _buffer.data() + at + HEAD);
}

Inspect::Encoded FrameWriter::append(const Inspect::Protocol& protocol, MsgType_t id, const void* message) {
    const size_t at = _buffer.size();
    size_t body = std::min<size_t>(_longestBody, 1024); // mostly enough; else the refusal tells how much is
    for (;;) {
        _buffer.resize(at + HEAD + body);
        char* const begin = _buffer.data() + at + HEAD;
        Inspect::Encoded encoded = Inspect::encode_checked(protocol, id, message, begin, begin + body);
        if (encoded.refusal == Inspect::Refusal::tooSmall && encoded.size <= _longestBody) {
            body = encoded.size;
            continue;
        }
        _buffer.resize(encoded ? at + HEAD + encoded.size : at);
        if (encoded) put(_buffer.data() + at, id, encoded.size);
        return encoded;
    }
}

void FrameWriter::sent(size_t size) {
    _buffer.erase(_buffer.begin(), _buffer.begin() + static_cast<std::ptrdiff_t>(std::min(size, _buffer.size())));
}

} // namespace Host
