#include "transformation/registry_strings.h"

#include <gmock/gmock.h>

#include <array>
#include <cstring>

#include "registry_names.h"
#include "storage/failing_calls.h"
#include "storage/holder.h"
#include "transformation_test.h"

namespace Tests {
namespace {

using Embedded::ScopedFault;
using testing::Optional;
using testing::UnorderedElementsAre;
using Names = std::vector<std::wstring>;

const std::wstring kSubKey = L"Software\\A product\\Place";

class RegistryValue : public TransformationTest {
protected:
    static bool set(const std::wstring& name, const std::wstring& data)
    {
        return Orvel::RegistrySetString(HKEY_CURRENT_USER, kSubKey, name, data);
    }
    /// Stores the out-parameter in `queried`. Returns no value on failure.
    std::optional<std::wstring> query(const std::wstring& name)
    {
        queried = L"former";
        return Orvel::RegistryQueryString(HKEY_CURRENT_USER, kSubKey, name, queried) ? std::optional(queried)
                                                                                     : std::nullopt;
    }
    static std::optional<Names> names()
    {
        Names listed{L"former"};
        return Orvel::RegistryEnumValueNames(HKEY_CURRENT_USER, kSubKey, listed) ? std::optional(listed) : std::nullopt;
    }
    static bool remove(const std::wstring& name)
    {
        return Orvel::RegistryDeleteValue(HKEY_CURRENT_USER, kSubKey, name);
    }
    /// Writes a value as another program can.
    static void storeValue(const wchar_t* name, DWORD type, const void* data, std::size_t lengthInBytes)
    {
        ASSERT_TRUE(set({}, {}));
        HKEY key = nullptr;
        ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, kSubKey.c_str(), 0, KEY_WRITE, &key), ERROR_SUCCESS);
        EXPECT_EQ(RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(lengthInBytes)),
                  ERROR_SUCCESS);
        EXPECT_EQ(RegCloseKey(key), ERROR_SUCCESS);
    }

    std::wstring queried;
};

TEST_F(RegistryValue, Text_IsReadUnchanged)
{
    for (const std::wstring& text :
         {std::wstring(), std::wstring(L"text"), std::wstring(L"É Ω 測 \U0001F310"), std::wstring(100000, L'x')}) {
        ASSERT_TRUE(set(L"Name", text));
        EXPECT_EQ(query(L"Name"), text);
    }
}

TEST_F(RegistryValue, Text_IsStoredWithItsNul)
{
    ASSERT_TRUE(set(L"A", L"text"));
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, kSubKey.c_str(), 0, KEY_READ, &key), ERROR_SUCCESS);
    DWORD type = 0;
    DWORD lengthInBytes = 0;
    EXPECT_EQ(RegQueryValueExW(key, L"A", nullptr, &type, nullptr, &lengthInBytes), ERROR_SUCCESS);
    EXPECT_EQ(RegCloseKey(key), ERROR_SUCCESS);
    EXPECT_EQ(type, DWORD{REG_SZ});
    EXPECT_EQ(lengthInBytes, sizeof L"text");
}

TEST_F(RegistryValue, EmptyName_OnlyCreatesTheKey)
{
    EXPECT_EQ(names(), std::nullopt);
    EXPECT_TRUE(set({}, L"data"));
    EXPECT_EQ(names(), Names());
    EXPECT_EQ(query({}), std::nullopt);
}

TEST_F(RegistryValue, QueryWithoutTheKey_LeavesTheText)
{
    EXPECT_EQ(query(L"Name"), std::nullopt);
    EXPECT_EQ(queried, L"former");
    EXPECT_EQ(names(), std::nullopt) << "a query creates no key";
}

TEST_F(RegistryValue, QueryWithoutTheValue_LeavesTheText)
{
    ASSERT_TRUE(set(L"Other", L"data"));
    EXPECT_EQ(query(L"Name"), std::nullopt);
    EXPECT_EQ(queried, L"former");
}

TEST_F(RegistryValue, KeyThatCannotBeOpened_IsNotQueried)
{
    ASSERT_TRUE(set(L"Name", L"data"));
    const ScopedFault fault({.call = "RegOpenKeyExW", .code = 5});
    EXPECT_EQ(query(L"Name"), std::nullopt);
    EXPECT_EQ(Embedded::FaultInjection::seen(), std::vector<std::string>{"RegOpenKeyExW"});
}

TEST_F(RegistryValue, QueryThatSucceedsWithoutASize_GivesNoText)
{
    storeValue(L"Name", 3, "A", 1);
    const ScopedFault fault({.call = "RegQueryValueExW", .code = 0});
    EXPECT_EQ(query(L"Name"), std::nullopt);
    EXPECT_EQ(queried, L"");
}

TEST_F(RegistryValue, ValueThatFailsAfterItsSizeIsKnown_EmptiesTheText)
{
    ASSERT_TRUE(set(L"Name", L"data"));
    const ScopedFault fault({.call = "RegQueryValueExW", .occurrence = 2});
    EXPECT_EQ(query(L"Name"), std::nullopt);
    EXPECT_EQ(queried, L"");
}

TEST_F(RegistryValue, TextWithoutANul_IsReadCompletely)
{
    const wchar_t text[] = {L'a', L'b', L'c'};
    storeValue(L"Name", REG_SZ, text, sizeof text);
    EXPECT_EQ(query(L"Name"), L"abc");
}

