// How the program ends; the number is the process's exit status.
#pragma once

#include <initializer_list>

namespace Orvelcs {

enum class ExitStatus : int {
    done = 0,
    failed = 1, // the operation failed or was refused
    wrongUsage = 2,
    nothingFound = 3 // where something was looked for
};

/// The status of a batch in which both occur: a failure outweighs something that was not found.
inline ExitStatus worse(ExitStatus left, ExitStatus right)
{
    for (const ExitStatus status : {ExitStatus::wrongUsage, ExitStatus::failed, ExitStatus::nothingFound})
        if (left == status || right == status)
            return status;
    return ExitStatus::done;
}

} // namespace Orvelcs
