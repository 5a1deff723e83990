#include "orvelcs/output/pages/comparison_page.h"

#include <cmath>

#include <fmt/format.h>

#include "embedded/spatial_reference/catalog/catalog.h"
#include "orvelcs/output/map/comparison_layers.h"
#include "orvelcs/output/map/distance_scale.h"
#include "orvelcs/output/pages/field_encoding.h"
#include "orvelcs/output/pages/html_page.h"
#include "orvelcs/output/svg_path.h"

namespace Orvelcs {
namespace {

constexpr double kPageMapWidth = 1000;
constexpr double kMissing = -1; // in a field

/// What distances are in the texts: without the point of "1.234".
std::int64_t wholeMillimetres(double metres)
{
    if (!std::isfinite(metres))
        return static_cast<std::int64_t>(kMissing);
    std::string digits = fmt::format("{:.3f}", metres);
    digits.erase(digits.find('.'), 1);
    return std::stoll(digits);
}

std::string encodeDistances(const std::vector<double>& metres, std::size_t columns)
{
    std::vector<std::int64_t> millimetres;
    millimetres.reserve(metres.size());
    for (const double distance : metres)
        millimetres.push_back(wholeMillimetres(distance));
    return encodeField(millimetres, columns);
}

Json scaleAsJson(const DistanceScale& scale)
{
    Json bounds = Json::array();
    Json texts = Json::array();
    Json colours = Json::array();
    for (std::size_t index = 0; index < scale.bounds.size(); ++index) {
        bounds.push_back(scale.bounds[index]);
        texts.push_back(scale.boundText(index));
    }
    for (std::size_t band = 0; band < scale.bandCount(); ++band)
        colours.push_back(scale.colour(band));
    return {{"bounds", bounds},
            {"texts", texts},
            {"colours", colours},
            {"uniform", scale.isUniform},
            {"gaps", scale.hasGaps}};
}

/// Where the nodes lie on the map, in tenths of a unit.
std::pair<std::string, std::string> encodePlaces(const NodeGrid& nodes, const MapView& view)
{
    constexpr double kTenthsInAUnit = 10;
    std::vector<std::int64_t> x;
    std::vector<std::int64_t> y;
    for (const Embedded::GeographicPoint& point : nodes.points()) {
        const auto place = view.at(point.latitude, point.longitude);
        x.push_back(std::llround((place ? place->x : kMissing) * kTenthsInAUnit));
        y.push_back(std::llround((place ? place->y : kMissing) * kTenthsInAUnit));
    }
    return {encodeField(x, nodes.columns()), encodeField(y, nodes.columns())};
}

Json pageData(const ComparedCandidates& compared, const MapView& view)
{
    Json candidates = Json::array();
    for (const PicturedCandidate& candidate : compared.candidates)
        candidates.push_back(candidate.codeText());
    Json pairs = Json::array();
    for (const std::vector<double>& metres : compared.metres) {
        Json pair = scaleAsJson(makeDistanceScale(metres));
        pair["field"] = encodeDistances(metres, compared.nodes.columns());
        pairs.push_back(std::move(pair));
    }
    auto [x, y] = encodePlaces(compared.nodes, view);
    return {{"candidates", std::move(candidates)},
            {"longitudes", compared.nodes.longitudes},
            {"latitudes", compared.nodes.latitudes},
            {"point", {compared.pair.point.latitude, compared.pair.point.longitude}},
            {"x", std::move(x)},
            {"y", std::move(y)},
            {"pairs", std::move(pairs)}};
}

/// The outlines of all areas, of which the script shows two.
void drawOutlines(SvgWriter& svg, const MapView& view, const std::vector<PicturedCandidate>& candidates)
{
    for (const char* const layer : {"halo", "line"})
        for (std::size_t index = 0; index < candidates.size(); ++index) {
            const auto& bounds = candidates[index].bounds;
            const std::string path = bounds ? svgPath(view.outline(*bounds), PathEnd::open) : "";
            svg.open("g",
                     {{"class", fmt::format("outline {}", layer)}, {"data-candidate", static_cast<double>(index)}});
            svg.element("path", {{"class", "edge"}, {"d", path}});
            svg.close();
        }
}

void drawCursor(SvgWriter& svg)
{
    svg.open("g", {{"id", "cursor"}});
    drawPointSign(svg, {0, 0});
    svg.close();
}

void drawPageMap(SvgWriter& svg, const MapDrawing& map, const ComparedCandidates& compared)
{
    constexpr double kBelow = 24; // for degrees
    const double height = std::ceil(map.view().frame().bottom() + kBelow);
    svg.open("svg", {{"viewBox", fmt::format("0 0 {} {}", svgNumber(kPageMapWidth), svgNumber(height))},
                     {"aria-hidden", "true"}});
    ComparisonLayers layers(map, svg);
    map.drawSea(svg);
    map.drawLand(svg);
    map.drawGraticule(svg);
    svg.open("g", {{"id", "bands"}});
    svg.close();
    svg.open("g", {{"class", "over-graticule"}});
    map.drawGraticule(svg);
    svg.close();
    layers.drawCoast();
    drawOutlines(svg, map.view(), compared.candidates);
    map.drawFrame(svg);
    map.drawDegrees(svg);
    drawCursor(svg);
    svg.close();
}

void writeChoice(SvgWriter& html, const std::vector<PicturedCandidate>& candidates)
{
    html.open("form", {{"class", "choice"}, {"id", "choice"}});
    for (const char* const letter : {"A", "B"}) {
        html.open("label", {{"class", letter}});
        html.text("span", {{"class", "key"}}, letter);
        html.open("select", {{"id", letter}, {"autocomplete", "off"}});
        for (std::size_t index = 0; index < candidates.size(); ++index)
            html.text("option", {{"value", static_cast<double>(index)}},
                      fmt::format("{} {} ({})", candidates[index].codeText(), candidates[index].name,
                                  candidates[index].accuracy));
        html.close();
        html.close();
    }
    html.close();
}

void writeMapPart(SvgWriter& html, const MapDrawing& map, const ComparedCandidates& compared)
{
    html.open("section", {{"aria-labelledby", "map-heading"}});
    html.text("h2", {{"id", "map-heading"}}, "Distance between A and B");
    writeChoice(html, compared.candidates);
    html.open("p", {{"class", "value"}, {"id", "value"}});
    html.text("span", {{"id", "node"}}, "");
    html.text("strong", {{"id", "distance"}}, "");
    html.close();
    html.text("p", {{"id", "spoken"}, {"class", "hidden"}, {"role", "status"}}, "");
    html.open("div", {{"id", "map"},
                      {"class", "map"},
                      {"tabindex", "0"},
                      {"role", "application"},
                      {"aria-label", "Map of distances"},
                      {"aria-describedby", "keys"}});
    drawPageMap(html, map, compared);
    html.close();
    html.open("div", {{"id", "legend"}, {"class", "bands"}});
    html.close();
    html.text(
        "p", {{"id", "keys"}, {"class", "muted"}},
        "The pointer shows the distance at the nearest node. On the map the arrow keys go from node to node, with "
        "Shift ten nodes at once; Home goes to the point of the comparison.");
    html.text("noscript", {}, "The distances need the script of this page.");
    html.close();
}

void writeCandidateRow(SvgWriter& html, const PicturedCandidate& candidate, std::size_t index)
{
    html.open("tr", {{"data-candidate", static_cast<double>(index)}});
    html.text("td", {{"class", "key"}}, "");
    html.text("td", {{"class", "number"}}, std::to_string(candidate.number));
    html.text("th", {{"scope", "row"}}, candidate.codeText());
    html.text("td", {}, candidate.name);
    html.text("td", {{"class", "nowrap"}}, candidate.accuracy);
    html.text("td", {}, candidate.area.empty() ? "not known" : candidate.area);
    html.close();
}

/// What would be better than all candidates and cannot be used.
void writeLacking(SvgWriter& html, const std::vector<PicturedCandidate>& lacking)
{
    if (lacking.empty())
        return;
    html.text("p", {}, "Better, but cannot be used here:");
    html.open("ul", {{"id", "lacking"}});
    for (const PicturedCandidate& candidate : lacking)
        html.text("li", {},
                  fmt::format("{} {}, accuracy {}: {}", candidate.codeText(), candidate.name, candidate.accuracy,
                              candidate.reason));
    html.close();
}

void writeCandidates(SvgWriter& html, const std::vector<PicturedCandidate>& candidates)
{
    html.open("section", {{"aria-labelledby", "candidates-heading"}});
    html.text("h2", {{"id", "candidates-heading"}}, "Candidates");
    html.open("div",
              {{"class", "scroll"}, {"tabindex", "0"}, {"role", "region"}, {"aria-labelledby", "candidates-heading"}});
    html.open("table", {{"id", "candidates"}});
    html.open("thead");
    html.open("tr");
    for (const char* const heading : {"On the map", "Rank", "Code", "Name", "Accuracy", "Area of use"})
        html.text("th", {{"scope", "col"}}, heading);
    html.close();
    html.close();
    html.open("tbody");
    for (std::size_t index = 0; index < candidates.size(); ++index)
        writeCandidateRow(html, candidates[index], index);
    html.close();
    html.close();
    html.close();
    html.close();
}

void writeDistances(SvgWriter& html)
{
    html.open("section", {{"aria-labelledby", "distances-heading"}});
    html.text("h2", {{"id", "distances-heading"}}, "Distances as a table");
    html.open("div",
              {{"class", "scroll"}, {"tabindex", "0"}, {"role", "region"}, {"aria-labelledby", "distances-heading"}});
    html.open("table", {{"id", "distances"}});
    html.close();
    html.close();
    html.close();
}

} // namespace

std::string writeComparisonPage(const ComparedCandidates& compared)
{
    constexpr double kBeside = 46; // the map, for degrees
    constexpr double kAround = 20;
    constexpr double kMostHeight = 760;
    const MapDrawing map(compared.pair.extent, {kBeside, kAround, kPageMapWidth - 2 * kBeside, kMostHeight});
    HtmlPage page{.title = compared.pair.source + " to " + compared.pair.target,
                  .style = comparisonStyle(),
                  .body = {},
                  .script = kComparisonScript,
                  .data = pageData(compared, map.view())};
    page.body.open("main");
    page.body.text("h1", {}, page.title);
    page.body.text("p", {{"class", "muted"}},
                   compared.pair.leavesHeightsOut
                       ? "How far apart two transformations put a point, horizontally. Heights are left out."
                       : "How far apart two transformations put a point, along the ground.");
    writeMapPart(page.body, map, compared);
    writeCandidates(page.body, compared.candidates);
    writeLacking(page.body, compared.pair.lacking);
    writeDistances(page.body);
    page.body.text("p", {{"class", "muted"}},
                   map.describe() + " " + Embedded::projVersion() + ", " + Embedded::catalogVersion());
    page.body.close();
    return writeHtmlPage(page);
}

} // namespace Orvelcs
