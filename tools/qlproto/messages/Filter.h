// Which messages a command takes: by name, family, identifier, time and values.
//
// Conditions of one kind are alternatives (either name), conditions of several kinds must all hold, and so must all
// conditions on values. These are read out of the bytes: no message is built to be passed over.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Capture/Packet.h"
#include "Inspect/Selection.h"
#include "tools/qlproto/messages/FieldPath.h"
#include "tools/qlproto/messages/ScanOptions.h"

namespace qlproto {

/// A condition on a value: "side=BID", "contents.price>1.08", "clOrdID!=x", "text~credit", "clOrdID~heron-*".
///
/// The path is that of the field or the end of it; indices do not belong to it. It holds if it holds for any value of
/// that path. Prices are as they are shown, divided by the scale, all other numbers those of the wire. Sentinels are names
/// (MAX, NMA, NDA, NA) and never greater or less than a number; enumerators are names or numbers, booleans true or false.
/// Times of stations compare with dates, too. Texts compare byte by byte; "~" takes those that contain the text or, where
/// it has a * or a ?, are of that pattern, "!~" the others.
class Condition {
  public:
    /// Throws FilterError.
    explicit Condition(const std::string& text, TimeForm time = TimeForm::utc, int64_t priceScale = 1);

    /// The values that it is about, of each message by INDEX; none if it is about how a message came.
    const std::vector<Inspect::Selection>& values() const { return _values; }

    /// If it is about how a message came, whether it holds for the packet; else true.
    bool holdsForPacket(const Capture::Packet& packet) const;
    bool holds(const Inspect::Value& value) const;

  private:
    enum class Relation { equal, unequal, less, lessOrEqual, greater, greaterOrEqual, like, unlike };

    class Search;

    void parse(const std::string& text);
    bool canMeet(const Inspect::ValueInfo& value, bool isTime) const;
    std::optional<int64_t> operand(Inspect::Kind kind, const Inspect::EnumerationInfo* enumeration) const;
    template <class T>
    bool compare(const T& left, const T& right) const;
    bool isText() const { return _relation == Relation::like || _relation == Relation::unlike; }

    FieldPath _path{""};
    std::optional<PacketValue> _ofPacket;
    Relation _relation;
    std::string _operand;
    // The operand as what it can be.
    std::optional<int64_t> _number, _price, _time, _sentinel;
    std::optional<uint64_t> _unsigned;
    std::optional<double> _real;
    std::vector<std::pair<const Inspect::EnumerationInfo*, int64_t>> _enumerators;
    std::vector<Inspect::Selection> _values;
};

class Filter {
  public:
    /// Throws FilterError.
    explicit Filter(const ScanOptions& options);

    /// When the capture begins: by then times of day are those of that day.
    void beginAt(int64_t time);

    /// Whether it takes not just everything.
    bool isNarrow() const { return !_takesAll; }

    /// Whether it may take one of some packets, by their times and the messages, by INDEX, that are among them.
    bool mayTake(int64_t earliest, int64_t latest, const std::vector<bool>& messages) const;

    /// Of a body that is refused under the policy, whether its values before the fault are taken. Packets of no known
    /// message are taken.
    bool takes(const Capture::Packet& packet) const;

  private:
    bool meetsAll(std::string_view body, std::size_t index) const;

    Inspect::Policy _policy;
    TimeForm _form;
    std::vector<bool> _isTaken; ///< by INDEX
    std::vector<Condition> _where;
    bool _takesAll;
    int64_t _from = INT64_MIN, _to = INT64_MAX;
    std::optional<int64_t> _fromClock, _toClock;
};

} // namespace qlproto
