// The wire encoding of every record and message, against bytes from an independent implementation and against itself.
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <nlohmann/json.hpp>

#include "tests/Hex.h"
#include "tests/Samples.h"

using nlohmann::json;

namespace {

using Velmora::of;

// --- vectors: tests/data/wire.ndjson, one value a line. Strings are hexadecimal, null for one that never took storage;
// the body shows what the ranges in "ciphered" hold before the cipher.

template <class T>
void setFrom(const json& j, T& v) {
    if constexpr (Velmora::String<T>) {
        if (!j.is_null()) v = unhex(j.get<std::string>());
    } else if constexpr (Velmora::Vector<T>) {
        v.resize(j.size());
        for (size_t i = 0; i < j.size(); ++i) setFrom(j[i], v[i]);
    } else if constexpr (Velmora::Composite<T>) {
        fields(of<T>{}, [&](const char* name, auto member, auto) { return setFrom(j.at(name), v.*member), true; });
    } else {
        v = static_cast<T>(j.get<std::conditional_t<std::is_same_v<T, bool>, bool, int64_t>>());
    }
}

template <class T>
size_t countFields() {
    size_t count = 0;
    fields(of<T>{}, [&](const char*, auto, auto) { return ++count, true; });
    return count;
}

template <class T>
void expectEqual(const json& j, const T& v, const std::string& path) {
    if constexpr (Velmora::String<T>) {
        EXPECT_EQ(hex({v.c_str(), v.size()}), j.is_null() ? "" : j.get<std::string>()) << path;
    } else if constexpr (Velmora::Vector<T>) {
        ASSERT_EQ(v.size(), j.size()) << path;
        for (size_t i = 0; i < j.size(); ++i) expectEqual(j[i], v[i], path + "[" + std::to_string(i) + "]");
    } else if constexpr (Velmora::Composite<T>) {
        EXPECT_EQ(j.size(), countFields<T>());
        fields(of<T>{}, [&](const char* name, auto member, auto) {
            expectEqual(j.at(name), v.*member, path + "." + name);
            return true;
        });
    } else if constexpr (std::is_enum_v<T>) {
        EXPECT_EQ(+v, j.get<int64_t>() & 0xFF) << path << ": an enumeration travels as its low byte";
    } else {
        EXPECT_EQ(v, (j.get<std::conditional_t<std::is_same_v<T, bool>, bool, int64_t>>())) << path;
    }
}

class Wire : public Module {};

TEST_F(Wire, IndependentVectorsAreWrittenAndReadBack) {
    std::map<std::string, std::vector<json>> byType;
    std::ifstream file(QL_TEST_DATA "/wire.ndjson");
    ASSERT_TRUE(file) << "no vectors";
    for (std::string line; std::getline(file, line);) {
        json vector = json::parse(line);
        byType[vector.at("type")].push_back(std::move(vector));
    }
    size_t checked = 0;
    forEveryType([&]<class T>(of<T>, const char* type) {
        for (const json& vector : byType[type]) { // a message that is newer than the vectors has none
            SCOPED_TRACE(vector.at("case").get<std::string>());
            std::string body = unhex(vector.at("body").get<std::string>());
            if (vector.contains("ciphered"))
                for (const json& range : vector.at("ciphered"))
                    Quillon::DumbCrypt::encrypt(&body[range[0]], range[1], 0);
            InBlock<T> value;
            setFrom(vector.at("fields"), *value);
            EXPECT_EQ(hex(encoded(*value)), hex(body));
            // What PadMessage writes is not what it reads: a fixed length against a varint one.
            if constexpr (std::is_same_v<T, Quillon::PadMessage>) body.erase(1, 1);
            InBlock<T> back;
            decode(*back, body);
            expectEqual(vector.at("fields"), *back, "");
            ++checked;
        }
    });
    EXPECT_EQ(checked, 600u);
}

TEST_F(Wire, SamplesRoundTripIntoFreshAndIntoUsedValues) {
    forEveryType([]<class T>(of<T>, const char*) {
        if constexpr (std::is_same_v<T, Quillon::PadMessage>) return; // does not round-trip by contract
        InBlock<T> used(1 << 18);
        for (const Filling filling : {Filling::extreme, Filling::zero, Filling::typical, Filling::extreme}) {
            for (unsigned seed = 1; seed <= 3; ++seed) {
                InBlock<T> value(1 << 17, static_cast<int>(seed)), fresh(1 << 17);
                Sample sample(filling, seed);
                sample.fill(*value);
                sample.check(*value);
                const std::string body = encoded(*value);
                decode(*fresh, body);
                sample.check(*fresh);
                decode(*used, body); // vectors and strings shrink and grow over what they held
                sample.check(*used);
                EXPECT_EQ(hex(encoded(*used)), hex(body));
            }
        }
    });
}

TEST_F(Wire, LossyFieldsAreLossyAsAgreed) {
    InBlock<Quillon::RequestMessage> request, back;
    request->request = Quillon::Request::SECURITYINFO;
    const std::string body = encoded(*request);
    EXPECT_EQ(hex(body), "00004f");
    decode(*back, body);
    EXPECT_EQ(back->request, 79);
    EXPECT_EQ(encoded(*back), body);

    for (const size_t length : {0u, 1u, 127u, 128u, 300u, 65535u}) {
        InBlock<Quillon::PadMessage> pad(1 << 18);
        pad->padding = std::string(length, 'p');
        EXPECT_EQ(encoded(*pad).size(), length + 2);
    }
    InBlock<Quillon::PadMessage> pad;
    decode(*pad, unhex("03616263"));
    EXPECT_TRUE(pad->padding == "abc");
}

TEST_F(Wire, VectorsTakeTheCountThatCame) {
    InBlock<Quillon::TradeHierarchy> value;
    decode(*value, unhex("00030161016200"));
    ASSERT_EQ(value->groupNames.size(), 3u);
    decode(*value, unhex("0080010178")); // a two-byte count where one would do
    ASSERT_EQ(value->groupNames.size(), 1u);
    EXPECT_TRUE(value->groupNames[0] == "x");
    EXPECT_EQ(value.block.alloc.deallocated_size(), 2 + 1) << "the surplus strings; their vector keeps its storage";
    decode(*value, unhex("0000"));
    EXPECT_TRUE(value->groupNames.empty());
}

TEST_F(Wire, ExhaustedBlockLeavesADestructibleValue) {
    std::string body;
    {
        InBlock<Quillon::TradeLimitDataMessage> value(1 << 18);
        Sample(Filling::extreme, 4).fill(*value);
        body = encoded(*value);
    }
    InBlock<Quillon::TradeLimitDataMessage> whole(1 << 18);
    decode(*whole, body);
    const int needed = static_cast<int>(whole.block.alloc.used_size());
    for (int size = sizeof(Quillon::TradeLimitDataMessage); size < needed; size += 7) {
        InBlock<Quillon::TradeLimitDataMessage> value(size);
        Velmora::FastCodec codec(body.data(), body.data() + body.size());
        EXPECT_ANY_THROW(value->read(codec)) << size;
    }
    InBlock<Quillon::TradeLimitDataMessage> exact(needed);
    decode(*exact, body);
    Sample(Filling::extreme, 4).check(*exact);
}

using WireDeathTest = Wire;

TEST_F(WireDeathTest, EnumerationsNeedTheModuleInitialised) {
    InBlock<Quillon::TestMessage> value;
    EXPECT_DEATH(
        {
            Quillon::APITest::_initialized = false;
            encoded(*value);
        },
        "generated/QLProtocol/QLProtocol.*Assertion `_initialized' failed");
}

} // namespace
