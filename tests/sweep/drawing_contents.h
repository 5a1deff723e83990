// What a drawing holds, without the handles by which it holds it: the same content may have been written again.
#pragma once

#include <map>
#include <string>

#include "embedded/host/drawing_image.h"

namespace Tests {

/// The objects that can be reached, by the way that leads to them, with no handle in them; without empty dictionaries.
using DrawingContents = std::map<std::wstring, Embedded::ObjectImage>;

DrawingContents contentsOf(const Embedded::DrawingImage& image);

} // namespace Tests
