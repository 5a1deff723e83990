#include "embedded/base/json/strict_json.h"

#include <string>

#include <gtest/gtest.h>

namespace Tests {
namespace {

using Embedded::parseStrictJson;

std::string refusalOf(std::string_view text)
{
    const auto value = parseStrictJson(text, 3);
    return value ? "accepted" : value.error().text();
}

TEST(StrictJson, ValueKeepsTheOrderOfItsKeys)
{
    const std::string text = R"({"b":[1,-2,0.5,true,null],"a":{"b":"\u00e4"},"":[]})";
    EXPECT_EQ(parseStrictJson(text, 2)->dump(), R"({"b":[1,-2,0.5,true,null],"a":{"b":"ä"},"":[]})");
}

TEST(StrictJson, NestingHasTheLimitThatIsGiven)
{
    EXPECT_EQ(refusalOf("[[[1]]]"), "accepted");
    EXPECT_EQ(refusalOf(R"([0,{"a":[[]]}])"), "[1].a[0]: nested deeper than 3 levels");
    EXPECT_EQ(refusalOf(R"([{"a":[{}]}])"), "[0].a[0]: nested deeper than 3 levels");
    EXPECT_EQ(refusalOf(std::string(1'000'000, '[')), "[0][0][0]: nested deeper than 3 levels");
    EXPECT_FALSE(parseStrictJson("[]", 0));
}

TEST(StrictJson, RepeatedKey_IsRefusedWithItsObject)
{
    EXPECT_EQ(refusalOf(R"({"a":1,"b":2,"a":3})"), "the key \"a\" appears twice");
    EXPECT_EQ(refusalOf(R"([{"a":1},{"a":{"b":1,"\u0062":2}}])"), "[1].a: the key \"b\" appears twice");
    EXPECT_EQ(refusalOf(R"([{"a":1},{"a":{"a":1},"b":1}])"), "accepted");
}

TEST(StrictJson, NulInATextOrKey_IsRefused)
{
    EXPECT_EQ(refusalOf(R"({"a":["","b\u0000"]})"), "a[1]: a text holds a NUL character (\\u0000)");
    EXPECT_EQ(refusalOf(R"({"a":1,"\u0000":2})"), "a text holds a NUL character (\\u0000)");
}

TEST(StrictJson, TextThatIsNotUtf8_IsRefused)
{
    EXPECT_EQ(refusalOf("[\"\xC3\xA4\"]"), "accepted");
    EXPECT_EQ(refusalOf("[\"\xC3\"]"), "[0]: not JSON at byte 4: invalid string: ill-formed UTF-8 byte");
    EXPECT_EQ(refusalOf("[\"\xED\xA0\x80\"]"), "[0]: not JSON at byte 4: invalid string: ill-formed UTF-8 byte");
}

TEST(StrictJson, OtherText_IsRefusedAtItsByte)
{
    EXPECT_EQ(refusalOf(R"({"a":})"), "a: not JSON at byte 6: unexpected '}'; expected '[', '{', or a literal");
    EXPECT_EQ(refusalOf("[1] 2"), "not JSON at byte 5: unexpected number literal; expected end of input");
    EXPECT_EQ(refusalOf("[" + std::string(1'000'000, '"')),
              "[1]: not JSON at byte 5: unexpected string literal; expected ']'");
    for (const char* text : {"", "x", "[1,]", "{'a':1}", "[01]", "[NaN]", "[1]\x01", "// 1"})
        EXPECT_TRUE(refusalOf(text).find("not JSON at byte ") != std::string::npos) << text;
}

TEST(StrictJson, NumberThatNoDoubleHolds_IsRefused)
{
    EXPECT_EQ(refusalOf("[1,-1e400]"), "[1]: the number -1e400 is beyond all bounds");
    EXPECT_EQ(parseStrictJson("[1e-400]", 1)->dump(), "[0.0]");
}

TEST(StrictJson, LongTexts_AreShortenedInTheMessage)
{
    const std::string name(1000, 'a');
    EXPECT_LT(refusalOf("{\"" + name + "\":1,\"" + name + "\":1}").size(), 100U);
    EXPECT_LT(refusalOf("{\"" + name + "\":\"" + name).size(), 150U);
    EXPECT_LT(refusalOf("[1" + name + "]").size(), 150U);
}

} // namespace
} // namespace Tests
