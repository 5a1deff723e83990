// How the program ends; the number is the process's exit status.
#pragma once

#include <algorithm>

namespace Orvelcs {

enum class ExitStatus : int {
    done = 0,
    failed = 1, // the operation failed or was refused
    wrongUsage = 2,
    nothingFound = 3 // where something was looked for
};

/// A batch ends with the largest of its drawings' statuses.
inline ExitStatus worse(ExitStatus left, ExitStatus right)
{
    return std::max(left, right);
}

} // namespace Orvelcs
