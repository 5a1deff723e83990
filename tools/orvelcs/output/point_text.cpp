#include "orvelcs/output/point_text.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <fmt/format.h>

#include "embedded/base/parse_number.h"
#include "embedded/base/text.h"

namespace Orvelcs {
namespace {

constexpr std::string_view kBlanks = " \t\r";

std::vector<std::string_view> splitWords(std::string_view line)
{
    std::vector<std::string_view> words;
    for (std::size_t begin = line.find_first_not_of(kBlanks); begin != std::string_view::npos;) {
        const std::size_t end = std::min(line.find_first_of(kBlanks, begin), line.size());
        words.push_back(line.substr(begin, end - begin));
        begin = line.find_first_not_of(kBlanks, end);
    }
    return words;
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

std::string numberText(double number, int decimals)
{
    std::string text = fmt::format("{:.{}f}", number, decimals);
    if (text.starts_with('-') && text.find_first_not_of("-0.") == std::string::npos)
        text.erase(0, 1);
    return text;
}

} // namespace

bool isBlankOrComment(std::string_view line)
{
    const std::size_t begin = line.find_first_not_of(kBlanks);
    return begin == std::string_view::npos || line[begin] == '#';
}

Embedded::Expected<Embedded::CoordinatePoint> parsePoint(std::string_view line)
{
    constexpr std::size_t kFewest = 2;
    constexpr std::size_t kMost = 4;
    constexpr std::string_view kExpected = "expected 2 to 4 numbers, found ";
    std::vector<double> numbers;
    for (const std::string_view word : splitWords(line)) {
        const std::optional<double> number = parseNumber(word);
        if (!number)
            return Embedded::failure(0, fmt::format("{}\"{}\"", kExpected, Embedded::truncateForMessage(word)));
        numbers.push_back(*number);
    }
    if (numbers.size() < kFewest || numbers.size() > kMost)
        return Embedded::failure(0, fmt::format("{}{}", kExpected, numbers.size()));
    Embedded::CoordinatePoint point{numbers[0], numbers[1]};
    if (numbers.size() > kFewest)
        point.z = numbers[2];
    if (numbers.size() == kMost)
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

std::vector<std::string> formatNumbers(const Embedded::CoordinatePoint& point, const std::vector<int>& decimals)
{
    std::vector<std::string> numbers = {numberText(point.x, decimals[0]), numberText(point.y, decimals[1])};
    if (point.z)
        numbers.push_back(numberText(*point.z, decimals[2]));
    if (point.z && point.epoch)
        numbers.push_back(fmt::format("{}", *point.epoch));
    return numbers;
}

} // namespace Orvelcs
