// Behaviour of the stand-in where Windows promises nothing.
#include <cstring>

#include "platform/win32.h"
#include "support/platform_test.h"

namespace {

using ClassIdStandIn = Tests::PlatformTest;

TEST_F(ClassIdStandIn, RefusedText_LeavesTheIdentifierUnchanged)
{
    constexpr CLSID kBefore = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
    for (const wchar_t* const text : {static_cast<const wchar_t*>(nullptr), L"", L"{3C00EA4B-0B84-11D2-9DE2-08000"}) {
        CLSID id = kBefore;
        EXPECT_EQ(CLSIDFromString(text, &id), CO_E_CLASSSTRING);
        EXPECT_EQ(std::memcmp(&id, &kBefore, sizeof id), 0);
    }
}

TEST_F(ClassIdStandIn, NullOutput_IsAnInvalidArgument)
{
    EXPECT_EQ(CLSIDFromString(L"{3C00EA4B-0B84-11D2-9DE2-080009E6C5A1}", nullptr), E_INVALIDARG);
    EXPECT_EQ(StringFromCLSID(CLSID{}, nullptr), E_INVALIDARG);
}

} // namespace
