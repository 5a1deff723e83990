// Checking all of a drawing file.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "embedded/base/error.h"
#include "embedded/base/lock_wait.h"
#include "platform/export.h"

namespace Embedded {

struct DrawingFault {
    std::string place; // "page 3", "object 1F", "header", "database"
    std::string message;
};

struct DrawingFaults {
    std::vector<DrawingFault> reported; // the first hundred
    std::size_t count = 0;
};

/// Reads every page, row, object and reference of the file in one read transaction: a flipped bit anywhere is among the
/// faults. Does not change the file. Fails as loadDrawing does for what is no drawing file at all.
QEHOST_API Expected<DrawingFaults> checkDrawing(const std::filesystem::path& file, const LockWait& wait);

} // namespace Embedded
