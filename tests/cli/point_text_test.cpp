// The numbers of points as text, beside the C library's.
#include "orvelcs/output/point_text.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

namespace Tests {
namespace {

constexpr int kMostDecimals = 15;

std::string printed(double number, int decimals)
{
    std::array<char, 400> bytes{};
    std::snprintf(bytes.data(), bytes.size(), "%.*f", decimals, number);
    const std::string text = bytes.data();
    return text.starts_with('-') && text.find_first_not_of("-0.") == std::string::npos ? text.substr(1) : text;
}

std::string appended(double number, int decimals)
{
    std::string text;
    Orvelcs::appendNumbers({number, 0}, {decimals, 0}, ";", text);
    return text.substr(0, text.find(';'));
}

void expectAsPrinted(double number)
{
    for (int decimals = 0; decimals <= kMostDecimals; ++decimals)
        for (const double signedNumber : {number, -number})
            ASSERT_EQ(appended(signedNumber, decimals), printed(signedNumber, decimals))
                << signedNumber << " with " << decimals << " decimals";
}

TEST(PointText, NumbersInTheMiddleOfTwo_AreRoundedAsTheCLibraryDoes)
{
    for (int exponent = 0; exponent <= 20; ++exponent)
        for (int odd = 1; odd < 400; odd += 2)
            expectAsPrinted(std::ldexp(odd, -exponent));
    for (int decimals = 0; decimals <= 12; ++decimals) {
        for (int units = 0; units < 30; ++units) {
            const double middle = (units + 0.5) / std::pow(10, decimals); // or next to it
            expectAsPrinted(middle);
            expectAsPrinted(std::nextafter(middle, 0));
            expectAsPrinted(std::nextafter(middle, 1e9));
        }
    }
}

TEST(PointText, RandomNumbersOfAnySize_AreAsTheCLibraryPrintsThem)
{
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> metres(0, 1e7);
    for (int time = 0; time < 2'000; ++time) {
        expectAsPrinted(metres(random));
        const auto anyBits = std::bit_cast<double>(random());
        if (std::isfinite(anyBits))
            expectAsPrinted(anyBits);
    }
}

TEST(PointText, NumbersAtTheLimits_AreAsTheCLibraryPrintsThem)
{
    using Limits = std::numeric_limits<double>;
    for (const double number : {0.0, Limits::denorm_min(), Limits::min(), Limits::max(), 0.1, 0.5, 1.0, 9.9999999999})
        expectAsPrinted(number);
    for (int exponent = -60; exponent <= 64; ++exponent) {
        const double power = std::ldexp(1, exponent);
        for (const double number : {std::nextafter(power, 0), power, std::nextafter(power, Limits::max())})
            expectAsPrinted(number);
        for (int decimals = 0; decimals <= 12; ++decimals)
            expectAsPrinted(power / std::pow(10, decimals));
    }
}

TEST(PointText, HeightsAndEpochsFollow)
{
    std::string text = "<";
    Orvelcs::appendNumbers({1, -2, 3.25, 2020.123456789}, {1, 0, 3}, ", ", text);
    EXPECT_EQ(text, "<1.0, -2, 3.250, 2020.123456789");
}

} // namespace
} // namespace Tests
