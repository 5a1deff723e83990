#include "orvelcs/output/map/area_labels.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <string>

#include "orvelcs/output/text_width.h"

namespace Orvelcs {
namespace {

constexpr double kTiny = 4; // in units of the page

/// A point of the page for the middle of a number.
struct NumberPoint {
    MapPoint point;
    int otherAreas = 0;  // in which it lies, too
    double distance = 0; // from the middle of the area
};

int countOthers(const std::vector<MappedArea>& areas, const MappedArea& area, double latitude, double longitude)
{
    return static_cast<int>(std::ranges::count_if(areas, [&](const MappedArea& other) {
        return other.number != area.number && containsPlace(other.bounds, latitude, longitude);
    }));
}

/// Points of the page all over what is seen of the area: those in the fewest other areas first, then those near its
/// middle.
std::vector<MapPoint> pointsIn(const MappedArea& area, const std::vector<MappedArea>& areas, const MapView& view)
{
    constexpr int kSteps = 24; // an even number, so that the middle is one of the points
    const GeographicBounds& bounds = area.bounds;
    std::vector<NumberPoint> points;
    MapPoint sum;
    for (int row = 1; row < kSteps; ++row)
        for (int column = 1; column < kSteps; ++column) {
            const double latitude = bounds.south + (bounds.north - bounds.south) * row / kSteps;
            const double longitude = bounds.west + bounds.longitudinalExtent() * column / kSteps;
            if (const auto point = view.at(latitude, longitude)) {
                points.push_back({*point, countOthers(areas, area, latitude, longitude)});
                sum = {sum.x + point->x, sum.y + point->y};
            }
        }
    if (points.empty())
        return {view.frame().middle()};
    const auto count = static_cast<double>(points.size());
    for (NumberPoint& candidate : points) // rounded, so that the order does not depend on how a machine rounds
        candidate.distance =
            std::round(std::hypot(candidate.point.x - sum.x / count, candidate.point.y - sum.y / count));
    std::ranges::stable_sort(
        points, {}, [](const NumberPoint& candidate) { return std::pair(candidate.otherAreas, candidate.distance); });
    std::vector<MapPoint> sorted;
    std::ranges::transform(points, std::back_inserter(sorted), &NumberPoint::point);
    return sorted;
}

double sizeOf(const PlaneRectangle& bounds)
{
    return std::max(0.0, bounds.width()) * std::max(0.0, bounds.height());
}

} // namespace

double numberFontSize(std::size_t areaCount)
{
    constexpr std::size_t kFew = 30;
    constexpr std::size_t kMany = 100;
    return areaCount <= kFew ? 12 : areaCount <= kMany ? 10 : 8.5;
}

PageBox numberBox(int number, double fontSize)
{
    constexpr double kPadding = 0.35; // on either side, as a share of the font's size
    constexpr double kHeight = 1.35;
    const double width = textWidth(std::to_string(number), fontSize) + 2 * kPadding * fontSize;
    return {0, 0, width, fontSize * kHeight};
}

std::vector<AreaLabel> labelAreas(const std::vector<MappedArea>& areas, const MapView& view,
                                  std::vector<PageBox> obstacles)
{
    const double fontSize = numberFontSize(areas.size());
    std::vector<AreaLabel> labels(areas.size());
    std::vector<WantedLabel> wanted;
    std::vector<double> sizes;
    for (std::size_t index = 0; index < areas.size(); ++index) {
        const std::vector<MapPoint> points = pointsIn(areas[index], areas, view);
        const PlaneRectangle seen = boundsOf(points);
        const PageBox box = numberBox(areas[index].number, fontSize);
        labels[index].anchor = points.front();
        labels[index].isTiny = seen.width() < kTiny && seen.height() < kTiny;
        // The number would hide an area that is smaller, and so do those of others.
        const bool isHidden = seen.width() < box.width && seen.height() < box.height;
        if (isHidden)
            obstacles.push_back({points.front().x - kTiny / 2, points.front().y - kTiny / 2, kTiny, kTiny});
        wanted.push_back({points.front(), isHidden ? std::vector<MapPoint>() : points, box.width, box.height});
        sizes.push_back(std::round(sizeOf(seen)));
    }
    // A small area has fewer places for its number.
    std::vector<std::size_t> order(areas.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, {}, [&](std::size_t index) { return sizes[index]; });
    std::vector<WantedLabel> ordered;
    for (const std::size_t index : order)
        ordered.push_back(std::move(wanted[index]));
    const std::vector<PlacedLabel> placed = placeLabels(ordered, view.frame(), std::move(obstacles));
    for (std::size_t index = 0; index < order.size(); ++index)
        labels[order[index]].label = placed[index];
    return labels;
}

} // namespace Orvelcs
