#include "command_line_test.h"
#include "embedded/base/hex.h"

namespace Tests {
namespace {

class FormsCommand : public CommandLineTest {
protected:
    /// Writes the forms into a drawing and returns all its forms.
    Json put(const Arguments& values) const
    {
        if (!std::filesystem::exists(path("plan.qedb")))
            givenDrawing("plan.qedb");
        return runForJson(concatenate({"forms", "plan.qedb", "--put"}, values));
    }

    /// Expects that the value is refused and that the drawing is unchanged.
    void expectRefused(const std::string& value, const std::string& message) const
    {
        givenDrawingWith("refused.qedb", "EPSG:4326");
        const std::string before = contents("refused.qedb");
        expectResult(run({"forms", "refused.qedb", "--put", "legacy=EPSG:25832", value}), 1, "",
                     "orvelcs: forms: refused.qedb: " + message + "\n");
        EXPECT_EQ(contents("refused.qedb"), before);
        std::filesystem::remove(path("refused.qedb"));
    }
};

TEST_F(FormsCommand, EmptyDrawing_HasNoForms)
{
    givenDrawing("plan.qedb", 29);
    EXPECT_EQ(runForJson({"forms", "plan.qedb"}), Json({{"file", "plan.qedb"},
                                                        {"drawingVersion", 29},
                                                        {"legacyProjection", nullptr},
                                                        {"definitionXrecord", nullptr},
                                                        {"geoData", nullptr},
                                                        {"transformationConfig", nullptr}}));
}

TEST_F(FormsCommand, EmptyDrawing_PrintsNoneForEachForm)
{
    givenDrawing("plan.qedb");
    expectResult(run({"forms", "plan.qedb"}), 0,
                 "plan.qedb, drawing version 33\n"
                 "  legacy projection: none\n"
                 "  definition xrecord: none\n"
                 "  GeoData: none\n"
                 "  transformation configuration: none\n",
                 "");
}

TEST_F(FormsCommand, AssignedDrawing_HasOnlyGeoData)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    const Json forms = runForJson({"forms", "plan.qedb"});
    EXPECT_EQ(forms["legacyProjection"], nullptr);
    EXPECT_EQ(forms["definitionXrecord"], nullptr);
    EXPECT_EQ(forms["geoData"]["owner"], "model space");
    EXPECT_THAT(forms["geoData"]["text"].get<std::string>(), testing::HasSubstr("ETRS89 / UTM zone 32N"));
}

TEST_F(FormsCommand, OlderDrawing_HasThreeDefinitionsInItsXrecord)
{
    givenDrawing("plan.qedb", 25);
    ASSERT_EQ(run({"assign", "-q", "EPSG:25832", "plan.qedb"}).status, 0);
    const Json record = runForJson({"forms", "plan.qedb"})["definitionXrecord"];
    EXPECT_EQ(record["chain"][0], Json({{"code", 1071}, {"value", 1}}));
    EXPECT_EQ(record["chain"][1], Json({{"code", 1002}, {"value", "{"}}));
    EXPECT_EQ(record["chain"][2]["code"], 310);
    EXPECT_EQ(record["definitions"], Json::parse(R"([
        {"type": "CoordinateReferenceSystemDefinition", "code": "EPSG:25832"},
        {"type": "DatumDefinition", "code": "EPSG:6258"},
        {"type": "EllipsoidDefinition", "code": "EPSG:7019"}])"));
}

TEST_F(FormsCommand, TextInTheDefinitionXrecord_IsNotAPackedDefinition)
{
    const std::string text = run({"encode", "EPSG:4326", "--drawing-version", "33"}).output;
    ASSERT_FALSE(text.empty());
    const std::string hex = Embedded::hexFromBytes(text);
    for (const std::string& chain :
         {R"([{"code": 1071, "value": 1}, {"code": 1002, "value": "{"}, {"code": 310, "hex": ")" + hex +
              R"("}, {"code": 1002, "value": "}"}])",
          R"([{"code": 310, "hex": ")" + hex + R"("}])"})
        EXPECT_EQ(put({"xrecord-chain=" + chain})["definitionXrecord"]["definitions"], Json::array());
}

