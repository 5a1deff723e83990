#include "embedded/host/database/unreachable_objects.h"

#include <new>
#include <utility>
#include <vector>

#include "embedded/host/database/database_imp.h"
#include "platform/host/dictionary.h"

namespace QeHost {
namespace {

Stub* ownerOf(const Stub& stub)
{
    return stub.object != nullptr ? stub.object->imp().state->owner : nullptr;
}

/// The first owner of all, perhaps the object itself.
Stub& outermost(Stub& stub)
{
    Stub* outer = &stub;
    while (Stub* const owner = ownerOf(*outer))
        outer = owner;
    return *outer;
}

bool isReachable(const Stub& stub)
{
    return stub.object == nullptr || stub.ids > 0 || stub.object->imp().isOpen();
}

/// Everything that the dictionary holds, itself included; nothing when some of that can be reached.
std::vector<Stub*> unreachableFrom(Stub& top)
{
    std::vector<Stub*> found{&top};
    for (std::size_t next = 0; next < found.size(); ++next) {
        const Stub& stub = *found[next];
        if (isReachable(stub))
            return {};
        if (!stub.object->isKindOf(QeDbDictionary::desc()))
            continue;
        const DictionaryEntries& entries = stateOf<DictionaryState>(*stub.object).entries;
        if (!entries.isComplete())
            return {};
        for (const auto& [key, entry] : entries.all())
            found.push_back(entry);
    }
    return found;
}

void destroyWhatIsLost(Stub& stub)
{
    DatabaseImp& database = *stub.database;
    if (isReachable(stub))
        return;
    Stub& top = outermost(stub);
    if (database.isIndispensable(top))
        return;
    if (database.transactions.numActiveTransactions() > 0) {
        database.waiting.emplace_back(&stub);
        return;
    }
    for (Stub* const lost : unreachableFrom(top))
        database.destroy(*lost);
}

} // namespace

void destroyIfLost(Stub& stub) noexcept
{
    try {
        destroyWhatIsLost(stub);
    } catch (const std::bad_alloc&) { // see the header
    }
}

LostWithTransaction::LostWithTransaction(DatabaseImp& database, const Touched& touched)
    : database_(database), touched_(touched)
{
    for (const auto& [stub, before] : touched_)
        ++stub->ids;
}

// An object is looked at when the last of its ids ends.
LostWithTransaction::~LostWithTransaction()
{
    for (const auto& [stub, before] : touched_)
        releaseId(*stub);
    if (database_.transactions.numActiveTransactions() == 0)
        std::vector<QeDbObjectId>().swap(database_.waiting);
}

} // namespace QeHost
