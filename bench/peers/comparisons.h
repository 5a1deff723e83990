// What is compared with a peer, by the part of the system that it measures.
#pragma once

#include <vector>

#include "peers/comparison.h"

namespace Bench {

void addCodecComparisons(std::vector<Comparison>& comparisons);
void addConfigurationComparisons(std::vector<Comparison>& comparisons);
void addTransformComparisons(std::vector<Comparison>& comparisons);
void addCommandComparisons(std::vector<Comparison>& comparisons);
void addLibraryComparisons(std::vector<Comparison>& comparisons);

} // namespace Bench
