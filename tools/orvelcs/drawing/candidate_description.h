// Candidates of a comparison as the commands print them.
#pragma once

#include <string>

#include "orvelcs/cli/json.h"
#include "orvelcs/drawing/transformation_comparison.h"

namespace Orvelcs {

/// "EPSG:1612 (ED50 to WGS 84 (23))", or the name alone.
std::string describeCandidate(const Candidate& candidate);
/// "covers the place", "covers a part", "outside" or "area unknown".
std::string coverageText(Coverage coverage);

/// The operation as `transformation list` prints it, with what the comparison adds.
Json candidateAsJson(const Candidate& candidate);
Json pointAsJson(const Embedded::GeographicPoint& point);

} // namespace Orvelcs
