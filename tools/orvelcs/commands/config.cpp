// config: the stored choice of transformations, as a text.
#include <algorithm>
#include <memory>

#include <fmt/format.h>

#include "embedded/base/text.h"
#include "orvelcs/cli/display_text.h"
#include "orvelcs/cli/error_document.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/drawing/catalog_lookup.h"
#include "orvelcs/drawing/config_check.h"
#include "orvelcs/drawing/config_item.h"
#include "orvelcs/drawing/config_store.h"
#include "orvelcs/drawing/config_text.h"
#include "orvelcs/drawing/settings_file.h"
#include "orvelcs/drawing/user_stores_lock.h"

namespace Orvelcs {
namespace {

struct ConfigOptions {
    ConfigTarget target;
    std::string textFile;
    CLI::Option* textFileOption = nullptr;
    ConfigItemText item;
    bool force = false;
};

std::wstring readTextArgument(const std::string& file)
{
    if (file.empty())
        throw wrongUsage("TEXTFILE", "is empty");
    return readText(file);
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
    const auto lock = lockConfig(options.target, output);
    const ExitStatus status = reportConfigChange(options.target,
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
    const auto lock = lockConfig(options.target, output);
    const ConfigChange change = clearConfig(options.target, output);
    if (options.target.isDrawing())
        return reportConfigChange(options.target, change, "configuration cleared", output);
    ConfigTarget registry = options.target;
    registry.registryStore = true;
    const ExitStatus status = reportConfigChange(registry, change, "emptied", output);
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

/// Returns how many items were removed from the text.
std::size_t removePair(std::wstring& text, const std::wstring& source, const std::wstring& target)
{
    const auto removed = static_cast<std::size_t>(
        std::ranges::count_if(parseItems(text), [&](const ConfigItem& item) { return isPair(item, source, target); }));
    if (removed > 0)
        text = withoutPair(text, source, target);
    return removed;
}

ExitStatus runRemove(const ConfigOptions& options, Output& output)
{
    checkConfigTarget(options.target, true, output);
    const std::wstring source = codeArgument("--source", options.item.source);
    const std::wstring target = codeArgument("--target", options.item.target);
    if (options.target.drawing == kStandardStream)
        throw wrongUsage("--drawing", "a drawing from standard input is read once; name a file");
    const auto lock = lockConfig(options.target, output);
    std::size_t removed = 0;
    const ConfigEdit edit = [&](const StoredConfig& stored) {
        std::wstring text = stored().value_or(std::wstring());
        removed = removePair(text, source, target);
        if (removed == 0) // an item may have been stored with the codes as they are written here
            removed = removePair(text, Embedded::wideFromUtf8(options.item.source),
                                 Embedded::wideFromUtf8(options.item.target));
        if (removed == 0)
            throw Failure(options.target.subject(),
                          fmt::format("has no item from {} to {}", options.item.source, options.item.target),
                          ExitStatus::nothingFound);
        return text;
    };
    const ConfigChange change = writeConfig(options.target, edit, output);
    return reportConfigChange(options.target, change,
                              removed == 1 ? "item removed" : fmt::format("{} items removed", removed), output);
}

constexpr const char* kGetDetails =
    "The text is the drawing's, that of the user's settings file, or the one in the user's part of the registry. For "
    "an empty configuration nothing is printed and the exit status is 0. In JSON it is the member text, or null.\n\n"
    "A settings file is refused if it is a folder, a pipe or a device, if it may not be read, or if it is not UTF-8. "
    "This holds for every command that reads the user's configuration.";

const std::string kSetDetails =
    "The text replaces the configuration. A drawing stores it unchanged. The settings file has a line for each item, "
    "and text after the last </Item> is not stored. " +
    std::string(kItemRefusals) +
    "\n\n"
    "The module writes the settings file into the folder .orvelcs-new beside the old one. The new file is read for "
    "comparison and then replaces the old one, either completely or not at all. A symbolic link still points to the "
    "file, and the file keeps its permissions. Other hard links keep the old text. In JSON result says whether the "
    "text is stored and events every notice that a registered reactor received.";

constexpr const char* kClearDetails = "For the user this empties the store in the registry. The settings file is not "
                                      "changed and is still read, and a note "
                                      "says so. To empty that file, set an empty text.";

constexpr const char* kConfigDetails =
    "A drawing's configuration is used before the user's.\n\n"
    "For the user, config set, config add, config remove and config clear lock the file orvelcs.lock before they read "
    "and release it after they have written, so that no item is lost that another process adds. The lock file is in "
    "the folder of the settings file, or in the folder of the file that a link of that name points to. A missing "
    "folder is created. The lock file remains after the command, but the system releases the lock when the process "
    "ends in any way.";

using Run = ExitStatus (*)(const ConfigOptions&, Output&);

/// The JSON of a command that ends early.
const Json kNoText = nullptr;

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

std::vector<Command> declareConfig(CLI::App& program)
{
    CLI::App* config =
        addCommand(program, {"config",
                             "Read and change the configured transformations of drawings and of the user",
                             {"config COMMAND ..."},
                             kConfigDetails});
    config->require_subcommand(1);
    return {
        declare(*config,
                {"get",
                 "Print a stored configuration unchanged",
                 {"config get (--drawing FILE | --user | --registry-store)"},
                 kGetDetails,
                 {{"Save the configuration of a drawing", "orvelcs config get --drawing configured.qedb > saved.xml"},
                  {"Print the user's configuration", "orvelcs config get --user", ExitStatus::nothingFound}},
                 {{ExitStatus::nothingFound, "there is no configuration"}}},
                runGet, kNoText,
                [](CLI::App& app, ConfigOptions& options) { addConfigTarget(app, options.target, true); }),
        declare(*config,
                {"set",
                 "Store a configuration",
                 {"config set [--force] TEXTFILE (--drawing FILE | --user)"},
                 kSetDetails,
                 {{"Copy the configuration of a drawing to the user",
                   "orvelcs config get --drawing configured.qedb | orvelcs config set - --user"}}},
                runSet, kConfigNotChanged,
                [](CLI::App& app, ConfigOptions& options) {
                    addArgument(app, "TEXTFILE", options.textFile,
                                "the text, UTF-8 with or without a byte-order mark; - is standard input")
                        ->required();
                    app.add_flag("--force", options.force, "store items that the catalog contradicts as well");
                    addConfigTarget(app, options.target, false);
                }),
        declare(*config,
                {"clear",
                 "Empty a configuration",
                 {"config clear (--drawing FILE | --user)"},
                 kClearDetails,
                 {{"Empty the configuration of a drawing", "orvelcs config clear --drawing configured.qedb"}}},
                runClear, kConfigNotChanged,
                [](CLI::App& app, ConfigOptions& options) { addConfigTarget(app, options.target, false); }),
        declare(*config,
                {"items",
                 "Show the items of a configuration, or of a text",
                 {"config items [TEXTFILE]", "config items (--drawing FILE | --user | --registry-store)"},
                 "The items are shown as the module reads them, one for each </Item>. An item that could not be read "
                 "completely is shown as incomplete, and in JSON its xml is empty.",
                 {{"Show what a drawing has configured", "orvelcs config items --drawing configured.qedb"},
                  {"Show the items of a text", "orvelcs config items settings.xml"}},
                 {{ExitStatus::nothingFound, "the store has no configuration"}}},
                runItems, kNoText,
                [](CLI::App& app, ConfigOptions& options) {
                    options.textFile = kStandardStream;
                    options.textFileOption = addArgument(app, "TEXTFILE", options.textFile,
                                                         "the text, UTF-8; - is standard input", {.defaultValue = "-"});
                    addConfigTarget(app, options.target, true);
                }),
        declare(*config,
                {"remove",
                 "Remove the items of two systems from a configuration",
                 {"config remove --source CODE --target CODE (--drawing FILE | --user)"},
                 "Every item of the two systems is removed, ignoring case. The rest of the text stays as it is. "
                 "Without such an item nothing is changed.",
                 {{"Remove a choice from a drawing",
                   "orvelcs config remove --source EPSG:4230 --target EPSG:4326 --drawing configured.qedb"}},
                 {{ExitStatus::nothingFound, "there is no such item"}}},
                runRemove, kConfigNotChanged, [](CLI::App& app, ConfigOptions& options) {
                    addArgument(app, "--source CODE", options.item.source, "the source system")->required();
                    addArgument(app, "--target CODE", options.item.target, "the target system")->required();
                    addConfigTarget(app, options.target, false);
                })};
}

const CommandRegistration kConfigCommand({HelpGroup::transformations, 1}, declareConfig);

} // namespace

} // namespace Orvelcs
