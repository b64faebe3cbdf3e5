// The walk over bytes, held against values that the codec wrote and against what read() makes of hostile bytes.
#include "Inspect/BodyWalk.h"

#include <gtest/gtest.h>

#include "tests/Bodies.h"
#include "tests/Hex.h"

namespace {

using namespace Inspect;
using Velmora::of;

struct Walked {
    std::string path;
    size_t begin, end;
    int64_t number;
    std::string text;
};

std::vector<Walked> walked(const TypeInfo& type, std::string_view body, PadForm form = PadForm::read) {
    std::vector<Walked> values;
    EXPECT_TRUE(walk_body(
        type, body,
        [&](const BodyValue& value) {
            values.push_back({std::string(value.path), value.begin, value.end, value.number, value.text()});
            return true;
        },
        form));
    return values;
}

/// What a message holds, in the order of its values on the wire, as numbers and texts.
struct Held {
    std::vector<int64_t> numbers;
    std::vector<std::string> texts;

    template <class T>
    void add(const T& v) {
        if constexpr (Velmora::Composite<T>) {
            fields(of<T>{}, [&](const char*, auto member, auto) { return add(v.*member), true; });
        } else if constexpr (Velmora::Vector<T>) {
            push(static_cast<int64_t>(v.size()), "");
            for (size_t i = 0; i < v.size(); ++i) add(v[i]);
        } else if constexpr (Velmora::String<T>) {
            push(static_cast<int64_t>(v.size()), std::string(v.c_str(), v.size()));
        } else {
            push(static_cast<int64_t>(v), "");
        }
    }
    void push(int64_t number, const std::string& text) {
        numbers.push_back(number);
        texts.push_back(text);
    }
};

class BodyWalk : public Module {};

TEST_F(BodyWalk, YieldsEveryValueWithItsBytes) {
    forEveryMessage([&]<class T>(of<T>, const char*) {
        for (const Filling filling : fillings) {
            InBlock<T> message(1 << 18);
            Sample(filling, 3).fill(*message);
            const Body body(*message);
            Held held;
            held.add(*message);
            Guarded guarded;
            const std::vector<Walked> values = walked(*reflect(T::ID), guarded.hold(body.bytes));
            ASSERT_EQ(values.size(), body.spans.size());
            ASSERT_EQ(values.size(), held.numbers.size());
            for (size_t i = 0; i < values.size(); ++i) {
                EXPECT_EQ(values[i].path, body.spans[i].path);
                EXPECT_EQ(values[i].begin, body.spans[i].begin) << values[i].path;
                EXPECT_EQ(values[i].end, body.spans[i].end) << values[i].path;
                EXPECT_EQ(values[i].number, held.numbers[i]) << values[i].path;
                EXPECT_EQ(values[i].text, held.texts[i]) << values[i].path;
            }
        }
    });
}

TEST_F(BodyWalk, NeverLeavesABodyThatIsCut) {
    forEveryMessage([&]<class T>(of<T>, const char*) {
        const std::string whole = sampleBody<T>(Filling::typical, 4).bytes;
        Guarded guarded;
        for (size_t size = 0; size < whole.size(); ++size) {
            const std::string_view body = guarded.hold(whole.substr(0, size));
            for (const Walked& value : walked(*reflect(T::ID), body))
                if (value.end > size || value.begin > value.end) ADD_FAILURE() << value.path << " at " << size;
        }
    });
}

TEST_F(BodyWalk, TakesTheLibertiesOfTheDecoder) {
    using namespace Quillon;
    const struct {
        MsgType_t id;
        const char* bytes;
        size_t index;
        int64_t number;
    } cases[] = {
        {TimerMessage::ID, "8e00", 0, 7},         // int32, not minimal
        {TimerMessage::ID, "8e8080808000", 0, 7}, // overlong
        {TimerMessage::ID, "8e80808010", 0, 7},   // bits beyond the width
        {TimerMessage::ID, "8e8080808080808080808080808000", 0, 7},
        {StatTimeoutMessage::ID, "ff", 0, -1},
        {QuoteRequestMessage::ID, "000007", 2, 1},        // a boolean of 7
        {QuoteRequestMessage::ID, "000000868004", 3, 6},  // a length beyond 16 bits
        {QuoteRequestMessage::ID, "000000000001", 5, 0},  // prices: bit 0 means nothing but in a sentinel
        {QuoteRequestMessage::ID, "000000000002", 5, -1}, // bit 1 complements
        {QuoteRequestMessage::ID, "00000000008601", 5, -34},
        {QuoteRequestMessage::ID, "000000000005", 5, Velmora::NDA},
        {QuoteRequestMessage::ID, "000000000000c8", 6, 200}, // no enumerator
        {BatchesCompletedMessage::ID, "8002", 0, 2},         // a count in two bytes
    };
    for (const auto& it : cases)
        EXPECT_EQ(walked(*reflect(it.id), unhex(it.bytes)).at(it.index).number, it.number) << it.bytes;
}

TEST_F(BodyWalk, TellsThePadWrittenFromThePadRead) {
    const std::string body = unhex("0300616263");
    const TypeInfo& pad = *reflect(Quillon::PadMessage::ID);
    EXPECT_EQ(walked(pad, body)[0].text, std::string("\0ab", 3));
    EXPECT_EQ(walked(pad, body, PadForm::written)[0].text, "abc");
    EXPECT_EQ(walked(pad, body, PadForm::written)[0].end, 5u);
}

} // namespace
