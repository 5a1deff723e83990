// config: the stored choice of transformations, in drawings and for the user.
#include "command_line_test.h"

namespace Tests {
namespace {

using testing::HasSubstr;

constexpr const char* kItem = "<Item><Version>1.0</Version><SourceCs>EPSG:4275</SourceCs><TargetCs>EPSG:4326</TargetCs>"
                              "<Name>NTF to WGS 84 (1)</Name><Type>2</Type><Note></Note></Item>";
constexpr const char* kOther = "<Item><Version>1.0</Version><SourceCs>A</SourceCs><TargetCs>B</TargetCs>"
                               "<Name>é 測 \xF0\x9F\x8C\x90</Name><Type>1</Type><Note>n</Note></Item>";
constexpr const char* kSettings = "TransformationSetting.xml";
const Json kOneEvent = {{{"event", "transformationChanged"}, {"name", nullptr}}};

class ConfigCommand : public CommandLineTest {
protected:
    /// A run with a user whose files are in the test's folder.
    std::vector<std::string> asUser(std::vector<std::string> arguments) const
    {
        arguments.insert(arguments.end(), {"--user-dir", path("").string(), "--registry", path("registry").string()});
        return arguments;
    }
    ProgramResult runAsUser(std::vector<std::string> arguments, const std::string& input = "") const
    {
        return run(asUser(std::move(arguments)), input);
    }
    std::string drawingText(const std::string& name) const { return run({"config", "get", "--drawing", name}).output; }
};

TEST_F(ConfigCommand, Set_StoresTheTextInADrawing)
{
    givenDrawing("a.qedb");
    given("text", std::string(kItem) + "\n rest");
    EXPECT_EQ(runForJson({"config", "set", "text", "--drawing", "a.qedb"}),
              (Json{{"result", true}, {"events", kOneEvent}}));
    expectResult(run({"config", "get", "--drawing", "a.qedb"}), 0, std::string(kItem) + "\n rest", "");
}

TEST_F(ConfigCommand, Set_TakesTheTextFromStandardInput)
{
    givenDrawing("a.qedb");
    expectResult(run({"config", "set", "-", "--drawing", "a.qedb"}, kItem), 0, "a.qedb: configuration stored\n", "");
    EXPECT_EQ(drawingText("a.qedb"), kItem);
}

TEST_F(ConfigCommand, Set_PassesOverAByteOrderMark)
{
    givenDrawing("a.qedb");
    given("text", std::string("\xEF\xBB\xBF") + kItem);
    EXPECT_EQ(run({"config", "set", "text", "--drawing", "a.qedb"}).status, 0);
    EXPECT_EQ(drawingText("a.qedb"), kItem);
}

TEST_F(ConfigCommand, Set_WritesTheUsersFileWithALineForEachItem)
{
    EXPECT_EQ(runAsUser({"config", "set", "-", "--user", "-q"}, std::string(kItem) + kOther).status, 0);
    EXPECT_EQ(contents(kSettings), std::string(kItem) + "\r\n" + kOther + "\r\n");
    expectResult(runAsUser({"config", "get", "--user"}), 0, std::string(kItem) + kOther, "");
}

TEST_F(ConfigCommand, Set_TellsWhatTheUsersFileDoesNotKeep)
{
    EXPECT_THAT(runAsUser({"config", "set", "-", "--user"}, std::string(kItem) + "\n").errors,
                HasSubstr("note: what follows the last </Item> is not kept there\n"));
}

TEST_F(ConfigCommand, Set_RefusesWhatIsNoText)
{
    givenDrawing("a.qedb");
    const std::string before = contents("a.qedb");
    expectResult(run({"config", "set", "-", "--drawing", "a.qedb"}, "a\xFF"), 1, "",
                 "orvelcs: config set: standard input: is not UTF-8\n");
    expectResult(run({"config", "set", "-", "--drawing", "a.qedb"}, std::string("a\0b", 3)), 1, "",
                 "orvelcs: config set: standard input: holds a NUL character\n");
    EXPECT_EQ(contents("a.qedb"), before);
}

TEST_F(ConfigCommand, Set_MakesTheFolderForTheUser)
{
    expectResult(run({"config", "set", "-", "--user", "--user-dir", "new/folder", "-q"}, kItem), 0, "", "");
    EXPECT_EQ(contents(std::string("new/folder/") + kSettings), std::string(kItem) + "\r\n");
}

TEST_F(ConfigCommand, Set_WhereTheFolderForTheUserCannotBeMade_NamesIt)
{
    given("file", "");
    const ProgramResult result = run({"config", "set", "-", "--user", "--user-dir", "file/folder", "--json"}, kItem);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(Json::parse(result.output)["result"], false);
    EXPECT_THAT(result.errors, HasSubstr("folder: cannot be made: "));
    EXPECT_EQ(files(), std::vector<std::string>{"file"});
}

TEST_F(ConfigCommand, Set_LeavesTheSettingsFileAndTheLockFileAlone)
{
    ASSERT_EQ(run({"config", "set", "-", "--user", "--user-dir", path("").string()}, kItem).status, 0);
    ASSERT_EQ(run({"config", "set", "-", "--user", "--user-dir", path("").string()}, kOther).status, 0);
    EXPECT_EQ(files(), (std::vector<std::string>{kSettings, "orvelcs.lock"}));
}

TEST_F(ConfigCommand, Set_OfATextThatDoesNotComeBackWhole_LeavesTheOldOne)
{
    ASSERT_EQ(runAsUser({"config", "set", "-", "--user"}, kItem).status, 0);
    const ProgramResult result = runAsUser({"config", "set", "-", "--user", "--json"}, "<Item>a\x1A</Item>");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(Json::parse(result.output)["result"], false);
    EXPECT_THAT(result.errors, HasSubstr(std::string(kSettings) + ": was not written to its end\n"));
    EXPECT_EQ(contents(kSettings), std::string(kItem) + "\r\n");
}

TEST_F(ConfigCommand, Set_AfterOneThatWasKilled_RemovesWhatItLeft)
{
    std::filesystem::create_directory(path(".orvelcs-new"));
    given(std::string(".orvelcs-new/") + kSettings, "<Item>");
    ASSERT_EQ(runAsUser({"config", "set", "-", "--user"}, kItem).status, 0);
    EXPECT_EQ(contents(kSettings), std::string(kItem) + "\r\n");
    EXPECT_EQ(files(), (std::vector<std::string>{kSettings, "orvelcs.lock"}));
}

TEST_F(ConfigCommand, SettingsFileThatIsAFolder_IsNamed)
{
    std::filesystem::create_directory(path(kSettings));
    EXPECT_THAT(runAsUser({"config", "get", "--user"}).errors, HasSubstr("is a folder\n"));
    const ProgramResult result = runAsUser({"config", "set", "-", "--user"}, kItem);
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr("is a folder\n"));
}

TEST_F(ConfigCommand, SettingsFileThatIsNoText_IsNotTakenForOneAndNotChanged)
{
    given(kSettings, "\x7F"
                     "ELF\xFF\xFE");
    const ProgramResult result = runAsUser({"config", "get", "--user"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr("is not UTF-8\n"));
    EXPECT_EQ(runAsUser({"config", "add", "--source", "A", "--target", "B", "--name", "n", "--type", "path", "--user"})
                  .status,
              1);
    EXPECT_EQ(contents(kSettings), "\x7F"
                                   "ELF\xFF\xFE");
}

TEST_F(ConfigCommand, Get_WithoutAConfiguration_IsStatusThree)
{
    givenDrawing("a.qedb");
    expectResult(run({"config", "get", "--drawing", "a.qedb"}), 3, "",
                 "orvelcs: config get: a.qedb: there is no configuration\n");
    EXPECT_EQ(runForJson({"config", "get", "--drawing", "a.qedb"}, 3), Json(nullptr));
    EXPECT_EQ(runAsUser({"config", "get", "--user"}).status, 3);
    EXPECT_EQ(runAsUser({"config", "get", "--registry-store"}).status, 3);
    EXPECT_EQ(files(), std::vector<std::string>{"a.qedb"}) << "nothing is made by asking";
}

TEST_F(ConfigCommand, Get_AsJson_IsTheText)
{
    givenDrawing("a.qedb");
    ASSERT_EQ(run({"config", "set", "-", "--drawing", "a.qedb"}, kOther).status, 0);
    EXPECT_EQ(runForJson({"config", "get", "--drawing", "a.qedb"}), (Json{{"text", kOther}}));
}

TEST_F(ConfigCommand, Clear_LeavesTheDrawingAnEmptyText)
{
    givenDrawing("a.qedb");
    ASSERT_EQ(run({"config", "set", "-", "--drawing", "a.qedb"}, kItem).status, 0);
    EXPECT_EQ(runForJson({"config", "clear", "--drawing", "a.qedb"}), (Json{{"result", true}, {"events", kOneEvent}}));
    expectResult(run({"config", "get", "--drawing", "a.qedb"}), 0, "", "");
}

TEST_F(ConfigCommand, Clear_OfTheUser_EmptiesTheRegistryAndSaysWhatStays)
{
    ASSERT_EQ(runAsUser({"config", "set", "-", "--user"}, kItem).status, 0);
    const ProgramResult result = runAsUser({"config", "clear", "--user"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "registry store: emptied\n");
    EXPECT_THAT(result.errors, HasSubstr("note: the settings file stays as it is and is still read\n"));
    EXPECT_EQ(runAsUser({"config", "get", "--user"}).output, kItem);
    expectResult(runAsUser({"config", "get", "--registry-store"}), 0, "", "");
}

TEST_F(ConfigCommand, Items_AreWhatTheModuleReads)
{
    const std::string text = std::string("<Items>") + kItem + kOther + "</Items>";
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
                              {"xml", kOther}}));
}

