// Definitions that go together, and those that do not, for targets whose inputs name them by number.
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

/// Systems of each kind, each followed by its datum and its ellipsoid where it has them. The last system is a user's.
const std::vector<SampleDefinition>& sampleDefinitions();

} // namespace Fuzz
