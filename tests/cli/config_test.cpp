// The transformation configuration of drawings and of the user.
#include "command_line_test.h"

namespace Tests {
namespace {

using testing::HasSubstr;

const std::string kItem = configurationItem("EPSG:4275", "EPSG:4326", "NTF to WGS 84 (1)", 2);
/// The catalog has nothing of it.
const std::string kUnknown = configurationItem("A", "B", "é 測 \xF0\x9F\x8C\x90", 1, "n");
const Json kOneEvent = Json::array({event("transformationChanged", nullptr)});

class ConfigCommand : public CommandLineTest {
protected:
    /// Adds the options that place the user's files into the temporary folder.
    Arguments withUserFolder(const Arguments& arguments) const
    {
        return concatenate(arguments, {"--user-dir", path("").string(), "--registry", path("registry").string()});
    }
    ProgramResult runAsUser(const Arguments& arguments, const std::string& input = "") const
    {
        return run(withUserFolder(arguments), input);
    }
    std::string configurationOf(const std::string& drawing) const
    {
        return run({"config", "get", "--drawing", drawing}).output;
    }
};

TEST_F(ConfigCommand, Set_StoresTheTextInADrawing)
{
    givenDrawing("a.qedb");
    given("text", kItem + "\n rest");
    EXPECT_EQ(runForJson({"config", "set", "text", "--drawing", "a.qedb"}),
              (Json{{"result", true}, {"events", kOneEvent}}));
    expectResult(run({"config", "get", "--drawing", "a.qedb"}), 0, kItem + "\n rest", "");
}

TEST_F(ConfigCommand, SetWithDash_ReadsStandardInput)
{
    givenDrawing("a.qedb");
    expectResult(run({"config", "set", "-", "--drawing", "a.qedb"}, kItem), 0, "a.qedb: configuration stored\n", "");
    EXPECT_EQ(configurationOf("a.qedb"), kItem);
}

TEST_F(ConfigCommand, Set_SkipsAByteOrderMark)
{
    givenDrawing("a.qedb");
    given("text", "\xEF\xBB\xBF" + kItem);
    EXPECT_EQ(run({"config", "set", "text", "--drawing", "a.qedb"}).status, 0);
    EXPECT_EQ(configurationOf("a.qedb"), kItem);
}

TEST_F(ConfigCommand, SetForTheUser_WritesALineForEachItem)
{
    EXPECT_EQ(runAsUser({"config", "set", "--force", "-", "--user", "-q"}, kItem + kUnknown).status, 0);
    EXPECT_EQ(contents(kSettingsFile), kItem + "\r\n" + kUnknown + "\r\n");
    expectResult(runAsUser({"config", "get", "--user"}), 0, kItem + kUnknown, "");
}

TEST_F(ConfigCommand, SetForTheUser_NotesTextThatIsNotStored)
{
    EXPECT_THAT(runAsUser({"config", "set", "-", "--user"}, kItem + "\n").errors,
                HasSubstr("note: what follows the last </Item> is not kept there\n"));
}

TEST_F(ConfigCommand, Set_RefusesBytesThatAreNotText)
{
    givenDrawing("a.qedb");
    const std::string before = contents("a.qedb");
    expectResult(run({"config", "set", "-", "--drawing", "a.qedb"}, "a\xFF"), 1, "",
                 "orvelcs: config set: standard input: is not UTF-8\n");
    expectResult(run({"config", "set", "-", "--drawing", "a.qedb"}, std::string("a\0b", 3)), 1, "",
                 "orvelcs: config set: standard input: holds a NUL character\n");
    EXPECT_EQ(contents("a.qedb"), before);
}

TEST_F(ConfigCommand, SetForTheUser_CreatesTheFolder)
{
    expectResult(run({"config", "set", "-", "--user", "--user-dir", "new/folder", "-q"}, kItem), 0, "", "");
    EXPECT_EQ(contents(std::string("new/folder/") + kSettingsFile), kItem + "\r\n");
}

TEST_F(ConfigCommand, SetForTheUser_NamesAFolderThatCannotBeCreated)
{
    given("file", "");
    const ProgramResult result = run({"config", "set", "-", "--user", "--user-dir", "file/folder", "--json"}, kItem);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(Json::parse(result.output)["result"], false);
    EXPECT_THAT(result.errors, HasSubstr("folder: cannot be made: "));
    EXPECT_EQ(files(), std::vector<std::string>{"file"});
}

TEST_F(ConfigCommand, SetForTheUser_CreatesOnlyTheSettingsFileAndTheLockFile)
{
    ASSERT_EQ(run({"config", "set", "-", "--user", "--user-dir", path("").string()}, kItem).status, 0);
    ASSERT_EQ(run({"config", "set", "--force", "-", "--user", "--user-dir", path("").string()}, kUnknown).status, 0);
    EXPECT_EQ(files(), (std::vector<std::string>{kSettingsFile, kLockFile}));
}

TEST_F(ConfigCommand, TextThatCannotBeStoredWhole_LeavesTheOldSettings)
{
    ASSERT_EQ(runAsUser({"config", "set", "-", "--user"}, kItem).status, 0);
    const ProgramResult result = runAsUser({"config", "set", "-", "--user", "--json"}, "<Item>a\x1A</Item>");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(Json::parse(result.output)["result"], false);
    EXPECT_THAT(result.errors, HasSubstr(std::string(kSettingsFile) + ": was not written to its end\n"));
    EXPECT_EQ(contents(kSettingsFile), kItem + "\r\n");
}

TEST_F(ConfigCommand, SetAfterAKilledProcess_RemovesItsTemporaryFolder)
{
    std::filesystem::create_directory(path(".orvelcs-new"));
    given(std::string(".orvelcs-new/") + kSettingsFile, "<Item>");
    ASSERT_EQ(runAsUser({"config", "set", "-", "--user"}, kItem).status, 0);
    EXPECT_EQ(contents(kSettingsFile), kItem + "\r\n");
    EXPECT_EQ(files(), (std::vector<std::string>{kSettingsFile, kLockFile}));
}

TEST_F(ConfigCommand, SettingsFileThatIsAFolder_IsRefused)
{
    std::filesystem::create_directory(path(kSettingsFile));
    EXPECT_THAT(runAsUser({"config", "get", "--user"}).errors, HasSubstr("is a folder\n"));
    const ProgramResult result = runAsUser({"config", "set", "-", "--user"}, kItem);
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr("is a folder\n"));
}

TEST_F(ConfigCommand, SettingsFileThatIsNotText_IsRefusedAndNotChanged)
{
    given(kSettingsFile, "\x7F"
                         "ELF\xFF\xFE");
    expectResult(runAsUser({"config", "get", "--user"}), 1, "", HasSubstr("is not UTF-8\n"));
    EXPECT_EQ(runAsUser({"config", "add", "--source", "A", "--target", "B", "--name", "n", "--type", "path", "--user"})
                  .status,
              1);
    EXPECT_EQ(contents(kSettingsFile), "\x7F"
                                       "ELF\xFF\xFE");
}

TEST_F(ConfigCommand, GetWithoutAConfiguration_ExitsWithStatusThree)
{
    givenDrawing("a.qedb");
    expectResult(run({"config", "get", "--drawing", "a.qedb"}), 3, "",
                 "orvelcs: config get: a.qedb: there is no configuration\n");
    EXPECT_EQ(runForJson({"config", "get", "--drawing", "a.qedb"}, 3), Json(nullptr));
    EXPECT_EQ(runAsUser({"config", "get", "--user"}).status, 3);
    EXPECT_EQ(runAsUser({"config", "get", "--registry-store"}).status, 3);
    EXPECT_EQ(files(), std::vector<std::string>{"a.qedb"}) << "reading creates no file";
}

TEST_F(ConfigCommand, GetAsJson_PrintsTheText)
{
    givenDrawing("a.qedb");
    ASSERT_EQ(run({"config", "set", "--force", "-", "--drawing", "a.qedb"}, kUnknown).status, 0);
    EXPECT_EQ(runForJson({"config", "get", "--drawing", "a.qedb"}), (Json{{"text", kUnknown}}));
}

TEST_F(ConfigCommand, ClearOfADrawing_StoresAnEmptyText)
{
    givenDrawing("a.qedb");
    ASSERT_EQ(run({"config", "set", "-", "--drawing", "a.qedb"}, kItem).status, 0);
    EXPECT_EQ(runForJson({"config", "clear", "--drawing", "a.qedb"}), (Json{{"result", true}, {"events", kOneEvent}}));
    expectResult(run({"config", "get", "--drawing", "a.qedb"}), 0, "", "");
}

TEST_F(ConfigCommand, ClearForTheUser_EmptiesTheRegistryAndNotesTheSettingsFile)
{
    ASSERT_EQ(runAsUser({"config", "set", "-", "--user"}, kItem).status, 0);
    expectResult(runAsUser({"config", "clear", "--user"}), 0, "registry store: emptied\n",
                 HasSubstr("note: the settings file stays as it is and is still read\n"));
    EXPECT_EQ(runAsUser({"config", "get", "--user"}).output, kItem);
    expectResult(runAsUser({"config", "get", "--registry-store"}), 0, "", "");
}

TEST_F(ConfigCommand, Items_AreParsedAsTheModuleParsesThem)
{
    const std::string text = "<Items>" + kItem + kUnknown + "</Items>";
    const ProgramResult result = run({"config", "items", "--json"}, text);
    ASSERT_EQ(result.status, 0);
    const Json items = Json::parse(result.output);
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[0], (Json{{"sourceCs", ""},
                              {"targetCs", ""},
                              {"name", ""},
                              {"type", 0},
                              {"note", ""},
                              {"version", "1.0"},
                              {"xml", ""}}));
    EXPECT_EQ(items[1], (Json{{"sourceCs", "A"},
                              {"targetCs", "B"},
                              {"name", "é 測 \xF0\x9F\x8C\x90"},
                              {"type", 1},
                              {"note", "n"},
                              {"version", "1.0"},
                              {"xml", kUnknown}}));
}

