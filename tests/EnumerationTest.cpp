#include <gtest/gtest.h>

#include <climits>
#include <iomanip>
#include <sstream>

#include "generated/QLProtocol/QLProtocol.fields.h"
#include "generated/QLProtocol/QLProtocol.h"
#include "tests/Block.h"
#include "tests/Samples.h"

namespace {

using namespace Quillon;
using Velmora::of;

class Enumeration : public Module {};

TEST_F(Enumeration, TablesSayWhatTheEnumeratorsSay) {
    enumerations([&]<class H>(of<H>, const char* name) {
        SCOPED_TRACE(name);
        EXPECT_STREQ(H::Name, name);
        EXPECT_TRUE(H::_initialized);
        EXPECT_EQ(std::size(H::_names), H::_maxValue + 1u);
        EXPECT_EQ(std::size(H::_toIndex), H::_maxValue + 1u);
        EXPECT_EQ(std::size(H::_fromIndex), H::_nbValues);
        unsigned char ordinal = 0;
        unsigned int largest = 0;
        enumerators(of<H>{}, [&](const char* enumerator, typename H::Type value) {
            EXPECT_EQ(H::fromString(enumerator), value) << enumerator;
            EXPECT_EQ(H::toIndex(value), ordinal) << enumerator;
            EXPECT_EQ(H::fromIndex(ordinal), value) << enumerator;
            largest = std::max(largest, static_cast<unsigned int>(value));
            ++ordinal;
            if (value > 255) return; // cannot be asked for by byte
            const auto byte = static_cast<unsigned char>(value);
            EXPECT_TRUE(H::isValid(byte));
            EXPECT_STREQ(H::toString(byte), enumerator);
            EXPECT_EQ(H::fromValue(byte), value);
            EXPECT_EQ(printed(value), enumerator);
        });
        EXPECT_EQ(ordinal, H::_nbValues);
        EXPECT_EQ(largest, H::_maxValue);
        int valid = 0;
        for (int byte = 0; byte < 256; ++byte) valid += H::isValid(static_cast<unsigned char>(byte));
        EXPECT_EQ(valid, H::_maxValue > 255 ? 0 : static_cast<int>(H::_nbValues));
        H::finalize();
        H::initialize();
        EXPECT_TRUE(H::_initialized);
        return true;
    });
}

TEST_F(Enumeration, SizesAndOddOrdersAreKept) {
    EXPECT_EQ(std::size(RejectReason::_names), 255u);
    EXPECT_EQ(RejectReason::_nbValues, 28u);
    EXPECT_EQ(std::size(Request::_names), 53328u);
    EXPECT_EQ(MatchStatus::toIndex(MatchStatus::PENDING), 0);
    EXPECT_EQ(MatchStatus::fromIndex(1), MatchStatus::DONE);
    EXPECT_EQ(MatchStatus::DONE, 0);
    EXPECT_FALSE(TimeInForce::isValid(2));
    EXPECT_EQ(APIResult::fromString("OK"), 0);
    EXPECT_STREQ(QuoteStatus::toString(254), "NOT_APPLICABLE");
    EXPECT_EQ(StandardTenor::M15, 22);
}

TEST_F(Enumeration, ByteWithoutANameHasNone) {
    for (const int byte : {0, 5, 6, 200, 255}) {
        const auto value = static_cast<unsigned char>(byte);
        EXPECT_FALSE(Side::isValid(value));
        EXPECT_EQ(Side::toString(value), nullptr);
        EXPECT_EQ(Side::toIndex(static_cast<Side::Type>(byte)), 0);
        EXPECT_EQ(printed(static_cast<Side::Type>(byte)), "");
        std::ostringstream os;
        os << static_cast<Side::Type>(byte);
        EXPECT_TRUE(os.bad());
        EXPECT_EQ(os.str(), "");
    }
    for (const int value : {-1, INT_MIN, INT_MAX}) EXPECT_EQ(Side::toIndex(static_cast<Side::Type>(value)), 0);
}

TEST_F(Enumeration, NamesAreNeverPadded) {
    std::ostringstream os;
    os << Side::OFR << ' ' << std::setfill('*') << std::setw(20) << std::left << LogLevel::LOGDEBUG;
    EXPECT_EQ(os.width(), 0) << "nor does the width wait for what comes next";
    os << std::setw(3) << std::right << Side::BOTH << 1;
    EXPECT_EQ(os.str(), "OFR LOGDEBUGBOTH1");
}

TEST_F(Enumeration, FailedConversionsThrowTheExactTexts) {
    const auto fromValue = [](unsigned char v) {
        return thrownText<std::invalid_argument>([=] { Side::fromValue(v); });
    };
    EXPECT_EQ(fromValue(0x41), "Invalid value for Side: A") << "as a character, not as digits";
    EXPECT_EQ(fromValue(0), "Invalid value for Side: ");
    EXPECT_EQ(fromValue(0xFF), "Invalid value for Side: \xFF");
    const auto fromString = [](const char* s) {
        return thrownText<std::invalid_argument>([=] { Side::fromString(s); });
    };
    EXPECT_EQ(fromString(nullptr), "Empty string for converting to enum Side.");
    EXPECT_EQ(fromString("both"), "Invalid string 'both' for converting to enum Side.");
    EXPECT_EQ(fromString("BOTHER"), "Invalid string 'BOTHER' for converting to enum Side.");
    EXPECT_EQ(fromString(""), "Invalid string '' for converting to enum Side.");
    EXPECT_EQ(thrownText<std::invalid_argument>([] { LogLevel::fromString("X"); }),
              "Invalid string 'X' for converting to enum LogLevel.");
}

TEST_F(Enumeration, RequestCannotBeAskedForByByte) {
    for (int byte = 0; byte < 256; ++byte) {
        EXPECT_FALSE(Request::isValid(static_cast<unsigned char>(byte)));
        EXPECT_THROW(Request::fromValue(static_cast<unsigned char>(byte)), std::invalid_argument);
    }
    EXPECT_EQ(Request::fromString("SECURITYINFO"), 53327);
    EXPECT_EQ(Request::toIndex(Request::SECURITYINFO), 0);
    EXPECT_EQ(Request::fromIndex(0), Request::SECURITYINFO);
    EXPECT_EQ(printed(Request::SECURITYINFO), "");
    std::ostringstream os;
    os << Request::SECURITYINFO;
    EXPECT_TRUE(os.bad());
}

TEST_F(Enumeration, ValidationHookAcceptsEverything) {
    validateEnum("side", false);
    bool reached = false;
    const auto valid = [&] { return reached = true, false; }();
    VALIDATE_ENUM("side", valid)
    EXPECT_TRUE(reached);
}

using EnumerationDeathTest = Enumeration;

TEST_F(EnumerationDeathTest, UseBeforeInitialisationIsReported) {
    const auto uninitialised = [](auto use) {
        Side::_initialized = false;
        use();
    };
    const char* const report = "generated/QLProtocol/QLProtocol.*Side::.*Assertion `_initialized' failed";
    EXPECT_DEATH(uninitialised([] { Side::isValid(1); }), report);
    EXPECT_DEATH(uninitialised([] { Side::toString(1); }), report);
    EXPECT_DEATH(uninitialised([] { Side::fromString("BID"); }), report);
    EXPECT_DEATH(uninitialised([] { Side::fromValue(1); }), report);
}

} // namespace
