#include "cli/proj_points.h"

#include "cli/posix/installed_program.h"
#include "cli/program_run.h"
#include "support/temporary_folder.h"

namespace Tests {

std::string transformByProj(const std::string& code, bool isInverse, const std::string& points,
                            const std::filesystem::path& folder)
{
    const TemporaryFolder captures;
    ProgramRun programRun;
    programRun.program = findProjProgram("cct");
    programRun.arguments = {"-d", "12", "-t", "0"};
    if (isInverse)
        programRun.arguments.emplace_back("-I");
    programRun.arguments.push_back(code);
    programRun.input = points;
    return runProgram(programRun, folder, captures.path()).output;
}

} // namespace Tests
