// What the scenarios are about: systems of the catalog, and drawings that hold them in each stored form.
#pragma once

#include "sweep/fixture.h"

namespace Tests {

/// The system of the scenarios, and another one.
inline constexpr const wchar_t* kSystemCode = L"EPSG:25832";
inline constexpr const wchar_t* kOtherCode = L"EPSG:2263";

Setting emptyDrawing();
Setting drawingWithGeoData();
/// One that the catalog does not know.
Setting drawingWithUsersSystem();
Setting drawingWithLegacyCode();
/// A code that is neither stored nor in the catalog.
Setting drawingWithUnknownLegacyCode();
/// Legacy code, xrecord and GeoData text.
Setting drawingWithAllForms();

/// The same with a reactor that vetoes as told.
Setting heard(Setting setting, Veto veto = Veto::none);

} // namespace Tests
