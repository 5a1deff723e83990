#include "orvelcs/output/map/map_drawing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include <fmt/format.h>

#include "orvelcs/output/map/scale_bar.h"
#include "orvelcs/output/map/sphere.h"
#include "orvelcs/output/svg_path.h"
#include "orvelcs/output/text_width.h"

namespace Orvelcs {
namespace {

constexpr const char* kLightRules = R"(.page{fill:#fff}
.text{fill:#1b1f24}
.muted{fill:#57606a}
.sea{fill:#dfe9f1}
.land{fill:#f7f4ec;stroke:#f7f4ec;stroke-width:.5}
.coast{fill:none;stroke:#77828e;stroke-width:.6;stroke-linejoin:round}
.graticule{fill:none;stroke:#93a7b8;stroke-width:.5}
.degrees{fill:#57606a}
.frame{fill:none;stroke:#57606a;stroke-width:.9}
.scale{fill:#1b1f24;stroke:#1b1f24;stroke-width:1}
.hollow{fill:#fff}
)";
constexpr const char* kDarkRules = R"(.page{fill:#12171d}
.text{fill:#e6edf3}
.muted{fill:#a3b0bd}
.sea{fill:#1a2733}
.land{fill:#333d46;stroke:#333d46}
.coast{stroke:#8797a5}
.graticule{stroke:#4a6074}
.degrees{fill:#a3b0bd}
.frame{stroke:#a3b0bd}
.scale{fill:#e6edf3;stroke:#e6edf3}
.hollow{fill:#12171d}
)";

/// The coarser coastlines are enough for a map of much of the Earth.
CoastlineScale coastlineScaleFor(const ProjectionChoice& projection)
{
    constexpr double kCoarseRadius = 40;
    return projection.showsWorld || projection.radius > kCoarseRadius ? CoastlineScale::small : CoastlineScale::medium;
}

} // namespace

std::string mapStyle()
{
    return fmt::format("svg{{max-width:100%;height:auto}}\ntext{{font-family:{}}}\n{}", kFontStack, kLightRules) +
           darkRules(kDarkRules);
}

std::string darkRules(std::string_view rules)
{
    return fmt::format("@media screen and (prefers-color-scheme:dark){{\n{}}}\n", rules);
}

MapDrawing::MapDrawing(const GeographicBounds& extent, const PageBox& room)
    : view_(extent, room),
      coastlineScale_(coastlineScaleFor(view_.projection())),
      land_(landRings(coastlineScale_)),
      graticule_(makeGraticule(view_))
{
}

void MapDrawing::drawSea(SvgWriter& svg) const
{
    svg.element("path", {{"class", "sea"}, {"d", svgPath(view_.disc(), PathEnd::closed)}});
}

void MapDrawing::drawLand(SvgWriter& svg) const
{
    std::vector<PlaneLine> seen;
    for (const PlaneLine& ring : land_)
        std::ranges::move(view_.areas(ring), std::back_inserter(seen));
    svg.element("path", {{"class", "land"}, {"fill-rule", "evenodd"}, {"d", svgPath(seen, PathEnd::closed)}});
}

void MapDrawing::drawCoast(SvgWriter& svg) const
{
    std::vector<PlaneLine> seen;
    for (const PlaneLine& ring : land_)
        for (const PlaneLine& coast : coastOf(ring))
            std::ranges::move(view_.lines(coast), std::back_inserter(seen));
    svg.element("path", {{"class", "coast"}, {"d", svgPath(seen, PathEnd::open)}});
}

void MapDrawing::drawGraticule(SvgWriter& svg) const
{
    svg.element("path", {{"class", "graticule"}, {"d", svgPath(graticule_.lines, PathEnd::open)}});
}

void MapDrawing::drawDegrees(SvgWriter& svg) const
{
    svg.open("g", {{"class", "degrees"}, {"font-size", kGraticuleFontSize}});
    for (const GraticuleLabel& label : graticule_.labels)
        svg.text("text", {{"x", label.point.x}, {"y", label.point.y}, {"text-anchor", label.anchor}}, label.text);
    svg.close();
}

void MapDrawing::drawFrame(SvgWriter& svg) const
{
    svg.element("path", {{"class", "frame"}, {"d", svgPath({view_.edge()}, PathEnd::closed)}});
}

void MapDrawing::drawBox(SvgWriter& svg, const GeographicBounds& bounds, std::string_view cssClass) const
{
    svg.open("g", {{"class", cssClass}});
    svg.element("path", {{"class", "fill"}, {"d", svgPath(view_.areas(ringOf(bounds)), PathEnd::closed)}});
    svg.element("path", {{"class", "edge"}, {"d", svgPath(view_.outline(bounds), PathEnd::open)}});
    svg.close();
}

double MapDrawing::drawScaleBar(SvgWriter& svg, const MapPoint& point) const
{
    const std::optional<ScaleBar> bar = makeScaleBar(view_);
    if (!bar)
        return 0;
    constexpr double kThickness = 4;
    constexpr double kFontSize = 10;
    constexpr double kGap = 6;
    svg.open("g", {{"class", "scale-bar"}});
    for (const double half : {0.0, 0.5})
        svg.element("rect", {{"class", half == 0 ? "scale" : "scale hollow"},
                             {"x", point.x + bar->length * half},
                             {"y", point.y - kThickness},
                             {"width", bar->length / 2},
                             {"height", kThickness}});
    svg.text("text",
             {{"class", "text"}, {"x", point.x + bar->length + kGap}, {"y", point.y + 1}, {"font-size", kFontSize}},
             bar->text);
    svg.close();
    return bar->length + kGap + textWidth(bar->text, kFontSize);
}

std::vector<PageBox> MapDrawing::degreesOnMap() const
{
    std::vector<PageBox> boxes;
    for (const GraticuleLabel& label : graticule_.labels)
        if (label.isInside)
            boxes.push_back(label.box);
    return boxes;
}

std::string MapDrawing::describe() const
{
    const auto& [x, y] = view_.projection().centre;
    constexpr double kTenths = 10;
    const std::string meridian = longitudeText(std::round(x * kTenths) / kTenths);
    const std::string centre =
        view_.projection().showsWorld ? meridian : latitudeText(std::round(y * kTenths) / kTenths) + " " + meridian;
    return fmt::format("{} projection, centred on {}. Coastlines: Natural Earth, {}.", view_.projection().name, centre,
                       coastlineScaleName(coastlineScale_));
}

} // namespace Orvelcs
