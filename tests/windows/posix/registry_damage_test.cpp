// Files that are not what they should be: each call refuses them and leaves them as they are.
#include <sys/stat.h>

#include "embedded/windows/running_checksum.h"
#include "windows/posix/registry_file_test.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;
using Json = std::string;

constexpr const char* kHeader = R"({"format":"embedded registry","formatVersion":1})";
constexpr const char* kKey = R"({"do":"create","key":"Software"})";

/// The lines with the checksums that belong to them.
std::string framed(const std::vector<Json>& lines)
{
    Embedded::RunningChecksum checksum;
    std::string text;
    for (const Json& line : lines) {
        checksum.add(line);
        char digits[9];
        EXPECT_EQ(std::snprintf(digits, sizeof digits, "%08x", checksum.value()), 8);
        text += std::string(digits) + ' ' + line + '\n';
    }
    return text;
}

struct DamagedFile {
    std::string bytes;
    std::string place; // and what is wrong
};

class DamagedRegistry : public RegistryFileTest {
protected:
    void expectRefusal(const DamagedFile& damaged)
    {
        put(damaged.bytes);
        EXPECT_EQ(Embedded::checkRegistryFile(), file.string() + ": " + damaged.place);
        EXPECT_EQ(openStatus(L"Software"), ERROR_REGISTRY_CORRUPT) << damaged.place;
        HKEY key = nullptr;
        EXPECT_EQ(create(L"Software", &key), ERROR_REGISTRY_CORRUPT) << damaged.place;
        EXPECT_EQ(RegDeleteValueW(HKEY_CURRENT_USER, L"a"), ERROR_REGISTRY_CORRUPT) << damaged.place;
        EXPECT_EQ(setBytes(OpenKey(), L"a", REG_BINARY, ""), ERROR_INVALID_HANDLE);
        EXPECT_EQ(onDisk(), damaged.bytes);
    }
};

TEST_F(DamagedRegistry, WhatIsNoRegistryFileIsSaidToBeNone)
{
    const DamagedFile table[] = {
        {"", "is empty"},
        {"hello", "line 1: this is not a registry file"},
        {"hello\n", "line 1: this is not a registry file"},
        {std::string(100, '\0') + '\n', "line 1: this is not a registry file"},
        {"\n", "line 1: this is not a registry file"},
        {R"({"format":"embedded registry","formatVersion":1})"
         "\n",
         "line 1: this is not a registry file"},
        {framed({R"({"format":"embedded host drawing","formatVersion":1})"}), "line 1: this is not a registry file"},
        {framed({"[1]"}), "line 1: this is not a registry file"},
        {framed({R"({"format":"embedded registry","formatVersion":0})"}),
         "line 1: the format version is not a number from 1"},
        {framed({R"({"format":"embedded registry"})"}), "line 1: the format version is not a number from 1"},
        {framed({R"({"format":"embedded registry","formatVersion":2})"}),
         "line 1: format version 2 is newer than 1, the newest that is known here"},
    };
    for (const DamagedFile& damaged : table)
        expectRefusal(damaged);
}

TEST_F(DamagedRegistry, AChangedByteIsFoundInWhateverLineItIs)
{
    const std::string good = framed({kHeader, kKey, R"({"do":"set","key":"Software","name":"a","type":1,"text":"x"})"});
    for (const std::size_t at : {std::size_t{1}, good.find("create"), good.find("\"x\"") + 1, good.size() - 2}) {
        std::string bytes = good;
        bytes[at] = static_cast<char>(bytes[at] ^ 1);
        const auto line = 1 + std::count(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(at), '\n');
        expectRefusal({bytes, "line " + std::to_string(line) + ": the checksum does not fit"});
    }
}

TEST_F(DamagedRegistry, ALineThatIsMissingOrMovedIsFound)
{
    const std::string header = framed({kHeader});
    const std::string good = framed({kHeader, kKey, R"({"do":"create","key":"Other"})"});
    const std::size_t third = good.find('\n', header.size()) + 1;
    expectRefusal({header + good.substr(third), "line 2: the checksum does not fit"});
    expectRefusal({header + good.substr(third) + good.substr(header.size(), third - header.size()),
                   "line 2: the checksum does not fit"});
}