TEST_F(FormsCommand, StoredChain_CanBePutIntoAnotherDrawing)
{
    givenDrawing("old.qedb", 25);
    ASSERT_EQ(run({"assign", "-q", "EPSG:25832", "old.qedb"}).status, 0);
    const Json record = runForJson({"forms", "old.qedb"})["definitionXrecord"];
    EXPECT_EQ(put({"xrecord-chain=" + record["chain"].dump()})["definitionXrecord"], record);
}

TEST_F(FormsCommand, LayoutZero_HasOneChunkForADefinition)
{
    givenDrawing("old.qedb", 25);
    ASSERT_EQ(run({"assign", "-q", "EPSG:4326", "old.qedb"}).status, 0);
    const Json chain = runForJson({"forms", "old.qedb"})["definitionXrecord"]["chain"];
    std::string hex;
    for (std::size_t index = 2; chain[index]["code"] == 310; ++index)
        hex += chain[index]["hex"].get<std::string>();
    const Json record =
        put({"xrecord-chain=" + Json::array({{{"code", 310}, {"hex", hex}}}).dump()})["definitionXrecord"];
    EXPECT_EQ(record["layout"], 0);
    EXPECT_EQ(record["definitions"],
              Json::parse(R"([{"type": "CoordinateReferenceSystemDefinition", "code": "EPSG:4326"}])"));
}

TEST_F(FormsCommand, PutLegacy_RegistersTheApplicationAndStoresTheCode)
{
    EXPECT_EQ(put({"legacy=EPSG:25832"})["legacyProjection"], Json({{"code", "EPSG:25832"}}));
    EXPECT_THAT(contents("plan.qedb"), testing::HasSubstr("KTN_PROJECTION"));
    EXPECT_EQ(put({"legacy=EPSG:4326"})["legacyProjection"], Json({{"code", "EPSG:4326"}}));
}

TEST_F(FormsCommand, PutLegacyWithoutACode_RemovesTheRecord)
{
    EXPECT_NE(put({"legacy=EPSG:25832"})["legacyProjection"], nullptr);
    EXPECT_EQ(put({"legacy="})["legacyProjection"], nullptr);
}

TEST_F(FormsCommand, PutLegacyChain_StoresTheChainUnchanged)
{
    EXPECT_EQ(put({R"(legacy-chain=[{"code": 1000, "value": "EPSG:1"}])"})["legacyProjection"],
              Json({{"code", "EPSG:1"}}));
    EXPECT_EQ(put({R"(legacy-chain=[{"code": 1001, "value": "KTN_PROJECTION"}, {"code": 1040, "value": 1.5}])"})
                  ["legacyProjection"],
              Json({{"code", nullptr}}));
    EXPECT_EQ(put({"legacy-chain="})["legacyProjection"], nullptr);
}

TEST_F(FormsCommand, PutXrecordChain_PreservesEveryKindOfValue)
{
    const Json chain = Json::parse(R"([{"code": 1071, "value": 2}, {"code": 1070, "value": -32768},
        {"code": 1040, "value": 0.1}, {"code": 1000, "value": "L\u00e4nge \ud83c\udf0d"}, {"code": 300, "value": ""},
        {"code": 310, "hex": "00ff0a"}, {"code": 310, "hex": ""}])");
    const Json record = put({"xrecord-chain=" + chain.dump()})["definitionXrecord"];
    EXPECT_EQ(record, Json({{"layout", 2}, {"chain", chain}, {"definitions", Json::array()}}));
}

TEST_F(FormsCommand, PutXrecordChain_AcceptsUpperCaseHexAndPrintsLowerCase)
{
    EXPECT_EQ(put({R"(xrecord-chain=[{"code": 310, "hex": "0AFF"}])"})["definitionXrecord"]["chain"][0]["hex"], "0aff");
}

