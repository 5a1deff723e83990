// A drawing: its named objects dictionary, tables and transactions.
#pragma once

#include "../export.h"
#include "dictionary.h"
#include "error_status.h"
#include "symbol_table.h"

class QeDbTransactionManager;

struct QeDbDatabaseImp; // the host's own

namespace QeDb {
/// Drawing formats, oldest first. Any number from kOldestDwg to kCurrentDwg is a format of its own.
enum QeDbDwgVersion : int { kOldestDwg = 21, kGeoDataTextDwg = 30, kCurrentDwg = 33 };
} // namespace QeDb

class QEHOST_API QeDbDatabase {
public:
    /// An empty drawing: a named objects dictionary, the tables, model space, and no GeoData.
    explicit QeDbDatabase(QeDb::QeDbDwgVersion version = QeDb::kCurrentDwg);
    ~QeDbDatabase();
    QeDbDatabase(const QeDbDatabase&) = delete;
    QeDbDatabase& operator=(const QeDbDatabase&) = delete;

    /// Each opens its object; on eOk the caller closes it, otherwise the pointer is null.
    Qeapp::ErrorStatus getNamedObjectsDictionary(QeDbDictionary*& dictionary, QeDb::OpenMode mode = QeDb::kForRead);
    Qeapp::ErrorStatus getRegAppTable(QeDbRegAppTable*& table, QeDb::OpenMode mode = QeDb::kForRead);
    Qeapp::ErrorStatus getBlockTable(QeDbBlockTable*& table, QeDb::OpenMode mode = QeDb::kForRead);

    /// Never null; owned by the database.
    QeDbTransactionManager* transactionManager() const;

    /// The format that the drawing was last loaded from or saved in.
    QeDb::QeDbDwgVersion drawingVersion() const;

    /// The host's own record of the drawing; of no use to clients.
    QeDbDatabaseImp& imp() const { return *imp_; }

private:
    QeDbDatabaseImp* imp_;
};
