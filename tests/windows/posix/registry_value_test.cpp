// What the stand-in does beyond what Windows promises.
#include "support/posix/child_process.h"
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

TEST_F(RegistryValuesStandIn, Enumerating_ContinuesWithTheChangedValues)
{
    for (const wchar_t* const name : {L"a", L"b", L"c", L"d"})
        ASSERT_EQ(set(key, name, name), ERROR_SUCCESS);
    const auto nameAt = [this](DWORD index) {
        wchar_t name[8] = L"";
        DWORD length = 8;
        EXPECT_EQ(RegEnumValueW(key.get(), index, name, &length, nullptr, nullptr, nullptr, nullptr), ERROR_SUCCESS);
        return std::wstring(name);
    };
    EXPECT_EQ(nameAt(1), L"b");
    ASSERT_EQ(RegDeleteValueW(key.get(), L"a"), ERROR_SUCCESS);
    EXPECT_EQ(nameAt(1), L"c");
    EXPECT_EQ(runInChildProcess([this] { return std::to_string(RegDeleteValueW(key.get(), L"b")); }), "0");
    EXPECT_EQ(nameAt(1), L"d");
    EXPECT_EQ(nameAt(0), L"c");
}

// Wide characters have another size in the file than here.
TEST_F(RegistryValuesStandIn, BytesOfATextThatAreNoWholeCharacter_AreDropped)
{
    std::string bytes(sizeof(wchar_t), '\0');
    bytes[0] = 'a';
    ASSERT_EQ(setBytes(key, L"a", REG_SZ, bytes + "b"), ERROR_SUCCESS);
    EXPECT_EQ(bytesOf(key, L"a"), bytes);
}

TEST_F(RegistryValuesStandIn, ReservedArguments_MustBeZero)
{
    const BYTE data[] = {1};
    EXPECT_EQ(RegSetValueExW(key.get(), L"a", 1, REG_BINARY, data, 1), ERROR_INVALID_PARAMETER);
}

} // namespace
} // namespace Tests
