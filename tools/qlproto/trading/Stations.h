// The stations between exchange and API client, and which of them each message was stamped at.
//
// A record's time fields are found by the marks of the definition. On its way in, a message passes the stations in the order
// of the table; on its way out, in the opposite one. Records on their way out are those that declare the API client's
// time before all others.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

#include "generated/QLProtocol/QLProtocol.traits.h"
#include "tools/qlproto/trading/Messages.h"

namespace qlproto {

/// As the definition marks the fields that hold their times, in nanoseconds; 0 if the message was not stamped there.
inline constexpr std::array<std::string_view, 6> STATIONS{"exchange", "arrival", "handler",
                                                          "enhanced", "server",  "client"};

/// What a message tells of its way.
struct Way {
    std::size_t length = 0;                              ///< of `stations`; fewer than two are no way
    std::array<std::size_t, STATIONS.size()> stations{}; ///< positions in STATIONS, in the order they are passed
    void (*times)(const void* message, int64_t* times) = nullptr; ///< reads one time for each of `stations`
};

namespace detail {

/// The time fields of a record, in the order of its way.
template <class T>
struct TimeFields {
    std::size_t length = 0;
    std::array<std::size_t, STATIONS.size()> stations{};
    std::array<int64_t T::*, STATIONS.size()> members{};
};

template <class T>
consteval TimeFields<T> findTimeFields() {
    std::array<int64_t T::*, STATIONS.size()> found{};
    std::size_t first = STATIONS.size(); // declared before all others
    constexpr auto notes = fieldNotes(Velmora::of<T>{});
    std::size_t field = 0;
    fields(Velmora::of<T>{}, [&](const char*, auto member, auto) {
        const std::string_view mark = notes[field++].station;
        if constexpr (std::is_same_v<decltype(member), int64_t T::*>) {
            for (std::size_t i = 0; i < STATIONS.size(); ++i) {
                if (STATIONS[i] != mark) continue;
                found[i] = member;
                if (first == STATIONS.size()) first = i;
            }
        }
        return true;
    });
    const bool goesOut = first == STATIONS.size() - 1;
    TimeFields<T> result;
    for (std::size_t i = 0; i < STATIONS.size(); ++i) {
        const std::size_t station = goesOut ? STATIONS.size() - 1 - i : i;
        if (found[station] == nullptr) continue;
        result.stations[result.length] = station;
        result.members[result.length++] = found[station];
    }
    return result;
}

template <class T>
inline constexpr TimeFields<T> timeFields = findTimeFields<T>();

/// The way that the records in a value tell; the first of them that does. Times that stand in a message itself are no
/// stations of its way: ImHereMessage repeats the time at which its peer asked.
template <class T>
consteval Way findWay() {
    Way way;
    fields(Velmora::of<T>{}, [&](const char*, auto member, auto) {
        using Field = Velmora::MemberType<decltype(member)>;
        if constexpr (Velmora::Composite<Field>) {
            constexpr const TimeFields<Field>& times = timeFields<Field>;
            way = times.length >= 2 ? Way{times.length, times.stations} : findWay<Field>();
        }
        return way.length == 0;
    });
    return way;
}

template <class T>
void readTimes(const T& value, int64_t* times) {
    fields(Velmora::of<T>{}, [&](const char*, auto member, auto) {
        using Field = Velmora::MemberType<decltype(member)>;
        if constexpr (Velmora::Composite<Field>) {
            constexpr const TimeFields<Field>& found = timeFields<Field>;
            if constexpr (found.length >= 2) {
                for (std::size_t i = 0; i < found.length; ++i) times[i] = (value.*member).*found.members[i];
                return false;
            } else if constexpr (findWay<Field>().length != 0) {
                readTimes(value.*member, times);
                return false;
            }
        }
        return true;
    });
}

} // namespace detail

/// The way of each message, by INDEX.
inline constexpr std::array<Way, MESSAGE_COUNT> WAYS = [] {
    std::array<Way, MESSAGE_COUNT> ways;
    Quillon::messages([&]<class T>(Velmora::of<T>, const char*) {
        Way& way = ways[T::INDEX] = detail::findWay<T>();
        way.times = [](const void* message, int64_t* times) {
            detail::readTimes(*static_cast<const T*>(message), times);
        };
        return true;
    });
    return ways;
}();

} // namespace qlproto
