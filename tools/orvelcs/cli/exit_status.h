// The exit status of the process.
#pragma once

#include <initializer_list>

namespace Orvelcs {

enum class ExitStatus : int {
    done = 0,
    failed = 1, // the operation failed or was refused
    wrongUsage = 2,
    nothingFound = 3,  // where something was looked for
    interrupted = 130, // by Ctrl-C or the system
    readerGone = 141   // of standard output; 1 on Windows
};

/// The status of a batch in which both occur. A failure is worse than something that was not found.
inline ExitStatus worse(ExitStatus left, ExitStatus right)
{
    for (const ExitStatus status : {ExitStatus::wrongUsage, ExitStatus::failed, ExitStatus::nothingFound})
        if (left == status || right == status)
            return status;
    return ExitStatus::done;
}

} // namespace Orvelcs
