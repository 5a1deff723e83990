#include "embedded/diagnostics/fault_injection.h"
#include "module/module_test.h"

namespace Tests {
namespace {

using Embedded::FaultInjection;
using Calls = std::vector<std::string>;

using LoadedModule = ModuleTest;

TEST_F(LoadedModule, Load_SucceedsWithoutAMessage)
{
    const Embedded::Expected<void*> loaded = Embedded::loadModule(kModuleFile);
    ASSERT_TRUE(loaded) << loaded.error().text();
    handle = *loaded;
    EXPECT_NE(handle, nullptr);
}

TEST_F(LoadedModule, IsUnlocked)
{
    load();
    EXPECT_TRUE(Embedded::isModuleUnlocked(handle));
}

TEST_F(LoadedModule, IsDeclaredForSeveralDocuments)
{
    load();
    EXPECT_TRUE(Embedded::isModuleMdiAware(handle));
}

TEST_F(LoadedModule, RegistersOneReactor)
{
    load();
    EXPECT_EQ(countReactors(), 1);
}

TEST_F(LoadedModule, Load_MakesOnlyTheThreeHostCalls)
{
    FaultInjection::watch();
    load();
    FaultInjection::disarm();
    EXPECT_EQ(FaultInjection::seen(), (Calls{"qerxRegisterAppMDIAware", "QeRxDynamicLinker::unlockApplication",
                                             "QeDbDecompositionManager::addReactor"}));
}

TEST_F(LoadedModule, ReturnsTheHostsApiVersion)
{
    load();
    using ApiVersion = int (*)();
    void* const symbol = Embedded::moduleSymbol(handle, "qerxGetApiVersion");
    ASSERT_NE(symbol, nullptr);
    EXPECT_EQ(reinterpret_cast<ApiVersion>(symbol)(), 0x00180000);
}

TEST_F(LoadedModule, ReturnsZeroForOtherMessages)
{
    load();
    using EntryPoint = int (*)(int, void*);
    void* const symbol = Embedded::moduleSymbol(handle, "qerxEntryPoint");
    ASSERT_NE(symbol, nullptr);
    for (const int message : {-1, 0, 3, 4, 5, 99})
        EXPECT_EQ(reinterpret_cast<EntryPoint>(symbol)(message, handle), 0) << message;
    EXPECT_EQ(countReactors(), 1);
}

TEST_F(LoadedModule, SecondLoad_IsTheSameModule)
{
    load();
    const Embedded::Expected<void*> again = Embedded::loadModule(kModuleFile);
    ASSERT_TRUE(again) << again.error().text();
    EXPECT_EQ(*again, handle);
    EXPECT_EQ(countReactors(), 1);
}

TEST_F(LoadedModule, Unload_RemovesTheReactor)
{
    load();
    EXPECT_EQ(Embedded::unloadModule(handle), Qeapp::eOk);
    EXPECT_EQ(countReactors(), 0);
    EXPECT_EQ(Embedded::unloadModule(handle), Qeapp::eInvalidInput) << "the handle is gone";
    handle = nullptr;
}

TEST_F(LoadedModule, LoadAfterUnload_RegistersAgain)
{
    for (int round = 0; round < 3; ++round) {
        load();
        EXPECT_EQ(countReactors(), 1);
        EXPECT_TRUE(Embedded::isModuleUnlocked(handle));
        EXPECT_TRUE(Embedded::isModuleMdiAware(handle));
        unload();
        EXPECT_EQ(countReactors(), 0);
    }
}

TEST_F(LoadedModule, HostWithoutDecomposition_LoadsTheModule)
{
    Embedded::setHostParts({.decompositionManager = false});
    load();
    Embedded::setHostParts({});
    EXPECT_EQ(countReactors(), 0);
    EXPECT_TRUE(Embedded::isModuleUnlocked(handle));
}

TEST_F(LoadedModule, ModuleThatCouldNotUnlockItself_IsNotUnloaded)
{
    {
        const Embedded::ScopedFault fault({.call = "QeRxDynamicLinker::unlockApplication", .code = {}});
        load();
    }
    EXPECT_FALSE(Embedded::isModuleUnlocked(handle));
    EXPECT_EQ(Embedded::unloadModule(handle), Qeapp::eModuleRefused);
    EXPECT_EQ(countReactors(), 1);
    auto* const linker = static_cast<QeRxDynamicLinker*>(qerxSysRegistry()->at(kQeRxDynamicLinkerKey));
    EXPECT_TRUE(linker->unlockApplication(handle));
}

} // namespace
} // namespace Tests
