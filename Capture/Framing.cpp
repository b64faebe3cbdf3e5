#include "Capture/Framing.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "Capture/Packet.h"

namespace Capture {

namespace {

using Field = Framing::Field;
using Kind = Field::Kind;

constexpr std::pair<std::string_view, Kind> KINDS[] = {
    {"length", Kind::length}, {"id", Kind::id}, {"seq", Kind::sequence}, {"count", Kind::count}, {"skip", Kind::skip}};
constexpr std::pair<std::string_view, Framing::Counts> COUNTS[] = {
    {"body", Framing::Counts::body}, {"frame", Framing::Counts::frame}, {"rest", Framing::Counts::rest}};
constexpr std::size_t LONGEST_TEXT = 4096, MOST_FIELDS = 64;

template <class Pairs, class Key>
auto find(const Pairs& pairs, const Key& key) {
    return std::find_if(std::begin(pairs), std::end(pairs), [&](const auto& it) { return it.first == key; });
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == text.npos ? "" : text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

template <class Number>
bool parseNumber(std::string_view text, Number& number) {
    const bool isHex = text.starts_with("0x") || text.starts_with("0X");
    if (isHex) text.remove_prefix(2);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, isHex ? 16 : 10);
    return error == std::errc() && end == text.data() + text.size() && !text.starts_with('-');
}

} // namespace

const std::vector<Framing::Preset>& Framing::presets() {
    static const std::vector<Preset> all = {{"frames", "length:u32le, id:u16le, body"}};
    return all;
}

/// Takes a text apart, field by field.
class Framing::Parser {
  public:
    explicit Parser(std::string_view text) : _text(text) {}

    Framing parse() {
        if (_text.size() > LONGEST_TEXT)
            throw FramingError("more than " + std::to_string(LONGEST_TEXT) + " characters");
        _row = &_framing._frame;
        for (bool isOpen = false, isClosed = false; _at <= _text.size();) {
            const std::size_t end = std::min(_text.find_first_of(",()", _at), _text.size());
            _field = trimmed(_text.substr(_at, end - _at));
            const char sign = end < _text.size() ? _text[end] : '\0';
            const bool isAfterBrackets = std::exchange(isClosed, sign == ')');
            if (sign == '(') {
                if (isOpen || _framing._message || !_field.empty())
                    fail("a bracket may stand in front of a field, once");
                _framing._message = Row();
                _row = &*_framing._message;
                isOpen = true;
                _isAfterBody = false;
            } else if (!(isAfterBrackets && _field.empty())) {
                field();
            }
            if (sign == ')') {
                if (!std::exchange(isOpen, false)) fail("no bracket was opened");
                _row = &_framing._frame;
                _isAfterBody = true;
            }
            if (sign == '\0' && isOpen) fail("the bracket is not closed");
            _at = end + 1;
        }
        check();
        _framing.noteId();
        return std::move(_framing);
    }

  private:
    [[noreturn]] void fail(const std::string& why) const {
        throw FramingError("'" + std::string(_field.empty() ? trimmed(_text) : _field) + "': " + why);
    }

    void field() {
        if (_field.empty()) fail("a field is missing");
        if (_row->fields.size() == MOST_FIELDS) fail("too many fields");
        if (_field == "body") {
            if (_hasBody || (_row == &_framing._frame && _framing._message)) fail("a message has one body");
            _hasBody = _isAfterBody = true;
            return;
        }
        const std::size_t colon = _field.find(':');
        if (colon == _field.npos) fail("not of the form NAME:SIZE, as in length:u32be; or is body meant?");
        const std::string_view name = trimmed(_field.substr(0, colon));
        std::string_view size = trimmed(_field.substr(colon + 1)), counts;
        if (const std::size_t equals = size.find('='); equals != size.npos) {
            counts = trimmed(size.substr(equals + 1));
            size = trimmed(size.substr(0, equals));
            if (counts.empty()) fail("nothing stands after =");
        }
        Field it{Kind::constant, 0, true};
        if (const auto kind = find(KINDS, name); kind != std::end(KINDS))
            it.kind = kind->second;
        else if (!parseNumber(name, it.value))
            fail("no field is named " + std::string(name) + ": length, id, body, seq, count, skip, or a number");
        takeSize(it, size);
        if (it.kind == Kind::constant && it.size < 8 && it.value >> 8 * it.size != 0) fail("the number does not fit");
        place(it);
        takeCounts(it, counts);
        _row->fields.push_back(it);
    }

    void takeSize(Field& it, std::string_view size) const {
        static constexpr std::pair<std::string_view, uint8_t> sizes[] = {{"u16", 2}, {"u32", 4}, {"u64", 8}};
        it.size = 1;
        if (size == "u8") return;
        const auto found = find(sizes, size.substr(0, 3));
        const std::string_view order = size.substr(std::min<std::size_t>(size.size(), 3));
        if (found == std::end(sizes) || (order != "le" && order != "be"))
            fail("sizes are u8, u16le, u16be, u32le, u32be, u64le and u64be");
        it.size = found->second;
        it.isHighFirst = order == "be";
    }

