// Parses the command line: the command, its options, or what is wrong with them.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orvelcs/cli/command.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/user_options.h"
#include "orvelcs/cli/wait.h"

namespace Orvelcs {

/// What the command line asks for.
struct Invocation {
    enum class Kind { command, help, version, wrongUsage };
    Kind kind = Kind::wrongUsage;
    std::string command;              // "assign", "catalog search"; "command line" when it names none
    const CLI::App* helpOf = nullptr; // for help: the command, or the program
    bool checksCatalog = false;       // for version
    std::optional<Failure> failure;   // for wrong usage
};

class CommandLine {
public:
    CommandLine();
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;

    Invocation parse(int argumentCount, const char* const* arguments);
    const OutputOptions& outputOptions() const { return outputOptions_; }
    const UserOptions& userOptions() const { return userOptions_; }
    const WaitOption& waitOption() const { return waitOption_; }
    /// Runs the command that the last `parse` found. Throws Failure.
    ExitStatus run(Output& output) const;

private:
    void addGlobalOptions();
    /// Sets what --color and --no-color say. Throws Failure for another word.
    void applyColorOptions();
    Failure describeRefusal(const CLI::ParseError& error) const;
    Failure unknownArgument(const std::string& argument) const;
    Failure unknownOption(const std::string& name) const;
    const CLI::App* selected() const;
    std::vector<std::string> knownOptions() const;

    std::unique_ptr<CLI::App> program_;
    std::vector<Command> commands_;
    OutputOptions outputOptions_;
    UserOptions userOptions_;
    WaitOption waitOption_;
    std::string color_;
    CLI::Option* colorOption_ = nullptr;
    bool noColor_ = false; // color_ may come after it
    CLI::Option* noColorOption_ = nullptr;
    bool version_ = false;
    bool check_ = false;
};

} // namespace Orvelcs
