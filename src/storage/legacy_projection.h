// The code of a drawing's coordinate system as older readers find it: extended data of the named objects dictionary.
// See docs/formats/legacy-projection.md.
#pragma once

#include <string>

#include "platform/host.h"

namespace Orvel {

inline constexpr const wchar_t* kLegacyProjectionApplication = L"KTN_PROJECTION";

/// The code, or empty when the drawing has none or it cannot be read.
std::wstring ReadLegacyProjectionCode(QeDbDatabase* database);

/// Whether the record can hold the code: false for null, for an empty text, and for ".", which readers take for none.
[[nodiscard]] bool isLegacyProjectionCode(const wchar_t* code);

/// Stores the code, registering the application where it is not; a null or empty code removes the record. eNoDatabase
/// for a null database, eInvalidInput for the code "." (and nothing is changed), eOutOfMemory, host results as they
/// are.
Qeapp::ErrorStatus WriteLegacyProjectionCode(QeDbDatabase* database, const wchar_t* code);

} // namespace Orvel
