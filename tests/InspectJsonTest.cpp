// JSON both ways: exact round trips, the mapping, and strict errors with their paths.
#include "Inspect/Json.h"

#include <random>
#include <sstream>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "Inspect/JsonCursor.h"
#include "tests/CountedHeap.h"
#include "tests/Samples.h"

namespace {

using namespace Inspect;
using Velmora::of;

class Json : public Module {};

TEST_F(Json, MessagesComeBackEqual) {
    forEveryMessage([]<class T>(of<T>, const char*) {
        for (const Filling filling : fillings) {
            for (unsigned seed = 1; seed <= 10; ++seed) {
                InBlock<T> value(1 << 18), back(1 << 18);
                Sample sample(filling, seed);
                sample.fill(*value);
                const Integers integers = seed % 2 != 0 ? Integers::strings : Integers::numbers;
                const std::string text = to_json(*value, integers);
                from_json(text, *back);
                sample.check(*back);
                EXPECT_TRUE(*back == *value) << "also strings that are empty and those never stored";
                EXPECT_EQ(to_json(*back, integers), text);
                EXPECT_EQ(text.find('\n'), text.npos);
            }
        }
    });
}

TEST_F(Json, ValuesStandAsDocumented) {
    InBlock<Quillon::SubmitOrderMessage> order;
    order->userID = -7;
    order->quoteID = "";
    order->onBehalfOfCompID = std::string("\xC3\xA4\\\"\n\xFF\0", 7);
    order->contents.orderID = Velmora::NA;
    order->contents.timeHandler = 1700000000000000001;
    order->contents.side = Quillon::Side::OFR;
    order->contents.ordType = static_cast<Quillon::OrderType::Type>(99);
    order->contents.amount = INT64_MIN;
    order->contents.price = Velmora::NDA;
    order->contents.parameters.add_back().key = "k";
    const char* const expected =
        R"({"userID":-7,"quoteID":"","onBehalfOfCompID":"ä\\\\\"\n\\xff\u0000","contents":{"orderID":"NA",)"
        R"("clOrdID":null,"timeApiClient":"0","timeApiServer":"0","timeHandler":"1700000000000000001","feedID":0,)"
        R"("marketID":0,"side":"OFR","amount":"-9223372036854775808","price":"NDA","ordType":99,"timeInForce":"DAY",)"
        R"("stopPrice":"0","maxShow":"0","minAmount":"0","parameters":[{"key":"k","value":null}]},"modelID":null})";
    EXPECT_EQ(to_json(*order), expected);
    std::string numbers = expected;
    for (const char* quoted : {"\"0\"", "\"1700000000000000001\"", "\"-9223372036854775808\""})
        for (size_t at; (at = numbers.find(quoted)) != numbers.npos;)
            numbers.replace(at, std::strlen(quoted), std::string(quoted + 1, std::strlen(quoted) - 2));
    EXPECT_EQ(to_json(*order, Integers::numbers), numbers);
    InBlock<Quillon::SubmitOrderMessage> back;
    from_json(numbers, *back);
    EXPECT_TRUE(*back == *order);

    InBlock<Quillon::DateRolloverMessage> rollover;
    rollover->dispatchToAll = true;
    EXPECT_TRUE(to_json(*rollover).ends_with("\"dispatchToAll\":true}"));
    InBlock<Quillon::RequestMessage> request;
    request->request = Quillon::Request::SECURITYINFO;
    EXPECT_TRUE(to_json(*request).ends_with("\"request\":\"SECURITYINFO\"}")) << "beyond a byte, yet known";
}

TEST_F(Json, EveryErrorTellsItsPath) {
    struct Case {
        const char* from; ///< in the JSON of a sound message
        std::vector<const char*> to;
        const char* error;
    };
    const Case cases[] = {
        {R"("userID":0)", {R"("userID":"0")", R"("userID":0.0)"}, "userID: not an integer"},
        {R"("userID":0)",
         {R"("userID":2147483648)", R"("userID":18446744073709551615)", R"("userID":-2147483649)"},
         "userID: not in -2147483648..2147483647"},
        {R"("userID":0,)", {""}, "userID: missing"},
        {R"("userID":0,)", {R"("userId":0,)"}, "userId: unknown name"},
        {R"("userID":0)", {R"("userID":0,"more":1)"}, "more: unknown name"},
        {R"("userID":0)", {R"("userID":0,"userID":1)"}, "userID: given twice"},
        {R"("quoteID":null)", {R"("quoteID":1)"}, "quoteID: not a string"},
        {R"("quoteID":null)",
         {R"("quoteID":"\\x4")", R"("quoteID":"\\x4g")", R"("quoteID":"a\\")", R"("quoteID":"\\n")"},
         "quoteID: a backslash is neither \\\\ nor \\x and two hexadecimal digits"},
        {R"("orderID":"0")",
         {R"("orderID":"00")", R"("orderID":"+1")", R"("orderID":"1 ")", R"("orderID":"")", R"("orderID":"-0")",
          R"("orderID":"NAN")", R"("orderID":"9223372036854775808")"},
         "contents.orderID: not an integer of 64 bits"},
        {R"("orderID":"0")",
         {R"("orderID":9223372036854775808)"},
         "contents.orderID: not in -9223372036854775808..9223372036854775807"},
        {R"("orderID":"0")", {R"("orderID":true)"}, "contents.orderID: not an integer"},
        {R"("side":0)", {R"("side":"bid")"}, "contents.side: no enumerator of Side"},
        {R"("side":0)", {R"("side":null)"}, "contents.side: not an integer"},
        {R"("parameters":[])", {R"("parameters":{})"}, "contents.parameters: not an array"},
        {R"("parameters":[])",
         {R"("parameters":[{"key":null,"value":null},{"key":null}])"},
         "contents.parameters[1].value: missing"},
        {R"("parameters":[])",
         {R"("parameters":[{"key":null,"value":null},{"key":null,"value":"","key":""}])"},
         "contents.parameters[1].key: given twice"},
        {R"("parameters":[])", {R"("parameters":[[]])"}, "contents.parameters[0]: not an object"},
    };
    InBlock<Quillon::SubmitOrderMessage> empty;
    const std::string sound = to_json(*empty);
    for (const Case& c : cases) {
        const size_t at = sound.find(c.from);
        ASSERT_NE(at, sound.npos) << c.from;
        for (const char* to : c.to) {
            InBlock<Quillon::SubmitOrderMessage> message;
            try {
                from_json(std::string(sound).replace(at, std::strlen(c.from), to), *message);
                ADD_FAILURE() << to << " was taken";
            } catch (const JsonError& e) {
                EXPECT_EQ(std::string(e.what()), c.error) << to;
                EXPECT_TRUE(std::string(c.error).starts_with(e.path() + ": ")) << to;
                const std::string wrong = std::string(sound).replace(at, std::strlen(c.from), to);
                InBlock<Quillon::SubmitOrderMessage> other;
                JsonReading reading{.mostErrors = 5};
                JsonCursor json(wrong);
                EXPECT_NO_THROW(from_json(other->ID, json, &*other, reading)) << "reading goes on to the end";
                ASSERT_FALSE(reading.errors.empty());
                EXPECT_EQ(reading.errors.front().what(), std::string(c.error));
                EXPECT_NO_THROW(json.end());
            }
        }
    }
    InBlock<Quillon::DateRolloverMessage> rollover;
    std::string number = to_json(*rollover);
    number.replace(number.find("false"), 5, "0");
    EXPECT_EQ(thrownText<JsonError>([&] { from_json(number, *rollover); }), "dispatchToAll: not a boolean");
}

TEST_F(Json, WhatIsNoJsonOrNoMessageIsAnErrorToo) {
    InBlock<Quillon::TimerMessage> timer;
    for (const char* text :
         {"", "{", "{\"tqid\":1}x", "[]", "null", "{\"tqid\":01}", "\"\xFF\"", "{\"tqid\":\"\\ud800\"}"})
        EXPECT_THROW(from_json(text, *timer), JsonError) << text;
    EXPECT_THROW(from_json(std::string(100000, '['), *timer), JsonError) << "no recursion";
    EXPECT_THROW(from_json(0xF209, "{}", nullptr), JsonError);
    EXPECT_THROW(to_json(0xF209, nullptr), JsonError);
}

TEST_F(Json, WhatDoesNotFitIsOneErrorBeyondTheRestAndBeyondTheWholeBlock) {
    using Numbers = Quillon::BatchesCompletedMessage;
    using Text = Quillon::JsonFromServer;
    std::string many = "0";
    for (int i = 1; i < 100; ++i) many += ",0";
    for (const size_t missing : {1u, 399u}) {
        InBlock<Numbers> numbers(static_cast<int>(sizeof(Numbers) + 400 - missing));
        EXPECT_EQ(thrownText<DoesNotFit>([&] { from_json(R"({"batchesCompleted":[)" + many + "]}", *numbers); }),
                  "batchesCompleted: does not fit the block");
        InBlock<Text> text(static_cast<int>(sizeof(Text) + 400 - missing));
        EXPECT_EQ(thrownText<DoesNotFit>([&] { from_json(R"({"contents":")" + std::string(399, 'x') + "\"}", *text); }),
                  "contents: does not fit the block");
    }
}

