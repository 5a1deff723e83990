// A named dictionary below a drawing's named objects dictionary whose entries are xrecords.
#pragma once

#include <string>
#include <vector>

#include "platform/host.h"

namespace Orvel {

/// Walks the entries of a dictionary. Owns the host's iterator; the dictionary need not stay open.
class CResbufDictionaryIterator {
public:
    explicit CResbufDictionaryIterator(QeDbDictionaryIterator* inner) : inner_(inner) {}
    CResbufDictionaryIterator(const CResbufDictionaryIterator&) = delete;
    CResbufDictionaryIterator& operator=(const CResbufDictionaryIterator&) = delete;
    virtual ~CResbufDictionaryIterator();

    virtual void Next();
    virtual bool Done();
    /// On true `chain` is a copy of the current entry's chain, null for an empty xrecord, to be released with
    /// qeutRelRb. False, with `chain` unchanged, when the entry cannot be opened or is not an xrecord.
    virtual bool GetResbuf(resbuf*& chain);
    virtual const wchar_t* GetKey();
    /// Writes the current entry's id to `id` and returns it.
    virtual QeDbObjectId GetObjectId(QeDbObjectId& id);

private:
    QeDbDictionaryIterator* inner_;
};

/// Reads, writes and removes entries by key. Every operation closes what it opens, unless its comment says otherwise,
/// and reports a failure by its result only. Writers lock the current document, readers do not.
class CResbufDictionary {
public:
    /// A null `database` means the working database of that moment.
    CResbufDictionary(const wchar_t* name, QeDbDatabase* database);

    /// Opens the dictionary in `mode`; the caller closes it. Null when it cannot be opened, and for kForNotify.
    /// For write it makes the dictionary where the entry is missing, erased or of another class, and replaces that
    /// entry. It replaces nothing and returns null where the entry cannot be opened for another reason, for example
    /// because somebody has it open.
    [[nodiscard]] QeDbDictionary* OpenDictionary(QeDb::OpenMode mode) const;
    /// An iterator at the first entry, which the caller deletes. Null when the dictionary is missing.
    [[nodiscard]] CResbufDictionaryIterator* NewIterator() const;
    /// 0 when the dictionary is missing.
    [[nodiscard]] int GetEntryCount() const;
    [[nodiscard]] bool HasKey(const wchar_t* key) const;
    /// On true `chain` is a copy to be released with qeutRelRb; on false it is unchanged.
    [[nodiscard]] bool GetResbuf(const wchar_t* key, resbuf*& chain) const;
    /// Stores a copy of the chain in place of the former entry of that key. `reactor`, which may be null, is attached
    /// to the new xrecord. On false the former entry stays.
    [[nodiscard]] bool SetResbuf(const wchar_t* key, const resbuf* chain, QeDbObjectReactor* reactor) const;
    [[nodiscard]] bool RemoveKey(const wchar_t* key) const;
    /// Removes every entry, without locking the document. True also for a dictionary that is missing or empty; false
    /// when the dictionary cannot be opened or any of its entries cannot be removed.
    [[nodiscard]] bool RemoveAll() const;
    /// A key that no entry has: as much of the prefix as fits, and a number. It lies in a buffer of 32 characters that
    /// every call overwrites. Null when no number is left.
    [[nodiscard]] const wchar_t* MakeUniqueKey(const wchar_t* prefix) const;

private:
    /// True, with no entries, for a dictionary that is missing; false when it cannot be opened.
    [[nodiscard]] bool listEntries(std::vector<QeDbObjectId>& entries) const;

    std::wstring name_;
    QeDbDatabase* database_;
};

} // namespace Orvel
