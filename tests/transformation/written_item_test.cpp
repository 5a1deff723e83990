// Items as the module writes them, which are read in one walk, beside the searches that read every other text.
#include "support/platform_test.h"
#include "transformation/item_text.h"

namespace Tests {
namespace {

using WrittenItem = PlatformTest;

constexpr std::wstring_view kItem =
    L"<Item><Version>1.0</Version><SourceCs>EPSG:1</SourceCs><TargetCs>EPSG:23</TargetCs>"
    L"<Name>a name</Name><Type>2</Type><Note>a note</Note></Item>";

auto fieldsOf(const Orvel::ItemText& item)
{
    return std::tuple(item.sourceCs, item.targetCs, item.name, item.type, item.note);
}

/// The next item by the searches alone.
bool takeBySearching(std::wstring_view& remaining, Orvel::ItemText& item)
{
    const auto chunk = Orvel::takeItemChunk(remaining);
    item = Orvel::parseItemText(chunk.value_or(L""));
    return chunk.has_value();
}

/// Expects the same items from both readers, up to the end of the text.
void expectAgreement(const std::wstring& text)
{
    std::wstring_view walked = text;
    std::wstring_view searched = text;
    for (bool goesOn = true; goesOn;) {
        Orvel::ItemText walkedItem;
        Orvel::ItemText searchedItem;
        goesOn = takeBySearching(searched, searchedItem);
        ASSERT_EQ(Orvel::takeItem(walked, walkedItem), goesOn) << testing::PrintToString(text);
        ASSERT_EQ(walked, searched) << testing::PrintToString(text);
        if (goesOn) {
            ASSERT_EQ(fieldsOf(walkedItem), fieldsOf(searchedItem)) << testing::PrintToString(text);
        }
    }
}

TEST_F(WrittenItem, IsReadInOneWalk)
{
    for (const std::wstring before : {L"", L" ", L"\t\n", L"\v\f\r "}) {
        const std::wstring text = before + std::wstring(kItem) + L" rest";
        std::wstring_view remaining = text;
        Orvel::ItemText item;
        ASSERT_TRUE(Orvel::takeWrittenItem(remaining, item));
        EXPECT_EQ(remaining, L" rest");
        EXPECT_EQ(fieldsOf(item), std::tuple(L"EPSG:1", L"EPSG:23", L"a name", 2, L"a note"));
    }
}

TEST_F(WrittenItem, ItemWithAnyCharacterChanged_IsReadAsBySearching)
{
    for (std::size_t at = 0; at < kItem.size(); ++at) {
        for (const wchar_t character : {L'x', L'<', L' ', L'\0', static_cast<wchar_t>(kItem[at] | 0x4E00)}) {
            std::wstring changed(kItem);
            changed[at] = character;
            expectAgreement(changed + std::wstring(kItem));
        }
    }
}

TEST_F(WrittenItem, EmptyValues_AreRead)
{
    std::wstring_view remaining = L"<Item><Version></Version><SourceCs></SourceCs><TargetCs></TargetCs><Name></Name>"
                                  L"<Type></Type><Note></Note></Item>";
    Orvel::ItemText item;
    ASSERT_TRUE(Orvel::takeWrittenItem(remaining, item));
    EXPECT_EQ(fieldsOf(item), std::tuple(L"", L"", L"", 0, L""));
}

TEST_F(WrittenItem, EveryBeginningOfIt_IsLeftToTheSearches)
{
    for (std::size_t length = 0; length < kItem.size(); ++length) {
        const std::wstring text(kItem.substr(0, length)); // of its own, so that reading past its end is noticed
        std::wstring_view remaining = text;
        Orvel::ItemText item;
        EXPECT_FALSE(Orvel::takeWrittenItem(remaining, item)) << length;
        EXPECT_EQ(remaining, text);
    }
}

TEST_F(WrittenItem, EveryChangeOfOneCharacter_IsReadAsTheSearchesReadIt)
{
    for (std::size_t position = 0; position <= kItem.size(); ++position) {
        const std::wstring before(kItem.substr(0, position));
        const std::wstring after(kItem.substr(position));
        expectAgreement(before + after.substr(std::min<std::size_t>(1, after.size())) + std::wstring(kItem));
        for (const wchar_t character : L"x<>/ 1")
            expectAgreement(before + character + after + std::wstring(kItem));
    }
}

TEST_F(WrittenItem, WithoutOneOfItsTagPairs_IsReadAsTheSearchesReadIt)
{
    constexpr std::wstring_view kTagPairs[] = {L"<Item><Version>",   L"</Version><SourceCs>", L"</SourceCs><TargetCs>",
                                               L"</TargetCs><Name>", L"</Name><Type>",        L"</Type><Note>",
                                               L"</Note></Item>"};
    for (const std::wstring_view missing : kTagPairs) {
        for (const std::wstring_view value : {L"", L"1"}) {
            std::wstring text;
            for (const std::wstring_view tags : kTagPairs)
                text.append(tags == missing ? L"" : tags).append(tags == missing || tags == kTagPairs[6] ? L"" : value);
            expectAgreement(text + std::wstring(kItem));
        }
    }
}

TEST_F(WrittenItem, ElementsInAnotherOrderTwiceOrNested_AreReadAsTheSearchesReadThem)
{
    constexpr std::wstring_view kParts[] = {L"<Version>1</Version>",
                                            L"<SourceCs>A</SourceCs>",
                                            L"<TargetCs>B</TargetCs>",
                                            L"<Name>n</Name>",
                                            L"<Type>1</Type>",
                                            L"<Note>o</Note>",
                                            L"<Item>",
                                            L"<Name><Note>x</Note>"};
    for (const std::wstring_view first : kParts) {
        for (const std::wstring_view second : kParts) {
            for (std::size_t position = 0; position <= 6; ++position) {
                std::wstring text = L"<Item>";
                for (std::size_t index = 0; index < 6; ++index) {
                    if (index == position)
                        text.append(first).append(second);
                    if (kParts[index] != first)
                        text.append(kParts[index]);
                }
                expectAgreement(text + L"</Item>");
            }
        }
    }
}

} // namespace
} // namespace Tests
