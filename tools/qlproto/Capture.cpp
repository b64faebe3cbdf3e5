#include "tools/qlproto/Capture.h"

#include <cerrno>
#include <cstring>

#include <fmt/format.h>

#include "tools/qlproto/Errors.h"

namespace qlproto {

namespace {

constexpr int LINK_TYPE = DLT_USER0;
constexpr std::size_t FILE_BUFFER = 256 * 1024;
constexpr int64_t NANOSECONDS = 1'000'000'000;

std::string displayed(const std::string& path, const char* standard) { return path == "-" ? standard : path; }

} // namespace

CaptureReader::CaptureReader(const std::string& path) : _path(displayed(path, "standard input")) {
    _file = path == "-" ? stdin : std::fopen(path.c_str(), "rb");
    if (_file == nullptr) throw IoError(fmt::format("{}: {}", _path, std::strerror(errno)));
    std::setvbuf(_file, nullptr, _IOFBF, FILE_BUFFER);

    char error[PCAP_ERRBUF_SIZE] = "";
    // Times of either resolution are read; they come out in nanoseconds.
    _pcap.reset(pcap_fopen_offline_with_tstamp_precision(_file, PCAP_TSTAMP_PRECISION_NANO, error));
    if (!_pcap) {
        const bool unreadable = std::ferror(_file) != 0;
        if (_file != stdin) std::fclose(_file);
        if (unreadable) throw IoError(fmt::format("{}: {}", _path, error));
        throw DamagedCapture(fmt::format("{}: not a capture: {}", _path, error));
    }
    if (pcap_datalink(_pcap.get()) != LINK_TYPE) {
        throw DamagedCapture(
            fmt::format("{}: link type {} instead of USER0 ({})", _path, pcap_datalink(_pcap.get()), LINK_TYPE));
    }
}

bool CaptureReader::next(Packet& packet) {
    pcap_pkthdr* header = nullptr;
    const u_char* bytes = nullptr;
    switch (pcap_next_ex(_pcap.get(), &header, &bytes)) {
    case 1:
        break;
    case PCAP_ERROR_BREAK:
        return false; // the end of the file
    default:
        fail(pcap_geterr(_pcap.get()));
    }
    // Both fields are unsigned in the file. The second holds nanoseconds, whatever its name.
    packet.time = static_cast<uint32_t>(header->ts.tv_sec) * NANOSECONDS + static_cast<uint32_t>(header->ts.tv_usec);
    packet.bytes = {reinterpret_cast<const char*>(bytes), header->caplen};
    _originalLength = header->len;
    return true;
}

void CaptureReader::fail(const char* what) const {
    const std::string text = fmt::format("{}: {}", _path, what);
    if (std::ferror(_file) != 0) throw IoError(text);
    throw DamagedCapture(text);
}

CaptureWriter::CaptureWriter(const std::string& path) : _path(displayed(path, "standard output")) {
    std::FILE* file = path == "-" ? stdout : std::fopen(path.c_str(), "wb");
    if (file == nullptr) throw IoError(fmt::format("{}: {}", _path, std::strerror(errno)));
    std::setvbuf(file, nullptr, _IOFBF, FILE_BUFFER);

    _pcap.reset(
        pcap_open_dead_with_tstamp_precision(LINK_TYPE, static_cast<int>(MAX_PACKET), PCAP_TSTAMP_PRECISION_NANO));
    _dump.reset(pcap_dump_fopen(_pcap.get(), file));
    if (!_dump) throw IoError(fmt::format("{}: {}", _path, pcap_geterr(_pcap.get())));
}

void CaptureWriter::packet(const Packet& packet) {
    pcap_pkthdr header{};
    header.ts.tv_sec = packet.time / NANOSECONDS;
    header.ts.tv_usec = packet.time % NANOSECONDS; // the field holds nanoseconds, whatever its name
    header.caplen = header.len = static_cast<bpf_u_int32>(packet.bytes.size());
    pcap_dump(reinterpret_cast<u_char*>(_dump.get()), &header, reinterpret_cast<const u_char*>(packet.bytes.data()));
    if (std::ferror(pcap_dump_file(_dump.get())) != 0) fail(); // the call above reports nothing itself
}

void CaptureWriter::close() {
    if (pcap_dump_flush(_dump.get()) != 0) fail();
}

void CaptureWriter::fail() const {
    if (errno == EPIPE) throw ClosedPipe();
    throw IoError(fmt::format("{}: {}", _path, std::strerror(errno)));
}

} // namespace qlproto
