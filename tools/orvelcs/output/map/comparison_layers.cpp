#include "orvelcs/output/map/comparison_layers.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "orvelcs/output/map/contours.h"
#include "orvelcs/output/svg_path.h"
#include "orvelcs/output/text_width.h"

namespace Orvelcs {
namespace {

constexpr double kContourFontSize = 9.5;
constexpr double kPointFontSize = 12;
constexpr double kPointRadius = 5;
constexpr double kLetterSize = 15;

constexpr const char* kComparisonRules = R"(.bold{font-weight:bold}
.casing .coast{stroke:#fff;stroke-width:2;stroke-opacity:.6}
.over .coast{stroke:#20262c;stroke-width:.7}
.over-graticule .graticule{stroke:#fff;stroke-width:.6;stroke-opacity:.5}
.contour{fill:none;stroke:#fff;stroke-width:.7;stroke-opacity:.75;stroke-linejoin:round}
.value{fill:#14181c;stroke:#fff;stroke-width:3;stroke-linejoin:round;paint-order:stroke}
.outline .edge{fill:none;stroke-linejoin:round}
.outline.halo .edge{stroke:#fff;stroke-width:4.4;stroke-opacity:.85}
.outline.A .edge{stroke:#c2123f;stroke-width:2.2}
.outline.B .edge{stroke:#6d1fa8;stroke-width:2.2;stroke-dasharray:9 5}
.letter{fill:#fff;stroke-width:1.6}
.letter.A{stroke:#c2123f}
.letter.B{stroke:#6d1fa8;stroke-dasharray:4 2}
.letter-text{fill:#14181c;font-weight:bold}
.sign{fill:none;stroke:#14181c;stroke-width:1.8}
.sign.halo{stroke:#fff;stroke-width:4.6}
.swatch{stroke:#57606a;stroke-width:.6}
.blank{fill:none}
)";

double lengthOf(const PlaneLine& line)
{
    double length = 0;
    for (std::size_t index = 1; index < line.size(); ++index)
        length += std::hypot(line[index].x - line[index - 1].x, line[index].y - line[index - 1].y);
    return length;
}

PageBox boxAround(const MapPoint& middle, double width, double height)
{
    return {middle.x - width / 2, middle.y - height / 2, width, height};
}

void drawCentredText(SvgWriter& svg, const char* cssClass, const MapPoint& middle, double fontSize,
                     const std::string& text)
{
    constexpr double kBaseline = 0.36; // below the middle, as a share of the font's size
    svg.text("text",
             {{"class", cssClass},
              {"x", middle.x},
              {"y", middle.y + fontSize * kBaseline},
              {"text-anchor", "middle"},
              {"font-size", fontSize}},
             text);
}

void drawOutline(SvgWriter& svg, const std::vector<PlaneLine>& outline, std::string_view cssClass)
{
    if (outline.empty())
        return;
    svg.open("g", {{"class", fmt::format("outline {}", cssClass)}});
    svg.element("path", {{"class", "edge"}, {"d", svgPath(outline, PathEnd::open)}});
    svg.close();
}

} // namespace

std::string comparisonStyle()
{
    return mapStyle() + kComparisonRules + darkRules(".over-graticule .graticule{stroke-opacity:.2}\n");
}

void drawPointSign(SvgWriter& svg, const MapPoint& point)
{
    constexpr double kArm = 3.5;
    for (const char* const cssClass : {"sign halo", "sign"}) {
        svg.element("circle", {{"class", cssClass}, {"cx", point.x}, {"cy", point.y}, {"r", kPointRadius}});
        std::vector<PlaneLine> arms;
        for (const auto& [x, y] : {MapPoint{1, 0}, MapPoint{-1, 0}, MapPoint{0, 1}, MapPoint{0, -1}})
            arms.push_back({{point.x + x * kPointRadius, point.y + y * kPointRadius},
                            {point.x + x * (kPointRadius + kArm), point.y + y * (kPointRadius + kArm)}});
        svg.element("path", {{"class", cssClass}, {"d", svgPath(arms, PathEnd::open)}});
    }
}

void drawLetterBox(SvgWriter& svg, char letter, const MapPoint& middle)
{
    constexpr double kFontSize = 11;
    const PageBox box = boxAround(middle, kLetterSize, kLetterSize);
    svg.element("rect", {{"class", fmt::format("letter {}", letter)},
                         {"x", box.x},
                         {"y", box.y},
                         {"width", box.width},
                         {"height", box.height},
                         {"rx", 3.0}});
    drawCentredText(svg, "letter-text", middle, kFontSize, std::string(1, letter));
}

bool ComparisonLayers::isFree(const PageBox& box) const
{
    return map_.view().frame().contains(box) &&
           std::ranges::none_of(taken_, [&](const PageBox& other) { return other.meets(box); });
}

bool ComparisonLayers::take(const PageBox& box)
{
    if (!isFree(box))
        return false;
    taken_.push_back(box);
    return true;
}

void ComparisonLayers::drawBands(const DistanceGrid& grid, const DistanceScale& scale)
{
    svg_.open("g", {{"class", "bands"}});
    for (std::size_t band = 0; band < scale.bandCount(); ++band) {
        std::vector<PlaneLine> seen;
        const Contour contour = traceContour(grid, scale.bounds[band]);
        for (const PlaneLine& ring : contour.rings)
            std::ranges::move(map_.view().areas(ring), std::back_inserter(seen));
        if (band > 0)
            for (const PlaneLine& line : contour.lines)
                for (PlaneLine& part : map_.view().lines(line))
                    contours_.push_back({band, std::move(part)});
        svg_.element("path", {{"fill", scale.colour(band)},
                              {"fill-rule", "evenodd"},
                              {"data-band", static_cast<double>(band)},
                              {"d", svgPath(seen, PathEnd::closed)}});
    }
    svg_.close();
}

void ComparisonLayers::drawCoast()
{
    for (const char* const cssClass : {"casing", "over"}) {
        svg_.open("g", {{"class", cssClass}});
        map_.drawCoast(svg_);
        svg_.close();
    }
}

void ComparisonLayers::drawContours()
{
    std::vector<PlaneLine> lines;
    std::ranges::transform(contours_, std::back_inserter(lines), &ContourLine::line);
    svg_.element("path", {{"class", "contour"}, {"d", svgPath(lines, PathEnd::open)}});
}

void ComparisonLayers::drawContourLabels(const DistanceScale& scale)
{
    constexpr double kShortest = 90; // of a contour that gets a number
    svg_.open("g", {{"class", "contour-labels"}});
    std::ranges::stable_sort(contours_, std::greater(), [](const ContourLine& line) { return lengthOf(line.line); });
    for (const ContourLine& contour : contours_)
        if (lengthOf(contour.line) >= kShortest)
            drawContourLabel(contour, scale.boundText(contour.bound));
    svg_.close();
}

/// At the free point that is nearest to the middle of the line.
void ComparisonLayers::drawContourLabel(const ContourLine& contour, const std::string& text)
{
    constexpr double kGap = 4;
    const double width = textWidth(text, kContourFontSize) + 2 * kGap;
    const std::size_t count = contour.line.size();
    for (std::size_t step = 0; step < count; ++step) {
        const std::size_t offset = (step + 1) / 2;
        const std::size_t middle = count / 2;
        const std::size_t index = step % 2 == 0 ? middle + offset : middle - offset;
        if (index >= count)
            continue;
        const MapPoint& point = contour.line[index];
        if (!take(boxAround(point, width, kContourFontSize + 2 * kGap)))
            continue;
        drawCentredText(svg_, "value", point, kContourFontSize, text);
        return;
    }
}

ShownAreas ComparisonLayers::drawAreas(const PicturedCandidate& first, const PicturedCandidate& second)
{
    const auto outlineOf = [&](const PicturedCandidate& candidate) {
        return candidate.bounds ? map_.view().outline(*candidate.bounds) : std::vector<PlaneLine>();
    };
    const std::vector<PlaneLine> outlines[] = {outlineOf(first), outlineOf(second)};
    for (const std::vector<PlaneLine>& outline : outlines)
        drawOutline(svg_, outline, "halo");
    drawOutline(svg_, outlines[0], "A");
    drawOutline(svg_, outlines[1], "B");
    drawLetter(outlines[0], 'A');
    drawLetter(outlines[1], 'B');
    return {!outlines[0].empty(), !outlines[1].empty()};
}

/// On the outline, as near to a corner of the map as there is room; A and B have corners of their own.
void ComparisonLayers::drawLetter(const std::vector<PlaneLine>& outline, char letter)
{
    const PageBox& frame = map_.view().frame();
    const MapPoint corner = letter == 'A' ? MapPoint{frame.x, frame.y} : MapPoint{frame.right(), frame.y};
    const MapPoint* best = nullptr;
    const auto distance = [&](const MapPoint& point) { return std::hypot(point.x - corner.x, point.y - corner.y); };
    for (const PlaneLine& line : outline)
        for (const MapPoint& point : line)
            if (isFree(boxAround(point, kLetterSize + 4, kLetterSize + 4)) &&
                (best == nullptr || distance(point) < distance(*best)))
                best = &point;
    if (best == nullptr)
        return;
    taken_.push_back(boxAround(*best, kLetterSize + 4, kLetterSize + 4));
    drawLetterBox(svg_, letter, *best);
}

bool ComparisonLayers::drawPoint(const Embedded::GeographicPoint& point, const std::string& label)
{
    const auto place = map_.view().at(point.latitude, point.longitude);
    if (!place)
        return false;
    constexpr double kAway = 13;
    constexpr double kReach = kPointRadius + 4;
    const double width = textWidth(label, kPointFontSize);
    taken_.push_back(boxAround(*place, 2 * kReach, 2 * kReach));
    drawPointSign(svg_, *place);
    for (const MapPoint& middle :
         {MapPoint{place->x + kAway + width / 2, place->y}, MapPoint{place->x - kAway - width / 2, place->y},
          MapPoint{place->x, place->y - kAway - kPointFontSize / 2},
          MapPoint{place->x, place->y + kAway + kPointFontSize / 2}}) {
        if (!take(boxAround(middle, width + 4, kPointFontSize + 4)))
            continue;
        drawCentredText(svg_, "value bold", middle, kPointFontSize, label);
        break;
    }
    return true;
}

} // namespace Orvelcs
