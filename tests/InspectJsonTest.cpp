// JSON both ways: exact round trips, the mapping, and strict errors with their paths.
#include "Inspect/Json.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

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
        {R"("userID":0,)", {"", R"("userId":0,)"}, "userID: missing"},
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
    InBlock<Quillon::JsonFromServer> small(static_cast<int>(sizeof(Quillon::JsonFromServer)) + 2);
    EXPECT_THROW(from_json("{\"contents\":\"ab\"}", *small), std::out_of_range);
}

} // namespace
