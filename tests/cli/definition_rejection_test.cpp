// Why and where a text is no coordinate reference system.
#include "command_line_test.h"

namespace Tests {
namespace {

class RejectedDefinition : public CommandLineTest {
protected:
    /// What the program says of the text, without the status at the end.
    std::string reason(const std::string& text) const
    {
        given("system.txt", text);
        const ProgramResult result = run({"catalog", "show", "@system.txt"});
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.output, "");
        const std::string begin = "orvelcs: catalog show: system.txt: ";
        const std::string end = ": statusUnreadable (43)\n";
        EXPECT_THAT(result.errors, testing::AllOf(testing::StartsWith(begin), testing::EndsWith(end)));
        if (result.errors.size() < begin.size() + end.size())
            return result.errors;
        return result.errors.substr(begin.size(), result.errors.size() - begin.size() - end.size());
    }

    const std::string kNotWkt = "not a coordinate reference system as WKT: ";
};

TEST_F(RejectedDefinition, BracketThatIsNotClosed_HasItsPlace)
{
    EXPECT_EQ(reason("GEOGCS[\"x\",\n  DATUM[\"d\",SPHEROID[\"s\",6378137,298.25],\n  PRIMEM[\"Greenwich\",0]"),
              kNotWkt + "line 2, column 8: the bracket is not closed");
}

TEST_F(RejectedDefinition, BracketThatClosesNothing_HasItsPlace)
{
    EXPECT_EQ(reason("GEOGCS[\"x\"]\n]"), kNotWkt + "line 2, column 1: the bracket closes nothing");
}

TEST_F(RejectedDefinition, QuotationMarkWithoutItsCounterpart_HasItsPlace)
{
    EXPECT_EQ(reason("GEOGCS[\"x\",\n DATUM[\"d]]"),
              kNotWkt + "line 2, column 8: the quotation mark has no counterpart");
}

TEST_F(RejectedDefinition, MissingComma_HasItsPlace)
{
    EXPECT_EQ(reason("GEOGCS[\"x\",\n DATUM[\"d\",SPHEROID[\"s\" 6378137,298.25]]]"),
              kNotWkt + "line 2, column 25: expected a comma or a closing bracket after the quoted text");
}

TEST_F(RejectedDefinition, MarksAndBracketsInQuotedTexts_AreNoFaults)
{
    EXPECT_EQ(reason("GEOGCS[\"a \"\"]\"\" [\"]"), kNotWkt + "Missing DATUM or ENSEMBLE node");
}

TEST_F(RejectedDefinition, IncompleteNode_HasItsPlace)
{
    EXPECT_EQ(reason("GEOGCS[\"x\",\n  DATUM[\"SPHEROID\",\n    SPHEROID[\"s\",6378137]],PRIMEM[\"Greenwich\",0],"
                     "UNIT[\"degree\",0.0174532925199433]]"),
              kNotWkt + "line 3, column 5: not enough children in SPHEROID node");
}

TEST_F(RejectedDefinition, UnknownKeyword_HasItsPlace)
{
    EXPECT_EQ(reason("\n\n  FOO[\"x\"]"), kNotWkt + "line 3, column 3: unhandled keyword: FOO");
}

TEST_F(RejectedDefinition, ColumnsCountCharacters)
{
    EXPECT_EQ(reason("GEOGCS[\"Z\xC3\xBCrich\",DATUM[\"d\"]]]"),
              kNotWkt + "line 1, column 28: the bracket closes nothing");
}

TEST_F(RejectedDefinition, ProjStringHasThePlaceOfItsParameter)
{
    EXPECT_EQ(reason("\n+proj=utm +zone=99"), "not a coordinate reference system as a PROJ string: line 2, column 12: "
                                              "utm: Invalid value for zone");
    EXPECT_EQ(reason("+proj=nonsense"), "not a coordinate reference system as a PROJ string: line 1, column 2: "
                                        "Unknown projection");
    EXPECT_EQ(reason("+proj=pipeline +step +proj=utm +zone=32"),
              "not a coordinate reference system as a PROJ string: a pipeline is an operation");
}

TEST_F(RejectedDefinition, ProjjsonHasThePlaceOfWhatIsNotJson)
{
    EXPECT_EQ(reason("{\"type\": \"GeographicCRS\",\n \"name\" \"x\"}"),
              "line 2, column 11: name: not JSON: unexpected string literal; expected ':'");
}

TEST_F(RejectedDefinition, ProjjsonHasProjsReason)
{
    EXPECT_EQ(reason(R"({"type": "Nope", "name": "x"})"),
              "not a coordinate reference system as PROJJSON: Unsupported value of \"type\"");
}

TEST_F(RejectedDefinition, WhatIsNoSystem_IsNamed)
{
    EXPECT_EQ(reason(R"(ELLIPSOID["s",6378137,298.25])"), "an ellipsoid, not a coordinate reference system");
    EXPECT_EQ(reason(R"(DATUM["d",ELLIPSOID["s",6378137,298.25]])"), "a datum, not a coordinate reference system");
    EXPECT_EQ(reason(R"(CONVERSION["c",METHOD["Mercator"]])"), "an operation, not a coordinate reference system");
    EXPECT_EQ(reason(R"(VERTCRS["h",VDATUM["d"],CS[vertical,1],AXIS["up",up],LENGTHUNIT["metre",1]])"),
              "a vertical system, which a drawing cannot have");
}

TEST_F(RejectedDefinition, TextOfNoKnownForm_IsRefusedAsSuch)
{
    EXPECT_EQ(reason("a grid of our own"), "not a coordinate reference system as WKT, PROJJSON or a PROJ string");
}

} // namespace
} // namespace Tests
