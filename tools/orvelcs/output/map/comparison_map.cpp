#include "orvelcs/output/map/comparison_map.h"

#include <cmath>

#include <fmt/format.h>

#include "embedded/spatial_reference/catalog/catalog.h"
#include "orvelcs/output/map/comparison_layers.h"
#include "orvelcs/output/map/comparison_legend.h"
#include "orvelcs/output/text_width.h"

namespace Orvelcs {
namespace {

constexpr double kSheetWidth = 1000;
constexpr double kSheetMargin = 32;
constexpr double kNoteFontSize = 10;

std::string comparisonTitle(const PicturedPair& pair)
{
    return pair.source + " to " + pair.target;
}

std::string shortName(const PicturedCandidate& candidate)
{
    return candidate.code.empty() ? candidate.name : candidate.code;
}

/// What a screen reader reads in place of the picture.
std::string comparisonDescription(const PicturedComparison& comparison, const DistanceScale& scale)
{
    const auto describe = [](const PicturedCandidate& candidate) {
        return fmt::format("{} {}, accuracy {}, area of use: {}", candidate.codeText(), candidate.name,
                           candidate.accuracy, candidate.area.empty() ? "not known" : candidate.area);
    };
    return fmt::format("A map of how far apart two transformations put a point: {}. A: {}. B: {}. At {}: {}.",
                       rangeText(comparison.grid, scale), describe(comparison.first), describe(comparison.second),
                       pointText(comparison.pair.point),
                       comparison.distanceAtPoint ? distanceInMetres(*comparison.distanceAtPoint) : "no distance");
}

ShownOnMap drawDistanceMap(SvgWriter& svg, const MapDrawing& map, const PicturedComparison& comparison,
                           const DistanceScale& scale)
{
    ShownOnMap shown;
    ComparisonLayers layers(map, svg);
    map.drawSea(svg);
    map.drawLand(svg);
    map.drawGraticule(svg);
    layers.drawBands(comparison.grid, scale);
    svg.open("g", {{"class", "over-graticule"}});
    map.drawGraticule(svg);
    svg.close();
    layers.drawCoast();
    layers.drawContours();
    shown.areas = layers.drawAreas(comparison.first, comparison.second);
    const auto& metres = comparison.distanceAtPoint;
    shown.point = layers.drawPoint(comparison.pair.point, metres ? distanceInMetres(*metres) : "no distance");
    layers.drawContourLabels(scale);
    map.drawFrame(svg);
    map.drawDegrees(svg);
    return shown;
}

void drawNote(SvgWriter& svg, const std::string& text, const MapPoint& point, const char* anchor)
{
    svg.text(
        "text",
        {{"class", "muted"}, {"x", point.x}, {"y", point.y}, {"font-size", kNoteFontSize}, {"text-anchor", anchor}},
        text);
}

/// Draws lines of at most the sheet's width. Returns the baseline below them.
double drawHeadingLines(SvgWriter& svg, const std::string& text, const char* cssClass, double fontSize, double baseline)
{
    constexpr std::size_t kMostLines = 3;
    constexpr double kBoldWidth = 1.13;
    constexpr double kSpacing = 1.25;
    for (const std::string& line :
         fitIntoLines(text, fontSize * kBoldWidth, kSheetWidth - 2 * kSheetMargin, kMostLines)) {
        svg.text("text", {{"class", cssClass}, {"x", kSheetMargin}, {"y", baseline}, {"font-size", fontSize}}, line);
        baseline += fontSize * kSpacing;
    }
    return baseline;
}

/// Returns the lower edge.
double drawHeading(SvgWriter& svg, const PicturedComparison& comparison)
{
    constexpr double kFirstBaseline = 44;
    constexpr double kHeadingSize = 20;
    constexpr double kSubtitleSize = 12;
    constexpr double kCloser = 5; // a subtitle to its title
    const double below =
        drawHeadingLines(svg, comparisonTitle(comparison.pair), "text bold", kHeadingSize, kFirstBaseline);
    return drawHeadingLines(svg,
                            fmt::format("How far apart A, {}, and B, {}, put a point", shortName(comparison.first),
                                        shortName(comparison.second)),
                            "muted", kSubtitleSize, below - kCloser);
}

} // namespace

std::string drawComparisonMap(const PicturedComparison& comparison)
{
    constexpr double kLeft = 40; // of the map, for degrees
    constexpr double kRight = 14;
    constexpr double kBelowHeading = 5;
    constexpr double kMostHeight = 720;
    constexpr double kBelowMap = 40; // to the scale bar
    constexpr double kAboveLegend = 26;
    const double width = kSheetWidth - 2 * kSheetMargin;
    const DistanceScale scale = makeDistanceScale(comparison.grid.metres);
    SvgWriter heading;
    const double top = drawHeading(heading, comparison) + kBelowHeading;
    const MapDrawing map(comparison.pair.extent, {kSheetMargin + kLeft, top, width - kLeft - kRight, kMostHeight});
    const double notes = map.view().frame().bottom() + kBelowMap;
    SvgWriter picture;
    const ShownOnMap shown = drawDistanceMap(picture, map, comparison, scale);
    SvgWriter legend;
    const double legendTop = notes + kAboveLegend;
    const double footer =
        legendTop + drawComparisonLegend(legend, comparison, scale, shown, {kSheetMargin, legendTop, width, 0});

    SvgWriter svg;
    openSvg(svg, kSheetWidth, std::ceil(footer + kSheetMargin), comparisonTitle(comparison.pair),
            comparisonDescription(comparison, scale), comparisonStyle());
    svg.element("rect", {{"class", "page"}, {"width", "100%"}, {"height", "100%"}});
    svg.append(heading);
    svg.append(picture);
    map.drawScaleBar(svg, {map.view().frame().x, notes});
    drawNote(svg, map.describe(), {map.view().frame().right(), notes}, "end");
    svg.append(legend);
    drawNote(svg, Embedded::projVersion() + ", " + Embedded::catalogVersion(), {kSheetMargin, footer}, "start");
    svg.close();
    return svg.result();
}

} // namespace Orvelcs
