// Searching the value of an element.
#include <array>

#include "support/case_name.h"
#include "support/platform_test.h"
#include "transformation/item_text.h"

namespace Tests {
namespace {

constexpr std::wstring_view kBefore = L"before";

struct ExtractionCase {
    const char* name;
    std::wstring_view text;
    std::wstring_view tag;
    int result;
    std::wstring_view value;

    friend std::ostream& operator<<(std::ostream& stream, const ExtractionCase& one) { return stream << one.name; }
};

constexpr std::array kExtractions{
    ExtractionCase{"Value", L"<A>x</A>", L"A", 0, L"x"},
    ExtractionCase{"EmptyValue", L"<A></A>", L"A", 0, L""},
    ExtractionCase{"TextAround", L"12<A>x</A>34", L"A", 0, L"x"},
    ExtractionCase{"BlanksStay", L"<A> x\t</A>", L"A", 0, L" x\t"},
    ExtractionCase{"FirstOpeningAndFirstClosing", L"<A>x</A><A>y</A>", L"A", 0, L"x"},
    ExtractionCase{"OpeningWithinTheValue", L"<A>x<A>y</A>", L"A", 0, L"x<A>y"},
    ExtractionCase{"Nested", L"<A>x<A>y</A>z</A>", L"A", 0, L"x<A>y"},
    ExtractionCase{"ClosingFirst", L"</A>x<A>y", L"A", 0, L"y"},
    ExtractionCase{"ClosingFirstAndAgain", L"</A><A>x</A>y", L"A", 0, L"x</A>y"},
    ExtractionCase{"ClosingRightBeforeOpeningAtTheEnd", L"</A><A>", L"A", 0, L""},
    ExtractionCase{"ClosingFirstBehindText", L"1234</A>5678<A>90", L"A", 0, L"90"},
    ExtractionCase{"LongerTagIsAnother", L"<AB>x</AB><A>y</A>", L"A", 0, L"y"},
    ExtractionCase{"BeginningsDoubled", L"<<A>x<</A>", L"A", 0, L"x<"},
    ExtractionCase{"ClosingsBeginningDoubled", L"<A>x</</A>", L"A", 0, L"x</"},
    ExtractionCase{"TagCutBeforeTheTag", L"<A<A>x</A</A>", L"A", 0, L"x</A"},
    ExtractionCase{"EmptyTag", L"<>x</>", L"", 0, L"x"},
    ExtractionCase{"TagOfSeveralWords", L"<A b=\"c\">x</A b=\"c\">", L"A b=\"c\"", 0, L"x"},
    ExtractionCase{"EmptyText", L"", L"A", -1, kBefore},
    ExtractionCase{"NoTags", L"x", L"A", -1, kBefore},
    ExtractionCase{"NoOpening", L"x</A>", L"A", -1, kBefore},
    ExtractionCase{"NoClosing", L"<A>x", L"A", -1, kBefore},
    ExtractionCase{"TagAtTheEndWithoutItsSign", L"</A><A", L"A", -1, kBefore},
    ExtractionCase{"OpeningCut", L"<A x</A>", L"A", -1, kBefore},
    ExtractionCase{"ClosingCut", L"<A>x</A", L"A", -1, kBefore},
    ExtractionCase{"OtherCase", L"<a>x</a>", L"A", -1, kBefore},
    ExtractionCase{"OtherCaseOfTheClosing", L"<A>x</a>", L"A", -1, kBefore},
    ExtractionCase{"Attribute", L"<A b=\"c\">x</A>", L"A", -1, kBefore},
    ExtractionCase{"BlankInTheOpening", L"<A >x</A>", L"A", -1, kBefore},
    ExtractionCase{"BlankInTheClosing", L"<A>x</A >", L"A", -1, kBefore},
    ExtractionCase{"SelfClosing", L"<A/>", L"A", -1, kBefore},
    // The closing tag "</></>" begins within the opening tag "<></>".
    ExtractionCase{"ClosingWithinTheOpening", L"<></></>", L"></", -1, kBefore},
};

class ElementExtraction : public PlatformTest, public testing::WithParamInterface<ExtractionCase> {};

TEST_P(ElementExtraction, GivesTheListedResultAndValue)
{
    std::wstring_view value = kBefore;
    EXPECT_EQ(Orvel::ExtractElementText(GetParam().text, GetParam().tag, value), GetParam().result);
    EXPECT_EQ(value, GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(Texts, ElementExtraction, testing::ValuesIn(kExtractions), caseName);

using ElementValue = PlatformTest;

TEST_F(ElementValue, IsAPartOfTheText)
{
    const std::wstring text = L"<A>value</A>";
    std::wstring_view value;
    ASSERT_EQ(Orvel::ExtractElementText(text, L"A", value), 0);
    EXPECT_EQ(value.data(), text.data() + 3);
}

TEST_F(ElementValue, IsNotSearchedAfterTheEndOfTheText)
{
    const std::wstring_view text = L"<A>value</A>";
    std::wstring_view value = kBefore;
    EXPECT_EQ(Orvel::ExtractElementText(text.substr(0, text.size() - 1), L"A", value), -1);
    EXPECT_EQ(value, kBefore);
}

TEST_F(ElementValue, ContainsANulCharacterOfTheText)
{
    const std::wstring text = L"<A>x" + std::wstring(1, L'\0') + L"y</A>";
    std::wstring_view value;
    ASSERT_EQ(Orvel::ExtractElementText(text, L"A", value), 0);
    EXPECT_EQ(value.size(), 3U);
}

} // namespace
} // namespace Tests
