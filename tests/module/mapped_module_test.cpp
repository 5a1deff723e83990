// Whether an unloaded module has left the process: a program that keeps it mapped could not replace its file. The
// kernel's list of what is mapped tells, on Linux.
#include <fstream>
#include <string>

#include "module_test.h"

namespace Tests {
namespace {

bool isMapped()
{
    std::ifstream maps("/proc/self/maps");
    const std::string name = kModuleFile.filename().string();
    for (std::string line; std::getline(maps, line);) {
        if (line.ends_with(name))
            return true;
    }
    return false;
}

using MappedModule = ModuleTest;

TEST_F(MappedModule, TestProgram_HasNoModuleOfItsOwn)
{
    EXPECT_FALSE(isMapped());
}

TEST_F(MappedModule, Load_MapsIt)
{
    load();
    EXPECT_TRUE(isMapped());
}

TEST_F(MappedModule, Unload_UnmapsIt)
{
    load();
    unload();
    EXPECT_FALSE(isMapped());
}

} // namespace
} // namespace Tests
