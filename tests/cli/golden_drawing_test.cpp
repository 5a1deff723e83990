// Drawings written on one system, converted on this one.
#include "command_line_test.h"

namespace Tests {
namespace {

class GoldenDrawing : public CommandLineTest {
protected:
    static std::string golden(const std::string& name)
    {
        return readFile(std::filesystem::path(ORVEL_SOURCE_DIR) / "tests/host/golden" / (name + ".qedb"));
    }
};

TEST_F(GoldenDrawing, ConvertedToAnOlderVersion_IsTheOneConvertedElsewhere)
{
    given("a.qedb", golden("version_33"));
    ASSERT_EQ(run({"convert", "-q", "a.qedb", "--to", "29", "-o", "older.qedb"}).status, 0);
    EXPECT_EQ(contents("older.qedb"), golden("version_29"));
    ASSERT_EQ(run({"convert", "-q", "a.qedb", "--to", "21"}).status, 0);
    EXPECT_EQ(contents("a.qedb"), golden("version_21"));
}

TEST_F(GoldenDrawing, OfAnOlderVersion_IsUnderstood)
{
    given("a.qedb", golden("version_29"));
    const Json shown = runForJson({"show", "a.qedb"});
    EXPECT_EQ(shown["code"], "EPSG:25832");
    EXPECT_EQ(shown["name"], "ETRS89 / UTM zone 32N");
    EXPECT_EQ(shown["source"], "legacy");
}

TEST_F(GoldenDrawing, WithAUsersOwnSystem_IsUnderstood)
{
    given("a.qedb", golden("user_defined"));
    const Json shown = runForJson({"show", "a.qedb"});
    EXPECT_EQ(shown["code"], "ΓΗ:Straße-測量-🗺");
    EXPECT_EQ(shown["knownToCatalog"], false);
}

} // namespace
} // namespace Tests
