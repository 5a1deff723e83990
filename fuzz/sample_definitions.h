// Sample definitions for targets whose inputs choose them by number.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "support/chain.h"

namespace Fuzz {

/// One definition, packed, and its code.
struct SampleDefinition {
    std::wstring code;
    Tests::Bytes packed;
};

/// Systems of each kind, each followed by its datum and ellipsoid if it has them. The last system is user-defined.
const std::vector<SampleDefinition>& sampleDefinitions();

} // namespace Fuzz
