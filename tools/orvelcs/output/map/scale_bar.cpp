#include "orvelcs/output/map/scale_bar.h"

#include <algorithm>
#include <cmath>

#include "orvelcs/output/svg_writer.h"

namespace Orvelcs {
namespace {

constexpr double kMetresInAKilometre = 1000;

/// The largest of 1, 2 and 5 times a power of ten up to the distance.
double roundDistance(double distance)
{
    const double power = std::pow(10, std::floor(std::log10(distance)));
    for (const double factor : {5, 2})
        if (factor * power <= distance)
            return factor * power;
    return power;
}

} // namespace

std::optional<ScaleBar> makeScaleBar(const MapView& view)
{
    constexpr double kEven = 1.06; // the largest scale over the smallest one
    constexpr double kInset = 0.05;
    constexpr double kLongest = 0.22; // of the frame's width
    const PageBox& frame = view.frame();
    const auto middle = view.metresInAUnitAt(frame.middle());
    if (!middle)
        return std::nullopt;
    double least = *middle;
    double most = *middle;
    for (const double x : {kInset, 0.5, 1 - kInset})
        for (const double y : {kInset, 0.5, 1 - kInset}) {
            const auto scale = view.metresInAUnitAt({frame.x + frame.width * x, frame.y + frame.height * y});
            if (!scale)
                return std::nullopt;
            least = std::min(least, *scale);
            most = std::max(most, *scale);
        }
    if (most > least * kEven)
        return std::nullopt;
    const double distance = roundDistance(frame.width * kLongest * *middle);
    return ScaleBar{distance / *middle, svgNumber(distance / kMetresInAKilometre) + " km"};
}

} // namespace Orvelcs
