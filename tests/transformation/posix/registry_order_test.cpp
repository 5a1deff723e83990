// Off Windows values are enumerated in the order of their creation. Windows does not promise that, and Wine uses
// another order.
#include "transformation/registry_settings_test.h"

namespace Tests {
namespace {

class RegistryOrder : public RegistrySettingsTest {};

TEST_F(RegistryOrder, TwelveItems_AreReadInTheOrderOfWriting)
{
    std::wstring text;
    Names expected;
    for (int number = 1; number <= 12; ++number) {
        text += item(number);
        expected.push_back(L"Item" + std::to_wstring(number));
    }
    ASSERT_TRUE(write(text));
    EXPECT_EQ(names(), expected);
    EXPECT_EQ(read(), (ReadText{true, text}));
}

TEST_F(RegistryOrder, DefaultValue_IsKeptAndReadInItsPlace)
{
    storeText(L"First", L"1");
    storeDefault(L"2");
    storeText(L"Third", L"3");
    EXPECT_EQ(read(), (ReadText{true, L"123"}));
    ASSERT_TRUE(write(item(1)));
    EXPECT_EQ(names(), (Names{L"", L"Item1"}));
    EXPECT_EQ(read(), (ReadText{true, L"2" + item(1)}));
}

TEST_F(RegistryOrder, Values_AreReadInTheOrderOfCreation)
{
    storeText(L"Item2", L"two");
    storeText(L"Item1", L"one");
    EXPECT_EQ(read(), (ReadText{true, L"twoone"}));
}

} // namespace
} // namespace Tests
