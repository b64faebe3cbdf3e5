// The C++ of the documents, compiled and run as printed.
#include <iostream>
#include <sstream>

#include <gtest/gtest.h>

#include "Inspect/Checked.h"
#include "generated/QLProtocol/QLProtocol.h"

namespace {

TEST(DocExamples, ReadmeWritesAndPrintsAnOrder) {
    std::ostringstream out;
    std::streambuf* const before = std::cout.rdbuf(out.rdbuf());
    {
#include "README.inc"
        EXPECT_GT(codec.size(), 0u);
    }
    std::cout.rdbuf(before);
    EXPECT_TRUE(out.str().starts_with("<SubmitOrderMessage userID=0 quoteID=\"\" ")) << out.str();
    EXPECT_NE(out.str().find("clOrdID=\"EURUSD-0001\""), std::string::npos) << out.str();
    Quillon::finalize();
}

template <class Handle, class Drop>
void receive(Velmora::MsgType_t id, std::string_view bytes, Handle handle, Drop drop) {
    char block[4096];
    const int blockSize = sizeof(block);
#include "trust.inc"
}

TEST(DocExamples, TrustTakesWhatIsSoundAndDropsTheRest) {
    Quillon::initialize();
    int handled = 0;
    std::string dropped;
    const auto handle = [&](Velmora::MsgType_t, void*) { ++handled; };
    const auto drop = [&](const std::string& reason) { dropped += reason; };
    receive(Quillon::TimerMessage::ID, "\x0E", handle, drop);
    EXPECT_EQ(handled, 1);
    EXPECT_EQ(dropped, "");
    receive(Quillon::TimerMessage::ID, "", handle, drop);
    EXPECT_EQ(handled, 1);
    EXPECT_EQ(dropped, "truncated at byte 0 (tqid)");
    Quillon::finalize();
}

} // namespace
