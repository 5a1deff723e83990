#include "embedded/host/database/dictionary.h"

#include <algorithm>
#include <utility>

#include "embedded/diagnostics/resource_counters.h"
#include "embedded/host/database/database.h"
#include "embedded/host/database/injected_fault.h"
#include "embedded/host/database/object_classes.h"
#include "platform/host/dictionary.h"

namespace QeHost {
namespace {

const DictionaryEntries& entriesOf(const QeDbDictionary& dictionary)
{
    return stateOf<DictionaryState>(dictionary).entries;
}

/// The live object under the key, or null.
ObjectRecord* findEntry(const QeDbDictionary& dictionary, const wchar_t* key)
{
    ObjectRecord* const found = entriesOf(dictionary).find(key);
    return isLive(found) ? found : nullptr;
}

Qeapp::ErrorStatus checkChange(const QeDbDictionary& dictionary)
{
    if (dictionary.imp().record == nullptr)
        return Qeapp::eNotInDatabase;
    return dictionary.imp().canWrite() ? Qeapp::eOk : Qeapp::eNotOpenForWrite;
}

Qeapp::ErrorStatus checkAdd(const QeDbDictionary& dictionary, const wchar_t* key, const QeDbObject* object)
{
    if (const Qeapp::ErrorStatus status = checkChange(dictionary); status != Qeapp::eOk)
        return status;
    if (key == nullptr || *key == L'\0')
        return Qeapp::eInvalidKey;
    if (object == nullptr)
        return Qeapp::eInvalidInput;
    if (object->imp().record != nullptr)
        return Qeapp::eAlreadyInDatabase;
    if (!canBelongTo(*object, QeDbDictionary::desc()))
        return Qeapp::eNotThatKindOfClass;
    const ObjectRecord* replaced = findEntry(dictionary, key);
    return replaced != nullptr ? checkConflict(*replaced, QeDb::kForWrite) : Qeapp::eOk;
}

void detach(ObjectRecord& record)
{
    writableStateOf<ObjectState>(loadObject(record)).owner = nullptr;
}

bool isThere(const ObjectRecord& record)
{
    return record.object != nullptr || record.isStored;
}

/// Erases what an entry held, or, where that is erased already, lets go of it, so that it cannot come back.
void discard(ObjectRecord& record)
{
    if (!isThere(record))
        return;
    const QeDbObjectId kept(&record); // at least until its reactors were told
    const bool wasLive = isLive(&record);
    detach(record);
    if (!wasLive)
        return;
    record.object->imp().state->erased = true;
    notifyErased(*record.object, true);
}

/// Puts the new object under the key and says what was there, or null. Without memory the dictionary stays as it was.
ObjectRecord* putEntry(const QeDbDictionary& dictionary, const wchar_t* key, QeDbObject& object)
{
    DictionaryEntries& entries = writableStateOf<DictionaryState>(dictionary).entries;
    ObjectRecord* const replaced = entries.find(key);
    if (replaced != nullptr && isThere(*replaced))
        prepareToWrite(loadObject(*replaced).imp()); // discarding it can fail no more
    DictionaryEntries::Map entry;
    ObjectRecord*& added = entry[key];
    added = &dictionary.imp().record->database->adopt(object, dictionary.imp().record);
    entries.put(std::move(entry));
    return replaced;
}

Qeapp::ErrorStatus removeEntry(const QeDbDictionary& dictionary, const std::wstring& key)
{
    DictionaryEntries& entries = writableStateOf<DictionaryState>(dictionary).entries;
    ObjectRecord& object = *entries.find(key);
    prepareToWrite(loadObject(object).imp()); // detaching it can fail no more
    entries.remove(key);
    detach(object);
    return Qeapp::eOk;
}

Qeapp::ErrorStatus removeLiveEntry(const QeDbDictionary& dictionary, const wchar_t* key, QeDbObjectId& id)
{
    if (key == nullptr)
        return Qeapp::eInvalidKey;
    ObjectRecord* const record = findEntry(dictionary, key);
    if (record == nullptr)
        return Qeapp::eKeyNotFound;
    id = QeDbObjectId(record);
    return removeEntry(dictionary, key);
}

Qeapp::ErrorStatus removeObject(const QeDbDictionary& dictionary, const QeDbObjectId& id)
{
    if (id.isNull())
        return Qeapp::eNullObjectId;
    const std::wstring key = isLive(id.record()) ? entriesOf(dictionary).findKey(*id.record()) : std::wstring();
    return key.empty() ? Qeapp::eKeyNotFound : removeEntry(dictionary, key);
}

/// A walk over the entries that a dictionary had when the walk began.
class DictionaryIterator final : public QeDbDictionaryIterator {
public:
    explicit DictionaryIterator(const QeDbDictionary& dictionary);
    ~DictionaryIterator() override;
    DictionaryIterator(const DictionaryIterator&) = delete;
    DictionaryIterator& operator=(const DictionaryIterator&) = delete;

