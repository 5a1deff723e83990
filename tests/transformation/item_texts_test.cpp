// Reads the text of one item.
#include <algorithm>

#include "support/case_name.h"
#include "support/platform_test.h"
#include "transformation/item_texts.h"
#include "transformation/reference_item_parser.h"

namespace Tests {
namespace {

constexpr std::size_t kLong = 100'000;

Ptr<ConfigItem> newUntouchedItem()
{
    return newItem(kUntouched.withVersion(kVersionBefore));
}

ItemFields read(const std::wstring& text)
{
    const Ptr<ConfigItem> item = newUntouchedItem();
    item->FromXmlString(text.c_str());
    return readFields(*item);
}

std::wstring element(const wchar_t* tag, const std::wstring& value)
{
    const std::wstring name = tag;
    return L'<' + name + L'>' + value + L"</" + name + L'>';
}

std::wstring itemWithParts(const std::wstring& parts)
{
    return element(L"Item", parts);
}

/// Joins the parts without the missing one, if its index is in range.
std::wstring joinWithout(std::size_t missing, const std::vector<std::wstring>& parts)
{
    std::wstring text;
    for (std::size_t index = 0; index < parts.size(); ++index)
        text += index == missing ? L"" : parts[index];
    return text;
}

class ItemTexts : public PlatformTest, public testing::WithParamInterface<ItemTextCase> {};

TEST_P(ItemTexts, AreReadAsTheListedItem)
{
    const Ptr<ConfigItem> item = newUntouchedItem();
    item->FromXmlString(std::wstring(GetParam().text).c_str());
    EXPECT_EQ(readFields(*item), GetParam().item.withVersion(kVersionBefore));
}

TEST_P(ItemTexts, AreWrittenFromTheListedItem)
{
    const Ptr<ConfigItem> item = newUntouchedItem();
    item->FromXmlString(std::wstring(GetParam().text).c_str());
    EXPECT_EQ(item->ToXmlString(), Reference::writeItem(GetParam().item.withVersion(kVersionBefore)));
}

INSTANTIATE_TEST_SUITE_P(Shapes, ItemTexts, testing::ValuesIn(itemShapeTexts()), caseName);
INSTANTIATE_TEST_SUITE_P(Tags, ItemTexts, testing::ValuesIn(itemTagTexts()), caseName);
INSTANTIATE_TEST_SUITE_P(Types, ItemTexts, testing::ValuesIn(itemTypeTexts()), caseName);
INSTANTIATE_TEST_SUITE_P(Values, ItemTexts, testing::ValuesIn(itemValueTexts()), caseName);

class ItemReading : public PlatformTest {
protected:
    const std::vector<std::wstring> parts{L"<Item>",      L"<SourceCs>", L"a", L"</SourceCs>", L"<TargetCs>", L"b",
                                          L"</TargetCs>", L"<Name>",     L"c", L"</Name>",     L"<Type>",     L"1",
                                          L"</Type>",     L"<Note>",     L"d", L"</Note>",     L"</Item>"};
    const std::wstring whole = joinWithout(parts.size(), parts);
    const ItemFields before = kUntouched.withVersion(kVersionBefore);
    const ItemFields after{.source = L"a", .target = L"b", .name = L"c", .type = 1, .note = L"d", .version = L"v0"};

