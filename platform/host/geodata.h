// The object that says where on the Earth a drawing lies; a drawing has at most one.
#pragma once

#include "object.h"

class QEHOST_API QeDbGeoData : public QeDbObject {
public:
    QERX_DECLARE_CLASS();
    QeDbGeoData();

    /// Never null; valid until the text changes or the object is closed.
    const wchar_t* coordinateSystem() const;
    /// Copies the text; eInvalidInput for null.
    Qeapp::ErrorStatus setCoordinateSystem(const wchar_t* text);

    QeDbObjectId blockTableRecordId() const;
    /// The block that is to own the object; eNotThatKindOfClass for an id of anything else, eAlreadyInDatabase once
    /// the object is posted.
    Qeapp::ErrorStatus setBlockTableRecordId(QeDbObjectId id);
    /// Adds the object to the database of its block. On eOk it is the database's own and stays open for write; on
    /// failure it still belongs to the caller. eDuplicateKey when the drawing has one already, eNullObjectId without a
    /// block.
    Qeapp::ErrorStatus postToDb(QeDbObjectId& id);
};

/// On eOk `id` is the drawing's GeoData object; otherwise it is null: eKeyNotFound when there is none, eInvalidInput
/// for a null database.
QEHOST_API Qeapp::ErrorStatus qedbGetGeoDataObjId(QeDbDatabase* database, QeDbObjectId& id);
