#include "orvelcs/output/angle_text.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "embedded/base/degrees.h"
#include "embedded/base/parse_number.h"

namespace Orvelcs {
namespace {

using Embedded::AxisDirection;

constexpr std::size_t kParts = 3; // degrees, minutes and seconds

constexpr std::array<std::array<std::string_view, 3>, kParts> kMarks{
    {{"d", "D", "\u00B0"}, {"'", "\u2032", "\u2019"}, {"\"", "\u2033", "\u201D"}}};

AxisDirection hemisphereNamed(char letter)
{
    switch (letter) {
    case 'N':
        return AxisDirection::north;
    case 'S':
        return AxisDirection::south;
    case 'E':
        return AxisDirection::east;
    case 'W':
        return AxisDirection::west;
    default:
        return AxisDirection::other;
    }
}

AxisDirection opposite(AxisDirection direction)
{
    switch (direction) {
    case AxisDirection::north:
        return AxisDirection::south;
    case AxisDirection::south:
        return AxisDirection::north;
    case AxisDirection::east:
        return AxisDirection::west;
    case AxisDirection::west:
        return AxisDirection::east;
    case AxisDirection::other:
        break;
    }
    return AxisDirection::other;
}

/// Takes an angle off its text, part by part.
class AngleReader {
public:
    explicit AngleReader(std::string_view text) : rest_(text) { skip(0); }

    std::optional<Angle> read()
    {
        const AxisDirection before = takeHemisphere();
        const bool isNegative = rest_.starts_with('-');
        const bool hasSign = isNegative || rest_.starts_with('+');
        rest_.remove_prefix(hasSign ? 1 : 0);
        const std::optional<double> degrees = takeDegrees();
        const AxisDirection behind = takeHemisphere();
        const int kinds =
            (before != AxisDirection::other ? 1 : 0) + (behind != AxisDirection::other ? 1 : 0) + (hasSign ? 1 : 0);
        if (!degrees || !rest_.empty() || kinds > 1)
            return std::nullopt;
        return Angle{isNegative ? -*degrees : *degrees, before != AxisDirection::other ? before : behind};
    }

private:
    /// Skips blanks, too.
    void skip(std::size_t length)
    {
        rest_.remove_prefix(length);
        rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t"), rest_.size()));
    }

    bool take(std::string_view mark)
    {
        const bool isThere = rest_.starts_with(mark);
        if (isThere)
            skip(mark.size());
        return isThere;
    }

    AxisDirection takeHemisphere()
    {
        const AxisDirection hemisphere = rest_.empty() ? AxisDirection::other : hemisphereNamed(rest_.front());
        if (hemisphere != AxisDirection::other)
            skip(1);
        return hemisphere;
    }

    std::optional<double> takeDegrees()
    {
        constexpr double kSixty = 60;
        double degrees = 0;
        double unit = 1;
        for (std::size_t part = 0; part < kParts; ++part, unit *= kSixty) {
            const std::optional<double> number = takeNumber();
            if (!number || (part > 0 && *number >= kSixty))
                return std::nullopt;
            degrees += *number / unit;
            const bool isColon = !hasMarks_ && part + 1 < kParts && take(":");
            const bool isMark = !hasColons_ && !isColon && takeMark(part);
            hasColons_ |= isColon;
            hasMarks_ |= isMark;
            if (rest_.empty() || !Embedded::isDigit(rest_.front()))
                return isColon ? std::nullopt : std::optional(degrees);
            if (hasFraction_ || (!isColon && !isMark))
                return std::nullopt;
        }
        return std::nullopt; // a fourth number
    }

    std::optional<double> takeNumber()
    {
        const std::string_view word = rest_.substr(0, rest_.find_first_not_of("0123456789."));
        hasFraction_ = word.find('.') != std::string_view::npos;
        skip(word.size());
        return Embedded::parseReal(word, std::chars_format::fixed);
    }

    bool takeMark(std::size_t part)
    {
        return std::ranges::any_of(kMarks[part], [&](std::string_view mark) { return take(mark); });
    }

    std::string_view rest_;
    bool hasFraction_ = false; // of the last number
    bool hasColons_ = false;
    bool hasMarks_ = false;
};

} // namespace

std::optional<Angle> parseAngle(std::string_view text)
{
    return AngleReader(text).read();
}

std::optional<double> angleOnAxis(const Angle& angle, const Embedded::AxisUnit& axis)
{
    constexpr double kRounding = 1e-12;
    const bool hasHemisphere = angle.hemisphere != AxisDirection::other;
    const bool isOpposite = hasHemisphere && angle.hemisphere == opposite(axis.direction);
    if (hasHemisphere && !isOpposite && angle.hemisphere != axis.direction)
        return std::nullopt;
    const double degreesInUnit = axis.toBaseUnit / Embedded::kRadiansPerDegree;
    const bool isInDegrees = std::abs(degreesInUnit - 1) < kRounding;
    const double value = isInDegrees ? angle.degrees : angle.degrees / degreesInUnit;
    return isOpposite ? -value : value;
}

} // namespace Orvelcs
