// A named dictionary below a drawing's named objects dictionary whose entries are xrecords.
#pragma once

#include <string>
#include <vector>

#include "platform/host.h"

namespace Orvel {

/// Owns the host's iterator. The dictionary itself need not stay open.
class CResbufDictionaryIterator {
public:
    explicit CResbufDictionaryIterator(QeDbDictionaryIterator* inner) : inner_(inner) {}
    CResbufDictionaryIterator(const CResbufDictionaryIterator&) = delete;
    CResbufDictionaryIterator& operator=(const CResbufDictionaryIterator&) = delete;
    virtual ~CResbufDictionaryIterator();

    virtual void Next();
    virtual bool Done();
    /// On true `chain` is a copy of the current entry's chain, null for an empty xrecord, to be released with
    /// qeutRelRb. False, and `chain` untouched, when the entry cannot be opened or is no xrecord.
    virtual bool GetResbuf(resbuf*& chain);
    virtual const wchar_t* GetKey();
    /// Writes the current entry's id to `id` and returns it.
    virtual QeDbObjectId GetObjectId(QeDbObjectId& id);

private:
    QeDbDictionaryIterator* inner_;
};

/// Keyed reading, writing and removal. Every operation closes what it opens, unless it says otherwise, and tells of a
/// failure by its result alone. Writers lock the current document, readers do not.
class CResbufDictionary {
public:
    /// A null `database` means the working database of that moment.
    CResbufDictionary(const wchar_t* name, QeDbDatabase* database);

    /// The dictionary, open in `mode`, for the caller to close; null when it cannot be opened, and for kForNotify.
    /// Opened for write it is made where the entry is missing, erased or of another class, and replaces that entry.
    /// Where the entry cannot be looked up or opened for another reason, such as somebody having it open, nothing is
    /// replaced and the result is null.
    [[nodiscard]] QeDbDictionary* OpenDictionary(QeDb::OpenMode mode) const;
    /// At the first entry, for the caller to delete; null when the dictionary is missing.
    [[nodiscard]] CResbufDictionaryIterator* NewIterator() const;
    /// 0 when the dictionary is missing.
    [[nodiscard]] int GetEntryCount() const;
    [[nodiscard]] bool HasKey(const wchar_t* key) const;
    /// On true `chain` is a copy to be released with qeutRelRb; on false it is untouched.
    [[nodiscard]] bool GetResbuf(const wchar_t* key, resbuf*& chain) const;
    /// Stores a copy of the chain, in place of what the key had. `reactor`, which may be null, is attached to the new
    /// xrecord. On false the former entry is as it was.
    [[nodiscard]] bool SetResbuf(const wchar_t* key, const resbuf* chain, QeDbObjectReactor* reactor) const;
    [[nodiscard]] bool RemoveKey(const wchar_t* key) const;
    /// Removes every entry, without locking the document. True also for a dictionary that is missing or empty; false
    /// when the dictionary cannot be opened or any of its entries cannot be removed.
    [[nodiscard]] bool RemoveAll() const;
    /// A key that no entry has, made of as much of the prefix as fits and a number, in a buffer of 32 characters that
    /// every call overwrites; null when the numbers run out.
    [[nodiscard]] const wchar_t* MakeUniqueKey(const wchar_t* prefix) const;

private:
    /// True, with no entries, for a dictionary that is missing; false when it cannot be opened.
    [[nodiscard]] bool listEntries(std::vector<QeDbObjectId>& entries) const;

    std::wstring name_;
    QeDbDatabase* database_;
};

} // namespace Orvel
