#include "orvelcs/output/pages/systems_page.h"

#include <cmath>

#include <fmt/format.h>

#include "embedded/spatial_reference/catalog/catalog.h"
#include "orvelcs/output/map/systems_list.h"
#include "orvelcs/output/map/systems_map.h"
#include "orvelcs/output/pages/html_page.h"

namespace Orvelcs {
namespace {

constexpr double kSystemsMapWidth = 1000;

void writeSystemsMap(SvgWriter& html, const MapDrawing& map, const std::vector<MappedArea>& areas)
{
    constexpr double kBelow = 26; // for degrees
    constexpr double kBelowScale = 20;
    const double scale = map.view().frame().bottom() + kBelow;
    html.open("div", {{"class", "map systems"}});
    html.open("svg", {{"viewBox", fmt::format("0 0 {} {}", svgNumber(kSystemsMapWidth),
                                              svgNumber(std::ceil(scale + kBelowScale)))},
                      {"role", "group"},
                      {"aria-label", "Map"}});
    drawMappedAreas(html, map, areas, AreaNumbers::links);
    map.drawScaleBar(html, {map.view().frame().x, scale + kBelowScale / 2});
    html.close();
    html.close();
}

void writeSystem(SvgWriter& html, const MappedSystem& system)
{
    html.open("p", {{"class", "system"}});
    if (system.file)
        html.text("strong", {{"class", "file"}}, *system.file);
    if (system.code)
        html.text("strong", {}, *system.code);
    html.text("span", {}, system.name);
    if (system.deprecated)
        html.text("em", {}, "deprecated");
    html.close();
}

void writeArea(SvgWriter& html, const MappedArea& area)
{
    const std::string number = std::to_string(area.number);
    html.open("li", {{"id", "system-" + number}, {"class", areaClass(area)}, {"data-number", number}});
    html.text("a",
              {{"href", "#area-" + number}, {"class", "to-map"}, {"aria-label", "Number " + number + ", on the map"}},
              number);
    html.open("div");
    const std::string* named = nullptr;
    for (const MappedSystem* system : area.systems) {
        writeSystem(html, *system);
        if (system->areaName && (named == nullptr || *named != *system->areaName)) {
            named = &*system->areaName;
            html.text("p", {{"class", "muted"}}, *named);
        }
    }
    html.close();
    html.close();
}

void writeWithoutArea(SvgWriter& html, const MappedSystem& system)
{
    html.open("li");
    html.open("span");
    html.close();
    html.open("div");
    writeSystem(html, system);
    html.text("p", {{"class", "muted"}},
              system.areaName ? *system.areaName + " (without bounds)" : "No area of use is known.");
    html.close();
    html.close();
}

void writeList(SvgWriter& html, const std::vector<MappedSystem>& systems, const std::vector<MappedArea>& areas)
{
    html.open("section", {{"aria-labelledby", "list-heading"}});
    html.text("h2", {{"id", "list-heading"}}, "Systems");
    html.open("ul", {{"class", "list"}});
    for (const MappedArea& area : areas)
        writeArea(html, area);
    for (const MappedSystem& system : systems)
        if (!system.number)
            writeWithoutArea(html, system);
    html.close();
    html.close();
}

} // namespace

std::string writeSystemsPage(const std::vector<MappedSystem>& systems)
{
    constexpr double kBeside = 46; // the map, for degrees
    constexpr double kAround = 20;
    constexpr double kMostHeight = 760;
    const std::vector<MappedArea> areas = areasOf(systems);
    const MapDrawing map(systemsMapExtent(areas), {kBeside, kAround, kSystemsMapWidth - 2 * kBeside, kMostHeight});
    HtmlPage page{.title = systemsMapTitle(systems),
                  .style = systemsMapStyle(),
                  .body = {},
                  .script = kSystemsScript,
                  .data = nullptr};
    page.body.open("main", {{"class", "beside"}});
    page.body.text("h1", {}, page.title);
    page.body.open("section", {{"class", "map-part"}, {"aria-label", "Map"}});
    writeSystemsMap(page.body, map, areas);
    page.body.text("p", {{"class", "muted"}},
                   map.describe() + " " + Embedded::projVersion() + ", " + Embedded::catalogVersion());
    page.body.close();
    writeList(page.body, systems, areas);
    page.body.close();
    return writeHtmlPage(page);
}

} // namespace Orvelcs
