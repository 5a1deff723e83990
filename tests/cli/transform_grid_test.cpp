// Installed grids are used, and missing grids are named.
#include "shift_grid.h"

namespace Tests {
namespace {

using testing::HasSubstr;
using testing::Not;

class TransformGrid : public GridTest {
protected:
    ProgramResult nad27ToNad83(const std::string& points, const Arguments& options = {}) const
    {
        return runWithGrids(concatenate({"transform", "EPSG:4267", "EPSG:4269"}, options), points);
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
    givenGrid("data");
    const ProgramResult result = nad27ToNad83("40 -100\n", {"--operations"});
    EXPECT_EQ(result.output, "40.0010000000 -99.9980000000\tEPSG:1241\tNAD27 to NAD83 (1)\n");
    EXPECT_THAT(result.errors, Not(HasSubstr("the grid")));
}

TEST_F(TransformGrid, GridInTheFolderOfTheNote_IsUsed)
{
    givenGrid("downloads");
    EXPECT_EQ(nad27ToNad83("40 -100\n").output, "40.0010000000 -99.9980000000\n");
}

TEST_F(TransformGrid, PointOutsideTheGrid_UsesABallparkOperationWithANote)
{
    givenGrid("data");
    const ProgramResult result =
        nad27ToNad83("40 -100\n30 -100\n", {"-q"}); // both points lie in the operation's area of use
    EXPECT_EQ(result.output, "40.0010000000 -99.9980000000\n30.0000000000 -100.0000000000\n");
    EXPECT_EQ(result.errors,
              "orvelcs: transform: EPSG:4267 to EPSG:4269: note: 1 of 2 points went through a ballpark operation, "
              "which takes datums for equal: Ballpark geographic offset from NAD27 to NAD83\n");
}

} // namespace
} // namespace Tests
