// The blocks of shell commands in a page of the documentation.
//
// A block is fenced, in the language `sh` for commands alone, or `console` for "$ command" and the lines that it
// prints. A comment right before it, which readers do not see, may say more:
//   <!-- not run: REASON -->   it is not run
//   <!-- run by SUITE -->      a test suite of its own runs it
//   <!-- first: COMMANDS -->   what prepares the folder is run before it
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "project/source_tree.h"

namespace Tests {

struct CommandBlock {
    std::string place;   // "docs/tour.md:12"
    std::string heading; // the nearest one above
    bool showsOutput = false;
    std::string text;
    std::string comment; // "not run: builds"; empty without one

    /// What follows "PREFIX" in the comment; empty for another comment.
    std::string remark(std::string_view prefix) const;
};

struct ConsoleCommand {
    std::string command;
    std::string output; // empty if the page shows none
};

/// The pages whose commands are tested: the README, the page for contributors and those below docs/. The page of the
/// commands is made of their help, and tested with it.
std::vector<SourceFile> readPagesWithCommands();

std::vector<CommandBlock> findCommandBlocks(const SourceFile& page);

/// The texts of the blocks right below a heading of a page.
std::vector<std::string> commandsBelow(const std::string& page, const std::string& heading);

/// One complaint for each line of the page that looks like a command in a block of another language or an indented one.
std::vector<std::string> findHiddenCommands(const SourceFile& page);

/// The commands of a console block, with what the page shows of their output.
std::vector<ConsoleCommand> splitConsole(const std::string& text);

/// Whether the output is the expected one, in which the line "…" stands for any lines and "…" at the end of a line for
/// the rest of it.
bool matchesOutput(const std::string& expected, const std::string& output);

} // namespace Tests
