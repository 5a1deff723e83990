// The module's application object.
#pragma once

#include "platform/host.h"

/// Registers the decomposition reactor when the host loads the module, and removes it when the host unloads the module.
/// Both do nothing when there is nothing to do, and return eNotApplicable when the host has no decomposition manager.
class COrvelCoordsysCoreApp {
public:
    virtual Qeapp::ErrorStatus load();
    virtual Qeapp::ErrorStatus unload();

protected:
    ~COrvelCoordsysCoreApp() = default;
};

namespace Orvel {

/// The one application object, made when the library is mapped.
COrvelCoordsysCoreApp& moduleApplication();

} // namespace Orvel
