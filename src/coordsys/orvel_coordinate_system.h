// The module's interface: a drawing's geodetic coordinate system. The interface to the transformations between two
// systems is in orvel_transformation_config.h.
//
// Call every function on the host's main thread. A null `db` means the host's working database. Results are the host's;
// a function passes a result that its comment does not mention on from a host call. No function raises an exception of
// its own; one of the library, of an allocation or of a reactor passes through.
//
// A function's `status`, where it has one, may be null. It receives the last status of the spatial-reference library:
//  - on eOk it becomes 0, or the last library status that the function accepted;
//  - on failure it becomes 52 when no library status was recorded, and otherwise keeps the caller's value. Set it
//  before
//    the call, and use it only on eOk or when it is 52;
//  - on eNoDatabase it is unchanged.
// SetCoordinateSystem by code and ApplyCoordinateSystemStorageVersion differ, as their comments say: use only their
// result.
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
/// ellipsoid where it has them. Where the drawing has a legacy code, the definitions come from the definition xrecord,
/// or else from the catalog; otherwise they come from the GeoData text. On eOk `definitions` is a new array, empty for
/// a drawing without a coordinate system. It is not cleared on entry; on failure it may be an array made in this call.
/// In both cases the caller releases it with Object::Destroy, so set it to null before the call. Returns eOk;
/// eNoDatabase (no `db` and no working database; nothing is changed); eInvalidInput when the library cannot read the
/// GeoData text or returns no array; eOutOfMemory when the library has no memory for the empty array of a drawing
/// without a coordinate system; eNotApplicable for a legacy code that is neither stored as a definition nor in the
/// catalog; eNoObject when the host opens the GeoData object and returns none.
ORVEL_API Qeapp::ErrorStatus GetCoordinateSystem(DefinitionBaseArray*& definitions, QeDbDatabase* db,
                                                 Status* status = nullptr);

/// Reads the drawing's coordinate system.
/// On eOk `definition` is a new definition that the caller releases with Object::Destroy, or null for a drawing without
/// a coordinate system. On failure it is null, or the definition when only the catalog check failed.
/// `knownToCatalog` may be null; then the catalog is not checked. Otherwise it becomes true when the catalog has a
/// definition of the same code, and false on failure. On eOk `status` is 35 when the catalog has none. Where only the
/// catalog check fails, `status` is 0, as the reading wrote it.
/// Returns the results of the overload above; from the catalog check also eOutOfMemory (library status 57) and
/// eInvalidInput (any other library failure). eNoDatabase changes nothing.
ORVEL_API Qeapp::ErrorStatus GetCoordinateSystem(CoordinateReferenceSystemDefinition*& definition, bool* knownToCatalog,
                                                 QeDbDatabase* db, Status* status = nullptr);

/// Reads the code of the drawing's coordinate system, if the catalog knows it.
/// On eOk `code` is a new host string that the caller releases with qeutDelBuffer, or null for a drawing without a
/// coordinate system; on failure null.
/// Returns the results of the overloads above; eInvalidInput for a code that is empty or that the catalog does not
/// know; eOutOfMemory when the host has no memory for the string. eNoDatabase changes nothing.
ORVEL_API Qeapp::ErrorStatus GetCoordinateSystem(wchar_t*& code, QeDbDatabase* db);

/// Assigns a definition, which the caller still owns, to the drawing: removes every stored form and writes the
/// definition into the GeoData object, which is made in model space when it is missing. A null definition only removes.
/// Reactors are notified in this order: will change (code), will change (null), changed (null), changed (code).
/// Returns eOk; eNoDatabase (no reactor is called); eVetoed (nothing is changed); the results of ClearCoordinateSystem
/// when the removal fails; eInvalidInput when the library cannot serialize the definition; eNoObject when the host
/// opens the GeoData object and returns none. A failure after the removal leaves the drawing without a coordinate
/// system, and the reactors are notified of the removal only.
ORVEL_API Qeapp::ErrorStatus SetCoordinateSystem(const CoordinateReferenceSystemDefinition* definition,
                                                 QeDbDatabase* db, Status* status = nullptr);

/// Assigns the catalog's system of that code. A null or empty code only removes.
/// Returns the results of the overload above, and eInvalidInput for a code that the catalog cannot load: then no
/// reactor is called, the drawing is unchanged and `status` becomes 52. In every other case `status` becomes 0, also
/// when the assignment fails: only the result shows that.
ORVEL_API Qeapp::ErrorStatus SetCoordinateSystem(const wchar_t* code, QeDbDatabase* db, Status* status = nullptr);

