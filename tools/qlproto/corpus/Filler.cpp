#include "tools/qlproto/corpus/Filler.h"

#include <limits>

#include <fmt/format.h>

#include "Backend/Velmora/Wire.h"
#include "Inspect/Json.h"

namespace qlproto::corpus {

namespace {

using Inspect::Kind;

struct Limits {
    std::string least, most;
};

template <class T>
Limits limits() {
    // A float is told as the double that it is.
    using Told = std::conditional_t<std::is_same_v<T, float>, double, T>;
    return {fmt::format("{}", Told{std::numeric_limits<T>::lowest()}),
            fmt::format("{}", Told{std::numeric_limits<T>::max()})};
}

Limits limitsOf(Kind kind) {
    switch (kind) {
    case Kind::boolean:
        return {"false", "true"};
    case Kind::int8:
        return limits<int8_t>();
    case Kind::int16:
        return limits<int16_t>();
    case Kind::int32:
        return limits<int32_t>();
    case Kind::uint8:
        return limits<uint8_t>();
    case Kind::uint16:
    case Kind::uint16Fixed:
        return limits<uint16_t>();
    case Kind::uint32:
    case Kind::uint32Fixed:
        return limits<uint32_t>();
    case Kind::uint64:
        return limits<uint64_t>();
    case Kind::float4:
        return limits<float>();
    case Kind::float8:
        return limits<double>();
    default:
        return limits<int64_t>();
    }
}

class Filler {
  public:
    explicit Filler(Filling filling) : _filling(filling) {}

    std::string record(const Inspect::TypeInfo& type) {
        std::string json = "{";
        for (const Inspect::FieldInfo& field : type.fields) {
            if (json.size() != 1) json += ',';
            json += fmt::format("\"{}\":", field.name);
            json += value(field.value);
        }
        return json + '}';
    }

  private:
    std::string value(const Inspect::ValueInfo& info) {
        if (info.kind == Kind::record) return record(*info.record);
        if (info.kind == Kind::vector) return vector(*info.element);
        if (info.kind == Kind::enumeration) return enumerator(info.enumeration->enumerators);
        return Inspect::is_bytes(info.kind) ? Inspect::json_text(text()) : number(info.kind);
    }

    std::string vector(const Inspect::ValueInfo& element) {
        const int size = _filling == Filling::counts && element.record == nullptr ? 130 : isSmall() ? 2 : 1;
        std::string json = "[";
        for (int i = 0; i < size; ++i) {
            if (i != 0) json += ',';
            json += value(element);
        }
        return json + ']';
    }

    bool isSmall() const { return _filling == Filling::small || _filling == Filling::counts; }

    std::string text() {
        if (isSmall()) return {"abc", 1 + _step++ % 3};
        if (_filling != Filling::bytes) return "";
        if (_texts++ != 0) return std::string(1, static_cast<char>(0x80 - _texts));
        std::string all(256, '\0');
        for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<char>(i);
        return all;
    }

    std::string enumerator(std::span<const Inspect::EnumeratorInfo> all) {
        std::size_t i = 0;
        if (_filling == Filling::most) i = all.size() - 1;
        if (isSmall()) i = _step++ % all.size();
        if (_filling == Filling::zeros)
            while (i < all.size() && all[i].value != 0) ++i;
        if (i == all.size()) i = 0;
        return fmt::format("\"{}\"", all[i].name);
    }

    std::string number(Kind kind) {
        static constexpr int64_t sentinels[] = {Velmora::MAX, Velmora::NMA, Velmora::NDA, Velmora::NA};
        const bool isLong = kind == Kind::int64 || kind == Kind::price || kind == Kind::int64Fixed;
        switch (_filling) {
        case Filling::zeros:
            return kind == Kind::boolean ? "false" : "0";
        case Filling::least:
            return limitsOf(kind).least;
        case Filling::most:
            return limitsOf(kind).most;
        case Filling::sentinels:
            if (isLong) return fmt::format("{}", sentinels[_step++ % 4]);
            return kind == Kind::boolean ? "false" : "0";
        default:
            const unsigned step = _step++ % 29 + 1;
            return kind == Kind::boolean ? "true" : fmt::format("{}", step);
        }
    }

    const Filling _filling;
    unsigned _step = 0;
    int _texts = 0;
};

} // namespace

std::string filledJson(const Inspect::TypeInfo& type, Filling filling) { return Filler(filling).record(type); }

} // namespace qlproto::corpus
