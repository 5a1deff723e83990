// The items of a stored configuration: listing, removing, and refusing those that can never work.
#include "command_line_test.h"

namespace Tests {
namespace {

using testing::HasSubstr;

const std::string kNtf = configurationItem("EPSG:4275", "EPSG:4326", "NTF to WGS 84 (1)", 2);
const std::string kEd50 = configurationItem("EPSG:4230", "EPSG:4326", "ED50 to WGS 84 (1)", 2);
const std::string kEd50Back = configurationItem("EPSG:4326", "EPSG:4230", "ED50 to WGS 84 (2)", 2);
constexpr const char* kWayOut = "; --force stores it all the same\n";

class ConfigItems : public CommandLineTest {
protected:
    ConfigItems() { givenDrawing("a.qedb"); }

    static Arguments inStore(const Arguments& arguments, const std::string& store)
    {
        return concatenate(arguments, store == "user" ? Arguments{"--user"} : Arguments{"--drawing", "a.qedb"});
    }
    ProgramResult runInUserFolder(const Arguments& arguments, const std::string& input = "") const
    {
        return run(concatenate(arguments, {"--user-dir", path("u").string(), "--registry", path("registry").string()}),
                   input);
    }
    void givenItems(const std::string& text, const std::string& store = "drawing") const
    {
        ASSERT_EQ(runInUserFolder(inStore({"config", "set", "-", "-q", "--force"}, store), text).status, 0);
    }
    std::string stored(const std::string& store = "drawing") const
    {
        return runInUserFolder(inStore({"config", "get"}, store)).output;
    }
    ProgramResult add(const std::string& source, const std::string& target, const std::string& name,
                      const std::string& type = "transformation", const Arguments& more = {}) const
    {
        return run(concatenate({"config", "add", "--source", source, "--target", target, "--name", name, "--type", type,
                                "--drawing", "a.qedb"},
                               more));
    }
    /// Expects that the item is refused, with the reason, and that --force stores it.
    void expectRefused(const std::string& source, const std::string& target, const std::string& name,
                       const std::string& reason, const std::string& type = "transformation") const
    {
        givenItems("");
        const std::string before = contents("a.qedb");
        expectResult(add(source, target, name, type), 1, "",
                     testing::AllOf(testing::StartsWith("orvelcs: config add: "), HasSubstr(reason),
                                    testing::EndsWith(kWayOut)));
        EXPECT_EQ(contents("a.qedb"), before);
        const std::string element = configurationItem(source, target, name, type == "path" ? 1 : 2);
        expectResult(run({"config", "set", "-", "--drawing", "a.qedb"}, element), 1, "",
                     testing::AllOf(testing::StartsWith("orvelcs: config set: "), HasSubstr(reason),
                                    testing::EndsWith(kWayOut)));
        EXPECT_EQ(contents("a.qedb"), before);
        EXPECT_EQ(add(source, target, name, type, {"--force"}).status, 0);
        EXPECT_EQ(stored(), element);
    }
};

TEST_F(ConfigItems, OfEachStore_AreListed)
{
    for (const char* const store : {"drawing", "user"}) {
        givenItems(kNtf + kEd50, store);
        expectResult(runInUserFolder(inStore({"config", "items"}, store)), 0,
                     "EPSG:4275 to EPSG:4326: NTF to WGS 84 (1) (transformation)\n"
                     "EPSG:4230 to EPSG:4326: ED50 to WGS 84 (1) (transformation)\n",
                     "");
    }
    EXPECT_EQ(runForJson({"config", "items", "--drawing", "a.qedb"})[1]["xml"], kEd50);
}

TEST_F(ConfigItems, OfAStoreWithoutAConfiguration_ExitWithStatusThree)
{
    expectResult(run({"config", "items", "--drawing", "a.qedb"}), 3, "",
                 "orvelcs: config items: a.qedb: there is no configuration\n");
    EXPECT_EQ(runForJson({"config", "items", "--drawing", "a.qedb"}, 3), Json::array());
    expectResult(runInUserFolder({"config", "items", "--registry-store"}), 3, "",
                 "orvelcs: config items: registry store: there is no configuration\n");
    givenItems("");
    EXPECT_EQ(runForJson({"config", "items", "--drawing", "a.qedb"}), Json::array()) << "an empty one";
    expectWrongUsage(run({"config", "items", "text", "--drawing", "a.qedb"}),
                     "orvelcs: config items: TEXTFILE: and a store are both given; give one");
    expectWrongUsage(run({"config", "items", "--user", "--drawing", "a.qedb"}),
                     "orvelcs: config items: --drawing: more than one store is named; name one");
}

TEST_F(ConfigItems, Remove_LeavesTheRestOfTheTextByteForByte)
{
    const std::string before = "\n " + kNtf + "\t\r\n";
    const std::string after = "\n" + kEd50Back + " <Item>x</Item> rest é\n";
    givenItems(before + kEd50 + after);
    expectResult(run({"config", "remove", "--source", "epsg:4230", "--target", "EPSG:4326", "--drawing", "a.qedb"}), 0,
                 "a.qedb: item removed\n", "");
    EXPECT_EQ(stored(), before + after);
}

TEST_F(ConfigItems, Remove_RemovesEveryItemOfThePair)
{
    givenItems(kEd50 + kNtf + kEd50, "user");
    const ProgramResult result =
        runInUserFolder({"config", "remove", "--source", "EPSG:4230", "--target", "EPSG:4326", "--user", "--json"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(Json::parse(result.output)["result"], true);
    EXPECT_EQ(contents(std::string("u/") + kSettingsFile), kNtf + "\r\n");
}

TEST_F(ConfigItems, RemoveWithoutSuchAnItem_ExitsWithStatusThree)
{
    const Arguments removal = {"config", "remove", "--source", "EPSG:4326", "--target", "EPSG:4275"};
    for (const std::string& text : {std::string(), kNtf}) { // the pair of the item is the other way round
        givenItems(text);
        const std::string before = contents("a.qedb");
        expectResult(run(inStore(removal, "drawing")), 3, "",
                     "orvelcs: config remove: a.qedb: has no item from EPSG:4326 to EPSG:4275\n");
        EXPECT_EQ(contents("a.qedb"), before);
    }
    EXPECT_EQ(runInUserFolder(inStore(removal, "user")).status, 3);
    EXPECT_EQ(runForJson(inStore(removal, "drawing"), 3)["result"], false);
}

TEST_F(ConfigItems, NamesAndCodes_AreStoredAsTheCatalogSpellsThem)
{
    EXPECT_EQ(add("epsg:4230", "Epsg:4326", "ed50 TO wgs 84 (1)").status, 0);
    EXPECT_EQ(stored(), kEd50);
    std::string text = kEd50;
    text.replace(text.find("ED50"), 4, "Ed50");
    text = " " + kNtf + "\n" + text + " tail";
    ASSERT_EQ(run({"config", "set", "-", "--drawing", "a.qedb", "-q"}, text).status, 0);
    EXPECT_EQ(stored(), " " + kNtf + "\n" + kEd50 + " tail");
    EXPECT_EQ(add("EPSG:4230", "EPSG:4258", "epsg:1626").status, 0);
    EXPECT_THAT(stored(), HasSubstr("<Name>EPSG:1626</Name>"));
}

TEST_F(ConfigItems, AReversibleOperation_MayLeadFromTheTargetToTheSource)
{
    EXPECT_EQ(add("EPSG:4326", "EPSG:4230", "ED50 to WGS 84 (2)").status, 0);
    expectRefused("EPSG:9518", "EPSG:4979", "WGS 84 to EGM2008 height (2)", " and is not reversible; ");
}

TEST_F(ConfigItems, UnknownCodes_AreRefused)
{
    expectRefused("EPSG:42300", "EPSG:4326", "ED50 to WGS 84 (1)",
                  "EPSG:42300: the catalog has no such code; the nearest are ");
    expectRefused("EPSG:4230", "EPSG:5773", "ED50 to WGS 84 (1)", "EPSG:5773: the catalog has no such code");
}

TEST_F(ConfigItems, NamesThatTheCatalogLacks_AreRefused)
{
    expectRefused(
        "EPSG:4230", "EPSG:4326", "ED50 to WGS 85 (2)",
        "ED50 to WGS 85 (2): the catalog has no such transformation; the nearest are EPSG:1134 (ED50 to WGS 84 "
        "(2)), ");
    expectRefused("EPSG:4230", "EPSG:4326", "ED50 to WSG 84 (1)", "the nearest are EPSG:1133 (ED50 to WGS 84 (1))");
    expectRefused("EPSG:4230", "EPSG:4326", "Nowhere", "Nowhere: the catalog has no such path;", "path");
}

TEST_F(ConfigItems, NamesOfTheOtherType_AreRefused)
{
    expectRefused("EPSG:4230", "EPSG:4326", "ED50 to WGS 84 (1)",
                  "is a transformation and not a path; give --type transformation", "path");
}

TEST_F(ConfigItems, NamesThatSeveralHave_AreRefused)
{
    expectRefused("EPSG:9069", "EPSG:4258", "NKG_ETRF14 to ETRF93@2000.0", "the name fits several: ");
    EXPECT_EQ(add("EPSG:9069", "EPSG:4258", "NKG:NKG_ETRF14_ETRF93_2000", "transformation", {"--force"}).status, 0);
}

TEST_F(ConfigItems, OperationsBetweenOtherSystems_AreRefused)
{
    expectRefused("EPSG:4230", "EPSG:4258", "ED50 to WGS 84 (1)",
                  "EPSG:1133: leads from EPSG:4230 (ED50) to EPSG:4326 (WGS 84), and so does not fit between EPSG:4230 "
                  "(ED50) and EPSG:4258 (ETRS89); orvelcs transformation list EPSG:4230 EPSG:4258 shows what does");
    expectRefused("EPSG:4230", "EPSG:4230", "ED50 to WGS 84 (1)", "EPSG:4230: is both the source and the target");
}

TEST_F(ConfigItems, ASecondItemOfAPair_IsRefused)
{
    givenItems(kEd50);
    const std::string reason = "EPSG:4230 to EPSG:4326: has an item already, ED50 to WGS 84 (1)";
    expectResult(add("epsg:4230", "EPSG:4326", "ED50 to WGS 84 (2)"), 1, "",
                 testing::AllOf(HasSubstr(reason), testing::EndsWith(kWayOut)));
    EXPECT_EQ(stored(), kEd50);
    expectResult(run({"config", "set", "-", "--drawing", "a.qedb"}, kNtf + kEd50 + kEd50), 1, "", HasSubstr(reason));
    EXPECT_EQ(stored(), kEd50);
    EXPECT_EQ(add("EPSG:4230", "EPSG:4326", "ED50 to WGS 84 (2)", "transformation", {"--force"}).status, 0);
    EXPECT_EQ(runForJson({"config", "items", "--drawing", "a.qedb"}).size(), 2U);
}

TEST_F(ConfigItems, WithoutACatalog_AreStoredOnlyByForce)
{
    const Arguments addition = {"config", "add",       "--source", "EPSG:4230",      "--target",  "EPSG:4326",
                                "--name", "EPSG:1133", "--type",   "transformation", "--drawing", "a.qedb"};
    expectResult(runWithoutCatalog(addition), 1, "",
                 testing::AllOf(HasSubstr("the catalog cannot be read: "), testing::EndsWith(kWayOut)));
    EXPECT_EQ(runWithoutCatalog(concatenate(addition, {"--force"})).status, 0);
}

} // namespace
} // namespace Tests