TEST_F(ConfigCommand, Items_AreALineEach)
{
    given("text", std::string(kItem) + "x</Item>" + kOther);
    expectResult(run({"config", "items", "text"}), 0,
                 "EPSG:4275 to EPSG:4326: NTF to WGS 84 (1) (transformation)\n"
                 "incomplete:  to : \n"
                 "A to B: é 測 \xF0\x9F\x8C\x90 (path), n\n",
                 "");
    expectResult(run({"config", "items"}), 0, "", "");
}

TEST_F(ConfigCommand, Add_PutsAnItemBehindTheOthers)
{
    givenDrawing("a.qedb");
    ASSERT_EQ(run({"config", "set", "-", "--drawing", "a.qedb"}, std::string(kOther) + " end").status, 0);
    expectResult(run({"config", "add", "--source", "EPSG:4275", "--target", "EPSG:4326", "--name", "NTF to WGS 84 (1)",
                      "--type", "transformation", "--drawing", "a.qedb"}),
                 0, "a.qedb: item added\n", "");
    EXPECT_EQ(drawingText("a.qedb"), std::string(kOther) + kItem + " end");
}

TEST_F(ConfigCommand, Add_BeginsAConfiguration)
{
    EXPECT_EQ(runForJson(asUser({"config", "add", "--source", "EPSG:4275", "--target", "EPSG:4326", "--name",
                                 "NTF to WGS 84 (1)", "--type", "transformation", "--user"})),
              (Json{{"result", true}, {"events", kOneEvent}}));
    EXPECT_EQ(contents(kSettings), std::string(kItem) + "\r\n");
}

