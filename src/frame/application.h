// The module's application object.
#pragma once

#include "platform/host.h"

/// What the module does when the host loads and unloads it: registers and removes the decomposition reactor. Both do
/// nothing when there is nothing to do, and answer eNotApplicable when the host has no decomposition manager.
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
