#include "transformation/collection_texts.h"

namespace Tests {
namespace {

// Texts without an item, some with a tag of one.
const CollectionTextCase kMarkerTexts[] = {
    {"Empty", L"", {}},
    {"OneBlank", L" ", {}},
    {"PlainText", L"EPSG:4326", {}},
    {"OpeningTagAlone", L"<Item>", {}},
    {"EmptyRoot", L"<Items></Items>", {}},
    {"ClosingTagAlone", L"</Item>", {{}}},
    {"ClosingTagTwice", L"</Item></Item>", {{}, {}}},
    {"ClosingTagThrice", L"</Item></Item></Item>", {{}, {}, {}}},
    {"ClosingTagsWithBlanksBetween", L" </Item> </Item> ", {{}, {}}},
    {"EmptyElement", L"<Item></Item>", {{}}},
    {"EmptyElementsTwice", L"<Item></Item><Item></Item>", {{}, {}}},
    {"ElementOfABlank", L"<Item> </Item>", {{}}},
    {"SelfClosingElement", L"<Item/>", {}},
    {"ClosingCutByOne", L"<Item>x</Item", {}},
    {"ClosingCutThenWhole", L"<Item>x</Item</Item>", {{}}},
    {"LowerCaseMarkers", L"<item></item>", {}},
    {"UpperCaseMarkers", L"<ITEM></ITEM>", {}},
    {"ClosingWithBlank", L"<Item>x</Item >", {}},
    {"ClosingOfAnotherTag", L"</Items>", {}},
    {"PrefixedClosing", L"</x:Item>", {}},
    {"DoubledClosingSigns", L"<<</Item>>>", {{}}},
    {"OverlappingClosingStarts", L"</</Item>", {{}}},
    {"ClosingAgainstClosing", L"</Item</Item>Item>", {{}}},
    {"Declaration", L"<?xml version=\"1.0\"?>", {}},
    {"ElementNeverClosed",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note>",
     {}},
};

} // namespace

std::span<const CollectionTextCase> collectionMarkerTexts()
{
    return kMarkerTexts;
}

} // namespace Tests
