// Data that only the registry of Windows can hold. There a text may end within a character.
#include <vector>

#include "platform/win32.h"
#include "transformation/registry_strings.h"
#include "transformation/transformation_test.h"

namespace Tests {
namespace {

class RegistryBytes : public TransformationTest {
protected:
    static std::wstring read(DWORD type, const std::vector<BYTE>& bytes)
    {
        const std::wstring subKey = L"Software\\A product\\Place";
        EXPECT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, subKey.c_str(), L"Name", type, bytes.data(),
                                  static_cast<DWORD>(bytes.size())),
                  ERROR_SUCCESS);
        std::wstring text = L"former";
        EXPECT_TRUE(Orvel::RegistryQueryString(HKEY_CURRENT_USER, subKey, L"Name", text));
        return text;
    }
};

TEST_F(RegistryBytes, HalfACharacterAtTheEnd_IsCompletedWithAZero)
{
    EXPECT_EQ(read(REG_SZ, {'a', 0, 'b'}), L"ab");
    EXPECT_EQ(read(REG_BINARY, {'a'}), L"a");
}

TEST_F(RegistryBytes, SeveralTexts_AreReadAsTheFirst)
{
    EXPECT_EQ(read(REG_MULTI_SZ, {'a', 0, 0, 0, 'b', 0, 0, 0, 0, 0}), L"a");
}

TEST_F(RegistryBytes, VariableInAText_IsNotExpanded)
{
    EXPECT_EQ(read(REG_EXPAND_SZ, {'%', 0, 'T', 0, 'M', 0, 'P', 0, '%', 0, 0, 0}), L"%TMP%");
}

TEST_F(RegistryBytes, Numbers_AreReadAsTheTextOfTheirBytes)
{
    EXPECT_EQ(read(REG_QWORD, {'a', 0, 'b', 0, 0, 0, 'c', 0}), L"ab");
    EXPECT_EQ(read(REG_DWORD, {0, 0, 'c', 0}), L"");
}

} // namespace
} // namespace Tests
