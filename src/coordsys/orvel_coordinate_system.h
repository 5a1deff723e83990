// The module's interface: a drawing's geodetic coordinate system. Which transformation to use between two systems is in
// orvel_transformation_config.h.
//
// Every function is for the host's main thread. A null `db` means the host's working database. Results are the host's;
// a host result that has no mention below comes from a host call and is passed on as it is. No function raises an
// exception of its own; one raised by the library, by an allocation or by a reactor passes through.
//
// A function's `status`, where it has one, may be null. It tells the last status of the spatial-reference library:
//  - on eOk it is written: 0, or the last library status that the function accepted;
//  - on failure it becomes 52 when no library status was recorded, and otherwise stays as the caller set it. Set it
//    before the call, and trust it only on eOk or when it reads 52;
//  - eNoDatabase leaves it untouched.
// SetCoordinateSystem by code and ApplyCoordinateSystemStorageVersion differ, as they say: decide by their
// result alone.
#pragma once

#include "coordsys/orvel_coordinate_system_reactor.h"
#include "coordsys/orvel_export.h"
#include "platform/host.h"
#include "platform/spatial_reference.h"

namespace Zentara::Gis::Orvel::CoordinateSystem {

using Infrastructure::SpatialReference::CoordinateReferenceSystemDefinition;
using Infrastructure::SpatialReference::DefinitionBaseArray;
using Infrastructure::SpatialReference::Status;

/// Reads every definition that is stored for the drawing's coordinate system: the system with its datum and its
/// ellipsoid where it has them. A legacy code in the drawing decides: then the definition xrecord answers, or else the
/// catalog, and the GeoData text is not consulted.
/// On eOk `definitions` is a new array, empty for a drawing without a coordinate system. It is not cleared on entry; on
/// failure it may hold an array made in this call. In both cases the caller releases it with Object::Destroy, so set it
/// to null before the call.
/// Returns eOk; eNoDatabase (no `db` and no working database; nothing is touched); eInvalidInput when the library
/// cannot read the GeoData text or gives no array; eOutOfMemory when it has no memory for the empty array of a drawing
/// without a coordinate system; eNotApplicable for a legacy code that is neither stored as a definition nor in the
/// catalog; eNoObject when the host opens the GeoData object and gives none.
ORVEL_API Qeapp::ErrorStatus GetCoordinateSystem(DefinitionBaseArray*& definitions, QeDbDatabase* db,
                                                 Status* status = nullptr);

/// Reads the drawing's coordinate system.
/// On eOk `definition` is a new definition that the caller releases with Object::Destroy, or null for a drawing without
/// one; on failure null, or the definition when only the catalog check failed.
/// `knownToCatalog` may be null, and then the catalog is not asked; otherwise it tells whether the catalog has a
/// definition of the same code, and is false on failure. `status` is 35 on eOk when the catalog has none; where only
/// the catalog check fails it keeps what the reading wrote, 0.
/// Returns as the overload above; in the catalog check also eOutOfMemory (library status 57) and eInvalidInput (any
/// other library failure). eNoDatabase touches nothing.
ORVEL_API Qeapp::ErrorStatus GetCoordinateSystem(CoordinateReferenceSystemDefinition*& definition, bool* knownToCatalog,
                                                 QeDbDatabase* db, Status* status = nullptr);

/// Reads the code of the drawing's coordinate system, if the catalog knows it.
/// On eOk `code` is a new host string that the caller releases with qeutDelBuffer, or null for a drawing without a
/// coordinate system; on failure null.
/// Returns as the overloads above; eInvalidInput for a code that is empty or that the catalog does not know;
/// eOutOfMemory when the host has no memory for the string.
/// eNoDatabase touches nothing.
ORVEL_API Qeapp::ErrorStatus GetCoordinateSystem(wchar_t*& code, QeDbDatabase* db);

/// Assigns a definition, which stays the caller's, to the drawing: removes every stored form and writes the definition
/// into the GeoData object, which is made in model space when it is missing. A null definition removes only.
/// Reactors are asked and told in this order: will change (code), will change (null), changed (null), changed (code).
/// Returns eOk; eNoDatabase (no reactor is asked); eVetoed, and nothing has changed; as ClearCoordinateSystem when the
/// removal fails; eInvalidInput when the library cannot serialize the definition; eNoObject when the host opens the
/// GeoData object and gives none. A failure after the removal leaves the drawing without a coordinate system, and the
/// reactors have heard of the removal alone.
ORVEL_API Qeapp::ErrorStatus SetCoordinateSystem(const CoordinateReferenceSystemDefinition* definition,
                                                 QeDbDatabase* db, Status* status = nullptr);

/// Assigns the catalog's system of that code; a null or empty code removes only.
/// Returns as the overload above, and eInvalidInput for a code that the catalog cannot load: no reactor is asked, the
/// drawing is untouched and `status` becomes 52. In every other case `status` becomes 0, also when the assignment
/// failed: learn that from the result.
ORVEL_API Qeapp::ErrorStatus SetCoordinateSystem(const wchar_t* code, QeDbDatabase* db, Status* status = nullptr);

/// Removes every stored form of the drawing's coordinate system, all of them or none. Reactors are asked and told with
/// a null name.
/// Returns eOk, also for a drawing without a coordinate system; eNoDatabase; eVetoed; eNoTransaction when no
/// transaction could be started; eOutOfMemory for a host object or a resbuf that cannot be allocated; eNoObject when
/// the host opens an object and gives none.
ORVEL_API Qeapp::ErrorStatus ClearCoordinateSystem(QeDbDatabase* db);

/// Turns a definition into a block of bytes in the form that belongs to a drawing version: packed bytes below version
/// 30, and from 30 on the library's text as UTF-16 little-endian with its NUL. The bytes are the same on every system.
/// On eOk `bytes` is a host buffer of `length` bytes that the caller releases with qeutDelBuffer; on failure `bytes` is
/// null and `length` is -1.
/// Returns eOk; eInvalidInput for a null definition (the out-parameters and `status` are untouched) and for one that
/// the library cannot write (packed bytes: in 1,024 bytes; text: in 65,536 bytes); eOutOfMemory when the host has no
/// memory for the buffer.
ORVEL_API Qeapp::ErrorStatus SerializeCoordinateSystem(const CoordinateReferenceSystemDefinition* definition,
                                                       unsigned char*& bytes, int& length, QeDb::QeDbDwgVersion version,
                                                       Status* status = nullptr);

/// Turns such a block, of either form, back into definitions.
/// The caller guarantees that `bytes` has `length` bytes and, unless they are packed bytes, a NUL unit (two zero bytes
/// at an even place) at or before their end: text is read up to its first NUL, whatever `length` says.
/// On eOk `definitions` is a new array that the caller releases with Object::Destroy; on failure it is untouched.
/// Returns eOk; eInvalidInput for null `bytes`, a `length` below 1 (`status` is then untouched) and for bytes that hold
/// no definition.
ORVEL_API Qeapp::ErrorStatus DeserializeCoordinateSystem(DefinitionBaseArray*& definitions, const unsigned char* bytes,
                                                         int length, Status* status = nullptr);

/// Rewrites what the drawing holds of its coordinate system into the forms of a drawing version: below version 30 the
/// legacy projection record, the definition xrecord and WKT in the GeoData object; from 30 on the text in the GeoData
/// object alone. No reactor is told: the coordinate system stays the same.
/// On failure `status` says nothing of use: it may have become 52 or stayed, by the status of the step that failed.
/// Returns eOk, also for a drawing without a coordinate system; eNoDatabase; eInvalidDrawingVersion, a guard
/// against a version without forms, of which there is none; as GetCoordinateSystem (definition) when the reading fails
/// and as ClearCoordinateSystem when the removal does. The writing of the legacy forms adds eInvalidInput for a system
/// whose code is empty or ".", or of which the library cannot give what is asked; eInvalidResbuf for a definition that
/// cannot be packed or that lacks a datum or ellipsoid which it needs; eOutOfMemory; and eNoObject. A failure after the
/// removal of the former forms leaves the drawing without a coordinate system: the host's save undoes it.
ORVEL_API Qeapp::ErrorStatus ApplyCoordinateSystemStorageVersion(QeDbDatabase* db, QeDb::QeDbDwgVersion version,
                                                                 Status* status = nullptr);

/// Registers a reactor, which stays the caller's and must be removed before it is destroyed. Reactors are called in
/// the order of their registration.
/// Returns eOk; eInvalidInput for null and for one that is registered already; eOutOfMemory.
ORVEL_API Qeapp::ErrorStatus AddCoordinateSystemReactor(OrvelCoordinateSystemReactor* reactor);

/// Takes a reactor off the list. Returns eOk; eInvalidInput for null and for one that is not registered.
ORVEL_API Qeapp::ErrorStatus RemoveCoordinateSystemReactor(OrvelCoordinateSystemReactor* reactor);

/// Copies into `value` a setting that client modules share: whether to initialise GeoData parameters. The module keeps
/// it, false when it is loaded, and does not act on it. Always returns eOk.
ORVEL_API Qeapp::ErrorStatus GetInitializeGeodataParameters(bool& value);

/// Changes that setting until the module is unloaded. Always returns eOk.
ORVEL_API Qeapp::ErrorStatus SetInitializeGeodataParameters(bool value);

} // namespace Zentara::Gis::Orvel::CoordinateSystem
