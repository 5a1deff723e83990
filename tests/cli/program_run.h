// Runs the real program and takes down everything that it answers.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace Tests {

/// Where the program's standard output goes. No file of Windows is always full.
enum class OutputTarget { captured, full, closed, closedPipe };

struct UnwritableOutput {
    OutputTarget target;
    std::string reason; // that the program gives
};

/// Those that the system has.
std::vector<UnwritableOutput> unwritableOutputs();

struct ProgramRun {
    std::vector<std::string> arguments;
    std::string input;
    OutputTarget target = OutputTarget::captured;
    std::map<std::string, std::string> environment; // beside what every program needs
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

/// The run with a catalog that cannot be found. What the program needs for it goes into a folder of the test's own.
ProgramRun withoutCatalog(ProgramRun run, const std::filesystem::path& folder);

} // namespace Tests
