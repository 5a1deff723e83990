// config: the stored choice of transformations, as a text.
#include <memory>

#include <fmt/format.h>

#include "embedded/base/text.h"
#include "orvelcs/cli/display_text.h"
#include "orvelcs/cli/failure_document.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/drawing/config_item.h"
#include "orvelcs/drawing/config_store.h"
#include "orvelcs/drawing/settings_file.h"
#include "orvelcs/drawing/user_stores_lock.h"

namespace Orvelcs {
namespace {

struct ConfigOptions {
    ConfigTarget target;
    std::string textFile;
    ConfigItemText item;
    std::string type;
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

ExitStatus report(const ConfigTarget& target, const ConfigChange& change, const std::string& done, Output& output)
{
    if (output.json()) {
        Json json = {{"result", change.result}, {"events", eventsAsJson(change.events)}};
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
    const std::wstring text = readTextArgument(options.textFile);
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

ExitStatus runItems(const ConfigOptions& options, Output& output)
{
    const std::vector<ConfigItem> items = parseItems(readTextArgument(options.textFile));
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

ExitStatus runAdd(const ConfigOptions& options, Output& output)
{
    checkConfigTarget(options.target, true, output);
    if (options.type != "path" && options.type != "transformation")
        throw wrongUsage("--type", fmt::format("expected path or transformation, found {}", options.type));
    ConfigItemText item = options.item;
    item.type = options.type == "path" ? 1 : 2;
    const std::wstring element = makeElement(item);
    if (options.target.drawing == kStandardStream)
        throw wrongUsage("--drawing", "a drawing from standard input is read once; name a file");
    const auto lock = lockStore(options.target, output);
    noteDoubtfulName(item, output);
    const ConfigEdit edit = [&](const StoredConfig& stored) {
        return withElement(stored().value_or(std::wstring()), element);
    };
    return report(options.target, writeConfig(options.target, edit, output), "item added", output);
}

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
    addArgument(app, "--name NAME", options.item.name, "the path or transformation")->required();
    addArgument(app, "--type TYPE", options.type, "path or transformation")->required();
    addArgument(app, "--note TEXT", options.item.note, "any text");
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
    return {declare(*config,
                    {"get",
                     "Print a stored configuration unchanged",
                     {"config get --drawing FILE", "config get --user", "config get --registry-store"},
                     ""},
                    runGet, kNoText,
                    [](CLI::App& app, ConfigOptions& options) { addConfigTarget(app, options.target, true); }),
            declare(*config, {"set", "Store a configuration", {"config set TEXTFILE (--drawing FILE | --user)"}, ""},
                    runSet, kNotDone,
                    [](CLI::App& app, ConfigOptions& options) {
                        addArgument(app, "TEXTFILE", options.textFile, "the text, UTF-8")->required();
                        addConfigTarget(app, options.target, false);
                    }),
            declare(*config,
                    {"clear",
                     "Empty a configuration",
                     {"config clear (--drawing FILE | --user)"},
                     "For the user this empties the store in the registry; the settings file is not changed."},
                    runClear, kNotDone,
                    [](CLI::App& app, ConfigOptions& options) { addConfigTarget(app, options.target, false); }),
            declare(*config, {"items", "Show the items of a configuration text", {"config items [TEXTFILE]"}, ""},
                    runItems, kNoText,
                    [](CLI::App& app, ConfigOptions& options) {
                        options.textFile = kStandardStream;
                        addArgument(app, "TEXTFILE", options.textFile, "the text, UTF-8 (standard input)");
                    }),
            declare(*config,
                    {"add",
                     "Add an item to a configuration",
                     {"config add --source S --target T --name N --type TYPE [--note X] (--drawing FILE | --user)"},
                     "NAME is a name or a code of the catalog. If several have the name, the code is required."},
                    runAdd, kNotDone, addItemOptions)};
}

const CommandRegistration kConfigCommand({HelpGroup::transformations, 1}, declareConfig);

} // namespace

} // namespace Orvelcs
