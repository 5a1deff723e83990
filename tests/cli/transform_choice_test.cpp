// The operations that PROJ chooses for transform, and the notes about them.
#include "command_line_test.h"

namespace Tests {
namespace {

using testing::HasSubstr;
using testing::Not;

class TransformChoice : public CommandLineTest {
protected:
    static constexpr const char* kKansas = "40 -100\n";
    static constexpr const char* kCanada = "60 -100\n";
    static constexpr const char* kGulfOfGuinea = "0 0\n";

    /// The operation from NAD27 to NAD83 depends on the place.
    ProgramResult nad27ToNad83(const std::string& points, const Arguments& options = {}) const
    {
        return run(concatenate({"transform", "EPSG:4267", "EPSG:4269"}, options), points);
    }
    /// The operation from ITRF2014 to GDA2020 depends on time.
    ProgramResult itrf2014ToGda2020(const std::string& points, const Arguments& options = {}) const
    {
        return run(concatenate({"transform", "EPSG:9000", "EPSG:7844"}, options), points);
    }
    static std::vector<std::string> splitAtTabs(const std::string& line)
    {
        std::vector<std::string> fields(1);
        for (const char character : line)
            if (character == '\t')
                fields.emplace_back();
            else if (character != '\n')
                fields.back().push_back(character);
        return fields;
    }
};

TEST_F(TransformChoice, OperationsChosenForEachPoint_AreNotedWithTheirNumbersOfPoints)
{
    const ProgramResult result = nad27ToNad83(std::string(kKansas) + kCanada + kKansas);
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.errors, HasSubstr("orvelcs: transform: EPSG:4267 to EPSG:4269: note: no transformation is "
                                         "configured; PROJ chooses for each point: NAD27 to "));
    EXPECT_THAT(result.errors, HasSubstr(" m (2 points); NAD27 to "));
    EXPECT_THAT(result.errors, HasSubstr(" m (1 point)\n"));
    EXPECT_THAT(result.errors, Not(HasSubstr("ballpark")));
    EXPECT_THAT(nad27ToNad83("").errors, HasSubstr("PROJ chooses for each point\n"));
    EXPECT_EQ(nad27ToNad83(kKansas, {"-q"}).errors, "");
}

TEST_F(TransformChoice, OneBallparkPointAmongMany_IsNotedEvenWhenQuiet)
{
    std::string points;
    for (int index = 0; index < 5000; ++index)
        points += index == 4321 ? kGulfOfGuinea : kKansas;
    EXPECT_EQ(nad27ToNad83(points, {"-q"}).errors,
              "orvelcs: transform: EPSG:4267 to EPSG:4269: note: 1 of 5000 points went through a ballpark operation, "
              "which takes datums for equal: Ballpark geographic offset from NAD27 to NAD83\n");
}

TEST_F(TransformChoice, OperationsOption_AppendsTheOperationToEachPoint)
{
    EXPECT_EQ(run({"transform", "-q", "EPSG:4258", "EPSG:25832", "--operations"}, "0 9\nx\n0 9 1\n").output,
              "500000.000000 0.000000\tEPSG:16032\tUTM zone 32N\n*\n"
              "500000.000000 0.000000 1.000000\tEPSG:16032\tUTM zone 32N\n");
    const auto fields = splitAtTabs(nad27ToNad83(kGulfOfGuinea, {"--operations"}).output);
    EXPECT_EQ(fields, (std::vector<std::string>{"0.0000000000 0.0000000000", "",
                                                "Ballpark geographic offset from NAD27 to NAD83"}));
}

TEST_F(TransformChoice, Json_ListsTheOperationsWithTheirNumbersOfPoints)
{
    const Json document =
        Json::parse(nad27ToNad83(std::string(kKansas) + kGulfOfGuinea + kKansas, {"--json", "-q"}).output);
    EXPECT_EQ(document["source"], "EPSG:4267");
    EXPECT_EQ(document["target"], "EPSG:4269");
    EXPECT_EQ(document["configured"], false);
    EXPECT_EQ(document["points"].size(), 3U);
    EXPECT_EQ(document["points"][1], Json::array({0.0, 0.0}));
    ASSERT_EQ(document["operations"].size(), 2U);
    EXPECT_EQ(document["operations"][0]["points"], 2);
    EXPECT_EQ(document["operations"][0]["ballpark"], false);
    EXPECT_TRUE(document["operations"][0]["accuracy"].is_number());
    EXPECT_EQ(document["operations"][1], Json({{"code", nullptr},
                                               {"name", "Ballpark geographic offset from NAD27 to NAD83"},
                                               {"accuracy", nullptr},
                                               {"ballpark", true},
                                               {"timeDependent", false},
                                               {"points", 1}}));
    EXPECT_EQ(document["network"], false);
    EXPECT_EQ(document["epochMissing"], false);
}

TEST_F(TransformChoice, JsonWithOperationsOption_HasTheOperationOfEachPoint)
{
    const ProgramResult result = nad27ToNad83(std::string(kGulfOfGuinea) + "x\n", {"--json", "--operations"});
    EXPECT_EQ(result.status, 1);
    const Json points = Json::parse(result.output)["points"];
    EXPECT_EQ(points[0]["point"], Json::array({0.0, 0.0}));
    EXPECT_EQ(points[0]["operation"]["name"], "Ballpark geographic offset from NAD27 to NAD83");
    EXPECT_EQ(points[1], Json({{"point", nullptr}, {"operation", nullptr}}));
}

TEST_F(TransformChoice, Epoch_ComesFromTheFourthColumnOrElseFromTheOption)
{
    const std::string without = itrf2014ToGda2020("-30 130 1\n").output;
    const std::string in2030 = itrf2014ToGda2020("-30 130 1\n", {"--epoch", "2030"}).output;
    EXPECT_EQ(itrf2014ToGda2020("-30 130 1\n", {"--epoch", "2020.0"}).output,
              without); // the epoch of the operation itself
    EXPECT_NE(in2030, without);
    const std::string column = itrf2014ToGda2020("-30 130 1 2030\n", {"--epoch=2040"}).output;
    EXPECT_EQ(column, in2030.substr(0, in2030.size() - 1) + " 2030\n");
    EXPECT_EQ(itrf2014ToGda2020("-30 130 1 2030.25\n").output.substr(column.size() - 5), "2030.25\n");
    EXPECT_NE(itrf2014ToGda2020("-30 130\n", {"--epoch", "2030"}).output, itrf2014ToGda2020("-30 130\n").output);
}

TEST_F(TransformChoice, MissingEpoch_IsNotedIfTheOperationDependsOnTime)
{
    const std::string note = "note: 1 of 2 points went through an operation that depends on time, and had no epoch; "
                             "give it with --epoch or in a fourth column\n";
    EXPECT_THAT(itrf2014ToGda2020("-30 130 0 2020\n-30 130 0\n").errors, HasSubstr(note));
    EXPECT_THAT(itrf2014ToGda2020("-30 130 0\n", {"--epoch", "2020"}).errors, Not(HasSubstr("epoch")));
    EXPECT_THAT(nad27ToNad83(kKansas).errors, Not(HasSubstr("epoch")));
    EXPECT_EQ(Json::parse(itrf2014ToGda2020("-30 130 0\n", {"--json"}).output)["epochMissing"], true);
    EXPECT_EQ(Json::parse(itrf2014ToGda2020("-30 130 0 2020\n", {"--json"}).output)["epochMissing"], false);
}

TEST_F(TransformChoice, InvalidEpoch_IsRefused)
{
    for (const std::string epoch : {"20", "1899.9", "2200.1", "2020-05", "nan", "spring"})
        expectWrongUsage(itrf2014ToGda2020("-30 130\n", {"--epoch", epoch}),
                         "orvelcs: transform: --epoch: expected a decimal year from 1900 to 2200, found " + epoch);
    const ProgramResult result = itrf2014ToGda2020("-30 130 1 17\n-30 130 1 1900\n", {"-q"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output.substr(0, 2), "*\n");
    EXPECT_THAT(result.errors, HasSubstr("line 1: expected a year from 1900 to 2200 as the epoch, found 17\n"));
}

TEST_F(TransformChoice, Network_IsUsedOnlyIfTheEnvironmentEnablesIt)
{
    constexpr const char* kNote = "PROJ may read grids over the network, since PROJ_NETWORK says so";
    ProgramRun programRun;
    programRun.arguments = {"transform", "EPSG:4807", "EPSG:4326", "--json"};
    EXPECT_THAT(run(programRun).errors, Not(HasSubstr(kNote)));
    programRun.environment["PROJ_NETWORK"] = "OFF";
    EXPECT_EQ(Json::parse(run(programRun).output)["network"], false);
    programRun.environment["PROJ_NETWORK"] = "ON";
    const ProgramResult result = run(programRun);
    EXPECT_THAT(result.errors, HasSubstr(kNote));
    EXPECT_EQ(Json::parse(result.output)["network"], true);
}

} // namespace
} // namespace Tests
