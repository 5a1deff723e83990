#include "orvelcs/output/map/contours.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace Orvelcs {
namespace {

constexpr std::size_t kNoEdge = std::numeric_limits<std::size_t>::max();

/// Marches around the squares between four nodes. The grid has a margin without distances, which closes all rings.
class ContourTracer {
public:
    ContourTracer(const DistanceGrid& grid, double level)
        : grid_(grid),
          level_(level),
          width_(grid.nodes.columns() + 2),
          height_(grid.nodes.rows() + 2),
          next_(2 * width_ * height_, kNoEdge)
    {
        for (std::size_t row = 0; row + 1 < height_; ++row)
            for (std::size_t column = 0; column + 1 < width_; ++column)
                crossSquare({column, row});
    }

    Contour trace()
    {
        Contour contour;
        for (std::size_t edge = 0; edge < next_.size(); ++edge)
            if (next_[edge] != kNoEdge)
                addRing(takeRing(edge), contour);
        return contour;
    }

private:
    struct Node {
        std::size_t column;
        std::size_t row;
    };

    /// A side of a square, from its node inside of the ring to the other one where the ring crosses it.
    struct Side {
        std::size_t edge;
        Node from;
        Node to;
    };

    double value(const Node& node) const
    {
        const bool isMargin =
            node.row == 0 || node.column == 0 || node.row > grid_.nodes.rows() || node.column > grid_.nodes.columns();
        const double metres = isMargin ? std::nan("") : grid_.at(node.row - 1, node.column - 1);
        return std::isnan(metres) ? -std::numeric_limits<double>::infinity() : metres;
    }

    bool isInside(const Node& node) const { return std::isfinite(value(node)) && value(node) >= level_; }

    MapPoint place(const Node& node) const
    {
        const auto clamped = [](const std::vector<double>& degrees, std::size_t number) {
            return degrees[std::clamp<std::size_t>(number, 1, degrees.size()) - 1];
        };
        return {clamped(grid_.nodes.longitudes, node.column), clamped(grid_.nodes.latitudes, node.row)};
    }

    /// Joins where the ring leaves the square to where it comes in, with the inside on the left.
    void crossSquare(const Node& corner)
    {
        const auto [column, row] = corner;
        const std::size_t below = 2 * (row * width_ + column);
        const std::array<Side, 4> sides{{{below, corner, {column + 1, row}},
                                         {below + 3, {column + 1, row}, {column + 1, row + 1}},
                                         {below + 2 * width_, {column + 1, row + 1}, {column, row + 1}},
                                         {below + 1, {column, row + 1}, corner}}};
        std::vector<std::size_t> crossings; // counterclockwise, beginning with one out of the inside
        for (std::size_t index = 0; index < sides.size(); ++index)
            if (isInside(sides[index].from) != isInside(sides[index].to))
                crossings.push_back(index);
        if (crossings.empty())
            return;
        if (!isInside(sides[crossings.front()].from))
            std::rotate(crossings.begin(), crossings.begin() + 1, crossings.end());
        const double middle =
            (value(sides[0].from) + value(sides[1].from) + value(sides[2].from) + value(sides[3].from)) / 4;
        const bool joins = middle >= level_; // the two opposite corners of a saddle
        for (std::size_t index = 0; index < crossings.size(); index += 2) {
            const std::size_t into = joins ? index + 1 : (index + crossings.size() - 1) % crossings.size();
            next_[sides[crossings[index]].edge] = sides[crossings[into]].edge;
        }
    }

    /// Takes the edges of a ring out of what is left to trace.
    std::vector<std::size_t> takeRing(std::size_t edge)
    {
        std::vector<std::size_t> ring;
        while (next_[edge] != kNoEdge) {
            ring.push_back(edge);
            edge = std::exchange(next_[edge], kNoEdge);
        }
        return ring;
    }

    struct Crossing {
        MapPoint place;
        bool isOnLevel; // not where the distances end
    };

    Crossing crossingOf(std::size_t edge) const
    {
        const Node start{edge / 2 % width_, edge / 2 / width_};
        const bool isUpright = edge % 2 == 1;
        const Node end{start.column + (isUpright ? 0 : 1), start.row + (isUpright ? 1 : 0)};
        const Node& inside = isInside(start) ? start : end;
        const Node& outside = isInside(start) ? end : start;
        if (!std::isfinite(value(outside)))
            return {place(inside), false};
        const double share = (level_ - value(outside)) / (value(inside) - value(outside));
        const MapPoint from = place(outside);
        const MapPoint to = place(inside);
        return {{from.x + (to.x - from.x) * share, from.y + (to.y - from.y) * share}, true};
    }

    void addRing(const std::vector<std::size_t>& edges, Contour& contour) const
    {
        PlaneLine ring;
        PlaneLine line;
        std::vector<PlaneLine> lines;
        const auto endLine = [&] {
            if (line.size() > 1)
                lines.push_back(line);
            line.clear();
        };
        for (const std::size_t edge : edges) {
            const Crossing crossing = crossingOf(edge);
            if (ring.empty() || !(ring.back() == crossing.place))
                ring.push_back(crossing.place);
            if (crossing.isOnLevel)
                line.push_back(crossing.place);
            else
                endLine();
        }
        joinEnds(edges, line, lines);
        endLine();
        contour.rings.push_back(std::move(ring));
        contour.lines.insert(contour.lines.end(), lines.begin(), lines.end());
    }

    /// The ring's last line goes on where the ring began.
    void joinEnds(const std::vector<std::size_t>& edges, PlaneLine& last, std::vector<PlaneLine>& lines) const
    {
        const Crossing first = crossingOf(edges.front());
        if (!first.isOnLevel || last.empty())
            return;
        if (lines.empty() || !(lines.front().front() == first.place)) {
            last.push_back(first.place);
            return;
        }
        last.insert(last.end(), lines.front().begin(), lines.front().end());
        lines.erase(lines.begin());
    }

    const DistanceGrid& grid_;
    double level_;
    std::size_t width_;
    std::size_t height_;
    std::vector<std::size_t> next_; // by the edge where the ring leaves a square
};

} // namespace

Contour traceContour(const DistanceGrid& grid, double level)
{
    return ContourTracer(grid, level).trace();
}

} // namespace Orvelcs
