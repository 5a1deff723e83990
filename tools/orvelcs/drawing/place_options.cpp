#include "orvelcs/drawing/place_options.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/operations/candidate_operations.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/cli/place.h"
#include "orvelcs/drawing/catalog_lookup.h"
#include "orvelcs/drawing/system_argument.h"
#include "orvelcs/output/point_text.h"

namespace Orvelcs {
namespace {

using Bounds = Embedded::GeographicBounds;

Failure badLine(const std::string& file, std::size_t number, const std::string& message)
{
    return Failure(inputName(file), fmt::format("line {}: {}", number, message));
}

Bounds parsePlace(const std::string& file, std::size_t number, std::string_view line)
{
    const auto point = parsePoint(line);
    if (!point)
        throw badLine(file, number, "expected a latitude and a longitude; " + point.error().message);
    if (point->z)
        throw badLine(file, number, "expected a latitude and a longitude, found more numbers");
    const auto& [latitude, longitude, height, epoch] = *point;
    if (std::abs(latitude) > 90 || std::abs(longitude) > 180)
        throw badLine(file, number,
                      fmt::format("expected a latitude from -90 to 90 and a longitude from -180 to 180, found {} {}",
                                  latitude, longitude));
    return {.west = longitude, .south = latitude, .east = longitude, .north = latitude};
}

std::vector<Bounds> readPlaces(const std::string& file)
{
    const std::string text = Embedded::utf8FromWide(readText(file));
    std::vector<Bounds> places;
    std::size_t number = 0;
    for (std::string_view rest = text; !rest.empty();) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        const std::string_view line = rest.substr(0, std::min(end, rest.find('#')));
        rest.remove_prefix(std::min(end + 1, rest.size()));
        ++number;
        if (!isBlankOrComment(line))
            places.push_back(parsePlace(file, number, line));
    }
    if (places.empty())
        throw Failure(inputName(file), "has no point; expected a latitude and a longitude on each line");
    return places;
}

Bounds areaOfSystem(const std::string& system, const Output& output)
{
    const NamedSystem named = readSystem("--area-of", system, output);
    const auto bounds = Embedded::boundsOfUse(*named.definition);
    if (!bounds)
        throw operationFailure(bounds.error(), ExitStatus::nothingFound);
    if (!*bounds)
        throw Failure(system, "has no area of use; --bbox gives one", ExitStatus::nothingFound);
    return **bounds;
}

void refuseSeveralPlaces(const PlaceOptions& options)
{
    const int count = !options.bbox.empty() + !options.points.empty() + !options.areaOf.empty();
    if (count > 1)
        throw wrongUsage("--bbox, --points, --area-of", "say the same in different ways; give one of them");
}

} // namespace

void addPlaceOptions(CLI::App& command, PlaceOptions& options)
{
    addArgument(command, "--at LAT,LON", options.at, "the point at which distances are measured");
    addArgument(command, "--bbox W,S,E,N", options.bbox, "the area that matters");
    addArgument(command, "--points FILE", options.points, "the points that matter; - is standard input");
    addArgument(command, "--area-of SYSTEM", options.areaOf, "the system whose area of use matters");
}

ComparedPlace readPlace(const PlaceOptions& options, const Output& output)
{
    refuseSeveralPlaces(options);
    ComparedPlace place;
    if (!options.at.empty())
        place.at = pointArgument("--at", options.at).middle();
    if (!options.bbox.empty())
        place.parts = {boundsArgument("--bbox", options.bbox)};
    if (!options.points.empty())
        place.parts = readPlaces(options.points);
    if (!options.areaOf.empty())
        place.parts = {areaOfSystem(options.areaOf, output)};
    return place;
}

} // namespace Orvelcs
