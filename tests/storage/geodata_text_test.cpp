#include <algorithm>
#include <new>

#include "storage/failing_calls.h"
#include "storage/geodata.h"
#include "support/drawing.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using Embedded::ScopedFault;
using Orvel::ClearGeoDataCoordinateSystem;
using Orvel::OpenGeoDataForWrite;
using Orvel::ReadGeoDataCoordinateSystem;
using Orvel::WriteGeoDataCoordinateSystem;

class GeoDataText : public PlatformTest {
protected:
    Drawing empty;
    Drawing drawing;
    std::wstring text = L"before";

    GeoDataText() { drawing.withGeoData(L"text"); }

    static std::ptrdiff_t countGeoDataObjects(const Drawing& counted)
    {
        return countOccurrences(counted.contents(), " QeDbGeoData of ");
    }
    /// Opens the GeoData object until the result is destroyed.
    Orvel::HostObject<QeDbGeoData> openGeoData(QeDb::OpenMode mode) const
    {
        QeDbObjectId id;
        EXPECT_EQ(qedbGetGeoDataObjId(drawing.database(), id), Qeapp::eOk);
        Orvel::HostObject<QeDbGeoData> geoData;
        EXPECT_EQ(geoData.open(id, mode), Qeapp::eOk);
        return geoData;
    }
};

TEST_F(GeoDataText, IsReadCompletely)
{
    const std::wstring whole = L"first line\r\n\x00E4\x4E16\t" + std::wstring(100000, L'z');
    ASSERT_EQ(WriteGeoDataCoordinateSystem(drawing.database(), whole.c_str()), Qeapp::eOk);
    EXPECT_EQ(ReadGeoDataCoordinateSystem(drawing.database(), text), Qeapp::eOk);
    EXPECT_EQ(text, whole);
}

TEST_F(GeoDataText, ReadsAsEmptyWithoutGeoData)
{
    EXPECT_EQ(ReadGeoDataCoordinateSystem(empty.database(), text), Qeapp::eOk);
    EXPECT_EQ(text, L"");
}

TEST_F(GeoDataText, ReadsAsEmptyWhenTheLookupFails)
{
    for (const int code : {3, 16, 22, kInjectedResult}) {
        text = L"before";
        const ScopedFault fault(failing("qedbGetGeoDataObjId", code));
        EXPECT_EQ(ReadGeoDataCoordinateSystem(drawing.database(), text), Qeapp::eOk);
        EXPECT_EQ(text, L"") << code;
    }
}

TEST_F(GeoDataText, ReadsAsEmptyForANullId)
{
    const ScopedFault fault(failing("qedbGetGeoDataObjId", 0)); // success without an id
    EXPECT_EQ(ReadGeoDataCoordinateSystem(drawing.database(), text), Qeapp::eOk);
    EXPECT_EQ(text, L"");
}

TEST_F(GeoDataText, FailingOpenForReadIsReturned)
{
    const ScopedFault fault(failing("qedbOpenQeDbObject"));
    EXPECT_EQ(ReadGeoDataCoordinateSystem(drawing.database(), text), kInjectedResult);
    EXPECT_EQ(text, L"");
}

TEST_F(GeoDataText, ObjectThatIsOpenForWriteIsNeitherReadNorWritten)
{
    const auto writer = openGeoData(QeDb::kForWrite);
    EXPECT_EQ(ReadGeoDataCoordinateSystem(drawing.database(), text), Qeapp::eOpenForWrite);
    EXPECT_EQ(WriteGeoDataCoordinateSystem(drawing.database(), L"later"), Qeapp::eOpenForWrite);
    EXPECT_EQ(ClearGeoDataCoordinateSystem(drawing.database()), Qeapp::eOpenForWrite);
}

