// A drawing: its named objects dictionary, tables and transactions.
#pragma once

#include "../export.h"
#include "dictionary.h"
#include "error_status.h"
#include "symbol_table.h"

class QeDbTransactionManager;

struct QeDbDatabaseImp; // internal to the host

namespace QeDb {
/// Drawing versions, oldest first. Every number from kOldestDwg to kCurrentDwg is a version.
enum QeDbDwgVersion : int { kOldestDwg = 21, kGeoDataTextDwg = 30, kCurrentDwg = 33 };
} // namespace QeDb

class QEHOST_API QeDbDatabase {
public:
    /// An empty drawing: a named objects dictionary, the tables, model space, and no GeoData.
    explicit QeDbDatabase(QeDb::QeDbDwgVersion version = QeDb::kCurrentDwg);
    ~QeDbDatabase();
    QeDbDatabase(const QeDbDatabase&) = delete;
    QeDbDatabase& operator=(const QeDbDatabase&) = delete;

    /// Each opens an object. On eOk the caller closes it, otherwise the pointer is null.
    Qeapp::ErrorStatus getNamedObjectsDictionary(QeDbDictionary*& dictionary, QeDb::OpenMode mode = QeDb::kForRead);
    Qeapp::ErrorStatus getRegAppTable(QeDbRegAppTable*& table, QeDb::OpenMode mode = QeDb::kForRead);
    Qeapp::ErrorStatus getBlockTable(QeDbBlockTable*& table, QeDb::OpenMode mode = QeDb::kForRead);

    /// Never null. The database owns it.
    QeDbTransactionManager* transactionManager() const;

    /// The version that the drawing was last loaded from or saved in.
    QeDb::QeDbDwgVersion drawingVersion() const;

    /// The host's internal record of the drawing. Clients do not use it.
    QeDbDatabaseImp& imp() const { return *imp_; }

private:
    QeDbDatabaseImp* imp_;
};
