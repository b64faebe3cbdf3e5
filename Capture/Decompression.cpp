#include "Capture/Decompression.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <string>

#include <zlib.h>
#include <zstd.h>

#include "Capture/Errors.h"

namespace Capture {

namespace {

constexpr std::string_view GZIP_START("\x1F\x8B\x08", 3);
constexpr std::string_view ZSTD_START("\x28\xB5\x2F\xFD", 4);
constexpr std::string_view ZSTD_SKIPPABLE("\x2A\x4D\x18", 3); ///< after a byte from 0x50 to 0x5F

constexpr std::size_t INPUT = 256 * 1024;
/// Where a part is cut, the start of the next one is read as its end before that shows. So far back it is looked for, and
/// in all no more than so many times the bytes of the file.
constexpr std::size_t KEPT = 64 * 1024;
constexpr uint64_t RATION = 8;
constexpr uint64_t MOST_TIMES = 1000, MOST_BYTES = 256 * 1024 * 1024;
constexpr int MOST_WINDOW = 27;                     ///< its logarithm
constexpr uint32_t MOST_SKIPPED = 16 * 1024 * 1024; ///< what says that it is longer is taken for damage

/// Whether the bytes are the start of `start`, as far as they go.
bool beginAs(std::string_view bytes, std::string_view start) {
    const std::size_t size = std::min(bytes.size(), start.size());
    return bytes.substr(0, size) == start.substr(0, size);
}

bool mayBeSkippable(std::string_view bytes) {
    return bytes.empty() || ((bytes[0] & 0xF0) == 0x50 && beginAs(bytes.substr(1), ZSTD_SKIPPABLE));
}

/// One format: how its parts (members, frames) begin, and how they are read.
class Format {
  public:
    enum class State { inside, atEnd, failed };

    virtual ~Format() = default;
    virtual const char* name() const = 0;

    /// Bytes that show whether a part begins.
    virtual std::size_t startSize() const = 0;
    virtual bool isStart(std::string_view bytes) const = 0;
    /// Bytes of what begins here and is to be passed over.
    virtual std::size_t skippable(std::string_view) const { return 0; }

    virtual void begin() = 0;
    /// Bytes that the next step takes, or all that there are.
    virtual std::size_t wanted() const = 0;
    /// Turns bytes of `in` into bytes of `out`, and leaves of both what was not used.
    virtual State step(std::string_view& in, char*& out, std::size_t& size) = 0;
    virtual std::string fault() const = 0; ///< after it failed
};

class Gzip : public Format {
  public:
    Gzip() {
        constexpr int windowOfGzip = 15 + 16;
        if (inflateInit2(&_stream, windowOfGzip) != Z_OK) throw std::bad_alloc();
    }
    ~Gzip() override { inflateEnd(&_stream); }
    Gzip(const Gzip&) = delete;
    Gzip& operator=(const Gzip&) = delete;

    const char* name() const override { return "gzip"; }
    std::size_t startSize() const override { return 10; }
    bool isStart(std::string_view bytes) const override {
        const auto at = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
        return bytes.starts_with(GZIP_START) && at(3) < 0x20 && at(8) <= 4 && (at(9) <= 13 || at(9) == 255);
    }
    void begin() override { inflateReset(&_stream); }
    std::size_t wanted() const override { return _isFull ? 0 : 1; }
    State step(std::string_view& in, char*& out, std::size_t& size) override {
        constexpr std::size_t most = std::numeric_limits<uInt>::max();
        _stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(in.data()));
        _stream.avail_in = static_cast<uInt>(std::min(in.size(), most));
        _stream.next_out = reinterpret_cast<Bytef*>(out);
        _stream.avail_out = static_cast<uInt>(std::min(size, most));
        const int result = inflate(&_stream, Z_NO_FLUSH);
        in.remove_prefix(static_cast<std::size_t>(reinterpret_cast<const char*>(_stream.next_in) - in.data()));
        size -= static_cast<std::size_t>(reinterpret_cast<char*>(_stream.next_out) - out);
        out = reinterpret_cast<char*>(_stream.next_out);
        _isFull = size == 0;
        if (result == Z_MEM_ERROR) throw std::bad_alloc();
        if (result == Z_STREAM_END) return State::atEnd;
        return result == Z_OK || result == Z_BUF_ERROR ? State::inside : State::failed;
    }
    std::string fault() const override { return _stream.msg != nullptr ? _stream.msg : "a dictionary is missing"; }

  private:
    z_stream _stream{};
    bool _isFull = false; ///< there may be more without more input
};

class Zstd : public Format {
  public:
    Zstd() : _context(ZSTD_createDCtx()) {
        if (_context == nullptr) throw std::bad_alloc();
        ZSTD_DCtx_setParameter(_context, ZSTD_d_windowLogMax, MOST_WINDOW);
    }
    ~Zstd() override { ZSTD_freeDCtx(_context); }
    Zstd(const Zstd&) = delete;
    Zstd& operator=(const Zstd&) = delete;

    const char* name() const override { return "zstd"; }
    std::size_t startSize() const override { return 8; }
    bool isStart(std::string_view bytes) const override { return bytes.starts_with(ZSTD_START); }
    std::size_t skippable(std::string_view bytes) const override {
        if (bytes.size() < 8 || !mayBeSkippable(bytes)) return 0;
        uint32_t size;
        std::memcpy(&size, bytes.data() + 4, sizeof(size));
        return size <= MOST_SKIPPED ? 8 + size : 0;
    }
    void begin() override { _wanted = ZSTD_initDStream(_context); }
    std::size_t wanted() const override { return _isFull ? 0 : _wanted; }
    /// A block at a time: of a call that fails nothing comes out, not even the good blocks before the bad one.
    State step(std::string_view& in, char*& out, std::size_t& size) override {
        ZSTD_inBuffer input{in.data(), std::min(in.size(), wanted()), 0};
        ZSTD_outBuffer output{out, size, 0};
        _wanted = ZSTD_decompressStream(_context, &output, &input);
        in.remove_prefix(input.pos);
        out += output.pos;
        size -= output.pos;
        _isFull = size == 0;
        if (_wanted == 0) return State::atEnd;
        return ZSTD_isError(_wanted) ? State::failed : State::inside;
    }
    std::string fault() const override { return ZSTD_getErrorName(_wanted); }

