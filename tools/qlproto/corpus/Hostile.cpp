// Each mutation replaces the bytes of one value, and the fault it makes is that of this value.
#include <algorithm>
#include <functional>
#include <optional>

#include <fmt/format.h>

#include "Inspect/BodyWalk.h"
#include "tools/qlproto/corpus/Vectors.h"
#include "tools/qlproto/messages/WireForm.h"

namespace qlproto::corpus {

namespace {

using Inspect::Fault;
using Inspect::Kind;

/// A value of the good body.
struct Place {
    Kind kind;
    const Inspect::ValueInfo* value;
    std::string path;
    std::size_t begin, end;
    int64_t number;
};

std::vector<Place> placesIn(const Inspect::TypeInfo& type, std::string_view body) {
    std::vector<Place> places;
    Inspect::walk_body(type, body, [&](const Inspect::BodyValue& it) {
        places.push_back({it.value.kind, &it.value, std::string(it.path), it.begin, it.end, it.number});
        return true;
    });
    return places;
}

std::string bytes(std::initializer_list<int> list) {
    std::string text;
    for (const int byte : list) text += static_cast<char>(byte);
    return text;
}

/// `before` bytes that continue, then the last one.
std::string varint(unsigned before, int last) { return std::string(before, '\x80') + static_cast<char>(last); }

/// A way to spoil a value of some kinds: its new bytes, or none if it does not apply to the value.
struct Mutation {
    const char* name;
    Fault fault;
    std::function<std::optional<std::string>(const Place&, std::string_view old)> apply;
};

/// For numbers that travel as varints: a form by the most bytes that their type takes.
template <class Form>
auto forVarint(Form form) {
    return [form](const Place& place, std::string_view) -> std::optional<std::string> {
        switch (place.kind) {
        case Kind::int16:
        case Kind::uint16:
            return form(3u);
        case Kind::int32:
        case Kind::uint32:
            return form(5u);
        case Kind::int64:
        case Kind::uint64:
            return form(10u);
        default:
            return {};
        }
    };
}

auto forKind(Kind kind, std::string replacement) {
    return [kind, replacement](const Place& place, std::string_view) {
        return place.kind == kind ? std::optional(replacement) : std::nullopt;
    };
}

/// For strings whose length takes one byte: another length in front of the same text.
template <class Form>
auto forLength(Form form) {
    return [form](const Place& place, std::string_view old) -> std::optional<std::string> {
        if (!Inspect::is_bytes(place.kind) || place.kind == Kind::stringFixed || place.number > 127) return {};
        return form(static_cast<int>(place.number)) + std::string(old.substr(1));
    };
}

std::optional<std::string> unknownByte(const Place& place, std::string_view) {
    if (place.kind != Kind::enumeration) return {};
    for (int byte = 0xFF; byte >= 0; --byte) {
        const auto travelsAs = [&](const Inspect::EnumeratorInfo& it) { return (it.value & 0xFF) == byte; };
        if (std::ranges::none_of(place.value->enumeration->enumerators, travelsAs)) return bytes({byte});
    }
    return {};
}

const std::vector<Mutation>& mutations() {
    static const std::vector<Mutation> all = {
        {"number in more bytes than needed", Fault::nonMinimal, forVarint([](unsigned) { return varint(1, 0); })},
        {"number of more bytes than its type takes", Fault::overlongVarint,
         forVarint([](unsigned most) { return varint(most, 0); })},
        {"number with bits beyond its type", Fault::varintOverflow, forVarint([](unsigned most) {
             return varint(most - 1, most == 3 ? 0x04 : most == 5 ? 0x10 : 0x02); // bit 16, 32 or 64
         })},
        {"price in more bytes than needed", Fault::nonMinimal, forKind(Kind::price, bytes({0x84, 0x00}))},
        {"sentinel of a price in its long form", Fault::nonMinimal,
         forKind(Kind::price, bytes({0x8C, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x04}))}, // NA
        {"price of more bytes than it takes", Fault::overlongVarint,
         forKind(Kind::price, bytes({0x84}) + varint(9, 0x00))},
        {"price with bits beyond its width", Fault::varintOverflow,
         forKind(Kind::price, bytes({0x84}) + varint(8, 0x08))}, // bit 59 after the five of the first byte
        {"price with bit 0", Fault::reservedPriceBits, forKind(Kind::price, bytes({0x01}))},
        {"price complemented by bit 1", Fault::reservedPriceBits, forKind(Kind::price, bytes({0x06}))},
        {"length in more bytes than needed", Fault::nonMinimal, forLength([](int length) {
             return bytes({length | 0x80, 0x00});
         })},
        {"length of more bytes than it takes", Fault::overlongVarint, forLength([](int length) {
             return bytes({length | 0x80, 0x80, 0x80, 0x00});
         })},
        {"length beyond 16 bits", Fault::lengthBeyondWidth, forLength([](int length) {
             return bytes({length | 0x80, 0x80, 0x04});
         })},
        {"byte of no enumerator", Fault::unknownEnumerator, unknownByte},
        {"boolean of 2", Fault::badBoolean, forKind(Kind::boolean, bytes({2}))},
        {"count in two bytes that fits one", Fault::nonMinimal,
         [](const Place& place, std::string_view) -> std::optional<std::string> {
             if (place.kind != Kind::vector || place.number > 127) return {};
             return bytes({0x80, static_cast<int>(place.number)});
         }},
        {"count too large", Fault::countBeyondBytes, forKind(Kind::vector, bytes({0xFF, 0xFF}))},
    };
    return all;
}

/// What a reader finds in the first `size` bytes. A vector whose elements cannot fit is found before its elements are.
Expected faultOfCut(const std::vector<Place>& places, std::size_t size) {
    for (const Place& place : places) {
        if (place.end > size) return {Fault::truncated, place.begin, place.path};
        if (place.kind != Kind::vector) continue;
        const std::size_t least = static_cast<std::size_t>(place.number) * wireForm(*place.value->element).minimal;
        if (size - place.end < least) return {Fault::countBeyondBytes, place.begin, place.path};
    }
    return {Fault::none, size, ""};
}

} // namespace

std::vector<Hostile> hostileVectors(const Inspect::TypeInfo& type, const std::string& body) {
    const std::vector<Place> places = placesIn(type, body);
    std::vector<Hostile> vectors;

    // Cuts at the beginning, the end and between, each in another value.
    std::vector<std::size_t> cuts = {0, 1, body.size() / 3, body.size() / 2, body.size() * 2 / 3, body.size() - 1};
    std::ranges::sort(cuts);
    cuts.erase(std::unique(cuts.begin(), cuts.end()), cuts.end());
    for (const std::size_t size : cuts)
        if (size < body.size())
            vectors.push_back({fmt::format("cut to {} of {} bytes", size, body.size()), body.substr(0, size),
                               faultOfCut(places, size), false});
    vectors.push_back({"a byte too many", body + '\0', {Fault::trailingBytes, body.size(), ""}, false});

    for (const Mutation& mutation : mutations()) {
        std::vector<Hostile> found;
        for (const Place& place : places) {
            const auto changed =
                mutation.apply(place, std::string_view(body).substr(place.begin, place.end - place.begin));
            if (!changed) continue;
            found.push_back({fmt::format("{}: {}", mutation.name, place.path),
                             body.substr(0, place.begin) + *changed + body.substr(place.end),
                             {mutation.fault, place.begin, place.path},
                             mutation.fault != Fault::countBeyondBytes});
        }
        if (!found.empty()) vectors.push_back(found.front());
        if (found.size() > 1) vectors.push_back(found.back());
    }
    return vectors;
}

} // namespace qlproto::corpus
