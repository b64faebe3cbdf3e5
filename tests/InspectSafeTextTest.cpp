// Texts for logs: bounded, escaped, with secrets hidden on request, and otherwise as the stream operators print them.
#include "Inspect/SafeText.h"

#include <gtest/gtest.h>

#include "Backend/Common/FastOStream.h"
#include "Inspect/Utf8.h"
#include "tests/Guarded.h"
#include "tests/Hex.h"
#include "tests/Samples.h"

namespace {

using namespace Inspect;
using Velmora::of;

class SafeText : public Module {
  protected:
    /// Renders into exactly `room` bytes, after which a page faults.
    template <class T>
    std::string text(const T& message, size_t room = 1 << 18, Secrets secrets = Secrets::show) {
        char* const begin = guarded.end() - room;
        const Rendered rendered = render(message, begin, guarded.end(), secrets);
        EXPECT_LE(rendered.size, room);
        isCut = rendered.isCut;
        return {begin, rendered.size};
    }

    Guarded guarded;
    bool isCut = false;
};

TEST_F(SafeText, HarmlessMessagesArePrintedAsTheStreamOperatorsDo) {
    forEveryMessage([&]<class T>(of<T>, const char*) {
        for (const Filling filling : {Filling::zero, Filling::typical}) {
            for (unsigned seed = 1; seed <= 3; ++seed) {
                InBlock<T> value(1 << 18);
                Sample(filling, seed).fill(*value);
                EXPECT_EQ(text(*value), printed(*value));
                EXPECT_FALSE(isCut);
            }
        }
    });
    // Sentinels, limits, and enumerators without a name.
    InBlock<Quillon::TradeCaptureMessage> trade;
    trade->origPrice = Velmora::NDA;
    trade->contents.amount = INT64_MIN;
    trade->contents.side = static_cast<Quillon::Side::Type>(77);
    trade->userID = INT32_MIN;
    EXPECT_EQ(text(*trade), printed(*trade));
}

TEST_F(SafeText, NoCharacterForgesALineOrReachesTheTerminal) {
    struct Case {
        std::string text;
        const char* rendered;
    };
    const Case cases[] = {
        {"plain", "plain"},
        {"\xC3\xA4 \xE2\x82\xAC \xF0\x9F\x98\x80", "\xC3\xA4 \xE2\x82\xAC \xF0\x9F\x98\x80"}, // valid UTF-8 stays
        {"a\"b\\c", "a\\\"b\\\\c"},
        {"a\nb\rc\td", "a\\nb\\rc\\td"},
        {std::string("a\0b", 3), "a\\x00b"},
        {"\x1B[2J\x7F", "\\x1b[2J\\x7f"},
        {"\xC2\x9B"
         "31m",
         "\\xc2\\x9b31m"}, // the control sequence introducer as one character
        {"\xE2\x80\xA8\xE2\x80\xA9", "\\xe2\\x80\\xa8\\xe2\\x80\\xa9"}, // line and paragraph separator
        {"\xE2\x80\xAE"
         "abc",
         "\\xe2\\x80\\xaeabc"}, // right-to-left override
        {"\xE2\x81\xA6", "\\xe2\\x81\\xa6"},
        {"\xEF\xBB\xBF", "\\xef\\xbb\\xbf"},
        {"\xFF\x80", "\\xff\\x80"},
        {"\xC3", "\\xc3"}, // cut short
        {"\xE2\x82", "\\xe2\\x82"},
        {"\xC3(", "\\xc3("},
        {"\xC0\xAF", "\\xc0\\xaf"}, // overlong
        {"\xE0\x80\xAF", "\\xe0\\x80\\xaf"},
        {"\xF0\x80\x80\xAF", "\\xf0\\x80\\x80\\xaf"},
        {"\xED\xA0\x80", "\\xed\\xa0\\x80"},          // a surrogate
        {"\xF4\x90\x80\x80", "\\xf4\\x90\\x80\\x80"}, // beyond the last code point
    };
    for (const Case& c : cases) {
        InBlock<Quillon::JsonFromServer> message;
        message->contents = c.text;
        EXPECT_EQ(text(*message), std::string("<JsonFromServer contents=\"") + c.rendered + "\">") << hex(c.text);
    }
    // Characters that steer or reorder, each range to its ends.
    for (const auto& [first, last] : {std::pair{0x7F, 0x9F},
                                      {0x61C, 0x61C},
                                      {0x200B, 0x200F},
                                      {0x2028, 0x202E},
                                      {0x2060, 0x206F},
                                      {0xFEFF, 0xFEFF}})
        for (int c = first - 1; c <= last + 1; ++c) {
            const std::string bytes =
                c < 0x80    ? std::string{static_cast<char>(c)}
                : c < 0x800 ? std::string{static_cast<char>(0xC0 | c >> 6), static_cast<char>(0x80 | (c & 63))}
                            : std::string{static_cast<char>(0xE0 | c >> 12), static_cast<char>(0x80 | (c >> 6 & 63)),
                                          static_cast<char>(0x80 | (c & 63))};
            EXPECT_EQ(Inspect::quoted(bytes).find("\\x") == 1, c >= first && c <= last) << c;
        }
    // Whatever the bytes: one line, valid UTF-8, no control characters, quotes only around.
    std::mt19937_64 random(3);
    for (int round = 0; round < 3000; ++round) {
        InBlock<Quillon::JsonFromServer> message;
        std::string bytes(random() % 40, '\0');
        for (char& c : bytes) c = static_cast<char>(random() % 3 != 0 ? random() : 0xE0 + random() % 32);
        message->contents = bytes;
        std::string line = text(*message);
        line = line.substr(std::strlen("<JsonFromServer contents=\""));
        line.resize(line.size() - 2);
        for (std::string_view rest = line; !rest.empty();) {
            const CodePoint c = first_code_point(rest);
            ASSERT_NE(c.length, 0u) << hex(bytes);
            ASSERT_TRUE(c.value >= 0x20 && (c.value < 0x7F || c.value >= 0xA0)) << hex(bytes);
            ASSERT_NE(c.value, U'"') << "only escaped";
            rest.remove_prefix(c.value == U'\\' ? 2 : c.length);
        }
    }
}

TEST_F(SafeText, TextsAreCutVisiblyAndNeverInsideACharacter) {
    InBlock<Quillon::ClientConnectMessage> message;
    message->user = "\xE2\x82\xAC\n"
                    "x\xFF";
    message->password = "secret";
    const std::string whole = text(*message);
    EXPECT_EQ(whole, "<ClientConnectMessage user=\"\xE2\x82\xAC\\nx\\xff\" password=\"secret\">");
    EXPECT_EQ(text(*message, whole.size()), whole) << "room for the mark is not wanted when all fits";
    const std::string mark = "...[cut]";
    for (size_t room = 0; room < whole.size(); ++room) {
        SCOPED_TRACE(room);
        const std::string cut = text(*message, room);
        EXPECT_TRUE(isCut);
        if (room < mark.size()) {
            EXPECT_EQ(cut, mark.substr(0, room));
            continue;
        }
        ASSERT_TRUE(cut.ends_with(mark));
        const std::string kept = cut.substr(0, cut.size() - mark.size());
        EXPECT_TRUE(whole.starts_with(kept));
        for (const char* piece : {"\xE2\x82\xAC", "\\n", "\\xff", "password"}) {
            const size_t at = whole.find(piece);
            EXPECT_TRUE(kept.size() <= at || kept.size() >= at + std::strlen(piece)) << piece;
        }
    }
    // A text far beyond any buffer, and a count far beyond it.
    InBlock<Quillon::JsonFromServer> large(1 << 18);
    large->contents = std::string(65535, '"');
    EXPECT_EQ(text(*large, 101).size(), 100u) << "an escape does not fit the last place";
    InBlock<Quillon::BatchesCompletedMessage> many(1 << 18);
    many->batchesCompleted.resize(32767);
    EXPECT_EQ(text(*many, 100).substr(92), mark);
}

TEST_F(SafeText, SecretsAreHiddenOnRequestWhateverTheyHold) {
    InBlock<Quillon::ClientConnectMessage> message;
    message->user = "me";
    EXPECT_EQ(text(*message, 1000, Secrets::hide), "<ClientConnectMessage user=\"me\" password=***>");
    message->password = "secret\n";
    EXPECT_EQ(text(*message, 1000, Secrets::hide), "<ClientConnectMessage user=\"me\" password=***>");
    EXPECT_EQ(text(*message, 1000, Secrets::show), "<ClientConnectMessage user=\"me\" password=\"secret\\n\">");
    for (size_t room = 0; room < 60; ++room)
        EXPECT_EQ(text(*message, room, Secrets::hide).find("secret"), std::string::npos);
}

TEST_F(SafeText, UnknownIdentifiersAreSaid) {
    char line[64];
    const Rendered rendered = render(0xF209, nullptr, line, line + sizeof line, Secrets::hide);
    EXPECT_EQ(std::string(line, rendered.size), "<unknown message 61961>");
    EXPECT_TRUE(render(0xF209, nullptr, line, line + 10, Secrets::hide).isCut);
}

} // namespace
