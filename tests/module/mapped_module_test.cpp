// An unloaded module is unmapped from the process. A program that kept it mapped could not replace its file.
#include "module/mapped_files.h"
#include "module/module_test.h"

namespace Tests {
namespace {

using MappedModule = ModuleTest;

TEST_F(MappedModule, TestProgram_HasNoModuleOfItsOwn)
{
    EXPECT_FALSE(isMapped(kModuleFile));
}

TEST_F(MappedModule, Load_MapsIt)
{
    load();
    EXPECT_TRUE(isMapped(kModuleFile));
}

TEST_F(MappedModule, Unload_UnmapsIt)
{
    load();
    unload();
    EXPECT_FALSE(isMapped(kModuleFile));
}

} // namespace
} // namespace Tests
