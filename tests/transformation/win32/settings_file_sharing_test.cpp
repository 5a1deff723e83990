// The settings file while another program has it open.
#include <fstream>
#include <iterator>

#include "embedded/base/win32/file_handle.h"
#include "transformation/transformation_test.h"
#include "transformation/user_settings_file.h"

namespace Tests {
namespace {

class SettingsFileSharing : public TransformationTest {
protected:
    const std::wstring one = itemElement(L"A", L"B", L"one");
    const std::wstring two = itemElement(L"B", L"C", L"two");

    SettingsFileSharing() { EXPECT_TRUE(write(one)); }

    static bool write(const std::wstring& text) { return Orvel::WriteUserTransformationSettings(text.c_str()); }
    static ReadText read() { return readWith(Orvel::ReadUserTransformationSettings); }
    Embedded::FileHandle openAsAnotherProgram(DWORD access, DWORD sharing) const
    {
        Embedded::FileHandle handle(
            CreateFileW(settingsFile().c_str(), access, sharing, nullptr, OPEN_EXISTING, 0, nullptr));
        EXPECT_TRUE(handle.isOpen());
        return handle;
    }
};

TEST_F(SettingsFileSharing, FileOpenedWithoutSharing_IsNeitherReadNorWritten)
{
    {
        const auto other = openAsAnotherProgram(GENERIC_READ | GENERIC_WRITE, 0);
        EXPECT_EQ(read(), kNothingRead);
        EXPECT_FALSE(write(two));
    }
    EXPECT_EQ(read(), (ReadText{true, one}));
}

TEST_F(SettingsFileSharing, FileSharedForReading_IsReadAndNotWritten)
{
    const auto other = openAsAnotherProgram(GENERIC_READ, FILE_SHARE_READ);
    EXPECT_EQ(read(), (ReadText{true, one}));
    EXPECT_FALSE(write(two));
    EXPECT_EQ(read(), (ReadText{true, one}));
}

TEST_F(SettingsFileSharing, FileSharedForWriting_IsReadAndWritten)
{
    const auto other = openAsAnotherProgram(GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE);
    EXPECT_TRUE(write(two));
    EXPECT_EQ(read(), (ReadText{true, two}));
}

} // namespace
} // namespace Tests