TEST_F(FormsCommand, PutEmptyXrecordChain_StoresAnEmptyRecord)
{
    EXPECT_EQ(put({"xrecord-chain=[]"})["definitionXrecord"],
              Json({{"layout", 0}, {"chain", Json::array()}, {"definitions", Json::array()}}));
    EXPECT_EQ(put({"xrecord-chain="})["definitionXrecord"], nullptr);
}

TEST_F(FormsCommand, PutGeoData_CreatesTheObjectInModelSpace)
{
    EXPECT_EQ(put({"geodata=a = \"b\"\nc"})["geoData"], Json({{"text", "a = \"b\"\nc"}, {"owner", "model space"}}));
    EXPECT_EQ(put({"geodata="})["geoData"], Json({{"text", ""}, {"owner", "model space"}}));
}

TEST_F(FormsCommand, PutEmptyGeoData_CreatesNoObject)
{
    EXPECT_EQ(put({"geodata="})["geoData"], nullptr);
}

TEST_F(FormsCommand, PutConfig_StoresTheText)
{
    EXPECT_EQ(put({"config=<Item/>"})["transformationConfig"], Json({{"text", "<Item/>"}}));
    EXPECT_EQ(put({"config="})["transformationConfig"], Json({{"text", ""}}));
}

TEST_F(FormsCommand, SeveralPuts_AreAppliedInOrder)
{
    givenDrawing("plan.qedb");
    const Json forms = runForJson({"forms", "--put", "legacy=A", "--put", "legacy=B", "geodata=x", "plan.qedb"});
    EXPECT_EQ(forms["legacyProjection"]["code"], "B");
    EXPECT_EQ(forms["geoData"]["text"], "x");
}

TEST_F(FormsCommand, Chain_IsPrintedLineByLine)
{
    EXPECT_EQ(put({"legacy=A", R"(xrecord-chain=[{"code": 1071, "value": 2}, {"code": 310, "hex": "0aff"}])",
                   "geodata=x\ny", "config=<Item/>"})["drawingVersion"],
              33);
    expectResult(run({"forms", "plan.qedb"}), 0,
                 "plan.qedb, drawing version 33\n"
                 "  legacy projection: \"A\"\n"
                 "  definition xrecord: layout 2\n"
                 "    1071  2\n"
                 "     310  0aff\n"
                 "  GeoData: \"x\\ny\"\n"
                 "    owned by model space\n"
                 "  transformation configuration: \"<Item/>\"\n",
                 "orvelcs: forms: plan.qedb: note: definition xrecord of layout 2: not readable by the module\n");
}

TEST_F(FormsCommand, InvalidChain_IsRefusedWithThePlaceOfTheError)
{
    const std::string prefix = "xrecord-chain: ";
    expectRefused("xrecord-chain={}",
                  prefix + "must be a JSON array of objects with \"code\" and \"value\" or \"hex\"");
    expectRefused("xrecord-chain=[1]", prefix + "[0]: must be an object with a whole number as \"code\"");
    expectRefused(R"(xrecord-chain=[{"code": 1071, "value": 1}, {"code": 9999, "value": 1}])",
                  prefix + "[1]: 9999 is not a group code that a drawing stores");
    expectRefused(R"(xrecord-chain=[{"code": 1071, "value": "1"}])",
                  prefix + "[0]: \"value\" must be a whole number from -2147483648 to 2147483647");
    expectRefused(R"(xrecord-chain=[{"code": 1071, "value": 2147483648}])",
                  prefix + "[0]: \"value\" must be a whole number from -2147483648 to 2147483647");
    expectRefused(R"(xrecord-chain=[{"code": 1070, "value": 18446744073709551615}])",
                  prefix + "[0]: \"value\" must be a whole number from -32768 to 32767");
    expectRefused(R"(xrecord-chain=[{"code": 1000, "value": 1}])", prefix + "[0]: \"value\" must be a string");
    expectRefused(R"(xrecord-chain=[{"code": 1040, "value": "1"}])", prefix + "[0]: \"value\" must be a number");
    expectRefused(R"(xrecord-chain=[{"code": 310, "value": "00"}])",
                  prefix + "[0]: group code 310 takes \"code\" and \"hex\", nothing else");
    expectRefused(R"(xrecord-chain=[{"code": 1071, "value": 1, "note": 1}])",
                  prefix + "[0]: group code 1071 takes \"code\" and \"value\", nothing else");
    expectRefused(R"(xrecord-chain=[{"code": 1000, "value": "a\u0000b"}])",
                  prefix + "[0].value: a text holds a NUL character (\\u0000)");
}

