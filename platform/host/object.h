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

// Internal to the host.
struct QeDbObjectImp;
struct QeDbObjectState;
struct QeDbObjectRecord;

namespace QeDb {
enum OpenMode : int { kForRead = 0, kForWrite = 1, kForNotify = 2 };
} // namespace QeDb

/// The identity of a database-resident object, as a value that is null by default. It is valid as long as its database
/// exists, also after the object is erased. After that it can still be copied and compared, and has its handle. The
/// host counts the ids of an object, and keeps an object that is no longer in the drawing as long as there is one.
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
    /// The object's number in its drawing. 0 for the null id.
    std::uint64_t handle() const;
    QeDbObjectRecord* record() const { return record_; }
    friend bool operator==(const QeDbObjectId&, const QeDbObjectId&) = default;

private:
    void retain() const;
    static void release(QeDbObjectRecord& record);

    QeDbObjectRecord* record_ = nullptr;
};

/// Is notified of changes to one object, but not during undo. Its client owns it.
class QEHOST_API QeDbObjectReactor {
public:
    virtual ~QeDbObjectReactor();
    virtual void modified(const QeDbObject* object);
    virtual void erased(const QeDbObject* object, bool erasing);
};

/// An object that can be in a database. A new object is not database-resident, and its maker deletes it. After it is
/// added to a database, the database owns it; it is open for write, and its maker closes it instead.
///
/// Queries need the object open for read or write (or not resident). Changes need it open for write (or not resident)
/// and otherwise return eNotOpenForWrite.
class QEHOST_API QeDbObject : public QeRxObject {
public:
    QERX_DECLARE_CLASS();
    ~QeDbObject() override;

    /// Null while the object is not database-resident.
    QeDbObjectId objectId() const;
    QeDbObjectId ownerId() const;
    QeDbDatabase* database() const;

    /// Ends one open of the object, whose opener must not use the pointer afterwards. Returns eNotInDatabase for an
    /// object that is not resident.
    Qeapp::ErrorStatus close();
    /// Changes an open for read to an open for write. Returns eOpenForRead when others have the object open for read,
    /// eOpenForWrite when it is already open for write.
    Qeapp::ErrorStatus upgradeOpen();
    /// Changes an open for write to an open for read.
    Qeapp::ErrorStatus downgradeOpen();
    /// Marks the object erased (or not). An erased object is not saved but stays in the database until the drawing is
    /// closed, or, when its owner no longer lists it, until nobody has it open or has an id of it. Returns
    /// eNotApplicable for the objects that a drawing needs: its roots and model space. Unerasing returns eDuplicateKey
    /// when another object has its place in the drawing, eObjectErased when the object's creation was undone.
    Qeapp::ErrorStatus erase(bool erasing = true);

    bool isErased() const;
    bool isReadEnabled() const;
    bool isWriteEnabled() const;

    /// A copy of the extended data of one registered application, or of all for null. Null when there is none. The
    /// chain begins with the application's name (1001), and the caller releases it with qeutRelRb.
    resbuf* xData(const wchar_t* appName = nullptr) const;
    /// Replaces the extended data of each application that the chain names. A name with nothing after it removes that
    /// application's data. The chain is copied. Returns eRegappNotRegistered for an application that is not registered
    /// in the database, eInvalidResbuf for a chain that does not begin with 1001 or has a code below 1000 or a chunk
    /// over 127 bytes, eNotInDatabase for an object that is not resident.
    Qeapp::ErrorStatus setXData(const resbuf* chain);

    void addReactor(QeDbObjectReactor* reactor);
    void removeReactor(QeDbObjectReactor* reactor);

    /// Allocates on the host heap, zero-filled.
    static void* operator new(std::size_t size);
    static void* operator new(std::size_t size, const std::nothrow_t&) noexcept;
    static void operator delete(void* memory) noexcept;
    static void operator delete(void* memory, const std::nothrow_t&) noexcept;

    /// The host's internal record of the object. Clients do not use it.
    QeDbObjectImp& imp() const { return *imp_; }

protected:
    /// Takes ownership of `state`.
    explicit QeDbObject(QeDbObjectState* state);

private:
    QeDbObjectImp* imp_;
};

/// Opens the object of an id. On eOk `object` is open and the caller closes it; otherwise it is null.
/// Returns eNullObjectId, eUnknownObjectId, eObjectErased, eOpenForWrite when the object is open for write,
/// eOpenForRead when it is open for read and `mode` is kForWrite, and eNotApplicable for kForNotify.
QEHOST_API Qeapp::ErrorStatus qedbOpenQeDbObject(QeDbObject*& object, QeDbObjectId id, QeDb::OpenMode mode,
                                                 bool openErased = false);

/// Opens an object of a class. Closes an object of another class again and returns eNotThatKindOfClass.
template <class T>
Qeapp::ErrorStatus qedbOpenObject(T*& object, QeDbObjectId id, QeDb::OpenMode mode, bool openErased = false)
{
    object = nullptr;
    QeDbObject* opened = nullptr;
    const Qeapp::ErrorStatus result = qedbOpenQeDbObject(opened, id, mode, openErased);
    if (result != Qeapp::eOk || opened == nullptr)
        return result;
    if (!opened->isKindOf(T::desc())) {
        static_cast<void>(opened->close()); // the result is the class mismatch
        return Qeapp::eNotThatKindOfClass;
    }
    object = static_cast<T*>(opened);
    return Qeapp::eOk;
}
