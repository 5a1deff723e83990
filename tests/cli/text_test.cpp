// File names, arguments and output keep text of every script unchanged.
#include "command_line_test.h"

namespace Tests {
namespace {

using testing::HasSubstr;

// These have letters of one, two, three and four bytes of UTF-8, and an accent that is a separate character.
const std::string kFolder = "Ελλάδα/測量 🗺";
const std::string kDrawing = kFolder + "/Straße e\u0301 𐍈.qedb";
const std::string kText = "Größe, Ύψος, 高度, 🗺 and 𠀋";

class TextOfEveryScript : public CommandLineTest {
protected:
    TextOfEveryScript() { std::filesystem::create_directories(path(kFolder)); }
};

TEST_F(TextOfEveryScript, ControlCharacters_AreEscapedInMessages)
{
    expectResult(run({"catalog", "show", "x\ny\tz\rw\x01"}), 3, "",
                 "orvelcs: catalog show: x\\ny\\tz\\rw\\x01: the catalog has no such code\n");
}

TEST_F(TextOfEveryScript, DrawingName_IsUsedAndPrinted)
{
    expectResult(run({"new", kDrawing}), 0, kDrawing + ": new drawing, version 33\n", "");
    EXPECT_EQ(files(kFolder), std::vector<std::string>{"Straße e\u0301 𐍈.qedb"});
    expectResult(run({"assign", "EPSG:25832", kDrawing}), 0, kDrawing + ": assigned EPSG:25832\n", "");
    const Json shown = runForJson({"show", kDrawing});
    EXPECT_EQ(shown["file"], kDrawing);
    EXPECT_EQ(shown["code"], "EPSG:25832");
    EXPECT_THAT(run({"show", kDrawing}).output, testing::StartsWith(kDrawing + "\n"));
    EXPECT_EQ(files(kFolder).size(), 1U);
}

TEST_F(TextOfEveryScript, NameOfAMissingDrawing_IsPrinted)
{
    expectResult(run({"show", kDrawing}), 1, "",
                 "orvelcs: show: " + kDrawing + ": eFileNotFound (50): No such file or directory\n");
}

TEST_F(TextOfEveryScript, NamesOfTwoDrawings_AreUsedByConvert)
{
    givenDrawingWith(kDrawing, "EPSG:25832");
    const std::string older = kFolder + "/παλιό.qedb";
    expectResult(run({"convert", kDrawing, "--to", "29", "-o", older}), 0,
                 kDrawing + ": converted to drawing version 29, in " + older + "\n", "");
    EXPECT_EQ(runForJson({"show", older})["drawingVersion"], 29);
}

TEST_F(TextOfEveryScript, UserDefinedCode_IsStoredAndPrinted)
{
    const std::string code = "ΓΗ:Straße-測量-🗺";
    const std::string definition = kFolder + "/定義.txt";
    given(definition, "+proj=longlat +datum=WGS84 +no_defs +type=crs");
    givenDrawing("a.qedb");
    expectResult(run({"assign", "--definition", definition, "--code", code, "a.qedb"}), 0,
                 "a.qedb: assigned " + code + "\n", "");
    EXPECT_EQ(runForJson({"show", "a.qedb"})["code"], code);
    EXPECT_THAT(run({"show", "a.qedb"}).output, HasSubstr(code + "\n"));
    EXPECT_THAT(contents("a.qedb"), HasSubstr(code));
}

TEST_F(TextOfEveryScript, DefinitionName_IsStoredAndPrinted)
{
    const std::string name = "Werksnetz Größe 高度 🗺";
    given("definition.txt", R"(GEOGCS[")" + name + R"(",DATUM["WGS_1984",SPHEROID["WGS 84",6378137,298.257223563]],)" +
                                R"(PRIMEM["Greenwich",0],UNIT["degree",0.0174532925199433]])");
    givenDrawing("a.qedb");
    ASSERT_EQ(run({"assign", "--definition", "definition.txt", "--code", "MINE:1", "a.qedb"}).status, 0);
    EXPECT_EQ(runForJson({"show", "a.qedb"})["name"], name);
    EXPECT_THAT(run({"show", "a.qedb", "--wkt"}).output, HasSubstr(name));
}

TEST_F(TextOfEveryScript, UnknownCode_IsPrinted)
{
    givenDrawing("a.qedb");
    expectResult(run({"assign", "ΓΗ:🗺", "a.qedb"}), 1, "", HasSubstr("ΓΗ:🗺"));
}

TEST_F(TextOfEveryScript, ItemNameAndNote_AreStoredInADrawingAndRead)
{
    givenDrawing(kDrawing);
    ASSERT_EQ(run({"config", "add", "--source", "ΓΗ:1", "--target", "測:2", "--name", "Straße 🗺", "--type", "path",
                   "--note", kText, "--drawing", kDrawing, "-q", "--force"})
                  .status,
              0);
    const std::string element = configurationItem("ΓΗ:1", "測:2", "Straße 🗺", 1, kText);
    const ProgramResult stored = run({"config", "get", "--drawing", kDrawing});
    expectResult(stored, 0, element, "");
    const ProgramResult items = run({"config", "items", "--json"}, stored.output);
    EXPECT_EQ(Json::parse(items.output).at(0)["note"], kText);
    expectResult(run({"config", "items"}, stored.output), 0, "ΓΗ:1 to 測:2: Straße 🗺 (path), " + kText + "\n",
                 "");
}

TEST_F(TextOfEveryScript, UserFolderName_IsUsed)
{
    const std::string folder = path(kFolder).string();
    const std::string element = configurationItem("A", "B", "n", 1, kText);
    ASSERT_EQ(
        run({"config", "set", "-", "--force", "--user", "--user-dir", folder, "--registry", path("registry").string()},
            element)
            .status,
        0);
    EXPECT_THAT(files(kFolder), testing::ElementsAre(kSettingsFile, kLockFile));
    EXPECT_EQ(contents(kFolder + "/" + kSettingsFile), element + "\r\n");
    expectResult(run({"config", "get", "--user", "--user-dir", folder}), 0, element, "");
}

TEST_F(TextOfEveryScript, BlockFileName_IsUsed)
{
    const std::string block = kFolder + "/bloc é.bin";
    ASSERT_EQ(run({"encode", "EPSG:4326", "--drawing-version", "33", "-q", "-o", block}).status, 0);
    EXPECT_EQ(runForJson({"decode", block}).at(0)["code"], "EPSG:4326");
}

TEST_F(TextOfEveryScript, WrongArguments_ArePrintedUnchanged)
{
    expectWrongUsage(run({"show", kDrawing, "--größe"}), "orvelcs: show: --größe: no such option");
    expectWrongUsage(run({"new", "--drawing-version", "測", "a.qedb"}),
                     "orvelcs: new: --drawing-version: expected a whole number from 21 to 33, found 測");
}

TEST_F(TextOfEveryScript, SpacesQuotesAndBackslashes_StayInOneArgument)
{
    givenDrawing("a.qedb");
    for (const std::string note :
         {"two words", "\"quoted\"", "ends with \\", "\\\"", "a\\\\\"b c\\\\", "\ttab", "%PATH%", "^&|<>", "'", "*"}) {
        ASSERT_EQ(run({"config", "set", "-", "--drawing", "a.qedb"}, "").status, 0);
        ASSERT_EQ(run({"config", "add", "--source", "A", "--target", "B", "--name", "n", "--type", "path", "-q",
                       "--force", "--note", note, "--drawing", "a.qedb"})
                      .status,
                  0)
            << note;
        const std::string text = run({"config", "get", "--drawing", "a.qedb"}).output;
        const ProgramResult items = run({"config", "items", "--json"}, text);
        EXPECT_EQ(Json::parse(items.output).at(0)["note"], note) << text;
    }
}

} // namespace
} // namespace Tests
