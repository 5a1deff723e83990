// The functions that add the comparisons, one for each part of the system.
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
