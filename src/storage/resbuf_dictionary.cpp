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
#include "storage/ignore_result.h"

namespace Orvel {
namespace {

using Dictionary = HostObject<QeDbDictionary>;

constexpr std::size_t kUniqueKeyCapacity = 32; // in characters, the NUL included
std::array<wchar_t, kUniqueKeyCapacity> uniqueKey;

/// On true `chain` is a copy of the xrecord's chain, null for an empty one, to be released with qeutRelRb. False, and
/// `chain` untouched, when the object cannot be opened, is no xrecord or cannot give its chain.
bool readXrecordChain(QeDbObjectId id, resbuf*& chain)
{
    HostObject<QeDbXrecord> xrecord;
    ResbufChain copy;
    if (xrecord.open(id, QeDb::kForRead) != Qeapp::eOk ||
        xrecord->rbChain(copy.put(), xrecord->database()) != Qeapp::eOk)
        return false;
    chain = copy.release();
    return true;
}

Qeapp::ErrorStatus openExisting(const NamedObjects& parent, const std::wstring& name, QeDb::OpenMode mode,
                                Dictionary& dictionary)
{
    QeDbObjectId id;
    const Qeapp::ErrorStatus result = parent->getAt(name.c_str(), id);
    if (result != Qeapp::eOk)
        return result;
    return dictionary.open(id, mode);
}

/// Returns whether the result means that there is no such dictionary: no entry, an erased one, or one of another class.
/// Any other failure, such as an entry that somebody has open, does not mean that.
bool isMissing(Qeapp::ErrorStatus result)
{
    return result == Qeapp::eKeyNotFound || result == Qeapp::eObjectErased || result == Qeapp::eNotThatKindOfClass;
}

/// Replaces the entry of that name. The holder deletes a new dictionary that could not be added.
Dictionary addDictionary(const NamedObjects& parent, const std::wstring& name)
{
    if (parent->upgradeOpen() != Qeapp::eOk)
        return {};
    Dictionary added(new (std::nothrow) QeDbDictionary);
    QeDbObjectId id;
    if (!added || parent->setAt(name.c_str(), added.get(), id) != Qeapp::eOk)
        return {};
    return added;
}

/// Null when memory is short.
CResbufDictionaryIterator* newIterator(const Dictionary& dictionary)
{
    std::unique_ptr<QeDbDictionaryIterator> inner(dictionary->newIterator());
    if (!inner)
        return nullptr;
    auto* const iterator = new (std::nothrow) CResbufDictionaryIterator(inner.get());
    if (iterator != nullptr)
        static_cast<void>(inner.release()); // the iterator owns it now
    return iterator;
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
        ignoreResult([&] { return xrecord->addReactor(reactor); });
    return true;
}

/// False when the entries cannot be listed.
bool appendEntries(const Dictionary& dictionary, std::vector<QeDbObjectId>& entries)
{
    const std::unique_ptr<CResbufDictionaryIterator> entry(newIterator(dictionary));
    if (!entry)
        return false;
    for (; !entry->Done(); entry->Next())
        entry->GetObjectId(entries.emplace_back());
    return true;
}

/// Writes the prefix and the number into the buffer. The prefix is cut so that both fit.
void formatUniqueKey(std::wstring& prefix, int number)
{
    const std::wstring digits = std::to_wstring(number);
    prefix.resize((std::min)(prefix.size(), kUniqueKeyCapacity - 1 - digits.size()));
    const std::wstring key = prefix + digits;
    key.copy(uniqueKey.data(), key.size());
    uniqueKey[key.size()] = L'\0';
}

} // namespace

CResbufDictionaryIterator::~CResbufDictionaryIterator()
{
    delete inner_;
}

void CResbufDictionaryIterator::Next()
{
    ignoreResult([&] { return inner_->next(); }); // Done returns the same
}

bool CResbufDictionaryIterator::Done()
{
    return inner_->done();
}

bool CResbufDictionaryIterator::GetResbuf(resbuf*& chain)
{
    return readXrecordChain(inner_->objectId(), chain);
}

const wchar_t* CResbufDictionaryIterator::GetKey()
{
    return inner_->name();
}

QeDbObjectId CResbufDictionaryIterator::GetObjectId(QeDbObjectId& id)
{
    id = inner_->objectId();
    return id;
}

CResbufDictionary::CResbufDictionary(const wchar_t* name, QeDbDatabase* database)
    : name_(name), database_(resolveDatabase(database))
{
}

QeDbDictionary* CResbufDictionary::OpenDictionary(QeDb::OpenMode mode) const
{
    NamedObjects parent;
    if (mode == QeDb::kForNotify || database_ == nullptr || parent.openIn(database_, QeDb::kForRead) != Qeapp::eOk)
        return nullptr;
    Dictionary dictionary;
    const Qeapp::ErrorStatus result = openExisting(parent, name_, mode, dictionary);
    if (mode == QeDb::kForWrite && isMissing(result))
        dictionary = addDictionary(parent, name_);
    return dictionary.release();
}

CResbufDictionaryIterator* CResbufDictionary::NewIterator() const
{
    const Dictionary dictionary(OpenDictionary(QeDb::kForRead));
    return dictionary ? newIterator(dictionary) : nullptr;
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
    return dictionary && dictionary->getAt(key, id) == Qeapp::eOk && readXrecordChain(id, chain);
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

bool CResbufDictionary::listEntries(std::vector<QeDbObjectId>& entries) const
{
    if (database_ == nullptr)
        return true; // there is no dictionary
    NamedObjects parent;
    if (parent.openIn(database_, QeDb::kForRead) != Qeapp::eOk)
        return false;
    Dictionary dictionary;
    const Qeapp::ErrorStatus result = openExisting(parent, name_, QeDb::kForRead, dictionary);
    return result == Qeapp::eOk ? appendEntries(dictionary, entries) : isMissing(result);
}

bool CResbufDictionary::RemoveAll() const
{
    std::vector<QeDbObjectId> entries;
    if (!listEntries(entries))
        return false;
    if (entries.empty())
        return true;
    const Dictionary dictionary(OpenDictionary(QeDb::kForWrite));
    bool isRemoved = static_cast<bool>(dictionary);
    for (const QeDbObjectId& entry : entries)
        isRemoved = dictionary && dictionary->remove(entry) == Qeapp::eOk && isRemoved;
    return isRemoved;
}

const wchar_t* CResbufDictionary::MakeUniqueKey(const wchar_t* prefix) const
{
    std::wstring used(prefix);
    const wchar_t* unused = nullptr;
    for (int number = 0; unused == nullptr && number < (std::numeric_limits<int>::max)(); ++number) {
        formatUniqueKey(used, number);
        if (!HasKey(uniqueKey.data()))
            unused = uniqueKey.data();
    }
    return unused;
}

} // namespace Orvel
