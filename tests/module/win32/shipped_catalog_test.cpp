// The program finds the catalog in its own folder, for any name of the folder and any setting of other programs.
#include <windows.h>

#include "embedded/base/text.h"
#include "module/module_test.h"
#include "support/scoped_variable.h"
#include "support/temporary_folder.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

class ShippedCatalog : public PlatformTest {
protected:
    TemporaryFolder temporary;
    const fs::path shipped = kModuleFile.parent_path();
    const fs::path folder = temporary.path() / Embedded::wideFromUtf8("Büro für Vermessung 测量 & Co");
    ScopedVariable data{"PROJ_DATA"};
    ScopedVariable library{"PROJ_LIB"};

    void SetUp() override
    {
        fs::create_directory(folder);
        for (const char* file : {"orvelcs.exe", "OrvelCoordsysCore.dll", "qehost.dll", "zsr.dll", "fqcore.dll"})
            fs::copy_file(shipped / file, folder / file);
    }
    void copyCatalog() const { fs::copy_file(shipped / "proj.db", folder / "proj.db"); }

    /// Runs the program in the temporary folder to look a system up. Returns the exit status.
    DWORD runLookUp() const
    {
        std::wstring command = L"\"" + (folder / "orvelcs.exe").wstring() + L"\" catalog show EPSG:25832";
        STARTUPINFOW start{};
        start.cb = sizeof start;
        PROCESS_INFORMATION process{};
        if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, temporary.path().c_str(),
                           &start, &process) == 0)
            return GetLastError();
        WaitForSingleObject(process.hProcess, INFINITE);
        DWORD status = 0;
        GetExitCodeProcess(process.hProcess, &status);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
        return status;
    }
};

TEST_F(ShippedCatalog, CatalogInAFolderWithAUnicodeName_IsFound)
{
    copyCatalog();
    EXPECT_EQ(runLookUp(), 0U);
}

TEST_F(ShippedCatalog, ShippedCatalog_IsPreferredToThatOfOtherPrograms)
{
    copyCatalog();
    const fs::path others = temporary.path() / "others";
    fs::create_directory(others);
    fs::copy_file(folder / "orvelcs.exe", others / "proj.db"); // not a database
    const ScopedVariable set("PROJ_DATA", others.string());
    EXPECT_EQ(runLookUp(), 0U);
}

TEST_F(ShippedCatalog, WithoutAShippedCatalog_ThatOfTheVariableIsUsed)
{
    const ScopedVariable set("PROJ_DATA", shipped.string());
    EXPECT_EQ(runLookUp(), 0U);
}

TEST_F(ShippedCatalog, WithoutAnyCatalog_TheLookUpFails)
{
    const ScopedVariable set("PROJ_DATA", temporary.path().string());
    EXPECT_EQ(runLookUp(), 1U);
}

} // namespace
} // namespace Tests
