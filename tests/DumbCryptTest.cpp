#include "Backend/Common/DumbCrypt.h"

#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "tests/Hex.h"

using Quillon::DumbCrypt;

namespace {

std::string encrypted(std::string text, unsigned int key = 0) {
    DumbCrypt::encrypt(text.data(), static_cast<int>(text.size()), key);
    return text;
}

std::string decrypted(std::string text, unsigned int key = 0) {
    DumbCrypt::decrypt(text.data(), static_cast<int>(text.size()), key);
    return text;
}

std::string allBytes(std::size_t length) {
    std::string text(length, '\0');
    for (std::size_t i = 0; i < length; ++i) text[i] = static_cast<char>(i * 7 + i / 256);
    return text;
}

// Peers depend on these bytes: the keystream must never change. Computed apart from this implementation.
TEST(DumbCrypt, KnownBytes) {
    const struct {
        unsigned int key;
        const char* text;
        const char* bytes;
    } cases[] = {
        {0, "s", "dc"},
        {0, "password", "dfacee88cec7d286"},
        {0, "correct horse battery", "cca2ef89dccbd4c29c8acbd28fbe9a8fbbb1ecf2e1"},
        {1, "password", "b1bdf1fa9bc2f8f5"},
        {0xffffffffu, "secret123", "b3e492ddc7cf80c187"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(hex(encrypted(c.text, c.key)), c.bytes) << c.text << " key " << c.key;
        EXPECT_EQ(decrypted(encrypted(c.text, c.key), c.key), c.text);
    }
}

TEST(DumbCrypt, PrefixesAndInverseAtEveryLength) {
    const std::string text = allBytes(300);
    const std::string whole = encrypted(text, 77);
    for (std::size_t length = 0; length <= text.size(); ++length) {
        const std::string prefix = text.substr(0, length);
        ASSERT_EQ(encrypted(prefix, 77), whole.substr(0, length)) << length;
        ASSERT_EQ(decrypted(whole.substr(0, length), 77), prefix) << length;
    }
}

TEST(DumbCrypt, NoByteStandsInClearAndAsciiNeverBecomesNul) {
    for (const unsigned int key : {0u, 1u, 0xffffffffu}) {
        const std::string text(65535, 'a');
        const std::string bytes = encrypted(text, key);
        EXPECT_EQ(bytes.find('a'), std::string::npos);
        EXPECT_EQ(bytes.find('\0'), std::string::npos);
        // ... and it is a stream, not one byte repeated: every possible value turns up.
        EXPECT_EQ(std::count_if(bytes.begin(), bytes.end(), [](char c) { return c >= 0; }), 0);
        for (int c = 128; c < 256; ++c) EXPECT_NE(bytes.find(static_cast<char>(c)), std::string::npos) << c;
    }
}

TEST(DumbCrypt, TouchesExactlyTheLengthGiven) {
    for (int length = -9; length <= 40; ++length) {
        std::string data = allBytes(64);
        const std::string before = data;
        DumbCrypt::encrypt(data.data() + 8, length, 0);
        const std::size_t end = 8 + static_cast<std::size_t>(std::max(length, 0));
        EXPECT_EQ(data.substr(0, 8) + data.substr(end), before.substr(0, 8) + before.substr(end)) << length;
        for (std::size_t i = 8; i < end; ++i) ASSERT_NE(data[i], before[i]) << length;
    }
}

} // namespace
