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

    static std::ptrdiff_t geoDataObjects(const Drawing& one)
    {
        return countOccurrences(one.contents(), " QeDbGeoData of ");
    }
    /// Keeps the GeoData object open as long as it exists.
    Orvel::HostObject<QeDbGeoData> opened(QeDb::OpenMode mode) const
    {
        QeDbObjectId id;
        EXPECT_EQ(qedbGetGeoDataObjId(drawing.database(), id), Qeapp::eOk);
        Orvel::HostObject<QeDbGeoData> geoData;
        EXPECT_EQ(geoData.open(id, mode), Qeapp::eOk);
        return geoData;
    }
};

TEST_F(GeoDataText, IsReadWhole)
{
    const std::wstring whole = L"first line\r\n\x00E4\x4E16\t" + std::wstring(100000, L'z');
    ASSERT_EQ(WriteGeoDataCoordinateSystem(drawing.database(), whole.c_str()), Qeapp::eOk);
    EXPECT_EQ(ReadGeoDataCoordinateSystem(drawing.database(), text), Qeapp::eOk);
    EXPECT_EQ(text, whole);
}

TEST_F(GeoDataText, ReadsAsEmptyWithoutAnObject)
{
    EXPECT_EQ(ReadGeoDataCoordinateSystem(empty.database(), text), Qeapp::eOk);
    EXPECT_EQ(text, L"");
}

