// Other protocols beside QLProtocol in one program: the example (examples/chat), and one that uses every type there is and
// names that the generated code, compilers and headers know (data/hostile.xml).
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <limits>
#include <sstream>

#include "Backend/Velmora/operations/TextSize.h"
#include "Inspect/Checked.h"
#include "Inspect/Json.h"
#include "Inspect/SafeText.h"
#include "Inspect/Sizes.h"
#include "Inspect/Values.h"
#include "generated/QLProtocol/QLProtocol.traits.h"
#include "made/hostile/index.traits.h"
#include "protocols/chat/Chat.traits.h"
#include "tests/Bodies.h"
#include "tests/Samples.h"

// GNU modes define these for the system. The generated headers shield what stands in them; who uses it has to do so
// too.
#undef unix
#undef BUFSIZ
#undef EOF
#undef NULL
#undef errno

#pragma GCC diagnostic ignored "-Wdeprecated-declarations" // some of what is tested is deprecated

namespace Odd = unix::Odd1;

namespace {

using Velmora::of;

class Protocols : public testing::Test {
  protected:
    Protocols() {
        Quillon::initialize();
        Odd::initialize();
    }
    ~Protocols() override {
        Odd::finalize();
        Quillon::finalize();
    }
};

/// Calls `visit(of<T>, name)` for every record and message of the protocol.
template <class Traits, class Visit>
void forEveryTypeOf(Visit&& visit) {
    const auto traced = [&](auto type, const char* name) {
        SCOPED_TRACE(name);
        visit(type, name);
        return !testing::Test::HasFailure();
    };
    Traits::records(traced);
    Traits::messages(traced);
}

template <class T>
constexpr bool isPadded = false;
template <>
constexpr bool isPadded<Odd::Padded> = true; // does not come back; see below

std::string hex(const std::string& bytes) {
    std::ostringstream text;
    for (const char c : bytes) text << std::hex << (c >> 4 & 15) << (c & 15);
    return text.str();
}

/// Its text for logs, and its values one by one.
std::string shown(const Inspect::Protocol& protocol, Velmora::MsgType_t id, const void* message) {
    struct : Inspect::ValueVisitor {
        bool value(Inspect::Path path, const Inspect::Value& value) override {
            text += '\n' + path_text(path) + ' ' + (value.is_text() ? std::string(value.text) : number_text(value));
            return true;
        }
        std::string text;
    } values;
    EXPECT_TRUE(Inspect::walk_values(protocol, id, message, values));
    std::string text(1 << 19, '\0');
    text.resize(
        Inspect::render(protocol, id, message, text.data(), text.data() + text.size(), Inspect::Secrets::show).size);
    return text + values.text;
}

TEST_F(Protocols, EachHasItsOwnModule) {
    static_assert(std::is_same_v<Velmora::ProtocolOf<Odd::One>, Odd::indexTraits>);
    static_assert(std::is_same_v<Velmora::ProtocolOf<Quillon::Side>, Quillon::QLProtocolTraits>);
    Velmora::MsgProtocol* const odd = Odd::indexTraits::instance();
    Velmora::MsgProtocol* const own = Quillon::QLProtocolTraits::instance();
    EXPECT_STREQ(odd->getMessageName(0), "Message") << "identifiers overlap";
    EXPECT_STREQ(own->getMessageName(0), "VersionMessage");
    EXPECT_STREQ(odd->getName(), "Hostile");
    EXPECT_STREQ(odd->getSignature(), Odd::indexTraits::SIGNATURE);
    EXPECT_EQ(odd->getDefinition(), "(Not supported.)");
    size_t count = 0;
    const int* const index = odd->getMessageIndex(count);
    ASSERT_EQ(count, Odd::indexTraits::MESSAGES);
    Odd::indexTraits::messages([&]<class T>(of<T>, const char* name) {
        EXPECT_EQ(index[T::INDEX], T::ID);
        EXPECT_STREQ(odd->getDescriptor(T::ID)->name(), name);
        return true;
    });
    EXPECT_EQ(odd->getDescriptor(53280), nullptr) << "of the other protocol";

    Quillon::finalize();
    EXPECT_EQ(Quillon::__protocol, nullptr);
    EXPECT_EQ(Odd::indexTraits::instance(), odd);
    EXPECT_STREQ(odd->getMessageName(0), "Message");
}

const Inspect::Protocol& odd = Inspect::protocol_of<Odd::indexTraits>();

/// What stands above the library knows the size of the body, takes it, and takes none that is cut or goes on.
template <class T>
void verify(const std::string& body) {
    const std::unique_ptr<char[]> exact(new char[body.size()]);
    std::memcpy(exact.get(), body.data(), body.size());
    const char *const begin = exact.get(), *const end = begin + body.size();
    InBlock<T> read(1 << 18);
    const size_t before = read.block.alloc.used_size();
    Velmora::FastCodec codec(exact.get(), exact.get() + body.size());
    read->read(codec);
    EXPECT_EQ(Inspect::encoded_size(*read), body.size());
    EXPECT_GE(body.size(), Inspect::minimal_size<T>());
    EXPECT_LE(body.size(), Inspect::max_encoded_size<T>({300, 200}));
    for (const Inspect::Policy& policy : {Inspect::whole, Inspect::tolerant}) {
        const Inspect::Result result = Inspect::verify(odd, T::ID, begin, end, policy);
        EXPECT_TRUE(result);
        EXPECT_EQ(result.blockBytes, read.block.alloc.used_size() - before);
        for (size_t length = 0; length < body.size(); length += 1 + length / 16)
            EXPECT_FALSE(Inspect::verify<T>(begin, begin + length, policy)) << "cut at " << length;
    }
    for (size_t length = 0; length <= body.size(); length += 1 + length / 32 * (length + 40 < body.size()))
        expectCheckedAlike<T>({begin, length}, Inspect::verify<T>(begin, begin + length, Inspect::tolerant));
    expectEncodedWithin(*read);
    // Zeros stand for all of its fields, in whatever form.
    const Inspect::Result none = Inspect::verify<T>(begin, begin, Inspect::rolling);
    const std::string zeros(Inspect::minimal_size<T>(), '\0');
    EXPECT_EQ(none.missing, zeros.size());
    EXPECT_EQ(none.blockBytes,
              Inspect::verify<T>(zeros.data(), zeros.data() + zeros.size(), Inspect::whole).blockBytes);
    // The quick walk takes what the slow one takes without liberties, and stops where that stops.
    const Inspect::detail::Verifier& verifier = *odd.find(odd.verifiers, T::ID);
    EXPECT_EQ(verifier.canonical(begin, end).p == end, bool(verifier.judge(begin, end, Inspect::strict)));
}

/// By its identifier alone, a body becomes a message, a text, JSON, a message again and the same body.
void thereAndBack(const Inspect::Protocol& protocol, Velmora::MsgType_t id, const std::string& body) {
    Block first(1 << 18, 1), second(1 << 18, 3);
    const Inspect::Decoded decoded = Inspect::decode_verified(protocol, id, body, first.alloc);
    ASSERT_TRUE(decoded) << decoded.result.text();
    EXPECT_STREQ(decoded.descriptor->name(), Inspect::reflect(protocol, id)->name.data());
    void* const copy = second.alloc.allocate(decoded.descriptor->size());
    decoded.descriptor->construct(copy, second.alloc);
    Inspect::from_json(protocol, id, Inspect::to_json(protocol, id, decoded.object), copy);
    std::string bytes(body.size(), '\0');
    const Inspect::Encoded encoded =
        Inspect::encode_checked(protocol, id, copy, bytes.data(), bytes.data() + bytes.size());
    EXPECT_TRUE(encoded) << encoded.text();
    EXPECT_EQ(hex(bytes), hex(body));
    EXPECT_EQ(shown(protocol, id, copy), shown(protocol, id, decoded.object));
    for (void* message : {copy, decoded.object}) decoded.descriptor->destroy(message);
}

// At odd addresses, in blocks that end where their storage does.
TEST_F(Protocols, EveryValueOfEveryTypeComesBack) {
    forEveryTypeOf<Odd::indexTraits>([]<class T>(of<T>, const char* name) {
        for (const Filling filling : fillings) {
            Sample sample(filling, 3);
            InBlock<T> value(1 << 18, 1), copy(1 << 18, 3), read(1 << 18, 5);
            sample.fill(*value);
            *copy = *value;
            EXPECT_TRUE(*copy == *value && !(*copy < *value) && !(*value < *copy));
            sample.check(*copy);
            const std::string body = encoded(*value), opening = std::string("<") + name + " ";
            if constexpr (!isPadded<T>) {
                decode(*read, body);
                sample.check(*read);
                EXPECT_EQ(encoded(*read), body);
                if constexpr (Velmora::Message<T>) {
                    verify<T>(body);
                    thereAndBack(odd, T::ID, body);
                }
            }
            read->checkbounds(read.block.begin(), read.block.end());
            const std::string text = printed(*value);
            EXPECT_TRUE(text.starts_with(opening) && text.ends_with(">")) << text;
            EXPECT_LE(text.size() - opening.size() - 1, Velmora::maxFieldsTextSize(&*value));
            std::ostringstream os;
            os << *value;
            EXPECT_EQ(os.str().substr(0, 20), text.substr(0, std::min<size_t>(20, text.find('\0'))));
        }
    });
}

// Such elements are written in one piece, longer than what else is written from one test of the range to the next.
TEST_F(Protocols, ElementsThatTravelAsHeldStayInTheRange) {
    InBlock<Odd::Types> value(1 << 19);
    value->vectors.resize(1);
    value->vectors[0].int64_fixeds.resize(5000, -1);
    expectEncodedWithin(*value);
    value->vectors[0].int64_fixeds.resize(32768);
    char range[1 << 15];
    EXPECT_EQ(Inspect::encode_checked(*value, range, range + sizeof range).text(),
              "too many elements (vectors[0].int64_fixeds)");
}

// A table of worked bytes: one field of each type, then the vectors.
TEST_F(Protocols, EveryLogicalTypeHasItsWireForm) {
    InBlock<Odd::Types> value;
    value->boolean_1 = true;
    value->int8_1 = -1;
    value->int16_1 = -2;
    value->int32_1 = 300;
    value->int64_1 = -1;
    value->int64_fixed_1 = -2;
    value->price_1 = 7;
    value->uint8_1 = 255;
    value->uint16_1 = 300;
    value->uint32_1 = 127;
    value->uint64_1 = UINT64_MAX;
    value->uint16_fixed_1 = 0x1234;
    value->uint32_fixed_1 = 0x12345678;
    value->float4_1 = 1.0F;
    value->float8_1 = -2.0;
    value->string_1 = "abc";
    value->string_fixed_1 = "abc";
    value->blob_1.assign("\0\xFF", 2);
    // clang-format off
    EXPECT_EQ(hex(encoded(*value)),
              "01" "ff" "03" "d804" "01" "feffffffffffffff" "1c"
              "ff" "ac02" "7f" "ffffffffffffffffff01" "3412" "78563412"
              "0000803f" "00000000000000c0" "03616263" "0300616263" "00" "0200ff" "00"
              "00" + std::string(2 * 38, '0') + "00"); // no vectors, and two records
    // clang-format on
    value->cryptblob_1 = "abc";
    value->cryptstring_1 = "abc";
    const std::string secret = encoded(*value);
    EXPECT_EQ(secret.find("abc"), secret.find("\3abc") + 1) << "only the plain string is readable";
    EXPECT_NE(printed(*value).find("cryptblob_1=\"abc\""), std::string::npos);

    InBlock<Odd::INT32> vectors;
    vectors->bools.resize(2, true);
    vectors->int16s.resize(1, -2);
    vectors->prices.resize(1, Velmora::NA);
    vectors->uint8s.resize(2, 9);
    vectors->uint16_fixeds.resize(2, 0x0102);
    vectors->float4s.resize(1, 1.0F);
    vectors->string_fixeds.resize(1);
    vectors->string_fixeds[0] = "a";
    vectors->enums.resize(2, static_cast<Odd::BUFSIZ::Type>(10));
    // clang-format off
    EXPECT_EQ(hex(encoded(*vectors)),
              "020101" "00" "0103" "00" "00" "00" "0107" "020909" "00" "00" "00" "0202010201" "00" "010000803f"
              "00" "00" "01010061" "00" "00" "00" "020a0a" "00");
    // clang-format on
}

// The same identifier is another message in each of them, and none in a third.
TEST_F(Protocols, EachHasItsOwnTable) {
    const Inspect::Protocol& own = Inspect::default_protocol();
    EXPECT_EQ(&own, &Inspect::protocol_of<Quillon::QLProtocolTraits>());
    EXPECT_EQ(Inspect::reflect(0)->name, "VersionMessage");
    EXPECT_EQ(Inspect::reflect(own, 0)->name, "VersionMessage");
    EXPECT_EQ(Inspect::reflect(odd, 0)->name, "Message");
    const Inspect::Protocol& chat = Inspect::protocol_of<Chat::ChatTraits>();
    EXPECT_EQ(Inspect::verify(chat, 0, nullptr, nullptr, Inspect::whole).fault, Inspect::Fault::unknownIdentifier);
    const char body[] = {3, 'a'};
    EXPECT_EQ(Inspect::verify(chat, 2, body, body + 2, Inspect::whole).text(), "truncated at byte 0 (user)");
    EXPECT_EQ(Inspect::all_messages(chat).size(), 3u);
    EXPECT_EQ(odd.name, "Hostile");
    EXPECT_EQ(odd.version, 7);
    EXPECT_EQ(odd.signature, Odd::indexTraits::SIGNATURE);
    std::string names;
    for (const Inspect::TypeInfo* record : Inspect::all_records(odd)) names += std::string(record->name) + ' ';
    Odd::indexTraits::records([&](auto, const char* name) {
        EXPECT_TRUE(names.starts_with(std::string(name) + ' ')) << name;
        names.erase(0, names.find(' ') + 1);
        return true;
    });
    EXPECT_EQ(names, "");
    EXPECT_EQ(Inspect::all_enumerations(odd)[1]->enumerators[1].value, 4242);
    for (const Inspect::Protocol* protocol : {&own, &odd, &chat}) {
        size_t found = 0;
        for (int id = 0; id <= UINT16_MAX; ++id)
            found += Inspect::reflect(*protocol, static_cast<Velmora::MsgType_t>(id)) != nullptr;
        EXPECT_EQ(found, protocol->messages.size());
        for (const Inspect::MessageInfo& message : protocol->messages)
            EXPECT_EQ(Inspect::reflect(*protocol, message.id), message.type) << message.type->name;
    }
}

TEST_F(Protocols, NeedNothingOfQLProtocol) {
    Chat::initialize();
    EXPECT_EQ(Chat::ChatTraits::MESSAGES, 3u);
    EXPECT_STREQ(Chat::__protocol->getMessageName(2), "SayMessage");
    InBlock<Chat::SayMessage> said;
    said->user = "ann";
    EXPECT_EQ(hex(encoded(*said)), "03616e6e0000");
    EXPECT_EQ(printed(*said), "<SayMessage user=\"ann\" text=\"\" mood=PLAIN>");
    EXPECT_EQ(Inspect::to_json(*said), R"({"user":"ann","text":null,"mood":"PLAIN"})");
    thereAndBack(Inspect::protocol_of<Chat::ChatTraits>(), 2, encoded(*said));
    Chat::finalize();
}

TEST_F(Protocols, PaddingIsReadInAnotherFormThanWritten) {
    InBlock<Odd::Padded> value;
    value->padding = "abc";
    EXPECT_EQ(hex(encoded(*value)), "0300616263");
}

TEST_F(Protocols, NumbersAreShownWhole) {
    InBlock<Odd::EOF> value;
    value->uint64 = UINT64_MAX;
    value->uint32 = UINT32_MAX;
    value->uint8 = 200;
    value->int64_fixed = Velmora::NDA;
    value->float4 = 0.1F;
    value->float8 = -1e300;
    value->errno = static_cast<Odd::NULL::Type>(4242);
    const std::string text = printed(*value);
    for (const char* part : {"uint64=18446744073709551615 ", "uint32=4294967295 ", "uint8=200 ", "int64_fixed=NDA ",
                             "float4=0.10000 ", "float8=-1000000000000000052504760255204", "errno=WIDE "})
        EXPECT_NE(text.find(part), text.npos) << part << " in " << text;
}

// The order is the one of IEEE 754's totalOrder; equal is what travels as the same bytes.
TEST_F(Protocols, FloatingPointNumbersHaveATotalOrder) {
    const double nan = std::numeric_limits<double>::quiet_NaN(), inf = std::numeric_limits<double>::infinity();
    const double ascending[] = {-nan, -inf, -1e-310, -0.0, 0.0, 1e-310, 2.5, inf, nan};
    for (const double a : ascending)
        for (const double& b : ascending) {
            InBlock<Odd::EOF> x, y;
            InBlock<Odd::INT32> xs, ys;
            x->float8 = a;
            y->float8 = b;
            xs->float8s.resize(2, a);
            ys->float8s.resize(2, b);
            x->float4 = y->float4 = std::numeric_limits<float>::quiet_NaN();
            const bool isLess = std::bit_cast<uint64_t>(a) != std::bit_cast<uint64_t>(b)
                                && std::ranges::find_if(ascending, [&](const double& it) {
                                       return std::bit_cast<uint64_t>(it) == std::bit_cast<uint64_t>(a);
                                   }) < &b;
            const bool isEqual = std::bit_cast<uint64_t>(a) == std::bit_cast<uint64_t>(b);
            EXPECT_EQ(*x < *y, isLess) << a << " and " << b;
            EXPECT_EQ(*xs < *ys, isLess) << a << " and " << b;
            EXPECT_EQ(*x == *y, isEqual) << a << " and " << b;
            EXPECT_EQ(*xs == *ys, isEqual) << a << " and " << b;
        }
}

TEST_F(Protocols, WhatTheDefinitionSaysReachesTheTraits) {
    constexpr auto plain = fieldNotes(of<Odd::EOF>{});
    static_assert(std::string_view(typeNotes(of<Odd::EOF>{}).deprecated) == "nobody needs it");
    EXPECT_STREQ(plain[15].deprecated, "use \"y\" \\o/");
    EXPECT_STREQ(enumeratorNotes(of<Odd::BUFSIZ>{})[0].deprecated, "a \\ b");
    for (const Velmora::FieldNotes& field : fieldNotes(of<Odd::INT32>{})) EXPECT_TRUE(field.isSecret);
    EXPECT_FALSE(plain[0].isSecret);

    // The notes stand in the order of the fields.
    size_t i = 0, identifiers = 0, stations = 0;
    Quillon::fields(of<Quillon::SubmitOrder>{}, [&](const char* name, auto, auto) {
        const Velmora::FieldNotes note = fieldNotes(of<Quillon::SubmitOrder>{})[i++];
        identifiers += *note.identifies != '\0';
        stations += *note.station != '\0';
        EXPECT_EQ(std::string(name) == "clOrdID", std::string(note.identifies) == "clientOrder") << name;
        EXPECT_EQ(std::string(name) == "timeHandler", std::string(note.station) == "handler") << name;
        return true;
    });
    EXPECT_EQ(identifiers, 2u);
    EXPECT_EQ(stations, 3u);

    // From there they reach reflection.
    const auto& records = Inspect::all_records(odd);
    EXPECT_EQ(records[0]->name, "EOF");
    EXPECT_EQ(records[0]->deprecated, "nobody needs it");
    EXPECT_EQ(records[0]->fields[15].deprecated, "use \"y\" \\o/");
    EXPECT_TRUE(records[1]->fields[0].isSecret && !records[0]->fields[0].isSecret);
    const Inspect::EnumerationInfo& enumeration = *Inspect::all_enumerations(odd)[0];
    EXPECT_EQ(enumeration.deprecated, "say \"Other\"");
    EXPECT_EQ(enumeration.enumerators[0].doc, "old");
    EXPECT_EQ(enumeration.enumerators[0].deprecated, "a \\ b");
    const Inspect::TypeInfo& said = *Inspect::reflect(Inspect::protocol_of<Chat::ChatTraits>(), 2);
    EXPECT_EQ(said.doc, "Someone says something.");
    EXPECT_EQ(said.fields[1].doc, "what is said");
    for (const Inspect::FieldInfo& field :
         Inspect::reflect(Quillon::SubmitOrderMessage::ID)->fields[3].value.record->fields) {
        EXPECT_EQ(field.identifies == "clientOrder", field.name == "clOrdID") << field.name;
        EXPECT_EQ(field.station == "handler", field.name == "timeHandler") << field.name;
    }
}

} // namespace
