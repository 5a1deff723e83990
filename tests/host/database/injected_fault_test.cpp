#include <algorithm>
#include <functional>
#include <set>

#include "embedded/diagnostics/fault_injection.h"
#include "embedded/diagnostics/resource_counters.h"
#include "host/database/drawing_test.h"

namespace Tests {
namespace {

using Embedded::FaultInjection;
using Embedded::ScopedFault;

/// A drawing with objects of every class, some of them open for the calls.
class HostFault : public DrawingTest {
protected:
    void SetUp() override
    {
        registerApplication(L"KTN");
        xrecordId = addXrecord(L"key");
        dictionary = namedObjects(QeDb::kForWrite);
        table = regAppTable(QeDb::kForWrite);
        xrecord = open<QeDbXrecord>(xrecordId, QeDb::kForWrite);
        ASSERT_EQ(record->setName(L"NEW"), Qeapp::eOk);
        ASSERT_EQ(geoData->setBlockTableRecordId(modelSpace()), Qeapp::eOk);
        ASSERT_EQ(dictionary->setXData(applicationData.get()), Qeapp::eOk);
    }

    struct Call {
        const char* name;
        std::function<Qeapp::ErrorStatus()> make;
    };
    std::vector<Call> statusCalls();

    QeDbObjectId xrecordId;
    Opened<QeDbDictionary> dictionary;
    Opened<QeDbRegAppTable> table;
    Opened<QeDbXrecord> xrecord;
    std::unique_ptr<QeDbXrecord> fresh = std::make_unique<QeDbXrecord>();
    std::unique_ptr<QeDbRegAppTableRecord> record = std::make_unique<QeDbRegAppTableRecord>();
    std::unique_ptr<QeDbGeoData> geoData = std::make_unique<QeDbGeoData>();
    ResbufChain chain{qeutBuildList(300, L"other", QeRb::kListEnd)};
    ResbufChain applicationData{qeutBuildList(1001, L"KTN", 1000, L"code", QeRb::kListEnd)};
    ResbufChain noData{qeutBuildList(1001, L"KTN", QeRb::kListEnd)};
    QeDbObjectId id;
    QeDbObject* object = nullptr;
    QeDbBlockTable* blocks = nullptr;
    resbuf* copy = nullptr;
};

/// Each call would change the drawing or return an object if it did not fail.
std::vector<HostFault::Call> HostFault::statusCalls()
{
    return {
        {"QeDbDictionary::getAt", [&] { return dictionary->getAt(L"key", id); }},
        {"QeDbDictionary::setAt", [&] { return dictionary->setAt(L"key2", fresh.get(), id); }},
        {"QeDbDictionary::remove", [&] { return dictionary->remove(L"key", id); }},
        {"QeDbDictionary::remove", [&] { return dictionary->remove(xrecordId); }},
        {"QeDbObject::setXData", [&] { return dictionary->setXData(noData.get()); }},
        {"QeDbObject::erase", [&] { return xrecord->erase(); }},
        {"QeDbObject::upgradeOpen", [&] { return xrecord->upgradeOpen(); }},
        {"QeDbObject::downgradeOpen", [&] { return xrecord->downgradeOpen(); }},
        {"QeDbXrecord::setFromRbChain", [&] { return xrecord->setFromRbChain(chain.get()); }},
        {"QeDbXrecord::rbChain", [&] { return xrecord->rbChain(copy); }},
        {"QeDbRegAppTable::add", [&] { return table->add(id, record.get()); }},
        {"QeDbSymbolTable::getAt", [&] { return table->getAt(L"KTN", id); }},
        {"QeDbSymbolTableRecord::setName", [&] { return record->setName(L"OTHER"); }},
        {"QeDbGeoData::setBlockTableRecordId", [&] { return geoData->setBlockTableRecordId(modelSpace()); }},
        {"QeDbGeoData::setCoordinateSystem", [&] { return geoData->setCoordinateSystem(L"text"); }},
        {"QeDbGeoData::postToDb", [&] { return geoData->postToDb(id); }},
        {"qedbGetGeoDataObjId", [&] { return qedbGetGeoDataObjId(&database, id); }},
        {"qedbOpenQeDbObject", [&] { return qedbOpenQeDbObject(object, modelSpace(), QeDb::kForRead); }},
        {"QeDbDatabase::getBlockTable", [&] { return database.getBlockTable(blocks); }},
        {"QeDbSymbolUtilitiesServices::blockModelSpaceId",
         [&] { return qedbSymUtil()->blockModelSpaceId(&database, id); }},
    };
}

TEST_F(HostFault, FailingCall_ReturnsTheInjectedCodeAndChangesNothing)
{
    const auto before = contents();
    const auto resources = Embedded::ResourceCounters::now();
    for (const Call& call : statusCalls()) {
        SCOPED_TRACE(call.name);
        const ScopedFault fault({.call = call.name, .code = 77});
        EXPECT_EQ(static_cast<int>(call.make()), 77);
        EXPECT_EQ(FaultInjection::failedCalls(), 1U);
        EXPECT_TRUE(id.isNull());
        EXPECT_EQ(object, nullptr);
        EXPECT_EQ(blocks, nullptr);
        EXPECT_EQ(copy, nullptr);
        EXPECT_EQ(Embedded::ResourceCounters::difference(resources, Embedded::ResourceCounters::now()), "");
    }
    EXPECT_EQ(contents(), before);
    EXPECT_STREQ(record->getName(), L"NEW");
    EXPECT_STREQ(geoData->coordinateSystem(), L"");
}

TEST_F(HostFault, FailingCall_HasADefaultCode)
{
    for (const Call& call : statusCalls()) {
        const ScopedFault fault({.call = call.name, .code = {}});
        EXPECT_NE(call.make(), Qeapp::eOk) << call.name;
    }
}

TEST_F(HostFault, FailingQuery_ReturnsNull)
{
    for (const char* call : {"QeDbObject::xData", "QeDbDictionary::newIterator"}) {
        const ScopedFault fault({.call = call, .code = {}});
        const ResbufChain data(dictionary->xData(L"KTN"));
        const std::unique_ptr<QeDbDictionaryIterator> iterator(dictionary->newIterator());
        EXPECT_EQ(data.get() == nullptr, std::string_view(call) == "QeDbObject::xData");
        EXPECT_EQ(iterator == nullptr, std::string_view(call) == "QeDbDictionary::newIterator");
    }
}

TEST_F(HostFault, InjectedSuccess_ReturnsNoObject)
{
    const ScopedFault fault({.call = "qedbOpenQeDbObject", .code = Qeapp::eOk});
    EXPECT_EQ(qedbOpenQeDbObject(object, modelSpace(), QeDb::kForRead), Qeapp::eOk);
    EXPECT_EQ(object, nullptr);
}

TEST_F(HostFault, FailingAllocationOfACopy_LeaksNothing)
{
    const auto resources = Embedded::ResourceCounters::now();
    FaultInjection::watch();
    {
        const ResbufChain whole(dictionary->xData());
        EXPECT_NE(whole.get(), nullptr);
    }
    const std::size_t calls = FaultInjection::seen().size();
    EXPECT_EQ(calls, 5U) << "the query, and for each of two resbufs itself and its string";
    for (std::size_t occurrence = 1; occurrence <= calls; ++occurrence) {
        const ScopedFault fault({.call = "", .occurrence = occurrence, .code = {}});
        EXPECT_EQ(dictionary->xData(), nullptr) << occurrence;
        EXPECT_EQ(Embedded::ResourceCounters::difference(resources, Embedded::ResourceCounters::now()), "");
    }
}

TEST_F(HostFault, ClosingCalls_NeverFail)
{
    const ScopedFault fault({.call = "", .occurrence = 2, .fromThenOn = true, .code = {}});
    ASSERT_NE(transactions().startTransaction(), nullptr);
    EXPECT_EQ(transactions().abortTransaction(), Qeapp::eOk);
    xrecord.close();
    qeutRelRb(nullptr);
    EXPECT_EQ(FaultInjection::failedCalls(), 0U);
}

TEST_F(HostFault, EmptyDrawing_IsCreatedInSpiteOfFaults)
{
    const ScopedFault fault({.call = "", .fromThenOn = true, .code = {}});
    QeDbDatabase other;
    EXPECT_EQ(Tests::drawingContents(other), R"(drawing version 33
next handle 5
object 1 QeDbDictionary
object 2 QeDbRegAppTable
object 3 QeDbBlockTable
  record 4
object 4 QeDbBlockTableRecord of 3
  name "*Model_Space"
)");
    EXPECT_EQ(Tests::drawingContents(*loadFromBytes(saveToBytes(other))), Tests::drawingContents(other));
    EXPECT_EQ(FaultInjection::failedCalls(), 0U);
}

} // namespace
} // namespace Tests
