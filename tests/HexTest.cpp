// Hexadecimal text of people and programs.
#include <gtest/gtest.h>

#include "tools/qlproto/messages/Hex.h"

namespace {

using namespace qlproto;

TEST(Hex, ReadsWhatPeopleAndDumpsWrite) {
    const std::string expected("\x00\x7f\xab\xff", 4);
    for (const char* text : {"007fabff", "00 7F AB FF", "00:7f:ab:ff\n", "0x007fabff", "0x00 0x7f 0xab 0xFF",
                             "0X007FABFF", "\t00 7f\r\n  ab ff  "})
        EXPECT_EQ(bytesFromHex(text), expected) << text;
    EXPECT_EQ(bytesFromHex(""), "");
}

TEST(Hex, TellsWhereTextIsNoHex) {
    const struct {
        const char* text;
        size_t position;
    } cases[] = {{"0", 1}, {"00 7", 4}, {"00g0", 2}, {"0 0", 1}, {"0x", 2}, {"00-11", 2}, {"00 \x01", 3}, {"7x00", 1}};
    for (const auto& it : cases) {
        try {
            bytesFromHex(it.text);
            ADD_FAILURE() << it.text << " was taken";
        } catch (const HexError& error) {
            EXPECT_EQ(error.position(), it.position) << it.text << ": " << error.what();
        }
    }
}

TEST(Hex, WritesWhatItReads) {
    std::string all;
    for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
    EXPECT_EQ(bytesFromHex(hexFromBytes(all)), all);
    EXPECT_EQ(bytesFromHex(hexFromBytes(all, ":")), all);
    EXPECT_EQ(hexFromBytes("\x01\xfe", " "), "01 fe");
}

} // namespace
