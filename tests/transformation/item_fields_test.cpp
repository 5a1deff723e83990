// The fields of an item, and the text that it writes.
#include <algorithm>
#include <array>
#include <limits>

#include "support/platform_test.h"
#include "transformation/config_items.h"

namespace Tests {
namespace {

using SetText = void (ConfigItem::*)(const wchar_t*);
using GetText = const wchar_t* (ConfigItem::*)();

struct TextField {
    const char* name;
    SetText set;
    GetText get;
    std::wstring ItemFields::*value;
};

const std::array kTextFields{
    TextField{"source", &ConfigItem::SetSourceCs, &ConfigItem::GetSourceCs, &ItemFields::source},
    TextField{"target", &ConfigItem::SetTargetCs, &ConfigItem::GetTargetCs, &ItemFields::target},
    TextField{"name", &ConfigItem::SetName, &ConfigItem::GetName, &ItemFields::name},
    TextField{"note", &ConfigItem::SetNote, &ConfigItem::GetNote, &ItemFields::note},
    TextField{"version", &ConfigItem::SetVersion, &ConfigItem::GetVersion, &ItemFields::version},
};

class ItemFieldRules : public PlatformTest {
protected:
    const Ptr<ConfigItem> item = newCompleteItem();

    std::wstring writtenWithType(int type) const
    {
        item->SetType(type);
        const std::wstring text = item->ToXmlString();
        const std::size_t begin = text.find(L"<Type>") + 6;
        return text.substr(begin, text.find(L"</Type>") - begin);
    }

