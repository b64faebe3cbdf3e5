// checkbounds of every record and message: what it examines, what it deliberately does not, and how it reports.
#include <gtest/gtest.h>

#include "tests/Samples.h"

namespace {

using Velmora::of;

class Bounds : public Module {};
using BoundsDeathTest = Bounds;

TEST_F(Bounds, ValuesInsideTheirBlockPass) {
    forEveryType([]<class T>(of<T>, const char*) {
        for (const Filling filling : fillings) {
            InBlock<T> value(1 << 17, 5);
            Sample(filling).fill(*value);
            value->checkbounds(value.block.begin(), value.block.end());
        }
    });
}

TEST_F(BoundsDeathTest, TheObjectItselfMustStartInsideStrictly) {
    InBlock<Quillon::TradeLimitData> value;
    const char* p = reinterpret_cast<const char*>(&*value);
    value->checkbounds(p, p + 1);
    const char* const report =
        "generated/QLProtocol/QLProtocol\\.cpp:[0-9]+: void Quillon::TradeLimitData::checkbounds\\(const void ?\\*, "
        "const void ?\\*\\) const: Assertion `begin <= this && this < end' failed";
    EXPECT_DEATH(value->checkbounds(p - 1, p), report) << "an address equal to the end";
    EXPECT_DEATH(value->checkbounds(p + 1, p + 100), report);
    forEveryType([]<class T>(of<T>, const char* name) {
        InBlock<T> any;
        EXPECT_DEATH(any->checkbounds(&*any + 1, &*any + 2),
                     std::string("Quillon::") + name + "::checkbounds.*begin <= this");
    });
}

TEST_F(BoundsDeathTest, EveryStringAndVectorIsExamined) {
    // Storage from another block, in each container in turn: the value itself lies inside, so only that one can fail.
    forEveryType([]<class T>(of<T>, const char*) {
        fields(of<T>{}, [&](const char* name, auto member, auto) {
            using Member = Velmora::MemberType<decltype(member)>;
            if constexpr (Velmora::holdsStorage<Member>()) {
                SCOPED_TRACE(name);
                InBlock<T> value;
                Block elsewhere(1 << 17);
                Member* moved = new (&((*value).*member)) Member(elsewhere.alloc);
                Sample(Filling::extreme, 3).fill(*moved);
                if (elsewhere.alloc.used_size() != 0) {
                    EXPECT_DEATH(value->checkbounds(value.block.begin(), value.block.end()), "begin_ == 0");
                }
                moved->~Member();
                new (moved) Member(value.block.alloc);
            }
            return true;
        });
    });
}

TEST_F(BoundsDeathTest, MembersAndElementsAreExaminedInOrder) {
    // All that is broken would be reported; the report tells what came first.
    Block elsewhere(1 << 12);
    InBlock<Quillon::TradeLimitData> data;
    const auto expectFirst = [&](const char* type) {
        EXPECT_DEATH(data->checkbounds(data.block.begin(), data.block.end()), std::string("T = ") + type + "\\]");
    };
    const auto breakVector = [&](auto& vector) {
        using Vector = std::remove_reference_t<decltype(vector)>;
        (new (&vector) Vector(elsewhere.alloc))->add_back();
    };
    breakVector(data->marketRates);
    expectFirst("Quillon::MarketRate");
    data->userHierarchy.add_back();
    breakVector(data->userHierarchy.add_back().groupNames);
    expectFirst("bufstl::basic_bufstring<char>");
    new (&data->userHierarchy[0].userName) bufstl::bufstring(elsewhere.alloc);
    data->userHierarchy[0].userName = "in front of the second's vector";
    expectFirst("char");
    breakVector(data->groupStates);
    expectFirst("Quillon::TradeState");
    breakVector(data->groupLimits);
    expectFirst("Quillon::TradeLimit");
    new (&data->clDataID) bufstl::bufstring(elsewhere.alloc);
    data->clDataID = "id";
    expectFirst("char");
    EXPECT_DEATH(data->checkbounds(&*data + 1, data.block.end()), "begin <= this") << "before any member";
}

TEST_F(Bounds, NestedPlainRecordsAreNeverExamined) {
    InBlock<Quillon::EventReport> report;
    report->checkbounds(&*report, reinterpret_cast<char*>(&report->fmID)); // the record would reach beyond the end
}

#ifndef __clang__ // which words functions otherwise
TEST_F(BoundsDeathTest, ReportsNameTheContainersFunction) {
    InBlock<Quillon::TradeLimitData> data;
    data->clDataID = "id";
    const char* p = reinterpret_cast<const char*>(&*data);
    EXPECT_DEATH(data->checkbounds(p, p + 1),
                 "Backend/Velmora/bufstl/bufvector\\.h:[0-9]+: void "
                 "bufstl::bufvector<T>::checkbounds\\(const void\\*, const void\\*\\) const "
                 "\\[with T = char\\]: Assertion `begin_ == 0");
    data->clDataID.~basic_bufstring();
    new (&data->clDataID) bufstl::bufstring(data.block.alloc);
    data->groupLimits.add_back();
    EXPECT_DEATH(data->checkbounds(p, p + 1),
                 "Backend/Velmora/bufstl/bufvector\\.h:[0-9]+: void "
                 "bufstl::bufvectox<T>::checkbounds\\(const void\\*, const void\\*\\) const "
                 "\\[with T = Quillon::TradeLimit\\]: Assertion `begin_ == 0");
}
#endif

} // namespace
