// Damaged and other files. Each call refuses them and leaves them unchanged.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <map>

#include "support/file_text.h"
#include "support/posix/sql_query.h"
#include "windows/registry_test.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;
using testing::MatchesRegex;

class DamagedRegistry : public RegistryTest {
protected:
    DamagedRegistry()
    {
        const OpenKey key = createKey(L"Software");
        EXPECT_EQ(setText(key, L"text", L"K\u00F8ge"), ERROR_SUCCESS);
        EXPECT_EQ(setText(key, L"\xD800", L"odd"), ERROR_SUCCESS);
        EXPECT_EQ(setBytes(key, L"", REG_BINARY, "bytes"), ERROR_SUCCESS);
        Embedded::useRegistryFile(file); // closes the file
        sound = readFile(file);
    }

    void expectRefusal(const std::string& reason)
    {
        const std::string before = readFile(file);
        EXPECT_EQ(registryFault(), file.string() + ": " + reason);
        EXPECT_EQ(openStatus(L"Software"), ERROR_REGISTRY_CORRUPT) << reason;
        HKEY key = nullptr;
        EXPECT_EQ(create(L"Other", &key), ERROR_REGISTRY_CORRUPT) << reason;
        EXPECT_EQ(RegSetValueExW(HKEY_CURRENT_USER, L"a", 0, REG_BINARY, nullptr, 0), ERROR_REGISTRY_CORRUPT) << reason;
        EXPECT_EQ(RegDeleteValueW(HKEY_CURRENT_USER, L"a"), ERROR_REGISTRY_CORRUPT) << reason;
        EXPECT_EQ(readFile(file), before) << reason;
    }
    /// Restores the sound file and runs SQL statements on it.
    void expectRefusalAfter(const std::string& statements, const std::string& reason)
    {
        writeFile(file, sound);
        sqlQuery(file, statements);
        expectRefusal(reason);
    }
    /// The values by their names. Returns nothing if a call finds the file damaged.
    static std::optional<std::map<std::wstring, std::wstring>> values()
    {
        HKEY opened = nullptr;
        const LSTATUS status = RegOpenKeyExW(HKEY_CURRENT_USER, L"Software", 0, KEY_READ, &opened);
        const OpenKey key(opened);
        if (status == ERROR_REGISTRY_CORRUPT)
            return std::nullopt;
        EXPECT_EQ(status, ERROR_SUCCESS);
        std::map<std::wstring, std::wstring> result;
        for (const std::wstring& name : valueNames(key)) {
            const std::string bytes = readBytes(key, name.c_str()).value_or("missing");
            result[name] = std::wstring(bytes.begin(), bytes.end());
        }
        return result;
    }

    std::string sound;
};