TEST_F(FormsCommand, InvalidHex_IsRefused)
{
    const std::string prefix = "xrecord-chain: [0]: ";
    expectRefused(R"(xrecord-chain=[{"code": 310, "hex": "0"}])",
                  prefix + "\"hex\": expected an even number of hexadecimal digits, found 1");
    expectRefused(R"(xrecord-chain=[{"code": 310, "hex": "0g"}])",
                  prefix + "\"hex\": expected hexadecimal digits, found something else as character 2");
    expectRefused(R"(xrecord-chain=[{"code": 310, "hex": 10}])", prefix + "\"hex\" must be a string");
}

TEST_F(FormsCommand, ChainThatIsNotJson_IsRefusedWithItsPlace)
{
    expectRefused("xrecord-chain=[",
                  "xrecord-chain: [0]: not JSON at byte 2: unexpected end of input; expected '[', '{', or a "
                  "literal");
    expectRefused(R"(xrecord-chain=[{"code": 1000, "value": "\ud800"}])",
                  "xrecord-chain: [0].value: not JSON at byte 33: invalid string: surrogate U+D800..U+DBFF must be "
                  "followed by U+DC00..U+DFFF");
    expectRefused(R"(xrecord-chain=[{"code": 1000, "value": [[]]}])",
                  "xrecord-chain: [0].value: nested deeper than 2 levels");
}

TEST_F(FormsCommand, LegacyChainThatTheHostRefuses_IsReportedWithTheHostsCode)
{
    expectRefused(R"(legacy-chain=[{"code": 300, "value": "x"}])",
                  "legacy-chain: the host refused it: eInvalidResbuf (7)");
    expectRefused(R"(legacy-chain=[{"code": 1001, "value": "OTHER"}])",
                  "legacy-chain: [0]: the application must be KTN_PROJECTION");
}

TEST_F(FormsCommand, RefusedPut_PrintsNullsAndTheErrorInJson)
{
    givenDrawing("plan.qedb");
    EXPECT_EQ(runForJson({"forms", "plan.qedb", "--put", "xrecord-chain={}"}, 1),
              Json({{"file", "plan.qedb"},
                    {"drawingVersion", nullptr},
                    {"legacyProjection", nullptr},
                    {"definitionXrecord", nullptr},
                    {"geoData", nullptr},
                    {"transformationConfig", nullptr},
                    {"result", nullptr},
                    {"error",
                     {{"command", "forms"},
                      {"what", "plan.qedb"},
                      {"code", nullptr},
                      {"name", nullptr},
                      {"message",
                       "xrecord-chain: must be a JSON array of objects with \"code\" and \"value\" or \"hex\""}}}}));
}

TEST_F(FormsCommand, PutIntoAnOlderDrawing_StoresTheValuesUnchanged)
{
    givenDrawing("plan.qedb", 25);
    const Json forms = put({"legacy=EPSG:25832", R"(xrecord-chain=[{"code": 1071, "value": 2}])", "geodata=nonsense"});
    EXPECT_EQ(forms["definitionXrecord"]["layout"], 2);
    EXPECT_EQ(runForJson({"forms", "plan.qedb"}), forms);
}

TEST_F(FormsCommand, DashAsFileWithPut_PrintsTheChangedDrawing)
{
    givenDrawing("plan.qedb");
    const std::string empty = contents("plan.qedb");
    EXPECT_EQ(put({"geodata=x"})["geoData"]["text"], "x");
    expectPrinted(run({"forms", "-", "--put", "geodata=x"}, empty), "plan.qedb");
}

