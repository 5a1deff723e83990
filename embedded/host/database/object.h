// An object of a drawing: its record, which ids refer to, and what the host knows of it while it is in memory.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "embedded/host/database/object_state.h"
#include "platform/host/object.h"

struct QeDbDatabaseImp;

/// What an object id points at. The database owns it; after the database is destroyed the ids share it.
struct QeDbObjectRecord {
    QeDbDatabaseImp* database = nullptr; // null after it was destroyed
    std::uint64_t handle = 0;
    QeDbObject* object = nullptr; // null before it is loaded, and after a client deleted it instead of closing it
    std::uint64_t listedBy = 0;   // the dictionary whose entry it is, if the entry was read before the object
    bool isStored = false;        // is in the drawing's file and not loaded yet
    bool isInFile = false;        // the drawing's file has it
    bool isChanged = false;       // since the drawing was last loaded or saved
    bool undone = false;          // its creation was undone; it cannot be unerased
    std::size_t ids = 0;          // the number of ids
    std::size_t position = 0;     // in the database's list
};

struct QeDbObjectImp {
    std::unique_ptr<QeDbObjectState> state;
    QeDbObjectRecord* record = nullptr; // null while the object is not database-resident
    int readers = 0;
    bool writing = false;
    bool modified = false; // since it was opened for write
    std::vector<QeDbObjectReactor*> reactors;

    bool isOpen() const { return writing || readers > 0; }
    bool canRead() const { return record == nullptr || writing || readers > 0; }
    bool canWrite() const { return record == nullptr || writing; }
};

namespace QeHost {

using DatabaseImp = QeDbDatabaseImp;
using ObjectImp = QeDbObjectImp;

/// Returns whether the record's object exists and is not erased. False for null.
bool isLive(const ObjectRecord* record);

/// Must be called when an id is destroyed.
void releaseId(ObjectRecord& record);

/// Returns the record's object and loads it if necessary. Throws an Error for damage. The object must exist.
QeDbObject& loadObject(ObjectRecord& record);

/// eOk if the object can be opened in the mode, otherwise eOpenForRead or eOpenForWrite.
Qeapp::ErrorStatus checkConflict(const ObjectRecord& record, QeDb::OpenMode mode);

/// Opens an object. Fault injection does not affect it. Throws an Error for damage.
Qeapp::ErrorStatus openObject(QeDbObject*& object, ObjectRecord* record, QeDb::OpenMode mode, bool openErased = false);

/// Notify the object's reactors, except those that are removed during the notification.
void notifyModified(const QeDbObject& object);
void notifyErased(const QeDbObject& object, bool erasing);

/// Must be called before an object is changed. Saves its state for the innermost transaction and marks it as modified
/// for its reactors and for the next save.
void prepareToWrite(ObjectImp& imp);

template <class State>
const State& stateOf(const QeDbObject& object)
{
    return static_cast<const State&>(*object.imp().state);
}

template <class State>
State& writableStateOf(const QeDbObject& object)
{
    prepareToWrite(object.imp());
    return static_cast<State&>(*object.imp().state);
}

} // namespace QeHost
