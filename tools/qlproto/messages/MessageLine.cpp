#include "tools/qlproto/messages/MessageLine.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

#include <fmt/format.h>

#include "Capture/Verification.h"
#include "Inspect/Checked.h"
#include "Inspect/JsonCursor.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/messages/Hex.h"
#include "tools/qlproto/messages/Names.h"

namespace qlproto {

namespace {

using Inspect::JsonCursor;
using Inspect::JsonError;
using Next = JsonCursor::Next;

constexpr int64_t SECOND = 1'000'000'000;

/// As many as the block of a message that a packet was decoded into needs at most, and some.
constexpr std::size_t BLOCK = 64 * Capture::MAX_PACKET;

/// The names of the envelope, then those that do not matter for the packet.
enum class Member : std::size_t { time, message, id, body, hex, redacted, priceScale };
constexpr std::array<std::string_view, 16> MEMBERS = {
    "time", "message",    "id",   "body", "hex",  "redacted", "priceScale", "packet",
    "gap",  "connection", "kind", "name", "text", "strict",   "whole",      "written"};

/// Whether encoding the message gives these bytes.
bool encodesTo(std::string_view body, Velmora::MsgType_t id, const void* message) {
    std::string bytes(body.size(), '\0');
    const Inspect::Encoded encoded =
        Inspect::encode_checked(thisTool.protocol, id, message, bytes.data(), bytes.data() + bytes.size());
    return encoded && encoded.size == body.size() && bytes == body;
}

} // namespace

// --- writing

void MessageLineWriter::begin(std::string_view name) {
    _text += _before;
    _before = ',';
    ((_text += '"') += name) += "\":";
}

void MessageLineWriter::time(int64_t time, TimeForm form) {
    begin("time");
    _text += '"';
    appendTime(time, form, _text);
    _text += '"';
}

void MessageLineWriter::message(std::string_view name, Velmora::MsgType_t id) {
    begin("message");
    fmt::format_to(std::back_inserter(_text), R"("{}","id":{})", name, id);
}

void MessageLineWriter::message(const MessageReader& reader, const Inspect::Display& display,
                                Inspect::Integers integers) {
    const Velmora::MsgType_t id = reader.descriptor().id();
    message(reader.descriptor().name(), id);
    begin("body");
    Inspect::append_json(thisTool.protocol, id, reader.message(), integers, display, _text);
    const bool isRedacted =
        display.secrets == Inspect::Secrets::hide && Inspect::holds_secret(*Inspect::reflect(thisTool.protocol, id));
    if (isRedacted) member("redacted", "true");
    if (display.priceScale != 1) member("priceScale", std::to_string(display.priceScale));
    const std::string_view bytes = reader.body();
    // What is strictly sound is what the writer makes, and found so much sooner. A pad is not, by contract.
    const bool isCanonical =
        !Capture::isPad(thisTool.protocol, id)
        && Inspect::verify(thisTool.protocol, id, bytes.data(), bytes.data() + bytes.size(), Inspect::strict);
    if (!isRedacted && !isCanonical && !encodesTo(bytes, id, reader.message()))
        member("hex", '"' + hexFromBytes(bytes) + '"');
}

void MessageLineWriter::member(std::string_view name, std::string_view json) {
    begin(name);
    _text += json;
}

// --- reading

namespace {

std::string_view stringFrom(JsonCursor& json, const char* name) {
    if (json.next() != Next::string) throw JsonError(name, "not a string");
    return json.string();
}

int64_t timeFrom(JsonCursor& json) {
    const std::string_view text = json.next() == Next::string ? json.string() : "";
    const std::optional<int64_t> time = parseTime(text);
    // The forms that are written and no other, and what a capture can hold.
    if (!time || *time / SECOND > UINT32_MAX || (timeText(*time) != text && timeText(*time, TimeForm::utc) != text))
        throw JsonError("time", R"(not of the form "1709535600.000000042" or "2024-03-04T07:00:00.000000042Z")");
    return *time;
}

std::string bytesFrom(JsonCursor& json) {
    try {
        return bytesFromHex(stringFrom(json, "hex"));
    } catch (const HexError& error) {
        throw JsonError("hex", error.what());
    }
}

} // namespace

/// What has been read of a line.
struct MessageLineReader::Envelope {
    std::string_view text; ///< all of it
    std::array<bool, MEMBERS.size()> given{};
    bool has(Member member) const { return given[static_cast<std::size_t>(member)]; }
    int64_t time = 0;
    std::string id; ///< as it stands there
    const Inspect::MessageInfo* message = nullptr;
    std::size_t body = 0; ///< where it begins, if it comes before the message's name
    std::string hex;      ///< the bytes
};

MessageLineReader::MessageLineReader(const Inspect::Policy& policy, bool isPartial)
    : _block(std::make_unique_for_overwrite<char[]>(BLOCK)),
      _packet(std::make_unique_for_overwrite<char[]>(Capture::MAX_PACKET)),
      _reader(policy),
      _reading{.isPartial = isPartial, .mostErrors = MOST_ERRORS} {
    for (const Inspect::MessageInfo& message : Inspect::all_messages(thisTool.protocol))
        _messages[message.type->name] = &message;
}

Capture::Packet MessageLineReader::read(std::string_view text) {
    _reading.errors.clear();
    try {
        const Capture::Packet packet = packetOf(text);
        if (_reading.errors.empty()) return packet;
    } catch (const JsonError& error) {
        _reading.errors.push_back(error);
    }
    throw JsonError(_reading.errors.front());
}

/// Keeps errors, and throws that after which nothing more can be told.
Capture::Packet MessageLineReader::packetOf(std::string_view text) {
    JsonCursor json(text);
    if (json.next() != Next::object) throw JsonError("", "not an object");
    Envelope line{.text = text, .id = {}, .hex = {}};
    json.object([&](std::string_view name) {
        const std::size_t start = json.position();
        try {
            member(name, json, line);
        } catch (const JsonError& error) {
            _reading.keep(error, json, start);
        }
    });
    json.end();

    for (const Member needed : {Member::message, Member::body})
        if (!line.has(needed) && !(needed == Member::body && _reading.isPartial))
            _reading.keep(JsonError(std::string(MEMBERS[static_cast<std::size_t>(needed)]), "missing"));
    if (line.message == nullptr) return {};
    const Inspect::MessageInfo& message = *line.message;
    if (line.has(Member::id) && line.id != std::to_string(message.id))
        _reading.keep(JsonError("id", fmt::format("not {}, the identifier of {}", message.id, message.type->name)));
    if (line.body != 0 || !line.has(Member::body)) {
        JsonCursor body(line.body != 0 ? text : "{}", line.body);
        encodeBody(message, body);
    }
    if (!_reading.errors.empty()) return {};
    if (line.has(Member::hex)) {
        if (line.hex.size() > Capture::MAX_PACKET - Capture::IDENTIFIER_SIZE)
            throw JsonError("hex", "more than fits a packet");
        if (!isOfBody(message.id, line.hex)) throw JsonError("hex", "not the bytes of the body");
        _size = line.hex.copy(_packet.get() + Capture::IDENTIFIER_SIZE, line.hex.size());
    }
    _packet[0] = static_cast<char>(message.id);
    _packet[1] = static_cast<char>(message.id >> 8);
    return {line.time, {_packet.get(), Capture::IDENTIFIER_SIZE + _size}};
}

void MessageLineReader::member(std::string_view name, JsonCursor& json, Envelope& line) {
    const auto which = static_cast<std::size_t>(std::ranges::find(MEMBERS, name) - MEMBERS.begin());
    const std::string path(name.substr(0, 100)); // the name goes with the next value; nobody reads a longer one
    if (which == MEMBERS.size()) throw JsonError(path, "unknown name");
    if (line.given[which]) throw JsonError(path, "given twice");
    line.given[which] = true;
    switch (static_cast<Member>(which)) {
    case Member::time:
        line.time = timeFrom(json);
        break;
    case Member::message:
        line.message = &messageNamed(stringFrom(json, "message"));
        break;
    case Member::id:
        if (json.next() != Next::number) throw JsonError("id", "not a number");
        line.id = json.number().text;
        break;
    case Member::body:
        if (line.message != nullptr) {
            encodeBody(*line.message, json);
        } else {
            json.next();
            line.body = json.position();
            json.skip();
        }
        break;
    case Member::hex:
        line.hex = bytesFrom(json);
        break;
    case Member::redacted:
        throw JsonError(path, "no packet can be made where secrets are hidden");
    case Member::priceScale:
        throw JsonError(path, "no packet can be made where prices are divided");
    default:
        json.skip();
    }
}

const Inspect::MessageInfo& MessageLineReader::messageNamed(std::string_view name) const {
    const auto found = _messages.find(name);
    if (found == _messages.end()) throw JsonError("message", noSuchMessage(name.substr(0, 100)));
    return *found->second;
}

void MessageLineReader::encodeBody(const Inspect::MessageInfo& message, JsonCursor& json) {
    Velmora::BufferAllocator alloc(_block.get(), static_cast<int>(BLOCK), "qlproto", "encode");
    Velmora::MsgDescriptor& descriptor = *thisTool.protocol.instance()->getDescriptor(message.id);
    void* const place = alloc.allocate(descriptor.size());
    descriptor.construct(place, alloc);
    struct Destroy {
        Velmora::MsgDescriptor& descriptor;
        void* place;
        ~Destroy() { descriptor.destroy(place); }
    } const destroy{descriptor, place};

    try {
        Inspect::from_json(thisTool.protocol, message.id, json, place, _reading, "body");
    } catch (const Inspect::DoesNotFit& error) {
        throw JsonError(error.path(), "more than fits a packet");
    }
    if (!_reading.errors.empty()) return;
    const Inspect::Encoded encoded =
        Inspect::encode_checked(thisTool.protocol, message.id, place, _packet.get() + Capture::IDENTIFIER_SIZE,
                                _packet.get() + Capture::MAX_PACKET);
    if (encoded.refusal == Inspect::Refusal::tooSmall)
        throw JsonError("body", fmt::format("{} bytes, more than fit a packet", encoded.size));
    if (!encoded) throw JsonError("body." + encoded.field, encoded.text().substr(0, encoded.text().find(" (")));
    _size = encoded.size;
}

bool MessageLineReader::isOfBody(Velmora::MsgType_t id, std::string_view bytes) {
    const std::string_view body(_packet.get() + Capture::IDENTIFIER_SIZE, _size);
    if (bytes == body) return true;
    if (_reader.read(Capture::identifierBytes(id).append(bytes))) return encodesTo(body, id, _reader.message());
    // A pad that is no packet's, for its length has the form in which it is read.
    Velmora::BufferAllocator alloc(_block.get(), static_cast<int>(BLOCK), "qlproto", "encode");
    const Inspect::Decoded decoded = Inspect::decode_verified(thisTool.protocol, id, bytes, alloc);
    if (!decoded) throw JsonError("hex", decoded.result.text());
    return encodesTo(body, id, decoded.object);
}

} // namespace qlproto
