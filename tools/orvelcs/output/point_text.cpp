#include "orvelcs/output/point_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <tuple>
#include <utility>

#include <fmt/format.h>

#include "embedded/base/degrees.h"
#include "embedded/base/parse_number.h"
#include "embedded/base/text.h"
#include "orvelcs/output/angle_text.h"

namespace Orvelcs {
namespace {

using Embedded::AxisDirection;

constexpr std::size_t kFewestNumbers = 2;
constexpr std::size_t kMostNumbers = std::tuple_size_v<LineAxes>;

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

bool looksLikeAngle(std::string_view text)
{
    return text.find_first_of("dD:'\"") != std::string_view::npos || text.find("\u00B0") != std::string_view::npos;
}

Embedded::Expected<double> parseAngleOnAxis(std::string_view text, const Embedded::AxisUnit& axis,
                                            std::string_view expected)
{
    const auto refusal = [&](std::string_view wanted) {
        return Embedded::failure(0,
                                 fmt::format("expected {}, found \"{}\"", wanted, Embedded::truncateForMessage(text)));
    };
    const std::optional<Angle> angle = parseAngle(text);
    if (!angle)
        return refusal(looksLikeAngle(text) ? "an angle such as 52d30'15.5\"N or 52:30:15.5" : expected);
    if (const std::optional<double> value = angleOnAxis(*angle, axis))
        return *value;
    const bool isLatitude = axis.direction == AxisDirection::north || axis.direction == AxisDirection::south;
    return refusal(isLatitude ? "a latitude (N or S)" : "a longitude (E or W)");
}

int decimalsForAxis(const Embedded::AxisUnit& axis)
{
    constexpr double kFinestLengthInMetres = 1e-6;
    constexpr double kFinestAngleInRadians = 1e-10 * Embedded::kRadiansPerDegree;
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

} // namespace

LineAxes lineAxes(const Embedded::SystemAxes& system, bool isLongitudeFirst)
{
    LineAxes axes{};
    std::ranges::copy(system.units, axes.begin());
    if (isLongitudeFirst && system.isNorthingFirst)
        std::swap(axes[0], axes[1]);
    return axes;
}

bool isBlankOrComment(std::string_view line)
{
    const auto begin = std::ranges::find_if_not(line, isBlank);
    return begin == line.end() || *begin == '#';
}

Embedded::Expected<double> parseCoordinate(std::string_view text, const Embedded::AxisUnit& axis,
                                           std::string_view expected)
{
    if (const std::optional<double> number = parseNumber(text))
        return *number;
    if (axis.isAngular)
        return parseAngleOnAxis(text, axis, expected);
    return Embedded::failure(0, fmt::format("expected {}, found \"{}\"", expected, Embedded::truncateForMessage(text)));
}

Embedded::Expected<void> checkEpoch(const Embedded::CoordinatePoint& point)
{
    if (!point.epoch || isEpoch(*point.epoch))
        return {};
    return Embedded::failure(0, fmt::format("expected a year from {} to {} as the epoch, found {}", kEarliestEpoch,
                                            kLatestEpoch, *point.epoch));
}

Embedded::Expected<Embedded::CoordinatePoint> parsePoint(std::string_view line, const LineAxes& axes)
{
    constexpr std::string_view kExpected = "2 to 4 numbers";
    std::array<double, kMostNumbers> numbers{};
    std::size_t count = 0;
    for (std::string_view word = takeWord(line); !word.empty(); word = takeWord(line), ++count) {
        std::optional<double> number = parseNumber(word);
        if (!number) {
            const auto other = parseCoordinate(word, axes[std::min(count, axes.size() - 1)], kExpected);
            if (!other)
                return Embedded::failure(other.error());
            number = *other;
        }
        if (count < kMostNumbers)
            numbers[count] = *number;
    }
    if (count < kFewestNumbers || count > kMostNumbers)
        return Embedded::failure(0, fmt::format("expected {}, found {}", kExpected, count));
    Embedded::CoordinatePoint point{numbers[0], numbers[1]};
    if (count > kFewestNumbers)
        point.z = numbers[2];
    if (count == kMostNumbers)
        point.epoch = numbers[3];
    if (const auto check = checkEpoch(point); !check)
        return Embedded::failure(check.error());
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

// appendExactly alone would make a transformation of points take 1.2 times as long.
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

std::vector<int> decimalsFor(const LineAxes& axes)
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