/// Removes every stored form of the drawing's coordinate system, all of them or none. Reactors are notified with a null
/// name.
/// Returns eOk, also for a drawing without a coordinate system; eNoDatabase; eVetoed; eNoTransaction when no
/// transaction can be started; eOutOfMemory for a host object or a resbuf that cannot be allocated; eNoObject when the
/// host opens an object and returns none.
ORVEL_API Qeapp::ErrorStatus ClearCoordinateSystem(QeDbDatabase* db);

/// Serializes a definition into a block of bytes in the form of a drawing version: packed bytes below version 30, and
/// from 30 on the library's text as UTF-16 little-endian with its NUL. The bytes are the same on every system
/// (docs/formats/serialized-block.md).
/// On eOk `bytes` is a host buffer of `length` bytes that the caller releases with qeutDelBuffer; on failure `bytes` is
/// null and `length` is -1.
/// Returns eOk; eInvalidInput for a null definition (the out-parameters and `status` are unchanged) and for one that
/// the library cannot write (packed bytes: in 1,024 bytes; text: in 65,536 bytes); eOutOfMemory when the host has no
/// memory for the buffer.
ORVEL_API Qeapp::ErrorStatus SerializeCoordinateSystem(const CoordinateReferenceSystemDefinition* definition,
                                                       unsigned char*& bytes, int& length, QeDb::QeDbDwgVersion version,
                                                       Status* status = nullptr);

/// Reads the definitions of such a block, of either form.
/// The caller guarantees that `bytes` has `length` bytes and, unless they are packed bytes, a NUL unit (two zero bytes
/// at an even offset) at or before their end: text is read up to its first NUL, whatever `length` is. On eOk
/// `definitions` is a new array that the caller releases with Object::Destroy; on failure it is unchanged. Returns eOk;
/// eInvalidInput for null `bytes` and for a `length` below 1 (`status` is then unchanged), and for bytes that hold no
/// definition.
ORVEL_API Qeapp::ErrorStatus DeserializeCoordinateSystem(DefinitionBaseArray*& definitions, const unsigned char* bytes,
                                                         int length, Status* status = nullptr);

/// Rewrites the stored coordinate system of the drawing in the forms of a drawing version: below version 30 the legacy
/// projection record, the definition xrecord and WKT in the GeoData object; from 30 on only the text in the GeoData
/// object. docs/formats has a page for each. No reactor is notified, because the coordinate system stays the same.
/// On failure `status` has no meaning: it becomes 52 or is unchanged, depending on the step that fails.
/// Returns eOk, also for a drawing without a coordinate system; eNoDatabase; eInvalidDrawingVersion for a version
/// without forms, of which there is none today; the results of GetCoordinateSystem (definition) when the reading fails,
/// and those of ClearCoordinateSystem when the removal fails. The writing of the legacy forms adds eInvalidInput for a
/// system whose code is empty or ".", and when a query of the library fails; eInvalidResbuf for a definition that
/// cannot be packed or that lacks a datum or ellipsoid which it needs; eOutOfMemory; and eNoObject. A failure after the
/// removal of the former forms leaves the drawing without a coordinate system: the host's save undoes it.
ORVEL_API Qeapp::ErrorStatus ApplyCoordinateSystemStorageVersion(QeDbDatabase* db, QeDb::QeDbDwgVersion version,
                                                                 Status* status = nullptr);

/// Registers a reactor, which the caller still owns and removes before destroying it. Reactors are called in the order
/// of their registration. Returns eOk; eInvalidInput for null and for one that is registered already; eOutOfMemory.
ORVEL_API Qeapp::ErrorStatus AddCoordinateSystemReactor(OrvelCoordinateSystemReactor* reactor);

/// Removes a reactor from the list. Returns eOk; eInvalidInput for null and for one that is not registered.
ORVEL_API Qeapp::ErrorStatus RemoveCoordinateSystemReactor(OrvelCoordinateSystemReactor* reactor);

/// Copies into `value` a setting that client modules share: whether to initialise GeoData parameters. The module stores
/// it and does not use it; it is false when the module is loaded. Always returns eOk.
ORVEL_API Qeapp::ErrorStatus GetInitializeGeodataParameters(bool& value);

/// Changes that setting until the module is unloaded. Always returns eOk.
ORVEL_API Qeapp::ErrorStatus SetInitializeGeodataParameters(bool value);

} // namespace Zentara::Gis::Orvel::CoordinateSystem