TEST_F(DamagedRegistry, FileThatIsNotADatabase_IsRefused)
{
    for (const std::string& bytes : {std::string("hello"), std::string("{\"format\":\"embedded registry\"}\n"),
                                     std::string(5'000, '\0'), sound.substr(1)}) {
        writeFile(file, bytes);
        expectRefusal("is not a database; choose another file");
    }
}

TEST_F(DamagedRegistry, DatabaseOfAnotherProgram_IsRefused)
{
    const std::string reason = "is a database, but not a registry; choose another file";
    expectRefusalAfter("PRAGMA application_id = 0", reason);
    expectRefusalAfter("PRAGMA application_id = 1", reason);
}

TEST_F(DamagedRegistry, AnotherFormat_IsRefused)
{
    expectRefusalAfter("PRAGMA user_version = 2",
                       "has format 2, but only format 1 is known here; use the program that wrote it");
    expectRefusalAfter("PRAGMA user_version = 0",
                       "has format 0, but only format 1 is known here; use the program that wrote it");
}

TEST_F(DamagedRegistry, AnotherSchema_IsRefused)
{
    const char* const changes[] = {
        "DROP TABLE registry",
        "CREATE TABLE other (a)",
        "CREATE INDEX byName ON registry (name)",
        "CREATE VIEW everything AS SELECT * FROM registry",
        "CREATE TRIGGER doubled AFTER DELETE ON registry BEGIN DELETE FROM registry; END",
        "ALTER TABLE registry ADD COLUMN more ANY",
        "ALTER TABLE registry RENAME TO other; CREATE VIEW registry AS SELECT * FROM other",
        "PRAGMA journal_mode = WAL",
    };
    for (const char* const change : changes)
        expectRefusalAfter(change, "has other tables than a registry; restore the file from a copy");
}

TEST_F(DamagedRegistry, ChangedRow_IsFoundByItsChecksum)
{
    const char* const changes[] = {
        "name = 'other' WHERE name = 'text'", "folded = 'other' WHERE name = 'text'",
        "type = 2 WHERE name = 'text'",       "data = 'other' WHERE name = 'text'",
        "data = x'6100' WHERE name = 'text'", "checksum = checksum + 1 WHERE name = 'text'",
        "owner = 1 WHERE name = 'text'",      "type = type + 4294967296 WHERE name = 'text'",
    };
    for (const char* const change : changes)
        expectRefusalAfter(std::string("UPDATE registry SET ") + change,
                           "is damaged: the checksum of row 3 does not fit; restore the file from a copy");
    expectRefusalAfter("UPDATE registry SET id = 9 WHERE name = 'text'",
                       "is damaged: the checksum of row 9 does not fit; restore the file from a copy");
}

// Unused bytes may have any value, so the test changes only a few of them.
TEST_F(DamagedRegistry, DamagedByte_IsRefusedOrChangesNoValue)
{
    const auto isUsed = [this](std::size_t at) {
        return sound[at] != 0 || sound[at - 1] != 0 || (at + 1 < sound.size() && sound[at + 1] != 0);
    };
    const auto whole = values();
    ASSERT_TRUE(whole);
    ASSERT_EQ(whole->size(), 3U);
    std::size_t refusals = 0;
    std::string bytes = sound;
    for (std::size_t at = 0; at < bytes.size(); at += ORVEL_TEXT_STRIDE) {
        if (at % 64 != 0 && !isUsed(at))
            continue;
        bytes[at] = static_cast<char>(bytes[at] ^ (1 << at % 8));
        writeFile(file, bytes);
        Embedded::useRegistryFile(file);
        if (const auto found = values()) {
            EXPECT_EQ(found, whole) << at;
        } else {
            ++refusals;
            EXPECT_THAT(registryFault(), MatchesRegex(".*/registry.db: (is|has) [^\n]*; [^\n]*")) << at;
        }
        Embedded::useRegistryFile({});
        EXPECT_EQ(readFile(file), bytes) << at;
        bytes[at] = sound[at];
    }
    EXPECT_GT(refusals, 500U / ORVEL_TEXT_STRIDE);
}

// SQLite treats a file of one byte as empty.
TEST_F(DamagedRegistry, TruncatedFile_IsRefused)
{
    for (std::size_t length = 2; length < sound.size(); length += 101) {
        writeFile(file, sound.substr(0, length));
        Embedded::useRegistryFile(file);
        EXPECT_EQ(openStatus(L"Software"), ERROR_REGISTRY_CORRUPT) << length;
    }
}

TEST_F(DamagedRegistry, EmptyFile_IsAnEmptyRegistry)
{
    writeFile(file, "");
    EXPECT_EQ(registryFault(), "");
    EXPECT_EQ(openStatus(L"Software"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(openStatus(L""), ERROR_SUCCESS);
    EXPECT_EQ(readFile(file), "");
    createKey(L"Software");
    EXPECT_EQ(openStatus(L"Software"), ERROR_SUCCESS);
}

TEST_F(DamagedRegistry, FolderInPlaceOfTheFile_IsRefused)
{
    fs::remove(file);
    fs::create_directories(file);
    EXPECT_EQ(registryFault(), file.string() + ": is a folder; choose another file");
    EXPECT_EQ(openStatus(L""), ERROR_REGISTRY_CORRUPT);
    HKEY key = nullptr;
    EXPECT_EQ(create(L"A", &key), ERROR_REGISTRY_CORRUPT);
}

TEST_F(DamagedRegistry, PipeInPlaceOfTheFile_IsRefusedWithoutWaiting)
{
    fs::remove(file);
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    EXPECT_EQ(registryFault(), file.string() + ": is not a file; choose another file");
    EXPECT_EQ(openStatus(L""), ERROR_REGISTRY_CORRUPT);
}

TEST_F(DamagedRegistry, FolderThatCannotBeCreated_FailsTheWrite)
{
    std::ofstream(folder.path() / "other") << "a file in place of the folder";
    const ScopedRegistry below(folder, folder.path() / "other" / "registry.db");
    EXPECT_EQ(openStatus(L"A"), ERROR_FILE_NOT_FOUND);
    HKEY key = nullptr;
    EXPECT_EQ(create(L"A", &key), ERROR_REGISTRY_IO_FAILED);
}

TEST_F(DamagedRegistry, OpenHandle_FailsWhenTheFileIsDamaged)
{
    const OpenKey key = createKey(L"Software");
    ASSERT_NE(readText(key, L"text"), std::nullopt);
    sqlQuery(file, "UPDATE registry SET checksum = checksum + 1");
    wchar_t name[8];
    DWORD length = 8;
    EXPECT_EQ(setText(key, L"text", L"other"), ERROR_REGISTRY_CORRUPT);
    EXPECT_EQ(queryStatus(key, L"text"), ERROR_REGISTRY_CORRUPT);
    EXPECT_EQ(enumerateName(key, 0, name, &length), ERROR_REGISTRY_CORRUPT);
    EXPECT_EQ(RegDeleteValueW(key.get(), L"text"), ERROR_REGISTRY_CORRUPT);
}

TEST_F(DamagedRegistry, RepairedFile_IsReadAgain)
{
    writeFile(file, "damaged\n");
    EXPECT_EQ(openStatus(L"Software"), ERROR_REGISTRY_CORRUPT);
    writeFile(file, sound);
    EXPECT_EQ(openStatus(L"Software"), ERROR_SUCCESS);
}

TEST_F(DamagedRegistry, ReplacedFile_IsReadAndWritten)
{
    const OpenKey key = createKey(L"Software");
    ASSERT_EQ(setText(key, L"text", L"new"), ERROR_SUCCESS);
    writeFile(folder.path() / "copy", sound);
    fs::rename(folder.path() / "copy", file);
    EXPECT_EQ(readText(key, L"text"), withNul(L"K\u00F8ge"));
    writeFile(folder.path() / "copy", sound);
    fs::rename(folder.path() / "copy", file);
    ASSERT_EQ(setText(key, L"more", L"more"), ERROR_SUCCESS);
    EXPECT_EQ(sqlQuery(file, "SELECT data FROM registry WHERE name = 'more'"), "more\n");
}

} // namespace
} // namespace Tests
