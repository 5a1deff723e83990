// catalog: the coordinate reference systems that can be assigned by their code.
#include <algorithm>
#include <limits>
#include <memory>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "embedded/base/text.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/display_text.h"
#include "orvelcs/cli/error_document.h"
#include "orvelcs/cli/place.h"
#include "orvelcs/drawing/catalog_lookup.h"
#include "orvelcs/drawing/system_argument.h"
#include "orvelcs/drawing/system_search.h"
#include "orvelcs/output/operation_description.h"
#include "orvelcs/output/system_description.h"
#include "orvelcs/output/system_format.h"
#include "orvelcs/output/table.h"

namespace Orvelcs {

namespace Library = Zentara::Infrastructure::SpatialReference;

namespace {

struct SearchOptions {
    std::vector<std::string> words;
    std::string kind;
    std::string authority;
    std::string at;
    std::string bbox;
    std::string area;
    std::string limit;
    bool deprecated = false;
};

struct CatalogShowOptions {
    std::string system;
    bool wkt = false;
    FormatOption format;
};

PlaceFilter placeFilter(const SearchOptions& options)
{
    PlaceFilter place;
    if (!options.at.empty())
        place.at = pointArgument("--at", options.at);
    if (!options.bbox.empty())
        place.bbox = boundsArgument("--bbox", options.bbox);
    if (!options.area.empty())
        place.words = wideArgument("--area", options.area);
    return place;
}

SystemSearch makeSearch(const SearchOptions& options)
{
    SystemSearch search{.query = {}, .place = placeFilter(options)};
    if (std::ranges::find(options.words, "") != options.words.end())
        throw wrongUsage("TEXT", "is empty");
    if (!options.words.empty())
        search.query.text = wideArgument("TEXT", fmt::format("{}", fmt::join(options.words, " ")));
    else if (options.kind.empty() && options.authority.empty() && search.place.isEmpty())
        throw wrongUsage("TEXT", "is required");
    if (!options.kind.empty())
        search.query.kind = static_cast<Library::CoordinateReferenceSystemKind>(
            integerArgument("--kind", options.kind, Library::kindNotEarthReferenced, Library::kindGeocentric));
    if (!options.limit.empty())
        search.limit =
            static_cast<std::size_t>(integerArgument("--limit", options.limit, 1, std::numeric_limits<int>::max()));
    if (!options.authority.empty())
        search.query.authority = wideArgument("--authority", options.authority);
    search.query.includesDeprecated = options.deprecated;
    return search;
}

Json asJson(const Embedded::CatalogArea* area)
{
    if (!area)
        return nullptr;
    return {{"name", Embedded::utf8FromWide(area->name)}, {"bounds", boundsAsJson(area->bounds)}};
}

Json asJson(const std::vector<PlacedSystem>& systems)
{
    Json array = Json::array();
    for (const PlacedSystem& system : systems)
        array.push_back({{"code", Embedded::utf8FromWide(system.entry.code)},
                         {"name", Embedded::utf8FromWide(system.entry.name)},
                         {"kind", system.entry.kind},
                         {"deprecated", system.entry.deprecated},
                         {"areaOfUse", asJson(system.area.get())}});
    return array;
}

void print(const std::vector<PlacedSystem>& systems, Output& output)
{
    std::vector<TableRow> rows;
    for (const auto& [entry, area] : systems)
        rows.push_back({oneLine(entry.code), kindName(entry.kind),
                        oneLine(entry.name) + (entry.deprecated ? " (deprecated)" : ""),
                        area ? oneLine(area->name) : "area of use unknown"});
    printTable(rows, output);
}

ExitStatus runSearch(const SearchOptions& options, Output& output)
{
    const SystemSearch search = makeSearch(options);
    return withFailureDocument(Json::array(), output, [&] {
        const std::vector<PlacedSystem> systems = findSystems(search, output);
        if (output.json())
            output.document(asJson(systems));
        else
            print(systems, output);
        return ExitStatus::done;
    });
}

/// A system with what the catalog says beside its definition.
struct CatalogSystem {
    SystemDescription system;
    std::optional<Embedded::CatalogEntry> entry; // nothing for a system of one's own
    std::vector<std::wstring> replacements;
    std::optional<std::string> formatted;
};

CatalogSystem load(const CatalogShowOptions& options, const Output& output)
{
    const NamedSystem named = readSystem("SYSTEM", options.system, output);
    CatalogSystem found;
    found.system = describe(named);
    if (!named.code.empty())
        found.entry = catalogEntry(named.code);
    if (!found.entry && named.source == SystemSource::catalog) // the catalog was removed after the system was loaded
        throw noSuchCode(named.code);
    if (options.wkt)
        found.system.wkt = writeWkt(*named.definition);
    if (options.format.isGiven())
        found.formatted = writeInFormat(*named.definition, options.format, options.system);
    if (found.entry && found.entry->deprecated)
        found.replacements = Embedded::replacementCodes(found.entry->code);
    return found;
}

std::optional<std::wstring> optionalArea(const CatalogSystem& found)
{
    return !found.entry || found.entry->areaOfUse.empty() ? std::nullopt : std::optional(found.entry->areaOfUse);
}

Json asJson(const CatalogSystem& found, const CatalogShowOptions& options)
{
    Json replacements = Json::array();
    for (const std::wstring& code : found.replacements)
        replacements.push_back(Embedded::utf8FromWide(code));
    Json json = {{"drawingVersion", nullptr},
                 {"code", jsonText(found.system.code)},
                 {"name", jsonText(found.system.name)},
                 {"kind", jsonValue(found.system.kind)},
                 {"datum", jsonText(found.system.datum)},
                 {"ellipsoid", jsonText(found.system.ellipsoid)},
                 {"knownToCatalog", found.entry.has_value()},
                 {"source", nullptr}};
    if (options.wkt)
        json["wkt"] = jsonText(found.system.wkt);
    addFormatted(json, options.format, found.formatted);
    json["deprecated"] = found.entry ? Json(found.entry->deprecated) : Json(nullptr);
    json["replacedBy"] = firstReplacement(found.replacements);
    json["replacements"] = replacements;
    json["areaOfUse"] = jsonText(optionalArea(found));
    return json;
}

void print(const CatalogSystem& found, const CatalogShowOptions& options, Output& output)
{
    if (found.formatted)
        return output.line(*found.formatted);
    output.heading(found.entry ? oneLine(found.entry->code) : oneLine(options.system));
    LabelledLines lines;
    lines.add(found.system);
    if (found.entry)
        lines.add("deprecated", found.entry->deprecated ? "yes" : "no");
    lines.add("replaced by", replacementsText(found.replacements));
    lines.add("area of use", optionalArea(found));
    lines.add("wkt", found.system.wkt);
    lines.print(output);
}

ExitStatus runCatalogShow(const CatalogShowOptions& options, Output& output)
{
    checkFormatOption(options.format, options.wkt);
    return withFailureDocument(nullptr, output, [&] {
        const CatalogSystem found = load(options, output);
        if (output.json())
            output.document(asJson(found, options));
        else
            print(found, options, output);
        return ExitStatus::done;
    });
}

constexpr const char* kSearchDetails =
    "Each system is listed with its kind, its name and its area of use. An exact code comes first, then an exact "
    "name, then systems that have all words as whole words, then those that have them at the beginning of words, then "
    "the rest. Among equals, systems in use come before deprecated ones.\n\n"
    "A number alone is the code of every authority that has it, and a code may also be written as "
    "urn:ogc:def:crs:EPSG::25832 or http://www.opengis.net/def/crs/EPSG/0/25832. With --kind, --authority, --at, "
    "--bbox or --area the text can be left out. If nothing matches, the message names the systems that are meant if "
    "words of the text are misspelt.\n\n"
    "In JSON areaOfUse has the area's name and its bounds, an array of west, south, east and north in degrees, in "
    "which west is greater than east where the area crosses the antimeridian. It is null if the catalog does not say "
    "where a system is used.";

Command declareSearch(CLI::App& catalog)
{
    auto options = std::make_shared<SearchOptions>();
    CLI::App* app = addCommand(
        catalog, {"search",
                  "List the systems whose code or name has every word of the text, the best first",
                  {"catalog search [OPTIONS] [TEXT...]"},
                  kSearchDetails,
                  {{"Find a system by words of its name", "orvelcs catalog search ETRS89 UTM 32N"},
                   {"List the projected systems for use in Berlin", "orvelcs catalog search --at 52.5,13.4 --kind 3"},
                   {"List five systems of an area", "orvelcs catalog search --area Iceland --limit 5"},
                   {"Search for a name that the catalog does not have", "orvelcs catalog search xyzzy",
                    ExitStatus::nothingFound}},
                  {{ExitStatus::nothingFound, "nothing matches"}}});
    addArguments(*app, "TEXT", options->words, "the words, in any order and case");
    addArgument(
        *app, "--kind N", options->kind, "only systems of this kind",
        {.choices = {
             {"1", "not referenced to the Earth"}, {"2", "geographic"}, {"3", "projected"}, {"4", "geocentric"}}});
    addArgument(*app, "--authority AUTHORITY", options->authority, "only systems of this authority");
    addArgument(*app, "--at LAT,LON", options->at,
                "only systems whose area of use contains this place, in degrees north and east");
    addArgument(*app, "--bbox W,S,E,N", options->bbox,
                "only systems whose area of use contains all of this area, in degrees; W > E crosses the antimeridian");
    addArgument(*app, "--area TEXT", options->area,
                "only systems whose area of use has every word of this text in its name, or a word that begins so");
    app->add_flag("--deprecated", options->deprecated, "also list deprecated systems");
    addArgument(*app, "--limit N", options->limit, "at most this many systems", {.defaultValue = "all"});
    return {app, [options](Output& output) { return runSearch(*options, output); }};
}

Command declareCatalogShow(CLI::App& catalog)
{
    auto options = std::make_shared<CatalogShowOptions>();
    CLI::App* app = addCommand(
        catalog, {"show",
                  "Show one system and what the catalog says of it",
                  {"catalog show [OPTIONS] SYSTEM"},
                  std::string(kSystemHelp) +
                      " A code may also be written in the other ways that catalog search reads.\n\n" + kFormatHelp +
                      "\n\nIn JSON replacedBy is the code that replaces a deprecated system best, and replacements are "
                      "all of them.",
                  {{"Show a system", "orvelcs catalog show EPSG:25832"},
                   {"Print its definition for other programs", "orvelcs catalog show EPSG:25832 --format projjson"}},
                  {{ExitStatus::nothingFound, "the catalog does not have the code"}}});
    addArgument(*app, "SYSTEM", options->system, "the system")->required();
    app->add_flag("--wkt", options->wkt, "also print the definition as WKT 1, or as WKT 2 if WKT 1 cannot express it");
    addFormatOption(*app, options->format);
    return {app, [options](Output& output) { return runCatalogShow(*options, output); }};
}

std::vector<Command> declareCatalog(CLI::App& program)
{
    CLI::App* catalog =
        addCommand(program, {"catalog",
                             "Search the catalog of coordinate reference systems",
                             {"catalog search [OPTIONS] [TEXT...]", "catalog show [OPTIONS] SYSTEM"},
                             "The catalog is PROJ's database, with the systems of several authorities."});
    catalog->require_subcommand(1);
    return {declareSearch(*catalog), declareCatalogShow(*catalog)};
}

const CommandRegistration kCatalogCommand({HelpGroup::catalog, 1}, declareCatalog);

} // namespace

} // namespace Orvelcs
