#include "embedded/host/application/decomposition_manager.h"

#include <algorithm>

#include "embedded/diagnostics/resource_counters.h"
#include "embedded/host/application/application.h"
#include "embedded/host/database/injected_fault.h"

QeDbDecompositionManager::~QeDbDecompositionManager() = default;

Qeapp::ErrorStatus QeDbDecompositionReactor::decomposeForSave(QeDbDatabase* /*database*/,
                                                              QeDb::QeDbDwgVersion /*version*/,
                                                              QeDbSaveErrorRecorder* /*errors*/,
                                                              QeDbSaveErrorMessageRecorder* /*messages*/)
{
    return Qeapp::eOk;
}

void QeDbDecompositionReactor::saveCompleted(QeDbDatabase* /*database*/, QeDb::QeDbDwgVersion /*version*/)
{
}

void QeDbDecompositionReactor::saveAborted(QeDbDatabase* /*database*/, QeDb::QeDbDwgVersion /*version*/)
{
}

namespace QeHost {

Qeapp::ErrorStatus DecompositionManager::addReactor(QeDbDecompositionReactor* reactor)
{
    if (const auto injected = injectedFault("QeDbDecompositionManager::addReactor"))
        return *injected;
    if (reactor == nullptr)
        return Qeapp::eInvalidInput;
    if (isRegistered(reactor))
        return Qeapp::eDuplicateKey;
    reactors_.push_back(reactor);
    Embedded::ResourceCounters::add(Embedded::ResourceKind::decompositionReactor);
    return Qeapp::eOk;
}

// A call that throws leaves the reactor registered. One that fails with a result has removed it all the same, because
// the client deletes the reactor next.
Qeapp::ErrorStatus DecompositionManager::removeReactor(QeDbDecompositionReactor* reactor)
{
    const auto injected = injectedFault("QeDbDecompositionManager::removeReactor");
    const bool wasRegistered = std::erase(reactors_, reactor) != 0;
    if (wasRegistered)
        Embedded::ResourceCounters::remove(Embedded::ResourceKind::decompositionReactor);
    if (injected)
        return *injected;
    return wasRegistered ? Qeapp::eOk : Qeapp::eKeyNotFound;
}

bool DecompositionManager::isRegistered(const QeDbDecompositionReactor* reactor) const
{
    return std::find(reactors_.begin(), reactors_.end(), reactor) != reactors_.end();
}

DecompositionManager& decompositionManager()
{
    static auto* const manager = new DecompositionManager;
    return *manager;
}

} // namespace QeHost

QeDbDecompositionManager* qedbGetDecompositionManager()
{
    const Embedded::HostParts& parts = QeHost::hostParts();
    if (parts.otherDecompositionManager != nullptr)
        return parts.otherDecompositionManager;
    return parts.decompositionManager ? &QeHost::decompositionManager() : nullptr;
}