TEST_F(RegistryValue, Text_EndsAtItsFirstNul)
{
    const wchar_t text[] = L"ab\0cd";
    storeValue(L"Name", REG_SZ, text, sizeof text);
    EXPECT_EQ(query(L"Name"), L"ab");
}

TEST_F(RegistryValue, OtherTypes_AreReadAsTheTextOfTheirBytes)
{
    const wchar_t text[] = L"bytes";
    storeValue(L"Binary", 3, text, sizeof text);
    const DWORD number = L'N';
    storeValue(L"Number", 4, &number, sizeof number);
    storeValue(L"Byte", 3, "A", 1);
    storeValue(L"None", 3, text, 0);
    EXPECT_EQ(query(L"Binary"), L"bytes");
    EXPECT_EQ(query(L"Number"), L"N");
    EXPECT_EQ(query(L"Byte"), L"A");
    EXPECT_EQ(query(L"None"), L"");
}

TEST_F(RegistryValue, Names_AreListedInTheRegistrysOrder)
{
    ASSERT_TRUE(set(L"Item10", L""));
    ASSERT_TRUE(set(L"Item2", L""));
    ASSERT_TRUE(set(L"another", L""));
    ASSERT_TRUE(set(L"Item10", L"again"));
    const Names expected = enumerateRegistryNames(kSubKey);
    EXPECT_THAT(expected, UnorderedElementsAre(L"Item10", L"Item2", L"another"));
    EXPECT_EQ(names(), expected);
}

TEST_F(RegistryValue, NameThatIsTooLong_IsListedAsAnEmptyName)
{
    const std::wstring fits(2047, L'n');
    const std::wstring tooLong(2048, L'n');
    storeValue(tooLong.c_str(), REG_SZ, L"", sizeof(wchar_t));
    storeValue(fits.c_str(), REG_SZ, L"", sizeof(wchar_t));
    EXPECT_THAT(names(), Optional(UnorderedElementsAre(fits, L"")));
}

TEST_F(RegistryValue, DefaultValue_IsListedUnderAnEmptyName)
{
    ASSERT_TRUE(set(L"A", L"a"));
    storeValue(L"", REG_SZ, L"default", sizeof L"default");
    ASSERT_TRUE(set(L"B", L"b"));
    EXPECT_THAT(names(), Optional(UnorderedElementsAre(L"A", L"", L"B")));
    EXPECT_EQ(query({}), L"default");
}

TEST_F(RegistryValue, FailureOfOneName_ContinuesWithTheNext)
{
    ASSERT_TRUE(set(L"A", L""));
    ASSERT_TRUE(set(L"B", L""));
    ASSERT_TRUE(set(L"C", L""));
    for (const int code : {5, 234, 1015}) {
        const ScopedFault fault({.call = "RegEnumValueW", .occurrence = 2, .code = code});
        EXPECT_EQ(names(), (Names{L"A", L"", L"C"})) << code;
    }
}

TEST_F(RegistryValue, MissingKey_HasNoNames)
{
    Names listed{L"former"};
    EXPECT_FALSE(Orvel::RegistryEnumValueNames(HKEY_CURRENT_USER, kSubKey, listed));
    EXPECT_EQ(listed, Names());
}

TEST_F(RegistryValue, DeletedValue_IsRemoved)
{
    ASSERT_TRUE(set(L"A", L"a"));
    EXPECT_TRUE(remove(L"A"));
    EXPECT_EQ(names(), Names());
    EXPECT_FALSE(remove(L"A"));
}

TEST_F(RegistryValue, DeletingAnEmptyName_DeletesNothingAndCreatesTheKey)
{
    EXPECT_TRUE(remove({}));
    EXPECT_EQ(names(), Names());
    storeValue(L"", REG_SZ, L"default", sizeof L"default");
    EXPECT_TRUE(remove({}));
    EXPECT_EQ(query({}), L"default");
}

TEST_F(RegistryValue, EveryFailingCall_ReturnsFalse)
{
    ASSERT_TRUE(set(L"A", L"a"));
    const auto failsWith = [](const char* call, const auto& operation) {
        const ScopedFault fault({.call = call, .code = 5});
        return !operation();
    };
    EXPECT_TRUE(failsWith("RegCreateKeyExW", [] { return set(L"A", L"b"); }));
    EXPECT_TRUE(failsWith("RegSetValueExW", [] { return set(L"A", L"b"); }));
    EXPECT_TRUE(failsWith("RegOpenKeyExW", [] { return names().has_value(); }));
    EXPECT_TRUE(failsWith("RegOpenKeyExW", [&] { return query(L"A").has_value(); }));
    EXPECT_TRUE(failsWith("RegQueryValueExW", [&] { return query(L"A").has_value(); }));
    EXPECT_TRUE(failsWith("RegCreateKeyExW", [] { return remove(L"A"); }));
    EXPECT_TRUE(failsWith("RegCreateKeyExW", [] { return remove({}); }));
    EXPECT_TRUE(failsWith("RegDeleteValueW", [] { return remove(L"A"); }));
    EXPECT_EQ(query(L"A"), L"a");
}

} // namespace
} // namespace Tests
