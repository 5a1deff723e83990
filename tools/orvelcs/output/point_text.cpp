#include "orvelcs/output/point_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <numbers>

#include <fmt/format.h>

#include "embedded/base/parse_number.h"
#include "embedded/base/text.h"

namespace Orvelcs {
namespace {

constexpr auto isBlank = [](char character) { return character == ' ' || character == '\t' || character == '\r'; };

/// Takes the first word off the line; empty when none is left.
std::string_view takeWord(std::string_view& line)
{
    const char* const begin = std::find_if_not(line.data(), line.data() + line.size(), isBlank);
    const char* const end = std::find_if(begin, line.data() + line.size(), isBlank);
    line.remove_prefix(static_cast<std::size_t>(end - line.data()));
    return {begin, static_cast<std::size_t>(end - begin)};
}

std::optional<double> parseNumber(std::string_view word)
{
    if (word.starts_with('+') && !word.starts_with("+-"))
        word.remove_prefix(1);
    const std::optional<double> number = Embedded::parseReal(word);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

int decimalsForAxis(const Embedded::AxisUnit& axis)
{
    constexpr double kFinestLengthInMetres = 1e-6;
    constexpr double kFinestAngleInRadians = 1e-10 * std::numbers::pi / 180;
    constexpr double kRounding = 1e-6; // a unit's factor is not exact to the last digit
    const double finest = axis.isAngular ? kFinestAngleInRadians : kFinestLengthInMetres;
    return std::max(0, static_cast<int>(std::ceil(std::log10(axis.toBaseUnit / finest) - kRounding)));
}

/// Correctly rounded, and without the sign of a zero.
void appendExactly(double number, int decimals, std::string& text)
{
    constexpr std::size_t kMostDigits = std::numeric_limits<double>::max_exponent10 + 1;
    constexpr std::size_t kMostDecimals = 64;                  // of the largest unit there is
    std::array<char, kMostDigits + kMostDecimals + 2> bytes{}; // with a sign and a point
    const char* const end =
        std::to_chars(bytes.data(), bytes.data() + bytes.size(), number, std::chars_format::fixed, decimals).ptr;
    std::string_view shown(bytes.data(), static_cast<std::size_t>(end - bytes.data()));
    if (shown.starts_with('-') && shown.find_first_not_of("-0.") == std::string_view::npos)
        shown.remove_prefix(1);
    text += shown;
}

/// The nearest whole number of the last decimal's units, without the sign. Nothing in the middle between two, where a
/// double might miss it: the product is off by 2^-9 at most.
std::optional<std::uint64_t> nearestUnits(double number, std::size_t decimals)
{
    constexpr std::array kPowersOfTen{1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12};
    constexpr double kLargest = 0x1p45;
    constexpr double kMiddle = 0.5;
    constexpr double kUncertain = 0.01;
    if (decimals >= kPowersOfTen.size())
        return std::nullopt;
    const double product = std::abs(number) * kPowersOfTen[decimals];
    if (!(product < kLargest))
        return std::nullopt;
    const auto below = static_cast<std::uint64_t>(product);
    const double fraction = product - static_cast<double>(below);
    if (std::abs(fraction - kMiddle) < kUncertain)
        return std::nullopt;
    return fraction < kMiddle ? below : below + 1;
}

/// As appendExactly, whose way takes a transformation of points 1.2 times as long.
void appendNumber(double number, int decimals, std::string& text)
{
    const auto places = static_cast<std::size_t>(decimals);
    const std::optional<std::uint64_t> units = nearestUnits(number, places);
    if (!units)
        return appendExactly(number, decimals, text);
    std::array<char, 32> bytes{}; // filled from its end
    char* const end = bytes.data() + bytes.size();
    char* first = end;
    std::uint64_t rest = *units;
    for (std::size_t place = 0; place <= places || rest != 0; ++place, rest /= 10) {
        if (place == places && places != 0)
            *--first = '.';
        *--first = static_cast<char>('0' + rest % 10);
    }
    if (number < 0 && *units != 0)
        *--first = '-';
    text.append(first, end);
}

} // namespace

bool isBlankOrComment(std::string_view line)
{
    const auto begin = std::ranges::find_if_not(line, isBlank);
    return begin == line.end() || *begin == '#';
}

Embedded::Expected<Embedded::CoordinatePoint> parsePoint(std::string_view line)
{
    constexpr std::size_t kFewest = 2;
    constexpr std::size_t kMost = 4;
    constexpr std::string_view kExpected = "expected 2 to 4 numbers, found ";
    std::array<double, kMost> numbers{};
    std::size_t count = 0;
    for (std::string_view word = takeWord(line); !word.empty(); word = takeWord(line), ++count) {
        const std::optional<double> number = parseNumber(word);
        if (!number)
            return Embedded::failure(0, fmt::format("{}\"{}\"", kExpected, Embedded::truncateForMessage(word)));
        if (count < kMost)
            numbers[count] = *number;
    }
    if (count < kFewest || count > kMost)
        return Embedded::failure(0, fmt::format("{}{}", kExpected, count));
    Embedded::CoordinatePoint point{numbers[0], numbers[1]};
    if (count > kFewest)
        point.z = numbers[2];
    if (count == kMost)
        point.epoch = numbers[3];
    return point;
}

bool isEpoch(double year)
{
    return year >= kEarliestEpoch && year <= kLatestEpoch;
}

std::optional<double> parseEpoch(std::string_view text)
{
    const std::optional<double> year = parseNumber(text);
    return year && isEpoch(*year) ? year : std::nullopt;
}

std::vector<int> decimalsFor(const std::vector<Embedded::AxisUnit>& axes)
{
    std::vector<int> decimals;
    decimals.reserve(axes.size());
    for (const Embedded::AxisUnit& axis : axes)
        decimals.push_back(decimalsForAxis(axis));
    return decimals;
}

void appendNumbers(const Embedded::CoordinatePoint& point, const std::vector<int>& decimals, std::string_view separator,
                   std::string& text)
{
    appendNumber(point.x, decimals[0], text);
    text += separator;
    appendNumber(point.y, decimals[1], text);
    if (!point.z)
        return;
    text += separator;
    appendNumber(*point.z, decimals[2], text);
    if (point.epoch)
        fmt::format_to(std::back_inserter(text), "{}{}", separator, *point.epoch);
}

} // namespace Orvelcs
