// The files of the Windows edition import from the system's libraries and from each other, and need nothing of the
// compiler. For the module the functions are listed: those that it calls itself in imported_names_windows.txt, and
// those that the compiler's runtime in it calls in imported_by_runtime_windows.txt.
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

PortableExecutable shipped(const ShippedFile& file)
{
    return PortableExecutable(kModuleFile.parent_path() / file.name);
}

/// "LIBRARY FUNCTION" for each function that the module imports from these libraries.
Names importsOfModule(const Names& libraries)
{
    Names names;
    for (const auto& [library, functions] : PortableExecutable(kModuleFile).imports()) {
        for (const std::string& function : libraries.contains(library) ? functions : Names{})
            names.insert(library + " " + function);
    }
    return names;
}

TEST(ImportedNames, ComeFromTheSystemAndThePlatformAlone)
{
    for (const ShippedFile& file : kShippedFiles) {
        Names expected = kSystem;
        expected.insert(file.libraries.begin(), file.libraries.end());
        Names imported;
        for (const auto& import : shipped(file).imports())
            imported.insert(import.first);
        EXPECT_EQ(difference(imported, expected), "") << file.name;
        EXPECT_EQ(difference(file.libraries, imported), "") << file.name;
    }
}

TEST(ImportedNames, NoneIsLoadedOnFirstUse)
{
    for (const ShippedFile& file : kShippedFiles)
        EXPECT_FALSE(shipped(file).hasLateImports()) << file.name;
}

TEST(ImportedNames, WhatTheModuleCallsIsImported)
{
    ASSERT_FALSE(namesInFile("imported_names_windows.txt").empty());
    EXPECT_EQ(difference(namesInFile("imported_names_windows.txt"), importsOfModule(kSystem)), "");
}

TEST(ImportedNames, ModuleImportsNoOtherFunctionOfTheSystem)
{
    Names allowed = namesInFile("imported_names_windows.txt");
    allowed.merge(namesInFile("imported_by_runtime_windows.txt"));
    // The functions of the C library are not listed: they are many, and not the system's.
    Names system = kSystem;
    system.erase("msvcrt.dll");
    EXPECT_EQ(difference(importsOfModule(system), allowed), "");
}

TEST(ShippedFiles, AreLoadedAtRandomAddressesWithoutExecutableData)
{
    constexpr std::uint16_t kHighEntropyAddresses = 0x20;
    constexpr std::uint16_t kDynamicBase = 0x40;
    constexpr std::uint16_t kNoExecutableData = 0x100;
    for (const ShippedFile& file : kShippedFiles) {
        const int missing = (kHighEntropyAddresses | kDynamicBase | kNoExecutableData) & ~shipped(file).flags();
        EXPECT_EQ(missing, 0) << file.name;
    }
}

TEST(ShippedFiles, TellNothingOfWhenTheyWereLinked)
{
    for (const ShippedFile& file : kShippedFiles)
        EXPECT_EQ(shipped(file).timestamp(), 0U) << file.name;
}

} // namespace
} // namespace Tests
