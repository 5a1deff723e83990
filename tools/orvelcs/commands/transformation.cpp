// transformation: what is configured between two systems, and what the catalog has to be configured.
#include <memory>

#include <fmt/format.h>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/operations/coordinate_operations.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/display_text.h"
#include "orvelcs/cli/display_width.h"
#include "orvelcs/cli/error_document.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/drawing/catalog_lookup.h"
#include "orvelcs/drawing/config_item.h"
#include "orvelcs/drawing/system_pair.h"
#include "orvelcs/output/operation_description.h"
#include "orvelcs/output/system_description.h"
#include "orvelcs/output/table.h"

namespace Orvelcs {
namespace {

struct TransformationOptions {
    std::string source;
    std::string target;
    std::string drawing;
    CLI::Option* drawingOption = nullptr;
    // The arguments of the list. Further ones become the two above.
    std::string listSource;
    std::string listTarget;
};

std::string unknownCodesClause(const SystemPair& pair)
{
    if (pair.definitions) // which the catalog need not have
        return "";
    std::string clause;
    for (const std::wstring& code : {pair.sourceCode, pair.targetCode})
        if (catalogLacks(code))
            clause += "; " + describeMissingCode(code);
    return clause;
}

/// A configuration names systems by their codes.
void requireCodes(const TransformationOptions& options, const SystemPair& pair)
{
    for (const auto& [system, code] :
         {std::pair(options.source, pair.sourceCode), std::pair(options.target, pair.targetCode)})
        if (code.empty())
            throw Failure(system, "has no code, and a configuration names systems by their codes");
}

void print(const Embedded::ConfiguredOperation& configured, Output& output)
{
    LabelledLines lines;
    lines.add("name", configured.codeOrName);
    lines.add("kind", transformationKindName(configured.kind));
    lines.print(output);
}

ExitStatus reportConfigured(const TransformationOptions& options, Output& output)
{
    const auto drawing = options.drawingOption->count() > 0 ? std::optional(options.drawing) : std::nullopt;
    if (drawing == kStandardStream && (namesStandardInput(options.source) || namesStandardInput(options.target)))
        throw wrongUsage("--drawing", "standard input holds a system");
    const SystemPair pair = readPair(options.source, options.target, output, ExitStatus::nothingFound);
    requireCodes(options, pair);
    const auto configured = configuredBetween(pair, drawing, output);
    if (!configured)
        throw Failure(options.source + " to " + options.target,
                      "no transformation is configured" + unknownCodesClause(pair), ExitStatus::nothingFound);
    if (output.json())
        output.document({{"name", Embedded::utf8FromWide(configured->codeOrName)}, {"kind", configured->kind}});
    else
        print(*configured, output);
    return ExitStatus::done;
}

ExitStatus runConfigured(const TransformationOptions& options, Output& output)
{
    for (const auto& [name, value] : {std::pair("SRC", &options.source), std::pair("DST", &options.target)})
        if (value->empty())
            throw wrongUsage(name, "is required");
    return withFailureDocument(nullptr, output, [&] { return reportConfigured(options, output); });
}

std::string directionText(const Embedded::CatalogOperation& operation)
{
    if (operation.direction == Embedded::OperationDirection::forward)
        return "forward";
    return operation.isReversible ? "in reverse" : "not reversible";
}

void print(const std::vector<Embedded::CatalogOperation>& operations, Output& output)
{
    constexpr std::size_t kAccuracyColumn = 2;
    std::vector<TableRow> rows;
    for (const Embedded::CatalogOperation& operation : operations)
        rows.push_back({oneLine(operation.code), transformationKindName(operation.kind), accuracyText(operation),
                        directionText(operation), oneLine(operation.name)});
    const std::vector<std::string> lines = alignColumns(rows, Output::tableColumns(), kAccuracyColumn);
    for (std::size_t index = 0; index < operations.size(); ++index) {
        output.heading(lines[index]);
        printAreaAndGrids(operations[index], output);
        if (!operations[index].isImplemented)
            printDetail("PROJ does not implement its method", output);
    }
}

std::vector<Embedded::CatalogOperation> findOperations(const TransformationOptions& options, const Output& output)
{
    const SystemPair pair = readPair(options.listSource, options.listTarget, output, ExitStatus::nothingFound);
    auto operations = operationsBetween(pair);
    if (!operations)
        throw operationFailure(operations.error(), ExitStatus::nothingFound);
    if (operations->empty())
        throw Failure(options.listSource + " to " + options.listTarget,
                      "the catalog has no transformation or path between the two", ExitStatus::nothingFound);
    return *std::move(operations);
}

void refuseForeignArguments(const TransformationOptions& options)
{
    if (!options.source.empty())
        throw wrongUsage(options.source, "one argument too many");
    if (options.drawingOption->count() > 0)
        throw wrongUsage("--drawing", "has no place here; the list is the catalog's");
}

ExitStatus runList(const TransformationOptions& options, Output& output)
{
    refuseForeignArguments(options);
    return withFailureDocument(Json::array(), output, [&] {
        const auto operations = findOperations(options, output);
        if (!output.json()) {
            print(operations, output);
            return ExitStatus::done;
        }
        Json array = Json::array();
        for (const Embedded::CatalogOperation& operation : operations)
            array.push_back(catalogOperationAsJson(operation));
        output.document(array);
        return ExitStatus::done;
    });
}

const std::string kListDetails =
    std::string(kSystemHelp) +
    "\n\n"
    "The list has the operations between the datums of the two systems, in either direction, and between their "
    "heights if the systems have heights. Each has its code, kind, accuracy, direction, name and area of use, and its "
    "grids with a remark whether they are installed. Projected and compound systems have those of the geodetic "
    "systems below them. Deprecated ones are left out, and so are operations that PROJ composes by itself, which have "
    "no code for a configuration.\n\n"
    "Operations that can be used here come before those that cannot, because a grid is missing, PROJ does not "
    "implement the method, or they have the opposite direction and are not reversible. Among these, those with a "
    "larger area of use come first, then those with a better accuracy, as PROJ orders them. Those that PROJ would not "
    "offer come last, by accuracy and code.";

std::vector<Command> declareTransformation(CLI::App& program)
{
    auto options = std::make_shared<TransformationOptions>();
    CLI::App* app = addCommand(
        program,
        {"transformation",
         "Print the transformation that is configured between two systems",
         {"transformation [OPTIONS] SRC DST", "transformation list SRC DST", "transformation compare SRC DST"},
         std::string(kSystemHelp) +
             "\n\nThe geodetic path or transformation is printed as the module finds it: first in the drawing's "
             "configuration, then in the user's. An item of the opposite direction is also found if its definition can "
             "be used in reverse. In JSON kind is 1 for a path, 2 for a transformation and 0 for neither.",
         {{"Print what a drawing has configured",
           "orvelcs transformation EPSG:4230 EPSG:4326 --drawing configured.qedb"},
          {"Print what is configured for the user", "orvelcs transformation EPSG:4230 EPSG:4326",
           ExitStatus::nothingFound}},
         {{ExitStatus::nothingFound, "none is configured"}}});
    addArgument(*app, "SRC", options->source, "the SYSTEM to transform from");
    addArgument(*app, "DST", options->target, "the SYSTEM to transform to");
    options->drawingOption =
        addArgument(*app, "--drawing FILE", options->drawing,
                    "the drawing whose configuration is used before the user's; - is standard input");

    CLI::App* list = addCommand(*app, {"list",
                                       "List the catalog's transformations and paths between two systems, best first",
                                       {"transformation list SRC DST"},
                                       kListDetails,
                                       {{"List what could be configured between two systems",
                                         "orvelcs transformation list EPSG:4230 EPSG:4326"}},
                                       {{ExitStatus::nothingFound, "there is none"}}});
    addArgument(*list, "SRC", options->listSource, "the SYSTEM to transform from")->required();
    addArgument(*list, "DST", options->listTarget, "the SYSTEM to transform to")->required();
    return {{app, [options](Output& output) { return runConfigured(*options, output); }},
            {list, [options](Output& output) { return runList(*options, output); }}};
}

const CommandRegistration kTransformationCommand({HelpGroup::transformations, 2}, declareTransformation);

} // namespace

} // namespace Orvelcs