TEST_F(GeoDataText, ObjectThatIsOpenForReadIsReadAndNotWritten)
{
    const auto reader = openGeoData(QeDb::kForRead);
    EXPECT_EQ(ReadGeoDataCoordinateSystem(drawing.database(), text), Qeapp::eOk);
    EXPECT_EQ(text, L"text");
    EXPECT_EQ(WriteGeoDataCoordinateSystem(drawing.database(), L"later"), Qeapp::eOpenForRead);
    EXPECT_EQ(ClearGeoDataCoordinateSystem(drawing.database()), Qeapp::eOpenForRead);
}

TEST_F(GeoDataText, ReadingChangesNothing)
{
    const std::string before = empty.contents();
    EXPECT_EQ(ReadGeoDataCoordinateSystem(empty.database(), text), Qeapp::eOk);
    EXPECT_EQ(empty.contents(), before);
}

TEST_F(GeoDataText, FirstWriteCreatesTheObjectInModelSpace)
{
    EXPECT_EQ(WriteGeoDataCoordinateSystem(empty.database(), L"new"), Qeapp::eOk);
    EXPECT_EQ(empty.geoDataText(), L"new");
    EXPECT_TRUE(empty.geoDataIsInModelSpace());
    EXPECT_EQ(countGeoDataObjects(empty), 1);
}

TEST_F(GeoDataText, SecondWriteKeepsTheOneObject)
{
    ASSERT_EQ(WriteGeoDataCoordinateSystem(empty.database(), L"first"), Qeapp::eOk);
    ASSERT_EQ(WriteGeoDataCoordinateSystem(empty.database(), L"second"), Qeapp::eOk);
    EXPECT_EQ(empty.geoDataText(), L"second");
    EXPECT_EQ(countGeoDataObjects(empty), 1);
}

TEST_F(GeoDataText, WritingAnEmptyTextCreatesNoObject)
{
    const std::string before = empty.contents();
    EXPECT_EQ(WriteGeoDataCoordinateSystem(empty.database(), L""), Qeapp::eOk);
    EXPECT_EQ(WriteGeoDataCoordinateSystem(empty.database(), nullptr), Qeapp::eOk);
    EXPECT_EQ(empty.contents(), before);
}

TEST_F(GeoDataText, WritingAnEmptyTextBlanksTheObject)
{
    EXPECT_EQ(WriteGeoDataCoordinateSystem(drawing.database(), L""), Qeapp::eOk);
    EXPECT_EQ(drawing.geoDataText(), L"");
}

TEST_F(GeoDataText, WritingANullTextBlanksTheObject)
{
    EXPECT_EQ(WriteGeoDataCoordinateSystem(drawing.database(), nullptr), Qeapp::eOk);
    EXPECT_EQ(drawing.geoDataText(), L"");
}

TEST_F(GeoDataText, WritingWithoutADatabaseReturns124)
{
    EXPECT_EQ(WriteGeoDataCoordinateSystem(nullptr, L"text"), 124);
    EXPECT_EQ(WriteGeoDataCoordinateSystem(nullptr, L""), 124);
    EXPECT_EQ(WriteGeoDataCoordinateSystem(nullptr, nullptr), 124);
}

TEST_F(GeoDataText, EveryFailureToWriteIntoTheObjectIsReturned)
{
    const std::string before = drawing.contents();
    for (const char* const call : {"qedbOpenQeDbObject", "QeDbGeoData::setCoordinateSystem"}) {
        const ScopedFault fault(failing(call));
        EXPECT_EQ(WriteGeoDataCoordinateSystem(drawing.database(), L"later"), kInjectedResult) << call;
        EXPECT_EQ(drawing.contents(), before) << call;
    }
}

TEST_F(GeoDataText, FailureBeforeTheObjectIsPostedLeavesNoObject)
{
    const std::string before = empty.contents();
    for (const char* const call : {"QeDbSymbolUtilitiesServices::blockModelSpaceId",
                                   "QeDbGeoData::setBlockTableRecordId", "QeDbGeoData::postToDb"}) {
        const ScopedFault fault(failing(call));
        EXPECT_EQ(WriteGeoDataCoordinateSystem(empty.database(), L"new"), kInjectedResult) << call;
        EXPECT_EQ(empty.contents(), before) << call;
    }
}

