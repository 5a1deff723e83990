// What the module answers when it is asked for the transformation between two systems.
#pragma once

#include <optional>
#include <string>

#include "embedded/spatial_reference/operations/coordinate_operations.h"
#include "orvelcs/cli/output.h"

namespace Orvelcs {

/// With the drawing, if one is named, as the host's current one. Throws DrawingFailure when it cannot be loaded, and
/// Failure for a settings file of the user's that would be asked and cannot be read.
std::optional<Embedded::ConfiguredOperation> configuredTransformation(const std::wstring& source,
                                                                      const std::wstring& target,
                                                                      const std::optional<std::string>& drawing,
                                                                      const Output& output);

} // namespace Orvelcs