    void place(Field& it) {
        std::size_t& bytes = _isAfterBody ? _row->after : _row->before;
        it.isAfterBody = _isAfterBody;
        it.at = bytes;
        bytes += it.size;
        if (it.kind == Kind::constant || it.kind == Kind::skip) return;
        const auto isSame = [&](const Field& other) { return other.kind == it.kind; };
        if (std::ranges::any_of(_row->fields, isSame)) fail("it stands there twice");
        if (_isAfterBody && it.kind != Kind::sequence) fail("it stands in front of what it is about");
        if (it.kind == Kind::id) {
            if (std::exchange(_hasId, true)) fail("a message has one identifier");
        }
        if (it.kind == Kind::length) _row->lengthEnd = bytes;
        if ((it.kind == Kind::sequence || it.kind == Kind::count) && _row != &_framing._frame)
            fail("it stands outside of the brackets");
    }

    void takeCounts(const Field& it, std::string_view counts) {
        if (counts.empty()) return;
        if (it.kind == Kind::sequence && counts == "messages") {
            _framing._countsMessages = true;
            return;
        }
        if (it.kind != Kind::length) fail("only a length counts something, and a seq messages");
        const std::size_t sign = std::min(counts.find_first_of("+-"), counts.size());
        const auto what = find(COUNTS, trimmed(counts.substr(0, sign)));
        if (what == std::end(COUNTS)) fail("a length counts the rest, the body or the frame");
        _row->counts = what->second;
        if (sign == counts.size()) return;
        uint16_t more = 0;
        if (!parseNumber(trimmed(counts.substr(sign + 1)), more)) fail("after the sign stands a number");
        _row->more = counts[sign] == '-' ? -int64_t(more) : int64_t(more);
    }

    void check() {
        _field = {};
        const auto isId = [](const Field& it) { return it.kind == Kind::id; };
        if (!_hasBody) fail("no body");
        if (std::ranges::none_of(_framing.inner().fields, isId)) fail("beside the body no id tells what message it is");
        const auto isCount = [](const Field& it) { return it.kind == Kind::count; };
        if (!_framing._message && std::ranges::any_of(_framing._frame.fields, isCount))
            fail("count is about messages between brackets");
    }

    const std::string_view _text;
    std::size_t _at = 0;
    std::string_view _field;
    Framing _framing;
    Row* _row = nullptr;
    bool _isAfterBody = false, _hasBody = false, _hasId = false;
};

void Framing::noteId() {
    const auto id = std::ranges::find(inner().fields, Kind::id, &Field::kind);
    _isAsInPackets = id->size == IDENTIFIER_SIZE && !id->isHighFirst && id->at + id->size == inner().before;
}

Framing Framing::of(std::string_view text) {
    text = trimmed(text);
    for (const Preset& preset : presets())
        if (preset.name == text) text = preset.text;
    return Parser(text).parse();
}

std::string Framing::text() const {
    std::string text;
    const auto append = [&](const std::string& piece) {
        text += (text.empty() || text.back() == '(' ? "" : ", ") + piece;
    };
    const auto appendFields = [&](const Row& row, bool isAfterBody) {
        for (const Field& it : row.fields) {
            if (it.isAfterBody != isAfterBody) continue;
            const auto name = std::find_if(std::begin(KINDS), std::end(KINDS),
                                           [&](const auto& known) { return known.second == it.kind; });
            std::string piece = name == std::end(KINDS) ? std::to_string(it.value) : std::string(name->first);
            piece += ":u" + std::to_string(8 * it.size);
            if (it.size > 1) piece += it.isHighFirst ? "be" : "le";
            if (it.kind == Kind::sequence && _countsMessages) piece += "=messages";
            if (it.kind == Kind::length && (row.counts != Counts::rest || row.more != 0)) {
                for (const auto& [counted, counts] : COUNTS)
                    if (counts == row.counts) piece += '=' + std::string(counted);
                if (row.more != 0) piece.append(row.more > 0 ? "+" : "-").append(std::to_string(std::abs(row.more)));
            }
            append(piece);
        }
    };
    const auto appendRow = [&](const Row& row) {
        appendFields(row, false);
        append("body");
        appendFields(row, true);
    };
    if (!_message) {
        appendRow(_frame);
        return text;
    }
    appendFields(_frame, false);
    append("(");
    appendRow(*_message);
    text += ')';
    appendFields(_frame, true);
    return text;
}

std::vector<Framing> Framing::relatives() const {
    std::vector<Framing> all;
    for (int variant = 1; variant < 12; ++variant) {
        Framing it = *this;
        for (Row* const row : {&it._frame, it._message ? &*it._message : nullptr}) {
            if (row == nullptr) continue;
            for (Field& field : row->fields) {
                if (field.kind == Kind::length && variant % 2 != 0) field.isHighFirst = !field.isHighFirst;
                if (field.kind == Kind::id && variant / 2 % 2 != 0) field.isHighFirst = !field.isHighFirst;
            }
            row->counts = static_cast<Counts>((static_cast<int>(row->counts) + variant / 4) % 3);
        }
        it.noteId();
        all.push_back(std::move(it));
    }
    return all;
}

} // namespace Capture
