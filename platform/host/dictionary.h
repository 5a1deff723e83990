// Dictionaries of database objects.
#pragma once

#include <cstdint>

#include "object.h"

/// Walks a dictionary's entries in key order. Made by QeDbDictionary::newIterator, deleted by the caller; it walks the
/// entries as they were when it was made, and does not keep the dictionary open.
class QEHOST_API QeDbDictionaryIterator {
public:
    virtual ~QeDbDictionaryIterator();
    virtual bool done() const = 0;
    /// Moves to the next entry; false when there is none.
    virtual bool next() = 0;
    /// The current entry's key; valid until the iterator moves or is deleted. Empty when done.
    virtual const wchar_t* name() const = 0;
    /// Null when done.
    virtual QeDbObjectId objectId() const = 0;
    /// Opens the current entry's object as qedbOpenQeDbObject does.
    virtual Qeapp::ErrorStatus getObject(QeDbObject*& object, QeDb::OpenMode mode = QeDb::kForRead) const = 0;
};

/// Named objects, owned by the dictionary. Keys are compared exactly and kept in the order of their code units.
class QEHOST_API QeDbDictionary : public QeDbObject {
public:
    QERX_DECLARE_CLASS();
    QeDbDictionary();

    /// On eOk `id` is the entry's object; otherwise it is null and the result is eKeyNotFound or eInvalidKey (null
    /// key).
    Qeapp::ErrorStatus getAt(const wchar_t* key, QeDbObjectId& id) const;
    /// The same, and opens the object.
    Qeapp::ErrorStatus getAt(const wchar_t* key, QeDbObject*& object, QeDb::OpenMode mode) const;
    bool has(const wchar_t* key) const;
    std::uint32_t numEntries() const;

    /// Adds a new dictionary or xrecord under the key. An entry already there is replaced: its object is erased. On eOk
    /// the object is the database's own and stays open for write, for the caller to close, and `id` is its id; on
    /// failure the object still belongs to the caller. eInvalidKey for a null or empty key, eAlreadyInDatabase,
    /// eNotInDatabase (this dictionary is in none), eNotThatKindOfClass for an object that cannot be an entry,
    /// eOpenForRead or eOpenForWrite while someone has the object open that would be replaced.
    Qeapp::ErrorStatus setAt(const wchar_t* key, QeDbObject* object, QeDbObjectId& id);

    /// Takes the entry out and leaves its object in the database, without an owner and not erased. On eOk `id` is the
    /// object; eKeyNotFound otherwise.
    Qeapp::ErrorStatus remove(const wchar_t* key, QeDbObjectId& id);
    Qeapp::ErrorStatus remove(const wchar_t* key);
    Qeapp::ErrorStatus remove(QeDbObjectId id);

    /// A new iterator, at the first entry; null without memory or when the dictionary is not open.
    QeDbDictionaryIterator* newIterator() const;
};
