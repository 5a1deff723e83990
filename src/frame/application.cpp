#include "frame/application.h"

#include <memory>

#include "frame/decomposition_reactor.h"
#include "storage/ignore_result.h"

namespace {

/// Is final, because only a final class may have a public destructor that is not virtual.
class TheApplication final : public COrvelCoordsysCoreApp {};

constinit TheApplication application;
constinit std::unique_ptr<OrvelCoordsysCoreDecompositionReactor> decompositionReactor;
bool DecompositionReactorRegistered = false;

} // namespace

COrvelCoordsysCoreApp& Orvel::moduleApplication()
{
    return application;
}

Qeapp::ErrorStatus COrvelCoordsysCoreApp::load()
{
    if (DecompositionReactorRegistered)
        return Qeapp::eOk;
    QeDbDecompositionManager* const manager = qedbGetDecompositionManager();
    if (manager == nullptr)
        return Qeapp::eNotApplicable;
    decompositionReactor = std::make_unique<OrvelCoordsysCoreDecompositionReactor>();
    // The host refuses no new reactor.
    Orvel::ignoreResult([=] { return manager->addReactor(decompositionReactor.get()); });
    DecompositionReactorRegistered = true;
    return Qeapp::eOk;
}

Qeapp::ErrorStatus COrvelCoordsysCoreApp::unload()
{
    if (!DecompositionReactorRegistered)
        return Qeapp::eOk;
    QeDbDecompositionManager* const manager = qedbGetDecompositionManager();
    if (manager == nullptr)
        return Qeapp::eNotApplicable;
    // The reactor is deleted whatever the manager returns. Where the call throws, the host may still have the reactor,
    // so it stays alive and registered until the next unload.
    Orvel::ignoreResult([=] { return manager->removeReactor(decompositionReactor.get()); });
    decompositionReactor.reset();
    DecompositionReactorRegistered = false;
    return Qeapp::eOk;
}
