// The DLL exports its interface: exactly the names in exported_names_windows.txt. Whoever changes the interface on
// purpose changes the file as the failing test prints it.
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
    return namesInFile("exported_names_windows.txt");
}

TEST(ExportedNames, AreAllPublished)
{
    ASSERT_FALSE(publishedNames().empty());
    EXPECT_EQ(difference(exportedNames(), publishedNames()), "");
}

TEST(ExportedNames, LackNothingThatIsPublished)
{
    EXPECT_EQ(difference(publishedNames(), exportedNames()), "");
}

TEST(ExportedNames, NothingIsExportedByNumberAlone)
{
    EXPECT_EQ(PortableExecutable(kModuleFile).exportedEntries(), publishedNames().size());
}

TEST(ExportedNames, AreFoundByTheSystemsLoader)
{
    const HMODULE module = LoadLibraryExW(kModuleFile.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    ASSERT_NE(module, nullptr);
    for (const std::string& name : publishedNames())
        EXPECT_NE(GetProcAddress(module, name.c_str()), nullptr) << name;
    EXPECT_NE(FreeLibrary(module), 0);
}

TEST(ExportedNames, AreThoseOfTheImportLibrary)
{
    const Names importable = importableNames(ORVEL_IMPORT_LIBRARY);
    EXPECT_EQ(difference(importable, publishedNames()), "");
    EXPECT_EQ(difference(publishedNames(), importable), "");
}

} // namespace
} // namespace Tests
