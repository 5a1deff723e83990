// The version details that Windows shows for the module and for the program.
#include <windows.h>

#include <vector>

#include "embedded/base/text.h"
#include "module/module_test.h"

namespace Tests {
namespace {

class VersionResource : public testing::TestWithParam<const char*> {
protected:
    std::vector<char> resource;

    void SetUp() override
    {
        const std::wstring file = (kModuleFile.parent_path() / GetParam()).wstring();
        resource.resize(GetFileVersionInfoSizeW(file.c_str(), nullptr));
        ASSERT_FALSE(resource.empty());
        ASSERT_NE(GetFileVersionInfoW(file.c_str(), 0, static_cast<DWORD>(resource.size()), resource.data()), 0);
    }
    const void* at(const std::wstring& name, UINT& length)
    {
        void* value = nullptr;
        return VerQueryValueW(resource.data(), name.c_str(), &value, &length) != 0 ? value : nullptr;
    }
    /// A text of the English block.
    std::string text(const std::wstring& name)
    {
        UINT length = 0;
        const void* const value = at(L"\\StringFileInfo\\040904B0\\" + name, length);
        return value != nullptr ? Embedded::utf8FromWide(static_cast<const wchar_t*>(value)) : "nothing";
    }
};

TEST_P(VersionResource, HasTheProjectsVersion)
{
    UINT length = 0;
    const auto* const fixed = static_cast<const VS_FIXEDFILEINFO*>(at(L"\\", length));
    ASSERT_NE(fixed, nullptr);
    ASSERT_EQ(length, sizeof *fixed);
    std::string version = std::to_string(HIWORD(fixed->dwFileVersionMS)) + ".";
    version += std::to_string(LOWORD(fixed->dwFileVersionMS)) + "." + std::to_string(HIWORD(fixed->dwFileVersionLS));
    EXPECT_EQ(version, ORVEL_VERSION);
    EXPECT_EQ(fixed->dwProductVersionMS, fixed->dwFileVersionMS);
    EXPECT_EQ(fixed->dwProductVersionLS, fixed->dwFileVersionLS);
}

TEST_P(VersionResource, NamesFileAndProduct)
{
    EXPECT_EQ(text(L"OriginalFilename"), GetParam());
    EXPECT_EQ(text(L"ProductName"), "OrvelCoordsysCore");
    EXPECT_EQ(text(L"FileVersion"), ORVEL_VERSION);
    EXPECT_EQ(text(L"ProductVersion"), ORVEL_VERSION);
    EXPECT_NE(text(L"FileDescription"), "nothing");
}

INSTANTIATE_TEST_SUITE_P(Files, VersionResource, testing::Values("OrvelCoordsysCore.dll", "orvelcs.exe"),
                         [](const auto& file) { return file.index == 0 ? "Module" : "Program"; });

} // namespace
} // namespace Tests
