// With which rights the module opens the registry's keys. The calls are put in front of the stand-in's.
#include <dlfcn.h>
#include <gmock/gmock.h>

#include "transformation/registry_settings_test.h"

namespace {

std::vector<REGSAM> created;
std::vector<REGSAM> opened;

template <class Function>
Function* standIn(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" {

LSTATUS RegCreateKeyExW(HKEY key, const wchar_t* subKey, DWORD reserved, wchar_t* className, DWORD options,
                        REGSAM access, void* security, HKEY* result, DWORD* disposition)
{
    created.push_back(access);
    return standIn<decltype(RegCreateKeyExW)>("RegCreateKeyExW")(key, subKey, reserved, className, options, access,
                                                                 security, result, disposition);
}

LSTATUS RegOpenKeyExW(HKEY key, const wchar_t* subKey, DWORD options, REGSAM access, HKEY* result)
{
    opened.push_back(access);
    return standIn<decltype(RegOpenKeyExW)>("RegOpenKeyExW")(key, subKey, options, access, result);
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

TEST_F(RegistryAccess, Keys_AreMadeAndChangedWithTheRightToWriteAlone)
{
    ASSERT_TRUE(write(item(1)));
    ASSERT_TRUE(write(item(2)));
    EXPECT_THAT(created, AllOf(Each(KEY_WRITE), SizeIs(testing::Ge(7))));
}

TEST_F(RegistryAccess, Keys_AreReadWithTheRightToReadAlone)
{
    ASSERT_TRUE(write(item(1)));
    opened.clear();
    ASSERT_TRUE(read().read);
    EXPECT_THAT(opened, AllOf(Each(KEY_READ), SizeIs(testing::Ge(2))));
}

} // namespace
} // namespace Tests
