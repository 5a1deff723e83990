// How long a source file may be.
#pragma once

#include <string>
#include <vector>

#include "project/source_tree.h"

namespace Tests {

/// One complaint for each header of 200 lines or more and each .cpp of 400 or more. Headers of a platform that a
/// product copies may have any length.
std::vector<std::string> findFilesOverBudget(const std::vector<SourceFile>& files);

} // namespace Tests
