// Every kind of value is saved and loaded again, and has the documented form in the file.
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
    /// Saves and loads an xrecord with the items.
    Items saveAndLoad(const Items& items)
    {
        writeDrawing(GivenDrawing().withXrecord(items));
        return Drawing(loadFile()).xrecord().value_or(Items());
    }
    double saveAndLoadReal(double real) { return std::get<double>(saveAndLoad({{1040, real}}).at(0).value); }
    /// The type and the value of the first item in the file.
    std::string firstStoredValue()
    {
        return DrawingSql(file).text("SELECT typeof(value) || ' ' || CASE typeof(value) WHEN 'blob' THEN hex(value) "
                                     "ELSE value END FROM resbufs WHERE position = 0");
    }
};

TEST_F(StoredValues, UnicodeText_IsStoredAsText)
{
    const Items items{{300, L"L\u00E4nge \"\\' \u9AD8\n\t"}, {1000, L""}, {1002, L"{"}};
    EXPECT_EQ(saveAndLoad(items), items);
    EXPECT_EQ(firstStoredValue(), "text L\xC3\xA4nge \"\\' \xE9\xAB\x98\n\t");
}

TEST_F(StoredValues, TextWithUnpairedSurrogates_IsStoredAsUtf16WithAMark)
{
    for (const auto& text : {units({'A', 0xD83D, 'B'}), units({0xDC00}), units({0xDC00, 0xD800}), units({0xD800}),
                             units({0xFEFF, 0xDFFF})}) {
        const Items items{{300, text}};
        EXPECT_EQ(saveAndLoad(items), items);
    }
    saveAndLoad({{300, units({'A', 0xD83D, 'B'})}});
    EXPECT_EQ(firstStoredValue(), "blob FFFE41003DD84200");
}

TEST_F(StoredValues, ByteOrderMarkAndNonCharacters_AreStoredAsText)
{
    const Items items{{300, units({0xFEFF, 'a', 0xFFFE, 0xFFFF, 0x7F, 1})}};
    EXPECT_EQ(saveAndLoad(items), items);
    EXPECT_EQ(firstStoredValue(), "text \xEF\xBB\xBF"
                                  "a\xEF\xBF\xBE\xEF\xBF\xBF\x7F\x01");
}

TEST_F(StoredValues, SupplementaryCharacter_IsStoredAsText)
{
    const Items items{{300, L"\U0001F5FA\U0010FFFF"}};
    EXPECT_EQ(saveAndLoad(items), items);
    EXPECT_EQ(firstStoredValue(), "text \xF0\x9F\x97\xBA\xF4\x8F\xBF\xBF");
}

TEST_F(StoredValues, WideCharactersThatAreNotUnicode_AreStoredAsUtf32WithAMark)
{
    if (sizeof(wchar_t) < 4)
        GTEST_SKIP() << "wide characters of 16 bits hold no such text";
    for (const auto& text :
         {units({0xD83D, 0xDDFA}), units({0x110000}), units({0xFFFFFFFF, 'a'}), units({0x80000000, 0xD800})}) {
        const Items items{{300, text}};
        EXPECT_EQ(saveAndLoad(items), items);
    }
    saveAndLoad({{300, units({0xD83D, 0xDDFA, 0x110000})}});
    EXPECT_EQ(firstStoredValue(), "blob FFFE00003DD80000FADD000000001100");
}