  private:
    ZSTD_DCtx* const _context;
    std::size_t _wanted = 0; ///< or an error
    bool _isFull = false;    ///< there may be more without more input
};

class Decompressor : public ByteSource {
  public:
    Decompressor(std::string_view start, FileSource& file, std::unique_ptr<Format> format)
        : _file(file),
          _format(std::move(format)),
          _size(KEPT + std::max(INPUT, start.size())),
          _buffer(std::make_unique_for_overwrite<char[]>(_size)),
          _in(_buffer.get(), start.size()) {
        start.copy(_buffer.get(), start.size());
    }

    std::size_t read(char* bytes, std::size_t size) override {
        char* out = bytes;
        while (out == bytes && (_isInside || find())) {
            while (_in.size() < _format->wanted() && fill()) {
            }
            if (_in.size() < _format->wanted()) {
                fault("is not complete", 0);
                _isInside = false;
                goBack();
                continue;
            }
            const Format::State state = _format->step(_in, out, size);
            _isInside = state == Format::State::inside;
            if (out != bytes) _isTold = false;
            if (state != Format::State::failed) continue;
            fault("is damaged: " + _format->fault(), out - bytes);
            goBack();
        }
        _position += static_cast<uint64_t>(out - bytes);
        if (_position > MOST_BYTES && _position / MOST_TIMES > _file.bytesRead())
            throw DamagedCapture(_file.name() + ": " + counted(_file.bytesRead(), "byte") + " of " + _format->name()
                                 + " become more than " + std::to_string(MOST_TIMES) + " times as many: refused");
        return static_cast<std::size_t>(out - bytes);
    }

  private:
    /// Goes on to where the next part begins; false at the end. What is passed over is told, but for zeros, with which
    /// files are padded.
    bool find() {
        std::size_t skippable = 0;
        for (;; _in.remove_prefix(1)) {
            while (_in.size() < _format->startSize() && fill()) {
            }
            if (_in.empty()) return false;
            if (skippable != 0) {
                --skippable;
                continue;
            }
            if (_format->isStart(_in)) break;
            if ((skippable = _format->skippable(_in)) != 0) {
                --skippable; // with this byte
                continue;
            }
            if (_in[0] != '\0') fault("is followed by what is none", 0);
        }
        _start = position();
        _format->begin();
        return _isInside = true;
    }

    /// Leaves a part that is damaged for what may be the start of another, which comes after its own.
    void goBack() {
        const auto used = static_cast<std::size_t>(_in.data() - _buffer.get()); // of the buffer
        std::size_t back = std::min<uint64_t>(used, position() - _start);
        if (back == 0) return _in.remove_prefix(std::min<std::size_t>(1, _in.size()));
        if ((_gone += --back) > RATION * _file.bytesRead()) return;
        _in = std::string_view(_in.data() - back, _in.size() + back);
    }

    /// Reads more input; false at the end of the file.
    bool fill() {
        const auto used = static_cast<std::size_t>(_in.data() - _buffer.get());
        if (used > KEPT) {
            std::copy(_in.begin() - KEPT, _in.end(), _buffer.get());
            _in = std::string_view(_buffer.get() + KEPT, _in.size());
        }
        const auto end = static_cast<std::size_t>(_in.data() + _in.size() - _buffer.get());
        const std::size_t got = _file.read(_buffer.get() + end, _size - end);
        _in = std::string_view(_in.data(), _in.size() + got);
        return got != 0;
    }

    uint64_t position() const { return _file.bytesRead() - _in.size(); } ///< in the file

    /// What is wrong is told once until something comes out again.
    void fault(const std::string& what, std::ptrdiff_t after) {
        if (!_isTold)
            faults.push_back({_position + static_cast<uint64_t>(after), std::string("the file's ") + _format->name()
                                                                            + " data " + what + ", at its byte "
                                                                            + std::to_string(position())});
        _isTold = true;
    }

    FileSource& _file;
    const std::unique_ptr<Format> _format;
    const std::size_t _size; ///< of the buffer
    const std::unique_ptr<char[]> _buffer;
    std::string_view _in; ///< of the buffer, what was not used yet
    bool _isInside = false;
    uint64_t _start = 0; ///< of the part, in the file
    uint64_t _gone = 0;  ///< bytes that were gone back
    bool _isTold = false;
    uint64_t _position = 0; ///< in the contents
};

} // namespace

bool isCompressed(std::string_view start) {
    return start.starts_with(GZIP_START) || start.starts_with(ZSTD_START)
           || (start.size() >= ZSTD_START.size() && mayBeSkippable(start));
}

bool mayBeCompressed(std::string_view start) {
    return beginAs(start, GZIP_START) || beginAs(start, ZSTD_START) || mayBeSkippable(start);
}

std::unique_ptr<ByteSource> decompressor(std::string_view start, FileSource& file) {
    std::unique_ptr<Format> format;
    if (start.starts_with(GZIP_START))
        format = std::make_unique<Gzip>();
    else
        format = std::make_unique<Zstd>();
    return std::make_unique<Decompressor>(start, file, std::move(format));
}

} // namespace Capture
