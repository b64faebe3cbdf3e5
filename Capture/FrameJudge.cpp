#include "Capture/FrameJudge.h"

#include "Inspect/Reflection.h"

namespace Capture {

namespace {

bool isKnown(const Inspect::Protocol& protocol, uint64_t id) {
    return id <= UINT16_MAX && Inspect::reflect(protocol, static_cast<Velmora::MsgType_t>(id)) != nullptr;
}

} // namespace

/// As isSound(). Adds the bytes that were verified to `work`.
bool FrameJudge::verifies(const DeframerContext& context, const Framing& framing, std::string_view bytes,
                          const Frame& frame, uint64_t& work) {
    FramedMessage message;
    if (messageAt(framing, bytes, frame, frame.begin, message) != Fit::fits || !isKnown(context.protocol, message.id))
        return false;
    const std::string_view body = bytes.substr(message.begin, message.end - message.begin);
    const Inspect::Result result =
        verifyBody(context.protocol, static_cast<Velmora::MsgType_t>(message.id), body, PROOF);
    work += workOf(result, body.size());
    return bool(result);
}

bool FrameJudge::isSound(const DeframerContext& context, std::string_view bytes, const Frame& frame) {
    uint64_t work = 0; // what is in step is verified once
    return verifies(context, context.framing, bytes, frame, work);
}

Fit FrameJudge::isBelieved(const DeframerContext& context, const Framing& framing, std::string_view bytes, bool isEnd) {
    Frame frame, other;
    if (_verified > _allowed) return Fit::misfit;
    if (frameAt(framing, bytes, frame) != Fit::fits || !verifies(context, framing, bytes, frame, _verified))
        return Fit::misfit;
    if (frame.size >= SHORT_PROOF) return Fit::fits;
    if (frame.size == bytes.size()) return isEnd ? Fit::fits : Fit::needsMore;
    const Fit next = headerAt(framing, bytes.substr(frame.size), other);
    return next == Fit::needsMore && isEnd ? Fit::fits : next;
}

bool FrameJudge::holdsFrame(const DeframerContext& context, std::string_view bytes) {
    while (bytes.size() > 1) {
        bytes.remove_prefix(1);
        if (isBelieved(context, context.framing, bytes, true) == Fit::fits) return true;
    }
    return false;
}

Fit FrameJudge::isFollowed(const DeframerContext& context, std::string_view bytes, bool isEnd) {
    if (bytes.empty()) return isEnd ? Fit::fits : Fit::needsMore;
    Frame frame;
    const Fit fit = headerAt(context.framing, bytes, frame);
    if (fit != Fit::fits) return fit == Fit::needsMore && isEnd ? Fit::misfit : fit;
    FramedMessage message;
    const Fit first = messageAt(context.framing, bytes, frame, frame.begin, message);
    if (first == Fit::needsMore && message.size == 0 && !isEnd) return first; // not even its fields are there
    return isKnown(context.protocol, message.id) ? Fit::fits : Fit::misfit;
}

bool FrameJudge::mayBecomeFrame(const DeframerContext& context, std::string_view bytes, const Frame& frame) {
    if (frame.size == 0) return true; // not even its header is there
    FramedMessage message;
    const Fit fit = messageAt(context.framing, bytes, frame, frame.begin, message);
    return fit != Fit::misfit && (isKnown(context.protocol, message.id) || message.begin == message.end);
}

std::string FrameJudge::hint(DeframerContext& context, std::string_view bytes) {
    if (context.hints == 0) return "";
    --context.hints;
    for (const Framing& it : context.framing.relatives())
        if (isBelieved(context, it, bytes, true) == Fit::fits) return "; '" + it.text() + "' would fit";
    return "";
}

} // namespace Capture
