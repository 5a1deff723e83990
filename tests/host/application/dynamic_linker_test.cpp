#include <fstream>

#include "embedded/diagnostics/fault_injection.h"
#include "embedded/host/application/application.h"
#include "embedded/host/database/host_error.h"
#include "host/database/drawing_test.h"
#include "support/error_text.h"

namespace Tests {
namespace {

using Embedded::Expected;
using Embedded::loadModule;
using Embedded::unloadModule;

class DynamicLinker : public PlatformTest {
protected:
    static void expectRefused(const char* file, Qeapp::ErrorStatus status, const std::string& reason)
    {
        const auto load = loadModule(file);
        EXPECT_EQ(Embedded::hostStatus(load), status);
        const std::string message = errorText(load);
        EXPECT_NE(message.find(reason), std::string::npos) << message;
        EXPECT_NE(message.find(std::filesystem::path(file).filename().string()), std::string::npos) << message;
    }

    static int countInitialisations(void* module)
    {
        using Count = int (*)();
        return reinterpret_cast<Count>(Embedded::moduleSymbol(module, "sampleInitialisations"))();
    }
};

TEST_F(DynamicLinker, Module_IsInitialisedAndUnloaded)
{
    const Expected<void*> load = loadModule(GOOD_MODULE);
    ASSERT_TRUE(load) << errorText(load);
    EXPECT_EQ(countInitialisations(*load), 1);
    EXPECT_TRUE(Embedded::isModuleUnlocked(*load));
    EXPECT_TRUE(Embedded::isModuleMdiAware(*load));
    EXPECT_EQ(unloadModule(*load), Qeapp::eOk);
    EXPECT_FALSE(Embedded::isModuleUnlocked(*load));
    EXPECT_FALSE(Embedded::isModuleMdiAware(*load));
}

TEST_F(DynamicLinker, LoadedModule_IsNotInitialisedAgain)
{
    const Expected<void*> first = loadModule(GOOD_MODULE);
    ASSERT_TRUE(first) << errorText(first);
    const auto otherSpelling =
        std::filesystem::path(GOOD_MODULE).parent_path() / "." / std::filesystem::path(GOOD_MODULE).filename();
    const Expected<void*> second = loadModule(otherSpelling);
    ASSERT_TRUE(second) << errorText(second);
    EXPECT_EQ(*second, *first);
    EXPECT_EQ(countInitialisations(*first), 1);
    EXPECT_EQ(unloadModule(*first), Qeapp::eOk);
    EXPECT_EQ(unloadModule(*first), Qeapp::eInvalidInput);
}

TEST_F(DynamicLinker, SeveralModules_AreLoadedSideBySide)
{
    const Expected<void*> good = loadModule(GOOD_MODULE);
    const Expected<void*> staying = loadModule(STAYING_MODULE);
    ASSERT_TRUE(good) << errorText(good);
    ASSERT_TRUE(staying) << errorText(staying);
    EXPECT_NE(*good, *staying);
    EXPECT_EQ(unloadModule(*good), Qeapp::eOk);
    EXPECT_TRUE(Embedded::isModuleUnlocked(*staying));
}

TEST_F(DynamicLinker, LockedModule_StaysLoaded)
{
    const Expected<void*> load = loadModule(LOCKED_MODULE);
    ASSERT_TRUE(load) << errorText(load);
    EXPECT_FALSE(Embedded::isModuleUnlocked(*load));
    EXPECT_EQ(unloadModule(*load), Qeapp::eModuleRefused);
    EXPECT_NE(Embedded::moduleSymbol(*load, "sampleInitialisations"), nullptr);
    auto* linker = static_cast<QeRxDynamicLinker*>(qerxSysRegistry()->at(kQeRxDynamicLinkerKey));
    EXPECT_TRUE(linker->unlockApplication(*load));
    EXPECT_EQ(unloadModule(*load), Qeapp::eOk);
}

TEST_F(DynamicLinker, ModuleThatRefusesToUnload_StaysLoaded)
{
    const Expected<void*> load = loadModule(STAYING_MODULE);
    ASSERT_TRUE(load) << errorText(load);
    EXPECT_EQ(unloadModule(*load), Qeapp::eModuleRefused);
    EXPECT_TRUE(Embedded::isModuleUnlocked(*load));
}

TEST_F(DynamicLinker, LibraryWithoutAVersion_IsRefused)
{
    expectRefused(UNRELATED_LIBRARY, Qeapp::eModuleRefused, "does not export qerxGetApiVersion");
}

TEST_F(DynamicLinker, LibraryWithoutAnEntryPoint_IsRefused)
{
    expectRefused(MODULE_WITHOUT_ENTRY_POINT, Qeapp::eModuleRefused, "does not export qerxEntryPoint");
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

TEST_F(DynamicLinker, FileThatIsNotALibrary_IsNotFound)
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
