// Images that no database can be made from, as far as a text cannot say them or says them at length.
#include <gtest/gtest.h>

#include <string>

#include "drawing_file_samples.h"
#include "embedded/host/drawing_file.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using namespace Embedded;

class DrawingFileValidation : public PlatformTest {
protected:
    template <class Contents>
    Contents& contents(std::size_t index)
    {
        return std::get<Contents>(image.objects[index].contents);
    }
    ImageValue& firstValue() { return contents<XrecordImage>(5).chain[0]; }

    /// The fault, which a reader of the image's text finds as well.
    std::string faultInTextToo() const
    {
        DrawingImage read;
        const FileResult result = drawingImageFrom(drawingTextFrom(image), read);
        EXPECT_EQ(result.status, Qeapp::eFileDamaged);
        EXPECT_EQ(result.message, validateImage(image));
        return validateImage(image);
    }

    DrawingImage image = exampleImage();
};

TEST_F(DrawingFileValidation, TheExample_IsValid)
{
    EXPECT_EQ(validateImage(image), "");
}

TEST_F(DrawingFileValidation, AnEmptyImage_IsNot)
{
    EXPECT_EQ(validateImage({}), "drawingVersion: 0 is not from 21 to 33");
    EXPECT_EQ(validateImage({.drawingVersion = 33, .objects = {}}), "namedObjects: 0 names no object");
}

TEST_F(DrawingFileValidation, ASecondGeoData_IsRefused)
{
    image.objects.push_back({11, 4, {}, GeoDataImage{L"", 4}});
    image.nextHandle = 12;
    EXPECT_EQ(faultInTextToo(), "objects[9]: a second QeDbGeoData object");
}

TEST_F(DrawingFileValidation, ASecondModelSpace_IsRefusedWhateverItsCase)
{
    image.objects.push_back({11, 3, {}, BlockRecordImage{L"*MODEL_SPACE"}});
    image.nextHandle = 12;
    contents<BlockTableImage>(2).records.push_back(11);
    EXPECT_EQ(faultInTextToo(), "objects[2].records[1]: duplicate name \"*MODEL_SPACE\"");
}

TEST_F(DrawingFileValidation, ModelSpaceInAnotherCase_IsModelSpace)
{
    contents<BlockRecordImage>(3).name = L"*model_space";
    EXPECT_EQ(validateImage(image), "");
}

TEST_F(DrawingFileValidation, ARegisteredApplicationTwice_IsRefusedWhateverItsCase)
{
    image.objects.push_back({11, 2, {}, RegAppRecordImage{L"ktn_Projection"}});
    image.nextHandle = 12;
    contents<RegAppTableImage>(1).records.push_back(11);
    EXPECT_EQ(faultInTextToo(), "objects[1].records[1]: duplicate name \"ktn_Projection\"");
}

TEST_F(DrawingFileValidation, ARecordListedTwice_IsRefused)
{
    contents<RegAppTableImage>(1).records.push_back(5);
    EXPECT_EQ(faultInTextToo(), "objects[1].records[1]: 5 is listed twice");
}

TEST_F(DrawingFileValidation, ARecordInNoTable_IsRefused)
{
    image.objects.push_back({11, 0, {}, RegAppRecordImage{L"OTHER"}});
    image.nextHandle = 12;
    EXPECT_EQ(faultInTextToo(), "objects[9].owner: is missing");
}

TEST_F(DrawingFileValidation, KeysThatDifferInCaseAlone_AreTwoKeys)
{
    contents<DictionaryImage>(0).entries[1].first = L"example";
    EXPECT_EQ(validateImage(image), "");
}

TEST_F(DrawingFileValidation, ExtendedDataInAnotherCase_IsOfTheSameApplication)
{
    image.objects[0].extendedData[0].first = L"ktn_projection";
    EXPECT_EQ(validateImage(image), "");
}

TEST_F(DrawingFileValidation, AnObjectWithoutOwner_MayOwnOthers)
{
    contents<DictionaryImage>(0).entries.erase(contents<DictionaryImage>(0).entries.begin());
    image.objects[6].owner = 0;
    EXPECT_EQ(validateImage(image), "");
}

TEST_F(DrawingFileValidation, AHandleOfZero_IsRefused)
{
    image.objects[8].handle = 0;
    EXPECT_EQ(validateImage(image), "objects[8].handle: is missing");
}

TEST_F(DrawingFileValidation, NulsInTexts_AreRefused)
{
    const std::wstring text(L"a\0b", 3);
    for (const auto& [place, change] : std::initializer_list<std::pair<std::string, void (*)(DrawingImage&)>>{
             {"objects[0].entries[0].key",
              [](DrawingImage& changed) {
                  std::get<DictionaryImage>(changed.objects[0].contents).entries[0].first = std::wstring(L"\0", 1);
              }},
             {"objects[3].name",
              [](DrawingImage& changed) { std::get<BlockRecordImage>(changed.objects[3].contents).name += L'\0'; }},
             {"objects[5].chain[1].value",
              [](DrawingImage& changed) {
                  std::get<XrecordImage>(changed.objects[5].contents).chain[1].value = std::wstring(L"{\0", 2);
              }},
             {"objects[8].coordinateSystem", [](DrawingImage& changed) {
                  std::get<GeoDataImage>(changed.objects[8].contents).coordinateSystem += L'\0';
              }}}) {
        DrawingImage changed = exampleImage();
        change(changed);
        EXPECT_EQ(validateImage(changed), place + ": holds U+0000");
    }
}

TEST_F(DrawingFileValidation, AValueOfAnotherKindThanItsCode_IsRefused)
{
    const std::vector<ImageValue> values = {
        {1071, L"1"}, {1071, 1.0},  {1040, 1},   {1040, L"1"},
        {1000, 1},    {310, L"ff"}, {1002, 1.0}, {300, std::vector<unsigned char>{1}}};
    for (const ImageValue& value : values) {
        firstValue() = value;
        EXPECT_EQ(validateImage(image), "objects[5].chain[0].value: is not of the kind that group code " +
                                            std::to_string(value.code) + " calls for");
    }
}

TEST_F(DrawingFileValidation, A16BitIntegerBeyondItsRange_IsRefused)
{
    firstValue() = {1070, 32'768};
    EXPECT_EQ(validateImage(image), "objects[5].chain[0].value: 32768 is not a 16-bit integer");
}

TEST_F(DrawingFileValidation, ALongWayUpToTheRoot_IsNoCycle)
{
    constexpr Handle depth = 30'000;
    for (Handle handle = 11; handle < 11 + depth; ++handle) {
        image.objects.push_back({handle, handle == 11 ? 1 : handle - 1, {}, DictionaryImage{}});
        contents<DictionaryImage>(handle == 11 ? 0 : image.objects.size() - 2).entries.emplace_back(L"down", handle);
    }
    image.nextHandle = 11 + depth;
    EXPECT_EQ(validateImage(image), "");
}

} // namespace
} // namespace Tests