TEST_F(Json, IsReadWithoutMemoryBesidesTheBlock) {
    forEveryMessage([]<class T>(of<T>, const char*) {
        InBlock<T> value(1 << 18), back(1 << 18);
        Sample(Filling::typical).fill(*value);
        const std::string text = to_json(*value);
        const long before = heap::taken;
        from_json(text, *back);
        const bool isCopied = text.find('\\') != text.npos; // by what has escapes
        EXPECT_TRUE(isCopied || heap::taken == before) << text;
    });
}

/// Names, strings and numbers of a text, one after the other.
struct Found : nlohmann::json_sax<nlohmann::json> {
    std::vector<std::string> all;
    bool take(const std::string& text) { return all.push_back(text), true; }
    bool null() override { return true; }
    bool boolean(bool it) override { return take(it ? "true" : "false"); }
    bool number_integer(int64_t it) override { return take(std::to_string(it)); }
    bool number_unsigned(uint64_t it) override { return take(std::to_string(it)); }
    bool number_float(double, const std::string& it) override { return take(it); }
    bool string(std::string& it) override { return take(it); }
    bool binary(binary_t&) override { return true; }
    bool start_object(size_t) override { return true; }
    bool key(std::string& it) override { return take(it); }
    bool end_object() override { return true; }
    bool start_array(size_t) override { return true; }
    bool end_array() override { return true; }
    bool parse_error(size_t, const std::string&, const nlohmann::json::exception&) override { return false; }

