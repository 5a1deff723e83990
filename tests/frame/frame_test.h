// The fixture of the module's life: a drawing, and an application object that is unloaded at the end of each test.
#pragma once

#include <string>
#include <vector>

#include "embedded/diagnostics/fault_injection.h"
#include "embedded/host/application/application.h"
#include "frame/application.h"
#include "frame/entry_point.h"
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

    static long registeredReactors()
    {
        return Embedded::ResourceCounters::now()[Embedded::ResourceKind::decompositionReactor];
    }
    static void takeDecompositionManagerAway() { Embedded::setHostParts({.decompositionManager = false}); }
    static void giveDecompositionManagerBack() { Embedded::setHostParts({}); }
};

/// The fallible platform calls that the operation makes.
template <class Operation>
std::vector<std::string> callsOf(const Operation& operation)
{
    Embedded::FaultInjection::watch();
    operation();
    Embedded::FaultInjection::disarm();
    return Embedded::FaultInjection::seen();
}

} // namespace Tests
