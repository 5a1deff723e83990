// help: what the program, a command or a topic is about.
#include <algorithm>
#include <memory>

#include <fmt/format.h>

#include "orvelcs/cli/command.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/help_text.h"
#include "orvelcs/cli/help_topics.h"
#include "orvelcs/cli/suggestion.h"
#include "orvelcs/cli/text_blocks.h"

namespace Orvelcs {
namespace {

struct HelpOptions {
    std::vector<std::string> words;
};

const CLI::App* findCommand(const CLI::App& parent, const std::string& name)
{
    const auto found = parent.get_subcommands([&](const CLI::App* command) { return command->get_name() == name; });
    return found.empty() ? nullptr : found.front();
}

Failure unknownCommand(const CLI::App& parent, const std::string& word)
{
    std::vector<std::string> names;
    for (const CLI::App* command : parent.get_subcommands([](const CLI::App*) { return true; }))
        names.push_back(command->get_name());
    if (parent.get_parent() == nullptr)
        for (const HelpTopic& topic : helpTopics())
            names.push_back(topic.name);
    return wrongUsage(word, "no such command or topic" + nearestClause(nearest(word, names)));
}

bool printTopic(const std::string& name, Output& output)
{
    const auto topic = std::ranges::find(helpTopics(), name, &HelpTopic::name);
    if (topic == helpTopics().end())
        return false;
    output.heading(topic->title);
    output.write("\n" + layOutBlocks(parseTextBlocks(topic->text), Output::helpColumns()));
    return true;
}

ExitStatus runHelp(const HelpOptions& options, const CLI::App& program, Output& output)
{
    if (options.words.size() == 1 && printTopic(options.words.front(), output))
        return ExitStatus::done;
    const CLI::App* command = &program;
    for (const std::string& word : options.words) {
        const CLI::App* next = findCommand(*command, word);
        if (next == nullptr)
            throw unknownCommand(*command, word);
        command = next;
    }
    output.write(helpText(*command, Output::helpColumns()));
    return ExitStatus::done;
}

std::vector<Command> declareHelp(CLI::App& program)
{
    auto options = std::make_shared<HelpOptions>();
    CLI::App* app =
        addCommand(program, {"help",
                             "Describe the program, a command or a topic",
                             {"help [COMMAND...]", "help TOPIC"},
                             "Without a COMMAND it lists all commands. A TOPIC is what concerns several commands: " +
                                 helpTopicNames() + ".",
                             {{"Describe a command", "orvelcs help catalog search"},
                              {"Describe what a command takes as a SYSTEM", "orvelcs help systems"}}});
    addArguments(*app, "COMMAND", options->words, "the command, or the topic");
    return {{app, [options, &program](Output& output) { return runHelp(*options, program, output); }}};
}

const CommandRegistration kHelpCommand({HelpGroup::program, 1}, declareHelp);

} // namespace

} // namespace Orvelcs
