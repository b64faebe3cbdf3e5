// Messages as columns: what the arrays hold is what JSON says, for every type and every kind of value.
#include "Columns/Scan.h"
#include "Columns/Table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <nlohmann/json.hpp>

#include "Capture/NetworkWriter.h"
#include "Capture/Writer.h"
#include "Inspect/Checked.h"
#include "Inspect/Json.h"
#include "Inspect/Sizes.h"
#include "generated/QLProtocol/QLProtocol.traits.h"
#include "made/hostile/index.traits.h"
#include "tests/Folder.h"
#include "tests/Samples.h"

#pragma GCC diagnostic ignored "-Wdeprecated-declarations" // some of what is tested is deprecated

namespace {

using Json = nlohmann::json;

/// Reads arrays as Arrow describes them, with nothing of ours.
class ArrowReader {
  public:
    static Json value(const ArrowSchema& schema, const ArrowArray& array, size_t i) {
        const auto* const validity = static_cast<const uint8_t*>(array.buffers[0]);
        EXPECT_EQ(array.null_count != 0, validity != nullptr) << schema.name;
        if (validity != nullptr && (validity[i / 8] >> i % 8 & 1) == 0) return nullptr;
        const std::string format = schema.format;
        if (format == "+s") {
            Json object = Json::object();
            for (int64_t k = 0; k < array.n_children; ++k)
                object[schema.children[k]->name] = value(*schema.children[k], *array.children[k], i);
            return object;
        }
        if (format == "+l") {
            const auto* const offsets = static_cast<const int32_t*>(array.buffers[1]);
            Json all = Json::array();
            for (int32_t k = offsets[i]; k < offsets[i + 1]; ++k)
                all.push_back(value(*schema.children[0], *array.children[0], static_cast<size_t>(k)));
            return all;
        }
        if (format == "u" || format == "z") {
            const auto* const offsets = static_cast<const int32_t*>(array.buffers[1]);
            const std::string text(static_cast<const char*>(array.buffers[2]) + offsets[i],
                                   static_cast<size_t>(offsets[i + 1] - offsets[i]));
            return format == "u" ? Json(text) : Json::parse(Inspect::json_text(text));
        }
        if (format == "b") return (static_cast<const uint8_t*>(array.buffers[1])[i / 8] >> i % 8 & 1) != 0;
        if (schema.dictionary != nullptr)
            return value(*schema.dictionary, *array.dictionary, static_cast<size_t>(at<int16_t>(array, i)));
        switch (format[0]) {
        case 'c':
            return at<int8_t>(array, i);
        case 'C':
            return at<uint8_t>(array, i);
        case 's':
            return at<int16_t>(array, i);
        case 'S':
            return at<uint16_t>(array, i);
        case 'i':
            return at<int32_t>(array, i);
        case 'I':
            return at<uint32_t>(array, i);
        case 'f':
            return at<float>(array, i);
        case 'g':
            return at<double>(array, i);
        case 'L':
            return at<uint64_t>(array, i);
        default:
            if (format.starts_with("d:19,")) {
                const auto low = at<int64_t>(array, 2 * i);
                EXPECT_EQ(at<int64_t>(array, 2 * i + 1), low < 0 ? -1 : 0);
                return {{"decimals", std::stoi(format.substr(5))}, {"number", low}};
            }
            EXPECT_TRUE(format == "l" || format == "tsn:") << format;
            return at<int64_t>(array, i);
        }
    }

