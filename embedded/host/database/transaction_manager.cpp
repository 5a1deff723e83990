#include "embedded/host/database/transaction_manager.h"

#include <utility>

#include "embedded/diagnostics/resource_counters.h"
#include "embedded/host/database/database.h"
#include "embedded/host/database/injected_fault.h"
#include "embedded/host/database/unreachable_objects.h"

using Embedded::ResourceCounters;
using Embedded::ResourceKind;

QeDbTransactionManager::~QeDbTransactionManager() = default;

namespace QeHost {
namespace {

void undo(ObjectRecord& record, std::unique_ptr<ObjectSnapshot>& before)
{
    record.isChanged = true; // a save may have written the undone state
    if (before == nullptr)
        record.undone = true;
    if (record.object == nullptr)
        return;
    ObjectState& state = *record.object->imp().state;
    if (before != nullptr) {
        before->restore(state);
        return;
    }
    state.erased = true;
    QeHost::detach(state);
}

} // namespace

QeDbTransaction* TransactionManager::startTransaction()
{
    if (isFaultInjected("QeDbTransactionManager::startTransaction"))
        return nullptr;
    active_.push_back(std::make_unique<QeDbTransaction>());
    active_.back()->nextHandle = database_.nextHandle;
    ResourceCounters::add(ResourceKind::transaction);
    return active_.back().get();
}

Qeapp::ErrorStatus TransactionManager::endTransaction()
{
    if (const auto injected = injectedFault("QeDbTransactionManager::endTransaction"))
        return *injected;
    if (active_.empty())
        return Qeapp::eNoTransaction;
    commitInnermost();
    return Qeapp::eOk;
}

Qeapp::ErrorStatus TransactionManager::abortTransaction()
{
    if (active_.empty())
        return Qeapp::eNoTransaction;
    abortInnermost();
    return Qeapp::eOk;
}

int TransactionManager::numActiveTransactions() const
{
    return static_cast<int>(active_.size());
}

void TransactionManager::recordCreation(ObjectRecord& record)
{
    if (!active_.empty())
        active_.back()->before.emplace(&record, nullptr);
}

void TransactionManager::recordWrite(ObjectRecord& record)
{
    if (active_.empty() || active_.back()->before.contains(&record))
        return;
    active_.back()->before.emplace(&record, std::make_unique<ObjectSnapshot>(*record.object->imp().state));
}

void TransactionManager::commitTo(int depth)
{
    while (numActiveTransactions() > depth)
        commitInnermost();
}

void TransactionManager::abortTo(int depth)
{
    while (numActiveTransactions() > depth)
        abortInnermost();
}

void TransactionManager::commitInnermost()
{
    QeDbTransaction* const outer = active_.size() > 1 ? active_[active_.size() - 2].get() : nullptr;
    if (outer != nullptr) // without memory the transaction stays active
        outer->before.reserve(outer->before.size() + active_.back()->before.size());
    const std::unique_ptr<QeDbTransaction> ended = std::move(active_.back());
    active_.pop_back();
    if (outer != nullptr)
        outer->before.merge(ended->before); // the older state in the outer one stays
    const CollectorAfterTransaction collector(database_, ended->before);
    ResourceCounters::remove(ResourceKind::transaction);
}

void TransactionManager::abortInnermost()
{
    const std::unique_ptr<QeDbTransaction> ended = std::move(active_.back());
    active_.pop_back();
    const CollectorAfterTransaction collector(database_, ended->before);
    for (auto& [record, before] : ended->before)
        undo(*record, before);
    database_.nextHandle = ended->nextHandle; // the handles of the undone objects are free again
    ResourceCounters::remove(ResourceKind::transaction);
}

} // namespace QeHost
