#include "orvelcs/output/map/map_view.h"

#include <algorithm>
#include <cmath>

#include "orvelcs/cli/failure.h"
#include "orvelcs/output/map/sphere.h"

namespace Orvelcs {
namespace {

/// Keeps the window off the meridian opposite to its centre, whose two sides would be one.
constexpr double kSeam = 1e-7;

Embedded::MapProjection createProjection(const std::string& definition)
{
    auto projection = Embedded::MapProjection::create(definition);
    if (!projection)
        throw Failure("projection", projection.error().text());
    return *std::move(projection);
}

PlaneRectangle wholeWindow(const MapPoint& centre)
{
    return {centre.x - kHalfCircle + kSeam, -kPole, centre.x + kHalfCircle - kSeam, kPole};
}

/// The rectangle with the proportions of the frame, grown on two sides.
PlaneRectangle withProportions(PlaneRectangle rectangle, double widthToHeight)
{
    const double missingWidth = rectangle.height() * widthToHeight - rectangle.width();
    const double missingHeight = rectangle.width() / widthToHeight - rectangle.height();
    return rectangle.grownBy(std::max(0.0, missingWidth / 2), std::max(0.0, missingHeight / 2));
}

} // namespace

bool PageBox::meets(const PageBox& other) const
{
    return x < other.right() && other.x < right() && y < other.bottom() && other.y < bottom();
}

bool PageBox::contains(const PageBox& other) const
{
    return other.x >= x && other.y >= y && other.right() <= right() && other.bottom() <= bottom();
}

MapView::MapView(const GeographicBounds& extent, const PageBox& room)
    : choice_(chooseProjection(extent)),
      projection_(createProjection(choice_.definition)),
      window_(wholeWindow(choice_.centre))
{
    if (choice_.showsWorld)
        fitWorld(room);
    else
        fitExtent(extent, room);
    if (choice_.isAzimuthal)
        findHorizon();
    findWindow();
}

void MapView::fitWorld(const PageBox& room)
{
    PlaneLine outline = subdivide(ringOf({window_.left, window_.bottom, window_.right, window_.top}), true);
    projection_.project(outline);
    metres_ = boundsOf(outline);
    frame_ = {room.x, room.y, room.width, room.width * metres_.height() / metres_.width()};
}

void MapView::fitExtent(const GeographicBounds& extent, const PageBox& room)
{
    constexpr double kMargin = 0.1;            // on each side, as a share of the extent
    constexpr double kLeastMetres = 1'800'000; // so that a place can be recognised by the coasts around it
    constexpr double kLeastHeight = 0.55;      // as a share of the width
    PlaneRectangle ring = boundsOf(ringOf(extent));
    const double turn = wrapLongitude(middleOf(extent).x, choice_.centre.x) - (ring.left + ring.right) / 2;
    PlaneLine outline = subdivide(ringOf({ring.left + turn, ring.bottom, ring.right + turn, ring.top}), true);
    projection_.project(outline);
    PlaneRectangle metres = boundsOf(outline);
    metres = metres.grownBy(metres.width() * kMargin, metres.height() * kMargin);
    const double least = std::max(0.0, kLeastMetres - std::max(metres.width(), metres.height()));
    metres = metres.grownBy(least / 2, least / 2);
    const double height = std::clamp(room.width * metres.height() / metres.width(), room.width * kLeastHeight,
                                     std::max(room.height, room.width * kLeastHeight));
    metres_ = withProportions(metres, room.width / height);
    frame_ = {room.x, room.y, room.width, height};
}

void MapView::findHorizon()
{
    constexpr double kBeyond = 4;      // so that the edge of the extent is not that of the Earth's disc
    constexpr double kHemisphere = 75; // a larger extent is shown as a disc
    if (choice_.radius > kHemisphere) {
        showsDisc_ = true;
        horizon_.emplace(choice_.centre, choice_.radius + kBeyond);
        return;
    }
    double farthest = 0;
    for (const double x : {metres_.left, metres_.right})
        for (const double y : {metres_.bottom, metres_.top})
            farthest = std::max(farthest, std::hypot(x, y));
    const double half = std::min(1.0, farthest / (2 * kEarthRadiusInMetres));
    horizon_.emplace(choice_.centre,
                     std::min(2 * std::asin(half) / Embedded::kRadiansPerDegree + 1, kHalfCircle - kBeyond));
}

/// Longitudes and latitudes of points all over the frame.
std::vector<MapPoint> MapView::sampledPlaces() const
{
    constexpr int kSteps = 40;
    std::vector<MapPoint> points;
    for (int row = 0; row <= kSteps; ++row)
        for (int column = 0; column <= kSteps; ++column)
            points.push_back(
                {metres_.left + metres_.width() * column / kSteps, metres_.bottom + metres_.height() * row / kSteps});
    projection_.unproject(points);
    std::erase_if(points, [&](const MapPoint& place) { return !std::isfinite(place.x) || isPastHorizon(place); });
    for (MapPoint& place : points)
        place.x = wrapLongitude(place.x, choice_.centre.x);
    return points;
}

void MapView::findWindow()
{
    constexpr double kMargin = 0.05; // places between the sampled ones
    constexpr double kNearlyAll = 300;
    const PlaneRectangle whole = window_;
    const PlaneRectangle seen = boundsOf(sampledPlaces());
    window_ = seen.grownBy(seen.width() * kMargin, seen.height() * kMargin);
    const bool seesNorthPole = sees(kPole, choice_.centre.x);
    const bool seesSouthPole = sees(-kPole, choice_.centre.x);
    const bool seesAllAround = seesNorthPole || seesSouthPole || seen.width() > kNearlyAll;
    window_.top = seesNorthPole ? whole.top : std::min(window_.top, whole.top);
    window_.bottom = seesSouthPole ? whole.bottom : std::max(window_.bottom, whole.bottom);
    window_.left = seesAllAround ? whole.left : std::max(window_.left, whole.left);
    window_.right = seesAllAround ? whole.right : std::min(window_.right, whole.right);
    constexpr double kSteps = 90; // across the map
    step_ = std::clamp(std::min(window_.width(), window_.height()) / kSteps, 0.05, 1.0);
}

std::optional<MapPoint> MapView::at(double latitude, double longitude) const
{
    constexpr double kTolerance = 1e-6; // of what lies on the edge, in units of the page
    PlaneLine point{{wrapLongitude(longitude, choice_.centre.x), latitude}};
    if (isPastHorizon(point.front()))
        return std::nullopt;
    toPage(point);
    const PlaneRectangle frame{frame_.x, frame_.y, frame_.right(), frame_.bottom()};
    if (!frame.grownBy(kTolerance, kTolerance).contains(point.front()))
        return std::nullopt;
    return point.front();
}

std::optional<MapPoint> MapView::placeAtPoint(const MapPoint& point) const
{
    PlaneLine place{{metres_.left + (point.x - frame_.x) * metres_.width() / frame_.width,
                     metres_.top - (point.y - frame_.y) * metres_.height() / frame_.height}};
    projection_.unproject(place);
    if (!std::isfinite(place.front().x) || isPastHorizon(place.front()))
        return std::nullopt;
    // PROJ gives places for some points outside of the Earth's outline.
    const auto back = at(place.front().y, place.front().x);
    if (!back || std::hypot(back->x - point.x, back->y - point.y) > 1)
        return std::nullopt;
    return place.front();
}

std::optional<double> MapView::metresInAUnitAt(const MapPoint& point) const
{
    constexpr double kHalfBase = 2; // in units of the page
    const auto west = placeAtPoint({point.x - kHalfBase, point.y});
    const auto east = placeAtPoint({point.x + kHalfBase, point.y});
    if (!west || !east)
        return std::nullopt;
    return angleBetween(*west, *east) * Embedded::kRadiansPerDegree * kEarthRadiusInMetres / (2 * kHalfBase);
}

void MapView::toPage(PlaneLine& places) const
{
    projection_.project(places);
    for (MapPoint& point : places)
        point = {frame_.x + (point.x - metres_.left) * frame_.width / metres_.width(),
                 frame_.y + (metres_.top - point.y) * frame_.height / metres_.height()};
}

} // namespace Orvelcs