  private:
    template <class T>
    static T at(const ArrowArray& array, size_t i) {
        return static_cast<const T*>(array.buffers[1])[i];
    }
};

std::vector<Json> rowsOf(const ArrowSchema& schema, const ArrowArray& array) {
    std::vector<Json> rows;
    for (int64_t i = 0; i < array.length; ++i)
        rows.push_back(ArrowReader::value(schema, array, static_cast<size_t>(i)));
    return rows;
}

std::vector<Json> rowsOf(Columns::Table& table) {
    ArrowSchema schema;
    ArrowArray array;
    table.exportSchema(schema);
    table.exportBatch(array);
    std::vector<Json> rows = rowsOf(schema, array);
    schema.release(&schema);
    array.release(&array);
    return rows;
}

/// What columns tell, as JSON has it.
Json asJson(const Inspect::ValueInfo& info, const Json& column, std::string_view sentinel, bool isTime) {
    switch (info.kind) {
    case Inspect::Kind::record: {
        Json object = Json::object();
        for (const Inspect::FieldInfo& field : info.record->fields) {
            const std::string name(field.name);
            const Json beside = column.value(name + "_sentinel", Json());
            object[name] = asJson(field.value, column.at(name), beside.is_string() ? beside.get<std::string>() : "",
                                  !field.station.empty());
        }
        return object;
    }
    case Inspect::Kind::vector: {
        Json all = Json::array();
        for (const Json& element : column) all.push_back(asJson(*info.element, element, "", isTime));
        return all;
    }
    case Inspect::Kind::enumeration: {
        const std::string name = column;
        return name.find_first_not_of("-0123456789") == name.npos ? Json(std::stoi(name)) : column;
    }
    case Inspect::Kind::float4: // as few digits as tell a float from its neighbours
        return column.is_null() ? column
                                : Json::parse(Inspect::number_text({.kind = info.kind, .real = column, .text = {}}));
    case Inspect::Kind::int64:
    case Inspect::Kind::int64Fixed:
    case Inspect::Kind::price:
        EXPECT_FALSE(isTime && column == 0) << "no time was taken";
        if (column.is_null()) return sentinel.empty() ? Json(0) : Json(sentinel);
        if (const std::string_view name = Velmora::sentinelName(column.get<int64_t>()); !name.empty()) return name;
        return column;
    default:
        return column;
    }
}

class ColumnsTest : public testing::Test {
  protected:
    ColumnsTest() {
        Quillon::initialize();
        unix::Odd1::initialize();
    }
    ~ColumnsTest() override {
        unix::Odd1::finalize();
        Quillon::finalize();
    }

