#include "embedded/host/database/unreachable_objects.h"

#include <new>
#include <utility>
#include <vector>

#include "embedded/host/database/database.h"
#include "embedded/host/database/dictionary.h"
#include "platform/host/dictionary.h"

namespace QeHost {
namespace {

ObjectRecord* ownerOf(const ObjectRecord& record)
{
    return record.object != nullptr ? record.object->imp().state->owner : nullptr;
}

/// The outermost owner, which may be the object itself.
ObjectRecord& outermost(ObjectRecord& record)
{
    ObjectRecord* outer = &record;
    while (ObjectRecord* const owner = ownerOf(*outer))
        outer = owner;
    return *outer;
}

bool isReachable(const ObjectRecord& record)
{
    return record.object == nullptr || record.ids > 0 || record.object->imp().isOpen();
}

/// The object and everything below it, or nothing if any of it is reachable.
std::vector<ObjectRecord*> unreachableFrom(ObjectRecord& top)
{
    std::vector<ObjectRecord*> found{&top};
    for (std::size_t next = 0; next < found.size(); ++next) {
        const ObjectRecord& record = *found[next];
        if (isReachable(record))
            return {};
        if (!record.object->isKindOf(QeDbDictionary::desc()))
            continue;
        const DictionaryEntries& entries = stateOf<DictionaryState>(*record.object).entries;
        if (!entries.isComplete())
            return {};
        for (const auto& [key, entry] : entries.all())
            found.push_back(entry);
    }
    return found;
}

void collect(ObjectRecord& record)
{
    DatabaseImp& database = *record.database;
    if (isReachable(record))
        return;
    ObjectRecord& top = outermost(record);
    if (database.isIndispensable(top))
        return;
    if (database.transactions.numActiveTransactions() > 0) {
        database.pendingCollection.emplace_back(&record);
        return;
    }
    for (ObjectRecord* const each : unreachableFrom(top))
        database.destroy(*each);
}

} // namespace

void collectIfUnreachable(ObjectRecord& record) noexcept
{
    try {
        collect(record);
    } catch (const std::bad_alloc&) { // the object stays until the drawing is closed
    }
}

CollectorAfterTransaction::CollectorAfterTransaction(DatabaseImp& database, const Touched& touched)
    : database_(database), touched_(touched)
{
    for (const auto& [record, before] : touched_)
        ++record->ids;
}

// Releasing the last id of an object collects it.
CollectorAfterTransaction::~CollectorAfterTransaction()
{
    for (const auto& [record, before] : touched_)
        releaseId(*record);
    if (database_.transactions.numActiveTransactions() == 0)
        std::vector<QeDbObjectId>().swap(database_.pendingCollection);
}

} // namespace QeHost
