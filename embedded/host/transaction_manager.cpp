#include "embedded/host/transaction_manager.h"

#include <utility>

#include "embedded/foundation/audit.h"
#include "embedded/host/fault.h"

using Embedded::Audit;
using Embedded::Held;

QeDbTransactionManager::~QeDbTransactionManager() = default;

namespace QeHost {
namespace {

void undo(Stub& stub, std::unique_ptr<ObjectState>& before)
{
    if (before == nullptr)
        stub.undone = true;
    if (stub.object == nullptr)
        return;
    if (before == nullptr)
        stub.object->imp().state->erased = true;
    else
        stub.object->imp().state = std::move(before);
}

} // namespace

QeDbTransaction* TransactionManager::startTransaction()
{
    if (isStruck("QeDbTransactionManager::startTransaction"))
        return nullptr;
    active_.push_back(std::make_unique<QeDbTransaction>());
    active_.back()->nextHandle = nextHandle_;
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
    active_.back()->before.emplace(&stub, stub.object->imp().state->clone());
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
    const std::unique_ptr<QeDbTransaction> ended = std::move(active_.back());
    active_.pop_back();
    if (!active_.empty())
        active_.back()->before.merge(ended->before); // what the outer one knows of is older and stays
    Audit::remove(Held::transaction);
}

void TransactionManager::abortInnermost()
{
    const std::unique_ptr<QeDbTransaction> ended = std::move(active_.back());
    active_.pop_back();
    for (auto& [stub, before] : ended->before)
        undo(*stub, before);
    nextHandle_ = ended->nextHandle;
    Audit::remove(Held::transaction);
}

} // namespace QeHost
