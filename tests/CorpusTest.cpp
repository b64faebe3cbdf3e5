// The test vectors in corpus/: that they are those the tool makes, and that they are right, found by other ways than
// they were made: bodies read along the reflection tables, texts by the stream operators' writer, JSON encoded again.
#include <filesystem>
#include <fstream>
#include <map>
#include <set>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "Backend/Velmora/Wire.h"
#include "Inspect/BodyWalk.h"
#include "Inspect/Checked.h"
#include "Inspect/Json.h"
#include "generated/QLProtocol/AsciiWriter.h"
#include "generated/QLProtocol/MsgHandler.h"
#include "tests/Hex.h"
#include "tests/Module.h"
#include "tests/ToolFolder.h"
#include "tools/qlproto/messages/MessageLine.h"

namespace {

using nlohmann::json;
using nlohmann::ordered_json;

const std::filesystem::path corpus = QL_ROOT "/corpus";

std::set<std::string> filesIn(const std::filesystem::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) names.insert(entry.path().filename());
    return names;
}

TEST(Corpus, IsWhatTheToolMakes) {
    const ToolFolder folder;
    ASSERT_EQ(folder.run("qlproto corpus -o made").exitCode, 0);
    std::set<std::string> committed = filesIn(corpus);
    EXPECT_EQ(committed.erase("README.md"), 1u);
    ASSERT_EQ(filesIn(folder.path("made")), committed);
    EXPECT_EQ(committed.size(), Inspect::all_messages().size());
    for (const std::string& name : committed) {
        std::ostringstream text;
        text << std::ifstream(corpus / name, std::ios::binary).rdbuf();
        EXPECT_TRUE(text.str() == folder.content("made/" + name))
            << name << " is not current: qlproto corpus -o corpus";
    }
    EXPECT_EQ(folder.run("qlproto corpus -o /dev/null/corpus").exitCode, 3);
}

/// Bytes of a string that is escaped as JSON has it.
std::string unescaped(const std::string& text) {
    std::string bytes;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            bytes += text[i];
        } else if (text[++i] == '\\') {
            bytes += '\\';
        } else {
            bytes += unhex(text.substr(i + 1, 2));
            i += 2;
        }
    }
    return bytes;
}

using Values = std::map<std::string, std::string>; // by path

void flatten(const json& value, const std::string& path, Values& values) {
    if (value.is_object()) {
        for (const auto& [name, inner] : value.items()) flatten(inner, path.empty() ? name : path + "." + name, values);
    } else if (value.is_array()) {
        values[path] = std::to_string(value.size());
        for (size_t i = 0; i < value.size(); ++i) flatten(value[i], path + "[" + std::to_string(i) + "]", values);
    } else {
        values[path] = value.is_string() ? unescaped(value) : value.dump();
    }
}

Values fromJson(const json& value) {
    Values values;
    flatten(value, "", values);
    return values;
}

std::string textOf(const Inspect::BodyValue& value) {
    using enum Inspect::Kind;
    const std::string_view sentinel = Velmora::sentinelName(value.number);
    switch (value.value.kind) {
    case boolean:
        return value.number != 0 ? "true" : "false";
    case int64:
    case price:
        return sentinel.empty() ? std::to_string(value.number) : std::string(sentinel);
    case string:
    case cryptstring:
    case padding:
        return value.text();
    case enumeration:
        for (const Inspect::EnumeratorInfo& it : value.value.enumeration->enumerators)
            if (it.value == value.number) return std::string(it.name);
        return std::to_string(value.number);
    default:
        return std::to_string(value.number);
    }
}

Values fromBody(Velmora::MsgType_t id, const std::string& body) {
    Values values;
    Inspect::walk_body(*Inspect::reflect(id), body, [&](const Inspect::BodyValue& value) {
        values[std::string(value.path)] = textOf(value);
        return true;
    });
    return values;
}

/// Bytes that write() makes of a message in JSON.
std::string encoded(Velmora::MsgType_t id, const std::string& message) {
    std::vector<char> block(1 << 20), bytes(1 << 20);
    Velmora::BufferAllocator alloc(block.data(), 1 << 20, "test", "message");
    Velmora::MsgDescriptor& descriptor = *Quillon::__protocol->getDescriptor(id);
    void* const place = alloc.allocate(descriptor.size());
    descriptor.construct(place, alloc);
    Inspect::from_json(id, message, place);
    const Inspect::Encoded result = Inspect::encode_checked(id, place, bytes.data(), bytes.data() + bytes.size());
    EXPECT_TRUE(result) << result.text();
    descriptor.destroy(place);
    return {bytes.data(), result.size};
}

/// The text of a body as the stream operators print it.
std::string printed(Velmora::MsgType_t id, const std::string& body) {
    std::vector<char> block(1 << 20), text(1 << 20);
    Velmora::BufferAllocator alloc(block.data(), 1 << 20, "test", "message");
    const Inspect::Decoded decoded = Inspect::decode_verified(id, body, alloc);
    if (!decoded) return decoded.result.text();
    Quillon::FastOStream os(text.data(), text.data() + text.size());
    os << "<" << decoded.descriptor->name() << " ";
    Velmora::TextCodec<Quillon::FastOStream> codec(os);
    Quillon::AsciiWriter writer(codec, false, 0);
    Quillon::dispatch(id, decoded.object, writer);
    os << ">";
    return {os.begin(), os.size()};
}

