#include "orvelcs/output/map/coastlines.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <span>
#include <string_view>

#include "orvelcs/output/map/sphere.h"

namespace Orvelcs {
namespace {

// Each ring is a string. tools/orvelcs/output/coastlines/README.md describes the encoding.
constexpr std::string_view kSmallRings[] = {
#include "orvelcs/output/coastlines/land_110m.inc"
};
constexpr std::string_view kMediumRings[] = {
#include "orvelcs/output/coastlines/land_50m.inc"
};
constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+-";
constexpr double kStepsInADegree = 200;
constexpr unsigned kDigitBits = 5;
constexpr std::uint8_t kMoreFollow = 1U << kDigitBits;

std::array<std::uint8_t, 256> digitValues()
{
    std::array<std::uint8_t, 256> values{};
    for (std::size_t index = 0; index < kDigits.size(); ++index)
        values[static_cast<unsigned char>(kDigits[index])] = static_cast<std::uint8_t>(index);
    return values;
}

/// Takes a number from the beginning of the text.
int takeNumber(std::string_view& text)
{
    static const std::array<std::uint8_t, 256> values = digitValues();
    unsigned number = 0;
    unsigned shift = 0;
    std::uint8_t digit = kMoreFollow;
    while ((digit & kMoreFollow) != 0 && !text.empty()) {
        digit = values[static_cast<unsigned char>(text.front())];
        text.remove_prefix(1);
        number |= (digit & (kMoreFollow - 1U)) << shift;
        shift += kDigitBits;
    }
    const int half = static_cast<int>(number >> 1U);
    return (number & 1U) != 0 ? -half - 1 : half;
}

PlaneLine decodeRing(std::string_view text)
{
    PlaneLine ring;
    int x = 0;
    int y = 0;
    while (!text.empty()) {
        x += takeNumber(text);
        y += takeNumber(text);
        ring.push_back({x / kStepsInADegree, y / kStepsInADegree});
    }
    return ring;
}

bool isEdge(const MapPoint& from, const MapPoint& to)
{
    return (from.x == to.x && std::abs(from.x) == kHalfCircle) || (from.y == -kPole && to.y == -kPole);
}

} // namespace

const char* coastlineScaleName(CoastlineScale scale)
{
    return scale == CoastlineScale::small ? "1:110 million" : "1:50 million";
}

std::vector<PlaneLine> landRings(CoastlineScale scale)
{
    const bool isSmall = scale == CoastlineScale::small;
    std::vector<PlaneLine> rings;
    for (const std::string_view text : isSmall ? std::span<const std::string_view>(kSmallRings) : kMediumRings)
        rings.push_back(decodeRing(text));
    return rings;
}

std::vector<PlaneLine> coastOf(const PlaneLine& ring)
{
    std::vector<PlaneLine> lines;
    bool continues = false;
    for (std::size_t index = 0; index < ring.size(); ++index) {
        const MapPoint& from = ring[index];
        const MapPoint& to = ring[index + 1 < ring.size() ? index + 1 : 0];
        if (isEdge(from, to)) {
            continues = false;
            continue;
        }
        if (!continues)
            lines.push_back({from});
        lines.back().push_back(to);
        continues = true;
    }
    return lines;
}

} // namespace Orvelcs
