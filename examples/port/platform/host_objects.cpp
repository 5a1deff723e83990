#include "conversions.h"

#include <algorithm>

using Draft::Outcome;
using Platform::toStatus;
using Platform::toText;

// What every object does

QeDbObject::QeDbObject(Draft::Kind kind)
{
    m_new.kind = kind;
}

Draft::Drawing* QeDbObject::drawing() const
{
    return Draft::Session::get().find(m_link.drawing);
}

Draft::Record QeDbObject::record() const
{
    const auto present = drawing() ? drawing()->look(m_link) : nullptr;
    return present ? *present : m_new;
}

Outcome QeDbObject::setRecord(Draft::Record record)
{
    if (drawing())
        return m_purpose == Draft::Purpose::writing ? drawing()->change(m_link, std::move(record))
                                                    : Outcome::notForWriting;
    m_new = std::move(record);
    return Outcome::done;
}

Qeapp::ErrorStatus QeDbObject::open(Draft::Link link, QeDb::OpenMode mode)
{
    Draft::Drawing* const drawing = Draft::Session::get().find(link.drawing);
    if (!drawing)
        return Qeapp::eNullObjectId;
    const auto present = drawing->look(link);
    if (present && !present->erased && present->kind != m_new.kind)
        return Qeapp::eNotThatKindOfClass;
    const Draft::Purpose purpose = mode == QeDb::kForRead    ? Draft::Purpose::reading
                                   : mode == QeDb::kForWrite ? Draft::Purpose::writing
                                                             : Draft::Purpose::notice;
    const Outcome outcome = drawing->hold(link, purpose);
    if (outcome == Outcome::done) {
        m_link = link;
        m_purpose = purpose;
    }
    return toStatus(outcome);
}

void QeDbObject::noteAdded(QeDbObject& object, Draft::Link link, QeDbObjectId& id)
{
    object.m_link = link;
    object.m_purpose = Draft::Purpose::writing;
    id = QeDbObjectId(link);
}

QeDbObjectId QeDbObject::objectId() const
{
    return QeDbObjectId(m_link);
}

QeDbDatabase* QeDbObject::database() const
{
    return QeDbDatabase::of(drawing());
}

void QeDbObject::addReactor(QeDbObjectReactor*)
{
    // This product tells nobody of changes.
}

Qeapp::ErrorStatus QeDbObject::close()
{
    if (!drawing())
        return Qeapp::eNullObjectId;
    drawing()->letGo(m_link, m_purpose);
    delete this;
    return Qeapp::eOk;
}

Qeapp::ErrorStatus QeDbObject::upgradeOpen()
{
    if (!drawing())
        return Qeapp::eNullObjectId;
    if (m_purpose == Draft::Purpose::writing)
        return Qeapp::eOk;
    const Outcome outcome = drawing()->holdForWriting(m_link);
    if (outcome == Outcome::done)
        m_purpose = Draft::Purpose::writing;
    return toStatus(outcome);
}

resbuf* QeDbObject::xData(const wchar_t* application) const
{
    for (const auto& [name, values] : record().extension) {
        if (name != toText(application))
            continue;
        Draft::Values all{{QeRb::kXdataAppName, name}};
        all.insert(all.end(), values.begin(), values.end());
        return Platform::toChain(all);
    }
    return nullptr;
}

Qeapp::ErrorStatus QeDbObject::setXData(const resbuf* chain)
{
    Draft::Values values;
    if (!chain || chain->restype != QeRb::kXdataAppName || !drawing())
        return Qeapp::eInvalidInput;
    if (m_purpose != Draft::Purpose::writing)
        return toStatus(Outcome::notForWriting);
    const Outcome outcome = Platform::toValues(chain->rbnext, values);
    return toStatus(outcome == Outcome::done
                        ? drawing()->extend(m_link, toText(chain->resval.rstring), std::move(values))
                        : outcome);
}

// Dictionaries

QeDbDictionary::QeDbDictionary() : QeDbObject(Draft::Kind::folder)
{
}

Qeapp::ErrorStatus QeDbDictionary::getAt(const wchar_t* key, QeDbObjectId& id) const
{
    if (Core::failsNow())
        return toStatus(Outcome::trialFailure);
    const auto found = Draft::findEntry(record(), toText(key));
    id = QeDbObjectId(found.value_or(Draft::Link()));
    return found ? Qeapp::eOk : Qeapp::eKeyNotFound;
}

Qeapp::ErrorStatus QeDbDictionary::setAt(const wchar_t* key, QeDbObject* object, QeDbObjectId& id)
{
    if (!drawing() || !object || !object->objectId().isNull())
        return Qeapp::eInvalidInput;
    Draft::Link added;
    const Outcome outcome = drawing()->addToFolder(link(), toText(key), recordOf(*object), added);
    if (outcome == Outcome::done)
        noteAdded(*object, added, id);
    return toStatus(outcome);
}

Qeapp::ErrorStatus QeDbDictionary::remove(const wchar_t* key, QeDbObjectId& id)
{
    if (!drawing())
        return Qeapp::eInvalidInput;
    Draft::Link taken;
    const Outcome outcome = drawing()->takeOut(link(), toText(key), taken);
    id = QeDbObjectId(taken);
    return toStatus(outcome);
}

