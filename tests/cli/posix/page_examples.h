// The shell commands that a page of the documentation shows, and runs of them.
#pragma once

#include <string>
#include <vector>

#include "cli/program_run.h"

namespace Tests {

/// The blocks of shell commands below a heading of a page of docs.
std::vector<std::string> pageExamples(const std::string& page, const std::string& heading);

/// A run of the commands with the program in the search path.
ProgramRun exampleRun(const std::string& script);

} // namespace Tests
