// Any bytes as a capture, of whatever container and compression: it ends, and what comes out lies in the file, one packet
// after the other.
#include "fuzz/Input.h"

#include <string>

#include <sys/mman.h>
#include <unistd.h>

#include "Capture/Errors.h"
#include "Capture/Reader.h"

namespace {

void check(const std::string& path) {
    Capture::Reader capture(path);
    Capture::Packet packet;
    uint64_t last = 0;
    for (bool isThere = true; isThere;) {
        isThere = capture.next(packet);
        if (const Capture::Damage* const damage = capture.damage()) FUZZ_CHECK(!damage->text().empty());
        if (!isThere) break;
        FUZZ_CHECK(packet.offset >= last);
        FUZZ_CHECK(packet.bytes.size() <= Capture::MAX_PACKET && packet.bytes.size() <= packet.original);
        FUZZ_CHECK(packet.time >= 0 && packet.time >> 32 < 1'000'000'000);
        last = packet.offset + 1;
        for (const char c : packet.bytes) last += c & 0; // touches all of it
    }
    FUZZ_CHECK(capture.position() == capture.fileSize());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    initializeOnce();
    const int fd = memfd_create("capture", 0);
    FUZZ_CHECK(fd >= 0 && write(fd, data, size) == static_cast<ssize_t>(size));
    try {
        check("/proc/self/fd/" + std::to_string(fd));
    } catch (const Capture::DamagedCapture&) { // is said of the file as such
    }
    close(fd);
    return 0;
}
