// The transformation that is configured between two systems, as the module finds it.
#pragma once

#include <optional>
#include <string>

#include "embedded/spatial_reference/operations/coordinate_operations.h"
#include "orvelcs/cli/output.h"

namespace Orvelcs {

/// Asks the module, with the drawing as the host's current one where a drawing is named. Throws Failure when the
/// drawing cannot be loaded, and when the user's settings file would decide and cannot be read.
std::optional<Embedded::ConfiguredOperation> configuredTransformation(const std::wstring& source,
                                                                      const std::wstring& target,
                                                                      const std::optional<std::string>& drawing,
                                                                      const Output& output);

} // namespace Orvelcs
