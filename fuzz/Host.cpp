// Bytes from strangers as hosts get them; the first one says how: as a stream of frames, as a file of a journal, as one that is
// written on, or as the payload of a message on a bus.
#include "fuzz/Input.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <string>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>

#include "Capture/Packet.h"
#include "Capture/PcapngForm.h"
#include "Capture/Verification.h"
#include "Host/Bus.h"
#include "Host/Frames.h"
#include "Host/Journal.h"
#include "Host/QLProtocol.h"

namespace {

/// In pieces whose sizes the bytes themselves tell: each frame lies in the stream, and memory grows with what came alone.
void frames(std::string_view stream) {
    constexpr size_t LONGEST = 1000;
    Host::FrameReader reader(LONGEST);
    uint64_t taken = 0;
    try {
        while (!stream.empty()) {
            const std::span<char> room = reader.room();
            const size_t size =
                std::min({stream.size(), room.size(), size_t{1} + static_cast<unsigned char>(stream[0])});
            std::ranges::copy(stream.substr(0, size), room.data());
            reader.received(size);
            stream.remove_prefix(size);
            for (Host::Frame frame; reader.next(frame);) {
                FUZZ_CHECK(frame.body.size() <= LONGEST);
                taken += frame.body.size() + Host::FrameReader::LENGTH_SIZE + Host::FrameReader::IDENTIFIER_SIZE;
                FUZZ_CHECK(taken == reader.offset());
            }
            FUZZ_CHECK(reader.memory() < 64 * 1024);
        }
    } catch (const Host::FrameError& error) {
        FUZZ_CHECK(error.offset() == taken);
    }
}

void journal(std::string_view file) {
    const int fd = memfd_create("journal", 0);
    FUZZ_CHECK(fd >= 0 && write(fd, file.data(), file.size()) == static_cast<ssize_t>(file.size()));
    Host::JournalFileReader reader("/proc/self/fd/" + std::to_string(fd));
    uint64_t last = 0;
    for (Host::Record record; reader.next(record); last = reader.position()) {
        FUZZ_CHECK(reader.position() > last && reader.position() <= file.size());
        const size_t at = file.substr(last, reader.position() - last).find(record.body);
        FUZZ_CHECK(at != std::string_view::npos);
    }
    FUZZ_CHECK(reader.damages() <= file.size());
    close(fd);
}

/// Of whole messages and of what damage left, as the bytes tell: pieces whose first byte is twice their length, and one more if it is
/// the body of a whole message. Returns how many of these there are.
uint64_t compose(std::string_view pieces, std::string& file, bool& hasDamage) {
    file = Capture::pcapngStart({});
    uint64_t messages = 0;
    while (!pieces.empty()) {
        const auto first = static_cast<unsigned char>(pieces[0]);
        const std::string_view piece = pieces.substr(1, first / 2);
        pieces.remove_prefix(1 + piece.size());
        if (first % 2 != 0) {
            Host::appendJournalBlock(file, {.id = 7, .body = piece, .time = 1, .sequence = ++messages});
        } else { // not as they are, so that no whole message of another input comes to stand there
            std::ranges::transform(piece, std::back_inserter(file), [](char c) { return static_cast<char>(c ^ 0x55); });
            file.append(-piece.size() % 4, '\0');
            hasDamage = true;
        }
    }
    return messages;
}

/// Who opens a journal with such a file goes on after what is whole in it, and nothing of that is lost.
void recovery(std::string_view pieces) {
    std::string file;
    bool hasDamage = false;
    const uint64_t messages = compose(pieces, file, hasDamage);
    static const std::string folder = "/dev/shm/fuzz-journal-" + std::to_string(getpid());
    std::filesystem::create_directory(folder);
    std::ofstream(folder + '/' + Host::JournalFile::nameOf(1, 1), std::ios::binary) << file;
    const auto sequences = [&] {
        std::vector<uint64_t> all;
        Host::JournalReader reader(folder);
        for (Host::Record record; reader.next(record);) all.push_back(record.sequence);
        return all;
    };
    std::vector<uint64_t> whole = sequences();
    FUZZ_CHECK(std::ranges::adjacent_find(whole, std::greater_equal{}) == whole.end());
    FUZZ_CHECK(whole.empty() || whole.back() <= messages);
    FUZZ_CHECK(hasDamage || whole.size() == messages);
    whole.push_back(Host::Journal(folder).append({.id = 1, .body = "next", .time = 1}));
    FUZZ_CHECK(sequences() == whole);
    std::filesystem::remove_all(folder);
}

/// What is handed over can be decoded; all else is counted.
void payload(std::string_view bytes) {
    if (bytes.size() < Capture::IDENTIFIER_SIZE) return;
    struct Once : Host::Source {
        Host::Record it;
        bool isTaken = false;
        bool next(Host::Record& record) override {
            record = it;
            return !std::exchange(isTaken, true);
        }
        bool wait(int) override { return false; }
    };
    static const Host::Topics topics = Host::qlTopics();
    auto source = std::make_unique<Once>();
    source->it = {.id = Capture::identifierOf(bytes), .body = bytes.substr(Capture::IDENTIFIER_SIZE), .sequence = 1};
    Host::Subscription subscription(topics, {}, std::move(source),
                                    {[](const Host::Record& record) {
                                         topics.key(record.id, record.body);
                                         static char block[1 << 20];
                                         Velmora::BufferAllocator alloc(block, sizeof block, "fuzz", "payload");
                                         const Inspect::Decoded message =
                                             Inspect::decode_verified(record.id, record.body, alloc);
                                         FUZZ_CHECK(message || Capture::isPad(topics.protocol(), record.id));
                                     },
                                     {}});
    subscription.poll(0);
    FUZZ_CHECK(subscription.delivered() + subscription.refused() == 1);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    initializeOnce();
    if (size == 0) return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    if (data[0] == 'f') frames(bytes);
    if (data[0] == 'j') journal(bytes);
    if (data[0] == 'r') recovery(bytes);
    if (data[0] == 'p') payload(bytes);
    return 0;
}
