// Sample values for every record and message, from one place: fill a value with a sample, check that a value holds it.
//
// Three fillings: zero (as constructed), typical (defined enumerators, short texts, a few elements) and extreme (limits
// and sentinels of every width, undefined enumerators, long texts with any byte in them, counts that need two bytes). A
// sample is a function of filling and seed, so that checking needs no second object and none of the comparisons under
// test.
#pragma once

#include <cstring>
#include <random>
#include <string>

#include "Backend/Velmora/TypeLists.h"
#include "generated/QLProtocol/QLProtocol.fields.h"
#include "tests/Block.h"
#include "tests/Module.h"

enum class Filling { zero, typical, extreme };

class Sample {
  public:
    explicit Sample(Filling filling, unsigned seed = 1) : _filling(filling), _seed(seed) {}

    /// Sets every field of a freshly constructed value.
    template <class T>
    void fill(T& value) {
        _random.seed(_seed);
        set(value);
    }

    /// Expects every field of `value` to hold what fill() sets. Emptiness of strings is not told apart, for the wire
    /// does not.
    template <class T>
    void check(const T& value) {
        _random.seed(_seed);
        expect(value, "");
    }

  private:
    template <class T>
    void set(T& v) {
        if constexpr (Velmora::String<T>) {
            const std::string text = nextText();
            if (_filling != Filling::zero) v = text;
        } else if constexpr (Velmora::Vector<T>) {
            v.resize(nextCount<T>());
            for (size_t i = 0; i < v.size(); ++i) set(v[i]);
        } else if constexpr (Velmora::Composite<T>) {
            fields(Velmora::of<T>{}, [&](const char*, auto member, auto) { return set(v.*member), true; });
        } else {
            v = nextScalar<T>();
        }
    }

    template <class T>
    void expect(const T& v, const std::string& path) {
        if constexpr (Velmora::String<T>) {
            EXPECT_EQ(std::string(v.c_str(), v.size()), nextText()) << path;
        } else if constexpr (Velmora::Vector<T>) {
            ASSERT_EQ(v.size(), nextCount<T>()) << path;
            for (size_t i = 0; i < v.size(); ++i) expect(v[i], path + "[" + std::to_string(i) + "]");
        } else if constexpr (Velmora::Composite<T>) {
            fields(Velmora::of<T>{}, [&](const char* name, auto member, auto) {
                expect(v.*member, path + "." + name);
                return true;
            });
        } else {
            EXPECT_EQ(+v, +nextScalar<T>()) << path;
        }
    }

    template <class T>
    T nextScalar() {
        const uint64_t pick = _random();
        if (_filling == Filling::zero) return T{};
        if constexpr (std::is_enum_v<T>) {
            using Helper = Velmora::EnumerationOf<T>;
            // A value beyond a byte cannot travel; what it becomes is a test of its own.
            if (_filling == Filling::extreme || Helper::_maxValue > 255) return static_cast<T>(pick % 256);
            return Helper::_fromIndex[pick % Helper::_nbValues];
        } else if constexpr (std::is_same_v<T, bool>) {
            return pick % 2 != 0;
        } else if (_filling == Filling::typical) {
            return static_cast<T>(pick % 100000);
        } else {
            static constexpr int64_t limits[] = {
                INT64_MAX, INT64_MIN, Velmora::MAX, Velmora::NMA, Velmora::NDA, Velmora::NA, -1, 1, 63, 64, -64, -65};
            const T limit = static_cast<T>(limits[pick / 2 % std::size(limits)]);
            if (pick % 2 != 0) return limit;
            return pick / 2 % 2 != 0 ? std::numeric_limits<T>::max() : std::numeric_limits<T>::min();
        }
    }

    std::string nextText() {
        const uint64_t pick = _random();
        if (_filling == Filling::zero) return "";
        if (_filling == Filling::typical) return std::string(pick % 21, static_cast<char>('a' + pick / 32 % 26));
        std::string text(pick % 8 == 0 ? 300 : pick % 5, '\0');
        for (size_t i = 0; i < text.size(); ++i) text[i] = static_cast<char>(pick / 8 + i * 37);
        return text;
    }

    template <class T>
    size_t nextCount() {
        const uint64_t pick = _random();
        if (_filling == Filling::zero) return 0;
        if (_filling == Filling::typical) return 1 + pick % 3;
        return std::is_arithmetic_v<typename T::value_type> ? 200 : pick % 6;
    }

    Filling _filling;
    unsigned _seed;
    std::mt19937_64 _random;
};

/// How many messages the definition has.
inline constexpr int MESSAGES = Velmora::countTypes([](auto visit) { return Quillon::messages(visit); });

/// Calls `visit(of<T>, name)` for each of the records and messages, tracing the name.
template <class Visit>
void forEveryType(Visit&& visit) {
    const auto traced = [&](auto type, const char* name) {
        SCOPED_TRACE(name);
        visit(type, name);
        return true;
    };
    Quillon::records(traced);
    Quillon::messages(traced);
}

/// The same for the messages alone, up to the first that fails.
template <class Visit>
void forEveryMessage(Visit&& visit) {
    Quillon::messages([&](auto type, const char* name) {
        SCOPED_TRACE(name);
        visit(type, name);
        return !testing::Test::HasFailure();
    });
}

inline constexpr Filling fillings[] = {Filling::zero, Filling::typical, Filling::extreme};

/// The bytes that write() makes of a value.
template <class T>
std::string encoded(const T& value) {
    std::string range(1 << 18, '\xAA');
    Velmora::FastCodec codec(range.data(), range.data() + range.size());
    value.write(codec);
    range.resize(codec.size());
    return range;
}

/// Reads from bytes that end where their storage ends, and expects all of them to be consumed.
template <class T>
void decode(T& value, const std::string& body) {
    const std::unique_ptr<char[]> exact(new char[body.size()]);
    std::memcpy(exact.get(), body.data(), body.size());
    Velmora::FastCodec codec(exact.get(), exact.get() + body.size());
    value.read(codec);
    EXPECT_EQ(codec.size(), body.size());
}

/// What the stream operator prints of a value.
template <class T>
std::string printed(const T& value) {
    static char text[1 << 20];
    Quillon::FastOStream os(text, text + sizeof text);
    os << value;
    return {os.begin(), os.size()};
}
