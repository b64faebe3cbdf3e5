// Value semantics of every record and message: construction, assignment across blocks, comparison, destruction.
#include <gtest/gtest.h>

#include <functional>

#include "tests/Samples.h"

namespace {

using Velmora::of;

class Value : public Module {};

/// What destruction must give back: the capacity of every string and vector, elements included.
template <class T>
size_t capacityBytes(const T& v) {
    size_t bytes = 0;
    if constexpr (Velmora::String<T> || Velmora::Vector<T>) {
        bytes = v.capacity() * sizeof(typename T::value_type);
        for (const auto& element : v) bytes += capacityBytes(element);
    } else if constexpr (Velmora::Composite<T>) {
        fields(of<T>{}, [&](const char*, auto member, auto) { return bytes += capacityBytes(v.*member), true; });
    }
    return bytes;
}

/// Whether all storage of the value lies in the block.
template <class T>
bool inBlock(Block& block, const T& v) {
    bool inside = block.contains(&v);
    if constexpr (Velmora::String<T> || Velmora::Vector<T>) {
        inside = inside && (v.data() == nullptr || block.contains(v.data()));
        if constexpr (!std::is_arithmetic_v<typename T::value_type>)
            for (const auto& element : v) inside = inside && inBlock(block, element);
    } else if constexpr (Velmora::Composite<T>) {
        fields(of<T>{}, [&](const char*, auto member, auto) { return inside = inside && inBlock(block, v.*member); });
    }
    return inside;
}

TEST_F(Value, ShapeFollowsFromTheFields) {
    forEveryType([]<class T>(of<T>, const char*) {
        constexpr bool plain = !Velmora::holdsStorage<T>();
        static_assert(std::is_constructible_v<T, Velmora::BufferAllocator&>);
        static_assert(std::is_copy_assignable_v<T>);
        static_assert(std::is_default_constructible_v<T> == plain);
        static_assert(std::is_copy_constructible_v<T> == plain);
        static_assert(std::is_trivially_copyable_v<T> == plain);
    });
    const Quillon::FeedMarketID id(1, 2);
    EXPECT_TRUE(id.marketID == 1 && id.feedID == 2);
    Quillon::DateRollover rollover(id, 3, 4);
    EXPECT_TRUE(rollover.fmID == id && rollover.tradeDate == 3 && rollover.settleDate == 4);
    rollover.set(Quillon::FeedMarketID(), 5, 6);
    EXPECT_TRUE(rollover == Quillon::DateRollover(Quillon::FeedMarketID(), 5, 6));
    Quillon::Subscription subscription(Quillon::APIType::DROPCOPY, 1, 2);
    EXPECT_TRUE(subscription.apiType == 2 && subscription.feedID == 1 && subscription.marketID == 2);
    EXPECT_EQ(Quillon::MemBusID(1, 2).generation, 2);
    EXPECT_EQ(Quillon::UserSequenceID(1, 2).sequenceID, 2);
    EXPECT_EQ(Quillon::ReplayDone(1, Quillon::ReplayStatus::REJECTED).replayStatus, 2);
}

TEST_F(Value, FieldsAreListedAsTheyAreDeclared) { // in which order they are built, and in reverse destroyed
    forEveryType([]<class T>(of<T>, const char*) {
        InBlock<T> value;
        const void* previous = nullptr;
        fields(of<T>{}, [&](const char* name, auto member, auto) {
            const void* const address = &((*value).*member);
            EXPECT_LT(previous, address) << name;
            return previous = address, true;
        });
    });
}

TEST_F(Value, FreshValuesAreZeroAndTakeNoStorage) {
    forEveryType([]<class T>(of<T>, const char*) {
        Block block(sizeof(T));
        std::memset(block.begin(), 0xA5, sizeof(T));
        T* value = new (block.alloc.allocate(sizeof(T))) T(block.alloc);
        Sample(Filling::zero).check(*value);
        value->~T();
        EXPECT_EQ(block.alloc.deallocated_size(), 0);
        EXPECT_EQ(block.alloc.unused_size(), 0u);
    });
}

TEST_F(Value, AssignmentAcrossBlocksSharesNothing) {
    forEveryType([]<class T>(of<T>, const char*) {
        for (const Filling filling : fillings) {
            for (unsigned seed = 1; seed <= 3; ++seed) {
                InBlock<T> source(1 << 17, 1), target(1 << 19, 3);
                Sample(Filling::typical, 9).fill(*target);
                Sample sample(filling, seed);
                sample.fill(*source);
                *target = *source;
                sample.check(*target);
                EXPECT_TRUE(inBlock(target.block, *target));
                EXPECT_FALSE(*source != *target);
                std::memset(static_cast<void*>(source.block.begin() + sizeof(T)), 0xA5,
                            source.block.alloc.used_size() - sizeof(T)); // what the source's strings hold
                sample.check(*target);
                new (&*source) T(source.block.alloc);
            }
        }
    });
}

TEST_F(Value, DestructionCountsTheWholeCapacity) {
    forEveryType([]<class T>(of<T>, const char*) {
        Block block(1 << 18);
        T* value = new (block.alloc.allocate(sizeof(T))) T(block.alloc);
        Sample(Filling::typical).fill(*value);
        const int before = block.alloc.deallocated_size();
        const size_t capacity = capacityBytes(*value);
        EXPECT_EQ(capacity != 0, Velmora::holdsStorage<T>());
        value->~T();
        EXPECT_EQ(block.alloc.deallocated_size() - before, static_cast<int>(capacity));
    });
}

/// Calls `visit` for every field of `a` and `b` that is not a record itself, in order; stops when it returns false.
template <class T, class Visit>
bool leaves(T& a, T& b, Visit&& visit) {
    return fields(of<T>{}, [&](const char* name, auto member, auto) {
        using Member = Velmora::MemberType<decltype(member)>;
        if constexpr (Velmora::Composite<Member>)
            return leaves(a.*member, b.*member, visit);
        else
            return static_cast<bool>(visit(name, a.*member, b.*member));
    });
}

/// Makes a field larger in the order of its type.
template <class T>
void enlarge(T& v) {
    if constexpr (Velmora::String<T>)
        v += "!";
    else if constexpr (Velmora::Vector<T>)
        v.resize(v.size() + 1);
    else if constexpr (std::is_same_v<T, bool>)
        v = true;
    else
        v = static_cast<T>(v + 1);
}

TEST_F(Value, EveryFieldDecidesComparisonInItsTurn) {
    forEveryType([]<class T>(of<T>, const char*) {
        // Field by field: `b` is `a` with that field enlarged and, to see that later fields have no say, the next one
        // is enlarged in `a`.
        size_t count = 0;
        {
            InBlock<T> a, b;
            leaves(*a, *b, [&](const char*, auto&, auto&) { return ++count, true; });
            EXPECT_TRUE(*a == *b && !(*a != *b) && !(*a < *b));
        }
        for (size_t decisive = 0; decisive < count; ++decisive) {
            InBlock<T> a, b;
            std::string decisiveName;
            size_t index = 0;
            leaves(*a, *b, [&](const char* name, auto& x, auto& y) {
                if (index == decisive) enlarge(y), decisiveName = name;
                if (index == decisive + 1) enlarge(x);
                return ++index, true;
            });
            SCOPED_TRACE(decisiveName);
            EXPECT_TRUE(*a < *b);
            EXPECT_FALSE(*b < *a);
            EXPECT_TRUE(*a != *b);
            EXPECT_FALSE(*a == *b);
        }
    });
}

TEST_F(Value, ComparisonOfNumbersIsSignedAndOfBooleansFalseFirst) {
    InBlock<Quillon::MDEntry> a, b;
    const auto expectLess = [&](const char* what) {
        EXPECT_TRUE(*a < *b) << what;
        EXPECT_FALSE(*b < *a) << what;
        EXPECT_TRUE(*a != *b) << what;
        *a = *b;
        EXPECT_TRUE(*a == *b) << what;
    };
    a->price = -1;
    expectLess("int64");
    a->side = static_cast<Quillon::Side::Type>(-1);
    expectLess("enumeration");
    a->source = -1;
    expectLess("int8");
    a->numberOfOrders = -1;
    expectLess("int16");
    b->components = "";
    expectLess("never stored before stored empty");
    Quillon::DateRolloverMessage no, yes;
    yes.dispatchToAll = true;
    EXPECT_TRUE(no < yes && !(yes < no));
}

TEST_F(Value, RecordVectorsCompareByTheFirstDifferingElement) {
    InBlock<Quillon::TradeHierarchy> a, b;
    for (const char* name : {"x", "y"}) a->groupNames.add_back() = name;
    for (const char* name : {"y", "x"}) b->groupNames.add_back() = name;
    EXPECT_TRUE(*a < *b && !(*b < *a) && *a != *b);
    b->groupNames.resize(0);
    EXPECT_TRUE(*b < *a && !(*a < *b)) << "a proper prefix first";

    InBlock<Quillon::MktDataMessage> x, y;
    x->fmIDsInBatch.push_back(Quillon::FeedMarketID(1, -5));
    y->fmIDsInBatch.push_back(Quillon::FeedMarketID(1, 5));
    EXPECT_TRUE(*x < *y && !(*y < *x) && *x != *y);
    y->fmIDsInBatch[0].feedID = -5;
    EXPECT_TRUE(*x == *y);
}

TEST_F(Value, ComparisonWithItselfReadsNoField) {
    forEveryType([]<class T>(of<T>, const char*) {
        // A value whose strings and vectors hold something, nowhere: reading them would crash.
        alignas(T) unsigned char bytes[sizeof(T)];
        for (size_t i = 0; i < sizeof bytes; ++i) bytes[i] = static_cast<unsigned char>(0x80 | i);
        const T& value = *reinterpret_cast<const T*>(bytes);
        const T& same = *std::launder(reinterpret_cast<const T*>(bytes));
        EXPECT_TRUE(value == same);
        EXPECT_FALSE(value != same);
        EXPECT_FALSE(value < same);
    });
}

} // namespace
