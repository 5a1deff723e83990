#include "transformation/item_texts.h"

namespace Tests {
namespace {

// The values of the other fields.
constexpr ItemTextCase kValueTexts[] = {
    {"AllValuesEmpty",
     L"<Item><SourceCs></SourceCs><TargetCs></TargetCs><Name></Name><Type></Type><Note></Note></Item>",
     {L"", L"", L"", 0, L""}},
    {"SourceEmpty",
     L"<Item><SourceCs></SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     {L"", L"b", L"c", 1, L"d"}},
    {"TargetEmpty",
     L"<Item><SourceCs>a</SourceCs><TargetCs></TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"", L"c", 1, L"d"}},
    {"NameEmpty",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name></Name><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"b", L"", 1, L"d"}},
    {"NoteEmpty",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note></Note></Item>",
     {L"a", L"b", L"c", 1, L""}},
    {"EntityReferences",
     L"<Item><SourceCs>&lt;</SourceCs><TargetCs>&amp;</TargetCs><Name>&#65;</Name><Type>1</"
     L"Type><Note>&quot;&apos;&gt;</Note></Item>",
     {L"&lt;", L"&amp;", L"&#65;", 1, L"&quot;&apos;&gt;"}},
    {"UnknownEntity",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>&nothing;</Name><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"b", L"&nothing;", 1, L"d"}},
    {"BareAmpersand",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c & d</Name><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"b", L"c & d", 1, L"d"}},
    {"LessThan",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c < d</Name><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"b", L"c < d", 1, L"d"}},
    {"GreaterThan",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c > d</Name><Type>1</Type><Note>></Note></Item>",
     {L"a", L"b", L"c > d", 1, L">"}},
    {"Quotes",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>\"c\"</Name><Type>1</Type><Note>'d'</Note></Item>",
     {L"a", L"b", L"\"c\"", 1, L"'d'"}},
    {"Cdata",
     L"<Item><SourceCs><![CDATA[a]]></SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     {L"<![CDATA[a]]>", L"b", L"c", 1, L"d"}},
    {"CdataHoldingATag",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name><![CDATA[</Name>]]></Name><Type>1</Type><Note>d</Note></"
     L"Item>",
     {L"a", L"b", L"<![CDATA[", 1, L"d"}},
    {"CommentInValue",
     L"<Item><SourceCs>a</SourceCs><TargetCs><!-- x -->b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"<!-- x -->b", L"c", 1, L"d"}},
    {"ClosingTagInComment",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name><!-- </Name> "
     L"-->c</Name><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"b", L"<!-- ", 1, L"d"}},
    {"CommentHoldingTheFirstField",
     L"<Item><!-- <SourceCs>x</SourceCs> "
     L"--><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     {L"x", L"b", L"c", 1, L"d"}},
    {"ProcessingInstruction",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note><?x?></Note></Item>",
     {L"a", L"b", L"c", 1, L"<?x?>"}},
    {"OwnClosingTagInValue",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>x</Note>y</Note></Item>",
     {L"a", L"b", L"c", 1, L"x"}},
    {"OwnClosingTagInName",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name>d</Name><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"b", L"c", 1, L"d"}},
    {"OwnOpeningTagInValue",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name><Name></Name><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"b", L"<Name>", 1, L"d"}},
    {"AnotherFieldInNote",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note><SourceCs>x</SourceCs></"
     L"Note></Item>",
     {L"a", L"b", L"c", 1, L"<SourceCs>x</SourceCs>"}},
    {"LaterFieldInSource",
     L"<Item><SourceCs><Name>x</Name></SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></"
     L"Item>",
     {L"<Name>x</Name>", L"b", L"x", 1, L"d"}},
    {"LaterFieldsOpeningInSource",
     L"<Item><SourceCs><Note></SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     {L"<Note>", L"b", L"c", 1, L"</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d"}},
    {"LaterFieldsClosingInSource",
     L"<Item><SourceCs></Note></SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     {L"</Note>", L"b", L"c", 1, L"d</Note></Item>"}},
    {"TypeElementInName",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name><Type>2</Type></Name><Type>1</Type><Note>d</Note></"
     L"Item>",
     {L"a", L"b", L"<Type>2</Type>", 2, L"d"}},
    {"HalfOfATagInValue",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name></Nam</Name><Type>1</Type><Note><Not</Note></Item>",
     {L"a", L"b", L"</Nam", 1, L"<Not"}},
    {"TagBroughtTogetherByNothing",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name></Na<b/>me></Name><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"b", L"</Na<b/>me>", 1, L"d"}},
    {"ClosingItemTagInNote",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>x</Item>y</Note></Item>",
     {L"a", L"b", L"c", 1, L"x</Item>y"}},
    {"OpeningItemTagInNote",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note><Item></Note></Item>",
     {L"a", L"b", L"c", 1, L"<Item>"}},
    {"BlanksInValuesStay",
     L"<Item><SourceCs> a "
     L"</SourceCs><TargetCs>\tb\t</TargetCs><Name>\r\nc\r\n</Name><Type>1</Type><Note>\v\f</Note></Item>",
     {L" a ", L"\tb\t", L"\r\nc\r\n", 1, L"\v\f"}},
    {"ValuesOfBlanksAlone",
     L"<Item><SourceCs> </SourceCs><TargetCs>  </TargetCs><Name>\t</Name><Type>1</Type><Note>\n</Note></Item>",
     {L" ", L"  ", L"\t", 1, L"\n"}},
    {"CatalogCodes",
     L"<Item><SourceCs>EPSG:4275</SourceCs><TargetCs>EPSG:4326</TargetCs><Name>NTF to WGS 84 "
     L"(1)</Name><Type>2</Type><Note></Note></Item>",
     {L"EPSG:4275", L"EPSG:4326", L"NTF to WGS 84 (1)", 2, L""}},
    {"BracesAndPercent",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>%s %n {0} \\</Name><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"b", L"%s %n {0} \\", 1, L"d"}},
    {"Backslashes",
     L"<Item><SourceCs>\\\\</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>C:\\x</Note></Item>",
     {L"\\\\", L"b", L"c", 1, L"C:\\x"}},
    {"Umlauts",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>Stra\u00DFen\u00E4\u00F6\u00FC</Name><Type>1</"
     L"Type><Note>d</Note></Item>",
     {L"a", L"b", L"Stra\u00DFen\u00E4\u00F6\u00FC", 1, L"d"}},
    {"Greek",
     L"<Item><SourceCs>\u0391\u0392</SourceCs><TargetCs>b</TargetCs><Name>\u03B1\u03B2\u03B3</Name><Type>1</"
     L"Type><Note>d</Note></Item>",
     {L"\u0391\u0392", L"b", L"\u03B1\u03B2\u03B3", 1, L"d"}},
    {"RightToLeft",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>\u05D0\u05D1</Name><Type>1</Type><Note>\u0639\u0631</"
     L"Note></Item>",
     {L"a", L"b", L"\u05D0\u05D1", 1, L"\u0639\u0631"}},
    {"Ideographs",
     L"<Item><SourceCs>\u6771</SourceCs><TargetCs>\u4EAC</TargetCs><Name>\u5EA7\u6A19</Name><Type>1</"
     L"Type><Note>\u7CFB</Note></Item>",
     {L"\u6771", L"\u4EAC", L"\u5EA7\u6A19", 1, L"\u7CFB"}},
    {"CombiningMarks",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>e\u0301</Name><Type>1</Type><Note>\u0301</Note></Item>",
     {L"a", L"b", L"e\u0301", 1, L"\u0301"}},
    {"BeyondTheBasicPlane",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>\U0001F30D\U0001D54F</Name><Type>1</"
     L"Type><Note>\U0010FFFF</Note></Item>",
     {L"a", L"b", L"\U0001F30D\U0001D54F", 1, L"\U0010FFFF"}},
    {"SurrogatePairs",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>\xD83C\xDF0D</Name><Type>1</Type><Note>\xDBFF\xDFFF</"
     L"Note></Item>",
     {L"a", L"b", L"\xD83C\xDF0D", 1, L"\xDBFF\xDFFF"}},
    {"UnpairedHighSurrogate",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c\xD800</Name><Type>1</Type><Note>\xD83C"
     L"d</Note></Item>",
     {L"a", L"b", L"c\xD800", 1,
      L"\xD83C"
      L"d"}},
    {"UnpairedLowSurrogate",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>\xDC00"
     L"c</Name><Type>1</Type><Note>\xDFFF</Note></Item>",
     {L"a", L"b",
      L"\xDC00"
      L"c",
      1, L"\xDFFF"}},
    {"SurrogatesInTheWrongOrder",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>\xDF0D\xD83C</Name><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"b", L"\xDF0D\xD83C", 1, L"d"}},
    {"Noncharacters",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>\uFFFF\uFFFE</Name><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"b", L"\uFFFF\uFFFE", 1, L"d"}},
    {"PrivateUse",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>\uE000\uF8FF</Name><Type>1</Type><Note>d</Note></Item>",
     {L"a", L"b", L"\uE000\uF8FF", 1, L"d"}},
    {"ControlCharacters",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>\x1\x2\x1B</Name><Type>1</Type><Note>\x7F\x80</Note></"
     L"Item>",
     {L"a", L"b", L"\x1\x2\x1B", 1, L"\x7F\x80"}},
    {"NoBreakSpaceInValue",
     L"<Item><SourceCs>a</SourceCs><TargetCs>b</TargetCs><Name>c\u00A0d</Name><Type>1</Type><Note>\u00A0</Note></Item>",
     {L"a", L"b", L"c\u00A0d", 1, L"\u00A0"}},
    {"ByteOrderMarkInValue",
     L"<Item><SourceCs>\uFEFFa</SourceCs><TargetCs>b</TargetCs><Name>c</Name><Type>1</Type><Note>d</Note></Item>",
     {L"\uFEFFa", L"b", L"c", 1, L"d"}},
};

} // namespace

std::span<const ItemTextCase> itemValueTexts()
{
    return kValueTexts;
}

} // namespace Tests
