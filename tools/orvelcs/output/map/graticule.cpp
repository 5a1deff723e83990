#include "orvelcs/output/map/graticule.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "orvelcs/output/map/sphere.h"
#include "orvelcs/output/svg_writer.h"
#include "orvelcs/output/text_width.h"

namespace Orvelcs {
namespace {

constexpr double kRoundSteps[] = {0.1, 0.2, 0.5, 1, 2, 5, 10, 15, 20, 30};
constexpr double kMeridianCount = 7; // on a map, about
constexpr double kParallelCount = 5;
constexpr double kDegreesGap = 5; // between the frame and a label

double roundStep(double span, double count)
{
    for (const double step : kRoundSteps)
        if (step >= span / count)
            return step;
    return std::end(kRoundSteps)[-1];
}

std::vector<double> multiples(double step, double from, double to)
{
    std::vector<double> all;
    for (double number = std::ceil(from / step); number * step <= to; ++number)
        all.push_back(number * step);
    return all;
}

std::string degreesText(double degrees, const char* positive, const char* negative)
{
    return svgNumber(std::abs(degrees)) + "\u00B0" + (degrees > 0 ? positive : degrees < 0 ? negative : "");
}

enum class Side { left, right, top, bottom, inside };

/// At which edge of the frame the end of a line lies.
Side sideOf(const MapPoint& end, const PageBox& frame)
{
    constexpr double kNear = 0.6;
    if (std::abs(end.y - frame.bottom()) < kNear)
        return Side::bottom;
    if (std::abs(end.y - frame.y) < kNear)
        return Side::top;
    if (std::abs(end.x - frame.x) < kNear)
        return Side::left;
    return std::abs(end.x - frame.right()) < kNear ? Side::right : Side::inside;
}

GraticuleLabel labelAt(std::string text, const MapPoint& point, const char* anchor)
{
    const double width = textWidth(text, kGraticuleFontSize);
    const double left = anchor[0] == 's' ? point.x : anchor[0] == 'e' ? point.x - width : point.x - width / 2;
    return {std::move(text), point, anchor, {left, point.y - kGraticuleFontSize, width, kGraticuleFontSize + 2}};
}

GraticuleLabel labelBeside(std::string text, const MapPoint& end, Side side)
{
    constexpr double kBaseline = kGraticuleFontSize * 0.35; // below the middle of a text
    switch (side) {
    case Side::left:
        return labelAt(std::move(text), {end.x - kDegreesGap, end.y + kBaseline}, "end");
    case Side::right:
        return labelAt(std::move(text), {end.x + kDegreesGap, end.y + kBaseline}, "start");
    case Side::top:
        return labelAt(std::move(text), {end.x, end.y - kDegreesGap}, "middle");
    default:
        return labelAt(std::move(text), {end.x, end.y + kDegreesGap + kGraticuleFontSize * 0.8}, "middle");
    }
}

class GraticuleMaker {
public:
    explicit GraticuleMaker(const MapView& view)
        : view_(view),
          window_(view.window()),
          isPolar_(view.projection().isAzimuthal && std::abs(view.projection().centre.y) == kPole),
          seesPole_(view.projection().isAzimuthal && window_.width() > kHalfCircle)
    {
        const double parallelStep = roundStep(window_.height(), view.projection().showsWorld ? 6 : kParallelCount);
        const double span = window_.width();
        addParallels(parallelStep);
        addMeridians(span > kHalfCircle ? 30 : roundStep(span, kMeridianCount), parallelStep);
    }

    Graticule take() { return std::move(graticule_); }

private:
    void addParallels(double step)
    {
        for (const double latitude : multiples(step, window_.bottom, window_.top)) {
            if (std::abs(latitude) >= kPole)
                continue;
            const auto lines = view_.lines({{window_.left, latitude}, {window_.right, latitude}});
            std::ranges::copy(lines, std::back_inserter(graticule_.lines));
            if (isPolar_ || !labelParallelEnd(lines, latitude))
                labelInside(latitude);
        }
    }

