// Points in the columns of tables.
#include "command_line_test.h"

namespace Tests {
namespace {

using testing::HasSubstr;
using testing::Not;

/// 0° north and 9° east are easting 500000 and northing 0 in UTM zone 32N.
class TransformTable : public CommandLineTest {
protected:
    ProgramResult project(const std::string& table, const Arguments& options) const
    {
        return run(concatenate({"transform", "EPSG:4258", "EPSG:25832", "--quiet"}, options), table);
    }
    std::string projected(const std::string& table, const Arguments& options) const
    {
        const ProgramResult result = project(table, options);
        EXPECT_EQ(result.status, 0) << table;
        EXPECT_EQ(result.errors, "") << table;
        return result.output;
    }
    void expectRefused(const std::string& table, const Arguments& options, const std::string& output,
                       const std::string& reason) const
    {
        const ProgramResult result = project(table, options);
        EXPECT_EQ(result.status, 1) << table;
        EXPECT_EQ(result.output, output) << table;
        EXPECT_THAT(result.errors, HasSubstr("orvelcs: transform: " + reason + "\n")) << table;
    }
};

TEST_F(TransformTable, ResultsTakeThePlacesOfTheCoordinates)
{
    EXPECT_EQ(projected("a,9,0,b\n", {"--delimiter", ",", "--columns", "3,2"}), "a,0.000000,500000.000000,b\n");
    EXPECT_EQ(projected("0;9;5\n", {"--delimiter", ";", "--columns", "1,2"}), "500000.000000;0.000000;5\n");
    EXPECT_EQ(projected("5\t0\t9\n", {"--delimiter", "tab", "--columns", "2,3,1"}),
              "5.000000\t500000.000000\t0.000000\n");
    EXPECT_EQ(projected("  x \t 9   0 y\n", {"--columns", "3,2"}), "  x \t 0.000000   500000.000000 y\n");
    EXPECT_EQ(projected("0 9 x\n", {"--columns", "1,2"}), "500000.000000 0.000000 x\n");
}

TEST_F(TransformTable, DelimiterAlone_MakesEveryColumnACoordinate)
{
    EXPECT_EQ(projected("0,9\n0,9,5\n 0 , 9 ,\n", {"--delimiter", ","}),
              "500000.000000,0.000000\n500000.000000,0.000000,5.000000\n500000.000000,0.000000,\n");
    EXPECT_EQ(projected("0,9,5,2020\n0,9,,2020\n", {"--delimiter", ","}),
              "500000.000000,0.000000,5.000000,2020\n500000.000000,0.000000,,2020\n");
    expectRefused(
        "0,9,5,2020,x\n", {"--delimiter", ","}, "*,*,*,2020,x\n",
        "line 1: expected 2 to 4 columns, found 5; --columns says which of them are coordinates; --header says "
        "that this line names the columns");
}

TEST_F(TransformTable, NamesInColumns_AreLookedUpInTheHeader)
{
    const std::string table = "# made by hand\n\nid,lon,lat,h\na,9,0,5\n";
    const std::string rest = "# made by hand\n\nid,lon,lat,h\n";
    EXPECT_EQ(projected(table, {"--delimiter", ",", "--columns", "lat,lon,h"}),
              rest + "a,0.000000,500000.000000,5.000000\n");
    EXPECT_EQ(projected(table, {"--delimiter", ",", "--columns", "3,lon"}), rest + "a,0.000000,500000.000000,5\n");
    EXPECT_EQ(projected("\"la,t\",\" lon \"\n0,9\n", {"--delimiter", ",", "--columns", "\"la,t\",lon"}),
              "\"la,t\",\" lon \"\n500000.000000,0.000000\n");
    EXPECT_EQ(projected("id lon lat\nx 9 0\n", {"--columns", "lat,lon"}), "id lon lat\nx 0.000000 500000.000000\n");
}

TEST_F(TransformTable, HeaderOption_PassesTheFirstLineOver)
{
    EXPECT_EQ(projected("x,y\n0,9\n", {"--delimiter", ",", "--header"}), "x,y\n500000.000000,0.000000\n");
    EXPECT_EQ(projected("x y\n0 9\n", {"--header"}), "x y\n500000.000000 0.000000\n");
    EXPECT_EQ(projected("#\n\nx y\n0 9\n", {"--header", "--columns", "1,2"}), "#\n\nx y\n500000.000000 0.000000\n");
    EXPECT_EQ(projected("", {"--delimiter", ",", "--columns", "lat,lon"}), "");
    expectRefused("x,y\n0,9\n", {"--delimiter", ","}, "*,*\n500000.000000,0.000000\n",
                  "line 1: column 1: expected a number, found \"x\"; --header says that this line names the columns");
    expectRefused("0,9\nx,y\n", {"--delimiter", ","}, "500000.000000,0.000000\n*,*\n",
                  "line 2: column 1: expected a number, found \"x\"");
}

TEST_F(TransformTable, ColumnThatTheHeaderLacksOrHasTwice_IsRefused)
{
    expectResult(project("id,lat,lng\n", {"--delimiter", ",", "--columns", "lat,lon"}), 1, "",
                 "orvelcs: transform: lon: the header has no such column; the nearest are lat, lng\n");
    expectResult(project("lat,lat,lon\n", {"--delimiter", ",", "--columns", "lat,lon"}), 1, "",
                 "orvelcs: transform: lat: the header has several columns of this name; --columns takes their numbers, "
                 "too\n");
    expectResult(project("lat,lon\n", {"--delimiter", ",", "--columns", "lat,1"}), 2, "",
                 "orvelcs: transform: --columns: names column 1 twice\n");
}

TEST_F(TransformTable, InvalidColumnsAndDelimiters_AreWrongUsage)
{
    const auto expectWrong = [this](const Arguments& options, const std::string& line) {
        expectWrongUsage(project("0 9\n", options), "orvelcs: transform: " + line);
    };
    const std::string forms = "--columns: expected X,Y or X,Y,Z or X,Y,Z,EPOCH, found ";
    expectWrong({"--columns", "1"}, forms + "1");
    expectWrong({"--columns", "1,2,3,4,5"}, forms + "1,2,3,4,5");
    expectWrong({"--columns", "1,\"2"}, forms + "1,\"2");
    expectWrong({"--columns", "1,"}, "--columns: expected numbers or names of columns, found 1,");
    expectWrong({"--columns", "1,2,"}, "--columns: expected numbers or names of columns, found 1,2,");
    expectWrong({"--columns", "1,2,,"}, "--columns: expected numbers or names of columns, found 1,2,,");
    expectWrong({"--columns", ",2"}, "--columns: expected numbers or names of columns, found ,2");
    expectWrong({"--columns", "0,1"}, "--columns: expected a number from 1 on, found 0");
    expectWrong({"--columns", "1,99999999999999999999"},
                "--columns: expected a number from 1 on, found 99999999999999999999");
    expectWrong({"--columns", "2,2"}, "--columns: names column 2 twice");
    expectWrong({"--columns", "1,2,,1"}, "--columns: names column 1 twice");
    for (const std::string delimiter : {"ab", "a", "1", ".", "-", "+", "\"", "#", "'", "\n"})
        EXPECT_EQ(project("0 9\n", {"--delimiter", delimiter}).status, 2) << delimiter;
    expectWrong({"--delimiter", ",,"}, "--delimiter: expected tab or one character such as , or ; or |, found ,,");
}

TEST_F(TransformTable, QuotedColumns_AreCarriedThrough)
{
    EXPECT_EQ(projected("\"a, \"\"b\"\"\",\"0\",\"9\",\" c \"\n", {"--delimiter", ",", "--columns", "2,3"}),
              "\"a, \"\"b\"\"\",500000.000000,0.000000,\" c \"\n");
    EXPECT_EQ(projected("a\"b,0,9,c\"d\"\n", {"--delimiter", ",", "--columns", "2,3"}),
              "a\"b,500000.000000,0.000000,c\"d\"\n");
    EXPECT_EQ(projected("\"\",0,9,\"x\"y\n", {"--delimiter", ",", "--columns", "2,3"}),
              "\"\",500000.000000,0.000000,\"x\"y\n");
    EXPECT_EQ(projected("\"a 0 9\n", {"--columns", "2,3"}), "\"a 500000.000000 0.000000\n"); // no quotes among blanks
}

TEST_F(TransformTable, LinesWithinQuotes_BelongToOnePoint)
{
    EXPECT_EQ(projected("\"a\nb\n\nc,\",0,9\nd,0,9\n", {"--delimiter", ",", "--columns", "2,3"}),
              "\"a\nb\n\nc,\",500000.000000,0.000000\nd,500000.000000,0.000000\n");
    EXPECT_EQ(projected("\"a\r\n# b\",0,9\r\n", {"--delimiter", ",", "--columns", "2,3"}),
              "\"a\r\n# b\",500000.000000,0.000000\r\n");
    EXPECT_EQ(projected("\"a\nx\",\"b\n\"\"y\",lat,lon\n,,0,9\n", {"--delimiter", ",", "--columns", "lat,lon"}),
              "\"a\nx\",\"b\n\"\"y\",lat,lon\n,,500000.000000,0.000000\n");
    expectRefused("\"a\nb\",0,99\n\"c\n\",0,x\n", {"--delimiter", ",", "--columns", "2,3"},
                  "\"a\nb\",*,*\n\"c\n\",*,*\n", "line 3: column 3: expected a number, found \"x\"");
}

TEST_F(TransformTable, QuoteThatIsNotClosed_MakesItsLinesUnreadable)
{
    expectRefused("a,0,9\n\"b,0,9\nc,0,9", {"--delimiter", ",", "--columns", "2,3"}, "a,500000.000000,0.000000\n*\n*\n",
                  "line 2: a quote is not closed");
    std::string lines = "\"b,0,9\n";
    std::string asterisks = "*\n";
    while (lines.size() <= std::size_t{1} << 20) {
        lines += std::string(1000, 'x') + '\n';
        asterisks += "*\n";
    }
    expectRefused(lines + "a,0,9\n", {"--delimiter", ",", "--columns", "2,3"}, asterisks + "a,500000.000000,0.000000\n",
                  "line 1: a quote is not closed within 1048576 bytes");
}

TEST_F(TransformTable, FailedPoint_HasAnAsteriskInEachOfItsCoordinates)
{
    expectRefused("a,0,99,5,b\n", {"--delimiter", ",", "--columns", "2,3,4"}, "a,*,*,*,b\n",
                  "line 1: outside of the area where the projection can be calculated");
    expectRefused("a,0,99,,b\n", {"--delimiter", ",", "--columns", "2,3,4"}, "a,*,*,,b\n",
                  "line 1: outside of the area where the projection can be calculated");
    expectRefused("a,0,9,5\nb,0\nc\n", {"--delimiter", ",", "--columns", "2,3"}, "a,500000.000000,0.000000,5\nb,*\nc\n",
                  "line 2: expected at least 3 columns, found 2");
    expectRefused(
        "a 0 nine b\n", {"--columns", "2,3"}, "a * * b\n",
        "line 1: column 3: expected a number, found \"nine\"; --header says that this line names the columns");
    expectRefused("0 9\n9,9\n", {"--header", "--delimiter", ",", "--columns", "1,4"}, "0 9\n*,9\n",
                  "line 2: expected at least 4 columns, found 2");
}

TEST_F(TransformTable, Operations_AreTwoMoreColumns)
{
    EXPECT_EQ(projected("lat,lon\n0,9\n#\n", {"--delimiter", ",", "--columns", "lat,lon", "--operations"}),
              "lat,lon,operation_code,operation_name\n500000.000000,0.000000,EPSG:16032,UTM zone 32N\n#\n");
    EXPECT_EQ(projected("0 9\r\n", {"--delimiter", " ", "--operations"}),
              "500000.000000 0.000000 EPSG:16032 \"UTM zone 32N\"\r\n");
    EXPECT_EQ(projected("0 9 x\n", {"--columns", "1,2", "--operations"}),
              "500000.000000 0.000000 x\tEPSG:16032\tUTM zone 32N\n");
    EXPECT_EQ(project("0,99\n", {"--delimiter", ",", "--operations"}).output, "*,*,,\n");
}

TEST_F(TransformTable, Json_HasThePointsAlone)
{
    const Json document = Json::parse(project("id,lat,lon\na,0,9\n# b\nc,0,x\n",
                                              {"--delimiter", ",", "--columns", "lat,lon", "--json", "--operations"})
                                          .output);
    ASSERT_EQ(document["points"].size(), 2U);
    EXPECT_EQ(document["points"][0]["point"], Json::array({500000.0, 0.0}));
    EXPECT_EQ(document["points"][1]["point"], nullptr);
    EXPECT_EQ(document["failures"][0]["line"], 4);
    EXPECT_EQ(Json::parse(project("\"a\nb\n", {"--delimiter", ",", "--json"}).output)["points"],
              Json::array({nullptr}));
}

TEST_F(TransformTable, LineEndsAndTheByteOrderMark_StayAsTheyAre)
{
    EXPECT_EQ(projected("\xEF\xBB\xBFlat;lon\r\n0;9\r\n\r\n# c\r\n0;9", {"--delimiter", ";", "--columns", "lat,lon"}),
              "\xEF\xBB\xBFlat;lon\r\n500000.000000;0.000000\r\n\r\n# c\r\n500000.000000;0.000000\n");
    EXPECT_EQ(projected("\xEF\xBB\xBF\"a\nb\";0;9\n", {"--delimiter", ";", "--columns", "2,3"}),
              "\xEF\xBB\xBF\"a\nb\";500000.000000;0.000000\n");
    EXPECT_EQ(projected("\xEF\xBB\xBF", {"--delimiter", ";"}), "\xEF\xBB\xBF\n");
}

TEST_F(TransformTable, OtherBytes_AreCarriedThrough)
{
    using namespace std::string_literals;
    EXPECT_EQ(projected("a\0\xFF\x01;0;9;\0\n"s, {"--delimiter", ";", "--columns", "2,3"}),
              "a\0\xFF\x01;500000.000000;0.000000;\0\n"s);
    expectRefused("0\0;9\n"s, {"--delimiter", ";", "--columns", "1,2"}, "*;*\n",
                  "line 1: column 1: expected a number, found \"0?\"; --header says that this line names the columns");
}

TEST_F(TransformTable, ThousandsOfColumns_AreCarriedThrough)
{
    std::string before;
    std::string after;
    for (int column = 1; column <= 5000; ++column) {
        before += "c" + std::to_string(column) + ",";
        after += "," + std::string(50, 'x');
    }
    EXPECT_EQ(projected(before + "0,9" + after + "\n", {"--delimiter", ",", "--columns", "5001,5002"}),
              before + "500000.000000,0.000000" + after + "\n");
    const std::string tooLong(std::size_t{1} << 20, 'x');
    expectRefused("0,9," + tooLong + "\n0,9,x\n", {"--delimiter", ",", "--columns", "1,2"},
                  "*\n500000.000000,0.000000,x\n", "line 1: longer than 1048576 bytes");
}

TEST_F(TransformTable, ManyLines_StayInTheirOrder)
{
    std::string table;
    std::string expected;
    for (int line = 0; line < 1000; ++line) {
        const std::string id = std::to_string(line);
        const bool fails = line % 7 == 0;
        table += line % 13 == 0 ? "# " + id + "\n" : id + (fails ? ",0,99," : ",0,9,") + id + "\n";
        expected += line % 13 == 0 ? "# " + id + "\n" : id + (fails ? ",*,*," : ",500000.000000,0.000000,") + id + "\n";
    }
    EXPECT_EQ(project(table, {"--delimiter", ",", "--columns", "2,3"}).output, expected);
}

TEST_F(TransformTable, GeocentricSystem_NeedsAColumnOfHeights)
{
    const auto transform = [this](const std::string& table, const Arguments& options) {
        return run(concatenate({"transform", "-q", "EPSG:4979", "EPSG:4978", "--delimiter", ","}, options), table);
    };
    expectWrongUsage(transform("0,0\n", {"--columns", "1,2"}),
                     "orvelcs: transform: --columns: expected X,Y,Z, since one of the systems is geocentric");
    EXPECT_EQ(transform("a,0,0,0\n", {"--columns", "2,3,4"}).output, "a,6378137.000000,0.000000,0.000000\n");
    EXPECT_EQ(transform("a,0,0,\n", {"--columns", "2,3,4"}).output, "a,6378137.000000,0.000000,0.000000\n");
    EXPECT_EQ(transform("0,0\n", {}).output, "6378137.000000,0.000000,0.000000\n");
}

TEST_F(TransformTable, EpochColumn_IsUsedAndStays)
{
    const auto transform = [this](const std::string& table, const std::string& columns) {
        const ProgramResult result = run({"transform", "EPSG:9000", "EPSG:7844", "--columns", columns}, table);
        EXPECT_THAT(result.errors, Not(HasSubstr("epoch")));
        return result.output;
    };
    const std::string plain = run({"transform", "-q", "EPSG:9000", "EPSG:7844"}, "-30 130 1 2030\n").output;
    const std::string expected = plain.substr(0, plain.find(" 1.0"));
    EXPECT_EQ(transform("2030 x -30 130\n", "3,4,,1"), "2030 x " + expected + "\n");
    const ProgramResult result =
        run({"transform", "-q", "EPSG:9000", "EPSG:7844", "--columns", "1,2,,3", "--header"}, "x y t\n-30 130 17\n");
    EXPECT_EQ(result.output, "x y t\n* * 17\n");
    EXPECT_THAT(result.errors, HasSubstr("line 2: expected a year from 1900 to 2200 as the epoch, found 17\n"));
}

} // namespace
} // namespace Tests
