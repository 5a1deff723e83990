#include "host/database/drawing_test.h"

namespace Tests {
namespace {

class GeoData : public DrawingTest {
protected:
    QeDbObjectId find(Qeapp::ErrorStatus expected)
    {
        QeDbObjectId id;
        EXPECT_EQ(qedbGetGeoDataObjId(&database, id), expected);
        return id;
    }
};

TEST_F(GeoData, NewDrawing_HasNoGeoData)
{
    EXPECT_TRUE(find(Qeapp::eKeyNotFound).isNull());
}

TEST_F(GeoData, NullDatabase_IsRefused)
{
    QeDbObjectId id = modelSpace();
    EXPECT_EQ(qedbGetGeoDataObjId(nullptr, id), Qeapp::eInvalidInput);
    EXPECT_TRUE(id.isNull());
}

TEST_F(GeoData, PostedObject_BelongsToTheDrawing)
{
    const QeDbObjectId id = addGeoData(L"EPSG:25832");
    EXPECT_EQ(find(Qeapp::eOk), id);
    const auto geoData = open<QeDbGeoData>(id);
    EXPECT_STREQ(geoData->coordinateSystem(), L"EPSG:25832");
    EXPECT_EQ(geoData->ownerId(), modelSpace());
    EXPECT_EQ(geoData->blockTableRecordId(), modelSpace());
}

TEST_F(GeoData, PostedObject_StaysOpenForWrite)
{
    auto* geoData = new QeDbGeoData;
    ASSERT_EQ(geoData->setBlockTableRecordId(modelSpace()), Qeapp::eOk);
    QeDbObjectId id;
    ASSERT_EQ(geoData->postToDb(id), Qeapp::eOk);
    const Opened<QeDbGeoData> opened(geoData);
    EXPECT_EQ(opened->setCoordinateSystem(L"x"), Qeapp::eOk);
    EXPECT_EQ(opened->postToDb(id), Qeapp::eAlreadyInDatabase);
    EXPECT_EQ(opened->setBlockTableRecordId(modelSpace()), Qeapp::eAlreadyInDatabase);
}

TEST_F(GeoData, SecondObject_IsRefusedAndStaysWithTheCaller)
{
    addGeoData();
    QeDbGeoData second;
    ASSERT_EQ(second.setBlockTableRecordId(modelSpace()), Qeapp::eOk);
    QeDbObjectId id;
    EXPECT_EQ(second.postToDb(id), Qeapp::eDuplicateKey);
    EXPECT_TRUE(id.isNull());
    EXPECT_TRUE(second.objectId().isNull());
}

TEST_F(GeoData, ObjectWithoutABlock_CannotBePosted)
{
    QeDbGeoData geoData;
    QeDbObjectId id;
    EXPECT_EQ(geoData.postToDb(id), Qeapp::eNullObjectId);
}

TEST_F(GeoData, OwnerThatIsNotALiveBlock_IsRefused)
{
    QeDbGeoData geoData;
    EXPECT_EQ(geoData.setBlockTableRecordId(QeDbObjectId()), Qeapp::eNullObjectId);
    EXPECT_EQ(geoData.setBlockTableRecordId(namedObjects()->objectId()), Qeapp::eNotThatKindOfClass);
    EXPECT_EQ(geoData.setBlockTableRecordId(registerApplication(L"KTN")), Qeapp::eNotThatKindOfClass);
    const QeDbObjectId block = addBlock(L"gone");
    erase(block);
    EXPECT_EQ(geoData.setBlockTableRecordId(block), Qeapp::eObjectErased);
    EXPECT_TRUE(geoData.blockTableRecordId().isNull());
}

TEST_F(GeoData, ErasedObject_CanBeReplacedByAnother)
{
    erase(addGeoData());
    EXPECT_TRUE(find(Qeapp::eKeyNotFound).isNull());
    const QeDbObjectId second = addGeoData();
    EXPECT_EQ(find(Qeapp::eOk), second);
}

TEST_F(GeoData, Text_IsCopiedAndCannotBeNull)
{
    QeDbGeoData geoData;
    EXPECT_STREQ(geoData.coordinateSystem(), L"");
    EXPECT_EQ(geoData.setCoordinateSystem(nullptr), Qeapp::eInvalidInput);
    std::wstring text = L"text";
    EXPECT_EQ(geoData.setCoordinateSystem(text.c_str()), Qeapp::eOk);
    text[0] = L'X';
    EXPECT_STREQ(geoData.coordinateSystem(), L"text");
}

TEST_F(GeoData, WriteThroughAReader_IsRefused)
{
    const auto reader = open<QeDbGeoData>(addGeoData(L"text"));
    EXPECT_EQ(reader->setCoordinateSystem(L"other"), Qeapp::eNotOpenForWrite);
    EXPECT_STREQ(reader->coordinateSystem(), L"text");
}

} // namespace
} // namespace Tests
