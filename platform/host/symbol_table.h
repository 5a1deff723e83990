// Symbol tables: registered applications and blocks.
#pragma once

#include "object.h"

/// An entry of a symbol table. The comparison of names ignores case.
class QEHOST_API QeDbSymbolTableRecord : public QeDbObject {
public:
    QERX_DECLARE_CLASS();
    /// Returns eInvalidInput for a null or empty name, eDuplicateKey when the table has another record of that name,
    /// eNotApplicable for model space, whose name cannot be changed.
    Qeapp::ErrorStatus setName(const wchar_t* name);
    /// Valid until the name changes or the record is closed.
    const wchar_t* getName() const;

protected:
    using QeDbObject::QeDbObject;
};

/// A table that owns named records.
class QEHOST_API QeDbSymbolTable : public QeDbObject {
public:
    QERX_DECLARE_CLASS();
    bool has(const wchar_t* name) const;
    /// On eOk `id` is the record. Otherwise the result is eKeyNotFound and `id` is null.
    Qeapp::ErrorStatus getAt(const wchar_t* name, QeDbObjectId& id) const;

protected:
    using QeDbObject::QeDbObject;
    /// Adds a new, named record. On eOk the database owns it and it stays open for write. On failure the caller still
    /// owns it. Returns eInvalidKey for a record without a name, eDuplicateKey, eAlreadyInDatabase.
    Qeapp::ErrorStatus addRecord(QeDbObjectId& id, QeDbSymbolTableRecord* record);
};

class QEHOST_API QeDbRegAppTableRecord : public QeDbSymbolTableRecord {
public:
    QERX_DECLARE_CLASS();
    QeDbRegAppTableRecord();
};

class QEHOST_API QeDbRegAppTable : public QeDbSymbolTable {
public:
    QERX_DECLARE_CLASS();
    QeDbRegAppTable();
    Qeapp::ErrorStatus add(QeDbObjectId& id, QeDbRegAppTableRecord* record) { return addRecord(id, record); }
};

class QEHOST_API QeDbBlockTableRecord : public QeDbSymbolTableRecord {
public:
    QERX_DECLARE_CLASS();
    QeDbBlockTableRecord();
};

class QEHOST_API QeDbBlockTable : public QeDbSymbolTable {
public:
    QERX_DECLARE_CLASS();
    QeDbBlockTable();
    Qeapp::ErrorStatus add(QeDbObjectId& id, QeDbBlockTableRecord* record) { return addRecord(id, record); }
};

/// The name of the block that is the drawing's model space.
inline constexpr const wchar_t* kQeDbModelSpaceName = L"*Model_Space";

/// Queries over symbol tables.
class QEHOST_API QeDbSymbolUtilitiesServices {
public:
    /// On eOk `id` is the model space block of the database. Otherwise it is null; the result is eInvalidInput for a
    /// null database.
    Qeapp::ErrorStatus blockModelSpaceId(QeDbDatabase* database, QeDbObjectId& id) const;
};

/// Never null.
QEHOST_API const QeDbSymbolUtilitiesServices* qedbSymUtil();
