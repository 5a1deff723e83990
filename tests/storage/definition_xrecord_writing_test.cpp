#include "storage/definition_xrecord.h"

#include "embedded/base/text.h"
#include "storage/failing_calls.h"
#include "storage/packed_forms.h"
#include "storage/unusual_definitions.h"
#include "support/drawing.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using Embedded::ScopedFault;
using Orvel::StoreCsXrecordChain;
using Orvel::WriteCsDefinitionXrecord;

const Items kLayout{{1071, 1}};

Items expectedChain(const SystemHolder& system)
{
    return joinedItems(
        {kLayout, makeGroup(system.get()), makeGroup(getDatum(system).get()), makeGroup(getEllipsoid(system).get())});
}

class DefinitionXrecordWriting : public PlatformTest {
protected:
    Drawing drawing;
    const SystemHolder system = catalogSystem(L"EPSG:25832");

    Qeapp::ErrorStatus write(const SystemHolder& definition)
    {
        return WriteCsDefinitionXrecord(definition.get(), drawing.database());
    }
};

TEST_F(DefinitionXrecordWriting, SystemThatRefersToTheEarthIsStoredWithDatumAndEllipsoid)
{
    const SystemHolder systems[] = {catalogSystem(L"EPSG:25832"), catalogSystem(L"EPSG:4258"),
                                    catalogSystem(L"EPSG:4978"), UserSystem().makeSystem()};
    for (const SystemHolder& stored : systems) {
        ASSERT_EQ(write(stored), Qeapp::eOk);
        EXPECT_EQ(drawing.xrecord(), expectedChain(stored)) << Embedded::utf8FromWide(describe(stored.get()));
    }
}

TEST_F(DefinitionXrecordWriting, SystemOfKindOneIsStoredAsOneGroup)
{
    const auto local = catalogSystem(L"LOCAL:METRE");
    ASSERT_EQ(write(local), Qeapp::eOk);
    EXPECT_EQ(drawing.xrecord(), joinedItems({kLayout, makeGroup(local.get())}));
}

TEST_F(DefinitionXrecordWriting, SystemWithoutADatumIsStoredWithoutADatumGroup)
{
    const auto withoutDatum = catalogSystem(L"EPSG:4019");
    ASSERT_EQ(write(withoutDatum), Qeapp::eOk);
    EXPECT_EQ(drawing.xrecord(),
              joinedItems({kLayout, makeGroup(withoutDatum.get()), makeGroup(getEllipsoid(withoutDatum).get())}));
}

TEST_F(DefinitionXrecordWriting, WrittenSystemIsReadBack)
{
    for (const wchar_t* const code :
         {L"EPSG:25832", L"EPSG:4258", L"EPSG:4978", L"EPSG:4019", L"EPSG:7415", L"LOCAL:US-SURVEY-FOOT"}) {
        ASSERT_EQ(write(catalogSystem(code)), Qeapp::eOk);
        Orvel::DefinitionSet definitions;
        EXPECT_TRUE(Orvel::ReadCsDefinitionXrecord(drawing.database(), code, definitions));
        EXPECT_EQ(serializedText(definitions.system.get()), serializedText(catalogSystem(code).get()));
    }
}

TEST_F(DefinitionXrecordWriting, EarlierXrecordIsReplaced)
{
    drawing.withXrecord({{300, L"earlier"}});
    ASSERT_EQ(write(catalogSystem(L"EPSG:25833")), Qeapp::eOk);
    ASSERT_EQ(write(system), Qeapp::eOk);
    EXPECT_EQ(drawing.xrecord(), expectedChain(system));
    EXPECT_EQ(countOccurrences(drawing.contents(), "\nobject "),
              countOccurrences(Drawing().contents(), "\nobject ") + 1);
}

TEST_F(DefinitionXrecordWriting, OtherStoredFormsAreUnchanged)
{
    drawing.withLegacyCode(L"EPSG:2263").withGeoData(L"text");
    ASSERT_EQ(write(system), Qeapp::eOk);
    EXPECT_EQ(drawing.legacyChain(), (Items{{1001, L"KTN_PROJECTION"}, {1000, L"EPSG:2263"}}));
    EXPECT_EQ(drawing.geoDataText(), L"text");
}

TEST_F(DefinitionXrecordWriting, NoApplicationIsRegisteredUnderTheKey)
{
    ASSERT_EQ(write(system), Qeapp::eOk);
    EXPECT_FALSE(drawing.hasRegisteredApplication(L"ORVEL_CSINDWG_REGAPP"));
}

TEST_F(DefinitionXrecordWriting, NullDatabaseReturns124)
{
    EXPECT_EQ(WriteCsDefinitionXrecord(system.get(), nullptr), 124);
    EXPECT_EQ(WriteCsDefinitionXrecord(nullptr, nullptr), 124);
}

TEST_F(DefinitionXrecordWriting, NullDefinitionReturns3)
{
    drawing.withXrecord({{300, L"earlier"}});
    EXPECT_EQ(write({}), 3);
    EXPECT_EQ(drawing.xrecord(), (Items{{300, L"earlier"}}));
}

