// The page of a comparison on the finest grid with which it is not too large.
#pragma once

#include <string>
#include <vector>

#include "orvelcs/drawing/comparison_picture.h"

namespace Orvelcs {

/// The ten best candidates that can be used, after the two that are to be shown at first.
std::vector<Candidate> pageCandidates(const TransformationComparison& comparison, const std::vector<Candidate>& shown);

/// Evaluates the candidates all over the place. Throws Failure where one of them cannot be used.
std::string fitComparisonPage(const PicturedPair& pair, TransformationComparison& comparison,
                              const std::vector<Candidate>& candidates);

} // namespace Orvelcs
