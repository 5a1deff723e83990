// The layers that a map of distances adds to a map.
#pragma once

#include <string>
#include <vector>

#include "orvelcs/output/map/distance_scale.h"
#include "orvelcs/output/map/map_drawing.h"
#include "orvelcs/output/map/pictured_comparison.h"

namespace Orvelcs {

/// The rules of the classes that the layers and the legend use. Colours of data are the same in the dark.
std::string comparisonStyle();

/// Whether anything of the outlines is seen.
struct ShownAreas {
    bool first = false;
    bool second = false;
};

/// Draws the layers and finds free places for their labels.
class ComparisonLayers {
public:
    ComparisonLayers(const MapDrawing& map, SvgWriter& svg) : map_(map), svg_(svg), taken_(map.degreesOnMap()) {}

    /// The bands of the scale, each in its colour, the larger distances above the smaller ones. Keeps the lines between
    /// them.
    void drawBands(const DistanceGrid& grid, const DistanceScale& scale);
    /// The coast, which is seen on light and on dark colours.
    void drawCoast();
    /// The lines between the bands.
    void drawContours();
    /// The numbers of the contours, where they have room; after everything else that has labels.
    void drawContourLabels(const DistanceScale& scale);
    /// The outlines of the areas of A and B.
    ShownAreas drawAreas(const PicturedCandidate& first, const PicturedCandidate& second);
    /// Returns false when the point is not on the map.
    bool drawPoint(const Embedded::GeographicPoint& point, const std::string& label);

private:
    struct ContourLine {
        std::size_t bound;
        PlaneLine line; // of the page
    };

    bool isFree(const PageBox& box) const;
    /// Takes the box for a label if it is free. Returns whether it was.
    bool take(const PageBox& box);
    void drawLetter(const std::vector<PlaneLine>& outline, char letter);
    void drawContourLabel(const ContourLine& contour, const std::string& text);

    const MapDrawing& map_;
    SvgWriter& svg_;
    std::vector<PageBox> taken_;
    std::vector<ContourLine> contours_;
};

/// The sign of the point, with its middle there.
void drawPointSign(SvgWriter& svg, const MapPoint& point);
/// A box with the letter of a candidate, with its middle there.
void drawLetterBox(SvgWriter& svg, char letter, const MapPoint& middle);

} // namespace Orvelcs
