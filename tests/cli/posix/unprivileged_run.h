// Runs without the privilege of root to ignore the permissions of files.
#pragma once

#include <unistd.h>

#include "cli/program_run.h"

namespace Tests {

inline ProgramRun withoutPrivileges(ProgramRun run)
{
    if (::geteuid() != 0)
        return run;
    run.arguments.insert(run.arguments.begin(),
                         {"--bounding-set=-dac_override,-dac_read_search", run.program.string()});
    run.program = "/usr/bin/setpriv";
    return run;
}

} // namespace Tests
