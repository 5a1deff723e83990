// Kinds of transformations as a person reads them.
#pragma once

#include <string>

namespace Orvelcs {

/// "path" for 1, "transformation" for 2, "neither path nor transformation" for anything else.
std::string transformationKindName(int kind);

} // namespace Orvelcs
