#include "embedded/base/hex.h"

#include <limits>

#include <gtest/gtest.h>

namespace Tests {
namespace {

using Embedded::bytesFromHex;
using Embedded::hexFromBytes;

TEST(Hex, Bytes_BecomeLowerCaseDigitsAndBytesAgain)
{
    const std::string bytes("\x00\x0A\x7F\x80\xFF", 5);
    EXPECT_EQ(hexFromBytes(bytes), "000a7f80ff");
    EXPECT_EQ(bytesFromHex("000a7f80ff"), bytes);
    EXPECT_EQ(bytesFromHex("000A7F80FF"), bytes);
    EXPECT_EQ(hexFromBytes(""), "");
    EXPECT_EQ(bytesFromHex(""), "");
}

TEST(Hex, OddNumberOfDigits_IsAnError)
{
    EXPECT_EQ(bytesFromHex("0af").error().message, "expected an even number of hexadecimal digits, found 3");
}

TEST(Hex, OtherCharacter_IsAnErrorThatNamesItsPosition)
{
    for (const char* text : {"0a0g", "0a0/", "0a0:", "0a0@", "0a0G", "0a0`", "0a0 ", "0a0\xC3\xA4"})
        EXPECT_EQ(bytesFromHex(text).error().message,
                  "expected hexadecimal digits, found something else as character 4")
            << text;
}

TEST(Hex, Number_HasItsDigitsAndLeadingZerosOnRequest)
{
    EXPECT_EQ(Embedded::upperCaseHex(0), "0");
    EXPECT_EQ(Embedded::upperCaseHex(0x1A2F), "1A2F");
    EXPECT_EQ(Embedded::upperCaseHex(0x1A2F, 8), "00001A2F");
    EXPECT_EQ(Embedded::upperCaseHex(0x1A2F, 2), "1A2F");
    EXPECT_EQ(Embedded::upperCaseHex(std::numeric_limits<std::uint64_t>::max()), "FFFFFFFFFFFFFFFF");
    EXPECT_EQ(Embedded::lowerCaseHex(0xAB, 4), "00ab");
}

} // namespace
} // namespace Tests