    template <class T>
    static std::string body(Filling filling, unsigned seed) {
        InBlock<T> message(1 << 18);
        Sample(filling, seed).fill(*message);
        std::string bytes(Inspect::encoded_size(*message), '\0');
        Velmora::FastCodec codec(bytes.data(), bytes.data() + bytes.size());
        message->write(codec);
        return bytes;
    }
};

template <class Traits>
class ColumnsOf : public ColumnsTest {};
using Protocols = testing::Types<Quillon::QLProtocolTraits, unix::Odd1::indexTraits>;
TYPED_TEST_SUITE(ColumnsOf, Protocols);

/// In two batches. Returns the number of rows.
size_t expectSame(const Inspect::Protocol& protocol, Velmora::MsgType_t id, const std::vector<std::string>& bodies) {
    const Inspect::TypeInfo& type = *Inspect::reflect(protocol, id);
    Columns::Table table(id, type, {.showsSecrets = true});
    size_t rows = 0;
    for (const int64_t batch : {0, 1}) {
        std::vector<Json> expected;
        for (const std::string& bytes : bodies) {
            Block block(1 << 18);
            const auto decoded = Inspect::decode_verified(protocol, id, bytes, block.alloc);
            if (!decoded) continue; // a pad, which is written in another form than it is read in
            expected.push_back(Json::parse(Inspect::to_json(protocol, id, decoded.object, Inspect::Integers::numbers)));
            table.add({expected.size(), batch - 1}, bytes);
        }
        EXPECT_EQ(table.rows(), expected.size());
        ArrowSchema schema;
        ArrowArray array;
        table.exportSchema(schema);
        table.exportBatch(array);
        EXPECT_EQ(array.length, static_cast<int64_t>(expected.size()));
        for (size_t i = 0; i < expected.size(); ++i) {
            const Json row = ArrowReader::value(schema, array, i);
            EXPECT_EQ(row["_packet"], i + 1);
            EXPECT_EQ(row["_time"], batch - 1);
            const Json got = asJson({.kind = Inspect::Kind::record, .record = &type}, row, "", false);
            EXPECT_EQ(Json::diff(expected[i], got).dump(), "[]");
        }
        rows += expected.size();
        schema.release(&schema);
        array.release(&array);
        EXPECT_EQ(array.release, nullptr);
    }
    return rows;
}

TYPED_TEST(ColumnsOf, HoldWhatJsonSays) {
    size_t rows = 0;
    TypeParam::messages([&]<class T>(Velmora::of<T>, const char* name) {
        SCOPED_TRACE(name);
        std::vector<std::string> bodies;
        for (unsigned seed = 0; seed < 12; ++seed)
            bodies.push_back(this->template body<T>(static_cast<Filling>(seed % 3), seed + 100));
        rows += expectSame(Inspect::protocol_of<TypeParam>(), T::ID, bodies);
        return !testing::Test::HasFailure();
    });
    EXPECT_GT(rows, 20 * (TypeParam::MESSAGES - 1));
}

/// Adds how many secrets there are to `hidden`.
void expectHidden(const Inspect::ValueInfo& info, const Json& column, bool isSecret, size_t& hidden) {
    if (info.kind == Inspect::Kind::record) {
        for (const Inspect::FieldInfo& field : info.record->fields)
            expectHidden(field.value, column.at(std::string(field.name)), field.is_secret_in(isSecret), hidden);
    } else if (info.kind == Inspect::Kind::vector) {
        for (const Json& element : column) expectHidden(*info.element, element, isSecret, hidden);
    } else if (isSecret) {
        EXPECT_TRUE(column.is_null()) << column;
        ++hidden;
    }
}

TYPED_TEST(ColumnsOf, HideSecretsOfEveryKind) {
    size_t hidden = 0;
    TypeParam::messages([&]<class T>(Velmora::of<T>, const char* name) {
        SCOPED_TRACE(name);
        const Inspect::Protocol& protocol = Inspect::protocol_of<TypeParam>();
        const Inspect::TypeInfo& type = *Inspect::reflect(protocol, T::ID);
        Columns::Table table(T::ID, type, {});
        const std::string bytes = this->template body<T>(Filling::typical, 7);
        if (!Inspect::verify(protocol, T::ID, bytes.data(), bytes.data() + bytes.size(), Inspect::whole))
            return true; // a pad
        table.add({1, 2}, bytes);
        expectHidden({.kind = Inspect::Kind::record, .record = &type}, rowsOf(table).front(), false, hidden);
        return true;
    });
    EXPECT_GT(hidden, 0u);
}

TEST_F(ColumnsTest, OnlyChosenFieldsAndSecretsOnRequest) {
    using Message = Quillon::ClientConnectMessage;
    const Inspect::TypeInfo& type = *Inspect::reflect(Message::ID);
    const std::string bytes = body<Message>(Filling::typical, 5);
    const auto read = [&](const Columns::Options& options) {
        Columns::Table table(Message::ID, type, options);
        table.add({1, 2}, bytes);
        return rowsOf(table).front();
    };
    const Json all = read({.showsSecrets = true}), without = read({});
    size_t secrets = 0;
    for (const Inspect::FieldInfo& field : type.fields) {
        const std::string name(field.name);
        const Json one =
            read({.showsSecrets = true, .takes = [&](Inspect::Path path) { return path[0].name == name; }});
        EXPECT_EQ(one, Json({{name, all[name]}}));
        if (without[name] != all[name]) ++secrets;
    }
    EXPECT_GT(secrets, 0u);
    EXPECT_EQ(without.dump().find(all.dump()), std::string::npos);
}

TEST_F(ColumnsTest, PartsOfRecordsAndDecimals) {
    using Message = Quillon::SubmitOrderMessage;
    const auto read = [&](const Columns::Options& options) {
        Columns::Table table(Message::ID, *Inspect::reflect(Message::ID), options);
        for (unsigned seed = 0; seed < 9; ++seed)
            table.add({seed, 2, seed % 2}, body<Message>(static_cast<Filling>(seed % 3), seed));
        return rowsOf(table);
    };
    const std::vector<Json> all = read({});
    const std::vector<Json> part = read({.decimals = 3, .captures = {"a", "b"}, .takes = [](Inspect::Path path) {
                                             const std::string text = Inspect::path_text(path);
                                             return text == "contents.side" || text == "contents.price"
                                                    || text == "contents.parameters" || text == "_capture";
                                         }});
    for (size_t i = 0; i < all.size(); ++i) {
        Json expected{{"_capture", i % 2 == 0 ? "a" : "b"}};
        for (const char* name : {"side", "price", "price_sentinel", "parameters"})
            expected["contents"][name] = all[i]["contents"][name];
        Json& price = expected["contents"]["price"];
        if (!price.is_null()) price = {{"decimals", 3}, {"number", price}};
        EXPECT_EQ(part[i], expected);
    }
}

// Consumers move columns out of what they are given, and release in any order.
TEST_F(ColumnsTest, PartsLiveOnTheirOwn) {
    using Message = Quillon::MktDataMessage;
    ArrowSchema schema;
    ArrowArray array, again;
    {
        Columns::Table table(Message::ID, *Inspect::reflect(Message::ID), {});
        table.add({1, 2}, body<Message>(Filling::typical, 3));
        table.exportSchema(schema);
        table.exportBatch(array);
        table.exportBatch(again);
    }
    EXPECT_EQ(again.length, 0);
    const Json row = ArrowReader::value(schema, array, 0);
    const auto last = static_cast<size_t>(array.n_children - 1);
    ArrowArray column = *array.children[last];
    ArrowSchema columnSchema = *schema.children[last];
    array.children[last]->release = nullptr;
    schema.children[last]->release = nullptr;
    array.release(&array);
    schema.release(&schema);
    EXPECT_EQ(ArrowReader::value(columnSchema, column, 0), row[columnSchema.name]);
    again.release(&again);
    column.release(&column);
    columnSchema.release(&columnSchema);
}

// --- whole captures

/// What a stream hands over; the sizes of its batches go to `sizes`.
std::vector<Json> rowsOf(ArrowArrayStream& stream, std::vector<int64_t>* sizes = nullptr) {
    std::vector<Json> rows;
    ArrowSchema schema;
    EXPECT_EQ(stream.get_schema(&stream, &schema), 0);
    for (ArrowArray array; stream.get_next(&stream, &array) == 0 && array.release != nullptr; array.release(&array)) {
        std::ranges::move(rowsOf(schema, array), std::back_inserter(rows));
        if (sizes != nullptr) sizes->push_back(array.length);
    }
    schema.release(&schema);
    return rows;
}

class ColumnsOfCaptures : public ColumnsTest {
  protected:
    using Market = Quillon::MktDataMessage;
    using Order = Quillon::SubmitOrderMessage;

