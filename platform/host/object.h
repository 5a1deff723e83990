// Database objects: ids, open modes, closing, extended data, reactors.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

#include "../export.h"
#include "error_status.h"
#include "runtime.h"

class QeDbDatabase;
class QeDbObject;
struct resbuf;

// The host's own, which its clients never look into.
struct QeDbObjectImp;
struct QeDbObjectState;
struct QeDbObjectRecord;

namespace QeDb {
enum OpenMode : int { kForRead = 0, kForWrite = 1, kForNotify = 2 };
} // namespace QeDb

/// The identity of a database-resident object. A value; null by default. Valid for the life of its database, also
/// after the object is erased; afterwards it can still be copied, compared and asked for its handle. The host counts
/// the ids of an object, and keeps an object that has left the drawing for as long as there is one.
class QEHOST_API QeDbObjectId {
public:
    QeDbObjectId() = default;
    explicit QeDbObjectId(QeDbObjectRecord* record) : record_(record) { retain(); }
    QeDbObjectId(const QeDbObjectId& other) : record_(other.record_) { retain(); }
    QeDbObjectId(QeDbObjectId&& other) noexcept : record_(std::exchange(other.record_, nullptr)) {}
    QeDbObjectId& operator=(QeDbObjectId other) noexcept
    {
        std::swap(record_, other.record_);
        return *this;
    }
    ~QeDbObjectId() { setNull(); }

    bool isNull() const { return record_ == nullptr; }
    void setNull()
    {
        if (record_ != nullptr)
            release(*std::exchange(record_, nullptr));
    }
    /// The object's number in its drawing; 0 for the null id.
    std::uint64_t handle() const;
    QeDbObjectRecord* record() const { return record_; }
    friend bool operator==(const QeDbObjectId&, const QeDbObjectId&) = default;

private:
    void retain() const;
    static void release(QeDbObjectRecord& record);

    QeDbObjectRecord* record_ = nullptr;
};

/// Hears of changes of one object; owned by its client. Not told during undo.
class QEHOST_API QeDbObjectReactor {
public:
    virtual ~QeDbObjectReactor();
    virtual void modified(const QeDbObject* object);
    virtual void erased(const QeDbObject* object, bool erasing);
};

/// An object that can live in a database. New objects are not database-resident and are deleted by who made them; once
/// added to a database they are its own, open for write, and are closed instead.
///
/// Queries need the object open for read or write (or not resident); changes need it open for write (or not resident)
/// and answer eNotOpenForWrite otherwise.
class QEHOST_API QeDbObject : public QeRxObject {
public:
    QERX_DECLARE_CLASS();
    ~QeDbObject() override;

    /// Null while the object is not database-resident.
    QeDbObjectId objectId() const;
    QeDbObjectId ownerId() const;
    QeDbDatabase* database() const;

    /// Ends one open of the object; the pointer may not be used by that opener afterwards. eNotInDatabase for an
    /// object that is not resident.
    Qeapp::ErrorStatus close();
    /// From one reader to the writer; eOpenForRead when others read it too, eOpenForWrite for the writer.
    Qeapp::ErrorStatus upgradeOpen();
    /// From the writer to a reader.
    Qeapp::ErrorStatus downgradeOpen();
    /// Marks the object erased (or not); it is not saved but stays in the database, until the drawing is closed or,
    /// when it has lost its place in the drawing, until nobody has it open or an id of it. eNotApplicable for what a
    /// drawing cannot do without: its roots and model space. Unerasing answers eDuplicateKey when another object has
    /// taken the place, eObjectErased when the object's creation was undone.
    Qeapp::ErrorStatus erase(bool erasing = true);

    bool isErased() const;
    bool isReadEnabled() const;
    bool isWriteEnabled() const;

    /// A copy of the extended data of one registered application, or of all for null; null when there is none. The
    /// chain begins with the application's name (1001) and is released by the caller with qeutRelRb.
    resbuf* xData(const wchar_t* appName = nullptr) const;
    /// Replaces the extended data of each application that the chain names. A name with nothing after it removes that
    /// application's data. The chain is copied. eRegappNotRegistered for an application that the database does not
    /// know, eInvalidResbuf for a chain that does not begin with 1001, holds a code below 1000 or chunk over 127 bytes,
    /// eNotInDatabase for an object that is not resident.
    Qeapp::ErrorStatus setXData(const resbuf* chain);

    void addReactor(QeDbObjectReactor* reactor);
    void removeReactor(QeDbObjectReactor* reactor);

    /// On the host heap, zero-filled.
    static void* operator new(std::size_t size);
    static void* operator new(std::size_t size, const std::nothrow_t&) noexcept;
    static void operator delete(void* memory) noexcept;
    static void operator delete(void* memory, const std::nothrow_t&) noexcept;

    /// The host's own record of the object; of no use to clients.
    QeDbObjectImp& imp() const { return *imp_; }

protected:
    /// Takes ownership of `state`.
    explicit QeDbObject(QeDbObjectState* state);

private:
    QeDbObjectImp* imp_;
};

/// Opens the object behind an id. On eOk `object` is open and the caller closes it; otherwise it is null.
/// Returns eNullObjectId, eUnknownObjectId, eObjectErased, eOpenForWrite (someone writes it) or eOpenForRead (someone
/// reads it and write was asked for); eNotApplicable for kForNotify.
QEHOST_API Qeapp::ErrorStatus qedbOpenQeDbObject(QeDbObject*& object, QeDbObjectId id, QeDb::OpenMode mode,
                                                 bool openErased = false);

/// The same for a class: an object of another class is closed again and answered with eNotThatKindOfClass.
template <class T>
Qeapp::ErrorStatus qedbOpenObject(T*& object, QeDbObjectId id, QeDb::OpenMode mode, bool openErased = false)
{
    object = nullptr;
    QeDbObject* opened = nullptr;
    const Qeapp::ErrorStatus result = qedbOpenQeDbObject(opened, id, mode, openErased);
    if (result != Qeapp::eOk || opened == nullptr)
        return result;
    if (!opened->isKindOf(T::desc())) {
        static_cast<void>(opened->close()); // the class mismatch is what the caller has to hear of
        return Qeapp::eNotThatKindOfClass;
    }
    object = static_cast<T*>(opened);
    return Qeapp::eOk;
}
