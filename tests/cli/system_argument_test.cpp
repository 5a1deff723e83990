// SYSTEM: a code, or @FILE for the system of a drawing or of a text.
#include "command_line_test.h"

namespace Tests {
namespace {

constexpr const char* kWorksWkt =
    R"(PROJCS["Works grid",GEOGCS["ETRS89",DATUM["European_Terrestrial_Reference_System_1989",)"
    R"(SPHEROID["GRS 1980",6378137,298.257222101],AUTHORITY["EPSG","6258"]],PRIMEM["Greenwich",0],)"
    R"(UNIT["degree",0.0174532925199433]],PROJECTION["Transverse_Mercator"],)"
    R"(PARAMETER["latitude_of_origin",0],PARAMETER["central_meridian",9],PARAMETER["scale_factor",1],)"
    R"(PARAMETER["false_easting",1000],PARAMETER["false_northing",2000],UNIT["metre",1]])";
constexpr const char* kPoint = "500000 5500000\n";

class SystemArgument : public CommandLineTest {
protected:
    /// What points of the catalog's EPSG:25832 become in WGS 84.
    std::string transformed() const { return run({"transform", "-q", "EPSG:25832", "EPSG:4326"}, kPoint).output; }

    void givenWorksDrawing(const std::string& name) const
    {
        given("works.wkt", kWorksWkt);
        givenDrawing(name);
        ASSERT_EQ(run({"assign", "@works.wkt", "--code", "WORKS:1", name}).status, 0);
    }
};

TEST_F(SystemArgument, SystemOfADrawing_IsAssignedWithItsCode)
{
    givenWorksDrawing("works.qedb");
    givenDrawing("plan.qedb");
    expectResult(run({"assign", "@works.qedb", "plan.qedb"}), 0, "plan.qedb: assigned WORKS:1\n", "");
    Json expected = runForJson({"show", "works.qedb", "--wkt"});
    expected["file"] = "plan.qedb";
    EXPECT_EQ(runForJson({"show", "plan.qedb", "--wkt"}), expected);
}

TEST_F(SystemArgument, TextIsAssigned_UnderTheCodeOfTheUser)
{
    given("works.wkt", kWorksWkt);
    givenDrawing("plan.qedb");
    expectResult(run({"assign", "@works.wkt", "--code", "WORKS:1", "plan.qedb"}), 0, "plan.qedb: assigned WORKS:1\n",
                 "");
    EXPECT_EQ(runForJson({"show", "plan.qedb"})["name"], "Works grid");
}

TEST_F(SystemArgument, TextThatIsStored_NeedsACode)
{
    given("works.wkt", kWorksWkt);
    givenDrawing("plan.qedb");
    const std::string before = contents("plan.qedb");
    const std::string line = "@works.wkt: is a text, whose system needs --code, the code that it is to have";
    expectWrongUsage(run({"assign", "@works.wkt", "plan.qedb"}), "orvelcs: assign: " + line);
    expectWrongUsage(run({"encode", "@works.wkt", "--drawing-version", "29"}), "orvelcs: encode: " + line);
    EXPECT_EQ(contents("plan.qedb"), before);
}

TEST_F(SystemArgument, SystemOfADrawing_KeepsItsCode)
{
    givenDrawingWith("site.qedb", "EPSG:25832");
    givenDrawing("plan.qedb");
    expectWrongUsage(run({"assign", "@site.qedb", "--code", "MINE:1", "plan.qedb"}),
                     "orvelcs: assign: --code: goes with the system of a text only; this one has a code");
}

TEST_F(SystemArgument, DashAfterTheSign_IsStandardInput)
{
    givenDrawingWith("site.qedb", "EPSG:25832");
    givenDrawing("plan.qedb");
    EXPECT_EQ(run({"assign", "@-", "plan.qedb"}, contents("site.qedb")).output, "plan.qedb: assigned EPSG:25832\n");
    EXPECT_EQ(run({"assign", "@-", "--code", "WORKS:1", "plan.qedb"}, kWorksWkt).output,
              "plan.qedb: assigned WORKS:1\n");
    expectWrongUsage(run({"assign", "@-", "-"}),
                     "orvelcs: assign: -: standard input cannot be both the definition and the drawing");
    expectWrongUsage(run({"transform", "@-", "EPSG:4326"}, kPoint),
                     "orvelcs: transform: @-: standard input holds the points");
    expectWrongUsage(run({"transformation", "list", "@-", "@-"}),
                     "orvelcs: transformation list: @-: standard input cannot be both systems");
}

TEST_F(SystemArgument, SystemOfABatch_IsReadOnce)
{
    for (const std::string drawing : {"a.qedb", "b.qedb", "c.qedb"})
        givenDrawing(drawing);
    given("list", "b.qedb\nc.qedb\n");
    expectResult(run({"assign", "@-", "--code", "WORKS:1", "a.qedb", "--files-from", "list"}, kWorksWkt), 0,
                 "a.qedb: assigned WORKS:1\nb.qedb: assigned WORKS:1\nc.qedb: assigned WORKS:1\n", "");
    expectWrongUsage(run({"assign", "@-", "--code", "WORKS:1", "--files-from", "-"}, "a.qedb\n"),
                     "orvelcs: assign: -: standard input cannot be both the definition and the list");
}

TEST_F(SystemArgument, SystemThatCannotBeRead_IsOneMessageBeforeTheFirstDrawing)
{
    given("list", "a.qedb\nb.qedb\n");
    const ProgramResult result = run({"assign", "@missing.wkt", "--code", "WORKS:1", "--files-from", "list", "--json"});
    EXPECT_EQ(result.status, 1);
    const Json error =
        errorMember("assign", "missing.wkt", nullptr, nullptr, "cannot be opened: No such file or directory");
    EXPECT_EQ(result.errors, errorLine(error));
    Json expected = {
        {"file", "a.qedb"}, {"result", nullptr}, {"status", 0}, {"events", Json::array()}, {"error", error}};
    Json document = Json::array({expected});
    expected["file"] = "b.qedb";
    document.push_back(expected);
    EXPECT_EQ(Json::parse(result.output), document);
}

TEST_F(SystemArgument, DrawingsOfAList_AreShownInAFormat)
{
    givenDrawingWith("a.qedb", "EPSG:4326");
    givenDrawingWith("b.qedb", "EPSG:4326");
    given("list", "a.qedb\nb.qedb\n");
    const std::string line = run({"show", "--format", "proj", "a.qedb"}).output;
    EXPECT_NE(line, "");
    expectResult(run({"show", "--format", "proj", "--files-from", "list"}), 0, line + line, "");
}

TEST_F(SystemArgument, FileInPlaceOfACode_IsNamedByTransformation)
{
    givenDrawing("plan.qedb");
    EXPECT_EQ(run({"transformation", "plan.qedb", "EPSG:4326"}).errors,
              "orvelcs: transformation: plan.qedb to EPSG:4326: no transformation is configured; the catalog has no "
              "plan.qedb; it is a file, where a code is expected\n");
}

TEST_F(SystemArgument, DrawingEncodedIntoAFileNamedLikeACode_IsNotTakenForSwapped)
{
    givenDrawing("plan.qedb");
    expectResult(run({"encode", "@plan.qedb", "--drawing-version", "29", "-o", "EPSG:25832"}), 3, "",
                 "orvelcs: encode: plan.qedb: has no coordinate system\n");
}

TEST_F(SystemArgument, DrawingOfACatalogSystem_TransformsAsItsCodeDoes)
{
    givenDrawingWith("site.qedb", "EPSG:25832");
    EXPECT_EQ(run({"transform", "-q", "@site.qedb", "EPSG:4326"}, kPoint).output, transformed());
    given("back.txt", transformed());
    EXPECT_EQ(run({"transform", "-q", "EPSG:4326", "@site.qedb"}, contents("back.txt")).output,
              run({"transform", "-q", "EPSG:4326", "EPSG:25832"}, contents("back.txt")).output);
}

TEST_F(SystemArgument, TextOfACatalogSystem_TransformsAsItsCodeDoes)
{
    for (const std::string format : {"wkt2", "wkt1", "esri", "projjson"}) {
        SCOPED_TRACE(format);
        given("utm.txt", run({"catalog", "show", "EPSG:25832", "--format", format}).output);
        EXPECT_EQ(run({"transform", "-q", "@utm.txt", "EPSG:4326"}, kPoint).output, transformed());
    }
}

TEST_F(SystemArgument, SystemOfOnesOwn_Transforms)
{
    givenWorksDrawing("works.qedb");
    const std::string fromDrawing = run({"transform", "-q", "@works.qedb", "EPSG:4258"}, "1000 2000\n").output;
    EXPECT_EQ(fromDrawing, "0.0000000000 9.0000000000\n");
    EXPECT_EQ(run({"transform", "-q", "@works.wkt", "EPSG:4258"}, "1000 2000\n").output, fromDrawing);
    EXPECT_EQ(run({"transform", "-q", "EPSG:4258", "@works.wkt"}, "0 9\n").output, "1000.000000 2000.000000\n");
}

TEST_F(SystemArgument, ConfigurationOfADrawingsCode_IsUsed)
{
    givenDrawingWith("site.qedb", "EPSG:4275");
    givenConfiguredDrawing("plan.qedb", configurationItem("EPSG:4275", "EPSG:4326", "EPSG:1193", 2));
    const Arguments codes = {"transformation", "EPSG:4275", "EPSG:4326", "--drawing", "plan.qedb"};
    const Arguments files = {"transformation", "@site.qedb", "EPSG:4326", "--drawing", "plan.qedb"};
    EXPECT_EQ(runForJson(files), runForJson(codes));
    EXPECT_EQ(runForJson(files)["name"], "EPSG:1193");
}

TEST_F(SystemArgument, TextWithoutAnIdentifier_HasNoConfiguration)
{
    given("works.wkt", kWorksWkt);
    expectResult(
        run({"transformation", "@works.wkt", "EPSG:4326"}), 1, "",
        "orvelcs: transformation: @works.wkt: has no code, and a configuration names systems by their codes\n");
}

TEST_F(SystemArgument, OperationsOfADrawing_AreThoseOfItsCode)
{
    givenDrawingWith("site.qedb", "EPSG:4230");
    EXPECT_EQ(runForJson({"transformation", "list", "@site.qedb", "EPSG:4326"}),
              runForJson({"transformation", "list", "EPSG:4230", "EPSG:4326"}));
    given("works.wkt", kWorksWkt);
    EXPECT_EQ(runForJson({"transformation", "list", "@works.wkt", "EPSG:4326"}),
              runForJson({"transformation", "list", "EPSG:4258", "EPSG:4326"}));
}

TEST_F(SystemArgument, EncodedSystemOfADrawing_IsThatOfItsCode)
{
    givenDrawingWith("site.qedb", "EPSG:25832");
    EXPECT_EQ(run({"encode", "@site.qedb", "--drawing-version", "29"}).output,
              run({"encode", "EPSG:25832", "--drawing-version", "29"}).output);
    given("works.wkt", kWorksWkt);
    given("block", run({"encode", "@works.wkt", "--code", "WORKS:1", "--drawing-version", "29"}).output);
    EXPECT_EQ(runForJson({"decode", "block"})[0]["code"], "WORKS:1");
    expectWrongUsage(run({"encode", "EPSG:4326", "--code", "X:1", "--drawing-version", "29"}),
                     "orvelcs: encode: --code: goes with the system of a text only; this one has a code");
}

TEST_F(SystemArgument, CatalogShow_DescribesASystemOfOnesOwn)
{
    givenWorksDrawing("works.qedb");
    const Json drawing = runForJson({"catalog", "show", "@works.qedb"});
    EXPECT_EQ(drawing["code"], "WORKS:1");
    EXPECT_EQ(drawing["name"], "Works grid");
    EXPECT_EQ(drawing["knownToCatalog"], false);
    EXPECT_EQ(drawing["deprecated"], nullptr);
    EXPECT_EQ(drawing["areaOfUse"], nullptr);
    EXPECT_EQ(runForJson({"catalog", "show", "@works.wkt"})["code"], nullptr);
}

TEST_F(SystemArgument, IdentifierInAText_IsItsCode)
{
    given("utm.wkt", run({"catalog", "show", "EPSG:25832", "--format", "wkt2"}).output);
    const Json json = runForJson({"catalog", "show", "@utm.wkt"});
    EXPECT_EQ(json["code"], "EPSG:25832");
    EXPECT_EQ(json["knownToCatalog"], true);
    EXPECT_EQ(json["areaOfUse"], runForJson({"catalog", "show", "EPSG:25832"})["areaOfUse"]);
}

TEST_F(SystemArgument, IdentifierOfAnotherSystem_DoesNotCount)
{
    std::string wkt = kWorksWkt;
    wkt.insert(wkt.size() - 1, R"(,AUTHORITY["EPSG","25832"])");
    given("works.wkt", wkt);
    const Json json = runForJson({"catalog", "show", "@works.wkt"});
    EXPECT_EQ(json["code"], nullptr);
    EXPECT_EQ(json["knownToCatalog"], false);
}

TEST_F(SystemArgument, Show_DescribesATextAsItDoesADrawing)
{
    given("works.wkt", kWorksWkt);
    expectResult(run({"show", "@works.wkt"}), 0,
                 "@works.wkt\n"
                 "  name              Works grid\n"
                 "  kind              3 (projected)\n"
                 "  datum             EPSG:6258\n"
                 "  ellipsoid         GRS 1980\n"
                 "  known to catalog  no\n",
                 "");
    givenDrawingWith("site.qedb", "EPSG:25832");
    EXPECT_EQ(run({"show", "@site.qedb"}).output, run({"show", "site.qedb"}).output);
}

TEST_F(SystemArgument, DrawingWhoseNameBeginsWithTheSign_IsStillShown)
{
    givenDrawingWith("@site.qedb", "EPSG:4326");
    givenDrawingWith("site.qedb", "EPSG:25832");
    EXPECT_EQ(runForJson({"show", "@site.qedb"})["code"], "EPSG:4326");
}

TEST_F(SystemArgument, DrawingWithoutASystem_IsNothingFound)
{
    givenDrawing("empty.qedb");
    givenDrawing("plan.qedb");
    const std::string line = "empty.qedb: has no coordinate system\n";
    expectResult(run({"catalog", "show", "@empty.qedb"}), 3, "", "orvelcs: catalog show: " + line);
    expectResult(run({"assign", "@empty.qedb", "plan.qedb"}), 3, "", "orvelcs: assign: " + line);
    expectResult(run({"transform", "@empty.qedb", "EPSG:4326"}, kPoint), 3, "", "orvelcs: transform: " + line);
}

TEST_F(SystemArgument, FileThatCannotBeRead_IsNamed)
{
    std::filesystem::create_directory(path("folder"));
    given("empty.wkt", "");
    expectResult(run({"catalog", "show", "@missing.wkt"}), 1, "",
                 "orvelcs: catalog show: missing.wkt: cannot be opened: No such file or directory\n");
    expectResult(run({"catalog", "show", "@folder"}), 1, "", "orvelcs: catalog show: folder: is a folder\n");
    expectResult(run({"catalog", "show", "@empty.wkt"}), 1, "", "orvelcs: catalog show: empty.wkt: is empty\n");
    expectWrongUsage(run({"catalog", "show", "@"}),
                     "orvelcs: catalog show: SYSTEM: expected the name of a file after @");
}

TEST_F(SystemArgument, DamagedDrawing_IsAFailureOfTheDrawing)
{
    givenDrawingWith("site.qedb", "EPSG:25832");
    given("damaged.qedb", contents("site.qedb").substr(0, 5000));
    const Json error = runForJson({"encode", "@damaged.qedb", "--drawing-version", "29", "-o", "block"}, 1)["error"];
    EXPECT_EQ(error["what"], "damaged.qedb");
    EXPECT_EQ(error["name"], "eFileDamaged");
}

TEST_F(SystemArgument, UnknownCodeBesideAFile_IsNamedWithTheNearest)
{
    givenDrawingWith("site.qedb", "EPSG:25832");
    const ProgramResult result = run({"transform", "@site.qedb", "EPSG:48078"}, kPoint);
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, testing::StartsWith("orvelcs: transform: EPSG:48078: the catalog has no such code; the "
                                                   "nearest are EPSG:4807"));
}

TEST_F(SystemArgument, VerticalSystem_IsNamedAsSuch)
{
    const std::string vertical = "a vertical system, which a drawing cannot have";
    givenDrawing("plan.qedb");
    expectResult(run({"catalog", "show", "EPSG:5703"}), 3, "",
                 "orvelcs: catalog show: EPSG:5703: is " + vertical + "\n");
    EXPECT_THAT(run({"assign", "EPSG:5703", "plan.qedb"}).errors, testing::HasSubstr("EPSG:5703 is " + vertical));
    expectResult(run({"transform", "EPSG:5703", "EPSG:4326"}, kPoint), 1, "",
                 "orvelcs: transform: EPSG:5703: is " + vertical + "\n");
    given("height.wkt", R"(VERTCRS["h",VDATUM["d"],CS[vertical,1],AXIS["up",up],LENGTHUNIT["metre",1]])");
    expectResult(run({"show", "@height.wkt"}), 1, "",
                 "orvelcs: show: @height.wkt: height.wkt: " + vertical + ": statusUnreadable (43)\n");
}

} // namespace
} // namespace Tests
