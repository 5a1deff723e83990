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
        return call("26AddCoordinateSystemReactorEPNS2_28OrvelCoordinateSystemReactorE", anyReactor());
    }
    Qeapp::ErrorStatus remove()
    {
        return call("29RemoveCoordinateSystemReactorEPNS2_28OrvelCoordinateSystemReactorE", anyReactor());
    }
    bool setting() const
    {
        bool value = true;
        EXPECT_EQ(call<bool&>("30GetInitializeGeodataParametersERb", value), Qeapp::eOk);
        return value;
    }
    Qeapp::ErrorStatus set(bool value) const { return call("30SetInitializeGeodataParametersEb", value); }

private:
    /// The list stores the pointer and calls nothing, so any address can stand for a reactor.
    Reactor* anyReactor() { return reinterpret_cast<Reactor*>(this); }
};

TEST_F(FreshModule, HasNoReactors)
{
    load();
    ASSERT_EQ(add(), Qeapp::eOk);
    unload();
    load();
    EXPECT_EQ(remove(), Qeapp::eInvalidInput);
}

TEST_F(FreshModule, HasItsSettingAsAtFirst)
{
    load();
    ASSERT_FALSE(setting());
    ASSERT_EQ(set(true), Qeapp::eOk);
    ASSERT_TRUE(setting());
    unload();
    load();
    EXPECT_FALSE(setting());
}

} // namespace
} // namespace Tests
