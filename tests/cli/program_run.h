// Runs the real program and takes down everything that it answers.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace Tests {

/// Where the program's standard output goes.
enum class OutputTarget { captured, full, closed, closedPipe };

struct ProgramRun {
    std::vector<std::string> arguments;
    std::string input;
    OutputTarget target = OutputTarget::captured;
    std::map<std::string, std::string> environment; // beside PATH, HOME and the C locale
    std::filesystem::path program = ORVELCS_PROGRAM;
};

struct ProgramResult {
    int status = -1; // -1: it did not end by itself
    std::string output;
    std::string errors;
};

/// Runs it in `folder` and waits. Captures go into a folder of their own, so that `folder` holds the program's files
/// alone.
ProgramResult runProgram(const ProgramRun& run, const std::filesystem::path& folder,
                         const std::filesystem::path& captures);

} // namespace Tests
