#include <limits>
#include <set>

#include "storage/definition_xrecord.h"
#include "storage/failing_calls.h"
#include "storage/packed_forms.h"
#include "storage/unusual_definitions.h"
#include "support/drawing.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using Embedded::ScopedFault;

class DefinitionXrecordReading : public PlatformTest {
protected:
    const SystemHolder system = catalogSystem(L"EPSG:25832");
    const DatumHolder datum = catalogDatum(L"EPSG:6258");
    const EllipsoidHolder ellipsoid = catalogEllipsoid(L"EPSG:7019");
    Orvel::DefinitionSet definitions;

    Items groups() const
    {
        return joinedItems({makeGroup(system.get()), makeGroup(datum.get()), makeGroup(ellipsoid.get())});
    }
    Items chunks() const
    {
        return joinedItems({makeChunk(system.get()), makeChunk(datum.get()), makeChunk(ellipsoid.get())});
    }
    static Items layout(int number) { return {{1071, number}}; }

    bool readFrom(const Drawing& drawing, const wchar_t* code = L"EPSG:25832")
    {
        definitions.system = catalogSystem(L"LOCAL:FOOT"); // must be replaced or removed
        return Orvel::ReadCsDefinitionXrecord(drawing.database(), code, definitions);
    }
    bool readFrom(const Items& chain, const wchar_t* code = L"EPSG:25832")
    {
        Drawing drawing;
        drawing.withXrecord(chain);
        const std::string before = drawing.contents();
        const bool result = readFrom(drawing, code);
        EXPECT_EQ(drawing.contents(), before);
        return result;
    }
};

const Texts kWhole{L"system EPSG:25832", L"datum EPSG:6258", L"ellipsoid EPSG:7019"};
const Texts kNothing{L"none", L"none", L"none"};

TEST_F(DefinitionXrecordReading, CurrentLayoutGivesTheThreeDefinitions)
{
    ASSERT_TRUE(readFrom(joinedItems({layout(1), groups()})));
    EXPECT_EQ(describe(definitions), kWhole);
}

TEST_F(DefinitionXrecordReading, GroupsAreReadInAnyOrder)
{
    ASSERT_TRUE(readFrom(
        joinedItems({layout(1), makeGroup(ellipsoid.get()), makeGroup(datum.get()), makeGroup(system.get())})));
    EXPECT_EQ(describe(definitions), kWhole);
}

TEST_F(DefinitionXrecordReading, ChainWithoutALayoutHoldsStandaloneChunks)
{
    ASSERT_TRUE(readFrom(chunks()));
    EXPECT_EQ(describe(definitions), kWhole);
}

TEST_F(DefinitionXrecordReading, LayoutZeroHoldsStandaloneChunks)
{
    ASSERT_TRUE(readFrom(joinedItems({layout(0), chunks()})));
    EXPECT_EQ(describe(definitions), kWhole);
}

TEST_F(DefinitionXrecordReading, OtherCodesBetweenStandaloneChunksAreSkipped)
{
    const Items others{{300, L"text"},      {1000, L"string"}, {1002, L"{"}, {1002, L"}"},
                       {1004, Bytes{1, 2}}, {1040, 1.5},       {1070, 3},    {1071, 9}};
    const Items chain = joinedItems({{{300, L"first"}},
                                     makeChunk(system.get()),
                                     others,
                                     makeChunk(datum.get()),
                                     others,
                                     makeChunk(ellipsoid.get()),
                                     others});
    ASSERT_TRUE(readFrom(chain));
    EXPECT_EQ(describe(definitions), kWhole);
    ASSERT_TRUE(readFrom(joinedItems({layout(0), others, chain})));
    EXPECT_EQ(describe(definitions), kWhole);
}

TEST_F(DefinitionXrecordReading, LayoutNumberCountsOnlyAtTheBeginning)
{
    EXPECT_TRUE(readFrom(joinedItems({chunks(), layout(1)})));
    EXPECT_FALSE(readFrom(joinedItems({{{300, L"first"}}, layout(1), groups()})));
}

TEST_F(DefinitionXrecordReading, GroupsAreNotReadInLayoutZero)
{
    EXPECT_FALSE(readFrom(joinedItems({layout(0), groups()})));
}

