// The codes of the catalog's live systems. They come from PROJ and not from the library under test.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace Tests {

/// The tests take one of so many systems.
inline constexpr std::size_t kCatalogStride = ORVEL_CATALOG_STRIDE;
/// The number of parts of the catalog, which different processes test.
inline constexpr std::size_t kCatalogParts = 2;

/// One part of the tested systems. The parts together have each system once.
std::vector<std::wstring> selectPart(const std::vector<std::wstring>& codes, std::size_t part);

/// The codes in PROJ's order, a few of which are repeated.
std::vector<std::wstring> liveProjectedAndGeographicCodes();
std::vector<std::wstring> liveCompoundAndGeocentricCodes();

} // namespace Tests