    ColumnsOfCaptures() {
        std::string bytes;
        {
            Capture::Writer writer(folder.path("good"));
            for (unsigned i = 0; i < 500; ++i)
                writer.packet({1000 + i, i % 3 == 0 ? packet<Order>(i) : packet<Market>(i)});
            writer.close();
            bytes = folder.content("good");
        }
        Capture::Writer writer(folder.path("bad"));
        writer.packet({1, packet<Order>(1)});
        writer.packet({2, packet<Order>(1).substr(0, 20)});
        writer.packet({3, "\x34\x12"});
        writer.packet({4, "x"});
        writer.packet({5, packet<Market>(3), 0, 5000});
        writer.packet({6, Capture::identifierBytes(Quillon::PadMessage::ID) + std::string("\3\0abc", 5)});
        writer.packet({7, packet<Order>(2)});
        writer.close();
    }

    template <class Message>
    static std::string packet(unsigned seed) {
        return Capture::identifierBytes(Message::ID) + body<Message>(static_cast<Filling>(seed % 3), seed);
    }

    std::vector<Json> read(const std::vector<std::string>& names, Columns::Request request,
                           std::vector<int64_t>* sizes = nullptr) const {
        std::vector<std::string> paths;
        for (const std::string& name : names) paths.push_back(folder.path(name));
        ArrowArrayStream stream;
        Columns::exportStream(paths, Inspect::default_protocol(), std::move(request), stream);
        std::vector<Json> rows = rowsOf(stream, sizes);
        stream.release(&stream);
        EXPECT_EQ(stream.release, nullptr);
        return rows;
    }

