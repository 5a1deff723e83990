// A module that was unmapped and mapped again starts in its initial state.
#include "coordsys/orvel_coordinate_system.h"
#include "module/module_test.h"

namespace Tests {
namespace {

using Reactor = Zentara::Gis::Orvel::CoordinateSystem::OrvelCoordinateSystemReactor;

class FreshModule : public ModuleTest {
protected:
    template <class Argument>
    Qeapp::ErrorStatus call(const std::string& name, Argument argument) const
    {
        void* const symbol = Embedded::moduleSymbol(handle, ("_ZN7Zentara3Gis5Orvel16CoordinateSystem" + name).c_str());
        return symbol != nullptr ? reinterpret_cast<Qeapp::ErrorStatus (*)(Argument)>(symbol)(argument)
                                 : Qeapp::eNotImplemented;
    }
    Qeapp::ErrorStatus add()
    {
        return call("26AddCoordinateSystemReactorEPNS2_28OrvelCoordinateSystemReactorE", dummyReactor());
    }
    Qeapp::ErrorStatus remove()
    {
        return call("29RemoveCoordinateSystemReactorEPNS2_28OrvelCoordinateSystemReactorE", dummyReactor());
    }
    bool readSetting() const
    {
        bool value = true;
        EXPECT_EQ(call<bool&>("30GetInitializeGeodataParametersERb", value), Qeapp::eOk);
        return value;
    }
    Qeapp::ErrorStatus writeSetting(bool value) const { return call("30SetInitializeGeodataParametersEb", value); }

private:
    /// The list stores the pointer and calls nothing, so any address can stand for a reactor.
    Reactor* dummyReactor() { return reinterpret_cast<Reactor*>(this); }
};

TEST_F(FreshModule, ReloadedModuleHasNoReactors)
{
    load();
    ASSERT_EQ(add(), Qeapp::eOk);
    unload();
    load();
    EXPECT_EQ(remove(), Qeapp::eInvalidInput);
}

TEST_F(FreshModule, ReloadedModuleHasTheInitialSetting)
{
    load();
    ASSERT_FALSE(readSetting());
    ASSERT_EQ(writeSetting(true), Qeapp::eOk);
    ASSERT_TRUE(readSetting());
    unload();
    load();
    EXPECT_FALSE(readSetting());
}

} // namespace
} // namespace Tests
