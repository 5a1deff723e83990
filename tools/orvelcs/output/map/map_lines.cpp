// What a map shows of lines and areas.
#include <algorithm>
#include <cmath>

#include "orvelcs/output/map/map_view.h"
#include "orvelcs/output/map/sphere.h"

namespace Orvelcs {
namespace {

PlaneLine turned(PlaneLine line, double degrees)
{
    for (MapPoint& place : line)
        place.x += degrees;
    return line;
}

double distanceFromChord(const MapPoint& point, const MapPoint& start, const MapPoint& end)
{
    const MapPoint chord{end.x - start.x, end.y - start.y};
    const MapPoint way{point.x - start.x, point.y - start.y};
    const double square = chord.x * chord.x + chord.y * chord.y;
    const double share = square > 0 ? std::clamp((way.x * chord.x + way.y * chord.y) / square, 0.0, 1.0) : 0;
    return std::hypot(way.x - share * chord.x, way.y - share * chord.y);
}

/// Leaves out points that lie nearer to the line through the others than anybody sees.
PlaneLine thinned(const PlaneLine& line)
{
    constexpr double kTolerance = 0.12; // in units of the page
    std::vector<bool> keeps(line.size(), false);
    keeps.front() = keeps.back() = true;
    std::vector<std::pair<std::size_t, std::size_t>> spans{{0, line.size() - 1}};
    while (!spans.empty()) {
        const auto [start, end] = spans.back();
        spans.pop_back();
        double farthest = kTolerance;
        std::size_t where = start;
        for (std::size_t index = start + 1; index < end; ++index)
            if (const double distance = distanceFromChord(line[index], line[start], line[end]); distance > farthest) {
                farthest = distance;
                where = index;
            }
        if (where == start)
            continue;
        keeps[where] = true;
        spans.insert(spans.end(), {{start, where}, {where, end}});
    }
    PlaneLine thin;
    for (std::size_t index = 0; index < line.size(); ++index)
        if (keeps[index])
            thin.push_back(line[index]);
    return thin;
}

/// Splits a line at points that the projection cannot show.
std::vector<PlaneLine> finiteParts(const PlaneLine& line)
{
    std::vector<PlaneLine> parts(1);
    for (const MapPoint& point : line) {
        if (std::isfinite(point.x))
            parts.back().push_back(point);
        else if (!parts.back().empty())
            parts.emplace_back();
    }
    std::erase_if(parts, [](const PlaneLine& part) { return part.size() < 2; });
    return parts;
}

PlaneRectangle rectangleOf(const PageBox& box)
{
    return {box.x, box.y, box.right(), box.bottom()};
}

bool isAllAround(const GeographicBounds& bounds)
{
    return bounds.longitudinalExtent() >= kCircle;
}

} // namespace

PlaneLine MapView::subdivide(const PlaneLine& line, bool isClosed) const
{
    PlaneLine fine;
    fine.reserve(line.size() * 2);
    const std::size_t edges = line.size() - (isClosed ? 0 : 1);
    for (std::size_t index = 0; index < edges; ++index) {
        const MapPoint& from = line[index];
        const MapPoint& to = line[index + 1 < line.size() ? index + 1 : 0];
        const MapPoint extent{to.x - from.x, to.y - from.y};
        const int steps = static_cast<int>(std::ceil(std::max(std::abs(extent.x), std::abs(extent.y)) / step_));
        fine.push_back(from);
        for (int step = 1; step < steps; ++step)
            fine.push_back({from.x + extent.x * step / steps, from.y + extent.y * step / steps});
    }
    if (!isClosed)
        fine.push_back(line.back());
    return fine;
}

/// By how many degrees what lies within the bounds can be turned to lie in the window.
std::vector<double> MapView::turnsInWindow(const PlaneRectangle& bounds) const
{
    std::vector<double> turns;
    if (bounds.bottom > window_.top || bounds.top < window_.bottom)
        return turns;
    for (double turn = std::ceil((window_.left - bounds.right) / kCircle) * kCircle;
         bounds.left + turn <= window_.right; turn += kCircle)
        turns.push_back(turn);
    return turns;
}

std::vector<PlaneLine> MapView::areas(const PlaneLine& ring) const
{
    std::vector<PlaneLine> seen;
    for (const double turn : turnsInWindow(boundsOf(ring))) {
        PlaneLine part = clipRing(turned(ring, turn), window_);
        if (part.size() < 3)
            continue;
        part = subdivide(part, true);
        if (horizon_)
            part = horizon_->moveOnto(part);
        toPage(part);
        std::erase_if(part, [](const MapPoint& point) { return !std::isfinite(point.x); });
        part = clipRing(std::move(part), rectangleOf(frame_));
        if (part.size() >= 3)
            seen.push_back(thinned(part));
    }
    return seen;
}

std::vector<PlaneLine> MapView::lines(const PlaneLine& line) const
{
    std::vector<PlaneLine> seen;
    for (const double turn : turnsInWindow(boundsOf(line)))
        for (const PlaneLine& inWindow : clipLine(turned(line, turn), window_)) {
            const PlaneLine fine = subdivide(inWindow, false);
            for (PlaneLine& part : horizon_ ? horizon_->cut(fine) : std::vector<PlaneLine>{fine}) {
                toPage(part);
                for (const PlaneLine& finite : finiteParts(part))
                    for (const PlaneLine& inFrame : clipLine(finite, rectangleOf(frame_)))
                        seen.push_back(thinned(inFrame));
            }
        }
    return seen;
}

std::vector<PlaneLine> MapView::outline(const GeographicBounds& bounds) const
{
    const PlaneLine ring = ringOf(bounds);
    std::vector<PlaneLine> edges;
    if (isAllAround(bounds)) {
        for (const double latitude : {bounds.south, bounds.north})
            if (std::abs(latitude) < kPole)
                edges.push_back({{ring[0].x, latitude}, {ring[1].x, latitude}});
    } else {
        edges.push_back({ring[0], ring[1], ring[2], ring[3], ring[0]});
    }
    std::vector<PlaneLine> seen;
    for (const PlaneLine& edge : edges)
        std::ranges::move(lines(edge), std::back_inserter(seen));
    return seen;
}

PlaneLine MapView::edge() const
{
    if (choice_.showsWorld)
        return disc().front();
    if (!showsDisc_)
        return {{frame_.x, frame_.y},
                {frame_.right(), frame_.y},
                {frame_.right(), frame_.bottom()},
                {frame_.x, frame_.bottom()}};
    PlaneLine circle = horizon_->circle();
    toPage(circle);
    return circle;
}

std::vector<PlaneLine> MapView::disc() const
{
    return areas({{window_.left, window_.bottom},
                  {window_.right, window_.bottom},
                  {window_.right, window_.top},
                  {window_.left, window_.top}});
}

} // namespace Orvelcs
