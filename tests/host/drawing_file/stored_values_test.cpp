// Every kind of value through a file, and what the file has of it.
#include <bit>
#include <cmath>
#include <limits>

#include "host/drawing_file/drawing_file_test.h"

namespace Tests {
namespace {

std::wstring units(std::initializer_list<std::uint32_t> numbers)
{
    std::wstring text;
    for (const std::uint32_t number : numbers)
        text += static_cast<wchar_t>(number);
    return text;
}

class StoredValues : public DrawingFileTest {
protected:
    /// The items of an xrecord after they were saved and loaded.
    Items kept(const Items& items)
    {
        given(GivenDrawing().withXrecord(items));
        return Drawing(loaded()).xrecord().value_or(Items());
    }
    double keptReal(double real) { return std::get<double>(kept({{1040, real}}).at(0).value); }
    std::string stored()
    {
        return DrawingSql(file).text("SELECT typeof(value) || ' ' || CASE typeof(value) WHEN 'blob' THEN hex(value) "
                                     "ELSE value END FROM resbufs WHERE position = 0");
    }
};

TEST_F(StoredValues, ATextThatIsUnicode_IsText)
{
    const Items items{{300, L"L\u00E4nge \"\\' \u9AD8\n\t"}, {1000, L""}, {1002, L"{"}};
    EXPECT_EQ(kept(items), items);
    EXPECT_EQ(stored(), "text L\xC3\xA4nge \"\\' \xE9\xAB\x98\n\t");
}

TEST_F(StoredValues, ATextWithUnpairedSurrogates_IsUtf16WithAMark)
{
    for (const auto& text : {units({'A', 0xD83D, 'B'}), units({0xDC00}), units({0xDC00, 0xD800}), units({0xD800}),
                             units({0xFEFF, 0xDFFF})}) {
        const Items items{{300, text}};
        EXPECT_EQ(kept(items), items);
    }
    kept({{300, units({'A', 0xD83D, 'B'})}});
    EXPECT_EQ(stored(), "blob FFFE41003DD84200");
}

TEST_F(StoredValues, AByteOrderMarkAndNonCharacters_AreText)
{
    const Items items{{300, units({0xFEFF, 'a', 0xFFFE, 0xFFFF, 0x7F, 1})}};
    EXPECT_EQ(kept(items), items);
    EXPECT_EQ(stored(), "text \xEF\xBB\xBF"
                        "a\xEF\xBF\xBE\xEF\xBF\xBF\x7F\x01");
}

TEST_F(StoredValues, ACharacterBeyondSixteenBits_IsText)
{
    const Items items{{300, L"\U0001F5FA\U0010FFFF"}};
    EXPECT_EQ(kept(items), items);
    EXPECT_EQ(stored(), "text \xF0\x9F\x97\xBA\xF4\x8F\xBF\xBF");
}

TEST_F(StoredValues, SurrogatesAsTwoWideCharactersAndUnitsThatAreNone_AreUtf32WithAMark)
{
    if (sizeof(wchar_t) < 4)
        GTEST_SKIP() << "wide characters of 16 bits hold no such text";
    for (const auto& text :
         {units({0xD83D, 0xDDFA}), units({0x110000}), units({0xFFFFFFFF, 'a'}), units({0x80000000, 0xD800})}) {
        const Items items{{300, text}};
        EXPECT_EQ(kept(items), items);
    }
    kept({{300, units({0xD83D, 0xDDFA, 0x110000})}});
    EXPECT_EQ(stored(), "blob FFFE00003DD80000FADD000000001100");
}

TEST_F(StoredValues, ATextOfAMillionCharacters_IsKept)
{
    std::wstring text(1'000'000, L'x');
    text[500'000] = L'\u00E4';
    EXPECT_TRUE((kept({{300, text}}) == Items{{300, text}}));
    text.back() = static_cast<wchar_t>(0xD800);
    EXPECT_TRUE((kept({{300, text}}) == Items{{300, text}}));
}

TEST_F(StoredValues, Reals_AreKeptToTheLastBit)
{
    using Limits = std::numeric_limits<double>;
    for (const double real :
         {0.0, 0.1, -1.0 / 3, Limits::denorm_min(), -Limits::denorm_min(), Limits::min(), Limits::max(),
          Limits::lowest(), Limits::infinity(), -Limits::infinity(), 1e15, 9007199254740993.0, -0.0})
        EXPECT_EQ(std::bit_cast<std::uint64_t>(keptReal(real)), std::bit_cast<std::uint64_t>(real)) << real;
    EXPECT_EQ(stored(), "blob 0000000000000080") << "the zero below zero, which SQLite does not have";
    keptReal(5);
    EXPECT_EQ(stored(), "real 5.0");
}

TEST_F(StoredValues, NaNs_KeepTheirSignAndPayload)
{
    for (const std::uint64_t bits :
         {0x7FF8000000000000U, 0xFFF8000000000000U, 0x7FF80000DEADBEEFU, 0xFFFFFFFFFFFFFFFFU})
        EXPECT_EQ(std::bit_cast<std::uint64_t>(keptReal(std::bit_cast<double>(bits))), bits);
    keptReal(std::bit_cast<double>(std::uint64_t{0x7FF80000DEADBEEF}));
    EXPECT_EQ(stored(), "blob EFBEADDE0000F87F");
}

TEST_F(StoredValues, Integers_AreKeptUpToTheirLimits)
{
    const Items items{{1070, -32768}, {1070, 32767}, {1071, -2147483647 - 1}, {1071, 2147483647}, {1071, 0}};
    EXPECT_EQ(kept(items), items);
    EXPECT_EQ(stored(), "integer -32768");
}

TEST_F(StoredValues, Chunks_AreKeptFromNothingToTheirLongest)
{
    Bytes longest(32767);
    for (std::size_t index = 0; index < longest.size(); ++index)
        longest[index] = static_cast<unsigned char>(index * 7);
    const Items items{{310, Bytes{}}, {311, Bytes{0}}, {310, longest}, {1004, Bytes(127, 0xFF)}};
    EXPECT_EQ(kept(items), items);
    EXPECT_EQ(stored(), "blob ");
}

TEST_F(StoredValues, AThousandValues_StayInTheirOrder)
{
    Items items;
    for (int index = 0; index < 1'000; ++index)
        items.push_back({1071, 1'000 - index});
    EXPECT_EQ(kept(items), items);
}

TEST_F(StoredValues, KeysOfEveryKind_AreKept)
{
    const std::wstring keys[] = {L" ", L"a", L"A", L"\u00C4", units({0xD800}), units({0xD800, 'a'}), L"1", L"0001"};
    Drawing drawing = GivenDrawing();
    int value = 0;
    for (const std::wstring& key : keys)
        drawing.withXrecord({{1071, value++}}, key.c_str());
    given(drawing);
    const Drawing again(loaded());
    value = 0;
    for (const std::wstring& key : keys)
        EXPECT_EQ(again.xrecord(key.c_str()), (Items{{1071, value++}}));
    EXPECT_EQ(again.contents(), drawing.contents());
}

TEST_F(StoredValues, NamesAndGeoDataTexts_AreKept)
{
    const std::wstring odd = L"n\u00E4me" + units({0xDC00});
    Drawing drawing;
    drawing.withRegisteredApplication(odd.c_str()).withGeoData(odd + L'\n');
    given(drawing);
    const Drawing again(loaded());
    EXPECT_TRUE(again.hasRegisteredApplication(odd.c_str()));
    EXPECT_EQ(again.geoDataText(), odd + L'\n');
    EXPECT_EQ(again.contents(), drawing.contents());
}

TEST_F(StoredValues, Handles_GoOnWhereTheyEnded)
{
    given(GivenDrawing().withXrecord({}, L"a").withXrecord({}, L"b"));
    changeBySql(file, "UPDATE header SET value = 9223372036854775806 WHERE field = 'next handle'");
    Drawing drawing(loaded());
    drawing.withXrecord({{1070, 1}}, L"c");
    EXPECT_EQ(outcome(save(*drawing.database())), "0");
    EXPECT_EQ(DrawingSql(file).integer("SELECT max(handle) FROM objects"), 9223372036854775806);
    EXPECT_EQ(inFile(), drawing.contents());
}

} // namespace
} // namespace Tests
