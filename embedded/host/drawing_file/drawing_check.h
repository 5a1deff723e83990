// Reading all of a drawing file, to find out what is wrong with it.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "embedded/base/lock_wait.h"
#include "embedded/host/database/file_result.h"
#include "platform/export.h"

namespace Embedded {

struct DrawingFault {
    std::string place; // "page 3", "object 1F", "header", "database"
    std::string message;
};

struct DrawingFaults {
    std::vector<DrawingFault> told; // the first hundred
    std::size_t number = 0;
};

/// Reads every page, row, object and reference of the file in one read transaction: a flipped bit anywhere is among the
/// faults. On eOk `faults` has what was found; otherwise the file is no drawing file at all, with the results of
/// loadDrawing. The file is not changed.
QEHOST_API FileResult checkDrawing(const std::filesystem::path& file, const LockWait& wait, DrawingFaults& faults);

} // namespace Embedded
