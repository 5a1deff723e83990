#include "transformation/collection_texts.h"

namespace Tests {
namespace {

// One element, with this and that around it.
constexpr CollectionTextCase kSingleTexts[] = {
    {"One",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     1,
     {{L"s1", L"t1", L"n1", 1, L""}},
     L"<Item><Version>1.0</Version><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></"
     L"Note></Item>"},
    {"OneOfType2",
     L"<Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></Item>",
     1,
     {{L"s2", L"t2", L"n2", 2, L"x"}},
     L"<Item><Version>1.0</Version><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</"
     L"Note></Item>"},
    {"OneAsItIsWritten",
     L"<Item><Version>1.0</Version><SourceCs>s</SourceCs><TargetCs>t</TargetCs><Name>n</Name><Type>2</Type><Note></"
     L"Note></Item>",
     1,
     {{L"s", L"t", L"n", 2, L""}},
     L"<Item><Version>1.0</Version><SourceCs>s</SourceCs><TargetCs>t</TargetCs><Name>n</Name><Type>2</Type><Note></"
     L"Note></Item>"},
    {"OneWithBlankBefore",
     L" \t<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     1,
     {{L"s1", L"t1", L"n1", 1, L""}},
     L"<Item><Version>1.0</Version><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></"
     L"Note></Item>"},
    {"OneWithLineEndBefore",
     L"\r\n<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     1,
     {{L"s1", L"t1", L"n1", 1, L""}},
     L"<Item><Version>1.0</Version><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></"
     L"Note></Item>"},
    {"OneWithTextAfter",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>garbage",
     1,
     {{L"s1", L"t1", L"n1", 1, L""}},
     L"<Item><Version>1.0</Version><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></"
     L"Note></Item>"},
    {"OneWithBlanksAfter",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item> \r\n",
     1,
     {{L"s1", L"t1", L"n1", 1, L""}},
     L"<Item><Version>1.0</Version><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></"
     L"Note></Item>"},
    {"OneWithRootClosingAfter",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item></Items>",
     1,
     {{L"s1", L"t1", L"n1", 1, L""}},
     L"<Item><Version>1.0</Version><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></"
     L"Note></Item>"},
    {"OneWithOpeningAfter",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item><Item>",
     1,
     {{L"s1", L"t1", L"n1", 1, L""}},
     L"<Item><Version>1.0</Version><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></"
     L"Note></Item>"},
    {"OneWithCutItemAfter",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item><Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></Item",
     1,
     {{L"s1", L"t1", L"n1", 1, L""}},
     L"<Item><Version>1.0</Version><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></"
     L"Note></Item>"},
    {"OneWithClosingAfter",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item></Item>",
     2,
     {{L"s1", L"t1", L"n1", 1, L""}, {}},
     L"<Item><Version>1.0</Version><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></"
     L"Note></Item>"},
    {"OneWithClosingBefore",
     L"</Item><Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     2,
     {{}, {L"s1", L"t1", L"n1", 1, L""}},
     L"<Item><Version>1.0</Version><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></"
     L"Note></Item>"},
    {"OneWithTextBefore",
     L"garbage<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     1,
     {{}},
     kNothing},
    {"OneWithRootBefore",
     L"<Items><Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     1,
     {{}},
     kNothing},
    {"OneWithRootAndLineEndBefore",
     L"<Items>\r\n<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item>\r\n</Items>",
     1,
     {{}},
     kNothing},
    {"OneWithDeclarationBefore",
     L"<?xml "
     L"version=\"1.0\"?>\n<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></"
     L"Note></Item>",
     1,
     {{}},
     kNothing},
    {"OneWithByteOrderMarkBefore",
     L"\uFEFF<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     1,
     {{}},
     kNothing},
    {"OneWithNoBreakSpaceBefore",
     L"\u00A0<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     1,
     {{}},
     kNothing},
    {"OneWithCommentBefore",
     L"<!-- x --><Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     1,
     {{}},
     kNothing},
    {"OneWithinAnOpening",
     L"<Item><Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     1,
     {{L"s1", L"t1", L"n1", 1, L""}},
     L"<Item><Version>1.0</Version><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></"
     L"Note></Item>"},
    {"OneWithinAnElement",
     L"<Item><Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item></"
     L"Item>",
     2,
     {{L"s1", L"t1", L"n1", 1, L""}, {}},
     L"<Item><Version>1.0</Version><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></"
     L"Note></Item>"},
    {"OneOfAnotherVersion",
     L"<Item><Version>9.9</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item>",
     1,
     {{L"a", L"b", L"c", 1, L"d"}},
     L"<Item><Version>1.0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item>"},
    {"OneWithoutType",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type></Type><Note>d</Note></Item>",
     1,
     {{L"a", L"b", L"c", 0, L"d"}},
     kNothing},
    {"OneOfType3",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>3</Type><Note>d</Note></Item>",
     1,
     {{L"a", L"b", L"c", 0, L"d"}},
     kNothing},
    {"OneWithoutSource",
     L"<Item><SourceCs></SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     1,
     {{L"", L"b", L"c", 1, L"d"}},
     kNothing},
    {"OneWithNothingButNote", L"<Item><Note>d</Note></Item>", 1, {{}}, kNothing},
    {"OneWithSourceAndTarget",
     L"<Item><SourceCs>p</SourceCs><TargetCs>q</TargetCs></Item>",
     1,
     {{L"p", L"q", L"", 0, L""}},
     kNothing},
    {"OneWithoutNote",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type></Item>",
     1,
     {{L"s1", L"t1", L"n1", 0, L""}},
     kNothing},
    {"OneWithClosingInItsNote",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>x</Item>y</Note></Item>",
     2,
     {{L"a", L"b", L"c", 0, L""}, {}},
     kNothing},
    {"OneWithElementInItsNote",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note><Item><SourceCs>s1</"
     L"SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item></Note></Item>",
     2,
     {{L"a", L"b", L"c", 1, L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note>"},
      {}},
     L"<Item><Version>1.0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</"
     L"Type><Note><Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item>"},
    {"OneWithWrongCaseClosingFirst",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></item></Item>",
     1,
     {{L"s1", L"t1", L"n1", 1, L""}},
     L"<Item><Version>1.0</Version><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></"
     L"Note></Item>"},
    {"OneWithLowerCaseOpening",
     L"<item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     1,
     {{}},
     kNothing},
    {"OneBeyondTheBasicPlane",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>\U0001F30D</Name><Type>1</Type><Note>\xD83C</Note></"
     L"Item>",
     1,
     {{L"a", L"b", L"\U0001F30D", 1, L"\xD83C"}},
     L"<Item><Version>1.0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>\U0001F30D</Name><Type>1</"
     L"Type><Note>\xD83C</Note></Item>"},
    {"OneInIdeographs",
     L"<Item><SourceCs>\u6771</SourceCs><TargetCs>\u4EAC</TargetCs><Name>\u5EA7\u6A19</Name><Type>2</"
     L"Type><Note>\u7CFB</Note></Item>",
     1,
     {{L"\u6771", L"\u4EAC", L"\u5EA7\u6A19", 2, L"\u7CFB"}},
     L"<Item><Version>1.0</Version><SourceCs>\u6771</SourceCs><TargetCs>\u4EAC</TargetCs><Name>\u5EA7\u6A19</"
     L"Name><Type>2</Type><Note>\u7CFB</Note></Item>"},
    {"OneWithEntities",
     L"<Item><SourceCs>&lt;</SourceCs><TargetCs>&amp;</TargetCs><Name>&#65;</Name><Type>1</Type><Note>d</Note></Item>",
     1,
     {{L"&lt;", L"&amp;", L"&#65;", 1, L"d"}},
     L"<Item><Version>1.0</Version><SourceCs>&lt;</SourceCs><TargetCs>&amp;</TargetCs><Name>&#65;</Name><Type>1</"
     L"Type><Note>d</Note></Item>"},
    {"OneInACommentWhole",
     L"<!--<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>-->",
     1,
     {{}},
     kNothing},
    {"OneInCdata",
     L"<![CDATA[<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item>]]>",
     1,
     {{}},
     kNothing},
    {"OneWithAttribute",
     L"<Item x=\"1\"><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     1,
     {{}},
     kNothing},
};

} // namespace

std::span<const CollectionTextCase> collectionSingleTexts()
{
    return kSingleTexts;
}

} // namespace Tests
