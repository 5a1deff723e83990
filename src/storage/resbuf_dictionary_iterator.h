// Walks the entries of a dictionary of xrecords.
#pragma once

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

} // namespace Orvel
