#include "embedded/host/database/transaction_manager.h"

#include <utility>

#include "embedded/diagnostics/resource_counters.h"
#include "embedded/host/database/database_imp.h"
#include "embedded/host/database/fault.h"
#include "embedded/host/database/unreachable_objects.h"

using Embedded::Audit;
using Embedded::Held;

QeDbTransactionManager::~QeDbTransactionManager() = default;

namespace QeHost {
namespace {

void undo(Stub& stub, std::unique_ptr<ObjectSnapshot>& before)
{
    stub.isChanged = true; // a save may have come between
    if (before == nullptr)
        stub.undone = true;
    if (stub.object == nullptr)
        return;
    ObjectState& state = *stub.object->imp().state;
    if (before != nullptr) {
        before->restore(state);
        return;
    }
    state.erased = true;
    letGo(state);
}

} // namespace

QeDbTransaction* TransactionManager::startTransaction()
{
    if (isStruck("QeDbTransactionManager::startTransaction"))
        return nullptr;
    active_.push_back(std::make_unique<QeDbTransaction>());
    active_.back()->nextHandle = database_.nextHandle;
    Audit::add(Held::transaction);
    return active_.back().get();
}

Qeapp::ErrorStatus TransactionManager::endTransaction()
{
    if (const auto fault = faultOf("QeDbTransactionManager::endTransaction"))
        return *fault;
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

void TransactionManager::recordCreation(Stub& stub)
{
    if (!active_.empty())
        active_.back()->before.emplace(&stub, nullptr);
}

void TransactionManager::recordWrite(Stub& stub)
{
    if (active_.empty() || active_.back()->before.contains(&stub))
        return;
    active_.back()->before.emplace(&stub, std::make_unique<ObjectSnapshot>(*stub.object->imp().state));
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
        outer->before.merge(ended->before); // what the outer one knows of is older and stays
    const LostWithTransaction lost(database_, ended->before);
    Audit::remove(Held::transaction);
}

void TransactionManager::abortInnermost()
{
    const std::unique_ptr<QeDbTransaction> ended = std::move(active_.back());
    active_.pop_back();
    const LostWithTransaction lost(database_, ended->before);
    for (auto& [stub, before] : ended->before)
        undo(*stub, before);
    database_.nextHandle = ended->nextHandle; // taken back with the objects that are undone
    Audit::remove(Held::transaction);
}

} // namespace QeHost
