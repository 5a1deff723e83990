#include "transformation/user_settings_file.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <iterator>

#include "embedded/diagnostics/fault_injection.h"
#include "support/local_application_data.h"
#include "transformation_test.h"

namespace Tests {
namespace {

using Embedded::ScopedFault;
using testing::Contains;
using testing::Not;

class UserSettingsFile : public TransformationTest {
protected:
    const std::wstring one = itemElement(L"A", L"B", L"one");
    const std::wstring two = itemElement(L"B", L"C", L"two");

    static ReadText read() { return readWith(Orvel::ReadUserTransformationSettings); }
    static bool write(const std::wstring& text) { return Orvel::WriteUserTransformationSettings(text.c_str()); }
    static std::wstring path() { return Orvel::GetUserTransformationSettingsPath(); }

    void storeFile(const std::string& bytes) const { std::ofstream(settingsFile(), std::ios::binary) << bytes; }
    std::string fileBytes() const
    {
        std::ifstream file(settingsFile(), std::ios::binary);
        EXPECT_TRUE(file.is_open());
        return {std::istreambuf_iterator<char>(file), {}};
    }
    static std::string utf8(const std::wstring& text) { return Embedded::utf8FromWide(text); }
};

TEST_F(UserSettingsFile, File_LiesInTheFolderOfTheVariable)
{
    userFolder.set("/some folder");
    EXPECT_EQ(path(), L"/some folder\\TransformationSetting.xml");
}

TEST_F(UserSettingsFile, FolderThatEndsWithABackslash_GetsAnotherBackslash)
{
    userFolder.set("C:\\folder\\");
    EXPECT_EQ(path(), L"C:\\folder\\\\TransformationSetting.xml");
}

TEST_F(UserSettingsFile, DoubleSeparator_NamesTheSameFile)
{
    userFolder.set(folder.path().string() + "\\");
    ASSERT_TRUE(write(one));
    EXPECT_EQ(fileBytes(), utf8(one) + "\r\n");
}

TEST_F(UserSettingsFile, FolderOfOneCharacter_IsUsed)
{
    userFolder.set("f");
    EXPECT_EQ(path(), L"f\\TransformationSetting.xml");
}

TEST_F(UserSettingsFile, FolderOf259Characters_IsUsed)
{
    const std::string longFolder(259, 'f');
    userFolder.set(longFolder);
    EXPECT_EQ(path(), Embedded::wideFromUtf8(longFolder) + L"\\TransformationSetting.xml");
}

/// Tests without the variable that names the folder.
class LocalApplicationData : public UserSettingsFile {
protected:
    ScopedVariable data{"XDG_DATA_HOME"};

