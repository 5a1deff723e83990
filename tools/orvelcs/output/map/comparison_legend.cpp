#include "orvelcs/output/map/comparison_legend.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "orvelcs/output/svg_path.h"
#include "orvelcs/output/text_width.h"

namespace Orvelcs {
namespace {

constexpr double kLegendFontSize = 11;
constexpr double kLegendLine = 15;
constexpr double kBandHeight = 16;
constexpr double kLineSample = 46;
constexpr double kLegendColumnGap = 28;

void drawLine(SvgWriter& svg, const std::string& text, const char* cssClass, const MapPoint& point)
{
    svg.text("text", {{"class", cssClass}, {"x", point.x}, {"y", point.y}, {"font-size", kLegendFontSize}}, text);
}

/// Returns the baseline below the text.
double drawWrapped(SvgWriter& svg, const std::string& text, const char* cssClass, MapPoint point, double width)
{
    constexpr std::size_t kMostLines = 3;
    constexpr double kWidest = 1.13; // of bold characters
    for (const std::string& line : fitIntoLines(text, kLegendFontSize * kWidest, width, kMostLines)) {
        drawLine(svg, line, cssClass, point);
        point.y += kLegendLine;
    }
    return point.y;
}

void drawBounds(SvgWriter& svg, const DistanceScale& scale, const MapPoint& corner, double bandWidth)
{
    constexpr double kFontSize = 10;
    constexpr double kBelow = 12;
    const std::size_t shown = scale.isUniform ? 0 : scale.bounds.size();
    for (std::size_t index = 0; index < shown; ++index)
        svg.text("text",
                 {{"class", "text"},
                  {"x", corner.x + bandWidth * static_cast<double>(index)},
                  {"y", corner.y + kBandHeight + kBelow},
                  {"text-anchor", "middle"},
                  {"font-size", kFontSize}},
                 scale.boundText(index));
}

void drawSwatch(SvgWriter& svg, const std::string& cssClass, const std::string& colour, const PageBox& box)
{
    SvgAttributes attributes{
        {"class", cssClass}, {"x", box.x}, {"y", box.y}, {"width", box.width}, {"height", box.height}};
    if (!colour.empty())
        attributes.emplace_back("fill", colour);
    svg.element("rect", attributes);
}

std::string scaleTitle(const DistanceScale& scale)
{
    if (scale.bounds.empty())
        return "No distance: nowhere do both A and B give a position";
    if (!scale.isUniform)
        return "Distance between A and B, in metres";
    return scale.bounds.back() < 0.0005
               ? "A and B agree everywhere to the millimetre"
               : "The distance between A and B is the same everywhere: " + distanceInMetres(scale.bounds.front());
}

/// Returns the height.
double drawScale(SvgWriter& svg, const DistanceScale& scale, const PageBox& room)
{
    constexpr double kTitleHeight = 22;
    constexpr double kBelowBands = 34;
    constexpr double kWidestBand = 62;
    constexpr double kBlankWidth = 34;
    constexpr double kBlankTextWidth = 180;
    constexpr double kFirstLabel = 14; // left of the first band
    drawLine(svg, scaleTitle(scale), "text bold", {room.x, room.y + kLegendFontSize});
    const auto count = static_cast<double>(std::max<std::size_t>(scale.bandCount(), 1));
    const double bandWidth =
        std::min(kWidestBand, (room.width - kBlankWidth - kBlankTextWidth - 2 * kLegendColumnGap) / count);
    const MapPoint corner{room.x + kFirstLabel, room.y + kTitleHeight};
    svg.open("g", {{"class", "scale-bands"}});
    for (std::size_t band = 0; band < scale.bandCount(); ++band)
        drawSwatch(svg, "swatch", scale.colour(band),
                   {corner.x + bandWidth * static_cast<double>(band), corner.y, bandWidth, kBandHeight});
    drawBounds(svg, scale, corner, bandWidth);
    svg.close();
    if (scale.hasGaps) {
        const double left = scale.bounds.empty() ? corner.x : corner.x + bandWidth * count + 2 * kLegendColumnGap;
        drawSwatch(svg, "swatch blank", "", {left, corner.y, kBlankWidth, kBandHeight});
        drawLine(svg, "A or B gives no position", "text", {left + kBlankWidth + 8, corner.y + 12});
    }
    return kTitleHeight + kBandHeight + kBelowBands;
}

void drawSample(SvgWriter& svg, char letter, const MapPoint& start)
{
    const std::string path = svgPath({{start, {start.x + kLineSample, start.y}}}, PathEnd::open);
    for (const char* const cssClass : {"outline halo", letter == 'A' ? "outline A" : "outline B"}) {
        svg.open("g", {{"class", cssClass}});
        svg.element("path", {{"class", "edge"}, {"d", path}});
        svg.close();
    }
    drawLetterBox(svg, letter, {start.x + kLineSample / 2, start.y});
}

std::string areaText(const PicturedCandidate& candidate, bool isShown)
{
    if (!candidate.bounds)
        return "Its area of use is not known.";
    const std::string area = candidate.area.empty() ? "no name" : candidate.area;
    return "Area of use: " + area + (isShown ? "" : " (outside of this map)");
}

/// Returns the height.
double drawCandidate(SvgWriter& svg, const PicturedCandidate& candidate, char letter, bool isShown, const PageBox& room)
{
    constexpr double kLegendIndent = kLineSample + 12;
    const double left = room.x + kLegendIndent;
    const double width = room.width - kLegendIndent;
    drawSample(svg, letter, {room.x, room.y + kLegendFontSize / 2 + 1});
    double baseline = room.y + kLegendFontSize;
    baseline = drawWrapped(svg, candidate.codeText() + " " + candidate.name, "text bold", {left, baseline}, width);
    baseline =
        drawWrapped(svg, fmt::format("Accuracy: {}; number {} of the ranking", candidate.accuracy, candidate.number),
                    "text", {left, baseline}, width);
    baseline = drawWrapped(svg, areaText(candidate, isShown), "muted", {left, baseline}, width);
    return baseline - room.y;
}

/// What would be better and cannot be used; the first of them.
std::string lackingText(const std::vector<PicturedCandidate>& lacking)
{
    const PicturedCandidate& best = lacking.front();
    std::string text = fmt::format("Better, but cannot be used here: {} {}, accuracy {}, {}.", best.codeText(),
                                   best.name, best.accuracy, best.reason);
    if (lacking.size() > 1)
        text += fmt::format(" And {} more.", lacking.size() - 1);
    return text;
}

std::string pointLine(const PicturedComparison& comparison, bool isShown)
{
    return fmt::format("At {}{}: {}", pointText(comparison.pair.point), isShown ? "" : ", outside of this map",
                       comparison.distanceAtPoint ? distanceInMetres(*comparison.distanceAtPoint)
                                                  : "A or B gives no position");
}

} // namespace

std::string pointText(const Embedded::GeographicPoint& point)
{
    return fmt::format("{:.6g}\u00B0{} {:.6g}\u00B0{}", std::abs(point.latitude), point.latitude < 0 ? "S" : "N",
                       std::abs(point.longitude), point.longitude < 0 ? "W" : "E");
}

std::string rangeText(const DistanceGrid& grid, const DistanceScale& scale)
{
    if (scale.bounds.empty())
        return "there is no distance, since nowhere do both give a position";
    double least = INFINITY;
    double most = 0;
    for (const double metres : grid.metres)
        if (std::isfinite(metres)) {
            least = std::min(least, metres);
            most = std::max(most, metres);
        }
    return fmt::format("between {} and {}", distanceInMetres(least), distanceInMetres(most));
}

double drawComparisonLegend(SvgWriter& svg, const PicturedComparison& comparison, const DistanceScale& scale,
                            const ShownOnMap& shown, const PageBox& room)
{
    constexpr double kPointLine = 30;
    constexpr double kSignRadius = 9;
    svg.open("g", {{"class", "legend"}});
    double top = room.y + drawScale(svg, scale, room);
    const double width = (room.width - kLegendColumnGap) / 2;
    const double first = drawCandidate(svg, comparison.first, 'A', shown.areas.first, {room.x, top, width, 0});
    const double second = drawCandidate(svg, comparison.second, 'B', shown.areas.second,
                                        {room.x + width + kLegendColumnGap, top, width, 0});
    top += std::max(first, second);
    const double baseline = top + kLegendLine;
    drawPointSign(svg, {room.x + kLineSample / 2, baseline - kLegendFontSize / 2 + 1});
    drawLine(svg, pointLine(comparison, shown.point), "text bold", {room.x + kLineSample + 12, baseline});
    if (comparison.pair.leavesHeightsOut)
        drawLine(svg, "Heights are left out; distances are horizontal.", "muted",
                 {room.x + width + kLegendColumnGap + kLineSample + 12, baseline});
    double bottom = top + kPointLine + kSignRadius;
    if (!comparison.pair.lacking.empty())
        bottom = drawWrapped(svg, lackingText(comparison.pair.lacking), "muted", {room.x, bottom + kLegendFontSize / 2},
                             room.width) +
                 kLegendFontSize / 2;
    svg.close();
    return bottom - room.y;
}

} // namespace Orvelcs
