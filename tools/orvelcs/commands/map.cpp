// map: where on Earth systems and drawings are.
#include <algorithm>
#include <memory>

#include <fmt/format.h>

#include "orvelcs/cli/command.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/cli/picture_file.h"
#include "orvelcs/drawing/drawing_files.h"
#include "orvelcs/drawing/mapped_systems.h"
#include "orvelcs/drawing/system_argument.h"
#include "orvelcs/output/map/systems_map.h"
#include "orvelcs/output/pages/systems_page.h"

namespace Orvelcs {
namespace {

constexpr std::size_t kMostSystems = 200;

struct MapOptions {
    DrawingFiles systems; // on the command line as SYSTEM, and drawings in a list
    PictureFile picture;
};

/// The systems on the command line, and those of the drawings in the list.
std::vector<std::string> wantedSystems(DrawingFiles files)
{
    const std::size_t given = files.names.size();
    if (given == 0 && !files.hasList())
        throw wrongUsage("SYSTEM", "is required");
    const bool listIsInput = files.hasList() && files.list == kStandardStream;
    if (std::ranges::count_if(files.names, namesStandardInput) + (listIsInput ? 1 : 0) > 1)
        throw wrongUsage("SYSTEM", "standard input is named twice, and can be read once");
    readFileList(files);
    for (std::size_t index = given; index < files.names.size(); ++index)
        files.names[index].insert(0, "@");
    if (files.names.size() > kMostSystems)
        throw wrongUsage("SYSTEM", fmt::format("expected at most {} systems on one map, found {}", kMostSystems,
                                               files.names.size()));
    if (files.names.empty())
        throw Failure(files.list, "names no drawing", ExitStatus::nothingFound);
    return files.names;
}

Json asJson(const MappedSystem& system)
{
    Json bounds = nullptr;
    if (system.bounds)
        bounds = {system.bounds->west, system.bounds->south, system.bounds->east, system.bounds->north};
    return {
        {"number", jsonValue(system.number)},      {"code", jsonValue(system.code)}, {"name", system.name},
        {"areaOfUse", jsonValue(system.areaName)}, {"bounds", std::move(bounds)},    {"deprecated", system.deprecated},
        {"file", jsonValue(system.file)}};
}

void noteSystemsWithoutArea(const std::vector<std::string>& names, const std::vector<MappedSystem>& systems,
                            Output& output)
{
    for (std::size_t index = 0; index < systems.size(); ++index)
        if (!systems[index].bounds)
            output.note(names[index], "has no area of use that could be drawn; it is in the list only");
}

void writeMap(const PictureFile& file, const std::vector<MappedSystem>& systems, Output& output)
{
    const bool isPage = file.format() == PictureFormat::html;
    writePicture(file, isPage ? writeSystemsPage(systems) : drawSystemsMap(systems), output);
    if (!output.json() && !file.isStandardOutput())
        output.confirm(file.name,
                       fmt::format("a map of {} {}", systems.size(), systems.size() == 1 ? "system" : "systems"));
}

ExitStatus runMap(const MapOptions& options, Output& output)
{
    checkPictureFile(options.picture, output);
    const std::vector<std::string> names = wantedSystems(options.systems);
    const std::vector<MappedSystem> systems = readMappedSystems(names, output);
    writeMap(options.picture, systems, output);
    noteSystemsWithoutArea(names, systems, output);
    if (output.json()) {
        Json list = Json::array();
        for (const MappedSystem& system : systems)
            list.push_back(asJson(system));
        output.document({{"output", options.picture.name}, {"systems", std::move(list)}});
    }
    return ExitStatus::done;
}

std::vector<Command> declareMap(CLI::App& program)
{
    auto options = std::make_shared<MapOptions>();
    CLI::App* app = addCommand(
        program, {"map",
                  "Draw where on Earth systems and drawings are",
                  {"map [OPTIONS] SYSTEM... -o OUT.svg|OUT.html"},
                  std::string(kSystemHelp) +
                      "\n\nThe map shows the areas of use of up to 200 systems, on the part of the world that\n"
                      "holds them all. Each area has a number, which the list below the map explains. Systems\n"
                      "with equal areas share a number, and deprecated ones are marked. A system without an area\n"
                      "of use, such as a definition of one's own, is in the list only, without a number.\n\n"
                      "The projection follows the part of the world: Equal Earth for all of it, an equal-area\n"
                      "azimuthal one for a pole or a continent, a cone for a country. The picture needs nothing\n"
                      "else to be shown, suits light and dark surroundings, and has the same bytes each time. In\n"
                      "OUT.html, a page in one file, the numbers lead to the entries of the list and back.",
                  {{"Draw where two systems are for use", "orvelcs map EPSG:25832 EPSG:2193 -o systems.svg"},
                   {"Draw where drawings are", "orvelcs map @plan.qedb @site.qedb -o drawings.html"}},
                  {{ExitStatus::nothingFound, "the catalog does not have a code, or a drawing has no system"}}});
    addArguments(*app, "SYSTEM", options->systems.names, "the systems");
    addFileListOptions(*app, options->systems);
    addPictureOptions(*app, options->picture)->required();
    return {{app, [options](Output& output) { return runMap(*options, output); }}};
}

const CommandRegistration kMapCommand({HelpGroup::catalog, 5}, declareMap);

} // namespace
} // namespace Orvelcs
