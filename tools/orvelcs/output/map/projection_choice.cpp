#include "orvelcs/output/map/projection_choice.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "orvelcs/output/map/sphere.h"

namespace Orvelcs {
namespace {

constexpr double kWorldRadius = 65;   // a larger extent is shown on a map of the world
constexpr double kConicRadius = 30;   // the largest extent on a cone
constexpr double kCountryRadius = 14; // the largest extent that is shown without distorting shapes
constexpr double kConicNorth = 76;    // a cone fits between these latitudes, on either side of the equator
constexpr double kConicSouth = 10;
constexpr double kNearlyPole = 89;
constexpr double kPolarLatitude = 45;
constexpr double kPolarSpan = 150;

/// The angle from the centre to the farthest place on the edges of the extent.
double radiusAround(const MapPoint& centre, const GeographicBounds& extent)
{
    constexpr int kSteps = 36;
    double radius = 0;
    for (int step = 0; step <= kSteps; ++step) {
        const double share = static_cast<double>(step) / kSteps;
        const double longitude = extent.west + extent.longitudinalExtent() * share;
        const double latitude = extent.south + (extent.north - extent.south) * share;
        for (const MapPoint& place :
             {MapPoint{longitude, extent.south}, MapPoint{longitude, extent.north}, MapPoint{extent.west, latitude}})
            radius = std::max(radius, angleBetween(centre, place));
    }
    return radius;
}

/// Of the pole that the extent lies around: 1 for the north, -1 for the south, 0 for none.
int poleOf(const GeographicBounds& extent)
{
    const double span = extent.longitudinalExtent();
    for (const int pole : {1, -1}) {
        const double nearest = pole > 0 ? extent.north : -extent.south;
        const double farthest = pole > 0 ? extent.south : -extent.north;
        const bool isCap = span >= kCircle && nearest >= kNearlyPole && farthest >= 0;
        if (isCap || (span >= kPolarSpan && farthest >= kPolarLatitude))
            return pole;
    }
    return 0;
}

bool fitsCone(const GeographicBounds& extent)
{
    const double nearer = std::min(std::abs(extent.south), std::abs(extent.north));
    const double farther = std::max(std::abs(extent.south), std::abs(extent.north));
    return extent.south * extent.north > 0 && nearer >= kConicSouth && farther <= kConicNorth;
}

std::string onSphere(const std::string& definition)
{
    return fmt::format("{} +R={}", definition, kEarthRadiusInMetres);
}

void useCone(ProjectionChoice& choice, const GeographicBounds& extent)
{
    constexpr double kInset = 6; // of the parallels that are not distorted, as a share of the extent
    const bool isConformal = choice.radius <= kCountryRadius;
    const double inset = (extent.north - extent.south) / kInset;
    choice.name = isConformal ? "Lambert conformal conic" : "Albers equal-area conic";
    choice.definition = onSphere(fmt::format("+proj={} +lon_0={:.4f} +lat_0={:.4f} +lat_1={:.4f} +lat_2={:.4f}",
                                             isConformal ? "lcc" : "aea", choice.centre.x, choice.centre.y,
                                             extent.south + inset, extent.north - inset));
}

void useAzimuthal(ProjectionChoice& choice)
{
    choice.isAzimuthal = true;
    choice.name = "Lambert azimuthal equal-area";
    choice.definition =
        onSphere(fmt::format("+proj=laea +lon_0={:.4f} +lat_0={:.4f}", choice.centre.x, choice.centre.y));
}

void useWorld(ProjectionChoice& choice)
{
    choice.showsWorld = true;
    choice.centre.y = 0;
    choice.name = "Equal Earth";
    choice.definition = onSphere(fmt::format("+proj=eqearth +lon_0={:.4f}", choice.centre.x));
}

} // namespace

ProjectionChoice chooseProjection(const GeographicBounds& extent)
{
    ProjectionChoice choice;
    choice.centre = middleOf(extent);
    const int pole = poleOf(extent);
    if (pole != 0)
        choice.centre.y = pole * kPole;
    choice.radius = radiusAround(choice.centre, extent);
    if (pole != 0)
        useAzimuthal(choice);
    else if (extent.longitudinalExtent() >= kHalfCircle || choice.radius > kWorldRadius)
        useWorld(choice);
    else if (choice.radius <= kConicRadius && fitsCone(extent))
        useCone(choice, extent);
    else
        useAzimuthal(choice);
    return choice;
}

} // namespace Orvelcs