void expectFault(const json& expected, const Inspect::Result& found) {
    static const std::map<std::string, Inspect::Fault> faults = {
        {"truncated", Inspect::Fault::truncated},
        {"overlongVarint", Inspect::Fault::overlongVarint},
        {"varintOverflow", Inspect::Fault::varintOverflow},
        {"nonMinimal", Inspect::Fault::nonMinimal},
        {"lengthBeyondWidth", Inspect::Fault::lengthBeyondWidth},
        {"countBeyondBytes", Inspect::Fault::countBeyondBytes},
        {"unknownEnumerator", Inspect::Fault::unknownEnumerator},
        {"badBoolean", Inspect::Fault::badBoolean},
        {"reservedPriceBits", Inspect::Fault::reservedPriceBits},
        {"trailingBytes", Inspect::Fault::trailingBytes},
    };
    EXPECT_EQ(faults.at(expected["fault"]), found.fault) << found.text();
    EXPECT_EQ(expected["offset"], found.offset);
    EXPECT_EQ(expected["path"], found.path());
}

class Vectors : public Module {
  protected:
    /// Calls `check` for each vector of that kind; returns how many messages have some.
    template <class Check>
    static size_t forEach(const std::string& kind, Check check) {
        std::set<std::string> messages;
        for (const std::string& name : filesIn(corpus)) {
            if (name == "README.md") continue;
            std::ifstream file(corpus / name);
            for (std::string line; std::getline(file, line);) {
                const ordered_json vector = ordered_json::parse(line);
                EXPECT_EQ(vector["message"].get<std::string>() + ".ndjson", name);
                if (vector["kind"] != kind) continue;
                const Velmora::MsgType_t id = vector["id"];
                EXPECT_EQ(vector["message"], Quillon::__protocol->getMessageName(id));
                SCOPED_TRACE(line.substr(0, 300));
                messages.insert(name);
                check(id, vector, unhex(vector["hex"].get<std::string>()));
                if (testing::Test::HasFailure()) return messages.size();
            }
        }
        return messages.size();
    }
};

TEST_F(Vectors, GoldenOnesMeanWhatTheySay) {
    size_t plain = 0;
    qlproto::MessageLineReader reader;
    EXPECT_EQ(Inspect::all_messages().size(),
              forEach("golden", [&](Velmora::MsgType_t id, const ordered_json& vector, const std::string& body) {
                  const Inspect::Result verified =
                      Inspect::verify(id, body.data(), body.data() + body.size(), Inspect::strict);
                  if (vector.contains("strict")) { // as constructed, where 0 is no enumerator
                      EXPECT_EQ(vector["name"], "zero");
                      EXPECT_EQ(vector["strict"]["fault"], "unknownEnumerator");
                      EXPECT_EQ(fromBody(id, body).at(vector["strict"]["path"]), "0");
                      expectFault(vector["strict"], verified);
                  } else {
                      EXPECT_TRUE(verified) << verified.text();
                  }
                  EXPECT_EQ(fromBody(id, body), fromJson(vector["body"]));
                  const std::string written = vector.value("written", vector["hex"].get<std::string>());
                  EXPECT_EQ(hex(encoded(id, vector["body"].dump())), written);
                  EXPECT_EQ(hex(reader.read(vector.dump()).bytes.substr(2)), hex(body)) << "a line as any other";
                  EXPECT_EQ(vector.contains("written"), id == Quillon::PadMessage::ID && written != "00");
                  const std::string text = vector["text"];
                  if (text.find('\\') != std::string::npos) return; // escaped, unlike what the operators print
                  EXPECT_EQ(text, printed(id, body));
                  ++plain;
              }));
    EXPECT_GT(plain, 300u);
}

TEST_F(Vectors, ThoseToEncodeGiveTheirBytes) {
    EXPECT_LT(30u, forEach("encode", [](Velmora::MsgType_t id, const ordered_json& vector, const std::string& body) {
                  EXPECT_EQ(hex(encoded(id, vector["body"].dump())), hex(body));
              }));
}

TEST_F(Vectors, HostileOnesHaveTheFaultTheySay) {
    std::map<std::string, size_t> faults;
    EXPECT_EQ(Inspect::all_messages().size(),
              forEach("hostile", [&](Velmora::MsgType_t id, const ordered_json& vector, const std::string& body) {
                  const char *const begin = body.data(), *const end = begin + body.size();
                  expectFault(vector["strict"], Inspect::verify(id, begin, end, Inspect::strict));
                  const Inspect::Result whole = Inspect::verify(id, begin, end, Inspect::whole);
                  if (vector["whole"].contains("body")) {
                      EXPECT_TRUE(whole) << whole.text();
                      EXPECT_EQ(fromBody(id, body), fromJson(vector["whole"]["body"]));
                  } else {
                      expectFault(vector["whole"], whole);
                  }
                  ++faults[vector["strict"]["fault"]];
              }));
    EXPECT_EQ(faults.size(), 10u);
    for (const auto& [fault, count] : faults) EXPECT_GT(count, 10u) << fault;
}

} // namespace
