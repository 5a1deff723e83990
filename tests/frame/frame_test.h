// The fixture for loading and unloading the module. It unloads the application object at the end of each test.
#pragma once

#include <string>
#include <vector>

#include "embedded/diagnostics/fault_injection.h"
#include "embedded/host/application/application.h"
#include "frame/application.h"
#include "frame/entry_point.h"
#include "storage/failing_calls.h"
#include "support/drawing.h"
#include "support/library_definitions.h"
#include "support/platform_test.h"

namespace Tests {

class FrameTest : public PlatformTest {
protected:
    ~FrameTest() override
    {
        Embedded::FaultInjection::disarm();
        Embedded::setHostParts({});
        EXPECT_EQ(Orvel::moduleApplication().unload(), Qeapp::eOk);
    }

    static long countReactors()
    {
        return Embedded::ResourceCounters::now()[Embedded::ResourceKind::decompositionReactor];
    }
    static void removeDecompositionManager() { Embedded::setHostParts({.decompositionManager = false}); }
    static void restoreDecompositionManager() { Embedded::setHostParts({}); }
};

} // namespace Tests