    const Folder folder;
};

TEST_F(ColumnsOfCaptures, EachMessageOnceInOrderInBatchesOfTheSizeAskedFor) {
    for (const char* name : {"MktDataMessage", "SubmitOrderMessage", "messages"}) {
        std::vector<int64_t> sizes;
        const std::vector<Json> all = read({"good", "good"}, {.table = name}),
                                few = read({"good", "good"}, {.table = name, .batchRows = 7}, &sizes);
        EXPECT_EQ(all, few);
        EXPECT_EQ(all.size(), name[0] == 'S' ? 334u : name[0] == 'M' ? 666u : 1000u);
        EXPECT_LE(std::ranges::count_if(sizes, [](int64_t size) { return size != 7; }), 2) << "the last of a capture";
        uint64_t last = 0;
        for (size_t i = 0; i < all.size() / 2; ++i) {
            const bool isPlain = name[0] == 'm';
            const uint64_t number = all[i][isPlain ? "packet" : "_packet"];
            EXPECT_GT(number, std::exchange(last, number));
            EXPECT_EQ(all[i][isPlain ? "time" : "_time"], 999 + number);
            EXPECT_EQ(all[i][isPlain ? "capture" : "_capture"], folder.path("good"));
            if (isPlain) {
                EXPECT_EQ(all[i]["name"], (number - 1) % 3 == 0 ? "SubmitOrderMessage" : "MktDataMessage");
                EXPECT_TRUE(all[i]["fault"].is_null());
            }
        }
    }
    const std::vector<Json> part = read({"good"}, {.table = "SubmitOrderMessage", .from = 1003, .to = 1009});
    EXPECT_EQ(part.size(), 3u);
    EXPECT_EQ(part.at(1)["_id"], Order::ID);
}

TEST_F(ColumnsOfCaptures, WhatIsBadStandsInFaultsAndTheRestArrives) {
    const std::vector<Json> faults = read({"bad"}, {.table = "faults"});
    std::vector<Json> told;
    for (const Json& it : faults) told.push_back({it["packet"], it["kind"], it["name"], it["field"], it["byte"]});
    EXPECT_EQ(Json(told), Json::parse(R"([[2,"truncated","SubmitOrderMessage","onBehalfOfCompID",13],
        [3,"unknown identifier",null,null,null],[4,"no identifier",null,null,null],
        [5,"cut by the capture","MktDataMessage",null,null]])"));
    for (const Json& it : faults) EXPECT_GT(it["offset"], 24);
    EXPECT_EQ(read({"bad"}, {.table = "SubmitOrderMessage"}).size(), 2u);
    EXPECT_EQ(read({"bad"}, {.table = "MktDataMessage"}).size(), 0u);
    const std::vector<Json> pads = read({"bad"}, {.table = "PadMessage"});
    ASSERT_EQ(pads.size(), 1u);
    EXPECT_EQ(pads[0].back().dump(), R"("\u0000ab")") << "as it is read";
    size_t bad = 0;
    for (const Json& it : read({"bad"}, {.table = "messages"})) bad += it["fault"].is_string();
    EXPECT_EQ(bad, 4u);
}

/// A connection that goes on in another capture, which is named first.
TEST_F(ColumnsOfCaptures, OfANetworkAreOneStreamInTheOrderOfTime) {
    struct Halves : Capture::PacketSink {
        Capture::Writer& writer() { return packets++ < 203 ? first : second; } // with the three that open it
        void packet(const Capture::Packet& it) override { writer().packet(it); }
        Capture::Writer first, second;
        size_t packets = 0;
        explicit Halves(const Folder& folder)
            : first(folder.path("later-named"), {.linkType = Capture::LinkType::ETHERNET}),
              second(folder.path("named-first"), {.linkType = Capture::LinkType::ETHERNET}) {}
    } halves(folder);
    const Capture::Framing framing = Capture::Framing::of("frames");
    Capture::NetworkWriter network(halves, Capture::Transport::tcp, framing);
    Capture::Reader capture(folder.path("good"));
    for (Capture::Packet it; capture.next(it);) network.packet(it);
    network.close();
    halves.first.close();
    halves.second.close();
    for (const char* const table : {"SubmitOrderMessage", "messages"}) {
        std::vector<Json> expected = read({"good"}, {.table = table}),
                          rows = read({"named-first", "later-named"},
                                      {.table = table, .batchRows = 7, .network = Capture::NetworkOptions{framing}});
        ASSERT_EQ(rows.size(), expected.size());
        EXPECT_EQ(rows.front()[table[0] == 'm' ? "capture" : "_capture"], folder.path("later-named"));
        for (std::vector<Json>* const all : {&expected, &rows})
            for (Json& it : *all)
                for (const char* const differs :
                     {"capture", "packet", "connection", "connectionID", "from", "to", "direction"}) {
                    it.erase(differs);
                    it.erase("_" + std::string(differs));
                }
        EXPECT_EQ(rows, expected);
    }
    const auto faultsOf = [&](const char* text) {
        return read({"later-named"},
                    {.table = "faults", .network = Capture::NetworkOptions{Capture::Framing::of(text)}});
    };
    EXPECT_EQ(faultsOf("frames").size(), 0u);
    const std::vector<Json> faults = faultsOf("length:u32be, id:u16le, body");
    ASSERT_EQ(faults.size(), 1u);
    EXPECT_EQ(faults[0]["kind"], "no frame");
    EXPECT_NE(faults[0]["reason"].get<std::string>().find("would fit"), std::string::npos) << faults[0];
}

/// More connections than texts are kept of, each with a message and an answer; and messages that came by none.
TEST_F(ColumnsOfCaptures, OfANetworkTellByWhichConnectionEachCame) {
    constexpr unsigned connections = 200;
    const Capture::Framing framing = Capture::Framing::of("frames");
    Capture::Writer writer(folder.path("net"), {.linkType = Capture::LinkType::ETHERNET});
    const Capture::Endpoint server = Capture::endpointOf(0x0A000002, 9001);
    std::vector<Json> expected;
    for (unsigned i = 0; i < 2 * connections; ++i) {
        const bool isBack = i >= connections;
        const unsigned number = i % connections;
        const Capture::Endpoint client = Capture::endpointOf(0x0A000001, static_cast<uint16_t>(40000 + number));
        std::string frame;
        Capture::Framer(framing).append(Order::ID, packet<Order>(i).substr(Capture::IDENTIFIER_SIZE), frame);
        const std::string ip = Capture::udpPacket(isBack ? server : client, isBack ? client : server, frame);
        writer.packet({.time = i, .bytes = Capture::ethernetFrame(ip), .linkType = Capture::LinkType::ETHERNET});
        const std::string there = "10.0.0.1:" + std::to_string(40000 + number), back = "10.0.0.2:9001";
        expected.push_back({{"connection", there + " > " + back},
                            {"connectionID", number + 1},
                            {"from", isBack ? back : there},
                            {"to", isBack ? there : back},
                            {"direction", isBack ? "back" : "there"}});
    }
    writer.close();
    const std::optional network = Capture::NetworkOptions{framing};
    for (const std::string table : {"SubmitOrderMessage", "messages"}) {
        const std::string prefix = table == "messages" ? "" : "_";
        const std::vector<Json> rows = read({"net", "good"}, {.table = table, .network = network}),
                                plain = read({"good"}, {.table = table});
        ASSERT_EQ(rows.size(), expected.size() + plain.size());
        for (const auto& [name, value] : expected[0].items()) {
            for (size_t i = 0; i < rows.size(); ++i)
                ASSERT_EQ(rows[i].at(prefix + name), i < expected.size() ? expected[i][name] : Json()) << name << i;
            EXPECT_FALSE(plain[0].contains(prefix + name)) << "no network";
            Columns::Request one{.table = table, .network = network};
            one.options.takes = [&, name = name](Inspect::Path path) {
                return Inspect::path_text(path) == prefix + name;
            };
            EXPECT_EQ(read({"net"}, one).back(), (Json{{prefix + name, expected.back()[name]}}));
        }
    }
}

TEST_F(ColumnsOfCaptures, ErrorsComeAfterWhatWasReadBefore) {
    ArrowArrayStream stream;
    Columns::exportStream({folder.path("good"), folder.path("none")}, Inspect::default_protocol(),
                          {.table = "SubmitOrderMessage", .batchRows = 10}, stream);
    EXPECT_EQ(rowsOf(stream).size(), 167u);
    EXPECT_NE(std::string(stream.get_last_error(&stream)).find("none: No such file"), std::string::npos);
    ArrowSchema schema;
    EXPECT_EQ(stream.get_schema(&stream, &schema), 0);
    schema.release(&schema);
    stream.release(&stream);
    EXPECT_THROW(Columns::exportStream({}, Inspect::default_protocol(), {.table = "Order"}, stream),
                 std::invalid_argument);
}

/// What a consumer may hold of a stream that it has not read to its end.
struct Held {
    ArrowArrayStream stream;
    ArrowSchema schema, field; ///< the field was moved out of the schema
    ArrowArray first, second, column;