TEST_F(GeoDataText, ObjectThatCannotBeAllocatedThrowsBadAlloc)
{
    const std::string before = empty.contents();
    const ScopedFault fault(failing("qeHeapAlloc"));
    EXPECT_THROW(static_cast<void>(WriteGeoDataCoordinateSystem(empty.database(), L"new")), // it does not return
                 std::bad_alloc);
    EXPECT_EQ(empty.contents(), before);
}

TEST_F(GeoDataText, PostedObjectStaysBlankWhenItsTextCannotBeSet)
{
    const ScopedFault fault(failing("QeDbGeoData::setCoordinateSystem"));
    EXPECT_EQ(WriteGeoDataCoordinateSystem(empty.database(), L"new"), kInjectedResult);
    EXPECT_EQ(empty.geoDataText(), L"");
}

TEST_F(GeoDataText, FailingLookupWithAnExistingObjectReturnsDuplicateKey)
{
    const std::string before = drawing.contents();
    const ScopedFault fault(failing("qedbGetGeoDataObjId"));
    EXPECT_EQ(WriteGeoDataCoordinateSystem(drawing.database(), L"later"), Qeapp::eDuplicateKey);
    EXPECT_EQ(drawing.contents(), before);
}

class GeoDataOpening : public GeoDataText {
protected:
    Orvel::HostObject<QeDbGeoData> object{new QeDbGeoData}; // must be replaced or removed
};

TEST_F(GeoDataOpening, ExistingObjectIsReturnedOpenForWrite)
{
    ASSERT_EQ(OpenGeoDataForWrite(drawing.database(), object, false), Qeapp::eOk);
    ASSERT_TRUE(object);
    EXPECT_TRUE(object->isWriteEnabled());
    EXPECT_STREQ(object->coordinateSystem(), L"text");
}

TEST_F(GeoDataOpening, ExistingObjectIsOpenedWhereOneMayBeCreated)
{
    ASSERT_EQ(OpenGeoDataForWrite(drawing.database(), object, true), Qeapp::eOk);
    ASSERT_TRUE(object);
    EXPECT_STREQ(object->coordinateSystem(), L"text");
    EXPECT_EQ(countGeoDataObjects(drawing), 1);
}

TEST_F(GeoDataOpening, CreatedObjectIsReturnedOpenAndBlank)
{
    ASSERT_EQ(OpenGeoDataForWrite(empty.database(), object, true), Qeapp::eOk);
    ASSERT_TRUE(object);
    EXPECT_TRUE(object->isWriteEnabled());
    EXPECT_STREQ(object->coordinateSystem(), L"");
    object.reset();
    EXPECT_TRUE(empty.geoDataIsInModelSpace());
}

TEST_F(GeoDataOpening, MissingObjectIsAcceptedWhereNoneMayBeCreated)
{
    EXPECT_EQ(OpenGeoDataForWrite(empty.database(), object, false), Qeapp::eOk);
    EXPECT_FALSE(object);
}

TEST_F(GeoDataOpening, FailingLookupCountsAsMissingObject)
{
    const ScopedFault fault(failing("qedbGetGeoDataObjId"));
    EXPECT_EQ(OpenGeoDataForWrite(drawing.database(), object, false), Qeapp::eOk);
    EXPECT_FALSE(object);
}

TEST_F(GeoDataOpening, OpeningThatSucceedsWithoutAnObjectReturns15)
{
    const ScopedFault fault(failing("qedbOpenQeDbObject", 0));
    EXPECT_EQ(OpenGeoDataForWrite(drawing.database(), object, false), 15);
    EXPECT_FALSE(object);
}

