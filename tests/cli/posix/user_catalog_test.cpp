// A catalog of the user's own, which PROJ reads with its own one.
#include <sqlite3.h>

#include "cli/command_line_test.h"
#include "embedded/spatial_reference/catalog/catalog.h"

namespace Tests {
namespace {

using testing::HasSubstr;

class UserCatalog : public CommandLineTest {
protected:
    /// A catalog that has one projected system and nothing else.
    void SetUp() override
    {
        CommandLineTest::SetUp();
        execute(
            "CREATE TABLE projected_crs AS SELECT * FROM proj.projected_crs WHERE auth_name = 'EPSG' AND code = 25832; "
            "UPDATE projected_crs SET auth_name = 'MINE', code = 'GRID', name = 'Grid of mine';");
    }

    /// Runs SQL in the user's catalog. "proj" is PROJ's.
    void execute(const std::string& sql) const
    {
        sqlite3* database = nullptr;
        ASSERT_EQ(sqlite3_open(path("mine.db").string().c_str(), &database), SQLITE_OK);
        const std::string whole = "ATTACH '" + Embedded::catalogPath() + "' AS proj; " + sql;
        EXPECT_EQ(sqlite3_exec(database, whole.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(database);
        sqlite3_close(database);
    }

    ProgramResult runWithIt(std::vector<std::string> arguments) const
    {
        ProgramRun programRun;
        programRun.arguments = std::move(arguments);
        programRun.environment["PROJ_AUX_DB"] = path("mine.db").string();
        return run(programRun);
    }
};

TEST_F(UserCatalog, IsSearchedWithTheOther)
{
    expectResult(runWithIt({"catalog", "search", "mine", "grid"}), 0,
                 "MINE:GRID  projected  Grid of mine  area of use unknown\n", "");
    EXPECT_EQ(runWithIt({"catalog", "search", "--authority", "mine", "grid"}).status, 0);
    EXPECT_EQ(runWithIt({"catalog", "search", "EPSG:25832"}).status, 0);
    EXPECT_EQ(run({"catalog", "search", "grid of mine"}).status, 3);
}

TEST_F(UserCatalog, HasItsCodesAmongTheNearest)
{
    const ProgramResult result = runWithIt({"catalog", "show", "MINE:GRIT"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.errors, HasSubstr("the catalog has no such code; the nearest is MINE:GRID (Grid of mine)\n"));
}

TEST_F(UserCatalog, NumberOfSeveralAuthoritiesWithoutEpsg_IsNoCode)
{
    execute("UPDATE projected_crs SET code = '77777777'; "
            "INSERT INTO projected_crs SELECT * FROM projected_crs; "
            "UPDATE projected_crs SET auth_name = 'YOURS' WHERE rowid = 2;");
    const ProgramResult result = runWithIt({"catalog", "show", "77777777"});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.errors, "orvelcs: catalog show: 77777777: the catalog has no such code; the nearest are "
                             "MINE:77777777 (Grid of mine), YOURS:77777777 (Grid of mine)\n");
}

TEST_F(UserCatalog, OperationOfBothCatalogs_IsListedOnce)
{
    execute("CREATE TABLE helmert_transformation AS SELECT * FROM proj.helmert_transformation WHERE auth_name = 'EPSG' "
            "AND code = 1777;");
    const Arguments list{"transformation", "list", "EPSG:4314", "EPSG:4326"};
    EXPECT_EQ(runWithIt(list).output, run(list).output);
}

TEST_F(UserCatalog, OperationWithoutASystemOrCode_IsLeftOut)
{
    execute("CREATE TABLE other_transformation AS SELECT * FROM proj.other_transformation LIMIT 2; "
            "UPDATE other_transformation SET source_crs_auth_name = NULL, source_crs_code = NULL WHERE rowid = 1; "
            "UPDATE other_transformation SET auth_name = 'MINE', code = '' WHERE rowid = 2;");
    const Arguments list{"transformation", "list", "EPSG:4314", "EPSG:4326"};
    EXPECT_EQ(runWithIt(list).output, run(list).output);
}

TEST_F(UserCatalog, SystemThatOnlyTheListHas_IsNotSuggestedForItself)
{
    const ProgramResult result = runWithIt({"catalog", "show", "MINE:GRID"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.errors, testing::Not(HasSubstr("the nearest is MINE:GRID")));
}

} // namespace
} // namespace Tests
