#include "embedded/spatial_reference/catalog/geographic_bounds.h"

#include <cmath>

namespace Embedded {
namespace {

constexpr double kCircle = 360;
constexpr double kTolerance = 1e-9; // of differences of degrees: a tenth of a millimetre

double longitudinalExtent(const GeographicBounds& bounds)
{
    return bounds.east - bounds.west + (bounds.east < bounds.west ? kCircle : 0);
}

/// How far the meridian lies east of the other, from 0 to 360 degrees.
double eastwardDistance(double from, double to)
{
    double distance = std::fmod(to - from, kCircle);
    if (distance < 0)
        distance += kCircle;
    return distance > kCircle - kTolerance ? 0 : distance;
}

} // namespace

bool GeographicBounds::contains(const GeographicBounds& other) const
{
    if (other.south < south || other.north > north)
        return false;
    const double extent = longitudinalExtent(*this);
    return extent >= kCircle || eastwardDistance(west, other.west) + longitudinalExtent(other) <= extent + kTolerance;
}

} // namespace Embedded
