#include "orvelcs/cli/command_line.h"

#include <algorithm>
#include <iterator>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/option_values.h"
#include "orvelcs/cli/suggestion.h"

namespace Orvelcs {
namespace {

std::vector<std::string> namesOf(const std::vector<const CLI::App*>& commands)
{
    std::vector<std::string> names;
    for (const CLI::App* command : commands)
        names.push_back(command->get_name());
    return names;
}

std::vector<std::string> subcommandNames(const CLI::App& command)
{
    return namesOf(command.get_subcommands([](const CLI::App*) { return true; }));
}

// A command that does something by itself too has arguments of its own.
std::vector<std::string> requiredSubcommands(const CLI::App& command)
{
    return command.get_require_subcommand_min() > 0 ? subcommandNames(command) : std::vector<std::string>();
}

std::string nameOf(const CLI::App* command)
{
    std::string name;
    for (const CLI::App* app = command; app->get_parent() != nullptr; app = app->get_parent())
        name = name.empty() ? app->get_name() : app->get_name() + " " + name;
    return name.empty() ? "command line" : name;
}

Invocation misused(const std::string& option, const std::string& message)
{
    Invocation invocation;
    invocation.subject = option;
    invocation.message = message;
    return invocation;
}

// The parser's messages are "NAME is required" and "NAME: what is wrong".
Invocation fromParserMessage(const std::string& error)
{
    constexpr std::string_view kRequired = " is required";
    Invocation invocation;
    if (error.ends_with(kRequired)) {
        invocation.subject = error.substr(0, error.size() - kRequired.size());
        invocation.message = "is required";
        return invocation;
    }
    const std::size_t colon = error.find(": ");
    invocation.subject = colon == std::string::npos ? "arguments" : error.substr(0, colon);
    invocation.message = colon == std::string::npos ? error : error.substr(colon + 2);
    if (invocation.message.ends_with("missing"))
        invocation.message = "needs a value";
    else if (invocation.message.starts_with("At Most 1"))
        invocation.message = "is given more than once";
    return invocation;
}

} // namespace

CommandLine::CommandLine() : program_(std::make_unique<CLI::App>("The coordinate reference systems of drawings."))
{
    program_->name("orvelcs");
    setUsage(*program_, {"[OPTIONS] COMMAND ..."});
    program_->add_flag("--json", outputOptions_.json, "print one JSON document");
    program_->add_flag("-q,--quiet", outputOptions_.quiet, "no notes, confirmations and progress");
    program_->add_flag("--no-color", outputOptions_.noColor, "no colour on a terminal either");
    addUserOptions(*program_, userOptions_);
    addWaitOption(*program_, waitOption_);
    program_->add_flag("--version", version_, "print the versions of the program, of PROJ and of the catalog");
    program_->add_flag("--check", check_, "with --version: read the whole catalog and look for damage");
    program_->set_help_flag("-h,--help", "print this help, or a command's");
    program_->add_flag(kSeparatorFlag)->group(""); // not for people, and so in no help
    program_->footer("orvelcs COMMAND --help tells more of a command.\n"
                     "Exit status: 0 done, 1 failed or refused, 2 wrong usage, 3 nothing found.");
    program_->require_subcommand(1);

    commands_ = {declareNew(*program_),   declareAssign(*program_),  declareClear(*program_), declareShow(*program_),
                 declareForms(*program_), declareConvert(*program_), declareCheck(*program_), declareDump(*program_)};
    std::ranges::move(declareCatalog(*program_), std::back_inserter(commands_));
    commands_.push_back(declareEncode(*program_));
    commands_.push_back(declareDecode(*program_));
    std::ranges::move(declareCodec(*program_), std::back_inserter(commands_));
    std::ranges::move(declareConfig(*program_), std::back_inserter(commands_));
    std::ranges::move(declareTransformation(*program_), std::back_inserter(commands_));
    commands_.push_back(declareTransform(*program_));
}

Invocation CommandLine::parse(int argumentCount, const char* const* arguments)
{
    Invocation invocation;
    const std::vector<std::string> given(arguments + std::min(argumentCount, 1), arguments + argumentCount);
    if (const std::optional<MisusedOption> misused = misusedOption(*program_, given)) {
        invocation.command = nameOf(misused->command);
        invocation.subject = misused->option;
        invocation.message = misused->message;
        return invocation;
    }
    std::vector<std::string> words = keptWhole(given);
    std::ranges::reverse(words); // the parser wants them from the back
    try {
        program_->parse(std::move(words));
        if (version_)
            invocation.kind = Invocation::Kind::version;
        else if (check_)
            invocation = misused("--check", "goes with --version only");
        else
            invocation.kind = Invocation::Kind::command;
    } catch (const CLI::CallForHelp&) {
        invocation.kind = Invocation::Kind::help;
        invocation.help = program_->help();
    } catch (const CLI::ParseError& error) {
        if (version_)
            invocation.kind = Invocation::Kind::version;
        else
            invocation = wrongUsageOf(error.what());
    }
    invocation.command = nameOf(selected());
    invocation.checksCatalog = check_;
    return invocation;
}

ExitStatus CommandLine::run(Output& output) const
{
    const auto chosen = std::find_if(commands_.begin(), commands_.end(),
                                     [&](const Command& command) { return command.app == selected(); });
    return chosen->run(output);
}

Invocation CommandLine::wrongUsageOf(const std::string& error) const
{
    const std::vector<std::string> rest = program_->remaining(true);
    if (!rest.empty())
        return unknownArgument(rest.front());
    Invocation invocation = fromParserMessage(error);
    if (const std::vector<std::string> commands = requiredSubcommands(*selected()); !commands.empty()) {
        invocation.subject = "COMMAND";
        invocation.message = fmt::format("is required; one of {}", fmt::join(commands, ", "));
    }
    return invocation;
}

Invocation CommandLine::unknownArgument(const std::string& argument) const
{
    if (looksLikeOption(argument))
        return unknownOption(argument.substr(0, argument.find('=')));
    Invocation invocation;
    invocation.subject = withoutMark(argument);
    const std::vector<std::string> commands = requiredSubcommands(*selected());
    if (commands.empty()) {
        invocation.message = "one argument too many";
        return invocation;
    }
    const std::vector<std::string> similar = nearest(invocation.subject, commands);
    invocation.message = "no such command" + (similar.empty() ? fmt::format("; there are {}", fmt::join(commands, ", "))
                                                              : nearestClause(similar));
    return invocation;
}

Invocation CommandLine::unknownOption(const std::string& name) const
{
    Invocation invocation;
    invocation.subject = name;
    const std::vector<std::string> known = knownOptions();
    if (std::find(known.begin(), known.end(), name) != known.end()) // it was not looked for where it stands
        invocation.message = fmt::format("is an option of {0} and goes after {0}", nameOf(selected()));
    else
        invocation.message = "no such option" + nearestClause(nearest(name, known));
    return invocation;
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
                if (!option->get_group().empty() && std::find(names.begin(), names.end(), "--" + name) == names.end())
                    names.push_back("--" + name);
    return names;
}

} // namespace Orvelcs