    void read(JsonCursor& json) {
        switch (json.next()) {
        case JsonCursor::Next::object:
            return json.object([&](std::string_view name) {
                take(std::string(name));
                read(json);
            });
        case JsonCursor::Next::array: {
            const size_t count = json.count_elements();
            size_t elements = 0;
            json.array([&] { ++elements, read(json); });
            EXPECT_EQ(count, elements);
            return;
        }
        case JsonCursor::Next::string:
            take(std::string(json.string()));
            return;
        case JsonCursor::Next::number:
            take(std::string(json.number().text));
            if (all.back() == "-0") all.back() = "0"; // as the number it is
            return;
        case JsonCursor::Next::boolean:
            boolean(json.boolean());
            return;
        case JsonCursor::Next::null:
            json.null();
        }
    }
};

TEST(JsonCursor, TakesAndRefusesWhatAnotherReaderDoes) {
    std::vector<std::string> pieces = {" ", "\n", "\"\x01\"", "\"\x7F\"", "\"\xC3\xA4\"", "\"\xFF\""};
    std::istringstream more(
        R"({ } [ ] , : "a" "" 1 - 0 -7 0.5 e-3 1e-9 true tru false null "\u00e4\u20ac" "\ud83d\ude00"
        "\ud83d" "\ude00" "\u12g4" "\x" "\\\"]\/\b\f\n\r\t" " \ )");
    for (std::string piece; more >> piece;) pieces.push_back(piece);
    std::mt19937 random(1);
    size_t taken = 0;
    for (int i = 0; i < 100'000; ++i) {
        std::string text;
        for (size_t n = random() % 9 + 1; n != 0; --n) text += pieces[random() % pieces.size()];
        Found expected, found;
        const bool isGood = nlohmann::json::sax_parse(text, &expected);
        const std::string error = thrownText<JsonError>([&] {
            JsonCursor whole(text), json(text);
            whole.skip();
            whole.end();
            found.read(json);
        });
        ASSERT_EQ(error.empty(), isGood) << text << error;
        ASSERT_TRUE(!isGood || found.all == expected.all) << text;
        taken += isGood;
    }
    EXPECT_GT(taken, 5'000u);
}

TEST(JsonCursor, SkipsNoMoreThan64ValuesInOneAnother) {
    for (const size_t depth : {64u, 65u}) {
        const std::string text = std::string(depth, '[') + "0" + std::string(depth, ']');
        EXPECT_EQ(thrownText<JsonError>([&] { JsonCursor(text).skip(); }),
                  depth == 64 ? "" : "not JSON at byte 65: nested too deeply");
    }
}

} // namespace
