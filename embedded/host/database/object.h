// The host's record of an object, and the identity that outlives its erasure.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "embedded/host/database/object_state.h"
#include "platform/host/object.h"

/// What an object id points at; owned by the database for as long as the database lives, and then by its ids.
struct QeDbObjectRecord {
    QeDbDatabaseImp* database = nullptr; // null once it is gone
    std::uint64_t handle = 0;
    QeDbObject* object = nullptr; // null before it is loaded, and after a client deleted it instead of closing it
    std::uint64_t listedBy = 0;   // the dictionary that has it as an entry, if that was looked at before it was loaded
    bool isStored = false;        // waits in the drawing's file to be loaded
    bool isInFile = false;        // the drawing's file has it
    bool isChanged = false;       // since the drawing was last loaded or saved
    bool undone = false;          // its creation was undone: erased for good
    std::size_t ids = 0;          // how many name it
    std::size_t position = 0;     // among the database's
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

/// Whether the record's object is there and not erased; false for null.
bool isLive(const ObjectRecord* record);

/// Ends one id.
void releaseId(ObjectRecord& record);

/// The record's object, which is loaded first where it lies in the file; throws an Error. Not for one that is gone.
QeDbObject& loadObject(ObjectRecord& record);

/// eOk when nobody has the object open; otherwise the status that refuses a second opener.
Qeapp::ErrorStatus checkConflict(const ObjectRecord& record, QeDb::OpenMode mode);

/// Opens without being a fallible call of its own. Throws an Error for what cannot be loaded.
Qeapp::ErrorStatus openObject(QeDbObject*& object, ObjectRecord* record, QeDb::OpenMode mode, bool openErased = false);

/// Tell the object's reactors, those that unregister meanwhile excepted.
void notifyModified(const QeDbObject& object);
void notifyErased(const QeDbObject& object, bool erasing);

/// Keeps what the object holds for the innermost transaction and marks it modified, for its reactors and for the next
/// save.
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
