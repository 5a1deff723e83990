// Runs of a shell script.
#pragma once

#include "cli/program_run.h"

namespace Tests {

/// Runs a script, which finds the path of the program in $0.
inline ProgramRun shellRun(const std::string& script, const std::string& input = "")
{
    ProgramRun run;
    run.program = "/bin/sh";
    run.arguments = {"-c", script, ORVELCS_PROGRAM};
    run.input = input;
    return run;
}

} // namespace Tests
