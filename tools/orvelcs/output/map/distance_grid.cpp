#include "orvelcs/output/map/distance_grid.h"

#include <algorithm>
#include <cmath>

#include "orvelcs/output/map/sphere.h"

namespace Orvelcs {
namespace {

/// Degrees are counted in such parts.
constexpr double kPartsInADegree = 10'000;
constexpr double kRoundParts[] = {10,     20,     25,     40,     50,      100,     200,     250,
                                  400,    500,    1'000,  2'000,  2'500,   4'000,   5'000,   10'000,
                                  20'000, 25'000, 40'000, 50'000, 100'000, 150'000, 300'000, 600'000};

/// Without what the addition of degrees leaves behind the last digit.
double withoutRest(double degrees)
{
    constexpr double kFinestParts = 1e7;
    return std::round(degrees * kFinestParts) / kFinestParts;
}

/// Both ends, and the multiples of a step between them that are not too close to one.
std::vector<double> roundDegrees(double from, double to, double parts)
{
    constexpr double kTooClose = 0.25; // of a step
    const double step = parts / kPartsInADegree;
    std::vector<double> all{withoutRest(from)};
    for (double count = std::ceil(from / step + kTooClose); count * step <= to - step * kTooClose; ++count)
        all.push_back(count * parts / kPartsInADegree);
    if (to > from)
        all.push_back(withoutRest(to));
    return all;
}

/// The step of meridians that are about as far apart as the parallels.
double partsOfMeridians(double partsOfParallels, double latitude)
{
    constexpr double kLeast = 0.1; // near a pole
    const double wanted = partsOfParallels / std::max(kLeast, std::cos(latitude * Embedded::kRadiansPerDegree));
    const auto above = std::ranges::upper_bound(kRoundParts, wanted);
    return above == std::begin(kRoundParts) ? *above : *(above - 1);
}

} // namespace

std::vector<Embedded::GeographicPoint> NodeGrid::points() const
{
    std::vector<Embedded::GeographicPoint> all;
    all.reserve(size());
    for (const double latitude : latitudes)
        for (const double longitude : longitudes)
            all.push_back({latitude, longitude > kHalfCircle ? withoutRest(longitude - kCircle) : longitude});
    return all;
}

NodeGrid makeNodeGrid(const GeographicBounds& area, std::size_t mostNodes)
{
    NodeGrid grid;
    const double east = area.west + area.longitudinalExtent();
    for (const double parts : kRoundParts) {
        grid.latitudes = roundDegrees(area.south, area.north, parts);
        grid.longitudes = roundDegrees(area.west, east, partsOfMeridians(parts, middleOf(area).y));
        if (grid.size() <= mostNodes)
            break;
    }
    return grid;
}

} // namespace Orvelcs
