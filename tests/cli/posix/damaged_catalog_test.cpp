// A catalog that is missing, damaged or unreadable is reported as such, never as a catalog without the code.
#include <sqlite3.h>

#include <cstdint>
#include <fstream>
#include <memory>

#include "cli/command_line_test.h"
#include "cli/posix/shell_run.h"
#include "embedded/spatial_reference/catalog/catalog.h"

namespace Tests {
namespace {

using testing::HasSubstr;
using Commands = std::vector<Arguments>;

struct CloseDatabase {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

/// The numbers of the first pages of a table and its indexes, counted from 1.
std::vector<std::int64_t> findFirstPages(const std::string& file, const std::string& table)
{
    sqlite3* opened = nullptr;
    EXPECT_EQ(sqlite3_open_v2(file.c_str(), &opened, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
    const std::unique_ptr<sqlite3, CloseDatabase> database(opened);
    sqlite3_stmt* prepared = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(opened, "SELECT rootpage FROM sqlite_master WHERE tbl_name = ?1 AND rootpage > 0", -1,
                                 &prepared, nullptr),
              SQLITE_OK);
    const std::unique_ptr<sqlite3_stmt, CloseDatabase> statement(prepared);
    EXPECT_EQ(sqlite3_bind_text(prepared, 1, table.c_str(), -1, nullptr), SQLITE_OK);
    std::vector<std::int64_t> pages;
    while (sqlite3_step(prepared) == SQLITE_ROW)
        pages.push_back(sqlite3_column_int64(prepared, 0));
    return pages;
}

class DamagedCatalog : public CommandLineTest {
protected:
    DamagedCatalog() { std::filesystem::create_directory(folder()); }

    std::filesystem::path folder() const { return path("catalog"); }
    std::string database() const { return (folder() / "proj.db").string(); }

    /// Transforms a line that is not a point, damages the catalog, and then gives the program these points, for printf.
    /// The program's later output is in the file "rest", its errors are in "errors". Returns its exit status and a line
    /// feed.
    std::string transformBeforeAndAfterDamage(const std::string& points) const
    {
        std::filesystem::copy_file(Embedded::catalogPath(), database());
        ProgramRun script = shellRun(R"(mkfifo in out
                                        "$0" transform EPSG:4267 EPSG:4269 <in >out 2>errors &
                                        exec 3>in 4<out
                                        echo nonsense >&3
                                        read -r answer <&4
                                        dd if=/dev/zero of=catalog/proj.db bs=4096 count=1000 conv=notrunc 2>dd
                                        printf ')" +
                                     points + R"(' >&3
                                        exec 3>&-
                                        cat <&4 >rest
                                        wait $!
                                        echo $?)");
        script.environment["PROJ_DATA"] = folder().string();
        return run(script).output;
    }

    /// Creates a copy of the catalog and overwrites the first pages of a table.
    void givenCatalogWithDamaged(const std::string& table) const
    {
        std::filesystem::copy_file(Embedded::catalogPath(), database());
        constexpr std::int64_t kPageInBytes = 4096;
        const std::vector<std::int64_t> pages = findFirstPages(database(), table);
        ASSERT_FALSE(pages.empty()) << table;
        std::fstream file(database(), std::ios::in | std::ios::out | std::ios::binary);
        for (const std::int64_t page : pages) {
            file.seekp((page - 1) * kPageInBytes);
            file << std::string(kPageInBytes, '\xFF');
        }
        ASSERT_TRUE(file.flush());
    }
    ProgramResult runWithCatalog(Arguments arguments, const std::string& input = "48 2\n") const
    {
        ProgramRun programRun;
        programRun.arguments = std::move(arguments);
        programRun.input = input;
        programRun.environment["PROJ_DATA"] = folder().string();
        return run(programRun);
    }
    /// Commands that look something up in the catalog.
    static Commands lookUpCommands()
    {
        return {{"catalog", "show", "EPSG:25832"},
                {"catalog", "show", "EPSG:99999"},
                {"catalog", "search", "utm"},
                {"catalog", "search", "--authority", "EPSG", "nothing of this name"},
                {"encode", "EPSG:25832", "--drawing-version", "30", "-o", "bytes"},
                {"assign", "EPSG:25832", "empty.qedb"},
                {"transform", "EPSG:4275", "EPSG:4326"},
                {"transformation", "list", "EPSG:4275", "EPSG:4326"}};
    }
    void expectCatalogErrors(const Commands& commands, const std::string& cause) const
    {
        givenDrawing("empty.qedb");
        for (const auto& command : commands) {
            const ProgramResult result = runWithCatalog(command);
            EXPECT_EQ(result.status, 1) << command[0];
            EXPECT_EQ(result.output, "") << command[0];
            EXPECT_THAT(result.errors, HasSubstr("the catalog cannot be read: ")) << command[0];
            EXPECT_THAT(result.errors, HasSubstr(cause)) << command[0];
        }
    }
    void expectDrawingsOwnDefinition(const std::string& cause) const
    {
        givenDrawingWith("plan.qedb", "EPSG:25832");
        const ProgramResult result = runWithCatalog({"show", "--json", "plan.qedb"});
        EXPECT_EQ(result.status, 0);
        const Json json = Json::parse(result.output);
        EXPECT_EQ(json["code"], "EPSG:25832");
        EXPECT_EQ(json["name"], "ETRS89 / UTM zone 32N");
        EXPECT_EQ(json["datum"], "EPSG:6258");
        EXPECT_EQ(json["knownToCatalog"], nullptr);
        EXPECT_FALSE(json.contains("error"));
        EXPECT_THAT(result.errors,
                    HasSubstr("plan.qedb: note: this is the drawing's own definition; the catalog cannot "
                              "be read: "));
        EXPECT_THAT(result.errors, HasSubstr(cause));
        EXPECT_THAT(runWithCatalog({"show", "-q", "plan.qedb"}).output, HasSubstr("known to catalog  not asked\n"));
    }
};

TEST_F(DamagedCatalog, MissingCatalog_IsReportedWithTheFolders)
{
    expectCatalogErrors(lookUpCommands(), "there is no proj.db in ");
    expectCatalogErrors(lookUpCommands(), folder().string());
    expectDrawingsOwnDefinition("there is no proj.db in ");
}

TEST_F(DamagedCatalog, CatalogThatIsNotADatabase_IsReportedWithTheFile)
{
    given("catalog/proj.db", "nonsense that is no database at all");
    expectCatalogErrors(lookUpCommands(), database() + ": file is not a database");
    expectDrawingsOwnDefinition(database());
    given("catalog/proj.db", "");
    expectCatalogErrors(lookUpCommands(), database() + ": no such table: metadata");
    std::filesystem::remove(database());
    std::filesystem::create_directory(database());
    expectCatalogErrors(lookUpCommands(), database() + ": not a regular file");
}

TEST_F(DamagedCatalog, UnreadableTable_IsReportedWithTheFile)
{
    givenCatalogWithDamaged("projected_crs");
    expectCatalogErrors(lookUpCommands(), database());
    expectDrawingsOwnDefinition(database() + ": database disk image is malformed");
}

TEST_F(DamagedCatalog, CodeThatPROJCannotRead_IsReported)
{
    givenCatalogWithDamaged("conversion_table");
    expectCatalogErrors(
        {{"catalog", "show", "EPSG:25832"}, {"encode", "EPSG:25832", "--drawing-version", "30", "-o", "b"}},
        database() + ": PROJ cannot read EPSG:25832, which is there");
    expectCatalogErrors({{"transformation", "list", "EPSG:4275", "EPSG:4326"}}, database() + ": damaged: ");
    EXPECT_EQ(runWithCatalog({"catalog", "show", "EPSG:99999"}).status, 3); // the damaged table is not needed
    EXPECT_EQ(runWithCatalog({"catalog", "show", "EPSG:4275"}).status, 0);
}

TEST_F(DamagedCatalog, UnreadableAliasNames_AreReported)
{
    givenCatalogWithDamaged("alias_name");
    expectCatalogErrors({{"transformation", "list", "EPSG:4275", "EPSG:4326"}},
                        database() + ": database disk image is malformed");
}

TEST_F(DamagedCatalog, DrawingWithOnlyALegacyCode_CannotBeRead)
{
    givenDrawing("plan.qedb");
    ASSERT_EQ(run({"forms", "plan.qedb", "-q", "--put", "legacy=EPSG:25832"}).status, 0);
    const ProgramResult result = runWithCatalog({"show", "plan.qedb"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr("eNotApplicable (2): the stored coordinate system cannot be read: the catalog "
                                         "cannot be read: there is no proj.db in "));
}

TEST_F(DamagedCatalog, ConversionThatNeedsTheCatalog_ReportsTheCatalog)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    const std::string before = contents("plan.qedb");
    const ProgramResult result = runWithCatalog({"convert", "plan.qedb", "--to", "29"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr("plan.qedb: eInvalidInput (3): "));
    EXPECT_THAT(result.errors, HasSubstr(": the catalog cannot be read: there is no proj.db in "));
    EXPECT_EQ(contents("plan.qedb"), before);
}

TEST_F(DamagedCatalog, DamageBetweenTwoPoints_IsReported)
{
    EXPECT_EQ(transformBeforeAndAfterDamage("40 -100\\n"), "1\n");
    EXPECT_THAT(contents("rest"), testing::StartsWith("39.9999968834 -100.0004155886\n"));
    EXPECT_THAT(contents("errors"), HasSubstr("the catalog cannot be read: " + database()));
}

TEST_F(DamagedCatalog, FoundAtTheFirstOfSeveralPoints_EndsTheRunWithoutTheOthers)
{
    EXPECT_EQ(transformBeforeAndAfterDamage("40 -100\\n60 -100\\n0 0\\n"), "1\n");
    EXPECT_EQ(contents("rest"), "39.9999968834 -100.0004155886\n");
    EXPECT_THAT(contents("errors"), HasSubstr("the catalog cannot be read: " + database()));
    EXPECT_THAT(contents("errors"), HasSubstr("(1 point)\n"));
}

TEST_F(DamagedCatalog, ReverseLookUp_ReportsTheCatalogInsteadOfNoTransformation)
{
    givenDrawing("plan.qedb");
    ASSERT_EQ(run({"config", "add", "--source", "EPSG:4275", "--target", "EPSG:4326", "--name", "NTF to WGS 84 (1)",
                   "--type", "transformation", "--drawing", "plan.qedb"})
                  .status,
              0);
    const ProgramResult result = runWithCatalog({"transformation", "EPSG:4326", "EPSG:4275", "--drawing", "plan.qedb"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr("NTF to WGS 84 (1): the catalog cannot be read: there is no proj.db in "));
}

TEST_F(DamagedCatalog, DefinitionWithAPossibleCatalogCode_IsRefused)
{
    givenDrawing("plan.qedb");
    given("plane.wkt", "LOCAL_CS[\"Plane\",UNIT[\"metre\",1]]");
    expectResult(runWithCatalog({"assign", "--definition", "plane.wkt", "--code", "EPSG:25832", "plan.qedb"}), 1, "",
                 HasSubstr("EPSG:25832: the catalog cannot be read: there is no proj.db in "));
}

TEST_F(DamagedCatalog, DamagedTable_IsFoundByTheVersionCheck)
{
    givenCatalogWithDamaged("alias_name");
    EXPECT_EQ(runWithCatalog({"catalog", "show", "EPSG:25832"}).status, 0);
    const ProgramResult version = runWithCatalog({"--version"});
    EXPECT_EQ(version.status, 0);
    expectResult(runWithCatalog({"--version", "--check"}), 1, version.output,
                 testing::StartsWith("orvelcs: command line: catalog: " + database() + ": damaged: "));
    const Json json = Json::parse(runWithCatalog({"--version", "--check", "--json"}).output);
    EXPECT_EQ(json["check"]["database"], database());
    EXPECT_THAT(json["check"]["fault"].get<std::string>(), HasSubstr("damaged"));
}

TEST_F(DamagedCatalog, MissingCatalog_FailsTheVersionCheck)
{
    const ProgramResult result = runWithCatalog({"--version", "--check", "--json"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(Json::parse(result.output)["check"]["database"], nullptr);
    EXPECT_THAT(result.errors, HasSubstr("catalog: there is no proj.db in "));
}

TEST_F(DamagedCatalog, LackOfMemory_IsNotReportedAsAMissingCode)
{
    const auto runWithMemory = [this](int kilobytes) {
        return run(shellRun("ulimit -v " + std::to_string(kilobytes) + "; exec \"$0\" catalog show EPSG:25832"));
    };
    constexpr int kSufficientKilobytes = 200'000;
    if (runWithMemory(kSufficientKilobytes).status != 0)
        GTEST_SKIP() << "the address sanitizer needs more address space than can be limited";
    int failures = 0;
    for (int kilobytes = 30'000; kilobytes <= 60'000; kilobytes += 1'000) {
        const ProgramResult result = runWithMemory(kilobytes);
        EXPECT_NE(result.status, 3) << kilobytes << ": " << result.errors;
        if (result.status == 1) {
            ++failures;
            EXPECT_THAT(result.errors,
                        testing::AnyOf(HasSubstr("not enough memory"), HasSubstr("PROJ cannot be loaded")))
                << kilobytes;
        }
    }
    EXPECT_GT(failures, 0);
}

} // namespace
} // namespace Tests
