#include "orvelcs/cli/command_line.h"

#include <algorithm>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "orvelcs/cli/help_topics.h"
#include "orvelcs/cli/option_values.h"
#include "orvelcs/cli/suggestion.h"

namespace Orvelcs {
namespace {

std::vector<std::string> commandNames(const std::vector<const CLI::App*>& commands)
{
    std::vector<std::string> names;
    for (const CLI::App* command : commands)
        names.push_back(command->get_name());
    return names;
}

std::vector<std::string> subcommandNames(const CLI::App& command)
{
    return commandNames(command.get_subcommands([](const CLI::App*) { return true; }));
}

// A command that does something by itself too has arguments of its own.
std::vector<std::string> requiredSubcommands(const CLI::App& command)
{
    return command.get_require_subcommand_min() > 0 ? subcommandNames(command) : std::vector<std::string>();
}

std::string commandName(const CLI::App* command)
{
    std::string name;
    for (const CLI::App* app = command; app->get_parent() != nullptr; app = app->get_parent())
        name = name.empty() ? app->get_name() : app->get_name() + " " + name;
    return name.empty() ? "command line" : name;
}

bool isRepeated(const CLI::Option& option)
{
    return option.get_multi_option_policy() != CLI::MultiOptionPolicy::TakeLast &&
           option.get_items_expected_max() == 1 && option.count() > 1;
}

/// Returns whether the name may be named to a user who has misspelt it.
bool isKnown(const CLI::Option& option, const std::string& name)
{
    return !option.get_group().empty() &&
           std::ranges::find(textOf(option).oldNames, name) == textOf(option).oldNames.end();
}

bool isMissing(const CLI::Option& option)
{
    return option.get_required() && option.count() == 0;
}

ColorUse parseColorUse(const std::string& word)
{
    const std::vector<std::pair<std::string, ColorUse>> words = {
        {"auto", ColorUse::automatic}, {"always", ColorUse::always}, {"never", ColorUse::never}};
    for (const auto& [name, use] : words)
        if (word == name)
            return use;
    throw wrongUsage("--color", fmt::format("expected auto, always or never, found {}", word));
}

/// The first option of the command, or of one that it is a part of, to which the condition applies; null without any.
template <class Condition>
const CLI::Option* findOption(const CLI::App* command, const Condition& condition)
{
    for (; command != nullptr; command = command->get_parent())
        for (const CLI::Option* option : command->get_options())
            if (condition(*option))
                return option;
    return nullptr;
}

} // namespace

CommandLine::CommandLine() : program_(std::make_unique<CLI::App>("The coordinate reference systems of drawings."))
{
    program_->name("orvelcs");
    textOf(*program_).usage = {"[OPTIONS] COMMAND ..."};
    textOf(*program_).details =
        "orvelcs help COMMAND describes a command, and orvelcs help TOPIC what concerns several. The topics are " +
        helpTopicNames() + ".";
    textOf(*program_).exitStatuses = {{ExitStatus::nothingFound, "nothing found"},
                                      {ExitStatus::interrupted, "interrupted"}};
    addGlobalOptions();
    program_->require_subcommand(1);
    commands_ = declareCommands(*program_);
}

void CommandLine::addGlobalOptions()
{
    program_->add_flag("--json", outputOptions_.json, "print one JSON document");
    program_->add_flag("-q,--quiet", outputOptions_.quiet, "print no notes, confirmations and progress");
    colorOption_ = addArgument(*program_, "--color WHEN", color_, "use colour and escape sequences",
                               {.choices = {"auto", "always", "never"}, .defaultValue = "auto"})
                       ->take_last();
    noColorOption_ = program_->add_flag("--no-color", noColor_, "the same as --color never");
    addUserOptions(*program_, userOptions_);
    addWaitOption(*program_, waitOption_);
    program_->add_flag("-V,--version", version_, "print the versions of the program, of PROJ and of the catalog");
    program_->add_flag("--check", check_, "with --version: read the whole catalog and look for damage");
    program_->set_help_flag("-h,--help", "print this help, or that of a command");
    program_->add_flag(kSeparatorFlag)->group(""); // not for people, and so in no help
}

void CommandLine::applyColorOptions()
{
    const std::vector<CLI::Option*>& given = program_->parse_order();
    const auto last = std::find_if(given.rbegin(), given.rend(), [&](const CLI::Option* option) {
        return option == colorOption_ || option == noColorOption_;
    });
    if (colorOption_->count() > 0)
        outputOptions_.color = parseColorUse(color_);
    if (last != given.rend() && *last == noColorOption_)
        outputOptions_.color = ColorUse::never;
}

Invocation CommandLine::parse(int argumentCount, const char* const* arguments)
{
    Invocation invocation;
    const std::vector<std::string> given(arguments + std::min(argumentCount, 1), arguments + argumentCount);
    // The parser sets the flag after it has read all arguments, and the answer to wrong usage depends on the flag.
    outputOptions_.json = holdsOption(given, "--json");
    if (const std::optional<MisusedOption> misused = misusedOption(*program_, given)) {
        invocation.command = commandName(misused->command);
        invocation.failure = wrongUsage(misused->option, misused->message);
        return invocation;
    }
    std::vector<std::string> words = markArguments(given);
    std::ranges::reverse(words); // the parser wants them from the back
    try {
        program_->parse(std::move(words));
        applyColorOptions();
        if (version_)
            invocation.kind = Invocation::Kind::version;
        else if (check_)
            invocation.failure = wrongUsage("--check", "goes with --version only");
        else
            invocation.kind = Invocation::Kind::command;
    } catch (const CLI::CallForHelp&) {
        invocation.kind = Invocation::Kind::help;
        invocation.helpOf = selected();
    } catch (const Failure& failure) {
        invocation.failure = failure;
    } catch (const CLI::ParseError& error) {
        if (version_)
            invocation.kind = Invocation::Kind::version;
        else
            invocation.failure = describeRefusal(error);
    }
    invocation.command = commandName(selected());
    invocation.checksCatalog = check_;
    return invocation;
}

ExitStatus CommandLine::run(Output& output) const
{
    const auto chosen = std::find_if(commands_.begin(), commands_.end(),
                                     [&](const Command& command) { return command.app == selected(); });
    return chosen->run(output);
}

// The state of the options shows what is wrong. The parser's own message is the last resort.
Failure CommandLine::describeRefusal(const CLI::ParseError& error) const
{
    const std::vector<std::string> rest = program_->remaining(true);
    if (!rest.empty())
        return unknownArgument(rest.front());
    if (const std::vector<std::string> commands = requiredSubcommands(*selected()); !commands.empty())
        return wrongUsage("COMMAND", fmt::format("is required; one of {}", fmt::join(commands, ", ")));
    if (const CLI::Option* option = findOption(selected(), isRepeated))
        return wrongUsage(option->get_name(), "is given more than once");
    if (const CLI::Option* option = findOption(selected(), isMissing))
        return wrongUsage(option->get_name(), "is required");
    return wrongUsage("arguments", error.what());
}

Failure CommandLine::unknownArgument(const std::string& argument) const
{
    if (looksLikeOption(argument))
        return unknownOption(argument.substr(0, argument.find('=')));
    const std::string word = removeMark(argument);
    const std::vector<std::string> commands = requiredSubcommands(*selected());
    if (commands.empty())
        return wrongUsage(word, "one argument too many");
    const std::vector<std::string> similar = nearest(word, commands);
    const std::string clause =
        similar.empty() ? fmt::format("; there are {}", fmt::join(commands, ", ")) : nearestClause(similar);
    return wrongUsage(word, "no such command" + clause);
}

Failure CommandLine::unknownOption(const std::string& name) const
{
    const std::vector<std::string> known = knownOptions();
    if (std::ranges::find(known, name) != known.end()) // the command has it, and it stands before the command
        return wrongUsage(name, fmt::format("is an option of {0} and goes after {0}", commandName(selected())));
    return wrongUsage(name, "no such option" + nearestClause(nearest(name, known)));
}

const CLI::App* CommandLine::selected() const
{
    const CLI::App* app = program_.get();
    while (!app->get_subcommands().empty())
        app = app->get_subcommands().front();
    return app;
}

std::vector<std::string> CommandLine::knownOptions() const
{
    std::vector<std::string> names;
    for (const CLI::App* app = selected(); app != nullptr; app = app->get_parent())
        for (const CLI::Option* option : app->get_options())
            for (const std::string& name : option->get_lnames())
                if (isKnown(*option, "--" + name) && std::ranges::find(names, "--" + name) == names.end())
                    names.push_back("--" + name);
    return names;
}

} // namespace Orvelcs