TEST_F(DamagedRegistry, ALineThatSaysNothingIsNamed)
{
    const DamagedFile table[] = {
        {"x", "not a JSON object"},
        {"[]", "not a JSON object"},
        {"{}", "there is no \"do\""},
        {R"({"do":1})", "\"do\" is not a text"},
        {R"({"do":"rename","key":"A"})", "\"do\" is not create, set or delete"},
        {R"({"do":"create"})", "there is no \"key\""},
        {R"({"do":"create","key":1})", "\"key\" is not a text"},
        {R"({"do":"create","key":"A\\\\B"})", "\"key\" has an empty part"},
        {R"({"do":"create","key":"\\A"})", "\"key\" has an empty part"},
        {R"({"do":"create","key":"A\u0000B"})", "\"key\" holds a NUL"},
        {R"({"do":"create","key":{"units":[65,65536]}})", "\"units\" is not a number from 0 to 65535"},
        {R"({"do":"create","key":")" + std::string(256, 'x') + "\"}", "a part of \"key\" is longer than 255"},
        {R"({"do":"delete","key":"Software"})", "there is no \"name\""},
        {R"({"do":"delete","key":"Software","name":"a"})", "there is no such value"},
        {R"({"do":"delete","key":"Other","name":"a"})", "there is no such key"},
        {R"({"do":"delete","key":"Software","name":")" + std::string(16'384, 'x') + "\"}",
         "\"name\" is longer than 16383"},
        {R"({"do":"set","key":"Software","name":"a"})", "there is no \"type\""},
        {R"({"do":"set","key":"Software","name":"a","type":-1})", "\"type\" is not a number from 0 to 4294967295"},
        {R"({"do":"set","key":"Software","name":"a","type":1})", "there is no \"hex\""},
        {R"({"do":"set","key":"Software","name":"a","type":3,"text":"x"})", "\"text\" is not for type 3"},
        {R"({"do":"set","key":"Software","name":"a","type":3,"hex":"0"})", "\"hex\" has an odd number of digits"},
        {R"({"do":"set","key":"Software","name":"a","type":3,"hex":"0G"})",
         "\"hex\" holds a character that is not a hexadecimal digit"},
        {R"({"do":"set","key":"Other","name":"a","type":3,"hex":""})", "there is no such key"},
    };
    for (const DamagedFile& damaged : table)
        expectRefusal({framed({kHeader, kKey, damaged.bytes}), "line 3: " + damaged.place});
}

TEST_F(DamagedRegistry, ALineWithoutAChecksumIsFound)
{
    expectRefusal({framed({kHeader}) + kKey + '\n', "line 2: not a checksum and a JSON object"});
}

TEST_F(DamagedRegistry, AFolderInItsPlaceIsRefused)
{
    fs::create_directories(file);
    EXPECT_EQ(Embedded::checkRegistryFile(), file.string() + ": is a folder");
    EXPECT_EQ(openStatus(L""), ERROR_REGISTRY_CORRUPT);
    HKEY key = nullptr;
    EXPECT_EQ(create(L"A", &key), ERROR_REGISTRY_CORRUPT);
}

TEST_F(DamagedRegistry, APipeInItsPlaceIsRefusedWithoutWaitingForIt)
{
    fs::create_directories(file.parent_path());
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    EXPECT_EQ(Embedded::checkRegistryFile(), file.string() + ": is not a regular file");
    EXPECT_EQ(openStatus(L""), ERROR_REGISTRY_CORRUPT);
}

TEST_F(DamagedRegistry, AFolderThatCannotBeMadeIsAFailureToWrite)
{
    std::ofstream(folder.path() / "settings") << "a file where the folder should be";
    EXPECT_EQ(openStatus(L"A"), ERROR_FILE_NOT_FOUND);
    HKEY key = nullptr;
    EXPECT_EQ(create(L"A", &key), ERROR_REGISTRY_IO_FAILED);
}

TEST_F(DamagedRegistry, AHandleThatIsOpenMeetsTheDamageToo)
{
    const OpenKey key = created();
    ASSERT_EQ(set(key, L"a", L"text"), ERROR_SUCCESS);
    put(onDisk() + "00000000 {}\n");
    wchar_t name[8];
    DWORD length = 8;
    EXPECT_EQ(set(key, L"a", L"other"), ERROR_REGISTRY_CORRUPT);
    EXPECT_EQ(RegQueryValueExW(key.get(), L"a", nullptr, nullptr, nullptr, nullptr), ERROR_REGISTRY_CORRUPT);
    EXPECT_EQ(RegEnumValueW(key.get(), 0, name, &length, nullptr, nullptr, nullptr, nullptr), ERROR_REGISTRY_CORRUPT);
    EXPECT_EQ(RegDeleteValueW(key.get(), L"a"), ERROR_REGISTRY_CORRUPT);
}

TEST_F(DamagedRegistry, AFileThatIsMendedIsReadAgain)
{
    put("damaged\n");
    EXPECT_EQ(openStatus(L"Software"), ERROR_REGISTRY_CORRUPT);
    put(framed({kHeader, kKey}));
    EXPECT_EQ(openStatus(L"Software"), ERROR_SUCCESS);
}

TEST_F(DamagedRegistry, ALineThatWasNeverFinishedIsPassedOverAndWrittenOver)
{
    const std::string good = framed({kHeader, kKey});
    const std::string next = framed({kHeader, kKey, R"({"do":"create","key":"Other"})"}).substr(good.size());
    for (std::size_t length = 1; length < next.size(); ++length) {
        put(good + next.substr(0, length));
        EXPECT_EQ(Embedded::checkRegistryFile(), "");
        EXPECT_EQ(openStatus(L"Other"), ERROR_FILE_NOT_FOUND);
        created(L"Other");
        EXPECT_EQ(onDisk(), good + next);
    }
}

} // namespace
} // namespace Tests