TEST_F(FormsCommand, FileAfterThePutValues_IsTheDrawing)
{
    givenDrawing("plan.qedb");
    EXPECT_EQ(run({"forms", "--put", "geodata=x", "plan.qedb", "--quiet"}).status, 0);
    EXPECT_EQ(runForJson({"forms", "plan.qedb"})["geoData"]["text"], "x");
    expectWrongUsage(run({"forms", "--put", "geodata=x"}), "orvelcs: forms: FILE: is required");
}

TEST_F(FormsCommand, InvalidPut_IsWrongUsage)
{
    givenDrawing("plan.qedb");
    expectWrongUsage(run({"forms", "plan.qedb", "--put", "legacy"}),
                     "orvelcs: forms: --put: expected FORM=VALUE, found legacy");
    expectWrongUsage(run({"forms", "plan.qedb", "--put", "legasy=1"}),
                     "orvelcs: forms: --put: legasy is not a form; the nearest is legacy");
    expectWrongUsage(run({"forms", "plan.qedb", "--put"}), "orvelcs: forms: --put: needs a value");
}

TEST_F(FormsCommand, UnpairedSurrogateInADrawing_IsPrintedAsAReplacementCharacter)
{
    Drawing drawing;
    drawing.withGeoData({L'A', static_cast<wchar_t>(0xD83D), L'B'});
    given("plan.qedb", saveToBytes(*drawing.database()));
    EXPECT_EQ(runForJson({"forms", "plan.qedb"})["geoData"]["text"], "A\xEF\xBF\xBD"
                                                                     "B");
}

TEST_F(FormsCommand, NumberOutOfRange_IsRefusedWithItsPlace)
{
    expectRefused(R"(xrecord-chain=[{"code":1071,"value":1},{"code":1040,"value":1e400}])",
                  "xrecord-chain: [1].value: the number 1e400 is beyond all bounds");
    givenDrawing("plan.qedb");
    EXPECT_EQ(runForJson({"forms", "plan.qedb", "--put", R"(xrecord-chain=[{"code":1040,"value":1e400}])"},
                         1)["error"]["message"],
              "xrecord-chain: [0].value: the number 1e400 is beyond all bounds");
}

TEST_F(FormsCommand, DuplicateKey_IsRefused)
{
    expectRefused(R"(xrecord-chain=[{"code":1071,"value":1},{"code":1071,"code":1070,"value":1}])",
                  "xrecord-chain: [1]: the key \"code\" appears twice");
    expectRefused(R"(xrecord-chain=[{"code":1071,"value":1,"value":1}])",
                  "xrecord-chain: [0]: the key \"value\" appears twice");
}

TEST_F(FormsCommand, UnknownForm_IsRefusedWithTheListOfForms)
{
    givenDrawing("plan.qedb");
    expectWrongUsage(run({"forms", "plan.qedb", "--put", "leg=1"}),
                     "orvelcs: forms: --put: leg is not a form; there are config, geodata, legacy, legacy-chain, "
                     "xrecord-chain");
}

TEST_F(FormsCommand, ChainThatTheModuleCannotRead_IsNoted)
{
    const auto errorsFor = [&](const std::string& chain) {
        EXPECT_NE(put({"xrecord-chain=" + chain})["definitionXrecord"], nullptr);
        return run({"forms", "plan.qedb"}).errors;
    };
    const auto note = [](const std::string& layout) {
        return "orvelcs: forms: plan.qedb: note: definition xrecord of layout " + layout +
               ": not readable by the module\n";
    };
    EXPECT_EQ(errorsFor(R"([{"code": 1071, "value": 2}])"), note("2"));
    EXPECT_EQ(errorsFor(R"([{"code": 1071, "value": 1}, {"code": 1002, "value": "{"}, {"code": 310, "hex": "00"}])"),
              note("1"));
    EXPECT_EQ(errorsFor("[]"), note("0"));
    EXPECT_EQ(errorsFor(R"([{"code": 1071, "value": 1}, {"code": 1002, "value": "{"}, {"code": 1002, "value": "}"}])"),
              "");
    EXPECT_EQ(errorsFor(R"([{"code": 310, "hex": "00"}])"), "");
}

} // namespace
} // namespace Tests
