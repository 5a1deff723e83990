#include "orvelcs/output/map/label_placement.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

#include "orvelcs/cli/failure.h"

namespace Orvelcs {
namespace {

constexpr double kLabelGap = 1.5; // between labels

PageBox boxAround(const MapPoint& middle, const WantedLabel& label)
{
    return {middle.x - label.width / 2, middle.y - label.height / 2, label.width, label.height};
}

class LabelPlacer {
public:
    LabelPlacer(const PageBox& frame, std::vector<PageBox> obstacles) : frame_(frame), taken_(std::move(obstacles)) {}

    PlacedLabel place(const WantedLabel& label)
    {
        for (const MapPoint& point : label.points)
            if (isFree(boxAround(point, label)))
                return take(boxAround(point, label), false);
        const auto beside = freeBoxAround(label.anchor, label);
        if (!beside)
            throw Failure("map", "has no room for so many numbers; give fewer systems");
        return take(*beside, true);
    }

private:
    bool isFree(const PageBox& box) const
    {
        const PageBox wide{box.x - kLabelGap, box.y - kLabelGap, box.width + 2 * kLabelGap, box.height + 2 * kLabelGap};
        return frame_.contains(wide) &&
               std::ranges::none_of(taken_, [&](const PageBox& other) { return other.meets(wide); });
    }

    PlacedLabel take(const PageBox& box, bool needsLeader)
    {
        taken_.push_back(box);
        return {box, needsLeader};
    }

    /// The nearest free place on circles around the point.
    std::optional<PageBox> freeBoxAround(const MapPoint& point, const WantedLabel& label) const
    {
        constexpr double kRing = 6; // between circles
        const double farthest = std::hypot(frame_.width, frame_.height);
        for (double radius = 2 * kRing; radius < farthest; radius += kRing) {
            const int count = static_cast<int>(std::ceil(2 * std::numbers::pi * radius / (2 * kRing)));
            for (int index = 0; index < count; ++index) {
                const double angle = 2 * std::numbers::pi * index / count;
                const PageBox box =
                    boxAround({point.x + radius * std::sin(angle), point.y - radius * std::cos(angle)}, label);
                if (isFree(box))
                    return box;
            }
        }
        return std::nullopt;
    }

    PageBox frame_;
    std::vector<PageBox> taken_;
};

} // namespace

std::vector<PlacedLabel> placeLabels(const std::vector<WantedLabel>& labels, const PageBox& frame,
                                     std::vector<PageBox> obstacles)
{
    LabelPlacer placer(frame, std::move(obstacles));
    std::vector<PlacedLabel> placed;
    for (const WantedLabel& label : labels)
        placed.push_back(placer.place(label));
    return placed;
}

} // namespace Orvelcs
