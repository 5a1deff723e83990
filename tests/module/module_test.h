// The fixture loads the module from its file, as a host does, and uses it by its handle.
#pragma once

#include <filesystem>

#include "embedded/host/application/application.h"
#include "support/platform_test.h"

namespace Tests {

inline const std::filesystem::path kModuleFile = ORVEL_MODULE_FILE;

class ModuleTest : public PlatformTest {
protected:
    ~ModuleTest() override { unload(); }

    void* handle = nullptr;

    void load()
    {
        const Embedded::Expected<void*> loaded = Embedded::loadModule(kModuleFile);
        ASSERT_TRUE(loaded) << loaded.error().text();
        handle = *loaded;
    }
    void unload()
    {
        if (handle != nullptr) {
            EXPECT_EQ(Embedded::unloadModule(handle), Qeapp::eOk);
        }
        handle = nullptr;
    }
    static long countReactors()
    {
        return Embedded::ResourceCounters::now()[Embedded::ResourceKind::decompositionReactor];
    }
};

} // namespace Tests
