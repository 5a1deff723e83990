#include "orvelcs/output/map/systems_list.h"

#include <algorithm>
#include <numeric>
#include <set>

#include <fmt/format.h>

#include "orvelcs/output/text_width.h"

namespace Orvelcs {
namespace {

constexpr double kListFontSize = 11;
constexpr double kLineHeight = 14.5;
constexpr double kEntryGap = 8;
constexpr double kNumberWidth = 32; // of the column of numbers
constexpr double kColumnGap = 20;
constexpr double kBoldFactor = 1.13; // bold characters are wider

struct EntryLine {
    std::string bold; // at the beginning of the line
    std::string text;
    bool isMuted = false;
};

struct Entry {
    const MappedArea* area = nullptr; // none of a system without an area of use
    std::vector<EntryLine> lines;

    double height() const { return static_cast<double>(lines.size()) * kLineHeight + kEntryGap; }
};

std::vector<std::string> wrapBold(const std::string& text, double width, std::size_t mostLines)
{
    return wrapText(text, kListFontSize * kBoldFactor, width, mostLines);
}

void addSystem(Entry& entry, const MappedSystem& system, double width)
{
    constexpr std::size_t kMostLines = 3;
    if (system.file)
        for (const std::string& line : wrapBold(*system.file, width, kMostLines))
            entry.lines.push_back({line, "", false});
    const std::string code = system.code.value_or("");
    std::string text = code.empty() ? system.name : code + " " + system.name;
    if (system.deprecated)
        text += " (deprecated)";
    bool isFirst = true;
    for (const std::string& line : wrapText(text, kListFontSize, width, kMostLines)) {
        const bool hasCode = isFirst && !code.empty() && line.starts_with(code);
        entry.lines.push_back(hasCode ? EntryLine{code, line.substr(code.size()), false} : EntryLine{"", line, false});
        isFirst = false;
    }
}

void addMuted(Entry& entry, const std::string& text, double width, std::size_t mostLines)
{
    for (const std::string& line : wrapText(text, kListFontSize, width, mostLines))
        entry.lines.push_back({"", line, true});
}

/// The more areas there are, the shorter is what is said of each.
std::size_t areaLines(std::size_t areaCount)
{
    constexpr std::size_t kFew = 6;
    constexpr std::size_t kMany = 60;
    return areaCount <= kFew ? 5 : areaCount <= kMany ? 2 : 1;
}

Entry entryOf(const MappedArea& area, double width, std::size_t mostLines)
{
    Entry entry{.area = &area, .lines = {}};
    std::set<std::string> names; // mostly one, since the bounds are equal
    for (const MappedSystem* system : area.systems) {
        addSystem(entry, *system, width);
        if (system->areaName)
            names.insert(*system->areaName);
    }
    for (const std::string& name : names)
        addMuted(entry, name, width, mostLines);
    return entry;
}

Entry entryWithoutArea(const MappedSystem& system, double width)
{
    Entry entry;
    addSystem(entry, system, width);
    addMuted(entry, system.areaName ? *system.areaName + " (without bounds)" : "No area of use is known.", width, 2);
    return entry;
}

/// Into how many columns of that height the entries go.
std::size_t columnsNeeded(const std::vector<Entry>& entries, double height)
{
    std::size_t columns = 1;
    double used = 0;
    for (const Entry& entry : entries) {
        if (used > 0 && used + entry.height() > height) { // as drawSystemsList does
            ++columns;
            used = 0;
        }
        used += entry.height();
    }
    return columns;
}

double columnHeight(const std::vector<Entry>& entries, std::size_t columns)
{
    double total = 0;
    for (const Entry& entry : entries)
        total += entry.height();
    double height = total / static_cast<double>(columns);
    while (columnsNeeded(entries, height) > columns)
        height += kLineHeight;
    return height;
}

void drawEntryLine(SvgWriter& svg, const EntryLine& line, const MapPoint& point)
{
    const SvgAttributes place{{"class", line.isMuted ? "muted" : "text"}, {"x", point.x}, {"y", point.y}};
    if (line.bold.empty())
        return svg.text("text", place, line.text);
    svg.open("text", place);
    svg.text("tspan", {{"class", "bold"}}, line.bold);
    if (!line.text.empty())
        svg.text("tspan", {}, line.text.substr(line.text.find_first_not_of(' ')));
    svg.close();
}

void drawEntry(SvgWriter& svg, const Entry& entry, const MapPoint& corner)
{
    constexpr double kNumberFontSize = 10;
    constexpr double kAscent = 11;
    svg.open("g", {{"class", entry.area ? "entry " + areaClass(*entry.area) : "entry"}});
    if (entry.area) {
        PageBox box = numberBox(entry.area->number, kNumberFontSize);
        box.x = corner.x + kNumberWidth - 6 - box.width;
        box.y = corner.y;
        drawNumber(svg, entry.area->number, box, kNumberFontSize, false);
    }
    double baseline = corner.y + kAscent;
    for (const EntryLine& line : entry.lines) {
        drawEntryLine(svg, line, {corner.x + kNumberWidth, baseline});
        baseline += kLineHeight;
    }
    svg.close();
}

std::vector<Entry> makeEntries(const std::vector<MappedSystem>& systems, const std::vector<MappedArea>& areas,
                               double width)
{
    std::vector<Entry> entries;
    for (const MappedArea& area : areas)
        entries.push_back(entryOf(area, width, areaLines(areas.size())));
    for (const MappedSystem& system : systems)
        if (!system.number)
            entries.push_back(entryWithoutArea(system, width));
    return entries;
}

} // namespace

std::string areaClass(const MappedArea& area)
{
    constexpr int kColours = 6;
    return fmt::format("area colour{}{}", area.number % kColours, area.isDeprecated() ? " deprecated" : "");
}

void drawNumber(SvgWriter& svg, int number, const PageBox& box, double fontSize, bool isOnMap)
{
    constexpr double kRounding = 3;
    constexpr double kBaseline = 0.36; // below the middle, as a share of the font's size
    svg.element("rect", {{"class", isOnMap ? "number on-map" : "number"},
                         {"x", box.x},
                         {"y", box.y},
                         {"width", box.width},
                         {"height", box.height},
                         {"rx", kRounding}});
    svg.text("text",
             {{"class", "text"},
              {"x", box.middle().x},
              {"y", box.middle().y + fontSize * kBaseline},
              {"text-anchor", "middle"},
              {"font-size", fontSize}},
             fmt::format("{}", number));
}

double drawSystemsList(SvgWriter& svg, const std::vector<MappedSystem>& systems, const PageBox& room)
{
    constexpr std::size_t kMostColumns = 3;
    const std::vector<MappedArea> areas = areasOf(systems);
    const auto isWithoutArea = [](const MappedSystem& system) { return !system.number.has_value(); };
    const auto withoutArea = static_cast<std::size_t>(std::ranges::count_if(systems, isWithoutArea));
    const std::size_t columns = std::min(kMostColumns, areas.size() + withoutArea);
    const double columnWidth =
        (room.width - kColumnGap * static_cast<double>(columns - 1)) / static_cast<double>(columns);
    const std::vector<Entry> entries = makeEntries(systems, areas, columnWidth - kNumberWidth);
    const double height = columnHeight(entries, columns);
    svg.open("g", {{"class", "list"}, {"font-size", kListFontSize}});
    double left = room.x;
    double used = 0;
    double most = 0;
    for (const Entry& entry : entries) {
        if (used > 0 && used + entry.height() > height) {
            left += columnWidth + kColumnGap;
            used = 0;
        }
        drawEntry(svg, entry, {left, room.y + used});
        used += entry.height();
        most = std::max(most, used);
    }
    svg.close();
    return most;
}

} // namespace Orvelcs