TEST_F(ConfigCommand, Add_NotesANameThatTheCatalogLacksOrHasTwice)
{
    givenDrawing("a.qedb");
    const std::vector<std::string> common = {"config", "add", "--source", "A", "--target", "B", "--drawing", "a.qedb"};
    auto unknown = common;
    unknown.insert(unknown.end(), {"--name", "No such thing", "--type", "path"});
    const ProgramResult result = run(unknown);
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.errors, HasSubstr("No such thing: note: the catalog has no path of this name\n"));
    auto ambiguous = common;
    ambiguous.insert(ambiguous.end(), {"--name", "Ballpark geographic offset", "--type", "transformation"});
    EXPECT_EQ(run(ambiguous).status, 0);
}

TEST_F(ConfigCommand, Add_RefusesAValueThatWouldCutTheItem)
{
    givenDrawing("a.qedb");
    const ProgramResult result = run({"config", "add", "--source", "A", "--target", "B", "--name", "n</Item>", "--type",
                                      "path", "--drawing", "a.qedb"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(run({"config", "get", "--drawing", "a.qedb"}).status, 3);
}

TEST_F(ConfigCommand, WrongUsage_IsToldPlainly)
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

TEST_F(ConfigCommand, StandardInput_IsNotReadTwice)
{
    expectWrongUsage(run({"config", "set", "-", "--drawing", "-"}, kItem),
                     "orvelcs: config set: -: cannot be both the text and the drawing");
    expectWrongUsage(
        run({"config", "add", "--source", "A", "--target", "B", "--name", "n", "--type", "path", "--drawing", "-"}),
        "orvelcs: config add: --drawing: a drawing from standard input is read once; name a file");
}

TEST_F(ConfigCommand, DrawingThatCannotBeLoaded_IsNamed)
{
    EXPECT_EQ(run({"config", "get", "--drawing", "missing.qedb"}).status, 1);
    const ProgramResult result = run({"config", "set", "-", "--drawing", "missing.qedb", "--json"}, kItem);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(Json::parse(result.output), (Json{{"result", false}, {"events", Json::array()}}));
}

} // namespace
} // namespace Tests