    void SetUp() override
    {
        userFolder.set(std::nullopt);
        useLocalApplicationData(folder.path());
    }
    std::filesystem::path createFolders() const
    {
        const auto created = folder.path() / "Zentara" / "User Geospatial Coordinate Systems";
        std::filesystem::create_directories(created);
        return created;
    }
    std::wstring expectedPath() const
    {
        return Embedded::wideFromUtf8(folder.path().string()) +
               L"\\Zentara\\User Geospatial Coordinate Systems\\TransformationSetting.xml";
    }
};

TEST_F(LocalApplicationData, IsTheFolderWithoutAVariable)
{
    EXPECT_EQ(path(), expectedPath());
}

TEST_F(LocalApplicationData, IsTheFolderForAnEmptyVariable)
{
    userFolder.set("");
    EXPECT_EQ(path(), expectedPath());
}

TEST_F(LocalApplicationData, IsTheFolderForAVariableOf260Characters)
{
    userFolder.set(std::string(260, 'f'));
    EXPECT_EQ(path(), expectedPath());
}

TEST_F(LocalApplicationData, IsTheFolderForAVariableThatCannotBeRead)
{
    userFolder.set("/some folder");
    const ScopedFault fault({.call = "_wgetenv_s"});
    EXPECT_EQ(path(), expectedPath());
}

TEST_F(LocalApplicationData, MissingFolders_AreNotCreated)
{
    EXPECT_FALSE(write(one));
    EXPECT_EQ(read(), kNothingRead);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST_F(LocalApplicationData, ExistingFolders_GetTheFile)
{
    const auto created = createFolders();
    ASSERT_TRUE(write(one));
    EXPECT_TRUE(std::filesystem::exists(created / "TransformationSetting.xml"));
    EXPECT_EQ(read(), (ReadText{true, one}));
}

TEST_F(LocalApplicationData, UnknownFolder_GivesNoPath)
{
    const ScopedFault fault({.call = "SHGetSpecialFolderPathW", .fromThenOn = true});
    EXPECT_EQ(path(), L"");
    EXPECT_FALSE(write(one));
    EXPECT_EQ(read(), kNothingRead);
    EXPECT_THAT(Embedded::FaultInjection::seen(), Not(Contains("_wfsopen")));
}

TEST_F(LocalApplicationData, MissingFolder_IsNotCreatedAndGivesNoPath)
{
    const std::filesystem::path missing = folder.path() / "missing";
    useLocalApplicationData(missing);
    EXPECT_EQ(path(), L"");
    EXPECT_FALSE(std::filesystem::exists(missing));
}

TEST_F(UserSettingsFile, TwoItems_AreWrittenAsTwoLinesOfUtf8)
{
    ASSERT_TRUE(write(one + two));
    EXPECT_EQ(fileBytes(), utf8(one) + "\r\n" + utf8(two) + "\r\n");
    EXPECT_EQ(read(), (ReadText{true, one + two}));
}

TEST_F(UserSettingsFile, TextAfterTheLastItem_IsNotWritten)
{
    ASSERT_TRUE(write(one + two + L"\r\n</Items> "));
    EXPECT_EQ(read(), (ReadText{true, one + two}));
}

TEST_F(UserSettingsFile, TextBeforeAnItem_IsWrittenToItsLine)
{
    ASSERT_TRUE(write(L" <Items> " + one));
    EXPECT_EQ(fileBytes(), " <Items> " + utf8(one) + "\r\n");
}

TEST_F(UserSettingsFile, LineBreakInAnItem_IsWrittenAndNotReadBack)
{
    ASSERT_TRUE(write(itemElement(L"A", L"B", L"one", 2, L"first\nsecond")));
    EXPECT_NE(fileBytes().find("first\r\nsecond"), std::string::npos);
    EXPECT_EQ(read(), (ReadText{true, itemElement(L"A", L"B", L"one", 2, L"firstsecond")}));
}

TEST_F(UserSettingsFile, EmptyText_LeavesAnEmptyFile)
{
    ASSERT_TRUE(write(one));
    ASSERT_TRUE(write(L""));
    EXPECT_EQ(fileBytes(), "");
    EXPECT_EQ(read(), (ReadText{true, L""}));
}

TEST_F(UserSettingsFile, TextWithoutAnItem_LeavesAnEmptyFile)
{
    ASSERT_TRUE(write(one));
    ASSERT_TRUE(write(L"<Item>cut off"));
    EXPECT_EQ(fileBytes(), "");
}

TEST_F(UserSettingsFile, UnicodeText_IsReadUnchanged)
{
    const std::wstring text = itemElement(L"É", L"Ω", L"測地系", 1, L"\U0001F310 \U0010FFFF");
    ASSERT_TRUE(write(text));
    EXPECT_EQ(fileBytes(), "<Item><Version>1.0</Version><SourceCs>\xC3\x89</SourceCs><TargetCs>\xCE\xA9</TargetCs>"
                           "<Name>\xE6\xB8\xAC\xE5\x9C\xB0\xE7\xB3\xBB</Name><Type>1</Type><Note>\xF0\x9F\x8C\x90 "
                           "\xF4\x8F\xBF\xBF</Note></Item>\r\n");
    EXPECT_EQ(read(), (ReadText{true, text}));
}

TEST_F(UserSettingsFile, FolderWithAUnicodeName_GetsTheFile)
{
    const auto named = folder.path() / std::u8string(u8"É Ω 測 \U0001F310");
    std::filesystem::create_directory(named);
    const std::u8string name = named.u8string();
    userFolder.set(std::string(name.begin(), name.end()));
    ASSERT_TRUE(write(one));
    EXPECT_TRUE(std::filesystem::exists(named / "TransformationSetting.xml"));
    EXPECT_EQ(read(), (ReadText{true, one}));
}

TEST_F(UserSettingsFile, MissingFile_ReadsAsNothing)
{
    EXPECT_EQ(read(), kNothingRead);
}

TEST_F(UserSettingsFile, MissingFolder_IsNotCreated)
{
    userFolder.set((folder.path() / "missing").string());
    EXPECT_FALSE(write(one));
    EXPECT_EQ(read(), kNothingRead);
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "missing"));
}

TEST_F(UserSettingsFile, FolderInPlaceOfTheFile_IsNeitherReadNorWritten)
{
    std::filesystem::create_directory(settingsFile());
    EXPECT_EQ(read(), kNothingRead);
    EXPECT_FALSE(write(one));
}

TEST_F(UserSettingsFile, ReadOnlyFile_IsReadAndNotWritten)
{
    storeFile("<Item>x</Item>\r\n");
    std::filesystem::permissions(settingsFile(), std::filesystem::perms::owner_read);
    EXPECT_EQ(read(), (ReadText{true, L"<Item>x</Item>"}));
    const bool mayWriteAnything = std::ofstream(settingsFile(), std::ios::app).is_open();
    EXPECT_EQ(write(one), mayWriteAnything);
    EXPECT_EQ(fileBytes(), mayWriteAnything ? utf8(one) + "\r\n" : "<Item>x</Item>\r\n");
    std::filesystem::permissions(settingsFile(),
                                 std::filesystem::perms::owner_all); // so that its folder can be removed
}

struct Content {
    const char* name;
    std::string bytes;
    std::wstring text;
};

TEST_F(UserSettingsFile, FileOfAnotherProgram_IsReadLineByLine)
{
    const Content contents[] = {
        {"empty", "", L""},
        {"line feeds", "a\nb\n", L"ab"},
        {"carriage return and line feed", "a\r\nb\r\n", L"ab"},
        {"no end of the last line", "a\r\nb", L"ab"},
        {"empty lines", "\r\n\r\na\n\n", L"a"},
        {"a carriage return alone", "a\rb\r\n", L"a\rb"},
        {"one item over several lines", "<Item>\r\n  <Name>n\r\n</Name>\r\n</Item>\r\n",
         L"<Item>  <Name>n</Name></Item>"},
        {"a byte-order mark",
         "\xEF\xBB\xBF"
         "a",
         L"\uFEFFa"},
        {"bytes that are not UTF-8",
         "a\xFF\xFE"
         "b",
         L"a\uFFFD\uFFFDb"},
        {"a sequence cut off", "a\xE6\xB8", L"a\uFFFD"},
        {"a sequence cut off after its first byte", "a\xED", L"a\uFFFD"},
        {"an overlong sequence", "\xC0\xAF", L"\uFFFD\uFFFD"},
        {"a NUL, at which the text ends", std::string("a\0b", 3), L"a"},
        {"a control-Z, at which the file ends", "a\r\nb\x1A\r\nc", L"ab"},
        {"a character on two lines", "\xC3\r\n\xA9", L"\u00E9"},
    };
    for (const Content& content : contents) {
        SCOPED_TRACE(content.name);
        storeFile(content.bytes);
        EXPECT_EQ(read(), (ReadText{true, content.text}));
    }
}

TEST_F(UserSettingsFile, LongText_IsReadUnchanged)
{
    std::wstring text;
    for (int index = 0; index < 3000; ++index)
        text += itemElement(L"EPSG:" + std::to_wstring(index), L"EPSG:4326", L"測 " + std::to_wstring(index));
    ASSERT_TRUE(write(text));
    EXPECT_EQ(read(), (ReadText{true, text}));
}

TEST_F(UserSettingsFile, FileThatCannotBeOpened_IsNeitherReadNorWritten)
{
    ASSERT_TRUE(write(one));
    const ScopedFault fault({.call = "_wfsopen", .fromThenOn = true});
    EXPECT_EQ(read(), kNothingRead);
    EXPECT_FALSE(write(two));
}

TEST_F(UserSettingsFile, PathWithoutMemory_IsEmpty)
{
    ASSERT_TRUE(write(one));
    const ScopedFault fault({.call = "_wgetenv_s", .fromThenOn = true, .throws = true});
    EXPECT_EQ(path(), L"");
    EXPECT_EQ(read(), kNothingRead);
    EXPECT_FALSE(write(two));
}

TEST_F(UserSettingsFile, FileThatFailsWhileReading_ReadsAsNothing)
{
    ASSERT_TRUE(write(one));
    const ScopedFault fault({.call = "_wfsopen.read"});
    EXPECT_EQ(read(), kNothingRead);
    EXPECT_EQ(Embedded::FaultInjection::failedCalls(), 1U);
}

TEST_F(UserSettingsFile, TextThatCannotBeMeasured_ReadsAsNothing)
{
    ASSERT_TRUE(write(one));
    for (const bool fromThenOn : {false, true}) {
        const ScopedFault fault({.call = "MultiByteToWideChar", .fromThenOn = fromThenOn});
        EXPECT_EQ(read(), kNothingRead);
    }
}

TEST_F(UserSettingsFile, TextThatFailsAfterItsLengthIsKnown_ReadsAsNothing)
{
    ASSERT_TRUE(write(one));
    const ScopedFault fault({.call = "MultiByteToWideChar", .occurrence = 2});
    EXPECT_EQ(read(), kNothingRead);
}

TEST_F(UserSettingsFile, TextWithoutMemory_ReadsAsNothing)
{
    ASSERT_TRUE(write(one));
    const ScopedFault fault({.call = "qeutNewBuffer"});
    EXPECT_EQ(read(), kNothingRead);
    EXPECT_EQ(Embedded::FaultInjection::seen().back(), "qeutNewBuffer") << "no text is converted";
}

TEST_F(UserSettingsFile, ItemThatCannotBeMeasured_KeepsTheEarlierItems)
{
    const ScopedFault fault({.call = "WideCharToMultiByte", .occurrence = 3});
    EXPECT_FALSE(write(one + two));
    Embedded::FaultInjection::disarm();
    EXPECT_EQ(read(), (ReadText{true, one}));
}

TEST_F(UserSettingsFile, ItemThatCannotBeConverted_KeepsTheEarlierItems)
{
    const ScopedFault fault({.call = "WideCharToMultiByte", .occurrence = 4});
    EXPECT_FALSE(write(one + two));
    Embedded::FaultInjection::disarm();
    EXPECT_EQ(read(), (ReadText{true, one}));
}

TEST_F(UserSettingsFile, FailureToWriteALine_SkipsTheLaterLinesAndIsIgnored)
{
    {
        const ScopedFault fault({.call = "_wfsopen.write", .occurrence = 2});
        EXPECT_TRUE(write(one + two + one));
        EXPECT_EQ(Embedded::FaultInjection::failedCalls(), 1U);
    }
    // Closing the file may still write the second line. The third line was never passed to the system.
    EXPECT_THAT(read(), testing::AnyOf(ReadText{true, one}, ReadText{true, one + two}));
}

TEST_F(UserSettingsFile, FailureToWriteALongLine_SkipsTheLaterLines)
{
    const ScopedFault fault({.call = "_wfsopen.write"});
    EXPECT_TRUE(write(std::wstring(200'000, L'x') + one + two));
    EXPECT_EQ(read().text.find(two), std::wstring::npos);
}

TEST_F(UserSettingsFile, ConversionFailureAfterAFailedLine_ReturnsFalse)
{
    Embedded::FaultInjection::watch();
    ASSERT_TRUE(write(one + two));
    const std::vector<std::string> calls = Embedded::FaultInjection::seen();
    const auto line = std::ranges::find(calls, "_wfsopen.write");
    const auto conversion = std::find(line, calls.end(), "WideCharToMultiByte");
    ASSERT_NE(conversion, calls.end());
    const auto place = [&](auto call) { return static_cast<std::size_t>(call - calls.begin()) + 1; };
    const ScopedFault fault({.call = "", .occurrence = place(line), .second = place(conversion)});
    EXPECT_FALSE(write(one + two));
}

TEST_F(UserSettingsFile, FailureToClose_IsIgnored)
{
    ASSERT_TRUE(write(one));
    const ScopedFault fault({.call = "_wfsopen.close", .fromThenOn = true});
    EXPECT_TRUE(write(two));
    EXPECT_TRUE(read().read);
    EXPECT_EQ(Embedded::FaultInjection::failedCalls(), 2U);
}

} // namespace
} // namespace Tests
