// The walk over the values of a message, and values as people see them.
#include <algorithm>
#include <map>

#include "Inspect/BodyWalk.h"
#include "Inspect/Display.h"
#include "Inspect/Json.h"
#include "Inspect/Values.h"
#include "tests/Samples.h"

namespace {

using namespace Inspect;

class Values : public Module {};

TEST_F(Values, ComeWithPathKindAndValue) {
    InBlock<Quillon::SubmitOrderMessage> order;
    order->userID = -7;
    order->contents.side = Quillon::Side::OFR;
    order->contents.price = Velmora::NDA;
    order->contents.parameters.add_back().key = "a";
    order->contents.parameters.add_back().value = "b";

    struct Gather : ValueVisitor {
        std::map<std::string, Value> values;
        std::string last;
        bool value(Path path, const Value& value) override {
            values[path_text(path)] = value;
            last = path_text(path);
            return last != end;
        }
        bool vector(Path path, const Value& vector) override { return value(path, vector); }
        std::string end;
    } all;
    EXPECT_TRUE(walk_values(order->ID, &*order, all));
    EXPECT_EQ(all.last, "modelID");
    EXPECT_EQ(all.values.size(), 3u + 15u + 1u + 4u + 1u);
    EXPECT_EQ(all.values["userID"].number, -7);
    EXPECT_EQ(all.values["contents.side"].number, Quillon::Side::OFR);
    EXPECT_EQ(all.values["contents.side"].enumeration->name, "Side");
    EXPECT_EQ(all.values["contents.price"].kind, Kind::price);
    EXPECT_EQ(all.values["contents.price"].number, Velmora::NDA);
    EXPECT_EQ(all.values["contents.parameters"].kind, Kind::vector);
    EXPECT_EQ(all.values["contents.parameters"].number, 2);
    EXPECT_EQ(all.values["contents.parameters[0].key"].text, "a");
    EXPECT_TRUE(all.values["contents.parameters[0].key"].isStored);
    EXPECT_FALSE(all.values["contents.parameters[0].value"].isStored);
    EXPECT_EQ(all.values["contents.parameters[1].value"].text, "b");

    for (const char* end : {"contents.side", "contents.parameters", "contents.parameters[0].value"}) {
        Gather some;
        some.end = end;
        EXPECT_FALSE(walk_values(order->ID, &*order, some));
        EXPECT_EQ(some.last, some.end);
    }

    Gather none;
    EXPECT_TRUE(walk_values(3, nullptr, none)); // no such message
    EXPECT_TRUE(none.values.empty());
}

TEST_F(Values, AreSecretWhereverARecordAroundThemIs) {
    InBlock<Quillon::SubmitOrderMessage> order;
    order->contents.parameters.add_back();
    const std::string body = encoded(*order);

    // As if the definition said that "contents" is secret.
    const TypeInfo& type = *reflect(order->ID);
    std::vector<FieldInfo> fields(type.fields.begin(), type.fields.end());
    std::ranges::find(fields, "contents", &FieldInfo::name)->isSecret = true;
    TypeInfo marked = type;
    marked.fields = fields;
    const struct {
        TypeInfo type;
        const char* secret; ///< what the paths of secret values begin with
    } cases[] = {{type, "-"}, {marked, "contents."}};
    for (const auto& it : cases) {
        struct Check : ValueVisitor {
            explicit Check(std::string_view secret_) : secret(secret_) {}
            std::string_view secret;
            bool value(Path path, const Value& value) override {
                EXPECT_EQ(value.isSecret, path_text(path).starts_with(secret)) << path_text(path);
                return true;
            }
            bool vector(Path path, const Value& vector) override { return value(path, vector); }
        } check(it.secret);
        EXPECT_TRUE(walk_values(order->ID, it.type, &*order, check));
        EXPECT_TRUE(walk_body(it.type, body, [&](const BodyValue& value) {
            EXPECT_EQ(value.isSecret, value.path.starts_with(it.secret)) << value.path;
            return true;
        }));
        EXPECT_EQ(holds_secret(it.type), *it.secret != '-');
    }
}

TEST_F(Values, ThatAreNoTextsGoByTheirNames) {
    const EnumerationInfo* const side = *std::ranges::find(all_enumerations(), "Side", &EnumerationInfo::name);
    const auto text = [&](Kind kind, int64_t number) {
        return number_text({.kind = kind, .number = number, .text = {}, .enumeration = side});
    };
    EXPECT_EQ(text(Kind::boolean, 1), "true");
    EXPECT_EQ(text(Kind::boolean, 0), "false");
    EXPECT_EQ(text(Kind::enumeration, Quillon::Side::OFR), "OFR");
    EXPECT_EQ(text(Kind::enumeration, 77), "77");
    EXPECT_EQ(text(Kind::price, Velmora::NDA), "NDA");
    EXPECT_EQ(text(Kind::int64, -7), "-7");
    EXPECT_EQ(text(Kind::int32, INT32_MAX), "2147483647");
}

TEST_F(Values, AreDividedExactly) {
    struct Case {
        int64_t value, scale;
        const char* text;
    };
    const Case cases[] = {{108450000, 100000000, "1.0845"},
                          {-5, 10, "-0.5"},
                          {30, 10, "3"},
                          {1, 1000, "0.001"},
                          {0, 100, "0"},
                          {-7, 1, "-7"},
                          {Velmora::NA, 100, "NA"},
                          {INT64_MIN, 10, "-922337203685477580.8"}};
    for (const Case& it : cases) EXPECT_EQ(scaled_text(it.value, it.scale), it.text);
}

TEST_F(Values, AreShownDividedAndWithoutSecretsWhereAsked) {
    InBlock<Quillon::SubmitOrderMessage> order;
    order->contents.price = 108450000;
    order->contents.feedID = 100000000; // no price
    const Display scaled{.priceScale = 100000000};
    char line[2000];
    const Rendered rendered = render(order->ID, &*order, line, line + sizeof line, scaled);
    const std::string text(line, rendered.size);
    EXPECT_NE(text.find(" price=1.0845 "), text.npos) << text;
    EXPECT_NE(text.find(" feedID=100000000 "), text.npos) << text;
    std::string json = "after ";
    append_json(order->ID, &*order, Integers::strings, scaled, json);
    EXPECT_EQ(json.rfind("after {", 0), 0u);
    EXPECT_NE(json.find(R"("price":"1.0845")"), json.npos) << json;

    InBlock<Quillon::ClientConnectMessage> connect;
    connect->user = "wren";
    connect->password = "secret";
    json.clear();
    append_json(connect->ID, &*connect, Integers::strings, {.secrets = Secrets::hide}, json);
    EXPECT_EQ(json, R"({"user":"wren","password":"***"})");
}

} // namespace