    explicit Held(const std::string& path) {
        Columns::exportStream({path}, Inspect::default_protocol(), {.table = "MktDataMessage", .batchRows = 5}, stream);
        for (ArrowArray* batch : {&first, &second}) EXPECT_EQ(stream.get_next(&stream, batch), 0);
        EXPECT_EQ(stream.get_schema(&stream, &schema), 0);
        EXPECT_STREQ(schema.children[3]->name, "_capture");
        field = std::exchange(*schema.children[3], {});
        column = std::exchange(*second.children[3], {});
    }

    /// Releases one of them. None of the others may notice.
    void release(int which) {
        const auto end = [](auto& it) {
            it.release(&it);
            EXPECT_EQ(it.release, nullptr);
        };
        switch (which) {
        case 0:
            return end(stream);
        case 1:
            return end(schema);
        case 2:
            return end(field);
        case 3:
            return end(first);
        case 4:
            return end(second);
        default:
            return end(column);
        }
    }

    /// Reads what is still there, with the schema of another stream where its own is gone.
    void expectReadable(const ArrowSchema& other, const std::string& path) {
        if (stream.release != nullptr) {
            ArrowArray next;
            ASSERT_EQ(stream.get_next(&stream, &next), 0);
            EXPECT_EQ(next.length, 5);
            next.release(&next);
        }
        if (first.release != nullptr) {
            EXPECT_EQ(ArrowReader::value(other, first, 4)["_packet"], 8);
        }
        if (second.release != nullptr) {
            EXPECT_EQ(ArrowReader::value(*other.children[0], *second.children[0], 0), 9);
        }
        if (column.release != nullptr) {
            const ArrowSchema& known = field.release != nullptr ? field : *other.children[3];
            EXPECT_EQ(ArrowReader::value(known, column, 4), path);
        }
        if (schema.release != nullptr) {
            EXPECT_STREQ(schema.children[4]->name, "mvd");
        }
    }
};

// Consumers release what they have in any order, at any time, and go on with the rest.
TEST_F(ColumnsOfCaptures, WhatIsReleasedFirstTakesNothingAlong) {
    const std::string path = folder.path("good");
    Held other(path);
    std::array order{0, 1, 2, 3, 4, 5};
    ArrowSchema whole;
    ASSERT_EQ(other.stream.get_schema(&other.stream, &whole), 0);
    do {
        Held held(path);
        for (const int which : order) {
            held.expectReadable(whole, path);
            held.release(which);
        }
        ASSERT_FALSE(HasFailure()) << testing::PrintToString(order);
    } while (std::ranges::next_permutation(order).found);
    for (const int which : order) other.release(which);
    whole.release(&whole);
}

} // namespace
