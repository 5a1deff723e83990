// What the scenarios of the transformation configuration begin with.
#pragma once

#include <string>
#include <vector>

#include "sweep/fixture.h"
#include "transformation/transformation_test.h"

namespace Tests {

/// The document's drawing with the configuration, or without one.
Setting configuredDrawing(const std::wstring& text);
/// A user with a settings file that holds the elements, each on a line; the drawing has no configuration.
Setting configuredUser(const std::vector<std::wstring>& elements);

} // namespace Tests