    bool done() const override;
    bool next() override;
    const wchar_t* name() const override;
    QeDbObjectId objectId() const override;
    Qeapp::ErrorStatus getObject(QeDbObject*& object, QeDb::OpenMode mode) const override;

private:
    std::vector<std::pair<std::wstring, QeDbObjectId>> entries_;
    std::size_t position_ = 0;
};

DictionaryIterator::DictionaryIterator(const QeDbDictionary& dictionary)
{
    for (const auto& [key, record] : stateOf<DictionaryState>(dictionary).entries.all()) {
        if (isLive(record))
            entries_.emplace_back(key, record);
    }
    Embedded::ResourceCounters::add(Embedded::ResourceKind::dictionaryIterator);
}

DictionaryIterator::~DictionaryIterator()
{
    Embedded::ResourceCounters::remove(Embedded::ResourceKind::dictionaryIterator);
}

bool DictionaryIterator::done() const
{
    return position_ >= entries_.size();
}

bool DictionaryIterator::next()
{
    if (done())
        return false;
    ++position_;
    return !done();
}

const wchar_t* DictionaryIterator::name() const
{
    return done() ? L"" : entries_[position_].first.c_str();
}

QeDbObjectId DictionaryIterator::objectId() const
{
    return done() ? QeDbObjectId() : entries_[position_].second;
}

Qeapp::ErrorStatus DictionaryIterator::getObject(QeDbObject*& object, QeDb::OpenMode mode) const
{
    return qedbOpenQeDbObject(object, objectId(), mode);
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
    if (const auto injected = QeHost::injectedFault("QeDbDictionary::getAt", Qeapp::eKeyNotFound))
        return *injected;
    if (!imp().canRead())
        return Qeapp::eNotOpenForRead;
    if (key == nullptr)
        return Qeapp::eInvalidKey;
    return QeHost::catchStatus([&] {
        id = QeDbObjectId(QeHost::findEntry(*this, key));
        return id.isNull() ? Qeapp::eKeyNotFound : Qeapp::eOk;
    });
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
    const auto find = [&] { return QeHost::findEntry(*this, key) != nullptr ? Qeapp::eOk : Qeapp::eKeyNotFound; };
    return key != nullptr && imp().canRead() && QeHost::catchStatus(find) == Qeapp::eOk;
}

std::uint32_t QeDbDictionary::numEntries() const
{
    if (!imp().canRead())
        return 0;
    std::ptrdiff_t live = 0;
    const Qeapp::ErrorStatus counted = QeHost::catchStatus([&] {
        const auto entries = QeHost::entriesOf(*this).all();
        live = std::count_if(entries.begin(), entries.end(),
                             [](const auto& entry) { return QeHost::isLive(entry.second); });
        return Qeapp::eOk;
    });
    return counted == Qeapp::eOk ? static_cast<std::uint32_t>(live) : 0;
}

Qeapp::ErrorStatus QeDbDictionary::setAt(const wchar_t* key, QeDbObject* object, QeDbObjectId& id)
{
    id.setNull();
    if (const auto injected = QeHost::injectedFault("QeDbDictionary::setAt"))
        return *injected;
    return QeHost::catchStatus([&] {
        if (const Qeapp::ErrorStatus status = QeHost::checkAdd(*this, key, object); status != Qeapp::eOk)
            return status;
        QeHost::ObjectRecord* const replaced = QeHost::putEntry(*this, key, *object);
        id = object->objectId();
        if (replaced != nullptr)
            QeHost::discard(*replaced);
        return Qeapp::eOk;
    });
}

Qeapp::ErrorStatus QeDbDictionary::remove(const wchar_t* key, QeDbObjectId& id)
{
    id.setNull();
    if (const auto injected = QeHost::injectedFault("QeDbDictionary::remove"))
        return *injected;
    if (const Qeapp::ErrorStatus status = QeHost::checkChange(*this); status != Qeapp::eOk)
        return status;
    return QeHost::catchStatus([&] { return QeHost::removeLiveEntry(*this, key, id); });
}

Qeapp::ErrorStatus QeDbDictionary::remove(const wchar_t* key)
{
    QeDbObjectId id;
    return remove(key, id);
}

Qeapp::ErrorStatus QeDbDictionary::remove(QeDbObjectId id)
{
    if (const auto injected = QeHost::injectedFault("QeDbDictionary::remove"))
        return *injected;
    if (const Qeapp::ErrorStatus status = QeHost::checkChange(*this); status != Qeapp::eOk)
        return status;
    return QeHost::catchStatus([&] { return QeHost::removeObject(*this, id); });
}

QeDbDictionaryIterator* QeDbDictionary::newIterator() const
{
    if (QeHost::isFaultInjected("QeDbDictionary::newIterator") || !imp().canRead())
        return nullptr;
    QeDbDictionaryIterator* iterator = nullptr;
    static_cast<void>(QeHost::catchStatus([&] { // without one, the caller knows that it failed
        iterator = new QeHost::DictionaryIterator(*this);
        return Qeapp::eOk;
    }));
    return iterator;
}

QeDbDictionaryIterator::~QeDbDictionaryIterator() = default;
