#include "generator/Xml.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include <fmt/format.h>

namespace qlgen {
namespace {

constexpr size_t npos = std::string_view::npos;
constexpr std::string_view blanks = " \t\r\n";

/// A character of UTF-8; no bytes if it is none.
struct Character {
    uint32_t code = 0;
    size_t bytes = 0;
};
Character characterAt(std::string_view text, size_t at) {
    const auto byte = [&](size_t i) -> uint32_t { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0; };
    const uint32_t first = byte(at);
    if (first < 0x80) return {first, 1};
    const size_t bytes = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    uint32_t code = first & (0x7Fu >> bytes);
    for (size_t i = 1; i < bytes; ++i) {
        if ((byte(at + i) & 0xC0) != 0x80) return {};
        code = code << 6 | (byte(at + i) & 0x3F);
    }
    constexpr uint32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
    if (first < 0xC2 || first > 0xF4 || code < least[bytes]) return {};
    return {code, bytes};
}

bool isXmlCharacter(uint32_t code) {
    if (code < 0x20) return code == '\t' || code == '\n' || code == '\r';
    return code < 0xD800 || (code > 0xDFFF && code < 0xFFFE) || (code > 0xFFFF && code <= 0x10FFFF);
}

std::optional<XmlFault> findBadCharacter(std::string_view xml) {
    for (size_t at = 0; at < xml.size();) {
        const Character c = characterAt(xml, at);
        if (c.bytes == 0) return XmlFault{at, "a byte that is not UTF-8"};
        if (!isXmlCharacter(c.code)) return XmlFault{at, fmt::format("character U+{:04X} is none of XML", c.code)};
        at += c.bytes;
    }
    return {};
}

/// Whether `name` is what stands between & and ; of a reference.
bool isReference(std::string_view name) {
    for (const std::string_view known : {"amp", "lt", "gt", "quot", "apos"})
        if (name == known) return true;
    if (!name.starts_with('#')) return false;
    const bool isHexadecimal = name.starts_with("#x");
    name.remove_prefix(isHexadecimal ? 2 : 1);
    uint32_t code = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), code, isHexadecimal ? 16 : 10);
    return error == std::errc() && end == name.data() + name.size() && isXmlCharacter(code);
}

/// Goes through the markup once. What is cut short is left to the parser.
class Scan {
  public:
    explicit Scan(std::string_view xml) : _xml(xml), _at(xml.starts_with("\xEF\xBB\xBF") ? 3 : 0), _begin(_at) {}

    std::optional<XmlFault> run() {
        while (!_fault && _at < _xml.size()) _xml[_at] == '<' ? markup() : characters();
        return _fault;
    }

  private:
    void fail(size_t at, const char* text) { _fault = {at, text}; }
    bool isHere(std::string_view text) const { return _xml.substr(_at).starts_with(text); }
    void skipBeyond(std::string_view end, size_t from) {
        _at = std::min(_xml.find(end, from), _xml.size() - end.size()) + end.size();
    }

    void markup() {
        if (isHere("<!--"))
            comment();
        else if (isHere("<![CDATA["))
            skipBeyond("]]>", _at);
        else if (isHere("<!"))
            fail(_at, "there is a document type");
        else if (isHere("<?xml ") && _at != _begin)
            fail(_at, "the declaration stands after other things");
        else if (isHere("<?"))
            skipBeyond("?>", _at);
        else
            tag();
    }
    void comment() {
        const size_t dashes = _xml.find("--", _at + 4);
        if (dashes != npos && !_xml.substr(dashes).starts_with("-->")) fail(dashes, "'--' in a comment");
        skipBeyond("-->", _at + 4);
    }
    void tag() {
        const bool isEnd = isHere("</");
        for (++_at; _at < _xml.size() && _xml[_at] != '>'; ++_at)
            if (_xml[_at] == '"' || _xml[_at] == '\'')
                if (!value(_xml[_at])) return;
        if (isEnd)
            --_depth;
        else if (_xml[_at - 1] != '/')
            ++_depth;
        ++_at;
    }
    /// The value of an attribute, up to the quote that ends it.
    bool value(char quote) {
        const size_t end = std::min(_xml.find(quote, _at + 1), _xml.size());
        if (const size_t markup = _xml.find('<', _at); markup < end) fail(markup, "'<' in an attribute");
        references(end);
        _at = end;
        return !_fault && end < _xml.size();
    }
    void characters() {
        const size_t end = std::min(_xml.find('<', _at), _xml.size());
        const size_t text = _xml.find_first_not_of(blanks, _at);
        if (_depth <= 0 && text < end) fail(text, "text outside the root element");
        references(end);
        _at = end;
    }
    void references(size_t end) {
        for (size_t at = _at; !_fault && (at = _xml.find('&', at)) < end; ++at) {
            const size_t semicolon = _xml.substr(at, 16).find(';'); // none is longer
            if (semicolon == npos || !isReference(_xml.substr(at + 1, semicolon - 1)))
                fail(at, "'&' begins no reference that is known");
        }
    }

    const std::string_view _xml;
    size_t _at;
    const size_t _begin;
    int64_t _depth = 0;
    std::optional<XmlFault> _fault;
};

} // namespace

std::optional<XmlFault> findXmlFault(std::string_view xml) {
    if (const auto fault = findBadCharacter(xml)) return fault;
    return Scan(xml).run();
}

bool turnsText(std::string_view text) {
    for (size_t at = 0; at < text.size();) {
        const Character c = characterAt(text, at);
        if ((c.code >= 0x202A && c.code <= 0x202E) || (c.code >= 0x2066 && c.code <= 0x2069)) return true;
        at += std::max<size_t>(c.bytes, 1);
    }
    return false;
}

size_t countCharacters(std::string_view text) {
    return static_cast<size_t>(std::ranges::count_if(text, [](char c) { return (c & 0xC0) != 0x80; }));
}

Lines::Lines(std::string_view text) {
    for (size_t at = 0; (at = text.find('\n', at)) != npos; ++at) _ends.push_back(at);
}

size_t Lines::at(size_t offset) const {
    return static_cast<size_t>(std::ranges::lower_bound(_ends, offset) - _ends.begin()) + 1;
}

} // namespace qlgen
