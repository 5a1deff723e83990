// What the pictures of a comparison show, from the comparison itself.
#pragma once

#include <vector>

#include "orvelcs/drawing/transformation_comparison.h"
#include "orvelcs/output/map/pictured_comparison.h"

namespace Orvelcs {

/// The best two that can be used. Throws Failure where there are fewer.
std::vector<Candidate> bestTwo(const TransformationComparison& comparison);

/// The place that the pictures show: the common area of use, or the part of it that the place is. Throws Failure where
/// there is none.
PicturedPair picturePair(const SystemPair& pair, const TransformationComparison& comparison);

PicturedCandidate pictureCandidate(const Candidate& candidate);

/// Evaluates both candidates all over the place. Throws Failure where one of them cannot be used.
PicturedComparison pictureComparison(PicturedPair pair, TransformationComparison& comparison, const Candidate& first,
                                     const Candidate& second);

} // namespace Orvelcs
