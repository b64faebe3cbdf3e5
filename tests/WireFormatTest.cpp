// The bytes printed in docs/wire-format.md, against the codec.
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>

#include "generated/QLProtocol/QLProtocol.h"
#include "tests/Block.h"
#include "tests/Hex.h"

using Velmora::FastCodec;

namespace {

struct Row {
    std::string form, value, bytes;
};

std::string trimmed(const std::string& text) {
    const size_t begin = text.find_first_not_of(" `"), end = text.find_last_not_of(" `");
    return begin == text.npos ? "" : text.substr(begin, end + 1 - begin);
}

/// The rows of all tables with three columns whose last is "bytes"; the bytes without blanks.
std::vector<Row> rows(const std::string& firstColumn) {
    std::ifstream page(QL_ROOT "/docs/wire-format.md");
    std::vector<Row> found;
    bool isInside = false;
    for (std::string line; std::getline(page, line);) {
        std::istringstream cells(line);
        std::string cell[4];
        for (std::string& it : cell) std::getline(cells, it, '|');
        if (line.empty()) isInside = false;
        if (trimmed(cell[3]) == "bytes") isInside = trimmed(cell[1]) == firstColumn;
        if (!isInside || cell[3].find('`') == cell[3].npos) continue;
        std::string bytes = trimmed(cell[3]);
        std::erase(bytes, ' ');
        found.push_back({trimmed(cell[1]), trimmed(cell[2]), bytes});
    }
    return found;
}

TEST(WireFormatPage, ShowsTheBytesThatTheCodecWritesAndReads) {
    using Write = void (*)(FastCodec&, const std::string&);
    using Read = std::string (*)(FastCodec&);
    struct Form {
        Write write;
        Read read;
    };
    const Write writeFixed = [](FastCodec& c, const std::string& v) {
        Block block(256);
        bufstl::bufstring text(block.alloc);
        text = v;
        c.write_string_fixed(text);
    };
    const std::map<std::string, Form> forms = {
        {"bool",
         {[](FastCodec& c, const std::string& v) { c.write_bool(v == "1"); },
          [](FastCodec& c) { return std::to_string(c.read_bool()); }}},
        {"int8",
         {[](FastCodec& c, const std::string& v) { c.write_int8(static_cast<char>(std::stoi(v))); },
          [](FastCodec& c) { return std::to_string(static_cast<int8_t>(c.read_int8())); }}},
        {"varint",
         {[](FastCodec& c, const std::string& v) { c.write_uint64(std::stoull(v)); },
          [](FastCodec& c) { return std::to_string(c.read_uint64()); }}},
        {"int16",
         {[](FastCodec& c, const std::string& v) { c.write_int16(static_cast<int16_t>(std::stoi(v))); },
          [](FastCodec& c) { return std::to_string(c.read_int16()); }}},
        {"int32",
         {[](FastCodec& c, const std::string& v) { c.write_int32(std::stoi(v)); },
          [](FastCodec& c) { return std::to_string(c.read_int32()); }}},
        {"int64",
         {[](FastCodec& c, const std::string& v) { c.write_int64(std::stoll(v)); },
          [](FastCodec& c) { return std::to_string(c.read_int64()); }}},
        {"uint16_fixed",
         {[](FastCodec& c, const std::string& v) { c.write_uint16_fixed(static_cast<uint16_t>(std::stoul(v))); },
          [](FastCodec& c) { return std::to_string(c.read_uint16_fixed()); }}},
        {"uint32_fixed",
         {[](FastCodec& c, const std::string& v) { c.write_uint32_fixed(static_cast<uint32_t>(std::stoul(v))); },
          [](FastCodec& c) { return std::to_string(c.read_uint32_fixed()); }}},
        {"int64_fixed",
         {[](FastCodec& c, const std::string& v) { c.write_int64_fixed(std::stoll(v)); },
          [](FastCodec& c) { return std::to_string(c.read_int64_fixed()); }}},
        {"float4",
         {[](FastCodec& c, const std::string& v) { c.write_float4(std::stof(v)); },
          [](FastCodec& c) { return std::to_string(c.read_float4()); }}},
        {"float8",
         {[](FastCodec& c, const std::string& v) { c.write_float8(std::stod(v)); },
          [](FastCodec& c) { return std::to_string(c.read_float8()); }}},
        {"price",
         {[](FastCodec& c, const std::string& v) { c.write_qlfloat(std::stoll(v)); },
          [](FastCodec& c) { return std::to_string(c.read_qlfloat()); }}},
        {"string",
         {[](FastCodec& c, const std::string& v) { c.write_string(v); }, [](FastCodec& c) { return c.read_string(); }}},
        {"string_fixed",
         {writeFixed,
          [](FastCodec& c) {
              Block block(256);
              bufstl::bufstring text(block.alloc);
              c.read_string_fixed(text);
              return std::string(text.c_str(), text.size());
          }}},
        {"padding", {writeFixed, nullptr}},
        {"count",
         {[](FastCodec& c, const std::string& v) { c.write_length(static_cast<unsigned short>(std::stoi(v))); },
          [](FastCodec& c) { return std::to_string(c.read_length()); }}},
    };
    size_t written = 0;
    for (const Row& row : rows("form")) {
        SCOPED_TRACE(row.form + " " + row.value);
        const std::string name = row.form.substr(0, row.form.find(','));
        ASSERT_TRUE(forms.contains(name));
        const std::string value = row.value.substr(0, row.value.find(" ("));
        std::string range(64, '\0');
        if (row.form == name) {
            FastCodec codec(range.data(), range.data() + range.size());
            forms.at(name).write(codec, value);
            EXPECT_EQ(hex(range.substr(0, codec.size())), row.bytes);
            ++written;
        }
        if (forms.at(name).read == nullptr) continue;
        std::string bytes = unhex(row.bytes);
        FastCodec codec(bytes.data(), bytes.data() + bytes.size());
        EXPECT_EQ(forms.at(name).read(codec), value);
        EXPECT_EQ(codec.size(), bytes.size());
    }
    EXPECT_GE(written, 30u) << "the page's tables were not found";
}

TEST(WireFormatPage, ShowsAWholeBody) {
    std::string expected;
    for (const Row& row : rows("field")) expected += row.bytes;
    Quillon::initialize();
    Block block(4096);
    Quillon::SubmitOrderMessage order(block.alloc);
    order.userID = 7;
    order.contents.clOrdID = "EURUSD-0001";
    order.contents.side = Quillon::Side::BID;
    order.contents.amount = 100'000'000'000'000;
    order.contents.price = 108'250'000;
    order.contents.parameters.add_back().key = "desk";
    std::string body(256, '\0');
    FastCodec codec(body.data(), body.data() + body.size());
    order.write(codec);
    EXPECT_EQ(hex(body.substr(0, codec.size())), expected);
    Quillon::finalize();
}

} // namespace
