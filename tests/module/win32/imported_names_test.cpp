// The files of the Windows edition import only from the system's libraries and from each other. The functions that the
// module calls itself are listed in imported_names_windows.txt, those that the compiler's runtime in it calls in
// imported_by_runtime_windows.txt.
#include <gtest/gtest.h>

#include "module/module_test.h"
#include "module/published_names.h"
#include "module/win32/portable_executable.h"

namespace Tests {
namespace {

const Names kSystem{"ADVAPI32.dll", "KERNEL32.dll", "SHELL32.dll", "msvcrt.dll", "ole32.dll"};

struct ShippedFile {
    const char* name;
    /// The libraries besides the system's.
    Names libraries;
};

const std::vector<ShippedFile> kShippedFiles{
    {"OrvelCoordsysCore.dll", {"qehost.dll", "zsr.dll", "fqcore.dll"}},
    {"qehost.dll", {"fqcore.dll"}},
    {"zsr.dll", {"fqcore.dll"}},
    {"fqcore.dll", {}},
    {"orvelcs.exe", {"OrvelCoordsysCore.dll", "qehost.dll", "zsr.dll", "fqcore.dll"}},
};

PortableExecutable openShipped(const ShippedFile& file)
{
    return PortableExecutable(kModuleFile.parent_path() / file.name);
}

/// "LIBRARY FUNCTION" for each function that the module imports from these libraries.
Names moduleImports(const Names& libraries)
{
    Names names;
    for (const auto& [library, functions] : PortableExecutable(kModuleFile).imports()) {
        for (const std::string& function : libraries.contains(library) ? functions : Names{})
            names.insert(library + " " + function);
    }
    return names;
}

TEST(ImportedNames, ComeOnlyFromTheSystemAndThePlatform)
{
    for (const ShippedFile& file : kShippedFiles) {
        Names expected = kSystem;
        expected.insert(file.libraries.begin(), file.libraries.end());
        Names imported;
        for (const auto& import : openShipped(file).imports())
            imported.insert(import.first);
        EXPECT_EQ(missingNames(imported, expected), "") << file.name;
        EXPECT_EQ(missingNames(file.libraries, imported), "") << file.name;
    }
}

TEST(ImportedNames, NoLibraryIsLoadedOnFirstUse)
{
    for (const ShippedFile& file : kShippedFiles)
        EXPECT_FALSE(openShipped(file).hasLateImports()) << file.name;
}

TEST(ImportedNames, IncludeTheListedNames)
{
    ASSERT_FALSE(readNames("imported_names_windows.txt").empty());
    EXPECT_EQ(missingNames(readNames("imported_names_windows.txt"), moduleImports(kSystem)), "");
}

TEST(ImportedNames, IncludeNoUnlistedSystemFunction)
{
    Names allowed = readNames("imported_names_windows.txt");
    allowed.merge(readNames("imported_by_runtime_windows.txt"));
    // The functions of the C library are not listed, because they are many and not part of the system.
    Names system = kSystem;
    system.erase("msvcrt.dll");
    EXPECT_EQ(missingNames(moduleImports(system), allowed), "");
}

TEST(ShippedFiles, AreLoadedAtRandomAddressesWithoutExecutableData)
{
    constexpr std::uint16_t kHighEntropyAddresses = 0x20;
    constexpr std::uint16_t kDynamicBase = 0x40;
    constexpr std::uint16_t kNoExecutableData = 0x100;
    for (const ShippedFile& file : kShippedFiles) {
        const int missing = (kHighEntropyAddresses | kDynamicBase | kNoExecutableData) & ~openShipped(file).flags();
        EXPECT_EQ(missing, 0) << file.name;
    }
}

TEST(ShippedFiles, HaveNoTimeOfLinking)
{
    for (const ShippedFile& file : kShippedFiles)
        EXPECT_EQ(openShipped(file).timestamp(), 0U) << file.name;
}

} // namespace
} // namespace Tests
