// Lets one process at a time change the user's stores: the settings file and the registry's store.
#pragma once

#include <memory>

#include "orvelcs/cli/lock_file.h"
#include "orvelcs/cli/output.h"

namespace Orvelcs {

/// Makes the folder of the settings file where it lacks, and waits for the lock file in it as long as --wait says.
/// Throws Failure when there is no folder for it, and when another process holds it until the end.
[[nodiscard]] std::unique_ptr<LockFile> lockUserStores(const Output& output);

} // namespace Orvelcs
