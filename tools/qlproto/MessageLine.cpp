#include "tools/qlproto/MessageLine.h"

#include <charconv>
#include <map>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "Inspect/Checked.h"
#include "tools/qlproto/Names.h"
#include "tools/qlproto/TimeText.h"

namespace qlproto {

namespace {

using Inspect::JsonError;
using nlohmann::json;

constexpr int64_t SECOND = 1'000'000'000;

/// As many as the block of a message that a packet was decoded into needs at most, and some.
constexpr std::size_t BLOCK = 64 * MAX_PACKET;

/// The members of a JSON object as the texts they have in it. The text must be valid JSON. They stay texts so that the
/// body is parsed once, where its errors are found.
std::map<std::string, std::string_view> membersOf(std::string_view object) {
    std::map<std::string, std::string_view> members;
    std::size_t i = object.find('{') + 1;
    const auto skipTo = [&](std::string_view ends) { // outside of strings and nested values
        int depth = 0;
        for (bool isInString = false; i < object.size(); ++i) {
            const char c = object[i];
            if (isInString) {
                if (c == '\\') ++i;
                if (c == '"') isInString = false;
                continue;
            }
            if (depth == 0 && ends.find(c) != std::string_view::npos) return;
            if (c == '"') isInString = true;
            if (c == '{' || c == '[') ++depth;
            if (c == '}' || c == ']') --depth;
        }
    };
    const auto piece = [&](std::string_view ends) {
        const std::size_t start = i;
        skipTo(ends);
        return object.substr(start, i++ - start);
    };
    while (i < object.size()) {
        const std::string_view name = piece(":}");
        if (object[i - 1] == '}') break; // an empty object
        const std::string key = json::parse(name).get<std::string>();
        if (!members.emplace(key, piece(",}")).second) throw JsonError(key, "given twice");
        if (object[i - 1] == '}') break;
    }
    return members;
}

int64_t readTime(const json& value) {
    const std::string text = value.is_string() ? value.get<std::string>() : "";
    const std::optional<int64_t> time = parseTime(text);
    // One form only, and one that a capture can hold.
    if (!time || timeText(*time) != text || *time / SECOND > UINT32_MAX)
        throw JsonError("time", R"(not of the form "1709535600.000000042")");
    return *time;
}

/// The identifier is checked against the name that decides.
void checkId(const json& id, const Inspect::MessageInfo& message) {
    if (!id.is_number_integer() || id != message.id)
        throw JsonError("id", fmt::format("not {}, the identifier of {}", message.id, message.type->name));
}

} // namespace

MessageLineReader::MessageLineReader()
    : _block(std::make_unique_for_overwrite<char[]>(BLOCK)),
      _packet(std::make_unique_for_overwrite<char[]>(MAX_PACKET)) {}

Packet MessageLineReader::read(std::string_view line) {
    std::map<std::string, std::string_view> members;
    try {
        if (!json::parse(line).is_object()) throw JsonError("", "not an object");
        members = membersOf(line);
    } catch (const json::exception& error) {
        throw JsonError("", error.what());
    }
    for (const auto& [name, value] : members)
        if (name != "time" && name != "message" && name != "id" && name != "body")
            throw JsonError(name, "unknown name");
    for (const char* name : {"message", "body"})
        if (!members.contains(name)) throw JsonError(name, "missing");

    const json name = json::parse(members["message"]);
    if (!name.is_string()) throw JsonError("message", "not a string");
    const Inspect::MessageInfo* const message = findMessage(name.get<std::string>());
    if (message == nullptr || message->type->name != name)
        throw JsonError("message", noSuchMessage(name.get<std::string>()));
    if (members.contains("id")) checkId(json::parse(members["id"]), *message);
    const int64_t time = members.contains("time") ? readTime(json::parse(members["time"])) : 0;

    _packet[0] = static_cast<char>(message->id);
    _packet[1] = static_cast<char>(message->id >> 8);
    return {time, {_packet.get(), IDENTIFIER_SIZE + encode(*message, members["body"])}};
}

std::size_t MessageLineReader::encode(const Inspect::MessageInfo& message, std::string_view body) {
    Velmora::BufferAllocator alloc(_block.get(), static_cast<int>(BLOCK), "qlproto", "encode");
    Velmora::MsgDescriptor& descriptor = *Quillon::__protocol->getDescriptor(message.id);
    void* const place = alloc.allocate(descriptor.size());
    descriptor.construct(place, alloc);
    struct Destroy {
        Velmora::MsgDescriptor& descriptor;
        void* place;
        ~Destroy() { descriptor.destroy(place); }
    } const destroy{descriptor, place};

    try {
        Inspect::from_json(message.id, body, place);
    } catch (const JsonError& error) {
        const std::string reason = error.what();
        if (error.path().empty()) throw JsonError("body", reason);
        throw JsonError("body." + error.path(), reason.substr(error.path().size() + 2)); // after "path: "
    } catch (const std::out_of_range&) {                                                 // of the block
        throw JsonError("body", "more than fits a packet");
    } catch (const std::length_error&) { // of a vector, for want of block
        throw JsonError("body", "more than fits a packet");
    }
    const Inspect::Encoded encoded =
        Inspect::encode_checked(message.id, place, _packet.get() + IDENTIFIER_SIZE, _packet.get() + MAX_PACKET);
    if (encoded) return encoded.size;
    if (encoded.refusal == Inspect::Refusal::tooSmall)
        throw JsonError("body", fmt::format("{} bytes, more than fit a packet", encoded.size));
    throw JsonError("body." + encoded.field, encoded.text().substr(0, encoded.text().find(" (")));
}

} // namespace qlproto
