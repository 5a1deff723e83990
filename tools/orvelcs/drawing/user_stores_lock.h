// The lock under which one process at a time changes the user's stores: the settings file and the registry's store.
#pragma once

#include <memory>

#include "orvelcs/cli/lock_file.h"
#include "orvelcs/cli/output.h"

namespace Orvelcs {

/// Creates the folder of the settings file where it is missing, and waits for the lock file in it as long as --wait
/// says. Throws Failure when there is no folder, and when another process still holds the lock.
[[nodiscard]] std::unique_ptr<LockFile> lockUserStores(const Output& output);

} // namespace Orvelcs
