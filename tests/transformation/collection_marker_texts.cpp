#include "transformation/collection_texts.h"

namespace Tests {
namespace {

// Texts that hold no item, but perhaps the tags of one.
constexpr CollectionTextCase kMarkerTexts[] = {
    {"Empty", L"", 0, {}, kNothing},
    {"OneBlank", L" ", 0, {}, kNothing},
    {"PlainText", L"EPSG:4326", 0, {}, kNothing},
    {"OpeningTagAlone", L"<Item>", 0, {}, kNothing},
    {"EmptyRoot", L"<Items></Items>", 0, {}, kNothing},
    {"ClosingTagAlone", L"</Item>", 1, {{}}, kNothing},
    {"ClosingTagTwice", L"</Item></Item>", 2, {{}, {}}, kNothing},
    {"ClosingTagThrice", L"</Item></Item></Item>", 3, {{}, {}, {}}, kNothing},
    {"ClosingTagsWithBlanksBetween", L" </Item> </Item> ", 2, {{}, {}}, kNothing},
    {"EmptyElement", L"<Item></Item>", 1, {{}}, kNothing},
    {"EmptyElementsTwice", L"<Item></Item><Item></Item>", 2, {{}, {}}, kNothing},
    {"ElementOfABlank", L"<Item> </Item>", 1, {{}}, kNothing},
    {"SelfClosingElement", L"<Item/>", 0, {}, kNothing},
    {"ClosingCutByOne", L"<Item>x</Item", 0, {}, kNothing},
    {"ClosingCutThenWhole", L"<Item>x</Item</Item>", 1, {{}}, kNothing},
    {"LowerCaseMarkers", L"<item></item>", 0, {}, kNothing},
    {"UpperCaseMarkers", L"<ITEM></ITEM>", 0, {}, kNothing},
    {"ClosingWithBlank", L"<Item>x</Item >", 0, {}, kNothing},
    {"ClosingOfAnotherTag", L"</Items>", 0, {}, kNothing},
    {"PrefixedClosing", L"</x:Item>", 0, {}, kNothing},
    {"DoubledClosingSigns", L"<<</Item>>>", 1, {{}}, kNothing},
    {"OverlappingClosingStarts", L"</</Item>", 1, {{}}, kNothing},
    {"ClosingAgainstClosing", L"</Item</Item>Item>", 1, {{}}, kNothing},
    {"Declaration", L"<?xml version=\"1.0\"?>", 0, {}, kNothing},
    {"ElementNeverClosed",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note>",
     0,
     {},
     kNothing},
};

} // namespace

std::span<const CollectionTextCase> collectionMarkerTexts()
{
    return kMarkerTexts;
}

} // namespace Tests
