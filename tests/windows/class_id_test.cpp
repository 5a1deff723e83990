#include <cstring>
#include <string>

#include "embedded/diagnostics/fault_injection.h"
#include "platform/win32.h"
#include "support/platform_test.h"

namespace {

using ClassId = Tests::PlatformTest;

constexpr const wchar_t* kText = L"{3C00EA4B-0B84-11D2-9DE2-080009ACE18E}";
constexpr CLSID kId = {0x3C00EA4B, 0x0B84, 0x11D2, {0x9D, 0xE2, 0x08, 0x00, 0x09, 0xAC, 0xE1, 0x8E}};

bool same(const CLSID& left, const CLSID& right)
{
    return std::memcmp(&left, &right, sizeof left) == 0;
}

TEST_F(ClassId, Text_BecomesFields)
{
    CLSID id{};
    EXPECT_EQ(CLSIDFromString(kText, &id), S_OK);
    EXPECT_TRUE(same(id, kId));
}

TEST_F(ClassId, LowerCaseDigits_AreRead)
{
    CLSID id{};
    EXPECT_EQ(CLSIDFromString(L"{3c00ea4b-0b84-11d2-9de2-080009ace18e}", &id), S_OK);
    EXPECT_TRUE(same(id, kId));
}

TEST_F(ClassId, Fields_BecomeTextInUpperCase)
{
    wchar_t* text = nullptr;
    ASSERT_EQ(StringFromCLSID(kId, &text), S_OK);
    EXPECT_STREQ(text, kText);
    CoTaskMemFree(text);
}

TEST_F(ClassId, OtherTexts_AreRefused)
{
    const wchar_t* const texts[] = {
        L"",
        L"3C00EA4B-0B84-11D2-9DE2-080009ACE18E",
        L"{3C00EA4B-0B84-11D2-9DE2-080009ACE18E",
        L"{3C00EA4B-0B84-11D2-9DE2-080009ACE18E} ",
        L"{3C00EA4G-0B84-11D2-9DE2-080009ACE18E}",
        L"{3C00EA4B00B84-11D2-9DE2-080009ACE18E}",
    };
    for (const wchar_t* text : texts) {
        CLSID id = kId;
        EXPECT_EQ(CLSIDFromString(text, &id), CO_E_CLASSSTRING) << testing::PrintToString(text);
    }
}

TEST_F(ClassId, InjectedFault_FailsTheCall)
{
    CLSID id{};
    wchar_t* text = nullptr;
    {
        const Embedded::ScopedFault fault({.call = "CLSIDFromString", .code = {}});
        EXPECT_EQ(CLSIDFromString(kText, &id), CO_E_CLASSSTRING);
    }
    const Embedded::ScopedFault fault({.call = "StringFromCLSID", .code = {}});
    EXPECT_EQ(StringFromCLSID(kId, &text), E_OUTOFMEMORY);
    EXPECT_EQ(text, nullptr);
}

TEST_F(ClassId, FreeOfNull_IsAllowed)
{
    CoTaskMemFree(nullptr);
}

} // namespace
