// Several drawings: from a list, with a code that is wrong for all of them, and the status of the whole.
#include <algorithm>

#include "command_line_test.h"

namespace Tests {
namespace {

using testing::StartsWith;

class FileList : public CommandLineTest {
protected:
    FileList()
    {
        for (const char* name : {"a.qedb", "b.qedb", "c.qedb"})
            givenDrawing(name);
    }
    /// The names of the drawings that were cleared, in order.
    std::string cleared(const Arguments& arguments, const std::string& input = "") const
    {
        const ProgramResult result = run(concatenate({"clear"}, arguments), input);
        EXPECT_EQ(result.status, 0) << result.errors;
        EXPECT_EQ(result.errors, "");
        return result.output;
    }
};

TEST_F(FileList, EachLine_NamesADrawing)
{
    given("list", "c.qedb\na.qedb\n");
    EXPECT_EQ(cleared({"--files-from", "list"}), "c.qedb: cleared\na.qedb: cleared\n");
}

TEST_F(FileList, LastLineWithoutAnEnd_BlankLinesAndLinesFromWindows_AreRead)
{
    given("list", "\xEF\xBB\xBF"
                  "a.qedb\r\n\r\n\nb.qedb");
    EXPECT_EQ(cleared({"--files-from", "list"}), "a.qedb: cleared\nb.qedb: cleared\n");
}

TEST_F(FileList, NamesOfTheCommandLine_ComeFirst)
{
    EXPECT_EQ(cleared({"c.qedb", "--files-from", "-", "b.qedb"}, "a.qedb\n"),
              "c.qedb: cleared\nb.qedb: cleared\na.qedb: cleared\n");
}

TEST_F(FileList, NullOption_ReadsNamesThatEndWithNul)
{
    const std::string names("a.qedb\0b.qedb\0", 14);
    EXPECT_EQ(cleared({"--files-from", "-", "-0"}, names), "a.qedb: cleared\nb.qedb: cleared\n");
    EXPECT_EQ(cleared({"--files-from", "-", "--null"}, names.substr(0, 13)), "a.qedb: cleared\nb.qedb: cleared\n");
}

TEST_F(FileList, NameLikeAnOption_IsAName)
{
    expectResult(run({"show", "--files-from", "-"}, "--json\n"), 1, "",
                 "orvelcs: show: --json: eFileNotFound (50): No such file or directory\n");
}

TEST_F(FileList, EveryCommandWithSeveralDrawings_TakesAList)
{
    given("list", "d.qedb\n");
    expectResult(run({"new", "--files-from", "list"}), 0, "d.qedb: new drawing, version 33\n", "");
    expectResult(run({"assign", "EPSG:25832", "--files-from", "list"}), 0, "d.qedb: assigned EPSG:25832\n", "");
    expectResult(run({"check", "--files-from", "list"}), 0, "d.qedb: no fault was found\n", "");
    EXPECT_EQ(runForJson({"show", "--files-from", "list"})[0]["code"], "EPSG:25832");
    expectResult(run({"clear", "--files-from", "list"}), 0, "d.qedb: cleared\n", "");
    given("works.txt", "+proj=utm +zone=32 +ellps=GRS80");
    expectResult(run({"assign", "--definition", "works.txt", "--code", "WORKS:1", "--files-from", "list"}), 0,
                 "d.qedb: assigned WORKS:1\n", "");
}

TEST_F(FileList, ListOfOneDrawing_GivesAnArray)
{
    EXPECT_EQ(runForJson({"clear", "a.qedb"})["file"], "a.qedb");
    given("list", "a.qedb\n");
    const Json json = runForJson({"clear", "--files-from", "list"});
    ASSERT_TRUE(json.is_array());
    ASSERT_EQ(json.size(), 1U);
    EXPECT_EQ(json[0]["file"], "a.qedb");
}

TEST_F(FileList, EmptyList_IsDoneWithANote)
{
    given("list", "\n");
    const std::string note = "orvelcs: clear: list: note: names no drawing, and so nothing was done\n";
    expectResult(run({"clear", "--files-from", "list"}), 0, "", note);
    expectResult(run({"clear", "--files-from", "list", "--json"}), 0, "[]\n", note);
    expectResult(run({"assign", "EPSG:25832", "--quiet", "--files-from", "list"}), 0, "", "");
}

TEST_F(FileList, ListThatCannotBeRead_IsNamed)
{
    expectResult(run({"clear", "--files-from", "missing"}), 1, "",
                 "orvelcs: clear: missing: cannot be opened: No such file or directory\n");
    expectResult(run({"clear", "--files-from", "."}), 1, "", "orvelcs: clear: .: is a folder\n");
}

TEST_F(FileList, StandardInputForTwoPurposes_IsWrongUsage)
{
    expectWrongUsage(run({"clear", "-", "--files-from", "-"}),
                     "orvelcs: clear: -: standard input cannot be both the list and a drawing");
    expectWrongUsage(run({"assign", "--definition", "-", "--code", "X:1", "--files-from", "-"}),
                     "orvelcs: assign: -: standard input cannot be both the definition and the list");
}

TEST_F(FileList, StandardInputInAList_IsRefusedBeforeAnyDrawing)
{
    given("list", "a.qedb\n-\n");
    expectResult(run({"clear", "--files-from", "list"}), 1, "",
                 "orvelcs: clear: list: names -, which is not a file; ./- is a file of that name\n");
}

TEST_F(FileList, NullOptionWithoutAList_IsWrongUsage)
{
    expectWrongUsage(run({"clear", "-0", "a.qedb"}), "orvelcs: clear: --null: goes with --files-from only");
}

TEST_F(FileList, SalvageOfAList_IsWrongUsage)
{
    given("list", "a.qedb\n");
    expectWrongUsage(run({"check", "--files-from", "list", "--salvage", "out.qedb"}),
                     "orvelcs: check: --salvage: saves one drawing, not several");
}

using Batch = CommandLineTest;

TEST_F(Batch, UnknownCode_IsOneMessageBeforeTheFirstDrawing)
{
    std::string list;
    for (int index = 0; index < 3000; ++index)
        list += "missing-" + std::to_string(index) + ".qedb\n";
    given("list", list);
    const ProgramResult result = run({"assign", "EPGS:25832", "--files-from", "list"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, StartsWith("orvelcs: assign: EPGS:25832: eInvalidInput (3): the catalog has no "));
    EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1);
}

TEST_F(Batch, UnknownCode_IsTheErrorOfEachDrawingInJson)
{
    const Json json = runForJson({"assign", "EPGS:25832", "a.qedb", "b.qedb"}, 1);
    ASSERT_EQ(json.size(), 2U);
    EXPECT_EQ(json[1]["file"], "b.qedb");
    EXPECT_EQ(json[1]["result"], 3);
    EXPECT_EQ(json[1]["status"], 52);
    EXPECT_EQ(json[1]["events"], Json::array());
    const Json& error = json[1]["error"];
    EXPECT_EQ(error["what"], "EPGS:25832");
    EXPECT_EQ(error["code"], 3);
    EXPECT_EQ(error["name"], "eInvalidInput");
    EXPECT_THAT(error["message"].get<std::string>(), StartsWith("eInvalidInput (3): the catalog has no EPGS:25832; "));
}

TEST_F(Batch, StatusOfABatch_IsThatOfAFailureBeforeThatOfNothingFound)
{
    givenDrawingWith("system.qedb", "EPSG:25832");
    givenDrawing("empty.qedb");
    EXPECT_EQ(run({"show", "system.qedb", "system.qedb"}).status, 0);
    EXPECT_EQ(run({"show", "system.qedb", "empty.qedb"}).status, 3);
    EXPECT_EQ(run({"show", "missing.qedb", "empty.qedb", "system.qedb"}).status, 1);
    EXPECT_EQ(run({"show", "empty.qedb", "missing.qedb"}).status, 1);
}

TEST_F(Batch, EachElementOfTheJson_IsAResultOrHasAnError)
{
    givenDrawingWith("a.qedb", "EPSG:25832");
    given("damaged.qedb", "no drawing");
    for (const std::string command : {"show", "clear", "check", "new"}) {
        const ProgramResult result = run({"--json", command, "damaged.qedb", "folder/a.qedb"});
        EXPECT_EQ(result.status, 1);
        const Json json = Json::parse(result.output);
        ASSERT_EQ(json.size(), 2U) << command;
        std::string lines;
        for (const Json& element : json) {
            EXPECT_EQ(element["file"], element["error"]["what"]);
            lines += errorLine(element["error"]);
        }
        EXPECT_EQ(result.errors, lines);
    }
    const Json json = runForJson({"show", "a.qedb", "damaged.qedb"}, 1);
    EXPECT_EQ(json[0]["code"], "EPSG:25832");
    EXPECT_FALSE(json[0].contains("error"));
}

TEST_F(Batch, Array_IsPrintedAsOneDocument)
{
    givenDrawing("a.qedb");
    givenDrawing("b.qedb");
    expectResult(run({"new", "--json", "--force", "a.qedb", "b.qedb"}), 0,
                 "[\n  {\n    \"file\": \"a.qedb\",\n    \"drawingVersion\": 33\n  },\n"
                 "  {\n    \"file\": \"b.qedb\",\n    \"drawingVersion\": 33\n  }\n]\n",
                 "");
}

using SwappedArguments = CommandLineTest;

TEST_F(SwappedArguments, FileBeforeTheCode_IsAnsweredWithTheRightCommand)
{
    givenDrawing("plan.qedb");
    const std::string before = contents("plan.qedb");
    expectWrongUsage(
        run({"assign", "plan.qedb", "EPSG:25832"}),
        "orvelcs: assign: plan.qedb: stands where the code EPSG:25832 belongs; did you mean orvelcs assign "
        "EPSG:25832 plan.qedb");
    EXPECT_EQ(contents("plan.qedb"), before);
    expectWrongUsage(run({"assign", "missing.qedb", "epsg:25832"}),
                     "orvelcs: assign: missing.qedb: stands where the code epsg:25832 belongs; did you mean orvelcs "
                     "assign epsg:25832 missing.qedb");
}

TEST_F(SwappedArguments, CodeBehindSeveralFiles_IsFound)
{
    EXPECT_THAT(run({"assign", "a.qedb", "b.qedb", "EPSG:25832"}).errors,
                testing::EndsWith("did you mean orvelcs assign EPSG:25832 a.qedb b.qedb\n"));
    EXPECT_THAT(run({"assign", "a.qedb", "EPSG:25832", "b.qedb", "c.qedb", "d.qedb"}).errors,
                testing::EndsWith("did you mean orvelcs assign EPSG:25832 a.qedb b.qedb c.qedb ...\n"));
}

TEST_F(SwappedArguments, ListBesideSwappedArguments_StaysInTheCommand)
{
    given("list", "b.qedb\n");
    EXPECT_THAT(run({"assign", "a.qedb", "EPSG:25832", "--files-from", "list"}).errors,
                testing::EndsWith("did you mean orvelcs assign EPSG:25832 --files-from list a.qedb\n"));
}

TEST_F(SwappedArguments, NameWithABlank_IsQuoted)
{
    const std::string errors = run({"assign", "my plan.qedb", "EPSG:25832"}).errors;
    EXPECT_THAT(errors, testing::AnyOf(testing::EndsWith("assign EPSG:25832 'my plan.qedb'\n"),
                                       testing::EndsWith("assign EPSG:25832 \"my plan.qedb\"\n")));
}

TEST_F(SwappedArguments, FileInPlaceOfAMissingCode_IsNamed)
{
    givenDrawing("plan.qedb");
    const ProgramResult result = run({"assign", "plan.qedb", "other.qedb"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "orvelcs: assign: plan.qedb: eInvalidInput (3): the catalog has no plan.qedb; it is a "
                             "file, where a code is expected\n");
    EXPECT_EQ(run({"catalog", "show", "plan.qedb"}).errors,
              "orvelcs: catalog show: plan.qedb: the catalog has no such code; it is a file, where a code is "
              "expected\n");
}

TEST_F(SwappedArguments, CodeInPlaceOfAFile_IsNamed)
{
    for (const std::string command : {"show", "clear", "forms", "check"})
        EXPECT_THAT(run({command, "EPSG:25832"}).errors,
                    testing::AllOf(StartsWith("orvelcs: " + command + ": EPSG:25832: eFileNotFound (50): "),
                                   testing::EndsWith("; it is a code of the catalog, where a file is expected\n")));
}

TEST_F(SwappedArguments, FileToEncodeIntoACode_IsAnsweredWithTheRightCommand)
{
    given("block.bin", "");
    expectWrongUsage(
        run({"encode", "block.bin", "--drawing-version", "29", "-o", "EPSG:25832"}),
        "orvelcs: encode: block.bin: stands where the code EPSG:25832 belongs; did you mean orvelcs encode "
        "EPSG:25832 --drawing-version 29 -o block.bin");
    EXPECT_EQ(files(), std::vector<std::string>{"block.bin"});
}

} // namespace
} // namespace Tests
