#include "registry_settings_test.h"

#include <gmock/gmock.h>

#include "registry_names.h"
#include "storage/failing_calls.h"

namespace Tests {
namespace {

using Embedded::ScopedFault;
using testing::UnorderedElementsAre;
using testing::UnorderedElementsAreArray;

class RegistrySettings : public RegistrySettingsTest {};

TEST_F(RegistrySettings, TwelveItems_AreStoredAsTwelveNumberedValues)
{
    std::wstring text;
    Names expected;
    for (int number = 1; number <= 12; ++number) {
        text += item(number);
        expected.push_back(L"Item" + std::to_wstring(number));
    }
    ASSERT_TRUE(write(text + L" not kept"));
    EXPECT_THAT(enumerateRegistryNames(kStore), UnorderedElementsAreArray(expected));
    for (int number = 1; number <= 12; ++number)
        EXPECT_EQ(value(L"Item" + std::to_wstring(number)), item(number));
    EXPECT_EQ(read(), (ReadText{true, joinValues(enumerateRegistryNames(kStore))}));
}

TEST_F(RegistrySettings, EmptyText_LeavesAnEmptyKey)
{
    ASSERT_TRUE(write(item(1) + item(2) + item(3)));
    ASSERT_TRUE(write(L""));
    EXPECT_EQ(names(), Names());
    EXPECT_EQ(read(), (ReadText{true, L""}));
}

TEST_F(RegistrySettings, TextWithoutAnItem_EmptiesTheStore)
{
    ASSERT_TRUE(write(item(1)));
    ASSERT_TRUE(write(L"<Item>cut off"));
    EXPECT_EQ(names(), Names());
}

TEST_F(RegistrySettings, Writing_CreatesTheKeys)
{
    ASSERT_EQ(names(), std::nullopt);
    ASSERT_TRUE(write(L""));
    EXPECT_EQ(names(), Names());
}

TEST_F(RegistrySettings, Reading_CreatesTheKeys)
{
    EXPECT_EQ(read(), (ReadText{true, L""}));
    EXPECT_EQ(names(), Names());
}

TEST_F(RegistrySettings, ValuesOfOtherPrograms_AreRemovedByTheNextWrite)
{
    storeText(L"Foreign", L"text");
    storeText(L"Item7", L"text");
    ASSERT_TRUE(write(item(1)));
    EXPECT_EQ(names(), Names{L"Item1"});
}

TEST_F(RegistrySettings, DefaultValue_IsKeptAndReadInItsPlace)
{
    storeText(L"First", L"1");
    storeDefault(L"2");
    storeText(L"Third", L"3");
    const Names before = enumerateRegistryNames(kStore);
    EXPECT_THAT(before, UnorderedElementsAre(L"First", L"", L"Third"));
    EXPECT_EQ(read(), (ReadText{true, joinValues(before)}));
    ASSERT_TRUE(write(item(1)));
    const Names after = enumerateRegistryNames(kStore);
    EXPECT_THAT(after, UnorderedElementsAre(L"", L"Item1"));
    EXPECT_EQ(read(), (ReadText{true, joinValues(after)}));
}

TEST_F(RegistrySettings, Values_AreReadInTheRegistrysOrder)
{
    storeText(L"Item2", L"two");
    storeText(L"Item10", L"ten");
    storeText(L"Item1", L"one");
    EXPECT_EQ(read(), (ReadText{true, joinValues(enumerateRegistryNames(kStore))}));
}

TEST_F(RegistrySettings, NameThatIsTooLong_MakesReadingFailAndIsKept)
{
    for (const std::size_t characters : {2048U, 16'383U}) {
        const std::wstring longName(characters, L'n');
        storeText(L"A", L"a");
        storeText(longName, L"text");
        EXPECT_EQ(read(), (ReadText{false, L"former"}));
        EXPECT_TRUE(write(item(1)));
        EXPECT_THAT(enumerateRegistryNames(kStore), UnorderedElementsAre(longName, L"Item1"));
        ASSERT_TRUE(Orvel::RegistryDeleteValue(HKEY_CURRENT_USER, kStore, longName));
        EXPECT_EQ(read(), (ReadText{true, item(1)}));
    }
}

TEST_F(RegistrySettings, NameOf2047Characters_IsReadAndReplaced)
{
    storeText(std::wstring(2047, L'n'), L"text");
    EXPECT_EQ(read(), (ReadText{true, L"text"}));
    EXPECT_TRUE(write(item(1)));
    EXPECT_EQ(names(), Names{L"Item1"});
}

TEST_F(RegistrySettings, UnicodeText_IsReadUnchanged)
{
    const std::wstring text = itemElement(L"É", L"Ω", L"測地系", 1, L"\U0001F310 \U0010FFFF");
    ASSERT_TRUE(write(text));
    EXPECT_EQ(read(), (ReadText{true, text}));
}

TEST_F(RegistrySettings, Root_IsQueriedByEveryCall)
{
    ASSERT_TRUE(write(item(1)));
    Embedded::setUserRegistryProductRootKey(L"Software\\Another");
    EXPECT_EQ(read(), (ReadText{true, L""}));
    Embedded::setUserRegistryProductRootKey(kProduct);
    EXPECT_EQ(read(), (ReadText{true, item(1)}));
}

TEST_F(RegistrySettings, HostWithoutServices_HasAnEmptyRoot)
{
    const ScopedHostParts shutdown({.applicationServices = false});
    EXPECT_EQ(Orvel::registrySettingsKey(), L"\\Applications\\OrvelCoordinateSystem\\Transformation");
}

TEST_F(RegistrySettings, FailedReading_LeavesTheCallersPointer)
{
    const ScopedFault fault({.call = "RegCreateKeyExW"});
    EXPECT_EQ(read(), (ReadText{false, L"former"}));
}

TEST_F(RegistrySettings, FailedDeletion_EndsTheWriting)
{
    ASSERT_TRUE(write(item(1) + item(2) + item(3)));
    {
        const ScopedFault fault({.call = "RegDeleteValueW", .occurrence = 2, .code = 5});
        EXPECT_FALSE(write(item(9)));
    }
    EXPECT_EQ(names(), (Names{L"Item2", L"Item3"}));
}

TEST_F(RegistrySettings, FailedValue_KeepsTheEarlierValues)
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

TEST_F(RegistrySettings, EveryFailingCallOfWriting_ReturnsFalse)
{
    const auto operation = [] { return write(item(1)); };
    ASSERT_TRUE(operation());
    for (const FallibleCall& call : recordFallibleCalls([&] { ASSERT_TRUE(operation()); })) {
        if (call.name == "RegCloseKey" || call.name == "RegEnumValueW")
            continue; // the first result is ignored; the second failure ends or skips a name
        const ScopedFault fault(failing(call));
        EXPECT_FALSE(operation()) << call;
        Embedded::FaultInjection::disarm();
        ASSERT_TRUE(operation());
    }
}

TEST_F(RegistrySettings, EveryFailingCallOfReading_ReturnsFalse)
{
    ASSERT_TRUE(write(item(1)));
    for (const FallibleCall& call : recordFallibleCalls([] { ASSERT_TRUE(read().read); })) {
        if (call.name == "RegCloseKey" || call.name == "RegEnumValueW")
            continue; // their failures do not fail the reading
        const ScopedFault fault(failing(call));
        EXPECT_EQ(read(), (ReadText{false, L"former"})) << call;
    }
}

} // namespace
} // namespace Tests