TEST_F(StoredValues, TextOfAMillionCharacters_IsRestored)
{
    std::wstring text(1'000'000, L'x');
    text[500'000] = L'\u00E4';
    EXPECT_TRUE((saveAndLoad({{300, text}}) == Items{{300, text}}));
    text.back() = static_cast<wchar_t>(0xD800);
    EXPECT_TRUE((saveAndLoad({{300, text}}) == Items{{300, text}}));
}

TEST_F(StoredValues, Reals_AreRestoredToTheLastBit)
{
    using Limits = std::numeric_limits<double>;
    for (const double real :
         {0.0, 0.1, -1.0 / 3, Limits::denorm_min(), -Limits::denorm_min(), Limits::min(), Limits::max(),
          Limits::lowest(), Limits::infinity(), -Limits::infinity(), 1e15, 9007199254740993.0, -0.0})
        EXPECT_EQ(std::bit_cast<std::uint64_t>(saveAndLoadReal(real)), std::bit_cast<std::uint64_t>(real)) << real;
    EXPECT_EQ(firstStoredValue(), "blob 0000000000000080") << "the negative zero, which SQLite does not have";
    saveAndLoadReal(5);
    EXPECT_EQ(firstStoredValue(), "real 5.0");
}

TEST_F(StoredValues, NaNs_KeepTheirSignAndPayload)
{
    for (const std::uint64_t bits :
         {0x7FF8000000000000U, 0xFFF8000000000000U, 0x7FF80000DEADBEEFU, 0xFFFFFFFFFFFFFFFFU})
        EXPECT_EQ(std::bit_cast<std::uint64_t>(saveAndLoadReal(std::bit_cast<double>(bits))), bits);
    saveAndLoadReal(std::bit_cast<double>(std::uint64_t{0x7FF80000DEADBEEF}));
    EXPECT_EQ(firstStoredValue(), "blob EFBEADDE0000F87F");
}

TEST_F(StoredValues, Integers_AreRestoredUpToTheirLimits)
{
    const Items items{{1070, -32768}, {1070, 32767}, {1071, -2147483647 - 1}, {1071, 2147483647}, {1071, 0}};
    EXPECT_EQ(saveAndLoad(items), items);
    EXPECT_EQ(firstStoredValue(), "integer -32768");
}

TEST_F(StoredValues, ChunksOfEveryLength_AreRestored)
{
    Bytes longest(32767);
    for (std::size_t index = 0; index < longest.size(); ++index)
        longest[index] = static_cast<unsigned char>(index * 7);
    const Items items{{310, Bytes{}}, {311, Bytes{0}}, {310, longest}, {1004, Bytes(127, 0xFF)}};
    EXPECT_EQ(saveAndLoad(items), items);
    EXPECT_EQ(firstStoredValue(), "blob ");
}

TEST_F(StoredValues, ManyValues_KeepTheirOrder)
{
    Items items;
    for (int index = 0; index < 1'000; ++index)
        items.push_back({1071, 1'000 - index});
    EXPECT_EQ(saveAndLoad(items), items);
}

TEST_F(StoredValues, UnusualKeys_AreRestored)
{
    const std::wstring keys[] = {L" ", L"a", L"A", L"\u00C4", units({0xD800}), units({0xD800, 'a'}), L"1", L"0001"};
    Drawing drawing = GivenDrawing();
    int value = 0;
    for (const std::wstring& key : keys)
        drawing.withXrecord({{1071, value++}}, key.c_str());
    writeDrawing(drawing);
    const Drawing again(loadFile());
    value = 0;
    for (const std::wstring& key : keys)
        EXPECT_EQ(again.xrecord(key.c_str()), (Items{{1071, value++}}));
    EXPECT_EQ(again.contents(), drawing.contents());
}

TEST_F(StoredValues, UnusualNamesAndGeoDataTexts_AreRestored)
{
    const std::wstring odd = L"n\u00E4me" + units({0xDC00});
    Drawing drawing;
    drawing.withRegisteredApplication(odd.c_str()).withGeoData(odd + L'\n');
    writeDrawing(drawing);
    const Drawing again(loadFile());
    EXPECT_TRUE(again.hasRegisteredApplication(odd.c_str()));
    EXPECT_EQ(again.geoDataText(), odd + L'\n');
    EXPECT_EQ(again.contents(), drawing.contents());
}

TEST_F(StoredValues, NewHandle_FollowsTheLastOneInTheFile)
{
    writeDrawing(GivenDrawing().withXrecord({}, L"a").withXrecord({}, L"b"));
    changeBySql(file, "UPDATE header SET value = 9223372036854775806 WHERE field = 'next handle'");
    Drawing drawing(loadFile());
    drawing.withXrecord({{1070, 1}}, L"c");
    EXPECT_EQ(outcome(save(*drawing.database())), "0");
    EXPECT_EQ(DrawingSql(file).integer("SELECT max(handle) FROM objects"), 9223372036854775806);
    EXPECT_EQ(fileContents(), drawing.contents());
}

} // namespace
} // namespace Tests
