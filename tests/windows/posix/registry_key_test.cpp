// Keys of the stand-in: which file they are in, and what it refuses where Windows has more to offer, or Wine has.
#include "support/scoped_variable.h"
#include "windows/posix/registry_file_test.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

class RegistryKeysStandIn : public RegistryFileTest {};

TEST_F(RegistryKeysStandIn, UnsupportedArguments_AreRefused)
{
    HKEY key = nullptr;
    EXPECT_EQ(create(nullptr, &key), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(create(L"A", nullptr), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, L"A", 0, nullptr, 1, KEY_WRITE, nullptr, &key, nullptr),
              ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, L"", 0, KEY_READ, nullptr), ERROR_INVALID_PARAMETER);
}

// Wine takes it.
TEST_F(RegistryKeysStandIn, ANameOf256CharactersDoesNotFit)
{
    HKEY key = nullptr;
    EXPECT_EQ(create((L"A\\" + std::wstring(256, L'x')).c_str(), &key), ERROR_INVALID_PARAMETER);
}

TEST_F(RegistryKeysStandIn, ReadingCreatesNothing)
{
    EXPECT_EQ(openStatus(L"A"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(openStatus(L""), ERROR_SUCCESS);
    EXPECT_EQ(registryFault(), "");
    created(L"");
    EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST_F(RegistryKeysStandIn, KeyOfADeletedFile_IsDeleted)
{
    const OpenKey key = created();
    fs::remove(file);
    EXPECT_EQ(set(key, L"a", L"b"), ERROR_KEY_DELETED);
    EXPECT_EQ(RegQueryValueExW(key.get(), L"a", nullptr, nullptr, nullptr, nullptr), ERROR_KEY_DELETED);
    EXPECT_FALSE(fs::exists(file));
}

TEST_F(RegistryKeysStandIn, WithoutAChoiceTheFileIsInTheUsersSettings)
{
    Embedded::useRegistryFile({});
    const ScopedVariable home("HOME", folder.path().string());
    {
        const ScopedVariable settings("XDG_CONFIG_HOME", (folder.path() / "config").string());
        EXPECT_EQ(Embedded::registryFile(), folder.path() / "config/orvel/registry.db");
        created();
        EXPECT_TRUE(fs::exists(folder.path() / "config/orvel/registry.db"));
    }
    const ScopedVariable settings("XDG_CONFIG_HOME", "relative");
    EXPECT_EQ(Embedded::registryFile(), folder.path() / ".config/orvel/registry.db");
    EXPECT_EQ(openStatus(L"Software\\Test"), ERROR_FILE_NOT_FOUND);
}

TEST_F(RegistryKeysStandIn, WithoutAPlaceForAFileNothingCanBeWritten)
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