TEST_F(DefinitionXrecordWriting, DefinitionThatCannotBePackedReturns7)
{
    drawing.withXrecord({{300, L"earlier"}});
    EXPECT_EQ(write(UserSystem{.name = varied(3000)}.makeSystem()), 7);
    EXPECT_EQ(drawing.xrecord(), (Items{{300, L"earlier"}}));
}

/// The result of each failing call. A group cannot be built when a chunk or a brace cannot be allocated.
int expectedWriteResult(const FallibleCall& call)
{
    static const std::map<std::string, int> results{
        {"CLSIDFromString", 7},
        {"CoordinateReferenceSystemDefinition::GetDatum", 3},
        {"CoordinateReferenceSystemDefinition::GetKind", 3},
        {"CoordinateReferenceSystemOperation::IsDatumBased", 3},
        {"CoordinateReferenceSystemOperation::Load", 3},
        {"CoordinateReferenceSystemUtil::GetEllipsoid", 3},
        {"DefinitionStream::Add", 7},
        {"DefinitionStream::CreateInstance", 7},
        {"DefinitionStream::Write", 7},
        {"QeDbDatabase::getNamedObjectsDictionary", kInjectedResult},
        {"QeDbDictionary::setAt", kInjectedResult},
        {"QeDbXrecord::setFromRbChain", kInjectedResult},
        {"qeHeapAlloc", 6},
        {"qeapp_malloc", 7},
    };
    if (call.name == "qeutNewRb")
        return call.occurrence == 1 ? 6 : 7; // the first is the layout's
    return results.at(call.name);
}

TEST_F(DefinitionXrecordWriting, EveryFailingCallReturnsItsResultAndChangesNothing)
{
    drawing.withXrecord({{300, L"earlier"}});
    const std::string before = drawing.contents();
    const Drawing other;
    const auto calls =
        recordFallibleCalls([&] { EXPECT_EQ(WriteCsDefinitionXrecord(system.get(), other.database()), Qeapp::eOk); });
    for (const FallibleCall& call : calls) {
        const ScopedFault fault(failing(call));
        EXPECT_EQ(write(system), expectedWriteResult(call)) << call;
        EXPECT_EQ(drawing.contents(), before) << call;
    }
}

TEST_F(DefinitionXrecordWriting, CallThatSucceedsWithoutAnObjectReturns7)
{
    const std::string before = drawing.contents();
    for (const char* const call :
         {"CoordinateReferenceSystemDefinition::GetDatum", "CoordinateReferenceSystemUtil::GetEllipsoid"}) {
        const ScopedFault fault(failing(call, 0));
        EXPECT_EQ(write(system), 7) << call;
        EXPECT_EQ(drawing.contents(), before) << call;
    }
}

TEST_F(DefinitionXrecordWriting, OperationThatLoadsWithoutAnObjectReturns3)
{
    const std::string before = drawing.contents();
    const ScopedFault fault(failing("CoordinateReferenceSystemOperation::Load", 0));
    EXPECT_EQ(write(system), 3);
    EXPECT_EQ(drawing.contents(), before);
}

class XrecordChainStoring : public PlatformTest {
protected:
    Drawing drawing;

    Qeapp::ErrorStatus store(const Items& items)
    {
        return StoreCsXrecordChain(drawing.database(), makeChain(items).get());
    }
    Qeapp::ErrorStatus remove() { return StoreCsXrecordChain(drawing.database(), nullptr); }
    QeDbObjectId storedId() const
    {
        Orvel::NamedObjects dictionary;
        EXPECT_EQ(dictionary.openIn(drawing.database(), QeDb::kForRead), Qeapp::eOk);
        QeDbObjectId id;
        EXPECT_EQ(dictionary->getAt(L"ORVEL_CSINDWG_REGAPP", id), Qeapp::eOk);
        return id;
    }
};

TEST_F(XrecordChainStoring, ChainIsCopiedIntoTheDrawing)
{
    const Items items{{1071, 5}, {300, L"text"}, {310, Bytes{0, 255}}, {1040, 2.5}};
    const Orvel::ResbufChain chain = makeChain(items);
    ASSERT_EQ(StoreCsXrecordChain(drawing.database(), chain.get()), Qeapp::eOk);
    EXPECT_EQ(drawing.xrecord(), items);
    EXPECT_EQ(readChain(chain.get()), items);
}

TEST_F(XrecordChainStoring, EarlierEntryOfTheKeyIsReplacedByANewXrecord)
{
    ASSERT_EQ(store({{300, L"earlier"}}), Qeapp::eOk);
    const QeDbObjectId earlier = storedId();
    ASSERT_EQ(store({{300, L"later"}}), Qeapp::eOk);
    EXPECT_EQ(drawing.xrecord(), (Items{{300, L"later"}}));
    EXPECT_NE(storedId().handle(), earlier.handle());
}

TEST_F(XrecordChainStoring, EntryOfAnotherClassIsReplaced)
{
    drawing.withDictionary(L"ORVEL_CSINDWG_REGAPP");
    ASSERT_EQ(store({{300, L"later"}}), Qeapp::eOk);
    EXPECT_EQ(drawing.xrecord(), (Items{{300, L"later"}}));
}

