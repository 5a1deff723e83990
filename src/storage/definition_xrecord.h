// The xrecord in the named objects dictionary that holds a drawing's coordinate system whole, with its datum and its
// ellipsoid, so that the drawing can be read where the catalog does not know the code.
// See docs/formats/definition-xrecord.md.
#pragma once

#include "platform/host.h"
#include "storage/definition_set.h"

namespace Orvel {

/// Despite its name a dictionary key only; no application of that name is registered.
inline constexpr const wchar_t* kCsDefinitionXrecordKey = L"ORVEL_CSINDWG_REGAPP";

/// The layouts of its chain: definitions as chunks of their own, which is only read, and as groups.
enum CsDefinitionXrecordLayout : int { kStandaloneChunksLayout = 0, kGroupsLayout = 1 };

/// Stores the system in the current layout. eNoDatabase and eInvalidInput for null arguments, eInvalidInput when a
/// library query fails, eOutOfMemory, eInvalidResbuf when there is no datum or ellipsoid where one is needed and when a
/// definition cannot be packed; host results as they are.
Qeapp::ErrorStatus WriteCsDefinitionXrecord(const Library::CoordinateReferenceSystemDefinition* definition,
                                            QeDbDatabase* database);

/// Puts a new xrecord with the chain, which stays the caller's, under the key; without a chain takes the key out of the
/// dictionary, and a missing key is a success. The former xrecord is not erased then, only detached.
Qeapp::ErrorStatus StoreCsXrecordChain(QeDbDatabase* database, const resbuf* chain);

/// Reads either layout. True when what is stored is valid for the code; the definitions are then linked, and datum and
/// ellipsoid may be null. Otherwise false, and `definitions` is empty.
[[nodiscard]] bool ReadCsDefinitionXrecord(QeDbDatabase* database, const wchar_t* code, DefinitionSet& definitions);

} // namespace Orvel
