// The item of a transformation configuration that `config add --best` stores.
#pragma once

#include "orvelcs/drawing/config_item.h"
#include "orvelcs/drawing/transformation_comparison.h"

namespace Orvelcs {

struct BestItem {
    ConfigItemText item;
    Candidate candidate;
};

/// The item with the name and the type of the best candidate that can be stored, between its source and its target.
/// Prints notes about the better ones that cannot, and about the best one. Throws Failure, nothing found, when none can
/// be stored, and as the comparison does.
BestItem bestItem(const ConfigItemText& item, const ComparedPlace& place, Output& output);

} // namespace Orvelcs