TEST_F(ConfigCommand, Items_ArePrintedOnALineEach)
{
    given("text", kItem + "x</Item>" + kUnknown);
    expectResult(run({"config", "items", "text"}), 0,
                 "EPSG:4275 to EPSG:4326: NTF to WGS 84 (1) (transformation)\n"
                 "incomplete:  to : \n"
                 "A to B: é 測 \xF0\x9F\x8C\x90 (path), n\n",
                 "");
    expectResult(run({"config", "items"}), 0, "", "");
}

TEST_F(ConfigCommand, Add_AppendsTheItemToTheOthers)
{
    givenDrawing("a.qedb");
    ASSERT_EQ(run({"config", "set", "--force", "-", "--drawing", "a.qedb"}, kUnknown + " end").status, 0);
    expectResult(run({"config", "add", "--source", "EPSG:4275", "--target", "EPSG:4326", "--name", "NTF to WGS 84 (1)",
                      "--type", "transformation", "--drawing", "a.qedb"}),
                 0, "a.qedb: item added\n", "");
    EXPECT_EQ(configurationOf("a.qedb"), kUnknown + kItem + " end");
}

TEST_F(ConfigCommand, AddWithoutAConfiguration_CreatesOne)
{
    EXPECT_EQ(runForJson(withUserFolder({"config", "add", "--source", "EPSG:4275", "--target", "EPSG:4326", "--name",
                                         "NTF to WGS 84 (1)", "--type", "transformation", "--user"})),
              (Json{{"result", true}, {"events", kOneEvent}}));
    EXPECT_EQ(contents(kSettingsFile), kItem + "\r\n");
}