    void addMeridians(double step, double parallelStep)
    {
        for (const double longitude : multiples(step, window_.left, window_.right)) {
            const auto [south, north] = meridianEnds(longitude, parallelStep);
            const auto lines = view_.lines({{longitude, south}, {longitude, north}});
            std::ranges::copy(lines, std::back_inserter(graticule_.lines));
            for (const PlaneLine& line : lines)
                for (const MapPoint& end : {line.front(), line.back()})
                    labelMeridianEnd(longitude, end);
        }
    }

    /// Where many meridians would run into a pole, only each third does.
    std::pair<double, double> meridianEnds(double longitude, double parallelStep) const
    {
        constexpr double kQuarter = 90;
        constexpr double kWidestGap = 10; // around the pole
        const bool isWhole = view_.projection().showsWorld || std::abs(std::remainder(longitude, kQuarter)) < 1e-9;
        const double limit = isWhole ? kPole : kPole - std::min(parallelStep, kWidestGap);
        return {std::max(window_.bottom, -limit), std::min(window_.top, limit)};
    }

    void labelMeridianEnd(double longitude, const MapPoint& end)
    {
        const Side side = sideOf(end, view_.frame());
        if (side == Side::bottom || (seesPole_ && side != Side::inside))
            add(labelBeside(longitudeText(longitude), end, side));
        else if (view_.showsDisc() && longitude - window_.left > 1e-3)
            labelOnDisc(longitude, end);
    }

    /// Of a map that is a disc: beside the disc, in the direction from its centre.
    void labelOnDisc(double longitude, const MapPoint& end)
    {
        const MapPoint centre = view_.frame().middle();
        const double distance = std::hypot(end.x - centre.x, end.y - centre.y);
        constexpr double kNearPole = 0.3;
        if (distance < view_.frame().height * kNearPole)
            return;
        constexpr double kBeside = 16;
        const double share = (distance + kBeside) / distance;
        GraticuleLabel label =
            labelAt(longitudeText(longitude),
                    {centre.x + (end.x - centre.x) * share, centre.y + (end.y - centre.y) * share + 3}, "middle");
        label.isInside = true;
        add(std::move(label));
    }

    /// At the left edge of the map, else at the right one. Returns false where the parallel reaches neither.
    bool labelParallelEnd(const std::vector<PlaneLine>& lines, double latitude)
    {
        std::vector<MapPoint> ends;
        for (const PlaneLine& line : lines)
            ends.insert(ends.end(), {line.front(), line.back()});
        std::ranges::sort(ends, {}, &MapPoint::x);
        if (!ends.empty() && view_.projection().showsWorld)
            return add(labelBeside(latitudeText(latitude), ends.front(), Side::left));
        for (const Side side : {Side::left, Side::right})
            for (const MapPoint& end : ends)
                if (sideOf(end, view_.frame()) == side)
                    return add(labelBeside(latitudeText(latitude), end, side));
        return false;
    }

    /// On the meridian that runs down from the pole, or through the middle of the map.
    void labelInside(double latitude)
    {
        const bool isSouthPolar = isPolar_ && view_.projection().centre.y < 0;
        const double longitude = view_.projection().centre.x + (isSouthPolar ? kHalfCircle : 0);
        const auto point = view_.at(latitude, longitude);
        if (!point)
            return;
        GraticuleLabel label = labelAt(latitudeText(latitude), {point->x + 4, point->y - 4}, "start");
        label.isInside = true;
        if (view_.frame().contains(label.box))
            add(std::move(label));
    }

    /// Returns true, although a label that would meet another is left out.
    bool add(GraticuleLabel label)
    {
        const auto meets = [&](const GraticuleLabel& other) { return other.box.meets(label.box); };
        if (std::ranges::none_of(graticule_.labels, meets))
            graticule_.labels.push_back(std::move(label));
        return true;
    }

    const MapView& view_;
    const PlaneRectangle& window_;
    bool isPolar_;
    bool seesPole_;
    Graticule graticule_;
};

} // namespace

std::string longitudeText(double longitude)
{
    const double wrapped = wrapLongitude(longitude, 0);
    return std::abs(wrapped) == kHalfCircle ? "180\u00B0" : degreesText(wrapped, "E", "W");
}

std::string latitudeText(double latitude)
{
    return degreesText(latitude, "N", "S");
}

Graticule makeGraticule(const MapView& view)
{
    return GraticuleMaker(view).take();
}

} // namespace Orvelcs
