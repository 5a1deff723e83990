#include "command_line_test.h"

namespace Tests {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class CheckCommand : public CommandLineTest {
protected:
    void givenDamagedDrawing(const std::string& name) const
    {
        givenDrawingWith(name, "EPSG:25832");
        edit(name, "UPDATE fields SET value = 'nothing' WHERE field = 'coordinate system'");
    }
};

TEST_F(CheckCommand, SoundDrawing_IsReportedAsSound)
{
    givenDrawingWith("a.qedb", "EPSG:25832");
    expectResult(run({"check", "a.qedb"}), 0, "a.qedb: no fault was found\n", "");
    expectResult(run({"check", "-q", "a.qedb"}), 0, "", "");
    EXPECT_EQ(runForJson({"check", "a.qedb"}),
              Json({{"file", "a.qedb"}, {"ok", true}, {"faults", Json::array()}, {"salvage", nullptr}}));
}

TEST_F(CheckCommand, DamagedDrawing_IsReportedWithEachPlaceAndNotChanged)
{
    givenDamagedDrawing("a.qedb");
    const std::string before = contents("a.qedb");
    const ProgramResult result = run({"check", "a.qedb"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, HasSubstr("orvelcs: check: a.qedb: page "));
    EXPECT_THAT(result.errors,
                HasSubstr("orvelcs: check: a.qedb: table fields: the row of 6 is not as it was written\n"));
    const Json json = runForJson({"check", "a.qedb"}, 1);
    EXPECT_EQ(json["ok"], false);
    EXPECT_THAT(json["faults"], testing::Contains(Json({{"place", "table fields"},
                                                        {"message", "the row of 6 is not as it was written"}})));
    EXPECT_EQ(contents("a.qedb"), before);
}

TEST_F(CheckCommand, OtherCommands_FindOnlyDamageInWhatTheyRead)
{
    givenDamagedDrawing("a.qedb");
    const std::string fault = "eFileDamaged (51): table fields: the row of 6 is not as it was written\n";
    expectResult(run({"show", "a.qedb"}), 1, "", "orvelcs: show: a.qedb: " + fault);
    expectResult(run({"convert", "a.qedb", "--to", "29"}), 1, "", "orvelcs: convert: a.qedb: " + fault);
    expectResult(run({"config", "clear", "-q", "--drawing", "a.qedb"}), 0, "", "");
}

TEST_F(CheckCommand, FileThatIsNotADrawing_IsRefused)
{
    given("a.qedb", "no drawing");
    expectResult(run({"check", "a.qedb"}), 1, "",
                 "orvelcs: check: a.qedb: eFileDamaged (51): not a drawing file: it is not an SQLite database\n");
    EXPECT_EQ(runForJson({"check", "missing.qedb"}, 1)["result"], 50);
}

TEST_F(CheckCommand, Batch_ReportsEachDrawing)
{
    givenDrawing("a.qedb");
    givenDamagedDrawing("b.qedb");
    const Json json = runForJson({"check", "a.qedb", "b.qedb"}, 1);
    ASSERT_EQ(json.size(), 2U);
    EXPECT_EQ(json[0]["ok"], true);
    EXPECT_EQ(json[1]["ok"], false);
}

TEST_F(CheckCommand, Salvage_SavesReadableObjectsAndListsTheOthers)
{
    givenDamagedDrawing("a.qedb");
    const std::string before = contents("a.qedb");
    const ProgramResult result = run({"check", "a.qedb", "--salvage", "b.qedb"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "b.qedb: 5 objects saved, 1 lost\n"
                             "  lost: 6 QeDbGeoData: table fields: the row of 6 is not as it was written\n");
    EXPECT_EQ(run({"check", "b.qedb"}).status, 0);
    EXPECT_EQ(runForJson({"show", "b.qedb"}, 3)["drawingVersion"], 33);
    EXPECT_EQ(contents("a.qedb"), before);
    const Json json = runForJson({"check", "a.qedb", "--salvage", "c.qedb"}, 1);
    EXPECT_EQ(json["salvage"],
              Json({{"file", "c.qedb"},
                    {"objects", 5},
                    {"lost", Json::array({{{"handle", "6"},
                                           {"class", "QeDbGeoData"},
                                           {"reason", "table fields: the row of 6 is not as it was written"}}})}}));
}

TEST_F(CheckCommand, SalvageIntoAnExistingFile_IsRefused)
{
    givenDamagedDrawing("a.qedb");
    given("b.qedb", "mine");
    EXPECT_THAT(run({"check", "-q", "a.qedb", "--salvage", "b.qedb"}).errors,
                HasSubstr("orvelcs: check: b.qedb: eFileExists (57): the file exists already\n"));
    EXPECT_EQ(contents("b.qedb"), "mine");
}

TEST_F(CheckCommand, MissingOrConflictingArguments_AreWrongUsage)
{
    expectWrongUsage(run({"check"}), "orvelcs: check: FILE: is required");
    expectWrongUsage(run({"check", "-"}), "orvelcs: check: -: a drawing is checked in its file");
    expectWrongUsage(run({"check", "a", "b", "--salvage", "c"}),
                     "orvelcs: check: --salvage: saves one drawing, not several");
    expectWrongUsage(run({"check", "a", "--salvage", "-"}), "orvelcs: check: --salvage: needs the name of a new file");
}

using DumpCommand = CheckCommand;

TEST_F(DumpCommand, Drawing_IsPrintedWhole)
{
    givenDrawing("a.qedb");
    const std::string text = "drawing version 33\n"
                             "next handle 5\n"
                             "object 1 QeDbDictionary\n"
                             "object 2 QeDbRegAppTable\n"
                             "object 3 QeDbBlockTable\n"
                             "  record 4\n"
                             "object 4 QeDbBlockTableRecord of 3\n"
                             "  name \"*Model_Space\"\n";
    expectResult(run({"dump", "a.qedb"}), 0, text, "");
    expectResult(run({"dump", "-"}, contents("a.qedb")), 0, text, "");
    EXPECT_EQ(runForJson({"dump", "a.qedb"}), Json({{"file", "a.qedb"}, {"text", text}}));
}

TEST_F(DumpCommand, EqualDrawings_HaveEqualDumps)
{
    givenDrawingWith("a.qedb", "EPSG:25832");
    givenDrawing("b.qedb");
    ASSERT_EQ(run({"assign", "-q", "EPSG:25832", "b.qedb"}).status, 0);
    EXPECT_EQ(run({"dump", "a.qedb"}).output, run({"dump", "b.qedb"}).output);
    ASSERT_EQ(run({"forms", "b.qedb", "--put", "config=x"}).status, 0);
    EXPECT_NE(run({"dump", "a.qedb"}).output, run({"dump", "b.qedb"}).output);
}

TEST_F(DumpCommand, DamagedDrawing_IsReportedAndNotPrinted)
{
    givenDamagedDrawing("a.qedb");
    expectResult(run({"dump", "a.qedb"}), 1, "",
                 "orvelcs: dump: a.qedb: eFileDamaged (51): table fields: the row of 6 is not as it was written\n");
    EXPECT_EQ(runForJson({"dump", "missing.qedb"}, 1)["text"], nullptr);
}

} // namespace
} // namespace Tests
