// Compares reading and writing with the second implementation, on random texts.
#include <array>
#include <random>

#include "support/platform_test.h"
#include "transformation/reference_item_parser.h"

namespace Tests {
namespace {

constexpr std::size_t kTexts = 20'000;
constexpr std::size_t kMostFragments = 12;

constexpr std::array<const wchar_t*, 52> kFragments{
    L"<Item>",    L"</Item>",    L"<SourceCs>", L"</SourceCs>", L"<TargetCs>", L"</TargetCs>", L"<Name>",    L"</Name>",
    L"<Type>",    L"</Type>",    L"<Note>",     L"</Note>",     L"<Version>",  L"</Version>",  L"<Type>1",   L"<Type>2",
    L"<Note/>",   L"<item>",     L"</item>",    L"<Item ",      L"</Item",     L"<Sour",       L"ceCs>",     L"</",
    L"<",         L">",          L"/",          L"Item>",       L"Name>",      L"Note>",       L" ",         L"\t",
    L"\r\n",      L"\v",         L"\f",         L"\u00A0",      L"\u2003",     L"\uFEFF",      L"a",         L"b",
    L"EPSG:4326", L"1",          L"2",          L"0",           L"-",          L"&lt;",        L"<![CDATA[", L"]]>",
    L"<!--",      L"\U0001F30D", L"\xD800",     L"\u00E4"};
constexpr std::array<const wchar_t*, 6> kTags{L"SourceCs", L"TargetCs", L"Name", L"Type", L"Note", L"Version"};

// The standard defines the numbers of the generator but not those of distributions, so it uses none.
class RandomTexts {
public:
    std::size_t below(std::size_t limit) { return generator_() % limit; }

    std::wstring fragments()
    {
        std::wstring text;
        for (std::size_t left = below(kMostFragments + 1); left > 0; --left)
            text += kFragments.at(below(kFragments.size()));
        return text;
    }

    /// The fields in order. Now and then one is missing, doubled, truncated or in another place.
    std::wstring almostItem()
    {
        std::wstring parts;
        for (const wchar_t* const tag : kTags) {
            const std::wstring part = almostField(tag);
            const std::size_t change = below(24);
            if (change == 0)
                continue;
            parts = change == 1 ? part + parts
                                : parts + part + (change == 2 ? part : L"") + (change == 3 ? fragments() : L"");
        }
        const std::wstring before = below(8) == 0 ? fragments() : L"";
        const std::wstring after = below(8) == 0 ? fragments() : L"";
        return before + L"<Item>" + parts + L"</Item>" + after;
    }

    std::wstring configuration()
    {
        std::wstring text;
        for (std::size_t left = below(4); left > 0; --left)
            text += below(5) == 0 ? fragments() : almostItem();
        return text;
    }

private:
    std::wstring almostField(const std::wstring& tag)
    {
        const std::wstring value = below(6) == 0 ? fragments() : kFragments.at(38 + below(6));
        std::wstring opening = L"<" + tag + L">";
        std::wstring closing = L"</" + tag + L">";
        if (below(24) == 0)
            opening.erase(below(opening.size()));
        if (below(24) == 0)
            opening.swap(closing);
        return opening + value + closing;
    }

    std::mt19937 generator_{20'241'121};
};

struct Tally {
    std::size_t changed = 0;
    std::size_t typed = 0;
    std::size_t written = 0;

    void count(const ItemFields& before, const ItemFields& after, const std::wstring& text)
    {
        changed += before == after ? 0U : 1U;
        typed += after.type == 1 || after.type == 2 ? 1U : 0U;
        written += text.empty() ? 0U : 1U;
    }
    /// Expects that the texts are neither all valid nor all invalid.
    void expectVariety(std::size_t texts) const
    {
        for (const std::size_t number : {changed, typed, written}) {
            EXPECT_GT(number, texts / 20);
            EXPECT_LT(number, texts - texts / 20);
        }
    }
};

using ItemAgreement = PlatformTest;

TEST_F(ItemAgreement, RandomItemsAreReadAndWrittenAsTheReferenceDoes)
{
    const ItemFields before{.source = L"s0", .target = L"t0", .name = L"n0", .type = 7, .note = L"o0", .version = L"v"};
    RandomTexts texts;
    Tally tally;
    for (std::size_t number = 0; number < kTexts && !HasFailure(); ++number) {
        const std::wstring text = texts.below(4) == 0 ? texts.fragments() : texts.almostItem();
        ItemFields expected = before;
        Reference::readItem(text, expected);
        const Ptr<ConfigItem> item = newItem(before);
        item->FromXmlString(text.c_str());
        EXPECT_EQ(readFields(*item), expected) << number << ": " << testing::PrintToString(text);
        EXPECT_EQ(item->ToXmlString(), Reference::writeItem(expected)) << number;
        tally.count(before, expected, expected.type == 7 ? L"" : item->ToXmlString());
    }
    tally.expectVariety(kTexts);
}

TEST_F(ItemAgreement, RandomConfigurationsAreReadAndWrittenAsTheReferenceDoes)
{
    RandomTexts texts;
    Tally tally;
    std::size_t items = 0;
    const Ptr<ConfigCollection> collection = newCollection();
    for (std::size_t number = 0; number < kTexts / 4 && !HasFailure(); ++number) {
        const std::wstring text = texts.configuration();
        const std::vector<ItemFields> expected = Reference::readConfiguration(text);
        collection->FromXmlString(text.c_str());
        EXPECT_EQ(readFields(*collection), expected) << number << ": " << testing::PrintToString(text);
        EXPECT_EQ(collection->ToXmlString(), Reference::writeConfiguration(expected)) << number;
        for (const ItemFields& item : expected)
            tally.count({}, item, Reference::writeItem(item));
        items += expected.size();
    }
    tally.expectVariety(items);
}

} // namespace
} // namespace Tests
