// Finds one candidate of a comparison: by its number, its code or its name.
#pragma once

#include <string>

#include "orvelcs/drawing/transformation_comparison.h"

namespace Orvelcs {

/// Throws Failure: nothing found, with the nearest names, or a name that several have.
const Candidate& chooseCandidate(const std::string& option, const std::string& numberCodeOrName,
                                 const TransformationComparison& comparison);

} // namespace Orvelcs
