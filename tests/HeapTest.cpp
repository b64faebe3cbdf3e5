// Messages and what is done with them never touch the general heap.
#include <gtest/gtest.h>

#include <sstream>

#include "tests/CountedHeap.h"
#include "tests/Samples.h"

namespace {

using Velmora::of;

class Heap : public Module {};

TEST_F(Heap, IsNotTouchedByAnyOperationButForOneName) {
    static char body[1 << 18], text[1 << 20];
    for (const Filling filling : fillings) {
        forEveryType([&]<class T>(of<T>, const char*) {
            InBlock<T> value(1 << 18), copy(1 << 18), read(1 << 18);
            Sample(filling, 8).fill(*value);
            Quillon::FastOStream os(text, text + sizeof text);
            std::ostringstream standard;
            standard.str(std::string(1 << 20, ' ')); // room in advance, so that only our own taking would count
            Velmora::FastCodec codec(body, body + sizeof body);
            const long before = heap::taken;
            *copy = *value;
            const bool same = *copy == *value && !(*copy < *value);
            // PadMessage reads another form than it writes.
            value->write(codec);
            codec.reset();
            if constexpr (!std::is_same_v<T, Quillon::PadMessage>) read->read(codec);
            value->checkbounds(value.block.begin(), value.block.end());
            os << *value;
            standard << *value;
            // A byte without a name goes to the hook with its field's, as a string: one name is too long to stay in it.
            const bool isTooLong = std::is_same_v<T, Quillon::ConnectResponseMessage> && filling == Filling::extreme;
            EXPECT_EQ(heap::taken - before, isTooLong ? 2 : 0);
            EXPECT_TRUE(same);
        });
    }
}

} // namespace