Qeapp::ErrorStatus QeDbDictionary::remove(const wchar_t* key)
{
    QeDbObjectId id;
    return remove(key, id);
}

Qeapp::ErrorStatus QeDbDictionary::remove(QeDbObjectId id)
{
    for (const auto& [name, entry] : record().entries) {
        if (entry == id.link())
            return remove(Core::toWide(name).c_str());
    }
    return Qeapp::eKeyNotFound;
}

bool QeDbDictionary::has(const wchar_t* key) const
{
    return Draft::findEntry(record(), toText(key)).has_value();
}

std::uint32_t QeDbDictionary::numEntries() const
{
    return static_cast<std::uint32_t>(record().entries.size());
}

QeDbDictionaryIterator* QeDbDictionary::newIterator() const
{
    return Core::failsNow() ? nullptr : new (std::nothrow) QeDbDictionaryIterator(record().entries);
}

QeDbDictionaryIterator::QeDbDictionaryIterator(const Draft::Entries& entries)
{
    for (const auto& [name, link] : entries)
        m_entries.emplace_back(Core::toWide(name), link);
}

bool QeDbDictionaryIterator::done() const
{
    return m_at >= m_entries.size();
}

bool QeDbDictionaryIterator::next()
{
    m_at += done() ? 0u : 1u;
    return !done();
}

const wchar_t* QeDbDictionaryIterator::name() const
{
    return done() ? L"" : m_entries[m_at].first.c_str();
}

QeDbObjectId QeDbDictionaryIterator::objectId() const
{
    return done() ? QeDbObjectId() : QeDbObjectId(m_entries[m_at].second);
}

// Xrecords

QeDbXrecord::QeDbXrecord() : QeDbObject(Draft::Kind::note)
{
}

Qeapp::ErrorStatus QeDbXrecord::setFromRbChain(const resbuf* chain, QeDbDatabase*)
{
    if (Core::failsNow())
        return toStatus(Outcome::trialFailure);
    Draft::Record changed = record();
    changed.values.clear();
    const Outcome outcome = Platform::toValues(chain, changed.values);
    return toStatus(outcome == Outcome::done ? setRecord(std::move(changed)) : outcome);
}

Qeapp::ErrorStatus QeDbXrecord::rbChain(resbuf*& chain, QeDbDatabase*) const
{
    chain = Platform::toChain(values());
    return chain || values().empty() ? Qeapp::eOk : Qeapp::eOutOfMemory;
}

// Registered applications

QeDbRegAppTableRecord::QeDbRegAppTableRecord() : QeDbObject(Draft::Kind::application)
{
}

Qeapp::ErrorStatus QeDbRegAppTableRecord::setName(const wchar_t* name)
{
    if (Core::failsNow())
        return toStatus(Outcome::trialFailure);
    Draft::Record changed = record();
    changed.text = toText(name);
    return toStatus(setRecord(std::move(changed)));
}

QeDbRegAppTable::QeDbRegAppTable() : QeDbObject(Draft::Kind::applicationTable)
{
}

bool QeDbRegAppTable::has(const wchar_t* name) const
{
    return Draft::findEntry(record(), toText(name)).has_value();
}

Qeapp::ErrorStatus QeDbRegAppTable::add(QeDbObjectId& id, QeDbRegAppTableRecord* record)
{
    if (!drawing() || !record || !record->objectId().isNull())
        return Qeapp::eInvalidInput;
    Draft::Link added;
    const Outcome outcome = drawing()->addApplication(recordOf(*record), added);
    if (outcome == Outcome::done)
        noteAdded(*record, added, id);
    return toStatus(outcome);
}

// GeoData

QeDbGeoData::QeDbGeoData() : QeDbObject(Draft::Kind::place)
{
}

const wchar_t* QeDbGeoData::coordinateSystem() const
{
    m_text = Core::toWide(record().text);
    return m_text.c_str();
}

Qeapp::ErrorStatus QeDbGeoData::setCoordinateSystem(const wchar_t* text)
{
    if (Core::failsNow())
        return toStatus(Outcome::trialFailure);
    Draft::Record changed = record();
    changed.text = toText(text);
    return toStatus(setRecord(std::move(changed)));
}

Qeapp::ErrorStatus QeDbGeoData::setBlockTableRecordId(QeDbObjectId id)
{
    if (Core::failsNow())
        return toStatus(Outcome::trialFailure);
    m_block = id.link();
    return Qeapp::eOk;
}

Qeapp::ErrorStatus QeDbGeoData::postToDb(QeDbObjectId& id)
{
    Draft::Drawing* const target = Draft::Session::get().find(m_block.drawing);
    if (!target || !objectId().isNull())
        return Qeapp::eInvalidInput;
    Draft::Link added;
    const Outcome outcome = target->addPlace(m_block, record(), added);
    if (outcome == Outcome::done)
        noteAdded(*this, added, id);
    return toStatus(outcome);
}

Qeapp::ErrorStatus qedbGetGeoDataObjId(QeDbDatabase* database, QeDbObjectId& id)
{
    if (!database)
        return Qeapp::eInvalidInput;
    if (Core::failsNow())
        return toStatus(Outcome::trialFailure);
    id = QeDbObjectId(database->drawing().place());
    return id.isNull() ? Qeapp::eKeyNotFound : Qeapp::eOk;
}
