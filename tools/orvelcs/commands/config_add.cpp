// config add: a choice of transformation, by its name or by comparison.
#include <memory>
#include <utility>

#include <fmt/format.h>

#include "embedded/base/text.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/error_document.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/drawing/best_item.h"
#include "orvelcs/drawing/candidate_description.h"
#include "orvelcs/drawing/catalog_lookup.h"
#include "orvelcs/drawing/config_check.h"
#include "orvelcs/drawing/config_item.h"
#include "orvelcs/drawing/config_store.h"
#include "orvelcs/drawing/config_text.h"
#include "orvelcs/drawing/place_options.h"

namespace Orvelcs {
namespace {

struct AddOptions {
    ConfigTarget target;
    ConfigItemText item;
    std::string type;
    bool force = false;
    bool best = false;
    PlaceOptions place;
};

/// An item that is to be added, with further members of the JSON.
struct GivenItem {
    ConfigItemText item;
    Json more = Json::object();
};

/// The item of --name and --type.
GivenItem namedItem(const AddOptions& options)
{
    for (const auto& [option, value] : {std::pair("--name", &options.item.name), std::pair("--type", &options.type)})
        if (value->empty())
            throw wrongUsage(option, "is required without --best");
    if (options.place.areGiven())
        throw wrongUsage("--at, --bbox, --points, --area-of", "go with --best only");
    if (options.type != "path" && options.type != "transformation")
        throw wrongUsage("--type", fmt::format("expected path or transformation, found {}", options.type));
    GivenItem given{options.item};
    given.item.type = options.type == "path" ? 1 : 2;
    static_cast<void>(makeElement(given.item)); // it throws
    return given;
}

GivenItem bestGivenItem(const AddOptions& options, Output& output)
{
    if (!options.item.name.empty() || !options.type.empty())
        throw wrongUsage("--best", "chooses the name and the type; leave out --name and --type");
    const BestItem best = bestItem(options.item, readPlace(options.place, output), output);
    return {best.item, {{"best", candidateAsJson(best.candidate)}}};
}

ExitStatus runAdd(const AddOptions& arguments, Output& output)
{
    checkConfigTarget(arguments.target, true, output);
    AddOptions options = arguments;
    for (auto [option, code] : {std::pair("--source", &options.item.source), {"--target", &options.item.target}})
        *code = Embedded::utf8FromWide(codeArgument(option, *code));
    if (options.target.drawing == kStandardStream)
        throw wrongUsage("--drawing", "a drawing from standard input is read once; name a file");
    const auto [given, more] = options.best ? bestGivenItem(options, output) : namedItem(options);
    const ConfigItemText item = options.force ? given : checkedItem(given);
    const std::wstring element = makeElement(item);
    const auto lock = lockConfig(options.target, output);
    if (options.force)
        noteDoubtfulName(item, output);
    const ConfigEdit edit = [&](const StoredConfig& stored) {
        const std::wstring text = stored().value_or(std::wstring());
        if (!options.force)
            checkPairIsNew(parseItems(text), parseItems(element).front());
        return withElement(text, element);
    };
    return reportConfigChange(options.target, writeConfig(options.target, edit, output), "item added", output, more);
}

void addOptionsOfAdd(CLI::App& app, AddOptions& options)
{
    addArgument(app, "--source CODE", options.item.source, "the source system")->required();
    addArgument(app, "--target CODE", options.item.target, "the target system")->required();
    addArgument(app, "--name NAME", options.item.name, "the path or transformation");
    addArgument(app, "--type TYPE", options.type, "what NAME is", {.choices = {"path", "transformation"}});
    app.add_flag("--best", options.best, "add the best candidate of transformation compare that can be stored");
    addPlaceOptions(app, options.place);
    addArgument(app, "--note TEXT", options.item.note, "any text");
    app.add_flag("--force", options.force, "store an item that the catalog contradicts, or a second one of a pair");
    addConfigTarget(app, options.target, false);
}

CommandText textOfAdd()
{
    return {"add",
            "Add an item to a configuration",
            {"config add --source CODE --target CODE --name NAME --type TYPE [--note TEXT] [--force] "
             "(--drawing FILE | --user)",
             std::string("config add --best --source CODE --target CODE [--note TEXT] [--force] "
                         "(--drawing FILE | --user) ") +
                 kPlaceUsage},
            std::string("NAME is the name or the code of a path or transformation of the catalog. Codes and names are "
                        "matched ignoring case, and stored as the catalog spells them.\n\n") +
                kItemRefusals +
                " A note says then if the catalog does not have the name, or has it several times.\n\n"
                "--best adds the first candidate of the ranking that the catalog has, that can be used here, and "
                "whose area of use does not lie outside of the place. Notes say what was skipped, and why.\n\n" +
                kPlaceHelp,
            {{"Choose a transformation for a drawing",
              "orvelcs config add --source EPSG:4230 --target EPSG:4326 --name \"ED50 to WGS 84 (1)\" "
              "--type transformation --drawing plan.qedb"},
             {"Choose the best one for France", "orvelcs config add --best --source EPSG:4230 --target EPSG:4258 "
                                                "--area-of EPSG:2154 --drawing plan.qedb"},
             {"Add a second one for the same systems, which is refused",
              "orvelcs config add --source EPSG:4230 --target EPSG:4326 --name EPSG:1134 --type transformation "
              "--drawing configured.qedb",
              ExitStatus::failed}}};
}

std::vector<Command> declareConfigAdd(CLI::App& program)
{
    auto options = std::make_shared<AddOptions>();
    CLI::App* app = addCommand(*program.get_subcommand("config"), textOfAdd());
    addOptionsOfAdd(*app, *options);
    return {{app, [options](Output& output) {
                 return withFailureDocument(kConfigNotChanged, output, [&] { return runAdd(*options, output); });
             }}};
}

const CommandRegistration kConfigAddCommand({HelpGroup::transformations, 5}, declareConfigAdd);

} // namespace
} // namespace Orvelcs
