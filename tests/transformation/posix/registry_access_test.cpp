// Checks the access rights with which the module opens registry keys, and how it reads the names of values. The
// functions here replace those of the stand-in and call them.
#include <dlfcn.h>
#include <gmock/gmock.h>

#include <algorithm>

#include "transformation/registry_settings_test.h"
#include "transformation/registry_strings.h"

namespace {

std::vector<REGSAM> created;
std::vector<REGSAM> opened;
bool nameLacksNul = false; // then the first name fills the buffer without a NUL

template <class Function>
Function* nextFunction(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" {

LSTATUS RegCreateKeyExW(HKEY key, const wchar_t* subKey, DWORD reserved, wchar_t* className, DWORD options,
                        REGSAM access, void* security, HKEY* result, DWORD* disposition)
{
    created.push_back(access);
    return nextFunction<decltype(RegCreateKeyExW)>("RegCreateKeyExW")(key, subKey, reserved, className, options, access,
                                                                      security, result, disposition);
}

LSTATUS RegOpenKeyExW(HKEY key, const wchar_t* subKey, DWORD options, REGSAM access, HKEY* result)
{
    opened.push_back(access);
    return nextFunction<decltype(RegOpenKeyExW)>("RegOpenKeyExW")(key, subKey, options, access, result);
}

LSTATUS RegEnumValueW(HKEY key, DWORD index, wchar_t* name, DWORD* length, DWORD* reserved, DWORD* type, BYTE* data,
                      DWORD* dataLength)
{
    if (!nameLacksNul)
        return nextFunction<decltype(RegEnumValueW)>("RegEnumValueW")(key, index, name, length, reserved, type, data,
                                                                      dataLength);
    if (index > 0)
        return ERROR_NO_MORE_ITEMS;
    std::fill_n(name, *length, L'n');
    return ERROR_MORE_DATA;
}

} // extern "C"

namespace Tests {
namespace {

using testing::AllOf;
using testing::Each;
using testing::SizeIs;

class RegistryAccess : public RegistrySettingsTest {
protected:
    RegistryAccess()
    {
        created.clear();
        opened.clear();
    }
};

TEST_F(RegistryAccess, Keys_AreCreatedAndChangedWithWriteAccessOnly)
{
    ASSERT_TRUE(write(item(1)));
    ASSERT_TRUE(write(item(2)));
    EXPECT_THAT(created, AllOf(Each(KEY_WRITE), SizeIs(testing::Ge(7))));
}

TEST_F(RegistryAccess, Keys_AreReadWithReadAccessOnly)
{
    ASSERT_TRUE(write(item(1)));
    opened.clear();
    ASSERT_TRUE(read().read);
    EXPECT_THAT(opened, AllOf(Each(KEY_READ), SizeIs(testing::Ge(2))));
}

TEST_F(RegistryAccess, NameWithoutANul_EndsWithItsBuffer)
{
    ASSERT_TRUE(write(item(1)));
    std::vector<std::wstring> names;
    nameLacksNul = true;
    const bool listed = Orvel::RegistryEnumValueNames(HKEY_CURRENT_USER, Orvel::registrySettingsKey(), names);
    nameLacksNul = false;
    EXPECT_TRUE(listed);
    EXPECT_EQ(names, std::vector<std::wstring>{std::wstring(2048, L'n')});
}

} // namespace
} // namespace Tests
