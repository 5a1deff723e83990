// Installed grids are used, and missing grids are named.
#include <cstdint>
#include <cstring>

#include <proj.h>

#include "command_line_test.h"

namespace Tests {
namespace {

using testing::HasSubstr;
using testing::Not;

/// The bytes of an NTv2 grid in this machine's byte order. PROJ reads it under any file name. Between 35° and 45° north
/// and between 95° and 105° west, the grid shifts every point by 3.6" to the north and 7.2" to the east.
class ShiftGrid {
public:
    static std::string bytes()
    {
        ShiftGrid grid;
        grid.writeFileHeader();
        grid.writeGridHeader();
        for (int node = 0; node < 3 * 3; ++node)
            for (const float value : {3.6F, -7.2F, 0.0F, 0.0F}) // north, west and their accuracies
                grid.write(value);
        grid.text("END", "");
        return grid.bytes_;
    }

private:
    void writeFileHeader()
    {
        integer("NUM_OREC", 11);
        integer("NUM_SREC", 11);
        integer("NUM_FILE", 1);
        text("GS_TYPE", "SECONDS");
        text("VERSION", "NTv2.0");
        text("SYSTEM_F", "HERE");
        text("SYSTEM_T", "THERE");
        for (const char* axis : {"MAJOR_F", "MINOR_F", "MAJOR_T", "MINOR_T"})
            number(axis, 6378137);
    }
    void writeGridHeader()
    {
        constexpr double kSecondsInADegree = 3600;
        text("SUB_NAME", "TEST");
        text("PARENT", "NONE");
        text("CREATED", "");
        text("UPDATED", "");
        number("S_LAT", 35 * kSecondsInADegree);
        number("N_LAT", 45 * kSecondsInADegree);
        number("E_LONG", 95 * kSecondsInADegree); // positive to the west
        number("W_LONG", 105 * kSecondsInADegree);
        number("LAT_INC", 5 * kSecondsInADegree);
        number("LONG_INC", 5 * kSecondsInADegree);
        integer("GS_COUNT", 3 * 3);
    }

    template <class Value>
    void write(const Value& value)
    {
        char raw[sizeof value];
        std::memcpy(raw, &value, sizeof value);
        bytes_.append(raw, sizeof value);
    }
    void padded(std::string text)
    {
        text.resize(8, ' ');
        bytes_ += text;
    }
    void text(const char* key, const char* value)
    {
        padded(key);
        padded(value);
    }
    void number(const char* key, double value)
    {
        padded(key);
        write(value);
    }
    void integer(const char* key, std::int32_t value)
    {
        padded(key);
        write(value);
        write(std::int32_t{0});
    }

    std::string bytes_;
};

/// The data folder of PROJ has only the catalog, whatever grids this machine has.
class TransformGrid : public CommandLineTest {
protected:
    static constexpr const char* kGrid = "us_noaa_conus.tif"; // the grid of EPSG:1241

    TransformGrid()
    {
        std::filesystem::create_directories(path("data"));
        std::filesystem::copy_file(proj_context_get_database_path(PJ_DEFAULT_CTX), path("data/proj.db"));
    }

    ProgramResult nad27ToNad83(const std::string& points, const Arguments& options = {}) const
    {
        ProgramRun programRun;
        programRun.arguments = concatenate({"transform", "EPSG:4267", "EPSG:4269"}, options);
        programRun.environment["PROJ_DATA"] = path("data").string();
        programRun.environment["PROJ_USER_WRITABLE_DIRECTORY"] = path("downloads").string();
        programRun.input = points;
        return run(programRun);
    }
};

TEST_F(TransformGrid, MissingGrid_IsNotedWithTheCommandAndTheFolder)
{
    const std::string note = std::string("the grid ") + kGrid +
                             " is not installed; it would allow EPSG:1241 NAD27 to NAD83 (1), accuracy 0.15 m; "
                             "projsync --file " +
                             kGrid + " puts it into " + path("downloads").string() + "\n";
    EXPECT_THAT(nad27ToNad83("40 -100\n40 -101\n").errors, HasSubstr(note));
    EXPECT_THAT(nad27ToNad83("0 0\n").errors, Not(HasSubstr("the grid"))); // the grid does not cover this point
    const Json document = Json::parse(nad27ToNad83("40 -100\n", {"--json", "-q"}).output);
    EXPECT_EQ(document["missingGrids"], Json::array({{{"name", kGrid},
                                                      {"operation", "NAD27 to NAD83 (1)"},
                                                      {"code", "EPSG:1241"},
                                                      {"accuracy", 0.15},
                                                      {"command", std::string("projsync --file ") + kGrid},
                                                      {"folder", path("downloads").string()}}}));
}

TEST_F(TransformGrid, GridInProjData_IsUsed)
{
    given(std::string("data/") + kGrid, ShiftGrid::bytes());
    const ProgramResult result = nad27ToNad83("40 -100\n", {"--operations"});
    EXPECT_EQ(result.output, "40.0010000000 -99.9980000000\tEPSG:1241\tNAD27 to NAD83 (1)\n");
    EXPECT_THAT(result.errors, Not(HasSubstr("the grid")));
}

TEST_F(TransformGrid, GridInTheFolderOfTheNote_IsUsed)
{
    std::filesystem::create_directories(path("downloads"));
    given(std::string("downloads/") + kGrid, ShiftGrid::bytes());
    EXPECT_EQ(nad27ToNad83("40 -100\n").output, "40.0010000000 -99.9980000000\n");
}

TEST_F(TransformGrid, PointOutsideTheGrid_UsesABallparkOperationWithANote)
{
    given(std::string("data/") + kGrid, ShiftGrid::bytes());
    const ProgramResult result =
        nad27ToNad83("40 -100\n30 -100\n", {"-q"}); // both points lie in the operation's area of use
    EXPECT_EQ(result.output, "40.0010000000 -99.9980000000\n30.0000000000 -100.0000000000\n");
    EXPECT_EQ(result.errors,
              "orvelcs: transform: EPSG:4267 to EPSG:4269: note: 1 of 2 points went through a ballpark operation, "
              "which takes datums for equal: Ballpark geographic offset from NAD27 to NAD83\n");
}

} // namespace
} // namespace Tests
