#include "Capture/Index.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include <nlohmann/json.hpp>

#include "Capture/ByteSource.h"
#include "Capture/Decompression.h"
#include "Capture/Errors.h"
#include "Capture/Output.h"
#include "Capture/SeededHash.h"
#include "Capture/ZstdFrames.h"

namespace Capture {

namespace {

constexpr uint64_t PART = 4 * 1024 * 1024;
constexpr std::size_t END = 64 * 1024, LONGEST_INDEX = 64 * 1024 * 1024;

/// Of both ends of the file. Nobody is kept from forging an index: it saves time, and a wrong one only hides packets.
std::string hashOfEnds(const std::string& path) {
    FileSource file(path);
    const std::string first = file.bytesAt(0, END);
    const std::string last = file.bytesAt(file.size() - std::min<uint64_t>(file.size(), END), END);
    char digits[17];
    std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(sipHash(first + last, {0, 0})));
    return digits;
}

/// Throws an exception of json: numbers with a fraction or an exponent may be more than any integer holds.
template <class T>
T integerOf(const nlohmann::json& json) {
    if (!json.is_number_integer()) throw nlohmann::json::type_error::create(302, "no integer", &json);
    return json.get<T>();
}

/// By their place in the protocol.
std::vector<Velmora::MsgType_t> idsOf(const Inspect::Protocol& protocol) {
    std::vector<Velmora::MsgType_t> ids;
    for (const Inspect::MessageInfo& it : protocol.messages) ids.push_back(it.id);
    return ids;
}

std::string hexOf(const std::vector<bool>& bits) {
    std::string hex((bits.size() + 3) / 4, '0');
    for (std::size_t i = 0; i < bits.size(); ++i)
        if (bits[i])
            hex[i / 4] =
                "0123456789abcdef"[(hex[i / 4] <= '9' ? hex[i / 4] - '0' : hex[i / 4] - 'a' + 10) | 1 << i % 4];
    return hex;
}

std::vector<bool> bitsOf(const std::string& hex, std::size_t size) {
    std::vector<bool> bits(size);
    for (std::size_t i = 0; i < size && i / 4 < hex.size(); ++i) {
        const char c = hex[i / 4];
        bits[i] = ((c <= '9' ? c - '0' : c - 'a' + 10) >> i % 4 & 1) != 0;
    }
    return bits;
}

} // namespace

Index::Index(const std::string& capture, const Inspect::Protocol& protocol)
    : Index(capture, protocol, FileSource(capture).size()) {
    if (_size == 0) throw IoError(capture + ": no regular file, or an empty one");
    FileSource file(capture);
    if (!isCompressed(file.bytesAt(0, 8))) return;
    _frames = framesOf(file);
    if (_frames.empty())
        throw DamagedCapture(
            capture
            + ": is compressed as a whole and can only be read from its start; compress it in frames, as "
              "captures are written under a name that ends in .zst");
}

Index::Index(const std::string& capture, const Inspect::Protocol& protocol, uint64_t size)
    : _capture(capture), _protocol(&protocol), _size(size) {}

void Index::add(const Packet& packet, bool isBad) {
    ++_packets;
    if (_parts.empty() || packet.offset - _parts.back().offset >= PART) {
        Part part{_packets, packet.offset, {packet.offset, packet.offset}, packet.time, packet.time};
        if (!_frames.empty())
            part.place = *std::prev(std::ranges::upper_bound(_frames, packet.offset, {}, &Place::contents));
        part.messages.resize(_protocol->messages.size());
        _parts.push_back(std::move(part));
    }
    Part& part = _parts.back();
    part.earliest = std::min(part.earliest, packet.time);
    part.latest = std::max(part.latest, packet.time);
    if (isBad) ++part.faults;
    if (packet.bytes.size() < IDENTIFIER_SIZE) return;
    if (const Inspect::MessageInfo* const it = _protocol->find(_protocol->messages.data(), identifierOf(packet.bytes)))
        part.messages[static_cast<std::size_t>(it - _protocol->messages.data())] = true;
}

void Index::write() const {
    std::string text = nlohmann::ordered_json{{"index", 1},
                                              {"size", _size},
                                              {"ends", hashOfEnds(_capture)},
                                              {"packets", _packets},
                                              {"messages", idsOf(*_protocol)}}
                           .dump()
                       + '\n';
    for (const Part& it : _parts)
        text += nlohmann::json::array({it.packet, it.offset, it.place.file, it.place.contents, it.earliest, it.latest,
                                       it.faults, hexOf(it.messages)})
                    .dump()
                + '\n';
    writeText(text, nameFor(_capture));
}

std::optional<Index> Index::beside(const std::string& capture, const Inspect::Protocol& protocol, std::string& why) {
    const std::string name = nameFor(capture);
    std::error_code error;
    if (!std::filesystem::is_regular_file(name, error)) return std::nullopt; // what else stands there may be waited for
    try {
        FileSource file(name);
        Index index(capture, protocol, FileSource(capture).size());
        if (file.size() <= LONGEST_INDEX && index.read(file.bytesAt(0, static_cast<std::size_t>(file.size()))))
            return index;
    } catch (const IoError& failure) {
        why = failure.what();
        return std::nullopt;
    }
    why = name + " is not of this capture as it is now, and is not used; qlproto index makes it anew";
    return std::nullopt;
}

/// False if it is none, or of another file or protocol. What it says is a stranger's: it must be in order.
bool Index::read(const std::string& text) try {
    using nlohmann::json;
    std::size_t at = text.find('\n');
    const json head = json::parse(text.substr(0, at));
    const std::vector<Velmora::MsgType_t> ids = idsOf(*_protocol);
    if (head.at("index") != 1 || head.at("size") != _size || head.at("messages") != json(ids)
        || head.at("ends") != hashOfEnds(_capture))
        return false;
    _packets = integerOf<uint64_t>(head.at("packets"));
    while (at != text.npos && at + 1 < text.size()) {
        const std::size_t end = text.find('\n', at + 1);
        const json it = json::parse(text.substr(at + 1, end - at - 1));
        const auto count = [&it](std::size_t i) { return integerOf<uint64_t>(it.at(i)); };
        const auto time = [&it](std::size_t i) { return integerOf<int64_t>(it.at(i)); };
        Part part{count(0), count(1), {count(2), count(3)}, time(4), time(5), count(6), bitsOf(it.at(7), ids.size())};
        const uint64_t least = _parts.empty() ? 1 : _parts.back().packet + 1;
        if (part.packet < least || part.packet > _packets || part.place.file > _size
            || part.offset < part.place.contents || (!_parts.empty() && part.offset <= _parts.back().offset))
            return false;
        _parts.push_back(std::move(part));
        at = end;
    }
    return true;
} catch (const nlohmann::json::exception&) {
    return false;
}

const Index::Part* Index::partOf(uint64_t packet) const {
    const auto after = std::ranges::upper_bound(_parts, packet, {}, &Part::packet);
    return packet > _packets || after == _parts.begin() ? nullptr : &*std::prev(after);
}

} // namespace Capture
