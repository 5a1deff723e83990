// The file of the stand-in, and arguments that it refuses although Windows or Wine accepts them.
#include "support/scoped_variable.h"
#include "windows/registry_test.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

class RegistryKeysStandIn : public RegistryTest {};

TEST_F(RegistryKeysStandIn, UnsupportedArguments_AreRefused)
{
    HKEY key = nullptr;
    EXPECT_EQ(create(nullptr, &key), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(create(L"A", nullptr), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, L"A", 0, nullptr, 1, KEY_WRITE, nullptr, &key, nullptr),
              ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, L"", 0, KEY_READ, nullptr), ERROR_INVALID_PARAMETER);
}

// Wine accepts it.
TEST_F(RegistryKeysStandIn, NameOf256Characters_IsRefused)
{
    HKEY key = nullptr;
    EXPECT_EQ(create((L"A\\" + std::wstring(256, L'x')).c_str(), &key), ERROR_INVALID_PARAMETER);
}

TEST_F(RegistryKeysStandIn, Reading_CreatesNoFile)
{
    EXPECT_EQ(openStatus(L"A"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(openStatus(L""), ERROR_SUCCESS);
    EXPECT_EQ(registryFault(), "");
    createKey(L"");
    EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST_F(RegistryKeysStandIn, KeyOfADeletedFile_IsDeleted)
{
    const OpenKey key = createKey();
    fs::remove(file);
    EXPECT_EQ(setText(key, L"a", L"b"), ERROR_KEY_DELETED);
    EXPECT_EQ(queryStatus(key, L"a"), ERROR_KEY_DELETED);
    EXPECT_FALSE(fs::exists(file));
}

TEST_F(RegistryKeysStandIn, DefaultFile_IsInTheUsersSettings)
{
    Embedded::useRegistryFile({});
    const ScopedVariable home("HOME", folder.path().string());
    {
        const ScopedVariable settings("XDG_CONFIG_HOME", (folder.path() / "config").string());
        EXPECT_EQ(Embedded::registryFile(), folder.path() / "config/orvel/registry.db");
        createKey();
        EXPECT_TRUE(fs::exists(folder.path() / "config/orvel/registry.db"));
    }
    const ScopedVariable settings("XDG_CONFIG_HOME", "relative");
    EXPECT_EQ(Embedded::registryFile(), folder.path() / ".config/orvel/registry.db");
    EXPECT_EQ(openStatus(L"Software\\Test"), ERROR_FILE_NOT_FOUND);
}

TEST_F(RegistryKeysStandIn, MissingHome_PreventsWriting)
{
    Embedded::useRegistryFile({});
    const ScopedVariable home("HOME");
    const ScopedVariable settings("XDG_CONFIG_HOME");
    EXPECT_EQ(Embedded::registryFile(), fs::path());
    EXPECT_EQ(openStatus(L""), ERROR_SUCCESS);
    HKEY key = nullptr;
    EXPECT_EQ(create(L"A", &key), ERROR_REGISTRY_IO_FAILED);
}

} // namespace
} // namespace Tests
