// Which messages a command takes: by name, family, identifier, time and values.
//
// Conditions of one kind are alternatives (either name), conditions of several kinds must all hold, and so must all
// conditions on values.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "Capture/Packet.h"
#include "Inspect/Values.h"
#include "tools/qlproto/messages/MessageReader.h"

namespace CLI {
class App;
}

namespace qlproto {

/// A condition that cannot be meant: no such message, field or enumerator.
class FilterError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// A condition on a value: "side=BID", "contents.price>108000000", "clOrdID!=x".
///
/// The path is that of the field or the end of it; indices do not belong to it. It holds if it holds for any value of
/// that path. Values are those of the wire, undivided. Sentinels are names (MAX, NMA, NDA, NA) and never greater or
/// less than a number; enumerators are names or numbers, booleans true or false; texts compare byte by byte.
class Condition {
  public:
    /// Throws FilterError.
    explicit Condition(const std::string& text);

    bool holds(Velmora::MsgType_t id, const void* message) const;

    /// Whether a field of that path and kind can meet it; for the visitor below.
    bool concerns(Inspect::Path path) const;
    bool holds(const Inspect::Value& value) const;

  private:
    enum class Relation { equal, unequal, less, lessOrEqual, greater, greaterOrEqual };

    template <class T>
    bool compare(const T& left, const T& right) const;
    std::optional<int64_t> operand(const Inspect::Value& value) const;

    std::vector<std::string> _path;
    Relation _relation;
    std::string _operand;
    std::optional<int64_t> _number;   ///< the operand as a number, if it is one
    std::optional<int64_t> _sentinel; ///< the operand, if it names one
};

class Filter {
  public:
    struct Options {
        std::vector<std::string> names;    ///< with * and ?
        std::vector<std::string> families; ///< as the tool has them
        std::vector<std::string> ids;      ///< decimal or 0x..., of messages
        std::vector<std::string> where;
        std::string from, to; ///< see parseTime
    };

    /// Adds the options to a command.
    static void addTo(CLI::App& command, Options& options);

    /// Takes everything.
    Filter() { _isTaken.fill(true); }

    /// Throws FilterError.
    explicit Filter(const Options& options);

    bool takes(const Capture::Packet& packet, const MessageReader& reader) const;

  private:
    std::array<bool, 65536> _isTaken; ///< by identifier
    std::vector<Condition> _where;
    int64_t _from = INT64_MIN, _to = INT64_MAX;
};

} // namespace qlproto
