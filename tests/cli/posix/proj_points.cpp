#include "cli/proj_points.h"

#include <cstdlib>
#include <sstream>
#include <stdexcept>

#include "cli/program_run.h"
#include "support/temporary_folder.h"

namespace Tests {
namespace {

/// PROJ's own program for coordinate operations.
std::filesystem::path cct()
{
    std::istringstream folders(std::getenv("PATH") != nullptr ? std::getenv("PATH") : "");
    for (std::string folder; std::getline(folders, folder, ':');)
        if (std::filesystem::exists(std::filesystem::path(folder) / "cct"))
            return std::filesystem::path(folder) / "cct";
    throw std::runtime_error("cct is missing: install proj-bin");
}

} // namespace

std::string carriedOverByProj(const std::string& code, bool isInverse, const std::string& points,
                              const std::filesystem::path& folder)
{
    const TemporaryFolder captures;
    ProgramRun programRun;
    programRun.program = cct();
    programRun.arguments = {"-d", "12", "-t", "0"};
    if (isInverse)
        programRun.arguments.emplace_back("-I");
    programRun.arguments.push_back(code);
    programRun.input = points;
    return runProgram(programRun, folder, captures.path()).output;
}

} // namespace Tests
