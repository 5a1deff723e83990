// Behaviour of the stand-in that Windows does not promise.
#include "support/posix/child_process.h"
#include "windows/registry_test.h"

namespace Tests {
namespace {

using Names = std::vector<std::wstring>;

class RegistryValuesStandIn : public RegistryTest {
protected:
    OpenKey key = createKey();
};

TEST_F(RegistryValuesStandIn, Values_AreEnumeratedInTheOrderOfTheirCreation)
{
    for (const wchar_t* const name : {L"c", L"a", L"b"})
        ASSERT_EQ(setText(key, name, name), ERROR_SUCCESS);
    ASSERT_EQ(setText(key, L"a", L"replaced"), ERROR_SUCCESS);
    EXPECT_EQ(valueNames(key), (Names{L"c", L"a", L"b"}));
    ASSERT_EQ(RegDeleteValueW(key.get(), L"C"), ERROR_SUCCESS);
    ASSERT_EQ(setText(key, L"c", L"again"), ERROR_SUCCESS);
    reopenRegistry();
    EXPECT_EQ(valueNames(key), (Names{L"a", L"b", L"c"}));
}

TEST_F(RegistryValuesStandIn, Enumeration_ContinuesWithTheChangedValues)
{
    for (const wchar_t* const name : {L"a", L"b", L"c", L"d"})
        ASSERT_EQ(setText(key, name, name), ERROR_SUCCESS);
    const auto nameAt = [this](DWORD index) {
        wchar_t name[8] = L"";
        DWORD length = 8;
        EXPECT_EQ(enumerateName(key, index, name, &length), ERROR_SUCCESS);
        return std::wstring(name);
    };
    EXPECT_EQ(nameAt(1), L"b");
    ASSERT_EQ(RegDeleteValueW(key.get(), L"a"), ERROR_SUCCESS);
    EXPECT_EQ(nameAt(1), L"c");
    EXPECT_EQ(runInChildProcess([this] { return std::to_string(RegDeleteValueW(key.get(), L"b")); }), "0");
    EXPECT_EQ(nameAt(1), L"d");
    EXPECT_EQ(nameAt(0), L"c");
}

// The file stores UTF-16, so an incomplete wide character cannot be kept.
TEST_F(RegistryValuesStandIn, IncompleteCharacterAtTheEnd_IsDropped)
{
    std::string bytes(sizeof(wchar_t), '\0');
    bytes[0] = 'a';
    ASSERT_EQ(setBytes(key, L"a", REG_SZ, bytes + "b"), ERROR_SUCCESS);
    EXPECT_EQ(readBytes(key, L"a"), bytes);
}

TEST_F(RegistryValuesStandIn, ReservedArguments_MustBeZero)
{
    const BYTE data[] = {1};
    EXPECT_EQ(RegSetValueExW(key.get(), L"a", 1, REG_BINARY, data, 1), ERROR_INVALID_PARAMETER);
}

} // namespace
} // namespace Tests
