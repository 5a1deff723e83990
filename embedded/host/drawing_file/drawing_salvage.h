// Saving what can be read of a damaged drawing file.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "embedded/base/lock_wait.h"
#include "embedded/host/database/file_result.h"
#include "embedded/host/database/object_state.h"
#include "platform/export.h"

namespace Embedded {

struct LostObject {
    Handle handle = 0;
    std::string className; // empty where it cannot be read
    std::string reason;    // or what of it is lost
};

struct Salvage {
    std::size_t objects = 0; // that were written
    std::vector<LostObject> lost;
};

/// Writes every object of the damaged file that can be read into a new drawing file, and says which are lost.
/// Dictionaries and xrecords whose owner is lost are found in the dictionary "SALVAGED" of the named objects, by their
/// handles. The damaged file is not changed. Where nothing but its rows is damaged, what was whole is the same in the
/// new one. The results of loadDrawing for a file whose schema cannot be read; eFileExists for a new file that is
/// there.
QEHOST_API FileResult salvageDrawing(const std::filesystem::path& damaged, const std::filesystem::path& file,
                                     const LockWait& wait, Salvage& salvage);

} // namespace Embedded