TEST_F(ConfigCommand, ForcedAdd_NotesANameThatTheCatalogLacks)
{
    givenDrawing("a.qedb");
    const ProgramResult result = run({"config", "add", "--source", "A", "--target", "B", "--name", "No such thing",
                                      "--type", "path", "--force", "--drawing", "a.qedb"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.errors, HasSubstr("No such thing: note: the catalog has no path of this name\n"));
}

TEST_F(ConfigCommand, Add_RefusesAValueThatContainsAnEndTag)
{
    givenDrawing("a.qedb");
    const ProgramResult result = run({"config", "add", "--source", "A", "--target", "B", "--name", "n</Item>", "--type",
                                      "path", "--drawing", "a.qedb"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(run({"config", "get", "--drawing", "a.qedb"}).status, 3);
}

TEST_F(ConfigCommand, InvalidArguments_AreWrongUsage)
{
    givenDrawing("a.qedb");
    expectWrongUsage(run({"config", "get"}), "orvelcs: config get: --drawing: or --user is required: whose "
                                             "configuration?");
    expectWrongUsage(run({"config", "get", "--user", "--drawing", "a.qedb"}),
                     "orvelcs: config get: --drawing: more than one store is named; name one");
    expectWrongUsage(
        run({"config", "add", "--source", "A", "--target", "B", "--name", "n", "--type", "map", "--drawing", "a.qedb"}),
        "orvelcs: config add: --type: expected path or transformation, found map");
    expectWrongUsage(run({"config", "get", "--user", "--user-dir", std::string(260, 'x')}),
                     "orvelcs: config get: --user-dir: is longer than 259 characters");
    expectWrongUsage(run({"config", "set", "", "--drawing", "a.qedb"}), "orvelcs: config set: TEXTFILE: is empty");
}

TEST_F(ConfigCommand, StandardInputForTwoArguments_IsWrongUsage)
{
    expectWrongUsage(run({"config", "set", "-", "--drawing", "-"}, kItem),
                     "orvelcs: config set: -: cannot be both the text and the drawing");
    expectWrongUsage(
        run({"config", "add", "--source", "A", "--target", "B", "--name", "n", "--type", "path", "--drawing", "-"}),
        "orvelcs: config add: --drawing: a drawing from standard input is read once; name a file");
}

TEST_F(ConfigCommand, MissingDrawing_Fails)
{
    EXPECT_EQ(run({"config", "get", "--drawing", "missing.qedb"}).status, 1);
    const ProgramResult result = run({"config", "set", "-", "--drawing", "missing.qedb", "--json"}, kItem);
    EXPECT_EQ(result.status, 1);
    const Json json = Json::parse(result.output);
    EXPECT_EQ(json["result"], false);
    EXPECT_EQ(json["events"], Json::array());
    EXPECT_EQ(errorLine(json["error"]), result.errors);
}

} // namespace
} // namespace Tests
