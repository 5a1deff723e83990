#include "embedded/host/drawing_image.h"

#include <algorithm>

#include "host/drawing_test.h"

namespace Tests {
namespace {

using Embedded::databaseFrom;
using Embedded::DrawingImage;
using Embedded::imageOf;
using Embedded::ObjectImage;

class DrawingImageTest : public DrawingTest {
protected:
    static const ObjectImage* find(const DrawingImage& image, Embedded::Handle handle)
    {
        const auto found = std::find_if(image.objects.begin(), image.objects.end(),
                                        [handle](const ObjectImage& object) { return object.handle == handle; });
        return found != image.objects.end() ? &*found : nullptr;
    }

    bool isWritten(QeDbObjectId id) { return find(imageOf(database), id.handle()) != nullptr; }

    /// One of everything.
    void fill()
    {
        registerApplication(L"KTN");
        registerApplication(L"ALPHA");
        addBlock(L"Block");
        addGeoData(L"text");
        addXrecord(addDictionary(L"nested"), L"inner");
        addXrecord(L"outer", (std::wstring(L"\U0001F600 ") + static_cast<wchar_t>(0xD800)).c_str());
        const Chain data(qeutBuildList(1001, L"ktn", 1000, L"code", 1040, -0.0, 1001, L"ALPHA", 1070, 1, 5000));
        EXPECT_EQ(namedObjects(QeDb::kForWrite)->setXData(data.get()), Qeapp::eOk);
    }
};

TEST_F(DrawingImageTest, EmptyDrawing_HoldsItsRootsAndModelSpace)
{
    const DrawingImage image = imageOf(database);
    EXPECT_EQ(image.drawingVersion, QeDb::kCurrentDwg);
    EXPECT_EQ(image.nextHandle, 5U);
    const std::vector<ObjectImage> expected = {
        {1, 0, {}, Embedded::DictionaryImage{}},
        {2, 0, {}, Embedded::RegAppTableImage{}},
        {3, 0, {}, Embedded::BlockTableImage{{4}}},
        {4, 3, {}, Embedded::BlockRecordImage{L"*Model_Space"}},
    };
    EXPECT_EQ(image.objects, expected);
    EXPECT_EQ(image.namedObjects, 1U);
    EXPECT_EQ(image.regAppTable, 2U);
    EXPECT_EQ(image.blockTable, 3U);
}

TEST_F(DrawingImageTest, Image_IsValid)
{
    fill();
    EXPECT_EQ(Embedded::validateImage(imageOf(database)), "");
}

TEST_F(DrawingImageTest, DrawingFromAnImage_GivesTheSameImage)
{
    fill();
    const DrawingImage image = imageOf(database);
    EXPECT_EQ(image.objects.size(), 11U);
    EXPECT_EQ(imageOf(*databaseFrom(image)), image);
}

TEST_F(DrawingImageTest, Tables_AreInNameOrder)
{
    const QeDbObjectId zulu = registerApplication(L"zulu");
    const QeDbObjectId alpha = registerApplication(L"ALPHA");
    const QeDbObjectId beta = registerApplication(L"beta");
    const DrawingImage image = imageOf(database);
    const auto& table = std::get<Embedded::RegAppTableImage>(find(image, image.regAppTable)->contents);
    EXPECT_EQ(table.records, (std::vector<Embedded::Handle>{alpha.handle(), beta.handle(), zulu.handle()}));
}

TEST_F(DrawingImageTest, ExtendedData_IsInNameOrderWithoutItsNames)
{
    fill();
    const DrawingImage image = imageOf(database);
    const auto& data = find(image, image.namedObjects)->extendedData;
    ASSERT_EQ(data.size(), 2U);
    EXPECT_EQ(data[0].first, L"ALPHA");
    EXPECT_EQ(data[0].second, (Embedded::ImageChain{{1070, 1}}));
    EXPECT_EQ(data[1].first, L"KTN");
    EXPECT_EQ(data[1].second, (Embedded::ImageChain{{1000, std::wstring(L"code")}, {1040, -0.0}}));
}

TEST_F(DrawingImageTest, ErasedObjects_AreNotWritten)
{
    const QeDbObjectId entry = addXrecord(L"key");
    const QeDbObjectId application = registerApplication(L"KTN");
    const QeDbObjectId geoData = addGeoData();
    const QeDbObjectId all[] = {entry, application, geoData};
    for (const QeDbObjectId& id : all) {
        EXPECT_TRUE(isWritten(id));
        erase(id);
        EXPECT_FALSE(isWritten(id));
    }
    EXPECT_EQ(Embedded::validateImage(imageOf(database)), "");
}

TEST_F(DrawingImageTest, RemovedEntryAndAllItHolds_AreNotWritten)
{
    const QeDbObjectId nested = addDictionary(L"nested");
    const QeDbObjectId inner = addXrecord(nested, L"inner");
    EXPECT_EQ(namedObjects(QeDb::kForWrite)->remove(nested), Qeapp::eOk);
    EXPECT_FALSE(isWritten(nested));
    EXPECT_FALSE(isWritten(inner));
    EXPECT_EQ(imageOf(database).objects.size(), 4U);
}

TEST_F(DrawingImageTest, GeoDataOfAnErasedBlock_IsNotWritten)
{
    const QeDbObjectId block = addBlock(L"block");
    auto* geoData = new QeDbGeoData;
    ASSERT_EQ(geoData->setBlockTableRecordId(block), Qeapp::eOk);
    QeDbObjectId id;
    ASSERT_EQ(geoData->postToDb(id), Qeapp::eOk);
    ASSERT_EQ(geoData->close(), Qeapp::eOk);
    EXPECT_TRUE(isWritten(id));
    erase(block);
    EXPECT_FALSE(isWritten(id));
}

TEST_F(DrawingImageTest, NextHandle_SurvivesTheHighestObject)
{
    erase(addXrecord(L"key"));
    const DrawingImage image = imageOf(database);
    EXPECT_EQ(image.nextHandle, 6U);
    EXPECT_EQ(imageOf(*databaseFrom(image)).nextHandle, 6U);
}

TEST_F(DrawingImageTest, RestoredDrawing_WorksAsTheOriginalDid)
{
    fill();
    const auto restored = databaseFrom(imageOf(database));
    QeDbObjectId id;
    EXPECT_EQ(qedbGetGeoDataObjId(restored.get(), id), Qeapp::eOk);
    EXPECT_EQ(qedbSymUtil()->blockModelSpaceId(restored.get(), id), Qeapp::eOk);
    EXPECT_EQ(id.handle(), modelSpace().handle());
    QeDbDictionary* dictionary = nullptr;
    ASSERT_EQ(restored->getNamedObjectsDictionary(dictionary, QeDb::kForWrite), Qeapp::eOk);
    const Opened<QeDbDictionary> opened(dictionary);
    const Chain data(opened->xData(L"KTN"));
    EXPECT_EQ(textOf(data.get()), "1001:KTN 1000:code 1040:-0");
    auto* xrecord = new QeDbXrecord;
    ASSERT_EQ(opened->setAt(L"new", xrecord, id), Qeapp::eOk);
    EXPECT_EQ(id.handle(), imageOf(database).nextHandle);
    EXPECT_EQ(xrecord->close(), Qeapp::eOk);
}

} // namespace
} // namespace Tests
