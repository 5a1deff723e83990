// The coordinate-system text of a drawing's GeoData object: the only code that touches that object.
// See docs/formats/geodata.md.
#pragma once

#include <string>

#include "storage/host_holders.h"
#include "storage/library_holder.h"

namespace Orvel {

/// The text, or empty where the drawing has no GeoData object. A host result of the opening as it is.
Qeapp::ErrorStatus ReadGeoDataCoordinateSystem(QeDbDatabase* database, std::wstring& text);

/// Opens the GeoData object for write. Where there is none, makes one in model space if `create` is set, and otherwise
/// returns eOk with an empty `object`. On failure `object` is empty.
Qeapp::ErrorStatus OpenGeoDataForWrite(QeDbDatabase* database, HostObject<QeDbGeoData>& object, bool create);

/// Writes a ready-made text. A null or empty one blanks an existing object and creates none. eNoDatabase for a null
/// database.
Qeapp::ErrorStatus WriteGeoDataCoordinateSystem(QeDbDatabase* database, const wchar_t* text);

/// Write the definition as WKT, or as its serialized text; a null definition blanks the text. `libraryStatus` is that
/// of the conversion, and is not touched for a null definition. eInvalidInput when the conversion fails.
Qeapp::ErrorStatus WriteGeoDataWkt(QeDbDatabase* database,
                                   const Library::CoordinateReferenceSystemDefinition* definition,
                                   Library::Status& libraryStatus);
Qeapp::ErrorStatus WriteGeoDataSerialized(QeDbDatabase* database,
                                          const Library::CoordinateReferenceSystemDefinition* definition,
                                          Library::Status& libraryStatus);

/// Blanks the text; a drawing without a GeoData object is a success. The object itself stays.
Qeapp::ErrorStatus ClearGeoDataCoordinateSystem(QeDbDatabase* database);

} // namespace Orvel
