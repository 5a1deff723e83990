#include "embedded/host/database/dictionary_iterator.h"

#include "embedded/diagnostics/resource_counters.h"

namespace QeHost {

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

} // namespace QeHost

QeDbDictionaryIterator::~QeDbDictionaryIterator() = default;
