#include "transformation/item_texts.h"

namespace Tests {
namespace {

// The tags within an element: which are there, in which order and in which spelling.
constexpr ItemTextCase kTagTexts[] = {
    {"NothingButSource",
     L"<Item><SourceCs>a</SourceCs></Item>",
     {L"a", L"t0", L"n0", 7, L"o0"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>t0</TargetCs><Name>n0</Name><Type>7</Type><Note>o0</"
     L"Note></Item>"},
    {"NothingButTarget", L"<Item><TargetCs>b</TargetCs></Item>", kUntouched, kUntouchedText},
    {"NothingButSourceAndTarget",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs></Item>",
     {L"a", L"b", L"n0", 7, L"o0"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>n0</Name><Type>7</Type><Note>o0</"
     L"Note></Item>"},
    {"NoSource", L"<Item><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>", kUntouched,
     kUntouchedText},
    {"NoTarget",
     L"<Item><SourceCs>a</SourceCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"t0", L"n0", 7, L"o0"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>t0</TargetCs><Name>n0</Name><Type>7</Type><Note>o0</"
     L"Note></Item>"},
    {"NoName",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"b", L"n0", 7, L"o0"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>n0</Name><Type>7</Type><Note>o0</"
     L"Note></Item>"},
    {"NoType",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Note>d</Note></Item>",
     {L"a", L"b", L"c", 7, L"o0"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>7</Type><Note>o0</"
     L"Note></Item>"},
    {"NoNote",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type></Item>",
     {L"a", L"b", L"c", 7, L"o0"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>7</Type><Note>o0</"
     L"Note></Item>"},
    {"NoteOnly", L"<Item><Note>d</Note></Item>", kUntouched, kUntouchedText},
    {"TypeAndNoteOnly", L"<Item><Type>1</Type><Note>d</Note></Item>", kUntouched, kUntouchedText},
    {"Reversed",
     L"<Item><Note>d</Note><Type>1</Type><Name>c</Name><TargetCs>b</TargetCs><SourceCs>a</SourceCs></Item>",
     {L"a", L"b", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item>"},
    {"NoteFirst",
     L"<Item><Note>d</Note><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type></Item>",
     {L"a", L"b", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item>"},
    {"TypeFirst",
     L"<Item><Type>1</Type><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Note>d</Note></Item>",
     {L"a", L"b", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item>"},
    {"VersionLast",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note><Version>1.0</"
     L"Version></Item>",
     {L"a", L"b", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item>"},
    {"SourceTwice",
     L"<Item><SourceCs>a</SourceCs><SourceCs>e</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item>",
     {L"a", L"b", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item>"},
    {"NameTwiceTheFirstEmpty",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name></Name><Name>c</Name><Type>1</Type><Note>d</Note></"
     L"Item>",
     {L"a", L"b", L"", 1, L"d"},
     kNothing},
    {"NoteTwice",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note><Note>e</Note></"
     L"Item>",
     {L"a", L"b", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item>"},
    {"TypeTwice",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>2</Type><Type>1</Type><Note>d</Note></"
     L"Item>",
     {L"a", L"b", L"c", 2, L"d"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>2</Type><Note>d</"
     L"Note></Item>"},
    {"ClosingOfSourceTwice",
     L"<Item><SourceCs>a</SourceCs></SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"b", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item>"},
    {"OpeningOfSourceTwice",
     L"<Item><SourceCs><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     {L"<SourceCs>a", L"b", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</"
     L"Type><Note>d</Note></Item>"},
    {"OpeningOfNameTwiceWithTextBetween",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>x<Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"b", L"x<Name>c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>x<Name>c</Name><Type>1</"
     L"Type><Note>d</Note></Item>"},
    {"SourceClosedBeforeItOpens",
     L"<Item></SourceCs>a<SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     {L"<TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>", L"b", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item></"
     L"SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>"},
    {"TargetClosedBeforeItOpens",
     L"<Item><SourceCs>a</SourceCs></TargetCs><TargetCs>b<Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"b<Name>c</Name><Type>1</Type><Note>d</Note></Item>", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b<Name>c</Name><Type>1</Type><Note>d</Note></Item></"
     L"TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>"},
    {"NameClosedBeforeItOpens",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs></Name><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"b", L"c</Name><Type>1</Type><Note>d</Note></Item>", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item></Name><Type>1</Type><Note>d</Note></Item>"},
    {"TypeClosedBeforeItOpens",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name></Type><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"b", L"c", 0, L"d"},
     kNothing},
    {"NoteClosedBeforeItOpens",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type></Note><Note>d</Note></Item>",
     {L"a", L"b", L"c", 1, L"d</Note></Item>"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item></Note></Item>"},
    {"NoteClosedAtOnceAfterItemOpens",
     L"<Item></Note><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note></Item>",
     {L"a", L"b", L"c", 1, L"</Item>"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note></"
     L"Item></Note></Item>"},
    {"NoteOpeningLastAndClosedFirst",
     L"<Item></Note><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Item>",
     {L"a", L"b", L"c", 1, L"d</Item>"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Item></Note></Item>"},
    {"EveryTagClosedBeforeItOpens",
     L"<Item></SourceCs></TargetCs></Name></Type></Note><SourceCs><TargetCs><Name><Type><Note></Item>",
     {L"<TargetCs><Name><Type><Note></Item>", L"<Name><Type><Note></Item>", L"<Type><Note></Item>", 0, L"</Item>"},
     kNothing},
    {"ClosingRightBeforeOpening",
     L"<Item></SourceCs><SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     {L"<TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>", L"b", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item></"
     L"SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>"},
    {"StrayClosingBeforeAWholeElement",
     L"<Item></SourceCs><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     {L"a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>", L"b", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item></SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>"},
    {"SourceNeverClosed", L"<Item><SourceCs>a<TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     kUntouched, kUntouchedText},
    {"TargetNeverClosed",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b<Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"t0", L"n0", 7, L"o0"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>t0</TargetCs><Name>n0</Name><Type>7</Type><Note>o0</"
     L"Note></Item>"},
    {"NameNeverClosed",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c<Type>1</Type><Note>d</Note></Item>",
     {L"a", L"b", L"n0", 7, L"o0"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>n0</Name><Type>7</Type><Note>o0</"
     L"Note></Item>"},
    {"TypeNeverClosed",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1<Note>d</Note></Item>",
     {L"a", L"b", L"c", 7, L"o0"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>7</Type><Note>o0</"
     L"Note></Item>"},
    {"NoteNeverClosed",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Item>",
     {L"a", L"b", L"c", 7, L"o0"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>7</Type><Note>o0</"
     L"Note></Item>"},
    {"SourceNeverOpened", L"<Item>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     kUntouched, kUntouchedText},
    {"TypeNeverOpened",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name>1</Type><Note>d</Note></Item>",
     {L"a", L"b", L"c", 7, L"o0"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>7</Type><Note>o0</"
     L"Note></Item>"},
    {"NoteNeverOpened",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type>d</Note></Item>",
     {L"a", L"b", L"c", 7, L"o0"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>7</Type><Note>o0</"
     L"Note></Item>"},
    {"TargetWithinSource",
     L"<Item><SourceCs>a<TargetCs>b</TargetCs></SourceCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     {L"a<TargetCs>b</TargetCs>", L"b", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs>a<TargetCs>b</TargetCs></SourceCs><TargetCs>b</TargetCs><Name>c</"
     L"Name><Type>1</Type><Note>d</Note></Item>"},
    {"EveryFieldWithinSource",
     L"<Item><SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></SourceCs></Item>",
     {L"<TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note>", L"b", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></"
     L"SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>"},
    {"NestedToTheDepthOfFive",
     L"<Item><SourceCs><TargetCs><Name><Type><Note>1</Note></Type></Name></TargetCs></SourceCs></Item>",
     {L"<TargetCs><Name><Type><Note>1</Note></Type></Name></TargetCs>", L"<Name><Type><Note>1</Note></Type></Name>",
      L"<Type><Note>1</Note></Type>", 0, L"1"},
     kNothing},
    {"FieldsWithinAForeignElement",
     L"<Item><Pair><SourceCs>a</SourceCs><TargetCs>b</TargetCs></Pair><Name>c</Name><Type>1</Type><Note>d</Note></"
     L"Item>",
     {L"a", L"b", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item>"},
    {"SourceAndTargetOverlapping",
     L"<Item><SourceCs>a<TargetCs>b</SourceCs>c</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     {L"a<TargetCs>b", L"b</SourceCs>c", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs>a<TargetCs>b</SourceCs><TargetCs>b</SourceCs>c</TargetCs><Name>c</"
     L"Name><Type>1</Type><Note>d</Note></Item>"},
    {"TypeAndNoteOverlapping",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1<Note></Type>d</Note></Item>",
     {L"a", L"b", L"c", 0, L"</Type>d"},
     kNothing},
    {"ChainOfOverlaps",
     L"<Item><SourceCs>1<TargetCs>2</SourceCs>3<Name>4</TargetCs>5<Type>6</Name>7<Note>8</Type>9</Note></Item>",
     {L"1<TargetCs>2", L"2</SourceCs>3<Name>4", L"4</TargetCs>5<Type>6", 0, L"8</Type>9"},
     kNothing},
    {"SourceWithAttribute",
     L"<Item><SourceCs kind=\"2\">a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     kUntouched, kUntouchedText},
    {"NoteWithAttribute",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note lang=\"en\">d</Note></Item>",
     {L"a", L"b", L"c", 7, L"o0"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>7</Type><Note>o0</"
     L"Note></Item>"},
    {"NameWithBlankInTheOpening",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name >c</Name><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"b", L"n0", 7, L"o0"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>n0</Name><Type>7</Type><Note>o0</"
     L"Note></Item>"},
    {"NameWithBlankInTheClosing",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name ><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"b", L"n0", 7, L"o0"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>n0</Name><Type>7</Type><Note>o0</"
     L"Note></Item>"},
    {"NoteSelfClosing",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note/></Item>",
     {L"a", L"b", L"c", 7, L"o0"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>7</Type><Note>o0</"
     L"Note></Item>"},
    {"TypeSelfClosing",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type/><Note>d</Note></Item>",
     {L"a", L"b", L"c", 7, L"o0"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>7</Type><Note>o0</"
     L"Note></Item>"},
    {"SourceInLowerCase",
     L"<Item><sourcecs>a</sourcecs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>", kUntouched,
     kUntouchedText},
    {"SourceInUpperCase",
     L"<Item><SOURCECS>a</SOURCECS><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>", kUntouched,
     kUntouchedText},
    {"SourceWithLastLetterUpper",
     L"<Item><SourceCS>a</SourceCS><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>", kUntouched,
     kUntouchedText},
    {"NameClosingInLowerCase",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</name><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"b", L"n0", 7, L"o0"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>n0</Name><Type>7</Type><Note>o0</"
     L"Note></Item>"},
    {"TypeOpeningInLowerCase",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><type>1</Type><Note>d</Note></Item>",
     {L"a", L"b", L"c", 7, L"o0"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>7</Type><Note>o0</"
     L"Note></Item>"},
    {"WrongCaseBeforeTheRightOne",
     L"<Item><sourcecs>x</sourcecs><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item>",
     {L"a", L"b", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item>"},
    {"PrefixedField",
     L"<Item><x:SourceCs>a</x:SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     kUntouched, kUntouchedText},
    {"LongerTagIsAnother",
     L"<Item><SourceCsCode>a</SourceCsCode><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     kUntouched, kUntouchedText},
    {"LongerTagBeforeTheField",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Names>x</Names><Name>c</Name><Type>1</Type><Note>d</Note></"
     L"Item>",
     {L"a", L"b", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item>"},
    {"ShorterTagIsAnother",
     L"<Item><Source>a</Source><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>", kUntouched,
     kUntouchedText},
    {"ForeignFields",
     L"<Item><X>1</X><SourceCs>a</SourceCs><Y/><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note><Z></"
     L"Item>",
     {L"a", L"b", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item>"},
    {"TextBetweenFields",
     L"<Item>x<SourceCs>a</SourceCs>y<TargetCs>b</TargetCs>z<Name>c</Name><Type>1</Type>&<Note>d</Note>></Item>",
     {L"a", L"b", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item>"},
    {"BlanksAndLineEndsBetweenFields",
     L"<Item>\r\n\t<SourceCs>a</SourceCs>\r\n\t<TargetCs>b</TargetCs>\r\n\t<Name>c</Name>\r\n\t<Type>1</"
     L"Type>\r\n\t<Note>d</Note>\r\n</Item>",
     {L"a", L"b", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item>"},
    {"VersionOfAnotherNumber",
     L"<Item><Version>2.0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item>",
     {L"a", L"b", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item>"},
    {"VersionEmpty",
     L"<Item><Version></Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item>",
     {L"a", L"b", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item>"},
    {"VersionCut",
     L"<Item><Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"b", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item>"},
    {"VersionHoldingFields",
     L"<Item><Version><SourceCs>x</SourceCs></Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</"
     L"Name><Type>1</Type><Note>d</Note></Item>",
     {L"x", L"b", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs>x</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item>"},
    {"InnerItemElement",
     L"<Item><Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"b", L"c", 1, L"d"},
     L"<Item><Version>v0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</"
     L"Note></Item>"},
};

} // namespace

std::span<const ItemTextCase> itemTagTexts()
{
    return kTagTexts;
}

} // namespace Tests
