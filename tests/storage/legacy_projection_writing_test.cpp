#include <algorithm>

#include "storage/failing_calls.h"
#include "storage/legacy_projection.h"
#include "support/drawing.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using Embedded::ScopedFault;
using Orvel::WriteLegacyProjectionCode;

Items legacyRecord(const wchar_t* code)
{
    return {{1001, L"KTN_PROJECTION"}, {1000, code}};
}

class LegacyProjectionWriting : public PlatformTest {
protected:
    Drawing drawing;

    Qeapp::ErrorStatus write(const wchar_t* code) { return WriteLegacyProjectionCode(drawing.database(), code); }
    std::ptrdiff_t countRegistrations() const
    {
        return countOccurrences(drawing.contents(), "name \"KTN_PROJECTION\"");
    }
};

TEST_F(LegacyProjectionWriting, CodeIsStoredAfterTheApplicationsName)
{
    ASSERT_EQ(write(L"EPSG:25832"), Qeapp::eOk);
    EXPECT_EQ(drawing.legacyChain(), legacyRecord(L"EPSG:25832"));
}

TEST_F(LegacyProjectionWriting, MissingApplicationIsRegistered)
{
    ASSERT_FALSE(drawing.hasRegisteredApplication());
    ASSERT_EQ(write(L"EPSG:25832"), Qeapp::eOk);
    EXPECT_EQ(countRegistrations(), 1);
}

TEST_F(LegacyProjectionWriting, ApplicationIsNotRegisteredTwice)
{
    drawing.withRegisteredApplication();
    ASSERT_EQ(write(L"EPSG:25832"), Qeapp::eOk);
    ASSERT_EQ(write(L"EPSG:25833"), Qeapp::eOk);
    EXPECT_EQ(countRegistrations(), 1);
}

TEST_F(LegacyProjectionWriting, DotIsRefusedAndChangesNothing)
{
    const std::string empty = drawing.contents();
    EXPECT_EQ(write(L"."), 3);
    EXPECT_EQ(drawing.contents(), empty) << "no application is registered";
    drawing.withLegacyCode(L"EPSG:2263");
    const std::string before = drawing.contents();
    EXPECT_EQ(write(L"."), 3);
    EXPECT_EQ(drawing.contents(), before);
    EXPECT_EQ(WriteLegacyProjectionCode(nullptr, L"."), 124);
    EXPECT_EQ(write(L".."), Qeapp::eOk);
    EXPECT_EQ(drawing.legacyChain(), legacyRecord(L".."));
}

TEST_F(LegacyProjectionWriting, LaterCodeReplacesTheEarlier)
{
    ASSERT_EQ(write(L"EPSG:25832"), Qeapp::eOk);
    ASSERT_EQ(write(L"EPSG:2263"), Qeapp::eOk);
    EXPECT_EQ(drawing.legacyChain(), legacyRecord(L"EPSG:2263"));
}

TEST_F(LegacyProjectionWriting, ItemsAfterTheEarlierCodeAreRemoved)
{
    drawing.withLegacyChain({{1001, L"KTN_PROJECTION"}, {1000, L"EPSG:25832"}, {1040, 1.0}});
    ASSERT_EQ(write(L"EPSG:2263"), Qeapp::eOk);
    EXPECT_EQ(drawing.legacyChain(), legacyRecord(L"EPSG:2263"));
}

TEST_F(LegacyProjectionWriting, NullCodeRemovesTheRecordAndKeepsTheApplication)
{
    drawing.withLegacyCode(L"EPSG:25832");
    EXPECT_EQ(write(nullptr), Qeapp::eOk);
    EXPECT_EQ(drawing.legacyChain(), std::nullopt);
    EXPECT_TRUE(drawing.hasRegisteredApplication());
}

TEST_F(LegacyProjectionWriting, EmptyCodeRemovesTheRecordAndKeepsTheApplication)
{
    drawing.withLegacyCode(L"EPSG:25832");
    EXPECT_EQ(write(L""), Qeapp::eOk);
    EXPECT_EQ(drawing.legacyChain(), std::nullopt);
    EXPECT_TRUE(drawing.hasRegisteredApplication());
}

TEST_F(LegacyProjectionWriting, RemovalRegistersAMissingApplication)
{
    for (const wchar_t* const nothing : {static_cast<const wchar_t*>(nullptr), L""}) {
        const Drawing fresh;
        EXPECT_EQ(WriteLegacyProjectionCode(fresh.database(), nothing), Qeapp::eOk);
        EXPECT_TRUE(fresh.hasRegisteredApplication());
        EXPECT_EQ(fresh.legacyChain(), std::nullopt);
    }
}

TEST_F(LegacyProjectionWriting, DataOfOtherApplicationsIsUnchanged)
{
    const Items other{{1001, L"OTHER"}, {1000, L"x"}};
    drawing.withRegisteredApplication(L"OTHER").withLegacyChain(other);
    ASSERT_EQ(write(L"EPSG:25832"), Qeapp::eOk);
    ASSERT_EQ(write(nullptr), Qeapp::eOk);
    Orvel::NamedObjects dictionary;
    ASSERT_EQ(dictionary.openIn(drawing.database(), QeDb::kForRead), Qeapp::eOk);
    const Orvel::ResbufChain chain(dictionary->xData());
    EXPECT_EQ(readChain(chain.get()), other);
}

