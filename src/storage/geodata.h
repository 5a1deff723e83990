// The coordinate-system text of a drawing's GeoData object. Only this code uses that object.
// See docs/formats/geodata.md.
#pragma once

#include <string>

#include "storage/host_holders.h"
#include "storage/library_holder.h"

namespace Orvel {

/// Reads the text, which is empty where the drawing has no GeoData object. Returns the host's result of the opening.
Qeapp::ErrorStatus ReadGeoDataCoordinateSystem(QeDbDatabase* database, std::wstring& text);

/// Opens the GeoData object for write. Where there is none, makes one in model space if `create` is true, and otherwise
/// returns eOk with an empty `object`. On failure `object` is empty.
Qeapp::ErrorStatus OpenGeoDataForWrite(QeDbDatabase* database, HostObject<QeDbGeoData>& object, bool create);

/// Writes the text as it is. A null or empty text clears that of an existing object and makes no object. Returns
/// eNoDatabase for a null database.
Qeapp::ErrorStatus WriteGeoDataCoordinateSystem(QeDbDatabase* database, const wchar_t* text);

/// Write the definition as WKT, or as its serialized text. A null definition clears the text. `libraryStatus` is the
/// status of the conversion, and stays unchanged for a null definition. Return eInvalidInput when the conversion fails.
Qeapp::ErrorStatus WriteGeoDataWkt(QeDbDatabase* database,
                                   const Library::CoordinateReferenceSystemDefinition* definition,
                                   Library::Status& libraryStatus);
Qeapp::ErrorStatus WriteGeoDataSerialized(QeDbDatabase* database,
                                          const Library::CoordinateReferenceSystemDefinition* definition,
                                          Library::Status& libraryStatus);

/// Clears the text and keeps the object. A drawing without a GeoData object is a success.
Qeapp::ErrorStatus ClearGeoDataCoordinateSystem(QeDbDatabase* database);

} // namespace Orvel
