// Unloading unmaps the module from the process, so that its file can be replaced.
#include "module/mapped_files.h"
#include "module/module_test.h"

namespace Tests {
namespace {

using MappedModule = ModuleTest;

TEST_F(MappedModule, TestProgram_DoesNotMapTheModule)
{
    EXPECT_FALSE(isMapped(kModuleFile));
}

TEST_F(MappedModule, Load_MapsTheModule)
{
    load();
    EXPECT_TRUE(isMapped(kModuleFile));
}

TEST_F(MappedModule, Unload_UnmapsTheModule)
{
    load();
    unload();
    EXPECT_FALSE(isMapped(kModuleFile));
}

} // namespace
} // namespace Tests
