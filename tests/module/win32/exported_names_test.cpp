// The DLL exports exactly the names in exported_names_windows.txt. When the interface changes on purpose, change the
// file as the failing test says.
#include <gtest/gtest.h>

#include <windows.h>

#include "module/module_test.h"
#include "module/published_names.h"
#include "module/win32/import_library.h"
#include "module/win32/portable_executable.h"

namespace Tests {
namespace {

Names exportedNames()
{
    const std::vector<std::string> names = PortableExecutable(kModuleFile).exportedNames();
    return {names.begin(), names.end()};
}

Names publishedNames()
{
    return readNames("exported_names_windows.txt");
}

TEST(ExportedNames, AreAllPublished)
{
    ASSERT_FALSE(publishedNames().empty());
    EXPECT_EQ(missingNames(exportedNames(), publishedNames()), "");
}

TEST(ExportedNames, IncludeAllPublishedNames)
{
    EXPECT_EQ(missingNames(publishedNames(), exportedNames()), "");
}

TEST(ExportedNames, EveryEntryHasAName)
{
    EXPECT_EQ(PortableExecutable(kModuleFile).exportedEntries(), publishedNames().size());
}

TEST(ExportedNames, AreFoundByTheLoader)
{
    const HMODULE module = LoadLibraryExW(kModuleFile.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    ASSERT_NE(module, nullptr);
    for (const std::string& name : publishedNames())
        EXPECT_NE(GetProcAddress(module, name.c_str()), nullptr) << name;
    EXPECT_NE(FreeLibrary(module), 0);
}

TEST(ExportedNames, AreTheNamesOfTheImportLibrary)
{
    const Names importable = importableNames(ORVEL_IMPORT_LIBRARY);
    EXPECT_EQ(missingNames(importable, publishedNames()), "");
    EXPECT_EQ(missingNames(publishedNames(), importable), "");
}

} // namespace
} // namespace Tests
