// The messages of a made-up session in their own order and mix.
#pragma once

#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "Backend/Velmora/BufferAllocator.h"
#include "bench/Ours.h"

namespace bench {

/// A message that stands in a block of its size, and its body.
struct SessionMessage {
    Velmora::MsgType_t id;
    std::string body;
    void* message;
    std::unique_ptr<char[]> block;
    std::unique_ptr<Velmora::BufferAllocator> alloc;
};

const std::vector<SessionMessage>& session();

/// The types that the peers have a schema for.
using MeasuredTypes = std::tuple<RuThereMessage, SubmitOrderMessage, MktDataMessage, TradeCaptureMessage,
                                 DropCopyMessage, TradeLimitDataMessage>;

/// Calls `visit(values, message)` if the message is of such a type; whether it is.
template <class Visit>
bool visitMeasured(const SessionMessage& message, Visit&& visit) {
    const auto tried = [&]<class M>(M values) {
        using T = typename OurType<M>::type;
        if (message.id != T::ID) return false;
        const T& ours = *static_cast<const T*>(message.message);
        take(values, ours);
        visit(values, ours);
        return true;
    };
    return std::apply([&](auto... type) { return (tried(type) || ...); }, MeasuredTypes());
}

} // namespace bench
