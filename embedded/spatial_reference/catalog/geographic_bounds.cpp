#include "embedded/spatial_reference/catalog/geographic_bounds.h"

#include <algorithm>
#include <cmath>

namespace Embedded {
namespace {

constexpr double kCircle = 360;
constexpr double kTolerance = 1e-9; // of differences of degrees: a tenth of a millimetre

/// How far the meridian lies east of the other, from 0 to 360 degrees.
double eastwardDistance(double from, double to)
{
    double distance = std::fmod(to - from, kCircle);
    if (distance < 0)
        distance += kCircle;
    return distance > kCircle - kTolerance ? 0 : distance;
}

double normalizedLongitude(double longitude)
{
    return std::remainder(longitude, kCircle);
}

/// The part of `left` from the western edge of `right` on, without its latitudes; nothing where that edge lies outside.
std::optional<GeographicBounds> commonLongitudesFrom(const GeographicBounds& left, const GeographicBounds& right)
{
    const double leftExtent = left.longitudinalExtent();
    const double offset = eastwardDistance(left.west, right.west);
    if (offset > leftExtent + kTolerance)
        return std::nullopt;
    const double extent = std::min(std::max(leftExtent - offset, 0.0), right.longitudinalExtent());
    const double east = right.west + extent;
    return GeographicBounds{
        .west = right.west, .south = 0, .east = east > kCircle / 2 ? east - kCircle : east, .north = 0};
}

std::optional<GeographicBounds> commonLongitudes(const GeographicBounds& left, const GeographicBounds& right)
{
    if (left.longitudinalExtent() >= kCircle)
        return right;
    if (right.longitudinalExtent() >= kCircle)
        return left;
    const auto first = commonLongitudesFrom(left, right);
    const auto second = commonLongitudesFrom(right, left);
    if (!first || !second)
        return first ? first : second;
    return first->longitudinalExtent() >= second->longitudinalExtent() ? first : second;
}

} // namespace

double GeographicBounds::longitudinalExtent() const
{
    return std::min(east - west + (east < west ? kCircle : 0), kCircle);
}

GeographicPoint GeographicBounds::middle() const
{
    return {.latitude = (south + north) / 2, .longitude = normalizedLongitude(west + longitudinalExtent() / 2)};
}

std::optional<GeographicBounds> commonBounds(const GeographicBounds& left, const GeographicBounds& right)
{
    auto common = commonLongitudes(left, right);
    if (!common)
        return std::nullopt;
    common->south = std::max(left.south, right.south);
    common->north = std::min(left.north, right.north);
    return common->south <= common->north ? common : std::nullopt;
}

bool GeographicBounds::contains(const GeographicBounds& other) const
{
    if (other.south < south || other.north > north)
        return false;
    const double extent = longitudinalExtent();
    return extent >= kCircle || eastwardDistance(west, other.west) + other.longitudinalExtent() <= extent + kTolerance;
}

} // namespace Embedded
