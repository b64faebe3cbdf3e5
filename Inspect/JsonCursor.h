// Goes through a JSON text once, from front to back, and builds nothing: for readers that know what they expect.
//
//     JsonCursor json(text);
//     json.object([&](std::string_view name) {
//         if (name == "id" && json.next() == JsonCursor::Next::number) id = json.number().text; else json.skip();
//     });
//     json.end();
//
// As strict as RFC 8259, besides which strings must be valid UTF-8 with surrogates in pairs. Nothing grows with the
// text but the copy of a string that holds escapes. What is no JSON throws JsonError, which tells the byte.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Inspect {

class JsonCursor {
  public:
    /// The text must outlive the cursor, which begins at `position`.
    explicit JsonCursor(std::string_view text, size_t position = 0)
        : _begin(text.data()), _at(_begin + position), _end(_begin + text.size()) {}

    enum class Next { object, array, string, number, boolean, null };

    /// What stands next, by its first character.
    Next next();

    // Each takes the next value. REQUIRES: next() said that it is one of these.

    struct Number {
        std::string_view text;
        bool isInteger; ///< neither fraction nor exponent
    };
    Number number();
    std::string_view string(); ///< valid until the next call
    bool boolean();
    void null();

    /// Calls `member(name)` for each member, which takes the value. The name is valid until then.
    template <class Member>
    void object(Member&& member) {
        for (bool goesOn = begin('}'); goesOn; goesOn = more('}')) member(name());
    }

    /// Calls `element()` for each element, which takes it.
    template <class Element>
    void array(Element&& element) {
        for (bool goesOn = begin(']'); goesOn; goesOn = more(']')) element();
    }

    /// Elements of the array that stands next, of which nothing is taken. Found by its brackets and commas alone: when
    /// they are taken one by one, the array is found to have that many or to be no JSON.
    size_t count_elements() const;

    /// Takes the next value unseen. It must be JSON nevertheless, and nest no deeper than 64 values.
    void skip() { skip(MAX_DEPTH); }

    /// Nothing but blanks may follow.
    void end();

    size_t position() const { return static_cast<size_t>(_at - _begin); } ///< of the next character
    void go_back(size_t position) { _at = _begin + position; }            ///< to where it has been

    [[noreturn]] void fail(const char* reason) const;

  private:
    static constexpr int MAX_DEPTH = 64;

    void skip(int depth);
    void skip_blanks();
    bool take(char c);
    bool begin(char last);
    bool more(char last);
    std::string_view name();
    void literal(std::string_view word);
    void digits();
    std::string_view long_string(const char* plain);
    void escape();
    unsigned code_unit();

    const char* const _begin;
    const char* _at;
    const char* const _end;
    std::string _room; ///< of a string whose contents do not stand in the text as they are
};

} // namespace Inspect
