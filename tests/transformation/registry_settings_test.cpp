#include "transformation/registry_settings.h"

#include "storage/failing_calls.h"
#include "transformation/registry_value.h"
#include "transformation_test.h"

namespace Tests {
namespace {

using Embedded::ScopedFault;
using Names = std::vector<std::wstring>;

const std::wstring kProduct = L"Software\\A product\\7";
const std::wstring kStore = kProduct + L"\\Applications\\OrvelCoordinateSystem\\Transformation";

class RegistrySettings : public TransformationTest {
protected:
    RegistrySettings() { Embedded::setUserRegistryProductRootKey(kProduct); }
    ~RegistrySettings() override { Embedded::setUserRegistryProductRootKey(formerRoot); }

    static bool write(const std::wstring& text) { return Orvel::WriteRegistryTransformationSettings(text.c_str()); }
    static ReadText read() { return readWith(Orvel::ReadRegistryTransformationSettings); }
    static std::optional<Names> names()
    {
        Names found;
        return Orvel::RegistryEnumValueNames(HKEY_CURRENT_USER, kStore, found) ? std::optional(found) : std::nullopt;
    }
    static std::wstring value(const std::wstring& name)
    {
        std::wstring text = L"missing";
        static_cast<void>(Orvel::RegistryQueryString(HKEY_CURRENT_USER, kStore, name, text)); // the text tells
        return text;
    }
    static void give(const std::wstring& name, const std::wstring& text)
    {
        ASSERT_TRUE(Orvel::RegistrySetString(HKEY_CURRENT_USER, kStore, name, text));
    }
    static void giveDefault(const wchar_t* text)
    {
        HKEY key = nullptr;
        ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, kStore.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE,
                                  nullptr, &key, nullptr),
                  ERROR_SUCCESS);
        const auto lengthInBytes = static_cast<DWORD>((std::wcslen(text) + 1) * sizeof(wchar_t));
        EXPECT_EQ(RegSetValueExW(key, L"", 0, REG_SZ, reinterpret_cast<const BYTE*>(text), lengthInBytes),
                  ERROR_SUCCESS);
        EXPECT_EQ(RegCloseKey(key), ERROR_SUCCESS);
    }
    static std::wstring item(int number) { return elementOf(L"A", L"B", std::to_wstring(number)); }

private:
    std::wstring formerRoot = qedbHostApplicationServices()->getUserRegistryProductRootKey();
};

TEST_F(RegistrySettings, TwelveItems_AreTwelveNumberedValues)
{
    std::wstring text;
    Names expected;
    for (int number = 1; number <= 12; ++number) {
        text += item(number);
        expected.push_back(L"Item" + std::to_wstring(number));
    }
    ASSERT_TRUE(write(text + L" not kept"));
    EXPECT_EQ(names(), expected);
    for (int number = 1; number <= 12; ++number)
        EXPECT_EQ(value(L"Item" + std::to_wstring(number)), item(number));
    EXPECT_EQ(read(), (ReadText{true, text}));
}

TEST_F(RegistrySettings, EmptyText_LeavesAnEmptyKey)
{
    ASSERT_TRUE(write(item(1) + item(2) + item(3)));
    ASSERT_TRUE(write(L""));
    EXPECT_EQ(names(), Names());
    EXPECT_EQ(read(), (ReadText{true, L""}));
}

TEST_F(RegistrySettings, TextWithoutAnItem_EmptiesTheStoreToo)
{
    ASSERT_TRUE(write(item(1)));
    ASSERT_TRUE(write(L"<Item>cut off"));
    EXPECT_EQ(names(), Names());
}

TEST_F(RegistrySettings, Writing_MakesTheKeys)
{
    ASSERT_EQ(names(), std::nullopt);
    ASSERT_TRUE(write(L""));
    EXPECT_EQ(names(), Names());
}

TEST_F(RegistrySettings, Reading_MakesTheKeysToo)
{
    EXPECT_EQ(read(), (ReadText{true, L""}));
    EXPECT_EQ(names(), Names());
}

