#include "transformation/collection_texts.h"

namespace Tests {
namespace {

// Several elements.
const CollectionTextCase kSeveralTexts[] = {
    {"Two",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item><Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></Item>",
     {{L"s1", L"t1", L"n1", 1, L""}, {L"s2", L"t2", L"n2", 2, L"x"}}},
    {"Three",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item><Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></"
     L"Item><Item><SourceCs>s3</SourceCs><TargetCs>t3</TargetCs><Name>n3</Name><Type>1</Type><Note></Note></Item>",
     {{L"s1", L"t1", L"n1", 1, L""}, {L"s2", L"t2", L"n2", 2, L"x"}, {L"s3", L"t3", L"n3", 1, L""}}},
    {"TheSameTwice",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item><Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     {{L"s1", L"t1", L"n1", 1, L""}, {L"s1", L"t1", L"n1", 1, L""}}},
    {"TwoWithLineEndsBetween",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item>\r\n<Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></"
     L"Item>\r\n",
     {{L"s1", L"t1", L"n1", 1, L""}, {L"s2", L"t2", L"n2", 2, L"x"}}},
    {"ThreeOnLinesOfTheirOwn",
     L"\n<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item>\n<Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></"
     L"Item>\n<Item><SourceCs>s3</SourceCs><TargetCs>t3</TargetCs><Name>n3</Name><Type>1</Type><Note></Note></Item>\n",
     {{L"s1", L"t1", L"n1", 1, L""}, {L"s2", L"t2", L"n2", 2, L"x"}, {L"s3", L"t3", L"n3", 1, L""}}},
    {"TwoWithEveryBlankBetween",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item> "
     L"\t\n\v\f\r<Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></"
     L"Item>",
     {{L"s1", L"t1", L"n1", 1, L""}, {L"s2", L"t2", L"n2", 2, L"x"}}},
    {"TwoWithTextBetween",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item>garbage<Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></"
     L"Item>",
     {{L"s1", L"t1", L"n1", 1, L""}, {}}},
    {"TwoWithCommaBetween",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item>,<Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></Item>",
     {{L"s1", L"t1", L"n1", 1, L""}, {}}},
    {"TwoWithNoBreakSpaceBetween",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item>\u00A0<Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></"
     L"Item>",
     {{L"s1", L"t1", L"n1", 1, L""}, {}}},
    {"TwoWithByteOrderMarkBetween",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item>\uFEFF<Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></"
     L"Item>",
     {{L"s1", L"t1", L"n1", 1, L""}, {}}},
    {"TwoWithCommentBetween",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item><!-- x "
     L"--><Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></Item>",
     {{L"s1", L"t1", L"n1", 1, L""}, {}}},
    {"ThreeWithTextBeforeTheFirst",
     L"garbage<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item><Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></"
     L"Item><Item><SourceCs>s3</SourceCs><TargetCs>t3</TargetCs><Name>n3</Name><Type>1</Type><Note></Note></Item>",
     {{}, {L"s2", L"t2", L"n2", 2, L"x"}, {L"s3", L"t3", L"n3", 1, L""}}},
    {"ThreeWithTextEverywhere",
     L"g<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item>g<Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></"
     L"Item>g<Item><SourceCs>s3</SourceCs><TargetCs>t3</TargetCs><Name>n3</Name><Type>1</Type><Note></Note></Item>g",
     {{}, {}, {}}},
    {"TwoBelowARoot",
     L"<Items><Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item><Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></Item></"
     L"Items>",
     {{}, {L"s2", L"t2", L"n2", 2, L"x"}}},
    {"TwoBelowARootOnLines",
     L"<Items>\r\n  "
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>\r\n  "
     L"<Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></Item>\r\n</"
     L"Items>\r\n",
     {{}, {L"s2", L"t2", L"n2", 2, L"x"}}},
    {"TwoAndACutOne",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item><Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></"
     L"Item><Item><SourceCs>s3</SourceCs><TargetCs>t3</TargetCs><Name>n3</Name><Type>1</Type><Note></Note></Item",
     {{L"s1", L"t1", L"n1", 1, L""}, {L"s2", L"t2", L"n2", 2, L"x"}}},
    {"TwoAndAClosingTag",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item><Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></Item></"
     L"Item>",
     {{L"s1", L"t1", L"n1", 1, L""}, {L"s2", L"t2", L"n2", 2, L"x"}, {}}},
    {"ClosingTagBetween",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item></"
     L"Item><Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></Item>",
     {{L"s1", L"t1", L"n1", 1, L""}, {}, {L"s2", L"t2", L"n2", 2, L"x"}}},
    {"EmptyElementBetween",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item><Item></"
     L"Item><Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></Item>",
     {{L"s1", L"t1", L"n1", 1, L""}, {}, {L"s2", L"t2", L"n2", 2, L"x"}}},
    {"PartlyReadFirst",
     L"<Item><SourceCs>p</SourceCs><TargetCs>q</TargetCs></Item><Item><SourceCs>s1</SourceCs><TargetCs>t1</"
     L"TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item>",
     {{L"p", L"q", L"", 0, L""}, {L"s1", L"t1", L"n1", 1, L""}}},
    {"PartlyReadBetween",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item><Item><SourceCs>p</SourceCs><TargetCs>q</TargetCs></Item><Item><SourceCs>s2</SourceCs><TargetCs>t2</"
     L"TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></Item>",
     {{L"s1", L"t1", L"n1", 1, L""}, {L"p", L"q", L"", 0, L""}, {L"s2", L"t2", L"n2", 2, L"x"}}},
    {"PartlyReadLast",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item><Item><SourceCs>p</SourceCs><TargetCs>q</TargetCs></Item>",
     {{L"s1", L"t1", L"n1", 1, L""}, {L"p", L"q", L"", 0, L""}}},
    {"FirstWithoutItsOpening",
     L"<SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item><Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></Item>",
     {{}, {L"s2", L"t2", L"n2", 2, L"x"}}},
    {"FirstWithoutItsClosing",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></"
     L"Note><Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></Item>",
     {{L"s1", L"t1", L"n1", 1, L""}}},
    {"SecondWithoutItsOpening",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></Item>",
     {{L"s1", L"t1", L"n1", 1, L""}, {}}},
    {"ElementWithinAnElementAndOneAfter",
     L"<Item><Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item></"
     L"Item><Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></Item>",
     {{L"s1", L"t1", L"n1", 1, L""}, {}, {L"s2", L"t2", L"n2", 2, L"x"}}},
    {"TwoWithinAnElement",
     L"<Item><Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item><Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></Item></"
     L"Item>",
     {{L"s1", L"t1", L"n1", 1, L""}, {L"s2", L"t2", L"n2", 2, L"x"}, {}}},
    {"WrongCaseBetween",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item><item>x</"
     L"item><Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></Item>",
     {{L"s1", L"t1", L"n1", 1, L""}, {}}},
    {"NoneComplete",
     L"<Item><SourceCs></SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></"
     L"Item><Item><SourceCs>a</SourceCs><TargetCs></TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></"
     L"Item><Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name></Name><Type>1</Type><Note>d</Note></"
     L"Item><Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>0</Type><Note>d</Note></Item>",
     {{L"", L"b", L"c", 1, L"d"}, {L"a", L"", L"c", 1, L"d"}, {L"a", L"b", L"", 1, L"d"}, {L"a", L"b", L"c", 0, L"d"}}},
    {"CompleteAmongOthers",
     L"<Item><SourceCs></SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></"
     L"Item><Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item><Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>0</Type><Note>d</Note></"
     L"Item><Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></"
     L"Item><Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name></Name><Type>1</Type><Note>d</Note></Item>",
     {{L"", L"b", L"c", 1, L"d"},
      {L"s1", L"t1", L"n1", 1, L""},
      {L"a", L"b", L"c", 0, L"d"},
      {L"s2", L"t2", L"n2", 2, L"x"},
      {L"a", L"b", L"", 1, L"d"}}},
    {"NoteWithElementThenOne",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note><Item><SourceCs>s1</"
     L"SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></Item></Note></"
     L"Item><Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note>x</Note></Item>",
     {{L"a", L"b", L"c", 1, L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note>"},
      {},
      {L"s2", L"t2", L"n2", 2, L"x"}}},
    {"TypesOfEveryKind",
     L"<Item><SourceCs>s1</SourceCs><TargetCs>t1</TargetCs><Name>n1</Name><Type>1</Type><Note></Note></"
     L"Item><Item><SourceCs>s2</SourceCs><TargetCs>t2</TargetCs><Name>n2</Name><Type>2</Type><Note></Note></"
     L"Item><Item><SourceCs>s3</SourceCs><TargetCs>t3</TargetCs><Name>n3</Name><Type>3</Type><Note></Note></"
     L"Item><Item><SourceCs>s4</SourceCs><TargetCs>t4</TargetCs><Name>n4</Name><Type></Type><Note></Note></"
     L"Item><Item><SourceCs>s5</SourceCs><TargetCs>t5</TargetCs><Name>n5</Name><Type>01</Type><Note></Note></Item>",
     {{L"s1", L"t1", L"n1", 1, L""},
      {L"s2", L"t2", L"n2", 2, L""},
      {L"s3", L"t3", L"n3", 0, L""},
      {L"s4", L"t4", L"n4", 0, L""},
      {L"s5", L"t5", L"n5", 0, L""}}},
};

} // namespace

std::span<const CollectionTextCase> collectionSeveralTexts()
{
    return kSeveralTexts;
}

} // namespace Tests
