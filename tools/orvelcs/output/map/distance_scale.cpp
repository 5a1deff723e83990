#include "orvelcs/output/map/distance_scale.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <fmt/format.h>

namespace Orvelcs {
namespace {

using Colour = std::array<double, 3>;

/// Ten colours of cividis at equal steps, the lightest first. Those in between are interpolated.
constexpr Colour kCividis[] = {{0xFF, 0xEA, 0x46}, {0xE4, 0xCF, 0x5B}, {0xC4, 0xB5, 0x6C}, {0xA6, 0x9D, 0x75},
                               {0x8A, 0x87, 0x79}, {0x70, 0x71, 0x73}, {0x57, 0x5C, 0x6D}, {0x39, 0x48, 0x6B},
                               {0x00, 0x33, 0x6F}, {0x00, 0x20, 0x4D}};

constexpr double kMillimetre = 0.001;

/// The smallest of 1, 2, 2.5 and 5 times a power of ten from the number up.
double roundedUp(double number)
{
    const double power = std::pow(10, std::floor(std::log10(number)));
    for (const double factor : {1.0, 2.0, 2.5, 5.0})
        if (factor * power >= number * (1 - 1e-9))
            return factor * power;
    return 10 * power;
}

/// The upper end of what the even steps cover.
double endOfSteps(const std::vector<double>& sorted)
{
    constexpr double kMost = 0.98;      // of the distances
    constexpr double kMuchLarger = 1.5; // than those
    const double most = sorted[static_cast<std::size_t>(kMost * static_cast<double>(sorted.size() - 1))];
    const double range = sorted.back() - sorted.front();
    return range > (most - sorted.front()) * kMuchLarger && most > sorted.front() ? most : sorted.back();
}

void addSteps(DistanceScale& scale, double least, double end)
{
    constexpr double kBands = 9;
    const double step = std::max(roundedUp((end - least) / kBands), kMillimetre);
    while (scale.digits < 3 && std::abs(std::remainder(step * std::pow(10, scale.digits), 1)) > 1e-6)
        ++scale.digits;
    for (double count = std::floor(least / step + 1e-9); scale.bounds.empty() || scale.bounds.back() < end; ++count)
        scale.bounds.push_back(count * step);
}

} // namespace

std::string cividisColour(double share)
{
    constexpr double kLast = std::size(kCividis) - 1;
    const double position = std::clamp(share, 0.0, 1.0) * kLast;
    const auto index = static_cast<std::size_t>(std::min(std::floor(position), kLast - 1));
    const double rest = position - static_cast<double>(index);
    std::string text = "#";
    for (std::size_t part = 0; part < 3; ++part)
        text +=
            fmt::format("{:02x}", std::lround(kCividis[index][part] * (1 - rest) + kCividis[index + 1][part] * rest));
    return text;
}

std::string DistanceScale::colour(std::size_t band) const
{
    return cividisColour(bandCount() < 2 ? 0.0 : static_cast<double>(band) / static_cast<double>(bandCount() - 1));
}

std::string DistanceScale::boundText(std::size_t index) const
{
    return fmt::format("{:.{}f}", bounds[index], digits);
}

DistanceScale makeDistanceScale(const std::vector<double>& metres)
{
    std::vector<double> sorted = metres;
    std::erase_if(sorted, [](double number) { return !std::isfinite(number); });
    std::ranges::sort(sorted);
    DistanceScale scale;
    scale.hasGaps = sorted.size() < metres.size();
    if (sorted.empty())
        return scale;
    if (sorted.back() - sorted.front() < kMillimetre) {
        scale.isUniform = true;
        scale.digits = 3;
        scale.bounds = {sorted.front(), sorted.back()};
        return scale;
    }
    addSteps(scale, sorted.front(), endOfSteps(sorted));
    if (scale.bounds.back() < sorted.back()) {
        const double unit = std::pow(10, -scale.digits);
        scale.bounds.push_back(std::ceil(sorted.back() / unit) * unit);
    }
    return scale;
}

std::string distanceInMetres(double metres)
{
    return fmt::format("{:.3f} m", metres);
}

} // namespace Orvelcs
