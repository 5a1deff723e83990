// The host's record of a drawing.
#pragma once

#include <memory>
#include <set>
#include <unordered_map>
#include <vector>

#include "embedded/host/database/object_imp.h"
#include "embedded/host/database/object_store.h"
#include "embedded/host/database/transaction_manager.h"
#include "platform/host/database.h"

namespace QeHost {

/// So that the next push_back needs no memory, and what comes before it may be done.
template <class T>
void makeRoomForOne(std::vector<T>& list)
{
    if (list.size() == list.capacity())
        list.reserve(2 * list.size() + 1);
}

struct DatabaseImp {
    DatabaseImp(QeDbDatabase& itself, QeDb::QeDbDwgVersion itsVersion);
    ~DatabaseImp();
    DatabaseImp(const DatabaseImp&) = delete;
    DatabaseImp& operator=(const DatabaseImp&) = delete;

    /// Makes a new object the database's own under the next handle; it stays open for write.
    Stub& adopt(QeDbObject& object, Stub* owner);
    /// The same under a given handle, closed, and outside every transaction; for the host's own objects and loading.
    Stub& place(QeDbObject& object, Stub* owner, Embedded::Handle handle);
    /// Destroys one object and forgets that there was one.
    void destroy(Stub& stub);
    /// Destroys every object, the roots included.
    void clear();
    /// Makes the roots and the model space of an empty drawing.
    void createRoots();

    /// The stub of an object in the drawing's file; a new one, which waits to be loaded, where there is none yet.
    Stub& storedStub(Embedded::Handle handle);
    /// The same for an entry of a dictionary, which is to own it: what belongs to another object would be erased with
    /// the entry. Throws StoreFailure.
    Stub& storedEntry(Embedded::Handle handle, const Stub& dictionary);
    /// Loads a stored object, and those that own it before it. Throws StoreFailure.
    void load(Stub& stub);
    bool isRoot(const Stub& stub) const { return &stub == namedObjects || &stub == regAppTable || &stub == blockTable; }
    /// Whether the drawing cannot do without the object: a root or the model space.
    bool isIndispensable(const Stub& stub) const;
    /// The drawing's live GeoData object, or null.
    Stub* geoData() const;

private:
    void loadBelow(Stub& stub, const StoredObject& stored);
    void loadRecords(Stub& table);

public:
    QeDbDatabase& database;
    QeDb::QeDbDwgVersion version;
    Embedded::Handle nextHandle = 1;
    Stub* namedObjects = nullptr;
    Stub* regAppTable = nullptr;
    Stub* blockTable = nullptr;
    Stub* modelSpace = nullptr;
    std::unique_ptr<ObjectStore> store; // null for a drawing that lies in no file
    std::vector<std::unique_ptr<Stub>> stubs;
    std::unordered_map<Embedded::Handle, Stub*> storedStubs; // of what is in the file
    std::set<Embedded::Handle> leftBehind;                   // in the file, by objects that were destroyed since
    std::vector<Stub*> geoDataObjects; // every one that was ever added; one of them is live at most
    TransactionManager transactions{*this};
    std::vector<QeDbObjectId> waiting; // for the end of the last transaction, when they may be lost
};

/// Called before a database is destroyed; null until somebody sets it.
inline void (*databaseDestroyedHandler)(const QeDbDatabase& database) = nullptr;

} // namespace QeHost
