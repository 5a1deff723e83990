// The object that stores a drawing's position on the Earth. A drawing has at most one.
#pragma once

#include "object.h"

class QEHOST_API QeDbGeoData : public QeDbObject {
public:
    QERX_DECLARE_CLASS();
    QeDbGeoData();

    /// Never null. Valid until the text changes or the object is closed.
    const wchar_t* coordinateSystem() const;
    /// Copies the text. Returns eInvalidInput for null.
    Qeapp::ErrorStatus setCoordinateSystem(const wchar_t* text);

    QeDbObjectId blockTableRecordId() const;
    /// Sets the block that will own the object. Returns eNotThatKindOfClass for an id of another class,
    /// eAlreadyInDatabase after the object is posted.
    Qeapp::ErrorStatus setBlockTableRecordId(QeDbObjectId id);
    /// Adds the object to the database of its block. On eOk the database owns it and it stays open for write. On
    /// failure the caller still owns it. Returns eDuplicateKey when the drawing already has one, eNullObjectId without
    /// a block.
    Qeapp::ErrorStatus postToDb(QeDbObjectId& id);
};

/// On eOk `id` is the drawing's GeoData object. Otherwise it is null: eKeyNotFound when there is none, eInvalidInput
/// for a null database.
QEHOST_API Qeapp::ErrorStatus qedbGetGeoDataObjId(QeDbDatabase* database, QeDbObjectId& id);
