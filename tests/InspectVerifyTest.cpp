// verify(): what it accepts, what it refuses and where, and that what it accepts decodes exactly as told.
#include "Inspect/Verify.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <random>

#include "Inspect/Checked.h"
#include "Inspect/Reflection.h"
#include "tests/Bodies.h"
#include "tests/Hex.h"

namespace {

using namespace Inspect;
using Velmora::of;

class Verify : public Module {
  protected:
    template <class T>
    Result check(std::string_view body, const Policy& policy) {
        const std::string_view held = guarded.hold(body);
        return verify<T>(held.data(), held.data() + held.size(), policy);
    }

    Guarded guarded;
};

// --- forms: one value of each wire form, in a message where it stands alone or between zeros

struct Place {
    Velmora::MsgType_t id;
    std::string before;
    std::string after;
    const char* path;
};

std::string repeat(const char* text, size_t n) {
    std::string result;
    for (; n != 0; --n) result += text;
    return result;
}

/// The rest of a TradeCaptureMessage after origPrice: zeros, but for the side.
const std::string behindPrice = repeat("00", 14) + "01" + repeat("00", 7);

const std::multimap<std::string, Place> places = {
    {"int16", {Quillon::MemBusConnectMessage::ID, "", "00", "id.appID"}},
    {"int32", {Quillon::TimerMessage::ID, "", "", "tqid"}},
    {"int64", {Quillon::HeartbeatTimerMessage::ID, "", "", "interval_ns"}},
    {"price", {Quillon::TradeCaptureMessage::ID, "00", behindPrice, "origPrice"}},
    {"price",
     {Quillon::OrderReceivedMessage::ID, repeat("00", 9) + "0100", "0100", "contents.price"}}, // among the last bytes
    {"string", {Quillon::JsonFromServer::ID, "", "", "contents"}},
    {"padding", {Quillon::PadMessage::ID, "", "", "padding"}},
    {"count", {Quillon::BatchesCompletedMessage::ID, "", "", "batchesCompleted"}},
    {"bool", {Quillon::DateRolloverMessage::ID, "00000000", "", "dispatchToAll"}},
    {"enumeration", {Quillon::TestMessage::ID, "", "", "test"}},
    {"request", {Quillon::RequestMessage::ID, "0000", "", "request"}},
};

/// Forms of one kind that are judged alike.
struct Forms {
    const char* kind;
    std::vector<std::string> bytes;  ///< hexadecimal
    Fault fault = Fault::none;       ///< under the strict policy
    bool Policy::*liberty = nullptr; ///< the one liberty that makes them accepted; null if none does
};

TEST_F(Verify, FormsAreJudgedByThePolicyWhereverTheyStand) {
    constexpr auto overlong = &Policy::overlongVarints;
    constexpr auto dropped = &Policy::droppedBits;
    constexpr auto nonMinimal = &Policy::nonMinimal;
    constexpr auto reserved = &Policy::reservedPriceBits;
    const Forms all[] = {
        // canonical forms at the limits of every width
        {"int16", {"00", "7f", "8001", "ff7f", "808001", "ffff03"}},
        {"int32", {"808001", "80808001", "8080808001", "ffffffff0f"}},
        {"int64",
         {"ffffffff0f", "808080808001", "80808080808001", "8080808080808001", "808080808080808001",
          "ffffffffffffffff7f", "ffffffffffffffffff01"}},
        {"price",
         {"00", "7c", "8001", "fc7f", "808001", "f8ffffffffffffffff03", "fcffffffffffffffff07", "03", "05", "07",
          "80808080808080808001", "90808080808080808004"}},
        {"string",
         {"00", "03616263", "8001" + repeat("00", 128), "ff7f" + repeat("00", 16383), "ffff03" + repeat("00", 65535)}},
        {"padding", {"03616263"}},
        {"count", {"00", "7f" + repeat("00", 127), "8080" + repeat("00", 128), "ffff" + repeat("00", 32767)}},
        {"bool", {"00", "01"}},
        {"enumeration", {"00", "09"}},
        {"request", {"4f"}},
        // more bytes than the width takes
        {"int16", {"80808000"}, Fault::overlongVarint, overlong},
        {"int32", {"808080808000"}, Fault::overlongVarint, overlong},
        {"int64", {"8080808080808080808000", repeat("80", 300) + "00"}, Fault::overlongVarint, overlong},
        {"price", {"8080808080808080808000"}, Fault::overlongVarint},
        {"price", {"8481808080808080808000"}, Fault::overlongVarint, overlong},
        {"string", {"8180800061"}, Fault::overlongVarint, overlong},
        {"string", {"81" + repeat("80", 9) + "0161"}, Fault::overlongVarint}, // a bit beyond 64, too
        // bits beyond the width
        {"int16", {"ffff04", "808040"}, Fault::varintOverflow, dropped},
        {"int32", {"ffffffff10", "808080807f"}, Fault::varintOverflow, dropped},
        {"int64", {"ffffffffffffffffff02"}, Fault::varintOverflow, dropped},
        {"price", {"fcffffffffffffffff08"}, Fault::varintOverflow, dropped},
        {"string", {"81800461", "81807c61"}, Fault::lengthBeyondWidth, dropped},
        // what a shorter form stands for, of prices also the sentinels in their long forms
        {"int16", {"8000", "ff8000"}, Fault::nonMinimal, nonMinimal},
        {"int32", {"8000", "ffffffff00"}, Fault::nonMinimal, nonMinimal},
        {"int64", {"80808080808080808000", "808080808080808000", "8080808080808000"}, Fault::nonMinimal, nonMinimal},
        {"price",
         {"8000", "808000", "84808080808080808004", "88808080808080808004", "8c808080808080808004"},
         Fault::nonMinimal,
         nonMinimal},
        {"string", {"8300616263"}, Fault::nonMinimal, nonMinimal},
        {"count", {"8000", "807f" + repeat("00", 127)}, Fault::nonMinimal, nonMinimal},
        // the reserved bits of prices
        {"price", {"01", "02", "06", "8101", "8201", "83808001"}, Fault::reservedPriceBits, reserved},
        // single bytes
        {"bool", {"02", "ff"}, Fault::badBoolean, &Policy::anyBoolean},
        {"enumeration", {"0a", "ff"}, Fault::unknownEnumerator, &Policy::unknownEnumerators},
        {"request", {"50"}, Fault::unknownEnumerator, &Policy::unknownEnumerators},
        // counts that the bytes cannot hold, whatever the policy
        {"count", {"01", "7f" + repeat("00", 126), "ffff" + repeat("00", 32766)}, Fault::countBeyondBytes},
    };
    const auto judge = [&](const Forms& form, const std::string& bytes, const Place& place) {
        SCOPED_TRACE(std::string(form.kind) + " " + bytes.substr(0, 40));
        const std::string before = unhex(place.before);
        const std::string body = before + unhex(bytes) + unhex(place.after);
        const auto verifyWith = [&](std::string_view given, const Policy& policy) {
            const std::string_view front = guarded.holdAtBegin(given);
            const Result first = verify(place.id, front.data(), front.data() + front.size(), policy);
            const std::string_view held = guarded.hold(given);
            Result result = verify(place.id, held.data(), held.data() + held.size(), policy);
            EXPECT_EQ(first.fault, result.fault);
            EXPECT_EQ(first.consumed, result.consumed);
            return result;
        };
        const auto expectAccepted = [&](const Result& result) {
            EXPECT_TRUE(result) << result.text();
            EXPECT_EQ(result.consumed, body.size());
            EXPECT_EQ(result.path(), "");
        };
        const auto expectRefused = [&](const Result& result) {
            EXPECT_EQ(to_string(result.fault), std::string(to_string(form.fault)));
            EXPECT_EQ(result.offset, before.size());
            EXPECT_EQ(result.path(), place.path);
            EXPECT_EQ(result.blockBytes, 0u);
        };
        if (form.fault == Fault::none)
            expectAccepted(verifyWith(body, strict));
        else
            expectRefused(verifyWith(body, strict));
        if (form.fault == Fault::countBeyondBytes) return expectRefused(verifyWith(body, whole));
        expectAccepted(verifyWith(body, whole));
        if (form.liberty != nullptr) {
            Policy policy;
            policy.*form.liberty = true;
            expectAccepted(verifyWith(body, policy));
            policy = whole;
            policy.*form.liberty = false;
            expectRefused(verifyWith(body, policy));
        }
        // With room after, whole words are looked at; the verdict is the same.
        for (size_t room = 1; room <= 12; ++room) {
            Policy policy;
            policy.trailingBytes = true;
            const std::string longer = body + std::string(room, '\x81');
            if (form.fault == Fault::none)
                expectAccepted(verifyWith(longer, policy));
            else
                expectRefused(verifyWith(longer, policy));
            expectAccepted(verifyWith(longer, tolerant));
        }
        // Cut short anywhere inside, every form is refused.
        for (size_t size = before.size(); size < std::min(body.size(), before.size() + 12); ++size)
            EXPECT_FALSE(verifyWith({body.data(), size}, tolerant)) << size;
    };
    for (const Forms& forms : all)
        for (const std::string& bytes : forms.bytes)
            for (auto [at, end] = places.equal_range(forms.kind); at != end; ++at) judge(forms, bytes, at->second);
}

TEST_F(Verify, WhatIsNotAValueIsToldToo) {
    const char none[] = "";
    Result result = verify(0xF209, none, none, tolerant);
    EXPECT_EQ(result.fault, Fault::unknownIdentifier);
    EXPECT_EQ(result.text(), "unknown identifier 61961");
    EXPECT_EQ(result.path(), "");
    EXPECT_EQ(verify(Quillon::TimerMessage::ID - 350, none, none, tolerant).fault, Fault::unknownIdentifier)
        << "the same place in a table is not the same identifier";

    result = check<Quillon::TimerMessage>("", tolerant);
    EXPECT_EQ(result.text(), "truncated at byte 0 (tqid)");

    const std::string trailing = unhex("0000");
    result = check<Quillon::TimerMessage>(trailing, whole);
    EXPECT_EQ(result.text(), "trailing bytes at byte 1");
    EXPECT_EQ(result.consumed, 1u);
    result = check<Quillon::TimerMessage>(trailing, tolerant);
    EXPECT_EQ(result.text(), "accepted");
    EXPECT_EQ(result.consumed, 1u) << "trailing bytes are told";
}

TEST_F(Verify, FaultsHaveTextsOfTheirOwn) {
    std::set<std::string> texts;
    const char byte = 0;
    for (int fault = 0; fault <= static_cast<int>(Fault::blockTooSmall); ++fault) {
        const Result result{.fault = static_cast<Fault>(fault), .begin = &byte, .end = &byte + 1};
        EXPECT_TRUE(result.text().starts_with(to_string(result.fault)));
        texts.insert(to_string(result.fault));
    }
    EXPECT_EQ(texts.size(), static_cast<size_t>(Fault::blockTooSmall) + 1);
    EXPECT_FALSE(texts.contains(to_string(static_cast<Fault>(99))));
    const Result small{
        .fault = Fault::blockTooSmall, .id = Quillon::TimerMessage::ID, .begin = &byte, .end = &byte + 1};
    EXPECT_EQ(small.text(), "block too small") << "the fault of no value";
    EXPECT_EQ(small.path(), "");
}

TEST_F(Verify, SamplesTakeExactlyTheBytesAndTheBlockTold) {
    forEveryMessage([&]<class T>(of<T>, const char*) {
        for (const Filling filling : fillings) {
            for (unsigned seed = 1; seed <= 5; ++seed) {
                Sample sample(filling, seed);
                const std::string bytes = sampleBody<T>(filling, seed).bytes;
                const Result result = check<T>(bytes, whole);
                ASSERT_TRUE(result) << result.text();
                EXPECT_EQ(result.consumed, bytes.size());
                expectCheckedAlike<T>({result.begin, bytes.size()}, result);
                DecodedBody<T> decoded({result.begin, bytes.size()}, result);
                sample.check(*decoded);
                EXPECT_EQ(static_cast<bool>(check<T>(bytes, strict)), holdsKnownEnumerators(*decoded));
                // One byte of block less does not do.
                if (result.blockBytes == 0) continue;
                InBlock<T> small(static_cast<int>(sizeof(T) + result.blockBytes - 1));
                std::string copy = bytes;
                Velmora::FastCodec codec(copy.data(), copy.data() + copy.size());
                EXPECT_ANY_THROW(small->read(codec));
            }
        }
    });
}

TEST_F(Verify, EveryTruncationOfEverySampleIsRefusedAtTheValueThatIsCut) {
    size_t tried = 0;
    forEveryMessage([&]<class T>(of<T>, const char*) {
        for (const Filling filling : fillings) {
            const Body body = sampleBody<T>(filling, 2);
            for (size_t size = 0; size < body.bytes.size(); ++size) {
                // The first value that is cut, or the first vector whose elements the rest cannot hold.
                const Span* cut = nullptr;
                for (const Span& span : body.spans) {
                    cut = &span;
                    if (span.end > size || span.count * span.minimal > size - span.end) break;
                }
                const Result result = check<T>({body.bytes.data(), size}, tolerant);
                ASSERT_EQ(result.fault, cut->end > size ? Fault::truncated : Fault::countBeyondBytes) << size;
                ASSERT_EQ(result.offset, cut->begin) << size;
                ASSERT_EQ(result.path(), cut->path) << size;
                expectCheckedAlike<T>({result.begin, size}, result);
                // The strict policy may refuse an earlier value, but sees the same cut.
                const Result exact = check<T>({body.bytes.data(), size}, strict);
                ASSERT_TRUE(exact.fault == result.fault || exact.offset < result.offset) << exact.text();
                ++tried;
            }
        }
    });
    RecordProperty("truncations", static_cast<int>(tried));
}

/// Where a field begins that nothing but such fields follow, by reflection.
std::set<size_t> lastFieldsOf(const TypeInfo* type, const Body& body) {
    std::set<size_t> begins;
    for (std::string before; type != nullptr; type = type->fields.back().value.record) {
        for (const FieldInfo& field : type->fields) {
            const std::string path = before + std::string(field.name) + '.';
            const auto holds = [&](const Span& it) { return (it.path + '.').starts_with(path); };
            begins.insert(std::ranges::find_if(body.spans, holds)->begin);
        }
        before += std::string(type->fields.back().name) + '.';
    }
    return begins;
}

TEST_F(Verify, MissingLastFieldsAreReadAsTheZerosThatStandForThem) {
    Policy exact;
    exact.missingLastFields = true;
    size_t accepted = 0, refusedByExact = 0;
    forEveryMessage([&]<class T>(of<T>, const char*) {
        for (const Filling filling : fillings) {
            const Body body = sampleBody<T>(filling, 2);
            const std::set<size_t> begins = lastFieldsOf(reflect(T::ID), body);
            for (size_t size = 0; size < body.bytes.size(); ++size) {
                const std::string cut = body.bytes.substr(0, size);
                const Result result = check<T>(cut, rolling);
                ASSERT_EQ(static_cast<bool>(result), begins.contains(size)) << size << " " << result.text();
                if (!result) {
                    ASSERT_EQ(result.text(), check<T>(cut, whole).text());
                    ASSERT_EQ(result.missing, 0u);
                    continue;
                }
                ++accepted;
                ASSERT_EQ(result.consumed, size);
                const std::string filled = cut + std::string(result.missing, '\0');
                EXPECT_FALSE(check<T>({filled.data(), filled.size() - 1}, tolerant)) << "no zero more than needed";
                const Result full = verify<T>(filled.data(), filled.data() + filled.size(), whole);
                ASSERT_EQ(result.blockBytes, full.blockBytes);
                DecodedBody<T> meant(filled, full);
                Block block(static_cast<int>(sizeof(T) + result.blockBytes), 1);
                const Decoded decoded = decode_verified(T::ID, guarded.hold(cut), block.alloc, rolling);
                ASSERT_TRUE(decoded) << decoded.result.text();
                EXPECT_EQ(block.alloc.unused_size(), 0u);
                EXPECT_TRUE(*static_cast<T*>(decoded.object) == *meant);
                // Other liberties hold for the zeros, too: of an enumeration they need not be known.
                const Result strictly = check<T>(cut, exact);
                ASSERT_EQ(strictly.text(), verify<T>(filled.data(), filled.data() + filled.size(), strict).text());
                refusedByExact += !strictly && strictly.offset >= size;
            }
        }
    });
    EXPECT_GT(accepted, 500u);
    EXPECT_GT(refusedByExact, 10u);
}

/// What write() makes of the value; of a PadMessage the form that read() takes.
template <class T>
std::string written(const T& value) {
    if constexpr (std::is_same_v<T, Quillon::PadMessage>) {
        return Body(value).bytes;
    } else {
        std::string bytes(Inspect::encoded_size(value), '\0');
        Velmora::FastCodec codec(bytes.data(), bytes.data() + bytes.size());
        value.write(codec);
        return bytes;
    }
}

/// Verifies under both policies and holds them against read() and write().
template <class T>
bool agreesWithCodec(std::string_view body) {
    const char* const end = body.data() + body.size();
    const Result result = verify<T>(body.data(), end, tolerant);
    const Result exact = verify<T>(body.data(), end, strict);
    expectCheckedAlike<T>(body, result);
    if (!result) {
        EXPECT_FALSE(exact);
        EXPECT_LE(result.offset, body.size());
        EXPECT_NE(result.path(), "");
        return false;
    }
    DecodedBody<T> decoded(body, result);
    // Strict accepts what write() makes of values with declared enumerators, and nothing else.
    const bool isWritten =
        result.consumed == body.size() && holdsKnownEnumerators(*decoded) && written(*decoded) == body;
    EXPECT_EQ(static_cast<bool>(exact), isWritten) << exact.text() << " " << hex(body);
    return true;
}

TEST_F(Verify, EverySingleByteChangeIsRefusedOrDecodesCleanly) {
    size_t tried = 0, accepted = 0;
    forEveryMessage([&]<class T>(of<T>, const char*) {
        for (const Filling filling : {Filling::zero, Filling::typical}) {
            const std::string bytes = sampleBody<T>(filling, 3).bytes;
            for (size_t at = 0; at < bytes.size(); ++at) {
                std::string changed = bytes;
                for (int change = 1; change < 256; ++change) {
                    changed[at] = static_cast<char>(bytes[at] ^ change);
                    accepted += agreesWithCodec<T>(guarded.hold(changed));
                    ++tried;
                    ASSERT_FALSE(testing::Test::HasFailure()) << at << " ^ " << change;
                }
            }
        }
    });
    EXPECT_GT(accepted, tried / 10);
    EXPECT_LT(accepted, tried);
    RecordProperty("changes", static_cast<int>(tried));
}

TEST_F(Verify, RandomVarintsAreJudgedAsTheCodecReadsThem) {
    std::mt19937_64 random(7);
    for (int round = 0; round < 40000; ++round) {
        // Mostly continuation bytes, so that long forms with bits near the limits are common.
        std::string varint(random() % 12, '\0');
        for (char& c : varint) c = static_cast<char>(random() % 4 != 0 ? random() | 0x80 : 0x80);
        static constexpr char last[] = {0, 1, 3, 4, 7, 8, 15, 16, 127};
        varint += last[random() % std::size(last)];
        varint += std::string(random() % 4 * random() % 12, '\0');
        agreesWithCodec<Quillon::HeartbeatTimerMessage>(guarded.hold(varint));
        agreesWithCodec<Quillon::TimerMessage>(guarded.hold(varint));
        agreesWithCodec<Quillon::JsonFromClient>(guarded.hold(varint));
        agreesWithCodec<Quillon::MemBusConnectMessage>(guarded.hold(varint + '\0'));
        agreesWithCodec<Quillon::TradeCaptureMessage>(guarded.hold('\0' + varint + unhex(behindPrice)));
        ASSERT_FALSE(testing::Test::HasFailure()) << hex(varint);
    }
}

TEST_F(Verify, EnumerationBytesAreKnownOrRefusedInEveryField) {
    size_t seen = 0;
    forEveryMessage([&]<class T>(of<T>, const char*) {
        const Body body = sampleBody<T>(Filling::typical, 1);
        for (const Span& span : body.spans) {
            if (span.enumerators.empty()) continue;
            ++seen;
            std::string changed = body.bytes;
            for (int byte = 0; byte < 256; ++byte) {
                changed[span.begin] = static_cast<char>(byte);
                EXPECT_TRUE(check<T>(changed, tolerant));
                Policy policy = whole;
                policy.unknownEnumerators = false;
                const Result result = check<T>(changed, policy);
                ASSERT_EQ(static_cast<bool>(result), span.enumerators.contains(byte)) << span.path << " " << byte;
                if (result) continue;
                EXPECT_EQ(result.fault, Fault::unknownEnumerator);
                EXPECT_EQ(result.offset, span.begin);
                EXPECT_EQ(result.path(), span.path);
            }
        }
    });
    EXPECT_GT(seen, 60u);
}

TEST_F(Verify, BlockBytesStayWithinTheBoundAndNearlyReachIt) {
    double worst = 0;
    const auto measure = [&]<class T>(of<T>, std::string_view body) {
        const Result result = check<T>(body, whole);
        ASSERT_TRUE(result) << result.text();
        EXPECT_LE(result.blockBytes, 33 * result.consumed);
        worst = std::max(worst, static_cast<double>(result.blockBytes) / static_cast<double>(result.consumed));
        expectCheckedAlike<T>({result.begin, body.size()}, result);
    };
    // One user in as many groups as can be, all without a name: clDataID, no limits, no states, the hierarchy, no
    // rates.
    const std::string names = unhex("ffff") + std::string(32767, '\0');
    const std::string hierarchy = unhex("0000000100") + names + unhex("0000000000");
    measure(of<Quillon::TradeLimitDataMessage>{}, hierarchy);
    EXPECT_GT(worst, 32.9);
    RecordProperty("worst", std::to_string(worst));
    // The smallest elements of every other vector of a message, as many as fit 64 KB.
    forEveryMessage([&]<class T>(of<T>, const char*) {
        fields(of<T>{}, [&](const char*, auto member, auto) {
            using M = Velmora::MemberType<decltype(member)>;
            if constexpr (Velmora::Vector<M>) {
                const size_t count = 32767, element = minimal_size<typename M::value_type>();
                std::string body;
                fields(of<T>{}, [&](const char*, auto other, auto) {
                    if constexpr (std::is_same_v<decltype(other), decltype(member)>) {
                        if (other == member) return body += unhex("ffff") + std::string(count * element, '\0'), true;
                    }
                    return body += std::string(minimal_size<Velmora::MemberType<decltype(other)>>(), '\0'), true;
                });
                measure(of<T>{}, body);
            }
            return true;
        });
    });
}

} // namespace