TEST_F(RegistrySettings, ValuesOfOthers_AreLostAtTheNextWrite)
{
    give(L"Foreign", L"text");
    give(L"Item7", L"text");
    ASSERT_TRUE(write(item(1)));
    EXPECT_EQ(names(), Names{L"Item1"});
}

TEST_F(RegistrySettings, DefaultValue_SurvivesAndIsReadInItsPlace)
{
    give(L"First", L"1");
    giveDefault(L"2");
    give(L"Third", L"3");
    EXPECT_EQ(read(), (ReadText{true, L"123"}));
    ASSERT_TRUE(write(item(1)));
    EXPECT_EQ(names(), (Names{L"", L"Item1"}));
    EXPECT_EQ(read(), (ReadText{true, L"2" + item(1)}));
}

TEST_F(RegistrySettings, Values_AreReadInTheRegistrysOrder)
{
    give(L"Item2", L"two");
    give(L"Item1", L"one");
    EXPECT_EQ(read(), (ReadText{true, L"twoone"}));
}

TEST_F(RegistrySettings, Root_IsAskedOfTheHostEachTime)
{
    ASSERT_TRUE(write(item(1)));
    Embedded::setUserRegistryProductRootKey(L"Software\\Another");
    EXPECT_EQ(read(), (ReadText{true, L""}));
    Embedded::setUserRegistryProductRootKey(kProduct);
    EXPECT_EQ(read(), (ReadText{true, item(1)}));
}

TEST_F(RegistrySettings, NoText_LeavesTheCallersPointer)
{
    const ScopedFault fault({.call = "RegCreateKeyExW"});
    EXPECT_EQ(read(), (ReadText{false, L"former"}));
}

TEST_F(RegistrySettings, FailedDeletion_EndsTheWrite)
{
    ASSERT_TRUE(write(item(1) + item(2) + item(3)));
    {
        const ScopedFault fault({.call = "RegDeleteValueW", .occurrence = 2, .code = 5});
        EXPECT_FALSE(write(item(9)));
    }
    EXPECT_EQ(names(), (Names{L"Item2", L"Item3"}));
}

TEST_F(RegistrySettings, FailedValue_LeavesThoseBeforeIt)
{
    {
        const ScopedFault fault({.call = "RegSetValueExW", .occurrence = 2, .code = 5});
        EXPECT_FALSE(write(item(1) + item(2) + item(3)));
    }
    EXPECT_EQ(read(), (ReadText{true, item(1)}));
}

TEST_F(RegistrySettings, FailedQuery_EndsTheReading)
{
    ASSERT_TRUE(write(item(1) + item(2)));
    const ScopedFault fault({.call = "RegQueryValueExW", .occurrence = 3, .code = 5});
    EXPECT_EQ(read(), (ReadText{false, L"former"}));
}

TEST_F(RegistrySettings, EveryCallOfWriting_CanFail)
{
    const auto operation = [] { return write(item(1)); };
    ASSERT_TRUE(operation());
    for (const FallibleCall& call : fallibleCallsOf([&] { ASSERT_TRUE(operation()); })) {
        if (call.name == "RegCloseKey" || call.name == "RegEnumValueW")
            continue; // the result of one is not looked at; the other's failure is one name less or a nameless one
        const ScopedFault fault(failing(call));
        EXPECT_FALSE(operation()) << call;
        Embedded::Faults::disarm();
        ASSERT_TRUE(operation());
    }
}

TEST_F(RegistrySettings, EveryCallOfReading_CanFail)
{
    ASSERT_TRUE(write(item(1)));
    for (const FallibleCall& call : fallibleCallsOf([] { ASSERT_TRUE(read().read); })) {
        if (call.name == "RegCloseKey" || call.name == "RegEnumValueW")
            continue; // as above
        const ScopedFault fault(failing(call));
        EXPECT_EQ(read(), (ReadText{false, L"former"})) << call;
    }
}

} // namespace
} // namespace Tests
