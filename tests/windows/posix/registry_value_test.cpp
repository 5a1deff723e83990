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

// Taking the first one away again and again, and putting all of them there before, costs each the same.
TEST_F(RegistryValuesStandIn, ManyAreDeletedAndTheirLinesLeftOut)
{
    constexpr int kMany = 2'000;
    for (int number = 0; number < kMany; ++number)
        ASSERT_EQ(set(key, std::to_wstring(number).c_str(), L"text"), ERROR_SUCCESS);
    const Names names = namesOf(key);
    ASSERT_EQ(names.size(), static_cast<std::size_t>(kMany));
    EXPECT_EQ(names.front(), L"0");
    EXPECT_EQ(names.back(), std::to_wstring(kMany - 1));
    const auto longest = std::filesystem::file_size(file);
    for (const std::wstring& name : names)
        ASSERT_EQ(RegDeleteValueW(key.get(), name.c_str()), ERROR_SUCCESS);
    EXPECT_LT(std::filesystem::file_size(file), longest / 2) << "superfluous lines are left out now and then";
}

} // namespace
} // namespace Tests
