// What the stand-in does beyond what Windows promises.
#include "windows/posix/registry_file_test.h"

namespace Tests {
namespace {

using Names = std::vector<std::wstring>;

class RegistryValuesStandIn : public RegistryFileTest {
protected:
    OpenKey key = created();
};

TEST_F(RegistryValuesStandIn, ValuesAreEnumeratedInTheOrderOfTheirCreation)
{
    for (const wchar_t* const name : {L"c", L"a", L"b"})
        ASSERT_EQ(set(key, name, name), ERROR_SUCCESS);
    ASSERT_EQ(set(key, L"a", L"replaced"), ERROR_SUCCESS);
    EXPECT_EQ(namesOf(key), (Names{L"c", L"a", L"b"}));
    ASSERT_EQ(RegDeleteValueW(key.get(), L"C"), ERROR_SUCCESS);
    ASSERT_EQ(set(key, L"c", L"again"), ERROR_SUCCESS);
    readAfresh();
    EXPECT_EQ(namesOf(key), (Names{L"a", L"b", L"c"}));
}

// Wide characters have another size in the file than here.
TEST_F(RegistryValuesStandIn, BytesOfATextThatMakeNoWholeCharacterAreLeftOut)
{
    std::string bytes(sizeof(wchar_t), '\0');
    bytes[0] = 'a';
    ASSERT_EQ(setBytes(key, L"a", REG_SZ, bytes + "b"), ERROR_SUCCESS);
    EXPECT_EQ(bytesOf(key, L"a"), bytes);
}

TEST_F(RegistryValuesStandIn, WhatIsReservedIsZero)
{
    const BYTE data[] = {1};
    EXPECT_EQ(RegSetValueExW(key.get(), L"a", 1, REG_BINARY, data, 1), ERROR_INVALID_PARAMETER);
}

} // namespace
} // namespace Tests
