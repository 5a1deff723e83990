#include <fstream>

#include "embedded/diagnostics/fault_injection.h"
#include "embedded/host/application/application.h"
#include "host/database/drawing_test.h"

namespace Tests {
namespace {

using Embedded::loadModule;
using Embedded::ModuleLoad;
using Embedded::unloadModule;

class DynamicLinker : public PlatformTest {
protected:
    static void expectRefused(const char* file, Qeapp::ErrorStatus status, const std::string& reason)
    {
        const ModuleLoad load = loadModule(file);
        EXPECT_EQ(load.status, status);
        EXPECT_EQ(load.handle, nullptr);
        EXPECT_NE(load.message.find(reason), std::string::npos) << load.message;
        EXPECT_NE(load.message.find(std::filesystem::path(file).filename().string()), std::string::npos)
            << load.message;
    }

    static int initialisationsOf(void* module)
    {
        using Count = int (*)();
        return reinterpret_cast<Count>(Embedded::moduleSymbol(module, "sampleInitialisations"))();
    }
};

TEST_F(DynamicLinker, Module_IsInitialisedAndUnloaded)
{
    const ModuleLoad load = loadModule(GOOD_MODULE);
    ASSERT_EQ(load.status, Qeapp::eOk) << load.message;
    EXPECT_EQ(load.message, "");
    EXPECT_EQ(initialisationsOf(load.handle), 1);
    EXPECT_TRUE(Embedded::isModuleUnlocked(load.handle));
    EXPECT_TRUE(Embedded::isModuleMdiAware(load.handle));
    EXPECT_EQ(unloadModule(load.handle), Qeapp::eOk);
    EXPECT_FALSE(Embedded::isModuleUnlocked(load.handle));
    EXPECT_FALSE(Embedded::isModuleMdiAware(load.handle));
}

TEST_F(DynamicLinker, LoadedModule_IsNotInitialisedAgain)
{
    const ModuleLoad first = loadModule(GOOD_MODULE);
    ASSERT_EQ(first.status, Qeapp::eOk) << first.message;
    const auto otherSpelling =
        std::filesystem::path(GOOD_MODULE).parent_path() / "." / std::filesystem::path(GOOD_MODULE).filename();
    const ModuleLoad second = loadModule(otherSpelling);
    EXPECT_EQ(second.status, Qeapp::eOk);
    EXPECT_EQ(second.handle, first.handle);
    EXPECT_EQ(initialisationsOf(first.handle), 1);
    EXPECT_EQ(unloadModule(first.handle), Qeapp::eOk);
    EXPECT_EQ(unloadModule(first.handle), Qeapp::eInvalidInput);
}

TEST_F(DynamicLinker, SeveralModules_AreLoadedSideBySide)
{
    const ModuleLoad good = loadModule(GOOD_MODULE);
    const ModuleLoad staying = loadModule(STAYING_MODULE);
    ASSERT_EQ(good.status, Qeapp::eOk) << good.message;
    ASSERT_EQ(staying.status, Qeapp::eOk) << staying.message;
    EXPECT_NE(good.handle, staying.handle);
    EXPECT_EQ(unloadModule(good.handle), Qeapp::eOk);
    EXPECT_TRUE(Embedded::isModuleUnlocked(staying.handle));
}

TEST_F(DynamicLinker, LockedModule_StaysLoaded)
{
    const ModuleLoad load = loadModule(LOCKED_MODULE);
    ASSERT_EQ(load.status, Qeapp::eOk) << load.message;
    EXPECT_FALSE(Embedded::isModuleUnlocked(load.handle));
    EXPECT_EQ(unloadModule(load.handle), Qeapp::eModuleRefused);
    EXPECT_NE(Embedded::moduleSymbol(load.handle, "sampleInitialisations"), nullptr);
    auto* linker = static_cast<QeRxDynamicLinker*>(qerxSysRegistry()->at(kQeRxDynamicLinkerKey));
    EXPECT_TRUE(linker->unlockApplication(load.handle));
    EXPECT_EQ(unloadModule(load.handle), Qeapp::eOk);
}

TEST_F(DynamicLinker, ModuleThatRefusesToGo_StaysLoaded)
{
    const ModuleLoad load = loadModule(STAYING_MODULE);
    ASSERT_EQ(load.status, Qeapp::eOk) << load.message;
    EXPECT_EQ(unloadModule(load.handle), Qeapp::eModuleRefused);
    EXPECT_TRUE(Embedded::isModuleUnlocked(load.handle));
}

TEST_F(DynamicLinker, LibraryWithoutAVersion_IsRefused)
{
    expectRefused(NOT_A_MODULE, Qeapp::eModuleRefused, "does not export qerxGetApiVersion");
}

TEST_F(DynamicLinker, LibraryWithoutAnEntryPoint_IsRefused)
{
    expectRefused(HALF_A_MODULE, Qeapp::eModuleRefused, "does not export qerxEntryPoint");
}

TEST_F(DynamicLinker, ModuleForAnotherHost_IsRefused)
{
    expectRefused(FOREIGN_MODULE, Qeapp::eModuleRefused, "host API version 0x170000, this host has 0x180000");
}

TEST_F(DynamicLinker, ModuleThatFailsToInitialise_IsRefused)
{
    expectRefused(FAILING_MODULE, Qeapp::eModuleRefused, "initialisation answered 3");
}

TEST_F(DynamicLinker, MissingFile_IsNotFound)
{
    expectRefused("no_such_module.so", Qeapp::eModuleNotFound, "cannot be loaded");
}

TEST_F(DynamicLinker, FileThatIsNoLibrary_IsNotFound)
{
    expectRefused(__FILE__, Qeapp::eModuleNotFound, "cannot be loaded");
}

TEST_F(DynamicLinker, UnknownHandle_IsRefused)
{
    int unknown = 0;
    EXPECT_EQ(unloadModule(&unknown), Qeapp::eInvalidInput);
    EXPECT_EQ(unloadModule(nullptr), Qeapp::eInvalidInput);
    EXPECT_EQ(Embedded::moduleSymbol(&unknown, "main"), nullptr);
    EXPECT_FALSE(qerxRegisterAppMDIAware(&unknown));
    EXPECT_FALSE(Embedded::isModuleMdiAware(&unknown));
}

TEST_F(DynamicLinker, SystemRegistry_HasTheLinker)
{
    QeRxObject* linker = qerxSysRegistry()->at(L"DynamicLinker");
    ASSERT_NE(linker, nullptr);
    EXPECT_TRUE(linker->isKindOf(QeRxDynamicLinker::desc()));
    EXPECT_FALSE(static_cast<QeRxDynamicLinker*>(linker)->unlockApplication(nullptr));
}

TEST_F(DynamicLinker, SystemRegistry_HoldsWhatIsPutIntoIt)
{
    QeRxDictionary& registry = *qerxSysRegistry();
    QeRxObject* linker = registry.at(kQeRxDynamicLinkerKey);
    EXPECT_EQ(registry.at(L"Other"), nullptr);
    EXPECT_EQ(registry.at(nullptr), nullptr);
    EXPECT_EQ(registry.atPut(L"Other", linker), nullptr);
    EXPECT_EQ(registry.atPut(L"Other", nullptr), linker);
    EXPECT_EQ(registry.remove(L"Other"), nullptr);
    EXPECT_EQ(registry.remove(kQeRxDynamicLinkerKey), linker);
    EXPECT_EQ(registry.at(kQeRxDynamicLinkerKey), nullptr);
    EXPECT_EQ(registry.atPut(kQeRxDynamicLinkerKey, linker), nullptr);
}

} // namespace
} // namespace Tests
