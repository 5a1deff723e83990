// The codes of the catalog's live projected and geographic systems, asked of PROJ itself and not of the library under
// test.
#pragma once

#include <string>
#include <vector>

namespace Tests {

/// In PROJ's order, and as often as its list has them: it repeats a few.
std::vector<std::wstring> liveProjectedAndGeographicCodes();

} // namespace Tests
