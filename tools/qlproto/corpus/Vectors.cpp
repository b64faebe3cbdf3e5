#include "tools/qlproto/corpus/Vectors.h"

#include <memory>
#include <optional>
#include <set>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "Capture/Verification.h"
#include "Inspect/Checked.h"
#include "Inspect/Json.h"
#include "Inspect/SafeText.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/corpus/Filler.h"
#include "tools/qlproto/messages/Hex.h"
#include "tools/qlproto/messages/MessageLine.h"

namespace qlproto::corpus {

namespace {

constexpr std::size_t ROOM = 1 << 20; ///< for any of these messages, encoded, rendered or in memory

/// A message and as what it travels.
struct Filled {
    std::string json;
    std::string written;  ///< by write()
    std::string readable; ///< as read() takes it: the same but for pads
};

/// `filling`: none for the value as constructed.
Filled filled(const Inspect::MessageInfo& message, std::optional<Filling> filling) {
    const auto block = std::make_unique_for_overwrite<char[]>(ROOM),
               bytes = std::make_unique_for_overwrite<char[]>(ROOM);
    Velmora::BufferAllocator alloc(block.get(), static_cast<int>(ROOM), "corpus", "message");
    Velmora::MsgDescriptor& descriptor = *thisTool.protocol.instance()->getDescriptor(message.id);
    void* const place = alloc.allocate(descriptor.size());
    descriptor.construct(place, alloc);
    if (filling) Inspect::from_json(thisTool.protocol, message.id, filledJson(*message.type, *filling), place);
    Velmora::FastCodec codec(bytes.get(), bytes.get() + ROOM);
    descriptor.write(place, codec);
    Filled result{Inspect::to_json(thisTool.protocol, message.id, place), std::string(bytes.get(), codec.size()), ""};
    descriptor.destroy(place);

    if (Capture::isPad(thisTool.protocol, message.id)) {
        codec.reset();
        codec.write_string(result.written.substr(Capture::PAD_LENGTH));
    }
    result.readable.assign(bytes.get(), codec.size());
    return result;
}

struct Meaning {
    std::string json, text;
};

/// What a body stands for, if it is one that can be decoded.
std::optional<Meaning> meaningOf(Velmora::MsgType_t id, const std::string& body) {
    const auto block = std::make_unique_for_overwrite<char[]>(ROOM),
               text = std::make_unique_for_overwrite<char[]>(ROOM);
    Velmora::BufferAllocator alloc(block.get(), static_cast<int>(ROOM), "corpus", "message");
    const Inspect::Decoded decoded = Inspect::decode_verified(thisTool.protocol, id, body, alloc, Inspect::whole);
    if (!decoded) return {};
    const Inspect::Rendered rendered =
        Inspect::render(thisTool.protocol, id, decoded.object, text.get(), text.get() + ROOM, Inspect::Secrets::show);
    return Meaning{Inspect::to_json(thisTool.protocol, id, decoded.object), std::string(text.get(), rendered.size)};
}

/// The names of the faults as enumerators, for programs.
const char* faultName(Inspect::Fault fault) {
    using enum Inspect::Fault;
    switch (fault) {
    case truncated:
        return "truncated";
    case overlongVarint:
        return "overlongVarint";
    case varintOverflow:
        return "varintOverflow";
    case nonMinimal:
        return "nonMinimal";
    case lengthBeyondWidth:
        return "lengthBeyondWidth";
    case countBeyondBytes:
        return "countBeyondBytes";
    case unknownEnumerator:
        return "unknownEnumerator";
    case badBoolean:
        return "badBoolean";
    case reservedPriceBits:
        return "reservedPriceBits";
    case trailingBytes:
        return "trailingBytes";
    default: // of the caller, not of a body
        return "none";
    }
}

std::string inQuotes(const std::string& text) { return nlohmann::json(text).dump(); }

std::string faultJson(const Expected& expected) {
    return fmt::format(R"({{"fault":"{}","offset":{},"path":{}}})", faultName(expected.fault), expected.offset,
                       inQuotes(expected.path));
}

class Lines {
  public:
    explicit Lines(const Inspect::MessageInfo& message) : _message(message) {}

    void golden(const std::string& name, const std::string& body, const std::string& written) {
        const std::optional<Meaning> meaning = meaningOf(_message.id, body);
        if (!meaning || !_golden.insert(body).second) return;
        MessageLineWriter line = begin("golden", name, body, meaning->json);
        // As constructed, enumerations are 0, which is an enumerator of some only.
        const Inspect::Result strict =
            Inspect::verify(thisTool.protocol, _message.id, body.data(), body.data() + body.size(), Inspect::strict);
        if (!strict) line.member("strict", faultJson({strict.fault, strict.offset, strict.path()}));
        if (written != body) line.member("written", inQuotes(hexFromBytes(written)));
        line.member("text", inQuotes(meaning->text));
        line.end();
    }

    void encode(const std::string& name, const std::string& body, const std::string& json) {
        begin("encode", name, body, json).end();
    }

    void hostile(const Hostile& vector) {
        const std::string fault = faultJson(vector.strict);
        MessageLineWriter line = begin("hostile", vector.name, vector.body, {});
        line.member("strict", fault);
        const std::optional<Meaning> meaning = vector.isTakenWhole ? meaningOf(_message.id, vector.body) : std::nullopt;
        line.member("whole", meaning ? fmt::format(R"({{"body":{}}})", meaning->json) : fault);
        line.end();
    }

    const std::string& text() const { return _text; }

  private:
    /// `json`: what the body means; empty for nothing.
    MessageLineWriter begin(const char* kind, const std::string& name, const std::string& body, std::string_view json) {
        MessageLineWriter line(_text);
        line.message(_message.type->name, _message.id);
        if (!json.empty()) line.member("body", json);
        line.member("hex", inQuotes(hexFromBytes(body)));
        line.member("kind", inQuotes(kind));
        line.member("name", inQuotes(name));
        return line;
    }

    const Inspect::MessageInfo& _message;
    std::set<std::string> _golden; ///< bodies so far
    std::string _text;
};

} // namespace

std::string vectorLines(const Inspect::MessageInfo& message) {
    static constexpr std::pair<const char*, std::optional<Filling>> fillings[] = {
        {"zero", {}},
        {"small values", Filling::small},
        {"least values", Filling::least},
        {"greatest values", Filling::most},
        {"sentinels", Filling::sentinels},
        {"all bytes in texts", Filling::bytes},
        {"counts of two bytes", Filling::counts},
    };
    Lines lines(message);
    for (const auto& [name, filling] : fillings) {
        const Filled it = filled(message, filling);
        lines.golden(name, it.readable, it.written);
    }
    int number = 0;
    if (thisTool.bodiesOf != nullptr)
        for (const std::string& body : thisTool.bodiesOf(message.id))
            lines.golden(fmt::format("from a session, {}", ++number), body, body);
    // What write() takes and read() does not give back: strings never stored, enumerators beyond a byte.
    for (const auto& [name, filling] : {fillings[0], fillings[1]}) {
        const Filled it = filled(message, filling);
        const std::optional<Meaning> meaning = meaningOf(message.id, it.readable);
        if (meaning && meaning->json != it.json) lines.encode(name, it.written, it.json);
    }
    for (const Hostile& vector : hostileVectors(*message.type, filled(message, Filling::small).readable))
        lines.hostile(vector);
    return lines.text();
}

} // namespace qlproto::corpus