    /// The fields after reading a text that has only the first `fields` of source, target and name.
    ItemFields fieldsAfterReading(std::size_t fields) const
    {
        ItemFields expected = before;
        expected.source = fields > 0 ? after.source : before.source;
        expected.target = fields > 1 ? after.target : before.target;
        expected.name = fields > 2 ? after.name : before.name;
        return expected;
    }
};

TEST_F(ItemReading, EveryShorterPrefixChangesNothing)
{
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_EQ(read(whole.substr(0, length)), before) << length << " characters";
    EXPECT_EQ(read(whole), after);
}

TEST_F(ItemReading, EveryShorterSuffixChangesNothing)
{
    for (std::size_t start = 1; start <= whole.size(); ++start)
        EXPECT_EQ(read(whole.substr(start)), before) << "from " << start;
}

TEST_F(ItemReading, PrefixWithAClosingTagGivesTheCompleteFields)
{
    const std::wstring closing = parts.back();
    for (std::size_t length = parts.front().size() + 1; length < whole.size() - closing.size(); ++length) {
        const std::wstring text = whole.substr(0, length);
        std::size_t fields = 0;
        for (const wchar_t* const end : {L"</SourceCs>", L"</TargetCs>", L"</Name>"})
            fields += text.find(end) != std::wstring::npos ? 1U : 0U;
        EXPECT_EQ(read(text + closing), fieldsAfterReading(fields)) << length << " characters";
    }
}

TEST_F(ItemReading, MissingFieldTagEndsTheReadingOfFields)
{
    const std::vector<std::pair<std::size_t, std::size_t>> fieldsBefore{{1, 0}, {3, 0},  {4, 1},  {6, 1},  {7, 2},
                                                                        {9, 2}, {10, 3}, {12, 3}, {13, 3}, {15, 3}};
    for (const auto& [missing, fields] : fieldsBefore)
        EXPECT_EQ(read(joinWithout(missing, parts)), fieldsAfterReading(fields)) << "without part " << missing;
}

TEST_F(ItemReading, MissingItemTagChangesNothing)
{
    EXPECT_EQ(read(joinWithout(0, parts)), before);
    EXPECT_EQ(read(joinWithout(parts.size() - 1, parts)), before);
}

TEST_F(ItemReading, FieldsAreReadInAnyOrder)
{
    std::vector<std::wstring> fields{element(L"Name", L"c"), element(L"Note", L"d"), element(L"SourceCs", L"a"),
                                     element(L"TargetCs", L"b"), element(L"Type", L"1")};
    std::size_t orders = 0;
    do {
        ++orders;
        const std::wstring text = itemWithParts(joinWithout(fields.size(), fields));
        EXPECT_EQ(read(text), after) << testing::PrintToString(text);
    } while (std::next_permutation(fields.begin(), fields.end()));
    EXPECT_EQ(orders, 120U);
}

TEST_F(ItemReading, LongValuesAreReadCompletely)
{
    const ItemFields expected{.source = std::wstring(kLong, L'a'),
                              .target = std::wstring(kLong, L'<'),
                              .name = std::wstring(kLong, L'&'),
                              .type = 2,
                              .note = std::wstring(kLong, L' '),
                              .version = kVersionBefore};
    const std::wstring text =
        itemWithParts(element(L"SourceCs", expected.source) + element(L"TargetCs", expected.target) +
                      element(L"Name", expected.name) + element(L"Type", L"2") + element(L"Note", expected.note));
    EXPECT_TRUE(read(text) == expected);
}

TEST_F(ItemReading, LongBlanksAroundTheItemAreTrimmed)
{
    EXPECT_EQ(read(std::wstring(kLong, L' ') + whole + std::wstring(kLong, L'\n')), after);
}

TEST_F(ItemReading, LongTypeReadsAsZero)
{
    const std::wstring type = std::wstring(kLong, L'0') + L'1';
    ItemFields expected = after;
    expected.type = 0;
    EXPECT_EQ(read(itemWithParts(element(L"SourceCs", L"a") + element(L"TargetCs", L"b") + element(L"Name", L"c") +
                                 element(L"Type", type) + element(L"Note", L"d"))),
              expected);
}

TEST_F(ItemReading, LongTextWithoutItemTagsChangesNothing)
{
    EXPECT_EQ(read(std::wstring(kLong, L'<')), before);
}

TEST_F(ItemReading, NullTextChangesNothing)
{
    const Ptr<ConfigItem> item = newUntouchedItem();
    item->FromXmlString(nullptr);
    EXPECT_EQ(readFields(*item), before);
}

TEST_F(ItemReading, SecondTextReplacesTheFieldsThatItHas)
{
    const Ptr<ConfigItem> item = newUntouchedItem();
    item->FromXmlString(whole.c_str());
    item->FromXmlString(L"<Item><SourceCs>e</SourceCs><TargetCs></TargetCs></Item>");
    ItemFields expected = after;
    expected.source = L"e";
    expected.target = L"";
    EXPECT_EQ(readFields(*item), expected);
}

// The field that holds the text is overwritten before the other fields are read.
TEST_F(ItemReading, ItemReadsTheTextOfItsOwnSource)
{
    const std::wstring source(100, L'a');
    const std::wstring rest = element(L"Note", L"d") + element(L"Type", L"1") + element(L"Name", L"c");
    const std::wstring text = itemWithParts(element(L"TargetCs", L"b") + rest + element(L"SourceCs", source));
    const Ptr<ConfigItem> item = newUntouchedItem();
    item->SetSourceCs(text.c_str());
    item->FromXmlString(item->GetSourceCs());
    ItemFields expected = after;
    expected.source = source;
    EXPECT_EQ(readFields(*item), expected);
}

TEST_F(ItemReading, ItemReadsTheTextOfItsOwnNote)
{
    const Ptr<ConfigItem> item = newUntouchedItem();
    item->SetNote(whole.c_str());
    item->FromXmlString(item->GetNote());
    EXPECT_EQ(readFields(*item), after);
}

} // namespace
} // namespace Tests
