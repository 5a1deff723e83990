#include "embedded/base/parse_number.h"

#include <cstdint>
#include <string>

#include <gtest/gtest.h>

namespace Tests {
namespace {

using Embedded::parseInteger;
using Embedded::parseReal;

TEST(ParseNumber, Integer_IsTheWholeText)
{
    EXPECT_EQ(parseInteger<int>("25832"), 25832);
    EXPECT_EQ(parseInteger<int>("-7"), -7);
    EXPECT_EQ(parseInteger<int>("007"), 7);
    EXPECT_EQ(parseInteger<std::uint64_t>("18446744073709551615"), UINT64_MAX);
    for (const char* text : {"", "-", "+7", " 7", "7 ", "7.0", "0x7", "seven", "99999999999"})
        EXPECT_EQ(parseInteger<int>(text), std::nullopt) << text;
    EXPECT_EQ(parseInteger<std::uint64_t>("-1"), std::nullopt);
    EXPECT_EQ(parseInteger<std::uint64_t>("18446744073709551616"), std::nullopt);
}

TEST(ParseNumber, Real_IsTheWholeTextInItsFormat)
{
    EXPECT_EQ(parseReal("2.5"), 2.5);
    EXPECT_EQ(parseReal("-25e-1"), -2.5);
    EXPECT_EQ(parseReal("2.5", std::chars_format::fixed), 2.5);
    EXPECT_EQ(parseReal("25e-1", std::chars_format::fixed), std::nullopt);
    for (const char* text : {"", "+2.5", " 2.5", "2.5 ", "2,5", "0x2", "1e999"})
        EXPECT_EQ(parseReal(text), std::nullopt) << text;
}

} // namespace
} // namespace Tests
