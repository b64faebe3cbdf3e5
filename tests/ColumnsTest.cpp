// Messages as columns: what the arrays hold is what JSON says, for every type and every kind of value.
#include "Columns/Table.h"

#include <gtest/gtest.h>

#include <bit>
#include <nlohmann/json.hpp>

#include "Inspect/Checked.h"
#include "Inspect/Json.h"
#include "Inspect/Sizes.h"
#include "generated/QLProtocol/QLProtocol.traits.h"
#include "made/hostile/index.traits.h"
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
    Columns::Table table(type, {.showsSecrets = true});
    size_t rows = 0;
    for (const int64_t batch : {0, 1}) {
        std::vector<Json> expected;
        for (const std::string& bytes : bodies) {
            Block block(1 << 18);
            const auto decoded = Inspect::decode_verified(protocol, id, bytes, block.alloc);
            if (!decoded) continue; // a pad, which is written in another form than it is read in
            expected.push_back(Json::parse(Inspect::to_json(protocol, id, decoded.object, Inspect::Integers::numbers)));
            table.add(expected.size(), batch - 1, bytes);
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

TEST_F(ColumnsTest, OnlyChosenFieldsAndSecretsOnRequest) {
    using Message = Quillon::ClientConnectMessage;
    const Inspect::TypeInfo& type = *Inspect::reflect(Message::ID);
    const std::string bytes = body<Message>(Filling::typical, 5);
    const auto read = [&](const Columns::Options& options) {
        Columns::Table table(type, options);
        table.add(1, 2, bytes);
        ArrowSchema schema;
        ArrowArray array;
        table.exportSchema(schema);
        table.exportBatch(array);
        const Json row = ArrowReader::value(schema, array, 0);
        schema.release(&schema);
        array.release(&array);
        return row;
    };
    const Json all = read({.showsSecrets = true}), without = read({});
    size_t secrets = 0;
    for (const Inspect::FieldInfo& field : type.fields) {
        const std::string name(field.name);
        const Json one = read({.showsSecrets = true, .takes = [&](std::string_view it) { return it == name; }});
        EXPECT_EQ(one, Json({{"_packet", 1}, {"_time", 2}, {name, all[name]}}));
        if (without[name] != all[name]) ++secrets;
    }
    EXPECT_GT(secrets, 0u);
    EXPECT_EQ(without.dump().find(all.dump()), std::string::npos);
}

// Consumers move columns out of what they are given, and release in any order.
TEST_F(ColumnsTest, PartsLiveOnTheirOwn) {
    using Message = Quillon::MktDataMessage;
    ArrowSchema schema;
    ArrowArray array, again;
    {
        Columns::Table table(*Inspect::reflect(Message::ID), {});
        table.add(1, 2, body<Message>(Filling::typical, 3));
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

} // namespace
