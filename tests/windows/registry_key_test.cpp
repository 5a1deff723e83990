#include "embedded/diagnostics/resource_counters.h"
#include "registry_test.h"

namespace Tests {
namespace {

class RegistryKeys : public RegistryTest {};

TEST_F(RegistryKeys, Key_DoesNotExistUntilItIsCreated)
{
    EXPECT_EQ(openStatus(L"Software\\Test"), ERROR_FILE_NOT_FOUND);
    createKey();
    EXPECT_EQ(openStatus(L"Software\\Test"), ERROR_SUCCESS);
    reopenRegistry();
    EXPECT_EQ(openStatus(L"Software\\Test"), ERROR_SUCCESS);
}

TEST_F(RegistryKeys, ParentKeys_AreCreatedWithAKey)
{
    createKey(L"A\\B\\C");
    EXPECT_EQ(openStatus(L"A"), ERROR_SUCCESS);
    EXPECT_EQ(openStatus(L"A\\B"), ERROR_SUCCESS);
    EXPECT_EQ(openStatus(L"B"), ERROR_FILE_NOT_FOUND);
}

TEST_F(RegistryKeys, Disposition_SaysWhetherTheKeyExisted)
{
    HKEY key = nullptr;
    DWORD disposition = 0;
    ASSERT_EQ(create(L"A", &key, KEY_WRITE, &disposition), ERROR_SUCCESS);
    EXPECT_EQ(disposition, REG_CREATED_NEW_KEY);
    EXPECT_EQ(RegCloseKey(key), ERROR_SUCCESS);
    ASSERT_EQ(create(L"A", &key, KEY_WRITE, &disposition), ERROR_SUCCESS);
    EXPECT_EQ(disposition, REG_OPENED_EXISTING_KEY);
    EXPECT_EQ(RegCloseKey(key), ERROR_SUCCESS);
}

TEST_F(RegistryKeys, Names_AreEqualInAnyCase)
{
    createKey(L"Software\\K\u00D8GE \u0394 \u0416");
    EXPECT_EQ(openStatus(L"SOFTWARE\\k\u00F8ge \u03B4 \u0436"), ERROR_SUCCESS);
    EXPECT_EQ(openStatus(L"Software\\Koge \u0394 \u0416"), ERROR_FILE_NOT_FOUND);
}

TEST_F(RegistryKeys, PathRelativeToAKey_IsCreatedBelowIt)
{
    const OpenKey above = createKey(L"A");
    HKEY below = nullptr;
    ASSERT_EQ(RegCreateKeyExW(above.get(), L"B\\C", 0, nullptr, 0, KEY_WRITE, nullptr, &below, nullptr), ERROR_SUCCESS);
    const OpenKey closed(below);
    EXPECT_EQ(openStatus(L"A\\B\\C"), ERROR_SUCCESS);
}

TEST_F(RegistryKeys, EmptyPath_IsTheKeyItself)
{
    EXPECT_EQ(openStatus(L""), ERROR_SUCCESS);
    EXPECT_EQ(openStatus(nullptr), ERROR_SUCCESS);
    createKey(L"");
    EXPECT_EQ(openStatus(L""), ERROR_SUCCESS);
}

TEST_F(RegistryKeys, ExtraBackslashes_AreIgnoredExceptInFront)
{
    createKey(L"A\\\\B\\");
    EXPECT_EQ(openStatus(L"A\\B"), ERROR_SUCCESS);
    EXPECT_EQ(openStatus(L"\\A"), ERROR_BAD_PATHNAME);
    HKEY key = nullptr;
    EXPECT_EQ(create(L"\\A", &key), ERROR_BAD_PATHNAME);
    EXPECT_EQ(key, nullptr);
}

TEST_F(RegistryKeys, NameOf255Characters_IsAccepted)
{
    const std::wstring path = L"A\\" + std::wstring(255, L'x');
    createKey(path.c_str());
    EXPECT_EQ(openStatus(path.c_str()), ERROR_SUCCESS);
}

TEST_F(RegistryKeys, ReservedArguments_MustBeZero)
{
    HKEY key = nullptr;
    EXPECT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, L"A", 1, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr),
              ERROR_INVALID_PARAMETER);
}

TEST_F(RegistryKeys, ClosedHandle_IsRefused)
{
    HKEY key = nullptr;
    ASSERT_EQ(create(L"A", &key), ERROR_SUCCESS);
    ASSERT_EQ(RegCloseKey(key), ERROR_SUCCESS);
    EXPECT_EQ(RegCloseKey(key), ERROR_INVALID_HANDLE);
    EXPECT_EQ(RegDeleteValueW(key, L"x"), ERROR_INVALID_HANDLE);
    EXPECT_EQ(RegQueryValueExW(nullptr, L"x", nullptr, nullptr, nullptr, nullptr), ERROR_INVALID_HANDLE);
    HKEY below = nullptr;
    EXPECT_EQ(RegOpenKeyExW(key, L"B", 0, KEY_READ, &below), ERROR_INVALID_HANDLE);
    EXPECT_EQ(RegCloseKey(nullptr), ERROR_INVALID_HANDLE);
}

TEST_F(RegistryKeys, PredefinedHandle_StaysOpenWhenClosed)
{
    EXPECT_EQ(RegCloseKey(HKEY_CURRENT_USER), ERROR_SUCCESS);
    EXPECT_EQ(openStatus(L""), ERROR_SUCCESS);
}

TEST_F(RegistryKeys, OpenHandle_IsCounted)
{
    const Embedded::ResourceCounts before = Embedded::ResourceCounters::now();
    const OpenKey key = createKey();
    EXPECT_EQ(Embedded::ResourceCounters::difference(before, Embedded::ResourceCounters::now()), "1 registry key");
}

} // namespace
} // namespace Tests
