#include "orvelcs/output/map/systems_map.h"

#include <cmath>

#include <fmt/format.h>

#include "embedded/spatial_reference/catalog/catalog.h"
#include "orvelcs/output/map/area_labels.h"
#include "orvelcs/output/map/map_drawing.h"
#include "orvelcs/output/map/systems_list.h"
#include "orvelcs/output/svg_path.h"

namespace Orvelcs {
namespace {

constexpr double kPageWidth = 1000; // of the page
constexpr double kPageMargin = 32;
constexpr double kTitleBaseline = 46;
constexpr double kTitleFontSize = 20;
constexpr double kSmallFontSize = 10;

constexpr const char* kAreaRules = R"(.bold{font-weight:bold}
.area .fill{fill-opacity:.13;stroke:none}
.area .edge{fill:none;stroke-width:1.3;stroke-linejoin:round}
.area .number{fill:#fff;stroke-width:1}
.area .leader{fill:none;stroke-width:.8}
.deprecated .edge{stroke-dasharray:5 3}
.crowded .edge{stroke-width:.8}
)";
constexpr const char* kLightColours[] = {"#8a3a78", "#0b5fa5", "#b3470b", "#006b54", "#a3193a", "#6b5600"};
constexpr const char* kDarkColours[] = {"#d690c6", "#6db3f2", "#f4935a", "#4cc9a4", "#f07f95", "#e0b93f"};

template <std::size_t Count>
std::string colourRules(const char* const (&colours)[Count])
{
    std::string rules;
    for (std::size_t index = 0; index < Count; ++index)
        rules += fmt::format(".colour{0} .fill,.colour{0} .dot{{fill:{1}}}\n"
                             ".colour{0} .edge,.colour{0} .number,.colour{0} .leader{{stroke:{1}}}\n",
                             index, colours[index]);
    return rules;
}

/// What a screen reader reads in place of the picture.
std::string descriptionOf(const std::vector<MappedSystem>& systems)
{
    std::string text = "A map of areas of use.";
    for (const MappedSystem& system : systems)
        text += fmt::format(
            " {}: {}{}{}{}; {}.", system.number ? fmt::format("Number {}", *system.number) : "Without number",
            system.file ? *system.file + ", " : "", system.code ? *system.code + " " : "", system.name,
            system.deprecated ? " (deprecated)" : "", system.areaName.value_or("no area of use is known"));
    return text;
}

void drawLeader(SvgWriter& svg, const AreaLabel& label)
{
    const MapPoint end = label.label.box.middle();
    svg.element("path", {{"class", "leader"}, {"d", svgPath({{label.anchor, end}}, PathEnd::open)}});
}

void drawDot(SvgWriter& svg, const MapPoint& point)
{
    constexpr double kRadius = 2.2;
    svg.element("circle", {{"class", "dot"}, {"cx", point.x}, {"cy", point.y}, {"r", kRadius}});
}

std::string namesOf(const MappedArea& area)
{
    std::string names;
    for (const MappedSystem* system : area.systems)
        names += (names.empty() ? "" : ", ") + (system->file ? *system->file : system->code.value_or(system->name));
    return names;
}

/// Opens the element of a number, which `close` ends.
void openNumber(SvgWriter& svg, const MappedArea& area, AreaNumbers numbers)
{
    if (numbers == AreaNumbers::plain)
        return svg.open("g", {{"class", areaClass(area)}});
    svg.open("a", {{"class", areaClass(area)},
                   {"id", fmt::format("area-{}", area.number)},
                   {"href", fmt::format("#system-{}", area.number)},
                   {"data-number", std::to_string(area.number)},
                   {"aria-label", fmt::format("Number {}: {}", area.number, namesOf(area))}});
}

void drawArea(SvgWriter& svg, const MapDrawing& map, const MappedArea& area, AreaNumbers numbers)
{
    if (numbers == AreaNumbers::plain)
        return map.drawBox(svg, area.bounds, areaClass(area));
    svg.open("g", {{"data-number", std::to_string(area.number)}});
    map.drawBox(svg, area.bounds, areaClass(area));
    svg.close();
}

void drawAreas(SvgWriter& svg, const MapDrawing& map, const std::vector<MappedArea>& areas, AreaNumbers numbers)
{
    const std::vector<AreaLabel> labels = labelAreas(areas, map.view(), map.degreesOnMap());
    constexpr std::size_t kMany = 40;
    svg.open("g", {{"class", areas.size() > kMany ? "areas crowded" : "areas"}});
    for (const MappedArea& area : areas)
        drawArea(svg, map, area, numbers);
    svg.close();
    svg.open("g", {{"class", "leaders"}});
    for (std::size_t index = 0; index < areas.size(); ++index) {
        const bool hasLeader = labels[index].label.needsLeader;
        if (!hasLeader && !labels[index].isTiny)
            continue;
        svg.open("g", {{"class", areaClass(areas[index])}});
        if (hasLeader)
            drawLeader(svg, labels[index]);
        drawDot(svg, labels[index].anchor);
        svg.close();
    }
    svg.close();
    svg.open("g", {{"class", "numbers"}});
    for (std::size_t index = 0; index < areas.size(); ++index) {
        openNumber(svg, areas[index], numbers);
        drawNumber(svg, areas[index].number, labels[index].label.box, numberFontSize(areas.size()), true);
        svg.close();
    }
    svg.close();
}

void drawCaption(SvgWriter& svg, const std::string& text, const MapPoint& point, double fontSize, const char* cssClass,
                 const char* anchor)
{
    svg.text("text",
             {{"class", cssClass}, {"x", point.x}, {"y", point.y}, {"font-size", fontSize}, {"text-anchor", anchor}},
             text);
}

} // namespace

std::string systemsMapStyle()
{
    return mapStyle() + kAreaRules + colourRules(kLightColours) +
           darkRules(".area .fill{fill-opacity:.22}\n.area .number{fill:#12171d}\n" + colourRules(kDarkColours));
}

std::string systemsMapTitle(const std::vector<MappedSystem>& systems)
{
    const MappedSystem& first = systems.front();
    if (systems.size() > 1)
        return fmt::format("Areas of use of {} coordinate reference systems", systems.size());
    return first.file ? *first.file : first.code ? *first.code + " " + first.name : first.name;
}

GeographicBounds systemsMapExtent(const std::vector<MappedArea>& areas)
{
    std::vector<GeographicBounds> bounds;
    for (const MappedArea& area : areas)
        bounds.push_back(area.bounds);
    return commonExtent(bounds);
}

void drawMappedAreas(SvgWriter& svg, const MapDrawing& map, const std::vector<MappedArea>& areas, AreaNumbers numbers)
{
    map.drawSea(svg);
    map.drawLand(svg);
    map.drawGraticule(svg);
    map.drawCoast(svg);
    drawAreas(svg, map, areas, numbers);
    map.drawFrame(svg);
    map.drawDegrees(svg);
}

std::string drawSystemsMap(const std::vector<MappedSystem>& systems)
{
    constexpr double kDegreesWidth = 40; // left of the map
    constexpr double kDegreesRight = 14;
    constexpr double kMapTop = 78;
    constexpr double kMostHeight = 720;
    constexpr double kBelowMap = 40; // to the scale bar
    constexpr double kAboveList = 24;
    constexpr double kBelowList = 14;
    const std::vector<MappedArea> areas = areasOf(systems);
    const MapDrawing map(systemsMapExtent(areas),
                         {kPageMargin + kDegreesWidth, kMapTop,
                          kPageWidth - 2 * kPageMargin - kDegreesWidth - kDegreesRight, kMostHeight});
    const double notes = map.view().frame().bottom() + kBelowMap;
    SvgWriter list;
    const double listTop = notes + kAboveList;
    const double listHeight = drawSystemsList(list, systems, {kPageMargin, listTop, kPageWidth - 2 * kPageMargin, 0});
    const double footer = listTop + listHeight + kBelowList;

    SvgWriter svg;
    openSvg(svg, kPageWidth, std::ceil(footer + kPageMargin), systemsMapTitle(systems), descriptionOf(systems),
            systemsMapStyle());
    svg.element("rect", {{"class", "page"}, {"width", "100%"}, {"height", "100%"}});
    drawCaption(svg, systemsMapTitle(systems), {kPageMargin, kTitleBaseline}, kTitleFontSize, "text bold", "start");
    drawMappedAreas(svg, map, areas, AreaNumbers::plain);
    map.drawScaleBar(svg, {map.view().frame().x, notes});
    drawCaption(svg, map.describe(), {map.view().frame().right(), notes}, kSmallFontSize, "muted", "end");
    svg.append(list);
    drawCaption(svg, Embedded::projVersion() + ", " + Embedded::catalogVersion(), {kPageMargin, footer}, kSmallFontSize,
                "muted", "start");
    svg.close();
    return svg.result();
}

} // namespace Orvelcs
