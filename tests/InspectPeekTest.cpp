// Single fields out of bodies, held against the walk over all values, which is held against read().
#include "Inspect/Peek.h"

#include <gtest/gtest.h>

#include "Inspect/BodyWalk.h"
#include "Inspect/Selection.h"
#include "tests/Bodies.h"

namespace {

using namespace Inspect;
using namespace Quillon;
using Velmora::of;

struct Seen {
    Kind kind;
    int64_t number;
    std::string text;
    bool isSecret;
    auto operator<=>(const Seen&) const = default;
};

struct Walked {
    std::string path;
    size_t begin, end;
    Seen seen;
};

std::vector<Walked> walked(const TypeInfo& type, std::string_view body) {
    std::vector<Walked> values;
    walk_body(type, body, [&](const BodyValue& it) {
        const bool isText = is_bytes(it.value.kind);
        values.push_back({std::string(it.path),
                          it.begin,
                          it.end,
                          {it.value.kind, isText ? 0 : it.number, isText ? it.text() : "", it.isSecret}});
        return true;
    });
    return values;
}

std::vector<Seen> read(const Selection& selection, std::string_view body) {
    std::vector<Seen> values;
    selection.read(body, [&](const Value& it) {
        values.push_back({it.kind, it.number, std::string(it.text), it.isSecret});
        return true;
    });
    return values;
}

Selection everything(const TypeInfo& type) {
    return Selection(type, [](Path, const ValueInfo&) { return true; });
}

class Peek : public Module {};

TEST_F(Peek, AllValuesOfABodyAndEachByItsPathAreThoseOfTheWalk) {
    forEveryMessage([]<class T>(of<T>, const char*) {
        const TypeInfo& type = *reflect(T::ID);
        for (const Filling filling : fillings) {
            Guarded guarded;
            const std::string_view body = guarded.hold(sampleBody<T>(filling).bytes);
            const std::vector<Seen> all = read(everything(type), body);
            const std::vector<Walked> expected = walked(type, body);
            ASSERT_EQ(all.size(), expected.size());
            const auto isChosen = [](std::string_view name) { return name.size() % 3 == 0; };
            const Selection some(type, [&](Path path, const ValueInfo&) {
                return isChosen(
                    std::find_if(path.rbegin(), path.rend(), [](auto& it) { return !it.name.empty(); })->name);
            });
            std::vector<Seen> expectedSome;
            for (const Walked& it : expected) {
                const std::string name = it.path.substr(it.path.rfind('.') + 1);
                if (isChosen(name.substr(0, name.find('[')))) expectedSome.push_back(it.seen);
            }
            EXPECT_EQ(read(some, body), expectedSome);
            for (size_t i = 0; i < all.size(); ++i) {
                EXPECT_EQ(all[i], expected[i].seen) << expected[i].path;
                if (i % (1 + all.size() / 200) == 0) {
                    EXPECT_EQ(read(Selection::at(type, expected[i].path), body), std::vector{expected[i].seen})
                        << expected[i].path;
                }
            }
        }
    });
}

TEST_F(Peek, OfACutBodyGivesWhatLiesBeforeTheCut) {
    forEveryMessage([]<class T>(of<T>, const char*) {
        const TypeInfo& type = *reflect(T::ID);
        const Body sample = sampleBody<T>(Filling::typical);
        const std::string& whole = sample.bytes;
        const std::vector<Walked> values = walked(type, whole);
        Guarded guarded;
        for (size_t i = 0; i < values.size(); ++i) {
            const Walked& value = values[i];
            const Selection selection = Selection::at(type, value.path);
            // A vector is refused at its count if the body cannot hold its elements.
            const size_t needed = value.end + sample.spans[i].count * sample.spans[i].minimal;
            const bool isInVector = value.path.find('[') != std::string::npos;
            for (size_t size = 0; size <= whole.size(); ++size) {
                const std::vector<Seen> seen = read(selection, guarded.hold(whole.substr(0, size)));
                if (size < needed) {
                    ASSERT_TRUE(seen.empty()) << value.path << " of " << size;
                } else if (!isInVector || size == whole.size()) {
                    ASSERT_EQ(seen, std::vector{value.seen}) << value.path << " of " << size;
                }
            }
        }
    });
}

TEST_F(Peek, OfEveryFormThatReadTakesGivesWhatReadMakesOfIt) {
    forEveryMessage([]<class T>(of<T>, const char*) {
        const TypeInfo& type = *reflect(T::ID);
        const Selection selection = everything(type);
        std::string body = sampleBody<T>(Filling::typical).bytes;
        for (size_t i = 0; i < std::min<size_t>(body.size(), 400); ++i)
            for (const int change : {0x80, 0x01, 0xFF}) {
                const std::string hostile =
                    body.substr(0, i) + static_cast<char>(body[i] ^ change) + body.substr(i + 1);
                if (!verify<T>(hostile.data(), hostile.data() + hostile.size(), tolerant)) continue;
                const std::vector<Seen> seen = read(selection, hostile);
                const std::vector<Walked> expected = walked(type, hostile);
                ASSERT_EQ(seen.size(), expected.size()) << i;
                for (size_t k = 0; k < seen.size(); ++k) ASSERT_EQ(seen[k], expected[k].seen) << expected[k].path;
            }
    });
}

TEST_F(Peek, StepsOverNumbersOfAnyLength) {
    const TypeInfo& type = *reflect(SubmitOrderMessage::ID);
    const Body body = sampleBody<SubmitOrderMessage>(Filling::typical);
    for (const Span& span : body.spans) {
        if (span.path != "contents.timeApiClient" && span.path != "contents.feedID" && span.path != "userID") continue;
        for (const size_t more : {1u, 7u, 40u}) {
            std::string longer = body.bytes;
            longer[span.end - 1] = static_cast<char>(longer[span.end - 1] | 0x80);
            longer.insert(span.end, std::string(more - 1, '\x80') + '\0');
            EXPECT_EQ(read(everything(type), longer).back(), read(everything(type), body.bytes).back());
            EXPECT_EQ((peek<&SubmitOrderMessage::contents, &SubmitOrder::marketID>(longer)),
                      (peek<&SubmitOrderMessage::contents, &SubmitOrder::marketID>(body.bytes)));
        }
    }
}

TEST_F(Peek, DropsBitsOfATextsLengthAsReadDoes) {
    Body body = sampleBody<SubmitOrderMessage>(Filling::typical);
    const auto text =
        std::find_if(body.spans.begin(), body.spans.end(), [](auto& it) { return it.path == "contents.clOrdID"; });
    std::string longer = body.bytes;
    longer[text->begin] = static_cast<char>(longer[text->begin] | 0x80);
    longer.insert(text->begin + 1, "\x80\x04"); // and 65,536 more
    ASSERT_TRUE(verify<SubmitOrderMessage>(longer.data(), longer.data() + longer.size(), whole));
    EXPECT_EQ(read(everything(*reflect(SubmitOrderMessage::ID)), longer),
              read(everything(*reflect(SubmitOrderMessage::ID)), body.bytes));
}

TEST_F(Peek, StopsWhereTheVisitorEndsItAndRefusesPathsThatLeadNowhere) {
    const TypeInfo& order = *reflect(SubmitOrderMessage::ID);
    const std::string body = sampleBody<SubmitOrderMessage>(Filling::typical).bytes;
    EXPECT_EQ(everything(order).read(body, [](const Value&) { return false; }), Selection::Outcome::stopped);
    EXPECT_EQ(everything(order).read(body, [](const Value&) { return true; }), Selection::Outcome::complete);
    EXPECT_EQ(Selection::at(order, "contents.parameters[32000].key").read(body, [](const Value&) { return true; }),
              Selection::Outcome::missing);
    const std::string data = sampleBody<MktDataMessage>(Filling::typical).bytes;
    const auto entries =
        static_cast<size_t>(read(Selection::at(*reflect(MktDataMessage::ID), "mvd.mdEntryList"), data).at(0).number);
    const std::string after = "mvd.mdEntryList[" + std::to_string(entries) + "].price";
    EXPECT_EQ(Selection::at(*reflect(MktDataMessage::ID), after).read(data, [](const Value&) { return true; }),
              Selection::Outcome::missing);
    EXPECT_TRUE(Selection(order, [](Path, const ValueInfo&) { return false; }).isEmpty());
    for (const char* path : {"", ".", "contents", "contents.", "contents.marketI", "contents.marketID.x",
                             "contents.marketID[0]", "contents.parameters[0]", "contents.parameters[x].key",
                             "contents.parameters[].key", "contents.parameters[0]xkey", "contents.parameters[0}.key",
                             "contents.parameters.key", "contents.parameters[-1].key"})
        EXPECT_THROW(Selection::at(order, path), std::invalid_argument) << path;
}

/// What peek() gives for a path known to the compiler, of the whole body and of every part of it.
template <auto... Path, class... Index>
void expectPeeked(const std::string& body, const auto& expected, size_t end, Index... index) {
    Guarded guarded;
    for (size_t size = 0; size <= body.size(); ++size) {
        const auto peeked = peek<Path...>(guarded.hold(std::string_view(body).substr(0, size)), index...);
        if (size == body.size() || (size >= end && sizeof...(Index) == 0)) {
            ASSERT_TRUE(peeked && *peeked == expected) << size;
        } else if (size < end) {
            ASSERT_FALSE(peeked) << size;
        }
    }
}

TEST_F(Peek, ByMembersGivesTheMembersValue) {
    const auto endOf = [](const Body& body, const std::string& path) {
        for (const Span& span : body.spans)
            if (span.path == path) return span.end;
        ADD_FAILURE() << path;
        return size_t{};
    };
    const auto textOf = [](const bufstl::bufstring& text) { return std::string_view(text.c_str(), text.size()); };
    for (const Filling filling : {Filling::zero, Filling::typical, Filling::extreme}) {
        InBlock<SubmitOrderMessage> message(1 << 18);
        Sample(filling).fill(*message);
        const SubmitOrder& order = message->contents;
        const Body body(*message);
        constexpr auto contents = &SubmitOrderMessage::contents;
        expectPeeked<&SubmitOrderMessage::userID>(body.bytes, message->userID, endOf(body, "userID"));
        expectPeeked<contents, &SubmitOrder::marketID>(body.bytes, order.marketID, endOf(body, "contents.marketID"));
        expectPeeked<contents, &SubmitOrder::side>(body.bytes, order.side, endOf(body, "contents.side"));
        expectPeeked<contents, &SubmitOrder::price>(body.bytes, order.price, endOf(body, "contents.price"));
        expectPeeked<contents, &SubmitOrder::clOrdID>(body.bytes, textOf(order.clOrdID),
                                                      endOf(body, "contents.clOrdID"));
        if (order.parameters.size() < 2) continue;
        EXPECT_EQ((peek<contents, &SubmitOrder::parameters>(body.bytes)), order.parameters.size());
        expectPeeked<contents, &SubmitOrder::parameters, &KeyValuePair::value>(
            body.bytes, textOf(order.parameters[1].value), endOf(body, "contents.parameters[1].value"), 1);
        EXPECT_FALSE(
            (peek<contents, &SubmitOrder::parameters, &KeyValuePair::value>(body.bytes, order.parameters.size())));
    }
}

} // namespace
