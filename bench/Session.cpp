#include "bench/Session.h"

#include "Inspect/Checked.h"
#include "Inspect/SafeText.h"
#include "bench/Measure.h"
#include "tools/qlproto/trading/session/Session.h"

namespace bench {
namespace {

constexpr uint64_t seed = 7, length = 4000;

struct Recorder : Capture::PacketSink {
    void packet(const Capture::Packet& packet) override {
        const std::string_view body = packet.bytes.substr(Capture::IDENTIFIER_SIZE);
        const Velmora::MsgType_t id = Capture::identifierOf(packet.bytes);
        const Velmora::MsgDescriptor& descriptor = *Quillon::__protocol->getDescriptor(id);
        if (descriptor.name() == std::string_view("PadMessage")) return; // is not read as it is written
        const Inspect::Result result = Inspect::verify(id, body.data(), body.data() + body.size(), Inspect::strict);
        const size_t size = descriptor.size() + result.blockBytes;
        auto block = std::make_unique<char[]>(size);
        auto alloc =
            std::make_unique<Velmora::BufferAllocator>(block.get(), static_cast<int>(size), "bench", "session");
        void* const message = Inspect::decode_verified(id, body, *alloc).release();
        if (message == nullptr) std::abort();
        messages.push_back({id, std::string(body), message, std::move(block), std::move(alloc)});
    }
    std::vector<SessionMessage> messages;
};

void add(const std::string& who, const std::vector<const SessionMessage*>& messages) {
    const auto out = std::make_shared<std::vector<char>>(plenty);
    char *const begin = out->data(), *const end = begin + plenty;
    const auto scratch = std::make_shared<Scratch>();
    size_t bytes = 0;
    for (const SessionMessage* it : messages) bytes += it->body.size();
    measure(
        "session", "safe encode", who,
        [=](size_t i) {
            benchmark::DoNotOptimize(Inspect::encode_checked(messages[i]->id, messages[i]->message, begin, end));
            (void)out; // keeps the bytes alive
        },
        static_cast<double>(bytes) / static_cast<double>(messages.size()), messages.size());
    measure(
        "session", "safe decode", who,
        [=](size_t i) {
            scratch->restart();
            benchmark::DoNotOptimize(
                Inspect::decode_verified(messages[i]->id, messages[i]->body, scratch->alloc).release());
        },
        0, messages.size());
    measure(
        "session", "print", who,
        [=](size_t i) {
            benchmark::DoNotOptimize(
                Inspect::render(messages[i]->id, messages[i]->message, begin, end, Inspect::Secrets::show));
            (void)out;
        },
        0, messages.size());
}

} // namespace

const std::vector<SessionMessage>& session() {
    static const std::vector<SessionMessage> messages = [] {
        Recorder recorder;
        qlproto::session::Session(seed, length, recorder).run();
        return std::move(recorder.messages);
    }();
    return messages;
}

void addSession() {
    std::vector<const SessionMessage*> all, measured;
    for (const SessionMessage& it : session()) {
        all.push_back(&it);
        if (visitMeasured(it, [](const auto&, const auto&) {})) measured.push_back(&it);
    }
    add("QLProtocol, all types", all);
    add("QLProtocol, types with a schema", measured);
    benchmark::AddCustomContext("session", std::to_string(all.size()) + " messages, of which "
                                               + std::to_string(measured.size()) + " have a schema");
}

} // namespace bench
