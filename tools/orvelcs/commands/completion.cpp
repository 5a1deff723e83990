// completion: scripts with which a shell completes the words of a command line.
#include <map>
#include <memory>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "orvelcs/cli/command.h"
#include "orvelcs/cli/command_table.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/suggestion.h"
#include "orvelcs/output/completion.h"

namespace Orvelcs {
namespace {

struct CompletionOptions {
    std::string shell;
};

using WriteScript = std::string (*)(const CommandTable&);

ExitStatus runCompletion(const CompletionOptions& options, const CLI::App& program, Output& output)
{
    if (output.json())
        throw wrongUsage("--json", "has no place here; the output is a script");
    const std::vector<std::pair<std::string, WriteScript>> shells = {{"bash", bashCompletion},
                                                                     {"zsh", zshCompletion},
                                                                     {"fish", fishCompletion},
                                                                     {"powershell", powershellCompletion}};
    std::vector<std::string> names;
    for (const auto& [name, write] : shells) {
        if (name == options.shell) {
            output.write(write(describeProgram(program)));
            return ExitStatus::done;
        }
        names.push_back(name);
    }
    throw wrongUsage("SHELL", fmt::format("expected one of {}, found {}{}", fmt::join(names, ", "), options.shell,
                                          nearestClause(nearest(options.shell, names))));
}

std::vector<Command> declareCompletion(CLI::App& program)
{
    auto options = std::make_shared<CompletionOptions>();
    CLI::App* app = addCommand(program, {"completion",
                                         "Print a script with which a shell completes command lines",
                                         {"completion SHELL"},
                                         "The script completes commands, options, the values of options that take few, "
                                         "and the names of files. To use it "
                                         "in every shell:\n"
                                         "  bash  Put it into ~/.local/share/bash-completion/completions/orvelcs.\n"
                                         "  zsh  Put it under the name _orvelcs into a folder of $fpath.\n"
                                         "  fish  Put it into ~/.config/fish/completions/orvelcs.fish.\n"
                                         "  powershell  Add its lines to the file that $PROFILE names. That script has "
                                         "not been tried in a PowerShell yet.",
                                         {{"Load the script, and see that bash knows it",
                                           "bash -c '. <(orvelcs completion bash) && complete -p orvelcs'"},
                                          {"Save the script for zsh", "orvelcs completion zsh > _orvelcs"}}});
    addArgument(*app, "SHELL", options->shell, "the shell", {.choices = {"bash", "zsh", "fish", "powershell"}})
        ->required();
    return {{app, [options, &program](Output& output) { return runCompletion(*options, program, output); }}};
}

const CommandRegistration kCompletionCommand({HelpGroup::program, 3}, declareCompletion);

} // namespace

} // namespace Orvelcs
