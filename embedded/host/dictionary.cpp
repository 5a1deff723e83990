#include "platform/host/dictionary.h"

#include <algorithm>

#include "embedded/host/database_imp.h"
#include "embedded/host/dictionary_iterator.h"

#include "embedded/host/fault.h"
#include "platform/host/xrecord.h"

namespace QeHost {
namespace {

using Entries = std::map<std::wstring, Stub*>;

const Entries& entriesOf(const QeDbDictionary& dictionary)
{
    return stateOf<DictionaryState>(dictionary).entries;
}

/// The live object under the key, or null.
Stub* findEntry(const QeDbDictionary& dictionary, const wchar_t* key)
{
    const Entries& entries = entriesOf(dictionary);
    const auto found = entries.find(key);
    return found != entries.end() && isLive(found->second) ? found->second : nullptr;
}

bool canBeEntry(const QeDbObject& object)
{
    return object.isKindOf(QeDbDictionary::desc()) || object.isKindOf(QeDbXrecord::desc());
}

Qeapp::ErrorStatus refusalToChange(const QeDbDictionary& dictionary)
{
    if (dictionary.imp().stub == nullptr)
        return Qeapp::eNotInDatabase;
    return dictionary.imp().canWrite() ? Qeapp::eOk : Qeapp::eNotOpenForWrite;
}

Qeapp::ErrorStatus refusalToAdd(const QeDbDictionary& dictionary, const wchar_t* key, const QeDbObject* object)
{
    if (const Qeapp::ErrorStatus refusal = refusalToChange(dictionary); refusal != Qeapp::eOk)
        return refusal;
    if (key == nullptr || *key == L'\0')
        return Qeapp::eInvalidKey;
    if (object == nullptr)
        return Qeapp::eInvalidInput;
    if (object->imp().stub != nullptr)
        return Qeapp::eAlreadyInDatabase;
    if (!canBeEntry(*object))
        return Qeapp::eNotThatKindOfClass;
    const Stub* replaced = findEntry(dictionary, key);
    return replaced != nullptr ? conflictOf(*replaced, QeDb::kForWrite) : Qeapp::eOk;
}

void detach(const Stub& stub)
{
    writableStateOf<ObjectState>(*stub.object).owner = nullptr;
}

/// Erases what an entry holds, or, where that is erased already, lets go of it, so that it cannot come back.
void discard(Stub& stub)
{
    if (stub.object == nullptr)
        return;
    const QeDbObjectId kept(&stub); // at least until its reactors were told
    const bool wasLive = isLive(&stub);
    detach(stub);
    if (!wasLive)
        return;
    stub.object->imp().state->erased = true;
    notifyErased(*stub.object, true);
}

/// Puts the new object under the key and says what was there, or null. Without memory the dictionary stays as it was.
Stub* putEntry(const QeDbDictionary& dictionary, const wchar_t* key, QeDbObject& object)
{
    Entries& entries = writableStateOf<DictionaryState>(dictionary).entries;
    const auto [entry, isNew] = entries.try_emplace(key, nullptr);
    Stub* const replaced = entry->second;
    if (replaced != nullptr && replaced->object != nullptr)
        prepareToWrite(replaced->object->imp()); // discarding it can fail no more
    try {
        entry->second = &dictionary.imp().stub->database->adopt(object, dictionary.imp().stub);
    } catch (...) {
        if (isNew)
            entries.erase(entry);
        throw;
    }
    return replaced;
}

Qeapp::ErrorStatus removeEntry(const QeDbDictionary& dictionary, const std::wstring& key)
{
    Entries& entries = writableStateOf<DictionaryState>(dictionary).entries;
    const auto found = entries.find(key);
    detach(*found->second);
    entries.erase(found);
    return Qeapp::eOk;
}

} // namespace
} // namespace QeHost

QeRxClass* QeDbDictionary::desc()
{
    static QeRxClass descriptor(L"QeDbDictionary", QeDbObject::desc());
    return &descriptor;
}

QeRxClass* QeDbDictionary::isA() const
{
    return desc();
}

