// config: the stored choice of transformations, as a text.
#include <algorithm>
#include <memory>

#include <fmt/format.h>

#include "embedded/base/text.h"
#include "orvelcs/cli/display_text.h"
#include "orvelcs/cli/error_document.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/drawing/best_item.h"
#include "orvelcs/drawing/candidate_description.h"
#include "orvelcs/drawing/config_check.h"
#include "orvelcs/drawing/config_item.h"
#include "orvelcs/drawing/config_store.h"
#include "orvelcs/drawing/config_text.h"
#include "orvelcs/drawing/place_options.h"
#include "orvelcs/drawing/settings_file.h"
#include "orvelcs/drawing/user_stores_lock.h"

namespace Orvelcs {
namespace {

struct ConfigOptions {
    ConfigTarget target;
    std::string textFile;
    CLI::Option* textFileOption = nullptr;
    ConfigItemText item;
    std::string type;
    bool force = false;
    bool best = false;
    PlaceOptions place;
};

std::wstring readTextArgument(const std::string& file)
{
    if (file.empty())
        throw wrongUsage("TEXTFILE", "is empty");
    return readText(file);
}

/// The lock for reading and changing a store of the user's. A drawing needs none.
std::unique_ptr<LockFile> lockStore(const ConfigTarget& target, const Output& output)
{
    return target.isDrawing() ? nullptr : lockUserStores(output);
}

/// `more` holds further members of the JSON.
ExitStatus report(const ConfigTarget& target, const ConfigChange& change, const std::string& done, Output& output,
                  const Json& more = Json::object())
{
    if (output.json()) {
        Json json = {{"result", change.result}, {"events", eventsAsJson(change.events)}};
        json.update(more);
        if (change.error)
            json["error"] = errorAsJson(output.command(), target.subject(), std::nullopt, *change.error);
        output.document(json);
    }
    if (change.error)
        output.error(target.subject(), *change.error);
    else if (target.drawing != kStandardStream)
        output.confirm(target.subject(), done);
    return change.error ? ExitStatus::failed : ExitStatus::done;
}

ExitStatus runGet(const ConfigOptions& options, Output& output)
{
    checkConfigTarget(options.target, false, output);
    const std::optional<std::wstring> text = readConfig(options.target, output);
    if (output.json())
        output.document(text ? Json({{"text", jsonText(text)}}) : Json(nullptr));
    else if (text)
        output.write(Embedded::utf8FromWide(*text));
    if (!text)
        output.error(options.target.subject(), "there is no configuration");
    return text ? ExitStatus::done : ExitStatus::nothingFound;
}

ExitStatus runSet(const ConfigOptions& options, Output& output)
{
    checkConfigTarget(options.target, true, output);
    if (options.textFile == kStandardStream && options.target.drawing == kStandardStream)
        throw wrongUsage(kStandardStream, "cannot be both the text and the drawing");
    const std::wstring given = readTextArgument(options.textFile);
    const std::wstring text = options.force ? given : checkedText(given);
    const auto lock = lockStore(options.target, output);
    const ExitStatus status = report(options.target,
                                     writeConfig(
                                         options.target, [&](const StoredConfig&) { return text; }, output),
                                     "configuration stored", output);
    if (status == ExitStatus::done && options.target.user && endOfLastItem(text) < text.size())
        output.note(options.target.subject(), "what follows the last </Item> is not kept there");
    return status;
}

/// Clearing the user's configuration does not change the settings file, which the module still reads.
void noteSettingsFile(const ConfigTarget& target, Output& output)
{
    try {
        if (readConfig(target, output))
            output.note(settingsFileName(), "the settings file stays as it is and is still read");
    } catch (const Failure& failure) {
        output.note(failure.subject(), failure.what());
    }
}

ExitStatus runClear(const ConfigOptions& options, Output& output)
{
    checkConfigTarget(options.target, true, output);
    const auto lock = lockStore(options.target, output);
    const ConfigChange change = clearConfig(options.target, output);
    if (options.target.isDrawing())
        return report(options.target, change, "configuration cleared", output);
    ConfigTarget registry = options.target;
    registry.registryStore = true;
    const ExitStatus status = report(registry, change, "emptied", output);
    if (!change.error)
        noteSettingsFile(options.target, output);
    return status;
}

ExitStatus reportNoItems(const ConfigTarget& target, Output& output)
{
    if (output.json())
        output.document(Json::array());
    output.error(target.subject(), "there is no configuration");
    return ExitStatus::nothingFound;
}

/// The text of a store, or of a file.
std::optional<std::wstring> readItemsText(const ConfigOptions& options, const Output& output)
{
    if (!options.target.isChosen())
        return readTextArgument(options.textFile);
    if (options.textFileOption->count() > 0)
        throw wrongUsage("TEXTFILE", "and a store are both given; give one");
    checkConfigTarget(options.target, false, output);
    return readConfig(options.target, output);
}

ExitStatus runItems(const ConfigOptions& options, Output& output)
{
    const std::optional<std::wstring> text = readItemsText(options, output);
    if (!text)
        return reportNoItems(options.target, output);
    const std::vector<ConfigItem> items = parseItems(*text);
    if (output.json()) {
        Json json = Json::array();
        for (const ConfigItem& item : items)
            json.push_back(asJson(item));
        output.document(json);
        return ExitStatus::done;
    }
    for (const ConfigItem& item : items)
        output.line(asLine(item));
    return ExitStatus::done;
}

/// An item that is to be added, with further members of the JSON.
struct GivenItem {
    ConfigItemText item;
    Json more = Json::object();
};

/// The item of --name and --type.
GivenItem namedItem(const ConfigOptions& options)
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

GivenItem bestGivenItem(const ConfigOptions& options, Output& output)
{
    if (!options.item.name.empty() || !options.type.empty())
        throw wrongUsage("--best", "chooses the name and the type; leave out --name and --type");
    const BestItem best = bestItem(options.item, readPlace(options.place, output), output);
    return {best.item, {{"best", candidateAsJson(best.candidate)}}};
}

ExitStatus runAdd(const ConfigOptions& options, Output& output)
{
    checkConfigTarget(options.target, true, output);
    if (options.target.drawing == kStandardStream)
        throw wrongUsage("--drawing", "a drawing from standard input is read once; name a file");
    const auto [given, more] = options.best ? bestGivenItem(options, output) : namedItem(options);
    const ConfigItemText item = options.force ? given : checkedItem(given);
    const std::wstring element = makeElement(item);
    const auto lock = lockStore(options.target, output);
    if (options.force)
        noteDoubtfulName(item, output);
    const ConfigEdit edit = [&](const StoredConfig& stored) {
        const std::wstring text = stored().value_or(std::wstring());
        if (!options.force)
            checkPairIsNew(parseItems(text), parseItems(element).front());
        return withElement(text, element);
    };
    return report(options.target, writeConfig(options.target, edit, output), "item added", output, more);
}

ExitStatus runRemove(const ConfigOptions& options, Output& output)
{
    checkConfigTarget(options.target, true, output);
    const std::wstring source = wideArgument("--source", options.item.source);
    const std::wstring target = wideArgument("--target", options.item.target);
    if (options.target.drawing == kStandardStream)
        throw wrongUsage("--drawing", "a drawing from standard input is read once; name a file");
    const auto lock = lockStore(options.target, output);
    std::size_t removed = 0;
    const ConfigEdit edit = [&](const StoredConfig& stored) {
        const std::wstring text = stored().value_or(std::wstring());
        removed = static_cast<std::size_t>(std::ranges::count_if(
            parseItems(text), [&](const ConfigItem& item) { return isPair(item, source, target); }));
        if (removed == 0)
            throw Failure(options.target.subject(),
                          fmt::format("has no item from {} to {}", options.item.source, options.item.target),
                          ExitStatus::nothingFound);
        return withoutPair(text, source, target);
    };
    const ConfigChange change = writeConfig(options.target, edit, output);
    return report(options.target, change, removed == 1 ? "item removed" : fmt::format("{} items removed", removed),
                  output);
}

constexpr const char* kRefusals =
    "Without --force it refuses what can never work: codes and names that the catalog does not have, a name that\n"
    "several have, an operation that does not lead from the source to the target, a second item of a pair. Names\n"
    "are stored as the catalog spells them.";

using Run = ExitStatus (*)(const ConfigOptions&, Output&);

/// The JSON of a command that ends early.
const Json kNoText = nullptr;
const Json kNotDone = {{"result", false}, {"events", Json::array()}};

Command declare(CLI::App& config, const CommandText& text, Run run, const Json& failed,
                const std::function<void(CLI::App&, ConfigOptions&)>& addOptions)
{
    auto options = std::make_shared<ConfigOptions>();
    CLI::App* app = addCommand(config, text);
    addOptions(*app, *options);
    return {app, [options, run, &failed](Output& output) {
                return withFailureDocument(failed, output, [&] { return run(*options, output); });
            }};
}

void addItemOptions(CLI::App& app, ConfigOptions& options)
{
    addArgument(app, "--source CODE", options.item.source, "the source system")->required();
    addArgument(app, "--target CODE", options.item.target, "the target system")->required();
    addArgument(app, "--name NAME", options.item.name, "the path or transformation");
    addArgument(app, "--type TYPE", options.type, "path or transformation");
    app.add_flag("--best", options.best, "add the best candidate of transformation compare that can be stored");
    addPlaceOptions(app, options.place);
    addArgument(app, "--note TEXT", options.item.note, "any text");
    app.add_flag("--force", options.force, "store an item that the catalog contradicts, or a second one of a pair");
    addConfigTarget(app, options.target, false);
}

std::vector<Command> declareConfig(CLI::App& program)
{
    CLI::App* config =
        addCommand(program, {"config",
                             "Read and change the configured transformations of drawings and of the user",
                             {"config COMMAND ..."},
                             "A drawing's configuration is used before the user's."});
    config->require_subcommand(1);
    return {
        declare(*config,
                {"get",
                 "Print a stored configuration unchanged",
                 {"config get --drawing FILE", "config get --user", "config get --registry-store"},
                 ""},
                runGet, kNoText,
                [](CLI::App& app, ConfigOptions& options) { addConfigTarget(app, options.target, true); }),
        declare(
            *config,
            {"set", "Store a configuration", {"config set [--force] TEXTFILE (--drawing FILE | --user)"}, kRefusals},
            runSet, kNotDone,
            [](CLI::App& app, ConfigOptions& options) {
                addArgument(app, "TEXTFILE", options.textFile, "the text, UTF-8")->required();
                app.add_flag("--force", options.force, "store items that the catalog contradicts as well");
                addConfigTarget(app, options.target, false);
            }),
        declare(*config,
                {"clear",
                 "Empty a configuration",
                 {"config clear (--drawing FILE | --user)"},
                 "For the user this empties the store in the registry; the settings file is not changed."},
                runClear, kNotDone,
                [](CLI::App& app, ConfigOptions& options) { addConfigTarget(app, options.target, false); }),
        declare(*config,
                {"items",
                 "Show the items of a configuration, or of a text",
                 {"config items [TEXTFILE]", "config items (--drawing FILE | --user | --registry-store)"},
                 "Exit status 3 if the store has no configuration."},
                runItems, kNoText,
                [](CLI::App& app, ConfigOptions& options) {
                    options.textFile = kStandardStream;
                    options.textFileOption =
                        addArgument(app, "TEXTFILE", options.textFile, "the text, UTF-8 (standard input)");
                    addConfigTarget(app, options.target, true);
                }),
        declare(
            *config,
            {"add",
             "Add an item to a configuration",
             {"config add --source S --target T --name N --type TYPE [--note X] [--force] "
              "(--drawing FILE | --user)",
              std::string("config add --best --source S --target T [--note X] [--force] (--drawing FILE | --user) ") +
                  kPlaceUsage},
             std::string("NAME is a name or a code of the catalog.\n") + kRefusals +
                 "\n--best adds the first candidate of the ranking that the catalog has, that can be used here, and\n"
                 "whose area of use does not lie outside of the place. Notes say what was skipped, and why.\n" +
                 kPlaceHelp},
            runAdd, kNotDone, addItemOptions),
        declare(*config,
                {"remove",
                 "Remove the items of two systems from a configuration",
                 {"config remove --source S --target T (--drawing FILE | --user)"},
                 "The rest of the text stays as it is. Exit status 3 if there is no such item."},
                runRemove, kNotDone, [](CLI::App& app, ConfigOptions& options) {
                    addArgument(app, "--source CODE", options.item.source, "the source system")->required();
                    addArgument(app, "--target CODE", options.item.target, "the target system")->required();
                    addConfigTarget(app, options.target, false);
                })};
}

const CommandRegistration kConfigCommand({HelpGroup::transformations, 1}, declareConfig);

} // namespace

} // namespace Orvelcs
