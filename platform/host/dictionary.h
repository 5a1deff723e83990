// Dictionaries of database objects.
#pragma once

#include <cstdint>

#include "object.h"

/// Walks a dictionary's entries in key order. QeDbDictionary::newIterator makes it and the caller deletes it. It walks
/// the entries that the dictionary had when the iterator was made, and does not keep the dictionary open.
class QEHOST_API QeDbDictionaryIterator {
public:
    virtual ~QeDbDictionaryIterator();
    virtual bool done() const = 0;
    /// Moves to the next entry. False when there is none.
    virtual bool next() = 0;
    /// The current entry's key, valid until the iterator moves or is deleted. Empty when done.
    virtual const wchar_t* name() const = 0;
    /// Null when done.
    virtual QeDbObjectId objectId() const = 0;
    /// Opens the current entry's object as qedbOpenQeDbObject does.
    virtual Qeapp::ErrorStatus getObject(QeDbObject*& object, QeDb::OpenMode mode = QeDb::kForRead) const = 0;
};

/// Owns named objects. Keys are compared exactly and sorted by their code units.
class QEHOST_API QeDbDictionary : public QeDbObject {
public:
    QERX_DECLARE_CLASS();
    QeDbDictionary();

    /// On eOk `id` is the entry's object. Otherwise it is null and the result is eKeyNotFound or eInvalidKey (null
    /// key).
    Qeapp::ErrorStatus getAt(const wchar_t* key, QeDbObjectId& id) const;
    /// The same, and opens the object.
    Qeapp::ErrorStatus getAt(const wchar_t* key, QeDbObject*& object, QeDb::OpenMode mode) const;
    bool has(const wchar_t* key) const;
    std::uint32_t numEntries() const;

    /// Adds a new dictionary or xrecord under the key. It replaces a former entry of that key, whose object is erased.
    /// On eOk the database owns the object, which stays open for write until the caller closes it, and `id` is its id.
    /// On failure the caller still owns the object. Returns eInvalidKey for a null or empty key, eAlreadyInDatabase,
    /// eNotInDatabase (this dictionary is in no database), eNotThatKindOfClass for an object that cannot be an entry,
    /// eOpenForRead or eOpenForWrite while the object of the former entry is open.
    Qeapp::ErrorStatus setAt(const wchar_t* key, QeDbObject* object, QeDbObjectId& id);

    /// Removes the entry. Its object stays in the database, without an owner and not erased. On eOk `id` is the object;
    /// otherwise the result is eKeyNotFound.
    Qeapp::ErrorStatus remove(const wchar_t* key, QeDbObjectId& id);
    Qeapp::ErrorStatus remove(const wchar_t* key);
    Qeapp::ErrorStatus remove(QeDbObjectId id);

    /// A new iterator at the first entry. Null when memory is short or the dictionary is not open.
    QeDbDictionaryIterator* newIterator() const;
};
