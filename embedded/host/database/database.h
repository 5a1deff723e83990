// The host's record of a drawing.
#pragma once

#include <memory>
#include <set>
#include <unordered_map>
#include <vector>

#include "embedded/host/database/object.h"
#include "embedded/host/database/object_store.h"
#include "embedded/host/database/transaction_manager.h"
#include "platform/host/database.h"

namespace QeHost {

/// So that the next push_back needs no memory, and what comes before it may be done.
template <class T>
void reserveOneMore(std::vector<T>& list)
{
    if (list.size() == list.capacity())
        list.reserve(2 * list.size() + 1);
}

} // namespace QeHost

struct QeDbDatabaseImp {
    QeDbDatabaseImp(QeDbDatabase& itself, QeDb::QeDbDwgVersion itsVersion);
    ~QeDbDatabaseImp();
    QeDbDatabaseImp(const QeDbDatabaseImp&) = delete;
    QeDbDatabaseImp& operator=(const QeDbDatabaseImp&) = delete;

    /// Makes a new object the database's own under the next handle; it stays open for write.
    QeDbObjectRecord& adopt(QeDbObject& object, QeDbObjectRecord* owner);
    /// The same under a given handle, closed, and outside every transaction; for the host's own objects and loading.
    QeDbObjectRecord& place(QeDbObject& object, QeDbObjectRecord* owner, Embedded::Handle handle);
    /// Destroys one object and forgets that there was one.
    void destroy(QeDbObjectRecord& record);
    /// Destroys every object, the roots included.
    void clear();
    /// Makes the roots and the model space of an empty drawing.
    void createRoots();

    /// The record of an object in the drawing's file; a new one, which waits to be loaded, where there is none yet.
    QeDbObjectRecord& storedRecord(Embedded::Handle handle);
    /// The same for an entry of a dictionary, which is to own it: what belongs to another object would be erased with
    /// the entry. Throws an Error.
    QeDbObjectRecord& storedEntry(Embedded::Handle handle, const QeDbObjectRecord& dictionary);
    /// Loads a stored object, and those that own it before it. Throws an Error.
    void load(QeDbObjectRecord& record);
    bool isRoot(const QeDbObjectRecord& record) const
    {
        return &record == namedObjects || &record == regAppTable || &record == blockTable;
    }
    /// Whether the drawing cannot do without the object: a root or the model space.
    bool isIndispensable(const QeDbObjectRecord& record) const;
    /// The drawing's live GeoData object, or null.
    QeDbObjectRecord* geoData() const;

private:
    void loadBelow(QeDbObjectRecord& record, const QeHost::StoredObject& stored);
    void loadRecords(QeDbObjectRecord& table);

public:
    QeDbDatabase& database;
    QeDb::QeDbDwgVersion version;
    Embedded::Handle nextHandle = 1;
    QeDbObjectRecord* namedObjects = nullptr;
    QeDbObjectRecord* regAppTable = nullptr;
    QeDbObjectRecord* blockTable = nullptr;
    QeDbObjectRecord* modelSpace = nullptr;
    std::unique_ptr<QeHost::ObjectStore> store; // null for a drawing that lies in no file
    std::vector<std::unique_ptr<QeDbObjectRecord>> objectRecords;
    std::unordered_map<Embedded::Handle, QeDbObjectRecord*> storedRecords; // of what is in the file
    std::set<Embedded::Handle> destroyedHandles;   // in the file, by objects that were destroyed since
    std::vector<QeDbObjectRecord*> geoDataObjects; // every one that was ever added; one of them is live at most
    QeHost::TransactionManager transactions{*this};
    std::vector<QeDbObjectId> pendingCollection; // for the end of the last transaction, when they may be lost
};

namespace QeHost {

/// Called before a database is destroyed; null until somebody sets it.
inline void (*databaseDestroyedHandler)(const QeDbDatabase& database) = nullptr;

} // namespace QeHost
