// What all targets share: how an input names its message, and checks that end the process when they fail.
#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "Backend/Velmora/TypeLists.h"
#include "generated/QLProtocol/QLProtocol.fields.h"
#include "generated/QLProtocol/QLProtocol.h"

/// Ends the process, for the fuzzer to keep the input, unless `condition` holds.
#define FUZZ_CHECK(condition)                                                                                          \
    ((condition) ? static_cast<void>(0)                                                                                \
                 : (std::fprintf(stderr, "%s:%d: %s\n", __FILE__, __LINE__, #condition), std::abort()))

inline constexpr size_t messageCount = Velmora::countTypes([](auto&& visit) { return Quillon::messages(visit); });

/// `make(of<T>{})` for every message, by INDEX.
template <class Entry, class Make>
consteval std::array<Entry, messageCount> perMessage(Make make) {
    std::array<Entry, messageCount> table{};
    Quillon::messages([&]<class T>(Velmora::of<T> type, const char*) {
        table[T::INDEX] = make(type);
        return true;
    });
    return table;
}

/// An input: the index of a message in one byte, then a body (or the JSON) of it.
struct Input {
    Input(const uint8_t* data, size_t size)
        : index(size != 0 ? data[0] % messageCount : 0),
          body(reinterpret_cast<const char*>(data) + (size != 0), size - (size != 0)) {}

    size_t index;
    std::string_view body;
};

/// Initialises the module at the first call, until the process ends.
inline void initializeOnce() {
    static const struct Module {
        Module() { Quillon::initialize(); }
        ~Module() { Quillon::finalize(); }
    } module;
}
