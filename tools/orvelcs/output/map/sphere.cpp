#include "orvelcs/output/map/sphere.h"

#include <algorithm>
#include <cmath>

namespace Orvelcs {
namespace {

using Embedded::MapPoint;

struct Trigonometry {
    double sine;
    double cosine;
};

Trigonometry ofDegrees(double degrees)
{
    return {std::sin(degrees * Embedded::kRadiansPerDegree), std::cos(degrees * Embedded::kRadiansPerDegree)};
}

} // namespace

double wrapLongitude(double longitude, double centre)
{
    return centre + std::remainder(longitude - centre, kCircle);
}

double angleBetween(const MapPoint& from, const MapPoint& to)
{
    // The haversine is exact for small angles.
    const double latitudes = ofDegrees((to.y - from.y) / 2).sine;
    const double longitudes = ofDegrees((to.x - from.x) / 2).sine;
    const double square =
        latitudes * latitudes + ofDegrees(from.y).cosine * ofDegrees(to.y).cosine * longitudes * longitudes;
    return 2 * std::asin(std::min(1.0, std::sqrt(square))) / Embedded::kRadiansPerDegree;
}

double azimuthBetween(const MapPoint& from, const MapPoint& to)
{
    const Trigonometry start = ofDegrees(from.y);
    const Trigonometry end = ofDegrees(to.y);
    const Trigonometry turn = ofDegrees(to.x - from.x);
    return std::atan2(turn.sine * end.cosine, start.cosine * end.sine - start.sine * end.cosine * turn.cosine) /
           Embedded::kRadiansPerDegree;
}

MapPoint placeAt(const MapPoint& from, double azimuth, double angle)
{
    const Trigonometry start = ofDegrees(from.y);
    const Trigonometry distance = ofDegrees(angle);
    const Trigonometry direction = ofDegrees(azimuth);
    // Of the direction from the middle of the sphere: towards the meridian of `from`, eastward of it, and to the north.
    const double onMeridian = distance.cosine * start.cosine - distance.sine * direction.cosine * start.sine;
    const double eastward = distance.sine * direction.sine;
    const double northward = distance.cosine * start.sine + distance.sine * direction.cosine * start.cosine;
    return {from.x + std::atan2(eastward, onMeridian) / Embedded::kRadiansPerDegree,
            std::asin(std::clamp(northward, -1.0, 1.0)) / Embedded::kRadiansPerDegree};
}

} // namespace Orvelcs
