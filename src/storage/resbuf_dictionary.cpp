#include "storage/resbuf_dictionary.h"

#include <algorithm>
#include <array>
#include <cwchar>
#include <limits>
#include <memory>
#include <new>
#include <vector>

#include "storage/database_argument.h"
#include "storage/host_holders.h"
#include "storage/xrecord_chain.h"

namespace Orvel {
namespace {

using Dictionary = HostObject<QeDbDictionary>;

constexpr std::size_t kUniqueKeyCapacity = 32; // in characters, the NUL included
std::array<wchar_t, kUniqueKeyCapacity> uniqueKey;

/// An object of another class is closed again and left alone, as is one that cannot be opened.
QeDbDictionary* openPresent(QeDbObjectId id, QeDb::OpenMode mode)
{
    Dictionary found;
    return found.open(id, mode) == Qeapp::eOk ? found.release() : nullptr;
}

/// Of a new object that could not be added, the holder deletes it.
QeDbDictionary* addDictionary(NamedObjects& parent, const std::wstring& name)
{
    if (parent->upgradeOpen() != Qeapp::eOk)
        return nullptr;
    Dictionary added(new (std::nothrow) QeDbDictionary);
    QeDbObjectId id;
    return added && parent->setAt(name.c_str(), added.get(), id) == Qeapp::eOk ? added.release() : nullptr;
}

bool storeXrecord(QeDbDictionary& dictionary, const wchar_t* key, const resbuf* chain, QeDbObjectReactor* reactor)
{
    HostObject<QeDbXrecord> xrecord(new (std::nothrow) QeDbXrecord);
    if (!xrecord || xrecord->setFromRbChain(chain, dictionary.database()) != Qeapp::eOk)
        return false;
    QeDbObjectId id;
    if (dictionary.setAt(key, xrecord.get(), id) != Qeapp::eOk)
        return false;
    if (reactor != nullptr)
        xrecord->addReactor(reactor);
    return true;
}

std::vector<QeDbObjectId> entriesOf(const CResbufDictionary& dictionary)
{
    std::vector<QeDbObjectId> entries;
    const std::unique_ptr<CResbufDictionaryIterator> entry(dictionary.NewIterator());
    for (; entry && !entry->Done(); entry->Next())
        entry->GetObjectId(entries.emplace_back());
    return entries;
}

/// "%s%s" of the prefix, cut to what the number leaves of the buffer, and the number.
void formatUniqueKey(std::wstring& prefix, int number)
{
    const std::wstring digits = std::to_wstring(number);
    prefix.resize(std::min(prefix.size(), kUniqueKeyCapacity - 1 - digits.size()));
    const std::wstring key = prefix + digits;
    key.copy(uniqueKey.data(), key.size());
    uniqueKey[key.size()] = L'\0';
}

} // namespace

CResbufDictionary::CResbufDictionary(const wchar_t* name, QeDbDatabase* database)
    : name_(name), database_(ResolveDatabase(database))
{
}

QeDbDictionary* CResbufDictionary::OpenDictionary(QeDb::OpenMode mode) const
{
    NamedObjects parent;
    if (mode == QeDb::kForNotify || database_ == nullptr || parent.openIn(database_, QeDb::kForRead) != Qeapp::eOk)
        return nullptr;
    QeDbObjectId id;
    const Qeapp::ErrorStatus lookedUp = parent->getAt(name_.c_str(), id);
    if (lookedUp == Qeapp::eOk)
        return openPresent(id, mode);
    return lookedUp == Qeapp::eKeyNotFound && mode == QeDb::kForWrite ? addDictionary(parent, name_) : nullptr;
}

CResbufDictionaryIterator* CResbufDictionary::NewIterator() const
{
    const Dictionary dictionary(OpenDictionary(QeDb::kForRead));
    if (!dictionary)
        return nullptr;
    std::unique_ptr<QeDbDictionaryIterator> inner(dictionary->newIterator());
    if (!inner)
        return nullptr;
    auto* const iterator = new (std::nothrow) CResbufDictionaryIterator(inner.get());
    if (iterator != nullptr)
        static_cast<void>(inner.release()); // the iterator owns it now
    return iterator;
}

int CResbufDictionary::GetEntryCount() const
{
    const Dictionary dictionary(OpenDictionary(QeDb::kForRead));
    return dictionary ? static_cast<int>(dictionary->numEntries()) : 0;
}

bool CResbufDictionary::HasKey(const wchar_t* key) const
{
    const Dictionary dictionary(OpenDictionary(QeDb::kForRead));
    return dictionary && dictionary->has(key);
}

bool CResbufDictionary::GetResbuf(const wchar_t* key, resbuf*& chain) const
{
    QeDbObjectId id;
    const Dictionary dictionary(OpenDictionary(QeDb::kForRead));
    // GCOVR_EXCL_BR_START: an exception's cleaning up, which g++ does not mark as such
    return dictionary && dictionary->getAt(key, id) == Qeapp::eOk && ReadXrecordChain(id, chain);
    // GCOVR_EXCL_BR_STOP
}

bool CResbufDictionary::SetResbuf(const wchar_t* key, const resbuf* chain, QeDbObjectReactor* reactor) const
{
    const DocumentLock lock;
    if (!lock)
        return false;
    const Dictionary dictionary(OpenDictionary(QeDb::kForWrite));
    return dictionary && storeXrecord(*dictionary.get(), key, chain, reactor);
}

bool CResbufDictionary::RemoveKey(const wchar_t* key) const
{
    const DocumentLock lock;
    if (!lock)
        return false;
    const Dictionary dictionary(OpenDictionary(QeDb::kForWrite));
    return dictionary && dictionary->remove(key) == Qeapp::eOk;
}

bool CResbufDictionary::RemoveAll() const
{
    const std::vector<QeDbObjectId> entries = entriesOf(*this);
    if (entries.empty())
        return true;
    const Dictionary dictionary(OpenDictionary(QeDb::kForWrite));
    bool removed = static_cast<bool>(dictionary);
    for (const QeDbObjectId& entry : entries) // GCOVR_EXCL_BR_START: as in GetResbuf
        removed = dictionary && dictionary->remove(entry) == Qeapp::eOk && removed;
    // GCOVR_EXCL_BR_STOP
    return removed;
}

const wchar_t* CResbufDictionary::MakeUniqueKey(const wchar_t* prefix) const
{
    std::wstring used(prefix);
    // GCOVR_EXCL_BR_START: that they are used up takes some 2,000,000,000 keys
    for (int number = 0; number < std::numeric_limits<int>::max(); ++number) {
        // GCOVR_EXCL_BR_STOP
        formatUniqueKey(used, number);
        if (!HasKey(uniqueKey.data()))
            return uniqueKey.data();
    }
    return nullptr; // GCOVR_EXCL_LINE: see above
}

} // namespace Orvel
