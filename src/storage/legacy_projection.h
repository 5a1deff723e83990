// The code of a drawing's coordinate system in the form that older readers use: extended data of the named objects
// dictionary.
// See docs/formats/legacy-projection.md.
#pragma once

#include <string>

#include "platform/host.h"

namespace Orvel {

inline constexpr const wchar_t* kLegacyProjectionApplication = L"KTN_PROJECTION";

/// The code. Empty when the drawing has none or it cannot be read.
std::wstring ReadLegacyProjectionCode(QeDbDatabase* database);

/// Returns whether the record can hold the code. False for null, for an empty text, and for ".", which readers treat as
/// no code.
[[nodiscard]] bool isLegacyProjectionCode(const wchar_t* code);

/// Stores the code, and registers the application where it is not registered. A null or empty code removes the record.
/// Returns eNoDatabase for a null database, eInvalidInput for the code ".", which changes nothing, and eOutOfMemory.
/// Passes host results on.
Qeapp::ErrorStatus WriteLegacyProjectionCode(QeDbDatabase* database, const wchar_t* code);

} // namespace Orvel
