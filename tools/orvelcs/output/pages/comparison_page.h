// The page of a comparison: distances between any two of the best candidates, on a map that answers the pointer and the
// keyboard.
#pragma once

#include <string>
#include <vector>

#include "orvelcs/output/map/pictured_comparison.h"

namespace Orvelcs {

/// Distances between each two of the candidates, all on one grid.
struct ComparedCandidates {
    PicturedPair pair;
    std::vector<PicturedCandidate> candidates; // the first two are shown at first
    NodeGrid nodes;
    std::vector<std::vector<double>> metres; // of the first and the second, the first and the third, ...
};

/// Pages have at most so many bytes.
inline constexpr std::size_t kLargestPage = 1'500'000;

std::string writeComparisonPage(const ComparedCandidates& compared);

} // namespace Orvelcs