TEST_F(DefinitionXrecordReading, StandaloneChunksAreNotReadInTheCurrentLayout)
{
    EXPECT_FALSE(readFrom(joinedItems({layout(1), chunks()})));
}

TEST_F(DefinitionXrecordReading, AnyOtherLayoutIsRejected)
{
    for (const int number : {2, 3, 256, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        EXPECT_FALSE(readFrom(joinedItems({layout(number), groups()}))) << number;
        EXPECT_FALSE(readFrom(joinedItems({layout(number), chunks()}))) << number;
        EXPECT_EQ(describe(definitions), kNothing);
    }
}

TEST_F(DefinitionXrecordReading, SystemOfKindOneIsReadWithoutDatumAndEllipsoid)
{
    const auto local = catalogSystem(L"LOCAL:METRE");
    ASSERT_TRUE(readFrom(joinedItems({layout(1), makeGroup(local.get())}), L"LOCAL:METRE"));
    EXPECT_EQ(describe(definitions), (Texts{L"system LOCAL:METRE", L"none", L"none"}));
}

TEST_F(DefinitionXrecordReading, SystemWithoutADatumIsReadWithItsEllipsoid)
{
    const auto withoutDatum = catalogSystem(L"EPSG:4019");
    const Items chain = joinedItems({layout(1), makeGroup(withoutDatum.get()), makeGroup(ellipsoid.get())});
    ASSERT_TRUE(readFrom(chain, L"EPSG:4019"));
    EXPECT_EQ(describe(definitions), (Texts{L"system EPSG:4019", L"none", L"ellipsoid EPSG:7019"}));
}

TEST_F(DefinitionXrecordReading, CodeInAnotherCaseIsAccepted)
{
    ASSERT_TRUE(readFrom(joinedItems({layout(1), groups()}), L"epsg:25832"));
    EXPECT_EQ(describe(definitions), kWhole);
}

TEST_F(DefinitionXrecordReading, CodeOfAnotherSystemIsRejected)
{
    EXPECT_FALSE(readFrom(joinedItems({layout(1), groups()}), L"EPSG:25833"));
    EXPECT_EQ(describe(definitions), kNothing);
}

TEST_F(DefinitionXrecordReading, MissingCodeIsRejected)
{
    EXPECT_FALSE(readFrom(joinedItems({layout(1), groups()}), L""));
    EXPECT_FALSE(readFrom(joinedItems({layout(1), groups()}), nullptr));
    EXPECT_EQ(describe(definitions), kNothing);
}

TEST_F(DefinitionXrecordReading, MissingGroupIsRejected)
{
    EXPECT_FALSE(readFrom(joinedItems({layout(1), makeGroup(system.get()), makeGroup(datum.get())})));
    EXPECT_FALSE(readFrom(joinedItems({layout(1), makeGroup(system.get()), makeGroup(ellipsoid.get())})));
    EXPECT_FALSE(readFrom(joinedItems({layout(1), makeGroup(datum.get()), makeGroup(ellipsoid.get())})));
    EXPECT_EQ(describe(definitions), kNothing);
}

TEST_F(DefinitionXrecordReading, DatumOrEllipsoidOfAnotherSystemIsRejected)
{
    const auto otherDatum = catalogDatum(L"EPSG:6269");
    const auto otherEllipsoid = catalogEllipsoid(L"EPSG:7004");
    EXPECT_FALSE(readFrom(
        joinedItems({layout(1), makeGroup(system.get()), makeGroup(otherDatum.get()), makeGroup(ellipsoid.get())})));
    EXPECT_FALSE(readFrom(
        joinedItems({layout(1), makeGroup(system.get()), makeGroup(datum.get()), makeGroup(otherEllipsoid.get())})));
}

TEST_F(DefinitionXrecordReading, LaterDefinitionOfAKindReplacesTheEarlier)
{
    const Items chain = joinedItems({layout(1), makeGroup(catalogSystem(L"EPSG:25833").get()), groups()});
    EXPECT_TRUE(readFrom(chain, L"EPSG:25832"));
    EXPECT_EQ(describe(definitions), kWhole);
    EXPECT_FALSE(readFrom(chain, L"EPSG:25833"));
}

TEST_F(DefinitionXrecordReading, LaterChunkOfAKindReplacesTheEarlier)
{
    const Items chain = joinedItems({makeChunk(catalogSystem(L"EPSG:25833").get()), chunks()});
    EXPECT_TRUE(readFrom(chain, L"EPSG:25832"));
    EXPECT_FALSE(readFrom(chain, L"EPSG:25833"));
}

TEST_F(DefinitionXrecordReading, GroupThatCannotBeDecodedIsSkipped)
{
    const Items damaged = makeGroup(Bytes{0x05, 1, 2});
    const Items empty{{1002, L"{"}, {1002, L"}"}};
    EXPECT_TRUE(readFrom(joinedItems({layout(1), damaged, groups(), empty})));
    EXPECT_EQ(describe(definitions), kWhole);
}

TEST_F(DefinitionXrecordReading, ChunkThatCannotBeDecodedIsSkipped)
{
    EXPECT_TRUE(readFrom(joinedItems({{{310, Bytes{0x05, 1, 2}}}, chunks(), {{310, Bytes()}}})));
    EXPECT_EQ(describe(definitions), kWhole);
}

TEST_F(DefinitionXrecordReading, GroupOfTwoDefinitionsIsSkipped)
{
    const Bytes two = packedForm(kDatumClassId, writeStream({datum.get(), ellipsoid.get()}));
    EXPECT_TRUE(readFrom(joinedItems({layout(1), makeGroup(two), groups()})));
    EXPECT_FALSE(readFrom(joinedItems({layout(1), makeGroup(system.get()), makeGroup(two)})));
}

TEST_F(DefinitionXrecordReading, ItemsBetweenTheChunksAndTheClosingBraceAreSkipped)
{
    Items chain = joinedItems({layout(1), groups()});
    chain.insert(chain.end() - 1,
                 {{300, L"text"}, {1002, L"{"}, {1002, L" }"}, {310, Bytes{1}}, {1071, 1}, {1040, 1.0}});
    EXPECT_TRUE(readFrom(chain));
    EXPECT_EQ(describe(definitions), kWhole);
}

TEST_F(DefinitionXrecordReading, UnclosedGroupMakesTheChainUnreadable)
{
    Items chain = joinedItems({layout(1), groups()});
    chain.pop_back();
    EXPECT_FALSE(readFrom(chain));
    EXPECT_EQ(describe(definitions), kNothing);
}

TEST_F(DefinitionXrecordReading, OnlyTheExactTextClosesAGroup)
{
    for (const wchar_t* const text : {L"", L"{", L" }", L"} ", L"}}"}) {
        Items chain = joinedItems({layout(1), groups()});
        chain.back().value = std::wstring(text);
        EXPECT_FALSE(readFrom(chain));
    }
}

TEST_F(DefinitionXrecordReading, OnlyAControlStringClosesAGroup)
{
    Items chain = joinedItems({layout(1), groups()});
    chain.back().code = 1000;
    EXPECT_FALSE(readFrom(chain));
}

TEST_F(DefinitionXrecordReading, OpeningBraceNeverClosesItsGroup)
{
    for (const wchar_t* const text : {L"}", L"", L"{ "}) {
        Items chain = joinedItems({layout(1), groups()});
        chain.at(1).value = std::wstring(text);
        EXPECT_TRUE(readFrom(chain));
        EXPECT_EQ(describe(definitions), kWhole);
    }
}

TEST_F(DefinitionXrecordReading, UnclosedGroupHidesTheNextGroup)
{
    Items first = makeGroup(system.get());
    first.pop_back();
    EXPECT_FALSE(readFrom(joinedItems({layout(1), first, makeGroup(datum.get()), makeGroup(ellipsoid.get())})));
}

TEST_F(DefinitionXrecordReading, EmptyXrecordIsRejected)
{
    EXPECT_FALSE(readFrom(Items{}));
    EXPECT_EQ(describe(definitions), kNothing);
}

TEST_F(DefinitionXrecordReading, LayoutWithoutDefinitionsIsRejected)
{
    EXPECT_FALSE(readFrom(layout(0)));
    EXPECT_FALSE(readFrom(layout(1)));
    EXPECT_FALSE(readFrom(layout(2)));
}

TEST_F(DefinitionXrecordReading, DrawingWithoutTheEntryIsRejected)
{
    EXPECT_FALSE(readFrom(GivenDrawing()));
    EXPECT_EQ(describe(definitions), kNothing);
}

TEST_F(DefinitionXrecordReading, EntryUnderAKeyInAnotherCaseIsRejected)
{
    EXPECT_FALSE(readFrom(Drawing().withXrecord(joinedItems({layout(1), groups()}), L"orvel_csindwg_regapp")));
}

TEST_F(DefinitionXrecordReading, EntryThatIsADictionaryIsRejected)
{
    EXPECT_FALSE(readFrom(Drawing().withDictionary(L"ORVEL_CSINDWG_REGAPP")));
    EXPECT_EQ(describe(definitions), kNothing);
}

TEST_F(DefinitionXrecordReading, DictionaryThatIsOpenForWriteIsRejected)
{
    Drawing drawing;
    drawing.withXrecord(joinedItems({layout(1), groups()}));
    Orvel::NamedObjects writer;
    ASSERT_EQ(writer.openIn(drawing.database(), QeDb::kForWrite), Qeapp::eOk);
    EXPECT_FALSE(readFrom(drawing));
}

TEST_F(DefinitionXrecordReading, XrecordThatIsOpenForReadIsRead)
{
    Drawing drawing;
    drawing.withXrecord(joinedItems({layout(1), groups()}));
    Orvel::NamedObjects reader;
    ASSERT_EQ(reader.openIn(drawing.database(), QeDb::kForRead), Qeapp::eOk);
    QeDbObjectId id;
    ASSERT_EQ(reader->getAt(Orvel::kCsDefinitionXrecordKey, id), Qeapp::eOk);
    Orvel::HostObject<QeDbXrecord> xrecord;
    ASSERT_EQ(xrecord.open(id, QeDb::kForRead), Qeapp::eOk);
    EXPECT_TRUE(readFrom(drawing));
    EXPECT_EQ(describe(definitions), kWhole);
}

TEST_F(DefinitionXrecordReading, DefinitionsAreLinked)
{
    Drawing drawing;
    const UserSystem stored{.semiMajorAxis = 6371000};
    const UserSystem other{.semiMajorAxis = 6373000};
    drawing.withXrecord(joinedItems({layout(1), makeGroup(stored.makeSystem().get()),
                                     makeGroup(stored.makeDatum().get()), makeGroup(other.makeEllipsoid().get())}));
    ASSERT_TRUE(readFrom(drawing, L"MINE:1"));
    double axis = 0;
    ASSERT_EQ(getEllipsoid(definitions.system)->GetSemiMajorAxisInMetres(axis), Library::statusOk);
    EXPECT_EQ(axis, 6373000);
}

/// Calls after the check that the set is valid.
bool isPartOfLinking(const FallibleCall& call)
{
    static const std::set<std::string> links{"DatumDefinition::SetEllipsoid",
                                             "CoordinateReferenceSystemDefinition::SetDatum"};
    return links.contains(call.name) ||
           (call.name == "CoordinateReferenceSystemDefinition::GetDatumCode" && call.occurrence == 2);
}

TEST_F(DefinitionXrecordReading, EveryFailingCallBeforeLinkingRejectsTheXrecord)
{
    Drawing drawing;
    drawing.withXrecord(joinedItems({layout(1), groups()}));
    const std::string before = drawing.contents();
    const auto calls = recordFallibleCalls([&] { EXPECT_TRUE(readFrom(drawing)); });
    for (const FallibleCall& call : calls) {
        if (call.name.ends_with("Definition::Load"))
            continue; // the test makes this call, not the reading
        const ScopedFault fault(failing(call));
        EXPECT_EQ(readFrom(drawing), isPartOfLinking(call)) << call;
        EXPECT_EQ(describe(definitions), isPartOfLinking(call) ? kWhole : kNothing) << call;
        EXPECT_EQ(drawing.contents(), before) << call;
    }
}

TEST_F(DefinitionXrecordReading, CallThatSucceedsWithoutAnObjectRejectsTheXrecord)
{
    Drawing drawing;
    drawing.withXrecord(joinedItems({layout(1), groups()}));
    for (const char* const call : {"QeDbDatabase::getNamedObjectsDictionary", "QeDbDictionary::getAt",
                                   "qedbOpenQeDbObject", "QeDbXrecord::rbChain"}) {
        const ScopedFault fault(failing(call, 0));
        EXPECT_FALSE(readFrom(drawing)) << call;
        EXPECT_EQ(describe(definitions), kNothing) << call;
    }
}

} // namespace
} // namespace Tests
