// Runs the program and captures its output.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace Tests {

/// The program's standard output. Windows has no file that is always full.
enum class OutputTarget { captured, full, closed, closedPipe };

struct UnwritableOutput {
    OutputTarget target;
    std::string reason; // as the program reports it
};

/// The outputs that cannot be written on this system, and are reported.
std::vector<UnwritableOutput> unwritableOutputs();

/// The exit status of a program whose output goes into a closed pipe, which is not reported.
extern const int kClosedPipeStatus;

struct ProgramRun {
    std::vector<std::string> arguments;
    std::string input;
    OutputTarget target = OutputTarget::captured;
    std::map<std::string, std::string> environment; // added to the variables that every program needs
    std::filesystem::path program = ORVELCS_PROGRAM;
};

struct ProgramResult {
    int status = -1; // -1 if the program did not end by itself
    std::string output;
    std::string errors;
};

/// Runs the program in `folder` until it ends. Its output is captured in another folder, so that `folder` has only the
/// files of the program.
ProgramResult runProgram(const ProgramRun& run, const std::filesystem::path& folder,
                         const std::filesystem::path& captures);

/// Changes the run so that the program finds no catalog. A copy of the program is made in the folder if necessary.
ProgramRun withoutCatalog(ProgramRun run, const std::filesystem::path& folder);

} // namespace Tests