    ItemFields readBack() const
    {
        const Ptr<ConfigItem> other(ConfigItem::CreateInstance());
        other->FromXmlString(item->ToXmlString().c_str());
        return readFields(*other);
    }
};

TEST_F(ItemFieldRules, NewItemHasOnlyItsVersion)
{
    const Ptr<ConfigItem> fresh(ConfigItem::CreateInstance());
    EXPECT_STREQ(fresh->GetSourceCs(), L"");
    EXPECT_STREQ(fresh->GetTargetCs(), L"");
    EXPECT_STREQ(fresh->GetName(), L"");
    EXPECT_STREQ(fresh->GetNote(), L"");
    EXPECT_STREQ(fresh->GetVersion(), L"1.0");
    EXPECT_EQ(fresh->GetType(), 0);
    EXPECT_EQ(fresh->ToXmlString(), L"");
}

TEST_F(ItemFieldRules, SetterChangesOnlyItsField)
{
    for (const TextField& field : kTextFields) {
        ItemFields expected = readFields(*item);
        expected.*field.value = L"new";
        ((*item).*field.set)(L"new");
        EXPECT_EQ(readFields(*item), expected) << field.name;
    }
}

TEST_F(ItemFieldRules, SetTypeChangesOnlyTheType)
{
    ItemFields expected = readFields(*item);
    for (const int type : {0, 1, 2, 3, -1, 70'000, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        expected.type = type;
        item->SetType(type);
        EXPECT_EQ(readFields(*item), expected);
    }
}

TEST_F(ItemFieldRules, SetterCopiesItsText)
{
    for (const TextField& field : kTextFields) {
        std::wstring text = L"before";
        ((*item).*field.set)(text.c_str());
        text = L"afterw";
        EXPECT_STREQ(((*item).*field.get)(), L"before") << field.name;
    }
}

TEST_F(ItemFieldRules, FieldAcceptsAnEmptyText)
{
    for (const TextField& field : kTextFields) {
        ((*item).*field.set)(L"");
        EXPECT_STREQ(((*item).*field.get)(), L"") << field.name;
    }
}

TEST_F(ItemFieldRules, FieldAcceptsItsOwnText)
{
    const std::wstring text(300, L'x');
    for (const TextField& field : kTextFields) {
        ((*item).*field.set)(text.c_str());
        ((*item).*field.set)(((*item).*field.get)());
        EXPECT_EQ(((*item).*field.get)(), text) << field.name;
    }
}

TEST_F(ItemFieldRules, FieldAcceptsTheTextOfAnotherField)
{
    item->SetNote(item->GetName());
    EXPECT_STREQ(item->GetNote(), item->GetName());
}

TEST_F(ItemFieldRules, ReturnedTextStaysValidWhileOtherFieldsAreSet)
{
    const wchar_t* const source = item->GetSourceCs();
    item->SetTargetCs(std::wstring(1000, L't').c_str());
    item->SetName(std::wstring(1000, L'n').c_str());
    item->SetNote(std::wstring(1000, L'o').c_str());
    item->SetVersion(std::wstring(1000, L'v').c_str());
    item->SetType(2);
    EXPECT_EQ(item->GetSourceCs(), source);
    EXPECT_STREQ(source, L"a");
}

TEST_F(ItemFieldRules, ItemsDoNotShareFields)
{
    const Ptr<ConfigItem> other = newCompleteItem(L"other");
    item->SetNote(L"changed");
    EXPECT_STREQ(other->GetNote(), L"d");
}

TEST_F(ItemFieldRules, FieldsAreWrittenInOrder)
{
    setFields(*item, {L"source", L"target", L"name", 2, L"note", L"version"});
    EXPECT_EQ(item->ToXmlString(), L"<Item><Version>version</Version><SourceCs>source</SourceCs>"
                                   L"<TargetCs>target</TargetCs><Name>name</Name><Type>2</Type>"
                                   L"<Note>note</Note></Item>");
}

TEST_F(ItemFieldRules, ItemWithoutNoteIsWrittenWithAnEmptyNote)
{
    setFields(*item, {.source = L"s", .target = L"t", .name = L"n", .type = 2});
    EXPECT_EQ(item->ToXmlString(), L"<Item><Version>1.0</Version><SourceCs>s</SourceCs><TargetCs>t</TargetCs>"
                                   L"<Name>n</Name><Type>2</Type><Note></Note></Item>");
}

TEST_F(ItemFieldRules, EmptyVersionIsWrittenAsAnEmptyElement)
{
    setFields(*item, {L"s", L"t", L"n", 1, L"", L""});
    EXPECT_EQ(item->ToXmlString(), L"<Item><Version></Version><SourceCs>s</SourceCs><TargetCs>t</TargetCs>"
                                   L"<Name>n</Name><Type>1</Type><Note></Note></Item>");
}

TEST_F(ItemFieldRules, IncompleteItemIsWrittenAsAnEmptyText)
{
    const ItemFields complete = readFields(*item);
    for (std::wstring ItemFields::*const field : {&ItemFields::source, &ItemFields::target, &ItemFields::name}) {
        ItemFields fields = complete;
        fields.*field = L"";
        EXPECT_EQ(newItem(fields)->ToXmlString(), L"");
    }
    item->SetType(0);
    EXPECT_EQ(item->ToXmlString(), L"");
}

TEST_F(ItemFieldRules, BlankFieldIsNotEmpty)
{
    setFields(*item, {L" ", L"\t", L"\n", 1, L" ", L" "});
    EXPECT_EQ(item->ToXmlString(), L"<Item><Version> </Version><SourceCs> </SourceCs><TargetCs>\t</TargetCs>"
                                   L"<Name>\n</Name><Type>1</Type><Note> </Note></Item>");
}

TEST_F(ItemFieldRules, TypeIsWrittenAsItsLow16BitsWithSign)
{
    struct Case {
        int type;
        const wchar_t* written;
    };
    constexpr std::array kCases{
        Case{1, L"1"},
        Case{2, L"2"},
        Case{3, L"3"},
        Case{10, L"10"},
        Case{-1, L"-1"},
        Case{32'767, L"32767"},
        Case{32'768, L"-32768"},
        Case{32'769, L"-32767"},
        Case{65'535, L"-1"},
        Case{65'536, L"0"},
        Case{65'537, L"1"},
        Case{65'538, L"2"},
        Case{70'000, L"4464"},
        Case{-32'768, L"-32768"},
        Case{-32'769, L"32767"},
        Case{-65'535, L"1"},
        Case{std::numeric_limits<int>::max(), L"-1"},
        Case{std::numeric_limits<int>::min(), L"0"},
    };
    for (const Case& one : kCases)
        EXPECT_EQ(writtenWithType(one.type), one.written) << one.type;
}

TEST_F(ItemFieldRules, ValuesAreWrittenUnescaped)
{
    setFields(*item, {L"<", L"&", L"\"'", 1, L"</Name> &lt; <![CDATA[", L"]]>"});
    EXPECT_EQ(item->ToXmlString(), L"<Item><Version>]]></Version><SourceCs><</SourceCs><TargetCs>&</TargetCs>"
                                   L"<Name>\"'</Name><Type>1</Type><Note></Name> &lt; <![CDATA[</Note></Item>");
}

TEST_F(ItemFieldRules, CharactersOfEveryKindAreWrittenUnchanged)
{
    const std::wstring odd = L"\x01\x7F\u00A0\uFEFF\uFFFF\U0001F30D\xD800\xDC00\xDFFF";
    item->SetNote(odd.c_str());
    const std::wstring text = item->ToXmlString();
    EXPECT_NE(text.find(L"<Note>" + odd + L"</Note>"), std::wstring::npos);
}

TEST_F(ItemFieldRules, LongValuesAreWrittenCompletely)
{
    const std::wstring value(100'000, L'&');
    setFields(*item, {value, value, value, 2, value, value});
    EXPECT_EQ(std::ranges::count(item->ToXmlString(), L'&'), 500'000);
    EXPECT_TRUE((readBack() == ItemFields{value, value, value, 2, value}));
}

TEST_F(ItemFieldRules, WrittenItemIsReadBack)
{
    for (const int type : {1, 2}) {
        setFields(*item, {L" a&b ", L"<b", L"\u00E4\U0001F30D", type, L"\r\n\t\xD83C"});
        EXPECT_EQ(readBack(), readFields(*item));
    }
}

TEST_F(ItemFieldRules, VersionIsNotReadBack)
{
    item->SetVersion(L"2.0");
    EXPECT_EQ(readBack().version, L"1.0");
}

TEST_F(ItemFieldRules, ReadingKeepsTheVersionOfTheItem)
{
    const std::wstring text = item->ToXmlString();
    item->SetVersion(L"2.0");
    item->FromXmlString(text.c_str());
    EXPECT_STREQ(item->GetVersion(), L"2.0");
}

TEST_F(ItemFieldRules, ValueWithItsOwnClosingTagIsReadBackTruncated)
{
    item->SetName(L"before</Name>behind");
    EXPECT_EQ(readBack().name, L"before");
}

TEST_F(ItemFieldRules, ValueWithTheElementOfAnotherFieldHidesThatField)
{
    item->SetSourceCs(L"x<Note>hidden</Note>");
    EXPECT_EQ(readBack().note, L"hidden");
}

TEST_F(ItemFieldRules, UndefinedTypeIsReadBackAsZero)
{
    for (const int type : {3, -1, 32'768, 65'536, 70'000}) {
        item->SetType(type);
        EXPECT_EQ(readBack().type, 0) << type;
    }
}

TEST_F(ItemFieldRules, TypeAbove16BitsIsReadBackAsItsLow16Bits)
{
    item->SetType(65'537);
    EXPECT_EQ(readBack().type, 1);
    item->SetType(-65'534);
    EXPECT_EQ(readBack().type, 2);
}

TEST_F(ItemFieldRules, ValueWithTheClosingItemTagIsReadAsTwoItems)
{
    item->SetNote(L"x</Item>y");
    const Ptr<ConfigCollection> collection = newCollection();
    collection->FromXmlString(item->ToXmlString().c_str());
    const std::vector<ItemFields> expected{{.source = L"a", .target = L"b", .name = L"c"}, {}};
    EXPECT_EQ(readFields(*collection), expected);
}

} // namespace
} // namespace Tests
