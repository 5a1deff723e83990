#include "transformation/collection_texts.h"

namespace Tests {
namespace {

// One element with other text around it.
const CollectionTextCase kSingleTexts[] = {
    {"One",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     {{L"s1", L"t1", L"n1", 1, L""}}},
    {"OneOfType2",
     L"<Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></Item>",
     {{L"s2", L"t2", L"n2", 2, L"x"}}},
    {"OneAsItIsWritten",
     L"<Item><Version>1.0</Version><SourceCs>s</SourceCs><TargetCs>t</TargetCs><Name>n</Name><Type>2</Type><Note></"
     L"Note></Item>",
     {{L"s", L"t", L"n", 2, L""}}},
    {"OneWithBlankBefore",
     L" \t<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     {{L"s1", L"t1", L"n1", 1, L""}}},
    {"OneWithLineEndBefore",
     L"\r\n<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     {{L"s1", L"t1", L"n1", 1, L""}}},
    {"OneWithTextAfter",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>garbage",
     {{L"s1", L"t1", L"n1", 1, L""}}},
    {"OneWithBlanksAfter",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item> \r\n",
     {{L"s1", L"t1", L"n1", 1, L""}}},
    {"OneWithRootClosingAfter",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item></Items>",
     {{L"s1", L"t1", L"n1", 1, L""}}},
    {"OneWithOpeningAfter",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item><Item>",
     {{L"s1", L"t1", L"n1", 1, L""}}},
    {"OneWithCutItemAfter",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item><Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></Item",
     {{L"s1", L"t1", L"n1", 1, L""}}},
    {"OneWithClosingAfter",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item></Item>",
     {{L"s1", L"t1", L"n1", 1, L""}, {}}},
    {"OneWithClosingBefore",
     L"</Item><Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     {{}, {L"s1", L"t1", L"n1", 1, L""}}},
    {"OneWithTextBefore",
     L"garbage<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     {{}}},
    {"OneWithRootBefore",
     L"<Items><Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     {{}}},
    {"OneWithRootAndLineEndBefore",
     L"<Items>\r\n<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item>\r\n</Items>",
     {{}}},
    {"OneWithDeclarationBefore",
     L"<?xml "
     L"version=\"1.0\"?>\n<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></"
     L"Note></Item>",
     {{}}},
    {"OneWithByteOrderMarkBefore",
     L"\uFEFF<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     {{}}},
    {"OneWithNoBreakSpaceBefore",
     L"\u00A0<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     {{}}},
    {"OneWithCommentBefore",
     L"<!-- x --><Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     {{}}},
    {"OneWithinAnOpening",
     L"<Item><Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     {{L"s1", L"t1", L"n1", 1, L""}}},
    {"OneWithinAnElement",
     L"<Item><Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item></"
     L"Item>",
     {{L"s1", L"t1", L"n1", 1, L""}, {}}},
    {"OneOfAnotherVersion",
     L"<Item><Version>9.9</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item>",
     {{L"a", L"b", L"c", 1, L"d"}}},
    {"OneWithoutType",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type></Type><Note>d</Note></Item>",
     {{L"a", L"b", L"c", 0, L"d"}}},
    {"OneOfType3",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>3</Type><Note>d</Note></Item>",
     {{L"a", L"b", L"c", 0, L"d"}}},
    {"OneWithoutSource",
     L"<Item><SourceCs></SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     {{L"", L"b", L"c", 1, L"d"}}},
    {"OneWithNothingButNote", L"<Item><Note>d</Note></Item>", {{}}},
    {"OneWithSourceAndTarget",
     L"<Item><SourceCs>p</SourceCs><TargetCs>q</TargetCs></Item>",
     {{L"p", L"q", L"", 0, L""}}},
    {"OneWithoutNote",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type></Item>",
     {{L"s1", L"t1", L"n1", 0, L""}}},
    {"OneWithClosingInItsNote",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>x</Item>y</Note></Item>",
     {{L"a", L"b", L"c", 0, L""}, {}}},
    {"OneWithElementInItsNote",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note><Item><SourceCs>s1</"
     L"SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item></Note></Item>",
     {{L"a", L"b", L"c", 1, L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note>"},
      {}}},
    {"OneWithWrongCaseClosingFirst",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></item></Item>",
     {{L"s1", L"t1", L"n1", 1, L""}}},
    {"OneWithLowerCaseOpening",
     L"<item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     {{}}},
    {"OneBeyondTheBasicPlane",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>\U0001F30D</Name><Type>1</Type><Note>\xD83C</Note></"
     L"Item>",
     {{L"a", L"b", L"\U0001F30D", 1, L"\xD83C"}}},
    {"OneInIdeographs",
     L"<Item><SourceCs>\u6771</SourceCs><TargetCs>\u4EAC</TargetCs><Name>\u5EA7\u6A19</Name><Type>2</"
     L"Type><Note>\u7CFB</Note></Item>",
     {{L"\u6771", L"\u4EAC", L"\u5EA7\u6A19", 2, L"\u7CFB"}}},
    {"OneWithEntities",
     L"<Item><SourceCs>&lt;</SourceCs><TargetCs>&amp;</TargetCs><Name>&#65;</Name><Type>1</Type><Note>d</Note></Item>",
     {{L"&lt;", L"&amp;", L"&#65;", 1, L"d"}}},
    {"OneInACommentWhole",
     L"<!--<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>-->",
     {{}}},
    {"OneInCdata",
     L"<![CDATA[<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item>]]>",
     {{}}},
    {"OneWithAttribute",
     L"<Item x=\"1\"><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     {{}}},
};

} // namespace

std::span<const CollectionTextCase> collectionSingleTexts()
{
    return kSingleTexts;
}

} // namespace Tests
