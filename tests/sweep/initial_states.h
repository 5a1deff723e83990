// The states in which the scenarios begin: drawings with a coordinate system in each stored form, and transformation
// configurations of drawings and users.
#pragma once

#include <string>
#include <vector>

#include "sweep/fixture.h"

namespace Tests {

/// The system that a drawing holds, and the one that a call assigns.
inline constexpr const wchar_t* kSystemCode = L"EPSG:25832";
inline constexpr const wchar_t* kOtherCode = L"EPSG:2263";

InitialState emptyDrawing();
InitialState drawingWithGeoData();
/// The catalog does not have the system.
InitialState drawingWithUsersSystem();
InitialState drawingWithLegacyCode();
/// The legacy code is neither stored as a definition nor in the catalog.
InitialState drawingWithUnknownLegacyCode();
/// Legacy code, xrecord and GeoData text.
InitialState drawingWithAllForms();

/// The document's drawing holds the configuration.
InitialState configuredDrawing(const std::wstring& text);
/// The user's settings file holds the elements, each on a line. The drawing has no configuration.
InitialState configuredUser(const std::vector<std::wstring>& elements);

/// Adds a reactor.
InitialState withReactor(InitialState initialState, Veto veto = Veto::none);

} // namespace Tests
