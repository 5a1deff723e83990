// Saving what can be read of a damaged drawing file.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "embedded/base/error.h"
#include "embedded/base/lock_wait.h"
#include "embedded/host/database/handle.h"
#include "platform/export.h"

namespace Embedded {

struct LostObject {
    Handle handle = 0;
    std::string className; // empty where it cannot be read
    std::string reason;    // why it is lost, or which part of it
};

struct Salvage {
    std::size_t objects = 0; // the number of objects that were written
    std::vector<LostObject> lost;
};

/// Writes every object of the damaged file that can be read into a new drawing file, and says which are lost.
/// Dictionaries and xrecords whose owner is lost are found in the dictionary "SALVAGED" of the named objects, by their
/// handles. The damaged file is not changed. If only its rows are damaged, all undamaged objects are the same in the
/// new file. Fails as loadDrawing does for a file whose schema cannot be read; eFileExists for a new file that is
/// there.
QEHOST_API Expected<Salvage> salvageDrawing(const std::filesystem::path& damaged, const std::filesystem::path& file,
                                            const LockWait& wait);

} // namespace Embedded