QeDbDictionary::QeDbDictionary() : QeDbObject(new QeHost::DictionaryState)
{
}

Qeapp::ErrorStatus QeDbDictionary::getAt(const wchar_t* key, QeDbObjectId& id) const
{
    id.setNull();
    if (const auto fault = QeHost::faultOf("QeDbDictionary::getAt", Qeapp::eKeyNotFound))
        return *fault;
    if (!imp().canRead())
        return Qeapp::eNotOpenForRead;
    if (key == nullptr)
        return Qeapp::eInvalidKey;
    id = QeDbObjectId(QeHost::findEntry(*this, key));
    return id.isNull() ? Qeapp::eKeyNotFound : Qeapp::eOk;
}

Qeapp::ErrorStatus QeDbDictionary::getAt(const wchar_t* key, QeDbObject*& object, QeDb::OpenMode mode) const
{
    object = nullptr;
    QeDbObjectId id;
    if (const Qeapp::ErrorStatus status = getAt(key, id); status != Qeapp::eOk)
        return status;
    return qedbOpenQeDbObject(object, id, mode);
}

bool QeDbDictionary::has(const wchar_t* key) const
{
    return key != nullptr && imp().canRead() && QeHost::findEntry(*this, key) != nullptr;
}

std::uint32_t QeDbDictionary::numEntries() const
{
    if (!imp().canRead())
        return 0;
    const QeHost::Entries& entries = QeHost::entriesOf(*this);
    return static_cast<std::uint32_t>(
        std::count_if(entries.begin(), entries.end(), [](const auto& entry) { return QeHost::isLive(entry.second); }));
}

Qeapp::ErrorStatus QeDbDictionary::setAt(const wchar_t* key, QeDbObject* object, QeDbObjectId& id)
{
    id.setNull();
    if (const auto fault = QeHost::faultOf("QeDbDictionary::setAt"))
        return *fault;
    if (const Qeapp::ErrorStatus refusal = QeHost::refusalToAdd(*this, key, object); refusal != Qeapp::eOk)
        return refusal;
    QeHost::Stub* const replaced = QeHost::putEntry(*this, key, *object);
    id = object->objectId();
    if (replaced != nullptr)
        QeHost::discard(*replaced);
    return Qeapp::eOk;
}

Qeapp::ErrorStatus QeDbDictionary::remove(const wchar_t* key, QeDbObjectId& id)
{
    id.setNull();
    if (const auto fault = QeHost::faultOf("QeDbDictionary::remove"))
        return *fault;
    if (const Qeapp::ErrorStatus refusal = QeHost::refusalToChange(*this); refusal != Qeapp::eOk)
        return refusal;
    if (key == nullptr)
        return Qeapp::eInvalidKey;
    QeHost::Stub* stub = QeHost::findEntry(*this, key);
    if (stub == nullptr)
        return Qeapp::eKeyNotFound;
    id = QeDbObjectId(stub);
    return QeHost::removeEntry(*this, key);
}

Qeapp::ErrorStatus QeDbDictionary::remove(const wchar_t* key)
{
    QeDbObjectId id;
    return remove(key, id);
}

Qeapp::ErrorStatus QeDbDictionary::remove(QeDbObjectId id)
{
    if (const auto fault = QeHost::faultOf("QeDbDictionary::remove"))
        return *fault;
    if (const Qeapp::ErrorStatus refusal = QeHost::refusalToChange(*this); refusal != Qeapp::eOk)
        return refusal;
    if (id.isNull())
        return Qeapp::eNullObjectId;
    const QeHost::Entries& entries = QeHost::entriesOf(*this);
    const auto found = std::find_if(entries.begin(), entries.end(), [id](const auto& entry) {
        return entry.second == id.stub() && QeHost::isLive(entry.second);
    });
    return found != entries.end() ? QeHost::removeEntry(*this, std::wstring(found->first)) : Qeapp::eKeyNotFound;
}

QeDbDictionaryIterator* QeDbDictionary::newIterator() const
{
    if (QeHost::isStruck("QeDbDictionary::newIterator") || !imp().canRead())
        return nullptr;
    return new QeHost::DictionaryIterator(*this);
}
