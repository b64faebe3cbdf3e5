#include "Host/MemRing.h"

#include <algorithm>
#include <cstring>

#include <unistd.h>

#include "Capture/Packet.h"
#include "Host/RingTurn.h"

namespace Host {

using namespace detail;
using Velmora::MsgType_t;

uint64_t MemRing::last() const { return RingTurn(header()).sequence(); }
size_t MemRing::size() const { return header().size; }
size_t MemRing::longestBody() const {
    return std::min(header().size / 8, Capture::MAX_PACKET - Capture::IDENTIFIER_SIZE);
}

uint64_t MemRing::publish(const Record& record) {
    if (record.body.size() > longestBody())
        throw std::length_error("MemRing: body of " + std::to_string(record.body.size()) + " bytes, more than "
                                + std::to_string(longestBody()));
    RingTurn turn(header());
    turn.demandAllowed();
    storeWords(turn.room(record.body.size()), record.body.data(), record.body.size());
    return turn.commit(record.id, record.body.size(), record.time);
}

Inspect::Encoded MemRing::publish(const Inspect::Protocol& protocol, MsgType_t id, const void* message, int64_t time,
                                  uint64_t& sequence) {
    sequence = 0;
    // Beside the ring, while others have their turns.
    char some[1024];
    Inspect::Encoded encoded = Inspect::encode_checked(protocol, id, message, some, some + sizeof some);
    if (encoded) {
        sequence = publish({.id = id, .body = {some, encoded.size}, .time = time});
    } else if (encoded.refusal == Inspect::Refusal::tooSmall && encoded.size <= longestBody()) {
        std::string more(encoded.size, '\0');
        encoded = Inspect::encode_checked(protocol, id, message, more.data(), more.data() + more.size());
        if (encoded) sequence = publish({.id = id, .body = more, .time = time});
    }
    return encoded;
}

void MemRing::startAfter(uint64_t sequence) {
    RingTurn turn(header());
    if (turn.sequence() >= sequence) return;
    if (header().committed != 0)
        throw RingError("the ring is at message " + std::to_string(turn.sequence()) + ", before "
                        + std::to_string(sequence));
    store(header().base, sequence);
}

void MemRing::setKeeper(const RingKeeper& keeper) {
    const auto put = [](auto& to, const std::string& text) {
        std::memset(to, 0, sizeof to);
        text.copy(to, sizeof to - 1);
    };
    RingTurn turn(header());
    put(header().folder, keeper.folder);
    put(header().refusal, keeper.refusal);
    header().keeper = ::getpid();
    header().refuses = keeper.refusal.empty() ? 0 : 1;
}

RingKeeper MemRing::keeper() const {
    const auto text = [](const auto& from) { return std::string(from, ::strnlen(from, sizeof from)); };
    const RingTurn turn(header());
    return {text(header().folder), text(header().refusal)};
}

} // namespace Host
