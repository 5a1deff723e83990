// transformation compare: what the choice between the transformations of two systems costs.
#include <algorithm>
#include <memory>

#include <fmt/format.h>

#include "embedded/base/text.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/display_text.h"
#include "orvelcs/cli/error_document.h"
#include "orvelcs/cli/picture_file.h"
#include "orvelcs/drawing/candidate_choice.h"
#include "orvelcs/drawing/candidate_description.h"
#include "orvelcs/drawing/comparison_picture.h"
#include "orvelcs/drawing/config_item.h"
#include "orvelcs/drawing/fitted_comparison_page.h"
#include "orvelcs/drawing/place_options.h"
#include "orvelcs/drawing/transformation_comparison.h"
#include "orvelcs/output/map/comparison_map.h"
#include "orvelcs/output/operation_description.h"
#include "orvelcs/output/table.h"

namespace Orvelcs {
namespace {

struct CompareOptions {
    std::string source;
    std::string target;
    std::vector<std::string> between;
    PlaceOptions place;
    PictureFile picture;
};

/// The comparison with the candidates that are to be shown.
struct ShownComparison {
    SystemPair pair;
    TransformationComparison comparison;
    std::vector<Candidate> candidates;

    std::string subject(const CompareOptions& options) const { return options.source + " to " + options.target; }
};

/// Either the area or the number of points.
Json placeAsJson(const ComparedPlace& place)
{
    const Embedded::GeographicBounds& first = place.parts.front();
    const bool isPoint = first.west == first.east && first.south == first.north;
    return {{"area", isPoint ? Json(nullptr) : boundsAsJson(first)},
            {"points", isPoint ? Json(place.parts.size()) : Json(nullptr)}};
}

Json asJson(const ShownComparison& shown)
{
    const auto code = [](const std::wstring& text) { return text.empty() ? Json(nullptr) : jsonText(text); };
    const TransformationComparison& comparison = shown.comparison;
    Json candidates = Json::array();
    for (const Candidate& candidate : shown.candidates)
        candidates.push_back(candidateAsJson(candidate));
    return {{"source", code(shown.pair.sourceCode)},
            {"target", code(shown.pair.targetCode)},
            {"commonArea", boundsAsJson(comparison.commonArea())},
            {"place", placeAsJson(comparison.place())},
            {"point", pointAsJson(comparison.point())},
            {"reference", comparison.reference() ? Json(comparison.reference()->number) : Json(nullptr)},
            {"candidates", std::move(candidates)}};
}

std::string kindText(const Candidate& candidate)
{
    if (candidate.operation.isBallpark)
        return "ballpark";
    return candidate.hasCode() ? transformationKindName(candidate.operation.kind) : "composed by PROJ";
}

std::string distanceText(const Candidate& candidate)
{
    return candidate.distance ? fmt::format("{:.3f} m", *candidate.distance) : "-";
}

/// Prints what the lines of area and grids do not say.
void printRemarks(const Candidate& candidate, Output& output)
{
    if (candidate.isUsable && !candidate.reason.empty())
        printDetail(oneLine(candidate.reason), output);
    else if (!candidate.isUsable && candidate.operation.hasAllGrids())
        printDetail("cannot be used: " + oneLine(candidate.reason), output);
    if (!candidate.hasCode())
        printDetail("not in the catalog, so no configuration can name it", output);
}

void print(const ShownComparison& shown, Output& output)
{
    constexpr std::size_t kDistanceColumn = 1;
    const TransformationComparison& comparison = shown.comparison;
    output.line(fmt::format("at {:.6g}, {:.6g}, distances from {}", comparison.point().latitude,
                            comparison.point().longitude,
                            comparison.reference() ? std::to_string(comparison.reference()->number) : "none"));
    std::vector<TableRow> rows;
    for (const Candidate& candidate : shown.candidates)
        rows.push_back({std::to_string(candidate.number), distanceText(candidate), accuracyText(candidate.operation),
                        coverageText(candidate.coverage), kindText(candidate),
                        candidate.hasCode() ? oneLine(candidate.operation.code) : "-",
                        oneLine(candidate.operation.name)});
    const std::vector<std::string> lines = alignColumns(rows, Output::tableColumns(), kDistanceColumn);
    for (std::size_t index = 0; index < lines.size(); ++index) {
        output.heading(lines[index]);
        printAreaAndGrids(shown.candidates[index].operation, output);
        printRemarks(shown.candidates[index], output);
    }
}

/// The two that --between names, the first of which is the reference, or all.
std::vector<Candidate> shownCandidates(const CompareOptions& options, TransformationComparison& comparison)
{
    if (options.between.empty())
        return comparison.candidates();
    const Candidate& first = chooseCandidate("--between", options.between[0], comparison);
    const Candidate& second = chooseCandidate("--between", options.between[1], comparison);
    if (&first == &second)
        throw wrongUsage("--between", describeCandidate(first) + " is both; a comparison needs two");
    comparison.measureFrom(first);
    return {first, second};
}

ShownComparison compare(const CompareOptions& options, const Output& output)
{
    const ComparedPlace place = readPlace(options.place, output);
    SystemPair pair = readPair(options.source, options.target, output, ExitStatus::nothingFound);
    TransformationComparison comparison(pair, place);
    std::vector<Candidate> candidates = shownCandidates(options, comparison);
    return {std::move(pair), std::move(comparison), std::move(candidates)};
}

/// Says what the rows do not say, or only in many words.
void note(const ShownComparison& shown, const std::string& subject, Output& output)
{
    const Candidate* const reference = shown.comparison.reference();
    if (shown.comparison.leavesHeightsOut())
        output.note(subject, "heights are left out; distances are horizontal");
    if (shown.comparison.candidates().size() == 1)
        output.note(subject, "there is one candidate only, so there is nothing to compare it with");
    if (!reference)
        output.importantNote(subject, "no candidate gives a position at the point, so there are no distances");
    else if (reference->operation.isBallpark)
        output.importantNote(subject,
                             "the best that can be used there is a ballpark one, which takes datums for equal");
}

bool isCovered(const TransformationComparison& comparison)
{
    return std::ranges::any_of(comparison.candidates(), [](const Candidate& candidate) {
        return !candidate.operation.isBallpark && candidate.coverage != Coverage::none;
    });
}

/// Of the two that --between names, or of the best two.
std::string drawPicture(const CompareOptions& options, ShownComparison& shown)
{
    PicturedPair pair = picturePair(shown.pair, shown.comparison);
    const std::vector<Candidate> two = options.between.empty() ? bestTwo(shown.comparison) : shown.candidates;
    if (options.picture.format() == PictureFormat::html)
        return fitComparisonPage(pair, shown.comparison, pageCandidates(shown.comparison, two));
    return drawComparisonMap(pictureComparison(std::move(pair), shown.comparison, two[0], two[1]));
}

void printResult(const CompareOptions& options, const ShownComparison& shown, Output& output)
{
    if (output.json()) {
        Json document = asJson(shown);
        if (options.picture.isWanted())
            document["output"] = options.picture.name;
        output.document(document);
    } else if (!options.picture.isStandardOutput()) {
        print(shown, output);
    }
}

ExitStatus run(const CompareOptions& options, Output& output)
{
    checkPictureFile(options.picture, output);
    ShownComparison shown = compare(options, output);
    const std::string subject = shown.subject(options);
    const bool hasPlace = isCovered(shown.comparison) || shown.comparison.candidates().size() == 1;
    if (options.picture.isWanted() && hasPlace)
        writePicture(options.picture, drawPicture(options, shown), output);
    printResult(options, shown, output);
    note(shown, subject, output);
    if (hasPlace)
        return ExitStatus::done;
    output.error(subject, "the place lies outside of the area of use of every candidate");
    return ExitStatus::nothingFound;
}

constexpr const char* kDetails =
    "Lists every transformation and path that the catalog has between the two, as transformation list does, and what\n"
    "PROJ composes itself, which has no code and which no configuration can name. Each has its accuracy, its area of\n"
    "use, its grids, and how many metres its result lies from that of the best one that can be used at the point: the\n"
    "length of the geodesic on the ellipsoid of DST. Heights are left out.\n"
    "--json prints source, target, commonArea, place, point, reference and candidates. Points are [latitude, "
    "longitude]\n"
    "and areas [west, south, east, north]; reference is the number of the candidate from which distances are "
    "measured.\n"
    "A candidate has what transformation list prints and its number, covers (all, part, none; null where its area is "
    "not\n"
    "known), reason (why it cannot be used or gives no position), ballpark, storable and distance.\n"
    "-o draws a map of the distances between the two candidates of --between, or the best two that can be used, over\n"
    "the common area of use, or the part of it that --bbox or --area-of gives: as colours with contours, with the "
    "areas\n"
    "of both, the point, and the versions of PROJ and its catalog. Places where one of them gives no position stay\n"
    "blank. The picture needs nothing else to be shown and has the same bytes each time. OUT.html is a page in one\n"
    "file that shows the distance between any two of the ten best at the node of a grid nearest to the pointer, or\n"
    "where the arrow keys lead. --json adds output, the name of the file.\n";

std::vector<Command> declareCompare(CLI::App& program)
{
    auto options = std::make_shared<CompareOptions>();
    CLI::App* app = addCommand(
        *program.get_subcommand("transformation"),
        {"compare",
         "Compare the transformations and paths between two systems at a place, best first",
         {"transformation compare SRC DST [--between A B] [-o OUT.svg|OUT.html] " + std::string(kPlaceUsage)},
         kDetails + std::string(kPlaceHelp) + "\n\n" + kSystemHelp,
         {{"Compare the candidates for France",
           "orvelcs transformation compare EPSG:4230 EPSG:4258 --area-of EPSG:2154"},
          {"Compare two at a point", "orvelcs transformation compare EPSG:4230 EPSG:4326 --between EPSG:1133 EPSG:1134 "
                                     "--at 50,9"},
          {"Draw how far apart the two best are", "orvelcs transformation compare EPSG:4230 EPSG:4326 -o ed50.svg"}},
         {{ExitStatus::nothingFound,
           "there is no candidate, or the place lies outside the area of use of every candidate"}}});
    addArgument(*app, "SRC", options->source, "the SYSTEM to transform from")->required();
    addArgument(*app, "DST", options->target, "the SYSTEM to transform to")->required();
    addArguments(*app, "--between A B", options->between,
                 "compare these two only, by code, name or number in the list; distances are from A")
        ->expected(2);
    addPlaceOptions(*app, options->place);
    addPictureOptions(*app, options->picture);
    return {{app, [options](Output& output) { return run(*options, output); }}};
}

const CommandRegistration kCompareCommand({HelpGroup::transformations, 4}, declareCompare);

} // namespace

} // namespace Orvelcs
