// The xrecord in the named objects dictionary that holds the definitions of a drawing's coordinate system, its datum
// and its ellipsoid, so that the drawing can be read where the catalog does not know the code. See
// docs/formats/definition-xrecord.md.
#pragma once

#include "platform/host.h"
#include "storage/definition_set.h"

namespace Orvel {

/// A dictionary key. No application of that name is registered.
inline constexpr const wchar_t* kCsDefinitionXrecordKey = L"ORVEL_CSINDWG_REGAPP";

/// The layouts of its chain: one chunk a definition, which is only read, and one group a definition.
enum CsDefinitionXrecordLayout : int { kStandaloneChunksLayout = 0, kGroupsLayout = 1 };

/// Stores the system in the current layout. Returns eNoDatabase and eInvalidInput for null arguments, eInvalidInput
/// when a library query fails, eOutOfMemory, eInvalidResbuf when a datum or an ellipsoid is missing where one is needed
/// and when a definition cannot be packed. Passes host results on.
Qeapp::ErrorStatus WriteCsDefinitionXrecord(const Library::CoordinateReferenceSystemDefinition* definition,
                                            QeDbDatabase* database);

/// Stores a new xrecord with a copy of the chain under the key. A null chain removes the key from the dictionary; a
/// missing key is a success, and the former xrecord is detached, not erased.
Qeapp::ErrorStatus StoreCsXrecordChain(QeDbDatabase* database, const resbuf* chain);

/// Reads either layout. Returns true when the stored definitions are valid for the code: they are then linked, and
/// datum and ellipsoid may be null. Otherwise returns false with empty `definitions`.
[[nodiscard]] bool ReadCsDefinitionXrecord(QeDbDatabase* database, const wchar_t* code, DefinitionSet& definitions);

} // namespace Orvel
