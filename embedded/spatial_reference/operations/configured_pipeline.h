// The pipeline through a transformation or path that a configuration names.
#pragma once

#include <memory>

#include "embedded/spatial_reference/operations/pipeline.h"

namespace Embedded {

/// Throws ErrorException for an operation that does not fit, must not be reversed or cannot be used here.
std::unique_ptr<Pipeline> configuredPipeline(const SystemParts& source, const SystemParts& target,
                                             const ConfiguredOperation& configured);

/// Throws ErrorException for an operation that cannot be used between the systems wherever it is tried. A grid that is
/// not installed is no reason.
void checkFit(const SystemParts& source, const SystemParts& target, const ConfiguredOperation& configured);

} // namespace Embedded
