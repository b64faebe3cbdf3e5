// Bodies of messages for tests: made from values, with a map of which bytes hold what, and decoded with all the checks
// that a body which was declared good must stand.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Inspect/Checked.h"
#include "Inspect/Sizes.h"
#include "Inspect/Verify.h"
#include "tests/Guarded.h"
#include "tests/KnownEnumerators.h"
#include "tests/OlderProcessor.h"
#include "tests/Samples.h"

/// One value in a body: all its bytes, or those of the count for a vector.
struct Span {
    std::string path;
    size_t begin;
    size_t end;
    size_t count = 0;               ///< elements of a vector
    size_t minimal = 0;             ///< fewest bytes of one of its elements
    std::set<int> enumerators = {}; ///< bytes that the enumerators of an enumeration travel as
};

/// The body of a value in the form that read() takes, and what its bytes hold.
class Body {
  public:
    template <class T>
    explicit Body(const T& value)
        : _range(Inspect::encoded_size(value) + 1, '\0'), // a PadMessage has three bytes of length here, not two
          _codec(_range.data(), _range.data() + _range.size()) {
        add(Velmora::plain, value, "");
        bytes.assign(_range, 0, _codec.size());
    }

    std::string bytes;
    std::vector<Span> spans;

  private:
    template <class Encoding, class T>
    void add(Encoding encoding, const T& v, const std::string& path) {
        if constexpr (Velmora::Composite<T>) {
            fields(Velmora::of<T>{}, [&](const char* name, auto member, auto fieldEncoding) {
                add(fieldEncoding, v.*member, path.empty() ? name : path + "." + name);
                return true;
            });
        } else if constexpr (Velmora::Vector<T>) {
            spans.push_back({path, _codec.size(), 0, v.size(), Inspect::minimal_size<typename T::value_type>()});
            _codec.write_length(static_cast<unsigned short>(v.size()));
            spans.back().end = _codec.size();
            for (size_t i = 0; i < v.size(); ++i) add(Velmora::plain, v[i], path + "[" + std::to_string(i) + "]");
        } else {
            spans.push_back({path, _codec.size(), 0});
            addLeaf(encoding, v);
            spans.back().end = _codec.size();
            if constexpr (Velmora::Enumerator<T>)
                enumerators(Velmora::of<Velmora::EnumerationOf<T>>{},
                            [&](const char*, auto e) { spans.back().enumerators.insert(e & 0xFF); });
        }
    }

    template <class Encoding, class T>
    void addLeaf(Encoding, const T& v) {
        if constexpr (std::is_same_v<Encoding, Velmora::crypt_t>)
            _codec.write_cryptstring(v);
        else if constexpr (Velmora::String<T>)
            _codec.write_string(v);
        else if constexpr (std::is_same_v<Encoding, Velmora::price_t>)
            _codec.write_qlfloat(v);
        else if constexpr (std::is_same_v<T, int64_t>)
            _codec.write_int64(v);
        else if constexpr (std::is_same_v<T, int32_t>)
            _codec.write_int32(v);
        else if constexpr (std::is_same_v<T, int16_t>)
            _codec.write_int16(v);
        else // booleans, single bytes, enumerations
            _codec.write_uint8(static_cast<unsigned char>(v));
    }

    std::string _range;
    Velmora::FastCodec _codec;
};

template <class T>
Body sampleBody(Filling filling, unsigned seed = 1) {
    InBlock<T> value(1 << 18);
    Sample(filling, seed).fill(*value);
    return Body(*value);
}

/// A T decoded from bytes that verify() accepted, in a block of exactly the size it told. Expects the bytes consumed
/// and the block bytes taken to be those told, and all that T owns to lie in the block.
template <class T>
class DecodedBody {
  public:
    DecodedBody(std::string_view body, const Inspect::Result& result)
        : _value(static_cast<int>(sizeof(T) + result.blockBytes)) {
        Velmora::FastCodec codec(const_cast<char*>(body.data()), const_cast<char*>(body.data() + body.size()));
        _value->read(codec);
        EXPECT_EQ(codec.size(), result.consumed);
        EXPECT_EQ(_value.block.alloc.used_size(), sizeof(T) + result.blockBytes);
        _value->checkbounds(_value.block.begin(), _value.block.end());
    }
    T& operator*() { return *_value; }

  private:
    InBlock<T> _value;
};

/// Expects the walk that checks as it decodes to do what verify() told under `tolerant`: by either kernel, in turn.
template <class T>
void expectCheckedAlike(std::string_view body, const Inspect::Result& told) {
    static unsigned calls = 0;
    std::optional<OlderProcessor> older;
    if (++calls % 2 == 0) older.emplace();
    static Guarded pages;
    if (calls % 8 < 4) body = pages.holdAtBegin(body); // else where the caller has it, mostly at an end
    const auto decode = Inspect::detail::entry_of<T>(&Inspect::Protocol::decoders).fresh;
    const size_t needed = sizeof(T) + (told ? told.blockBytes : 33 * body.size());
    const auto expectRefused = [&](size_t size, bool mayTrail) {
        Block block(static_cast<int>(size));
        EXPECT_EQ(decode(body, block.alloc, mayTrail).message, nullptr) << size << ' ' << mayTrail;
        EXPECT_EQ(block.alloc.used_size(), 0u);
    };
    const bool isWhole = told.consumed == body.size();
    if (!told || !isWhole) expectRefused(needed, !told && calls % 4 < 2);
    if (!told) return;
    expectRefused(needed - 1, true);
    Block block(static_cast<int>(needed), 1);
    const Inspect::detail::Placed placed = decode(body, block.alloc, !isWhole);
    ASSERT_NE(placed.message, nullptr);
    EXPECT_EQ(placed.consumed, told.consumed);
    EXPECT_EQ(block.alloc.unused_size(), 0u);
    T& message = *static_cast<T*>(placed.message);
    message.checkbounds(block.begin(), block.end());
    EXPECT_TRUE(message == *DecodedBody<T>(body, told));
    message.~T();
}

/// Encodes into ranges before a protected page, from too small to so large that one walk does.
template <class T>
void expectEncodedWithin(const T& value) {
    static Guarded pages(1 << 19);
    const std::string bytes = encoded(value);
    for (size_t room = bytes.size() - std::min<size_t>(bytes.size(), 250); room < bytes.size() + 1000; ++room) {
        std::optional<OlderProcessor> older;
        if (room % 2 == 0) older.emplace();
        char* const begin = pages.end() - room;
        begin[-1] = '\xAA';
        const Inspect::Encoded result = Inspect::encode_checked(value, begin, pages.end());
        ASSERT_EQ(result.refusal, room < bytes.size() ? Inspect::Refusal::tooSmall : Inspect::Refusal::none) << room;
        ASSERT_EQ(result.size, bytes.size()) << "written, or needed";
        ASSERT_EQ(begin[-1], '\xAA');
        ASSERT_TRUE(!result || std::string_view(begin, bytes.size()) == bytes) << room;
    }
}
