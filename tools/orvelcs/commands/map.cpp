// map: where on Earth systems and drawings are.
#include <algorithm>
#include <memory>

#include <fmt/format.h>

#include "embedded/base/case_folding.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/cli/output_file.h"
#include "orvelcs/drawing/mapped_systems.h"
#include "orvelcs/drawing/system_argument.h"
#include "orvelcs/output/map/systems_map.h"

namespace Orvelcs {
namespace {

constexpr std::size_t kMostSystems = 200;

struct MapOptions {
    std::vector<std::string> systems;
    std::string output;
    bool force = false;
};

void checkMapOptions(const MapOptions& options, const Output& output)
{
    if (std::ranges::count_if(options.systems, namesStandardInput) > 1)
        throw wrongUsage("SYSTEM", "standard input holds one system; @- stands twice");
    if (options.systems.size() > kMostSystems)
        throw wrongUsage("SYSTEM", fmt::format("expected at most {} systems on one map, found {}", kMostSystems,
                                               options.systems.size()));
    if (options.output == kStandardStream) {
        if (output.json())
            throw wrongUsage("--output", "the picture itself goes to standard output, where --json has no place");
        return;
    }
    if (!Embedded::toLowerAscii(options.output).ends_with(".svg"))
        throw wrongUsage("--output", "expected a name that ends with .svg, found " + options.output);
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

void noteSystemsWithoutArea(const MapOptions& options, const std::vector<MappedSystem>& systems, Output& output)
{
    for (std::size_t index = 0; index < systems.size(); ++index)
        if (!systems[index].bounds)
            output.note(options.systems[index], "has no area of use that could be drawn; it is in the list only");
}

ExitStatus runMap(const MapOptions& options, Output& output)
{
    checkMapOptions(options, output);
    const std::vector<MappedSystem> systems = readMappedSystems(options.systems, output);
    const std::string picture = drawSystemsMap(systems);
    if (options.output == kStandardStream)
        output.write(picture);
    else
        writeOutputFile(options.output, picture, options.force ? OverwritingFiles::allowed : OverwritingFiles::refused);
    noteSystemsWithoutArea(options, systems, output);
    if (output.json()) {
        Json list = Json::array();
        for (const MappedSystem& system : systems)
            list.push_back(asJson(system));
        output.document({{"output", options.output}, {"systems", std::move(list)}});
    } else if (options.output != kStandardStream) {
        output.confirm(options.output,
                       systems.size() == 1 ? "a map of 1 system" : fmt::format("a map of {} systems", systems.size()));
    }
    return ExitStatus::done;
}

std::vector<Command> declareMap(CLI::App& program)
{
    auto options = std::make_shared<MapOptions>();
    CLI::App* app = addCommand(
        program,
        {"map",
         "Draw where on Earth systems and drawings are",
         {"map [OPTIONS] SYSTEM... -o NAME.svg"},
         std::string(kSystemHelp) +
             "\nThe map shows the areas of use of up to 200 systems, on the part of the world that holds them\n"
             "all. Each area has a number, which the list below the map explains. Systems with equal areas share\n"
             "a number, deprecated ones are marked, and one without an area of use is in the list only.\n"
             "Exit status 3 if the catalog does not have a code, or a drawing has no system."});
    addArguments(*app, "SYSTEM", options->systems, "the systems")->required();
    addArgument(*app, "-o,--output NAME.svg", options->output, "the picture to write; - is standard output")
        ->required();
    app->add_flag("--force", options->force, "overwrite a file that exists");
    return {{app, [options](Output& output) { return runMap(*options, output); }}};
}

const CommandRegistration kMapCommand({HelpGroup::catalog, 5}, declareMap);

} // namespace
} // namespace Orvelcs