TEST_F(GeoDataOpening, FailingOpenIsReturned)
{
    const ScopedFault fault(failing("qedbOpenQeDbObject"));
    EXPECT_EQ(OpenGeoDataForWrite(drawing.database(), object, true), kInjectedResult);
    EXPECT_FALSE(object);
}

TEST_F(GeoDataOpening, FailedCreationReturnsNoObject)
{
    for (const char* const call : {"QeDbSymbolUtilitiesServices::blockModelSpaceId",
                                   "QeDbGeoData::setBlockTableRecordId", "QeDbGeoData::postToDb"}) {
        object.reset(new QeDbGeoData);
        const ScopedFault fault(failing(call));
        EXPECT_EQ(OpenGeoDataForWrite(empty.database(), object, true), kInjectedResult) << call;
        EXPECT_FALSE(object) << call;
    }
}

TEST_F(GeoDataOpening, FailedAllocationReturnsNoObject)
{
    const ScopedFault fault(failing("qeHeapAlloc"));
    EXPECT_THROW(static_cast<void>(OpenGeoDataForWrite(empty.database(), object, true)), // it does not return
                 std::bad_alloc);
    EXPECT_FALSE(object);
}

class GeoDataClearing : public GeoDataText {};

TEST_F(GeoDataClearing, BlanksTheTextAndKeepsTheObject)
{
    EXPECT_EQ(ClearGeoDataCoordinateSystem(drawing.database()), Qeapp::eOk);
    EXPECT_EQ(drawing.geoDataText(), L"");
    EXPECT_EQ(countGeoDataObjects(drawing), 1);
}

TEST_F(GeoDataClearing, DrawingWithoutGeoDataIsUnchanged)
{
    const std::string before = empty.contents();
    EXPECT_EQ(ClearGeoDataCoordinateSystem(empty.database()), Qeapp::eOk);
    EXPECT_EQ(empty.contents(), before);
}

TEST_F(GeoDataClearing, LookupThatReturns16Or22Succeeds)
{
    const std::string before = drawing.contents();
    for (const int code : {16, 22}) {
        const ScopedFault fault(failing("qedbGetGeoDataObjId", code));
        EXPECT_EQ(ClearGeoDataCoordinateSystem(drawing.database()), Qeapp::eOk) << code;
        EXPECT_EQ(drawing.contents(), before);
    }
}

TEST_F(GeoDataClearing, AnyOtherLookupFailureIsReturned)
{
    for (const int code : {3, 15, 17, 21, 23, 124, kInjectedResult}) {
        const ScopedFault fault(failing("qedbGetGeoDataObjId", code));
        EXPECT_EQ(ClearGeoDataCoordinateSystem(drawing.database()), code);
        EXPECT_EQ(drawing.geoDataText(), L"text");
    }
}

TEST_F(GeoDataClearing, NullIdSucceeds)
{
    const ScopedFault fault(failing("qedbGetGeoDataObjId", 0));
    EXPECT_EQ(ClearGeoDataCoordinateSystem(drawing.database()), Qeapp::eOk);
    EXPECT_EQ(drawing.geoDataText(), L"text");
}

TEST_F(GeoDataClearing, EveryFailureAfterTheLookupIsReturned)
{
    for (const char* const call : {"qedbOpenQeDbObject", "QeDbGeoData::setCoordinateSystem"}) {
        const ScopedFault fault(failing(call));
        EXPECT_EQ(ClearGeoDataCoordinateSystem(drawing.database()), kInjectedResult) << call;
        EXPECT_EQ(drawing.geoDataText(), L"text") << call;
    }
}

TEST_F(GeoDataClearing, OpeningThatSucceedsWithoutAnObjectReturns15)
{
    const ScopedFault fault(failing("qedbOpenQeDbObject", 0));
    EXPECT_EQ(ClearGeoDataCoordinateSystem(drawing.database()), 15);
}

} // namespace
} // namespace Tests