TEST_F(LegacyProjectionWriting, NullDatabaseReturns124)
{
    EXPECT_EQ(WriteLegacyProjectionCode(nullptr, L"EPSG:25832"), 124);
    EXPECT_EQ(WriteLegacyProjectionCode(nullptr, L""), 124);
    EXPECT_EQ(WriteLegacyProjectionCode(nullptr, nullptr), 124);
}

TEST_F(LegacyProjectionWriting, TableThatIsOpenForReadReturnsOpenForRead)
{
    Orvel::HostObject<QeDbRegAppTable> reader;
    ASSERT_EQ(reader.openWith([&](QeDbRegAppTable*& table) { return drawing.database()->getRegAppTable(table); }),
              Qeapp::eOk);
    EXPECT_EQ(write(L"EPSG:25832"), Qeapp::eOpenForRead);
    EXPECT_FALSE(drawing.hasRegisteredApplication());
}

TEST_F(LegacyProjectionWriting, TableThatIsOpenForReadIsEnoughForARegisteredApplication)
{
    drawing.withRegisteredApplication();
    Orvel::HostObject<QeDbRegAppTable> reader;
    ASSERT_EQ(reader.openWith([&](QeDbRegAppTable*& table) { return drawing.database()->getRegAppTable(table); }),
              Qeapp::eOk);
    EXPECT_EQ(write(L"EPSG:25832"), Qeapp::eOk);
}

TEST_F(LegacyProjectionWriting, DictionaryThatIsOpenForReadReturnsOpenForRead)
{
    Orvel::NamedObjects reader;
    ASSERT_EQ(reader.openIn(drawing.database(), QeDb::kForRead), Qeapp::eOk);
    EXPECT_EQ(write(L"EPSG:25832"), Qeapp::eOpenForRead);
}

struct Failure {
    int result;
    bool applicationIsRegistered; // the steps before the failing one are not undone
};

const std::map<std::string, Failure>& failures()
{
    static const std::map<std::string, Failure> table{
        {"QeDbDatabase::getRegAppTable", {kInjectedResult, false}},
        {"QeDbObject::upgradeOpen", {kInjectedResult, false}},
        {"qeHeapAlloc", {6, false}},
        {"QeDbSymbolTableRecord::setName", {kInjectedResult, false}},
        {"QeDbRegAppTable::add", {kInjectedResult, false}},
        {"QeDbDatabase::getNamedObjectsDictionary", {kInjectedResult, true}},
        {"qeutBuildList", {6, true}},
        {"qeutNewRb", {6, true}},
        {"qeapp_malloc", {6, true}},
        {"QeDbObject::setXData", {kInjectedResult, true}},
    };
    return table;
}

TEST_F(LegacyProjectionWriting, EveryFailingCallReturnsItsResultAndStoresNoCode)
{
    const auto calls = recordFallibleCalls([&] { EXPECT_EQ(write(L"EPSG:25832"), Qeapp::eOk); });
    EXPECT_GE(calls.size(), failures().size());
    for (const FallibleCall& call : calls) {
        const Drawing fresh;
        const std::string before = fresh.contents();
        const Failure& expected = failures().at(call.name);
        {
            const ScopedFault fault(failing(call));
            EXPECT_EQ(WriteLegacyProjectionCode(fresh.database(), L"EPSG:25832"), expected.result) << call;
        }
        EXPECT_EQ(fresh.legacyChain(), std::nullopt) << call;
        EXPECT_EQ(fresh.hasRegisteredApplication(), expected.applicationIsRegistered) << call;
        EXPECT_EQ(fresh.contents() == before, !expected.applicationIsRegistered) << call;
    }
}

TEST_F(LegacyProjectionWriting, EveryFailingCallKeepsTheEarlierRecord)
{
    drawing.withLegacyCode(L"EPSG:2263");
    const std::string before = drawing.contents();
    for (const char* const call : {"QeDbDatabase::getRegAppTable", "QeDbDatabase::getNamedObjectsDictionary",
                                   "qeutBuildList", "qeutNewRb", "qeapp_malloc", "QeDbObject::setXData"}) {
        const ScopedFault fault(failing(call));
        EXPECT_EQ(write(nullptr), failures().at(call).result) << call;
        EXPECT_EQ(drawing.contents(), before) << call;
    }
}

TEST_F(LegacyProjectionWriting, CallThatSucceedsWithoutAnObjectReturns15)
{
    for (const char* const call : {"QeDbDatabase::getRegAppTable", "QeDbDatabase::getNamedObjectsDictionary"}) {
        const ScopedFault fault(failing(call, 0));
        EXPECT_EQ(write(L"EPSG:25832"), 15) << call;
        EXPECT_EQ(drawing.legacyChain(), std::nullopt) << call;
    }
}

} // namespace
} // namespace Tests
