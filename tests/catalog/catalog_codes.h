// The codes of the catalog's live systems, asked of PROJ itself and not of the library under test.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace Tests {

/// How many systems there are for each one that is taken.
inline constexpr std::size_t kCatalogStride = ORVEL_CATALOG_STRIDE;
/// How many parts a walk has, so that processes can share the work.
inline constexpr std::size_t kCatalogParts = 2;

/// One part of those that are taken; with all parts each is met once.
std::vector<std::wstring> partOf(const std::vector<std::wstring>& codes, std::size_t part);

/// In PROJ's order, and as often as its list has them: it repeats a few.
std::vector<std::wstring> liveProjectedAndGeographicCodes();
std::vector<std::wstring> liveCompoundAndGeocentricCodes();

} // namespace Tests
