// The codes of the catalog's live systems. They come from PROJ and not from the library under test.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace Tests {

/// A walk takes one of so many systems.
inline constexpr std::size_t kCatalogStride = ORVEL_CATALOG_STRIDE;
/// The number of parts of a walk. Processes share them.
inline constexpr std::size_t kCatalogParts = 2;

/// One part of the systems that a walk takes. The parts together hold each system once.
std::vector<std::wstring> partOf(const std::vector<std::wstring>& codes, std::size_t part);

/// The codes in PROJ's order. PROJ's list repeats a few.
std::vector<std::wstring> liveProjectedAndGeographicCodes();
std::vector<std::wstring> liveCompoundAndGeocentricCodes();

} // namespace Tests
