#include <gmock/gmock.h>

#include "registry_test.h"

namespace Tests {
namespace {

using namespace std::string_literals;
using testing::UnorderedElementsAre;
using Names = std::vector<std::wstring>;
using Types = std::vector<DWORD>;

class RegistryValues : public RegistryTest {
protected:
    OpenKey key = createKey();
};

TEST_F(RegistryValues, Text_IsReadWithItsNul)
{
    EXPECT_EQ(setText(key, L"Item1", L"<Item>K\u00F8ge \U0001F30D</Item>"), ERROR_SUCCESS);
    reopenRegistry();
    EXPECT_EQ(readText(key, L"Item1"), withNul(L"<Item>K\u00F8ge \U0001F30D</Item>"));
}

TEST_F(RegistryValues, Length_CountsTheBytesOfWideCharacters)
{
    ASSERT_EQ(setText(key, L"a", L"four"), ERROR_SUCCESS);
    DWORD type = 99;
    DWORD length = 99;
    EXPECT_EQ(RegQueryValueExW(key.get(), L"a", nullptr, &type, nullptr, &length), ERROR_SUCCESS);
    EXPECT_EQ(type, REG_SZ);
    EXPECT_EQ(length, 5 * sizeof(wchar_t));
}

TEST_F(RegistryValues, TooSmallBuffer_ReturnsTheLengthAndStaysUnchanged)
{
    ASSERT_EQ(setText(key, L"a", L"four"), ERROR_SUCCESS);
    BYTE data[5 * sizeof(wchar_t)] = {7};
    DWORD length = sizeof data - 1;
    EXPECT_EQ(RegQueryValueExW(key.get(), L"a", nullptr, nullptr, data, &length), ERROR_MORE_DATA);
    EXPECT_EQ(length, sizeof data);
    EXPECT_EQ(data[0], 7);
    EXPECT_EQ(RegQueryValueExW(key.get(), L"a", nullptr, nullptr, data, &length), ERROR_SUCCESS);
}

TEST_F(RegistryValues, Names_AreEqualInAnyCase_AndKeepTheirFirstSpelling)
{
    ASSERT_EQ(setText(key, L"Item\u00C9", L"first"), ERROR_SUCCESS);
    ASSERT_EQ(setText(key, L"iTEM\u00E9", L"second"), ERROR_SUCCESS);
    reopenRegistry();
    EXPECT_EQ(readText(key, L"item\u00C9"), withNul(L"second"));
    EXPECT_EQ(valueNames(key), Names{L"Item\u00C9"});
}

// Windows promises no order.
TEST_F(RegistryValues, EachValue_IsEnumeratedOnce)
{
    for (const wchar_t* const name : {L"c", L"a", L"b"})
        ASSERT_EQ(setText(key, name, name), ERROR_SUCCESS);
    ASSERT_EQ(setText(key, L"a", L"replaced"), ERROR_SUCCESS);
    EXPECT_THAT(valueNames(key), UnorderedElementsAre(L"c", L"a", L"b"));
    ASSERT_EQ(RegDeleteValueW(key.get(), L"C"), ERROR_SUCCESS);
    reopenRegistry();
    EXPECT_THAT(valueNames(key), UnorderedElementsAre(L"a", L"b"));
}

TEST_F(RegistryValues, Order_StaysTheSameWhileNoValueIsAddedOrRemoved)
{
    for (const wchar_t* const name : {L"Item10", L"Item2", L"another"})
        ASSERT_EQ(setText(key, name, name), ERROR_SUCCESS);
    const Names names = valueNames(key);
    ASSERT_EQ(setText(key, L"Item2", L"replaced"), ERROR_SUCCESS);
    reopenRegistry();
    EXPECT_EQ(valueNames(key), names);
}

TEST_F(RegistryValues, DeletedValue_IsNotFound)
{
    ASSERT_EQ(setText(key, L"a", L"text"), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteValueW(key.get(), L"A"), ERROR_SUCCESS);
    EXPECT_EQ(readText(key, L"a"), std::nullopt);
    EXPECT_EQ(RegDeleteValueW(key.get(), L"a"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(queryStatus(key, L"a"), ERROR_FILE_NOT_FOUND);
}

TEST_F(RegistryValues, UnnamedValue_HasTheEmptyName)
{
    ASSERT_EQ(setText(key, nullptr, L"unnamed"), ERROR_SUCCESS);
    EXPECT_EQ(readText(key, L""), withNul(L"unnamed"));
    EXPECT_EQ(valueNames(key), Names{L""});
    EXPECT_EQ(RegDeleteValueW(key.get(), L""), ERROR_SUCCESS);
    EXPECT_EQ(readText(key, nullptr), std::nullopt);
}

TEST_F(RegistryValues, RootKey_HasValues)
{
    const OpenKey root = createKey(L"");
    ASSERT_EQ(setText(root, L"a", L"text"), ERROR_SUCCESS);
    reopenRegistry();
    EXPECT_EQ(readText(root, L"a"), withNul(L"text"));
}

TEST_F(RegistryValues, OtherTypes_KeepTheirBytes)
{
    const std::string bytes = "\0\xFF\x41\0odd"s;
    for (const DWORD type : Types{REG_NONE, REG_BINARY, REG_DWORD, REG_MULTI_SZ, 0xFFFFFFFFU}) {
        ASSERT_EQ(setBytes(key, L"a", type, bytes), ERROR_SUCCESS);
        reopenRegistry();
        DWORD found = 99;
        EXPECT_EQ(RegQueryValueExW(key.get(), L"a", nullptr, &found, nullptr, nullptr), ERROR_SUCCESS);
        EXPECT_EQ(found, type);
        EXPECT_EQ(readBytes(key, L"a"), bytes);
    }
}

TEST_F(RegistryValues, EmptyData_AreKept)
{
    for (const DWORD type : Types{REG_SZ, REG_BINARY}) {
        ASSERT_EQ(RegSetValueExW(key.get(), L"a", 0, type, nullptr, 0), ERROR_SUCCESS);
        reopenRegistry();
        EXPECT_EQ(readBytes(key, L"a"), "");
    }
}

TEST_F(RegistryValues, TextWithoutOrWithSeveralNuls_KeepsItsLength)
{
    for (const std::wstring& text : {L"none"s, L"\0"s, L"in\0side"s, L"two\0\0"s, L"\xD800 alone"s}) {
        const std::string bytes(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t));
        for (const DWORD type : Types{REG_SZ, REG_EXPAND_SZ}) {
            ASSERT_EQ(setBytes(key, L"a", type, bytes), ERROR_SUCCESS);
            reopenRegistry();
            EXPECT_EQ(readText(key, L"a"), text);
        }
    }
}

TEST_F(RegistryValues, NameOf16383Characters_IsTheLongest)
{
    const std::wstring longest(16'383, L'x');
    EXPECT_EQ(setText(key, longest.c_str(), L"text"), ERROR_SUCCESS);
    EXPECT_EQ(setText(key, (longest + L'x').c_str(), L"text"), ERROR_INVALID_PARAMETER);
    reopenRegistry();
    EXPECT_EQ(valueNames(key), Names{longest});
}

TEST_F(RegistryValues, NameWithAnUnpairedSurrogate_IsKept)
{
    const std::wstring name = {L'a', static_cast<wchar_t>(0xD800)};
    ASSERT_EQ(setText(key, name.c_str(), L"text"), ERROR_SUCCESS);
    reopenRegistry();
    EXPECT_EQ(valueNames(key), Names{name});
}

TEST_F(RegistryValues, EnumeratedName_NeedsRoomForItsNul)
{
    ASSERT_EQ(setText(key, L"abc", L"text"), ERROR_SUCCESS);
    wchar_t name[4];
    DWORD length = 3;
    EXPECT_EQ(enumerateName(key, 0, name, &length), ERROR_MORE_DATA);
    length = 4;
    EXPECT_EQ(enumerateName(key, 0, name, &length), ERROR_SUCCESS);
    EXPECT_EQ(length, 3U);
    EXPECT_STREQ(name, L"abc");
    EXPECT_EQ(enumerateName(key, 1, name, &length), ERROR_NO_MORE_ITEMS);
}

TEST_F(RegistryValues, Enumeration_ReturnsTypeAndData)
{
    ASSERT_EQ(setBytes(key, L"a", REG_BINARY, "\1\2\3"), ERROR_SUCCESS);
    wchar_t name[8];
    BYTE data[3] = {};
    DWORD nameLength = 8;
    DWORD type = 99;
    DWORD length = 2;
    EXPECT_EQ(RegEnumValueW(key.get(), 0, name, &nameLength, nullptr, &type, data, &length), ERROR_MORE_DATA);
    EXPECT_EQ(length, 3U);
    nameLength = 8;
    EXPECT_EQ(RegEnumValueW(key.get(), 0, name, &nameLength, nullptr, &type, data, &length), ERROR_SUCCESS);
    EXPECT_EQ(type, REG_BINARY);
    EXPECT_EQ(data[2], 3);
}

TEST_F(RegistryValues, Handle_AllowsOnlyTheRequestedAccess)
{
    ASSERT_EQ(setText(key, L"a", L"text"), ERROR_SUCCESS);
    const OpenKey reader = createKey(L"Software\\Test", KEY_READ);
    const OpenKey writer = createKey(L"Software\\Test", KEY_WRITE);
    EXPECT_EQ(setText(reader, L"a", L"other"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(RegDeleteValueW(reader.get(), L"a"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(queryStatus(writer, L"a"), ERROR_ACCESS_DENIED);
    wchar_t name[8];
    DWORD length = 8;
    EXPECT_EQ(enumerateName(writer, 0, name, &length), ERROR_ACCESS_DENIED);
    EXPECT_EQ(readText(reader, L"a"), withNul(L"text"));
    EXPECT_EQ(setText(writer, L"a", L"other"), ERROR_SUCCESS);
}

TEST_F(RegistryValues, NullForARequiredArgument_IsRefused)
{
    BYTE data[4];
    DWORD number = 0;
    wchar_t name[4];
    EXPECT_EQ(RegSetValueExW(key.get(), L"a", 0, REG_BINARY, nullptr, 1), ERROR_NOACCESS);
    EXPECT_EQ(RegQueryValueExW(key.get(), L"a", nullptr, nullptr, data, nullptr), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegQueryValueExW(key.get(), L"a", &number, nullptr, nullptr, nullptr), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegEnumValueW(key.get(), 0, nullptr, &number, nullptr, nullptr, nullptr, nullptr),
              ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegEnumValueW(key.get(), 0, name, nullptr, nullptr, nullptr, nullptr, nullptr), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegEnumValueW(key.get(), 0, name, &number, nullptr, nullptr, data, nullptr), ERROR_INVALID_PARAMETER);
}

TEST_F(RegistryValues, ManyValues_AreWrittenListedAndDeleted)
{
    constexpr int kMany = 50;
    for (int number = 0; number < kMany; ++number)
        ASSERT_EQ(setText(key, std::to_wstring(number).c_str(), L"text"), ERROR_SUCCESS);
    const Names names = valueNames(key);
    ASSERT_EQ(names.size(), static_cast<std::size_t>(kMany));
    for (const std::wstring& name : names)
        ASSERT_EQ(RegDeleteValueW(key.get(), name.c_str()), ERROR_SUCCESS);
    reopenRegistry();
    EXPECT_EQ(valueNames(key), Names{});
}

} // namespace
} // namespace Tests
