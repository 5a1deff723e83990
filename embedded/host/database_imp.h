// The host's record of a drawing.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "embedded/host/object_imp.h"
#include "embedded/host/transaction_manager.h"
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
    /// Destroys every object, the roots included; for loading into an empty drawing.
    void clear();
    /// Makes the roots and the model space of an empty drawing.
    void createRoots();
    /// Whether the drawing cannot do without the object: a root or the model space.
    bool isIndispensable(const Stub& stub) const;
    /// The drawing's live GeoData object, or null.
    Stub* geoData() const;

    QeDbDatabase& database;
    QeDb::QeDbDwgVersion version;
    Embedded::Handle nextHandle = 1;
    Stub* namedObjects = nullptr;
    Stub* regAppTable = nullptr;
    Stub* blockTable = nullptr;
    Stub* modelSpace = nullptr;
    std::vector<std::unique_ptr<Stub>> stubs;
    std::vector<Stub*> geoDataObjects; // every one that was ever added; one of them is live at most
    TransactionManager transactions{*this};
    std::vector<QeDbObjectId> waiting; // for the end of the last transaction, when they may be lost
};

} // namespace QeHost
