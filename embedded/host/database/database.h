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

/// Makes room for one more element. The next push_back then cannot fail, and neither can what depends on it.
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
    /// The same under a given handle, closed and outside every transaction. The host makes its own objects with it.
    QeDbObjectRecord& place(QeDbObject& object, QeDbObjectRecord* owner, Embedded::Handle handle);
    /// Destroys one object and its record.
    void destroy(QeDbObjectRecord& record);
    /// Destroys every object, the roots included.
    void clear();
    /// Makes the roots and the model space of an empty drawing.
    void createRoots();

    /// The record of an object in the drawing's file. Adds a record that is not loaded yet where there is none.
    QeDbObjectRecord& storedRecord(Embedded::Handle handle);
    /// The same for an entry of a dictionary. Throws an Error unless the dictionary owns the object: an object of
    /// another owner would be erased with the entry.
    QeDbObjectRecord& storedEntry(Embedded::Handle handle, const QeDbObjectRecord& dictionary);
    /// Loads a stored object after its owners. Throws an Error for damage.
    void load(QeDbObjectRecord& record);
    bool isRoot(const QeDbObjectRecord& record) const
    {
        return &record == namedObjects || &record == regAppTable || &record == blockTable;
    }
    /// Returns whether the object is a root or the model space, which cannot be erased.
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
    std::unique_ptr<QeHost::ObjectStore> store; // null for a drawing without a file
    std::vector<std::unique_ptr<QeDbObjectRecord>> objectRecords;
    std::unordered_map<Embedded::Handle, QeDbObjectRecord*> storedRecords; // by handle, of the objects in the file
    std::set<Embedded::Handle> destroyedHandles;   // of destroyed objects that the file still has
    std::vector<QeDbObjectRecord*> geoDataObjects; // every one that was added; at most one is live
    QeHost::TransactionManager transactions{*this};
    std::vector<QeDbObjectId> pendingCollection; // when the last transaction ends
};

namespace QeHost {

/// Called before a database is destroyed; null until somebody sets it.
inline void (*databaseDestroyedHandler)(const QeDbDatabase& database) = nullptr;

} // namespace QeHost