TEST_F(GeoDataText, ReadsAsEmptyWhateverTheLookupsFailure)
{
    for (const int code : {3, 16, 22, kPlanned}) {
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

TEST_F(GeoDataText, FailingOpenForReadingIsPassedOnUnchanged)
{
    const ScopedFault fault(failing("qedbOpenQeDbObject"));
    EXPECT_EQ(ReadGeoDataCoordinateSystem(drawing.database(), text), kPlanned);
    EXPECT_EQ(text, L"");
}

TEST_F(GeoDataText, ObjectThatIsBeingWrittenIsPassedOnUnchanged)
{
    const auto writer = opened(QeDb::kForWrite);
    EXPECT_EQ(ReadGeoDataCoordinateSystem(drawing.database(), text), Qeapp::eOpenForWrite);
    EXPECT_EQ(WriteGeoDataCoordinateSystem(drawing.database(), L"later"), Qeapp::eOpenForWrite);
    EXPECT_EQ(ClearGeoDataCoordinateSystem(drawing.database()), Qeapp::eOpenForWrite);
}

TEST_F(GeoDataText, ObjectThatIsBeingReadCanBeReadAndNotWritten)
{
    const auto reader = opened(QeDb::kForRead);
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

TEST_F(GeoDataText, WritingIntoADrawingWithoutOneCreatesItInModelSpace)
{
    EXPECT_EQ(WriteGeoDataCoordinateSystem(empty.database(), L"new"), Qeapp::eOk);
    EXPECT_EQ(empty.geoDataText(), L"new");
    EXPECT_TRUE(empty.geoDataIsInModelSpace());
    EXPECT_EQ(geoDataObjects(empty), 1);
}

TEST_F(GeoDataText, WritingAgainKeepsTheOneObject)
{
    ASSERT_EQ(WriteGeoDataCoordinateSystem(empty.database(), L"first"), Qeapp::eOk);
    ASSERT_EQ(WriteGeoDataCoordinateSystem(empty.database(), L"second"), Qeapp::eOk);
    EXPECT_EQ(empty.geoDataText(), L"second");
    EXPECT_EQ(geoDataObjects(empty), 1);
}

TEST_F(GeoDataText, WritingNothingIntoADrawingWithoutOneCreatesNone)
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

TEST_F(GeoDataText, WritingWithoutADatabaseIs124)
{
    EXPECT_EQ(WriteGeoDataCoordinateSystem(nullptr, L"text"), 124);
    EXPECT_EQ(WriteGeoDataCoordinateSystem(nullptr, L""), 124);
    EXPECT_EQ(WriteGeoDataCoordinateSystem(nullptr, nullptr), 124);
}

TEST_F(GeoDataText, EveryFailingCallOfWritingIntoTheObjectIsPassedOn)
{
    const std::string before = drawing.contents();
    for (const char* const call : {"qedbOpenQeDbObject", "QeDbGeoData::setCoordinateSystem"}) {
        const ScopedFault fault(failing(call));
        EXPECT_EQ(WriteGeoDataCoordinateSystem(drawing.database(), L"later"), kPlanned) << call;
        EXPECT_EQ(drawing.contents(), before) << call;
    }
}

TEST_F(GeoDataText, FailureBeforeTheObjectIsPostedLeavesNone)
{
    const std::string before = empty.contents();
    for (const char* const call : {"QeDbSymbolUtilitiesServices::blockModelSpaceId",
                                   "QeDbGeoData::setBlockTableRecordId", "QeDbGeoData::postToDb"}) {
        const ScopedFault fault(failing(call));
        EXPECT_EQ(WriteGeoDataCoordinateSystem(empty.database(), L"new"), kPlanned) << call;
        EXPECT_EQ(empty.contents(), before) << call;
    }
}

TEST_F(GeoDataText, ObjectThatCannotBeAllocatedIsAnOutOfMemoryFailure)
{
    const std::string before = empty.contents();
    const ScopedFault fault(failing("qeHeapAlloc"));
    EXPECT_THROW(static_cast<void>(WriteGeoDataCoordinateSystem(empty.database(), L"new")), // it does not return
                 std::bad_alloc);
    EXPECT_EQ(empty.contents(), before);
}

TEST_F(GeoDataText, ObjectThatWasPostedStaysBlankWhenItsTextCannotBeSet)
{
    const ScopedFault fault(failing("QeDbGeoData::setCoordinateSystem"));
    EXPECT_EQ(WriteGeoDataCoordinateSystem(empty.database(), L"new"), kPlanned);
    EXPECT_EQ(empty.geoDataText(), L"");
}

TEST_F(GeoDataText, FailingLookupBesideAnObjectIsTheHostsRefusalToPostASecond)
{
    const std::string before = drawing.contents();
    const ScopedFault fault(failing("qedbGetGeoDataObjId"));
    EXPECT_EQ(WriteGeoDataCoordinateSystem(drawing.database(), L"later"), Qeapp::eDuplicateKey);
    EXPECT_EQ(drawing.contents(), before);
}

class GeoDataOpening : public GeoDataText {
protected:
    Orvel::HostObject<QeDbGeoData> object{new QeDbGeoData}; // something that must be gone afterwards
};

TEST_F(GeoDataOpening, ObjectGoesToTheCallerOpenForWriting)
{
    ASSERT_EQ(OpenGeoDataForWrite(drawing.database(), object, false), Qeapp::eOk);
    ASSERT_TRUE(object);
    EXPECT_TRUE(object->isWriteEnabled());
    EXPECT_STREQ(object->coordinateSystem(), L"text");
}

TEST_F(GeoDataOpening, ExistingObjectIsOpenedAlsoWhereOneMayBeCreated)
{
    ASSERT_EQ(OpenGeoDataForWrite(drawing.database(), object, true), Qeapp::eOk);
    ASSERT_TRUE(object);
    EXPECT_STREQ(object->coordinateSystem(), L"text");
    EXPECT_EQ(geoDataObjects(drawing), 1);
}

TEST_F(GeoDataOpening, CreatedObjectGoesToTheCallerOpenAndBlank)
{
    ASSERT_EQ(OpenGeoDataForWrite(empty.database(), object, true), Qeapp::eOk);
    ASSERT_TRUE(object);
    EXPECT_TRUE(object->isWriteEnabled());
    EXPECT_STREQ(object->coordinateSystem(), L"");
    object.reset();
    EXPECT_TRUE(empty.geoDataIsInModelSpace());
}

TEST_F(GeoDataOpening, MissingObjectIsNoFailureWhereNoneMayBeCreated)
{
    EXPECT_EQ(OpenGeoDataForWrite(empty.database(), object, false), Qeapp::eOk);
    EXPECT_FALSE(object);
}

TEST_F(GeoDataOpening, AnyFailingLookupCountsAsMissing)
{
    const ScopedFault fault(failing("qedbGetGeoDataObjId"));
    EXPECT_EQ(OpenGeoDataForWrite(drawing.database(), object, false), Qeapp::eOk);
    EXPECT_FALSE(object);
}

TEST_F(GeoDataOpening, SuccessWithoutAnObjectIsFifteen)
{
    const ScopedFault fault(failing("qedbOpenQeDbObject", 0));
    EXPECT_EQ(OpenGeoDataForWrite(drawing.database(), object, false), 15);
    EXPECT_FALSE(object);
}

TEST_F(GeoDataOpening, FailingOpenIsPassedOnUnchanged)
{
    const ScopedFault fault(failing("qedbOpenQeDbObject"));
    EXPECT_EQ(OpenGeoDataForWrite(drawing.database(), object, true), kPlanned);
    EXPECT_FALSE(object);
}

TEST_F(GeoDataOpening, FailureToCreateLeavesNoObject)
{
    for (const char* const call : {"QeDbSymbolUtilitiesServices::blockModelSpaceId",
                                   "QeDbGeoData::setBlockTableRecordId", "QeDbGeoData::postToDb"}) {
        object.reset(new QeDbGeoData);
        const ScopedFault fault(failing(call));
        EXPECT_EQ(OpenGeoDataForWrite(empty.database(), object, true), kPlanned) << call;
        EXPECT_FALSE(object) << call;
    }
}

TEST_F(GeoDataOpening, AllocationThatFailsLeavesNoObject)
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
    EXPECT_EQ(geoDataObjects(drawing), 1);
}

TEST_F(GeoDataClearing, DrawingWithoutOneIsASuccess)
{
    const std::string before = empty.contents();
    EXPECT_EQ(ClearGeoDataCoordinateSystem(empty.database()), Qeapp::eOk);
    EXPECT_EQ(empty.contents(), before);
}

TEST_F(GeoDataClearing, LookupThatAnswers16Or22IsASuccess)
{
    const std::string before = drawing.contents();
    for (const int code : {16, 22}) {
        const ScopedFault fault(failing("qedbGetGeoDataObjId", code));
        EXPECT_EQ(ClearGeoDataCoordinateSystem(drawing.database()), Qeapp::eOk) << code;
        EXPECT_EQ(drawing.contents(), before);
    }
}

TEST_F(GeoDataClearing, AnyOtherFailingLookupIsPassedOnUnchanged)
{
    for (const int code : {3, 15, 17, 21, 23, 124, kPlanned}) {
        const ScopedFault fault(failing("qedbGetGeoDataObjId", code));
        EXPECT_EQ(ClearGeoDataCoordinateSystem(drawing.database()), code);
        EXPECT_EQ(drawing.geoDataText(), L"text");
    }
}

TEST_F(GeoDataClearing, NullIdIsASuccess)
{
    const ScopedFault fault(failing("qedbGetGeoDataObjId", 0));
    EXPECT_EQ(ClearGeoDataCoordinateSystem(drawing.database()), Qeapp::eOk);
    EXPECT_EQ(drawing.geoDataText(), L"text");
}

TEST_F(GeoDataClearing, EveryFailingCallAfterTheLookupIsPassedOn)
{
    for (const char* const call : {"qedbOpenQeDbObject", "QeDbGeoData::setCoordinateSystem"}) {
        const ScopedFault fault(failing(call));
        EXPECT_EQ(ClearGeoDataCoordinateSystem(drawing.database()), kPlanned) << call;
        EXPECT_EQ(drawing.geoDataText(), L"text") << call;
    }
}

TEST_F(GeoDataClearing, SuccessWithoutAnObjectIsFifteen)
{
    const ScopedFault fault(failing("qedbOpenQeDbObject", 0));
    EXPECT_EQ(ClearGeoDataCoordinateSystem(drawing.database()), 15);
}

} // namespace
} // namespace Tests
