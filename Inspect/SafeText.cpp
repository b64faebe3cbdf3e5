#include "Inspect/SafeText.h"

#include <algorithm>

#include "Inspect/TextWalk.h"

namespace Inspect {
namespace detail {

/// Whether the character stands as it is, at a glance.
static bool is_plain(char c) { return c >= 0x20 && c < 0x7F && c != '"' && c != '\\'; }

void TextRenderer::show_characters(std::string_view rest) {
    while (!rest.empty() && !_text.is_cut()) {
        size_t plain = 0;
        while (plain < rest.size() && is_plain(rest[plain])) ++plain;
        if (plain != 0 && _text.takes_with_mark(plain)) { // as good as one by one
            _text.put(rest.substr(0, plain));
            rest.remove_prefix(plain);
            continue;
        }
        const CodePoint first = first_code_point(rest);
        const size_t length = std::max<size_t>(first.length, 1);
        show_character(first, rest.substr(0, length));
        rest.remove_prefix(length);
    }
}

void TextRenderer::show_character(CodePoint c, std::string_view bytes) {
    if (c.length != 0) {
        switch (c.value) {
        case '"':
            return _text.put("\\\"");
        case '\\':
            return _text.put("\\\\");
        case '\n':
            return _text.put("\\n");
        case '\r':
            return _text.put("\\r");
        case '\t':
            return _text.put("\\t");
        }
        if (is_harmless(c.value)) return _text.put(bytes);
    }
    for (const char byte : bytes) {
        const auto b = static_cast<unsigned char>(byte);
        const char escape[] = {'\\', 'x', HEX_DIGITS[b >> 4], HEX_DIGITS[b & 15]};
        _text.put({escape, sizeof escape});
    }
}

} // namespace detail

Rendered render(const Protocol& protocol, Velmora::MsgType_t id, const void* message, char* begin, char* end,
                Secrets secrets) {
    return render(protocol, id, message, begin, end, Display{.secrets = secrets});
}

Rendered render(const Protocol& protocol, Velmora::MsgType_t id, const void* message, char* begin, char* end,
                const Display& display) {
    if (const detail::Renderer* const found = protocol.find(protocol.renderers, id))
        return found->render(message, begin, end, display);
    detail::BoundedText text(begin, end);
    text.put("<unknown message ");
    text.put(std::to_string(id));
    text.put(">");
    return text.rendered();
}

void append_safe(std::string_view bytes, std::string& text) {
    const size_t before = text.size();
    text.resize(before + 4 * bytes.size()); // no byte takes more
    const Display display;
    detail::TextRenderer renderer(text.data() + before, text.data() + text.size(), display);
    text.resize(before + renderer.characters(bytes).size);
}

void append_visible(std::string_view bytes, std::string& text) {
    while (!bytes.empty()) {
        const CodePoint first = first_code_point(bytes);
        const std::string_view character = bytes.substr(0, std::max<size_t>(first.length, 1));
        if (first.length != 0 && is_harmless(first.value))
            text += character;
        else
            append_safe(character, text);
        bytes.remove_prefix(character.size());
    }
}

std::string quoted(std::string_view text) {
    std::string result = "\"";
    append_safe(text, result);
    return result + '"';
}

} // namespace Inspect