TEST_F(XrecordChainStoring, NullChainRemovesTheEntry)
{
    ASSERT_EQ(store({{300, L"text"}}), Qeapp::eOk);
    EXPECT_EQ(remove(), Qeapp::eOk);
    EXPECT_EQ(drawing.xrecord(), std::nullopt);
}

TEST_F(XrecordChainStoring, RemovedXrecordIsDetachedAndNotErased)
{
    ASSERT_EQ(store({{300, L"text"}}), Qeapp::eOk);
    const QeDbObjectId id = storedId();
    ASSERT_EQ(remove(), Qeapp::eOk);
    Orvel::HostObject<QeDbXrecord> xrecord;
    ASSERT_EQ(xrecord.open(id, QeDb::kForRead), Qeapp::eOk);
    EXPECT_FALSE(xrecord->isErased());
    EXPECT_TRUE(xrecord->ownerId().isNull());
}

TEST_F(XrecordChainStoring, RemovingAMissingEntrySucceeds)
{
    const std::string before = drawing.contents();
    EXPECT_EQ(remove(), Qeapp::eOk);
    EXPECT_EQ(drawing.contents(), before);
}

TEST_F(XrecordChainStoring, OtherEntriesAreUnchanged)
{
    drawing.withXrecord({{300, L"other"}}, L"OTHER");
    ASSERT_EQ(store({{300, L"text"}}), Qeapp::eOk);
    ASSERT_EQ(remove(), Qeapp::eOk);
    EXPECT_EQ(drawing.xrecord(L"OTHER"), (Items{{300, L"other"}}));
}

TEST_F(XrecordChainStoring, NullDatabaseReturns124)
{
    EXPECT_EQ(StoreCsXrecordChain(nullptr, makeChain({{300, L"text"}}).get()), 124);
    EXPECT_EQ(StoreCsXrecordChain(nullptr, nullptr), 124);
}

TEST_F(XrecordChainStoring, ChainThatTheHostRefusesKeepsTheEarlierEntry)
{
    ASSERT_EQ(store({{300, L"earlier"}}), Qeapp::eOk);
    const std::string before = drawing.contents();
    const Orvel::ResbufChain chain = makeChain({{1071, 1}});
    chain->restype = 9999;
    EXPECT_EQ(StoreCsXrecordChain(drawing.database(), chain.get()), Qeapp::eInvalidResbuf);
    EXPECT_EQ(drawing.contents(), before);
}

TEST_F(XrecordChainStoring, DictionaryThatIsOpenForReadReturnsOpenForRead)
{
    Orvel::NamedObjects reader;
    ASSERT_EQ(reader.openIn(drawing.database(), QeDb::kForRead), Qeapp::eOk);
    EXPECT_EQ(store({{300, L"text"}}), Qeapp::eOpenForRead);
    EXPECT_EQ(remove(), Qeapp::eOpenForRead);
}

TEST_F(XrecordChainStoring, EveryFailingCallOfStoringReturnsItsResultAndChangesNothing)
{
    ASSERT_EQ(store({{300, L"earlier"}}), Qeapp::eOk);
    const std::string before = drawing.contents();
    const Orvel::ResbufChain chain = makeChain({{300, L"later"}});
    const Drawing other;
    const auto calls =
        recordFallibleCalls([&] { EXPECT_EQ(StoreCsXrecordChain(other.database(), chain.get()), Qeapp::eOk); });
    ASSERT_EQ(calls.size(), 4U) << "opening, allocating, filling, adding";
    for (const FallibleCall& call : calls) {
        const ScopedFault fault(failing(call));
        EXPECT_EQ(StoreCsXrecordChain(drawing.database(), chain.get()),
                  call.name == "qeHeapAlloc" ? 6 : kInjectedResult)
            << call;
        EXPECT_EQ(drawing.contents(), before) << call;
    }
}

TEST_F(XrecordChainStoring, EveryFailingCallOfRemovingIsReturnedAndChangesNothing)
{
    ASSERT_EQ(store({{300, L"text"}}), Qeapp::eOk);
    const std::string before = drawing.contents();
    for (const char* const call : {"QeDbDatabase::getNamedObjectsDictionary", "QeDbDictionary::remove"}) {
        const ScopedFault fault(failing(call));
        EXPECT_EQ(remove(), kInjectedResult) << call;
        EXPECT_EQ(drawing.contents(), before) << call;
    }
}

TEST_F(XrecordChainStoring, OnlyAMissingKeyCountsAsRemoved)
{
    for (const int code : {22, 16, 3, 24}) {
        const ScopedFault fault(failing("QeDbDictionary::remove", code));
        EXPECT_EQ(remove(), code == 22 ? 0 : code);
    }
}

TEST_F(XrecordChainStoring, OpeningThatSucceedsWithoutADictionaryReturns15)
{
    const ScopedFault fault(failing("QeDbDatabase::getNamedObjectsDictionary", 0));
    EXPECT_EQ(store({{300, L"text"}}), 15);
}

} // namespace
} // namespace Tests
