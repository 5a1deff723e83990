// The text of a drawing file: its layout and how each value comes back.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "drawing_file_samples.h"
#include "embedded/host/drawing_file.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using namespace Embedded;

class DrawingFileText : public PlatformTest {
protected:
    static ImageValue& firstValue(DrawingImage& image)
    {
        return std::get<XrecordImage>(image.objects[5].contents).chain[0];
    }
    static std::string textWith(ImageValue value)
    {
        DrawingImage image = exampleImage();
        firstValue(image) = std::move(value);
        return drawingTextFrom(image);
    }
    static ImageValue readBack(const ImageValue& value)
    {
        DrawingImage image;
        const FileResult result = drawingImageFrom(textWith(value), image);
        EXPECT_EQ(result.status, Qeapp::eOk) << result.message;
        return result.status == Qeapp::eOk ? firstValue(image) : ImageValue{};
    }
    static std::uint64_t bitsReadBack(double real)
    {
        return std::bit_cast<std::uint64_t>(std::get<double>(readBack({1040, real}).value));
    }
    static DrawingImage read(const std::string& text)
    {
        DrawingImage image;
        const FileResult result = drawingImageFrom(text, image);
        EXPECT_EQ(result.message, "");
        EXPECT_EQ(result.status, Qeapp::eOk);
        return image;
    }
    static void expectLine(const std::string& text, const std::string& line)
    {
        EXPECT_NE(text.find("\n" + line + "\n"), std::string::npos) << line << "\n is not in\n" << text;
    }
};

TEST_F(DrawingFileText, TheExampleOfTheFormatPage_IsWhatIsWrittenForItsImage)
{
    EXPECT_EQ(drawingTextFrom(exampleImage()), exampleText());
}

TEST_F(DrawingFileText, TheExampleOfTheFormatPage_IsReadAsItsImage)
{
    EXPECT_EQ(read(exampleText()), exampleImage());
}

TEST_F(DrawingFileText, FieldsInAnotherOrder_GiveTheSameImage)
{
    const std::string text = edited(exampleText(), R"("handle": "A", "owner": "4", "class": "QeDbGeoData")",
                                    R"("class": "QeDbGeoData", "owner": "4", "handle": "A")");
    EXPECT_EQ(read(text), exampleImage());
}

TEST_F(DrawingFileText, OtherWhiteSpace_GivesTheSameImage)
{
    std::string text;
    for (const char character : exampleText())
        text += character == '\n' ? "\r\n\t" : std::string(1, character);
    EXPECT_EQ(read(text + "\n"), exampleImage());
}

TEST_F(DrawingFileText, UnpairedSurrogates_AreWrittenAsUnits)
{
    expectLine(textWith({1000, std::wstring{static_cast<wchar_t>(0xDC00), L'x', static_cast<wchar_t>(0xDBFF)}}),
               R"(      {"code": 1000, "value": {"units": [56320, 120, 56319]}},)");
}

TEST_F(DrawingFileText, UnitsOfAWellFormedText_AreReadToo)
{
    const std::string text = edited(exampleText(), R"("value": "{")", R"("value": {"units": [123]})");
    EXPECT_EQ(read(text), exampleImage());
}

TEST_F(DrawingFileText, ControlCharactersAndQuotes_AreEscaped)
{
    expectLine(textWith({1000, L"\x01\x1f\t\n\"\\/\x7f"}),
               "      {\"code\": 1000, \"value\": \"\\u0001\\u001f\\t\\n\\\"\\\\/\x7f\"},");
}

TEST_F(DrawingFileText, EscapedSurrogatePairs_AreReadAsOneCharacter)
{
    const std::string text = edited(exampleText(), R"("value": "{")", R"("value": "\ud83c\udf0d")");
    EXPECT_EQ(std::get<XrecordImage>(read(text).objects[5].contents).chain[1], (ImageValue{1002, L"\U0001F30D"}));
}

TEST_F(DrawingFileText, ALongText_ComesBack)
{
    const std::wstring text(100'000, L'\u00E4');
    EXPECT_EQ(readBack({300, text}), (ImageValue{300, text}));
}

TEST_F(DrawingFileText, NegativeZero_KeepsItsSign)
{
    expectLine(textWith({1040, -0.0}), R"(      {"code": 1040, "value": -0.0},)");
    EXPECT_EQ(bitsReadBack(-0.0), 0x8000'0000'0000'0000U);
}

TEST_F(DrawingFileText, ANegativeZeroWithoutAFraction_KeepsItsSign)
{
    const std::string text = edited(exampleText(), "-0.0", "-0");
    EXPECT_EQ(read(text), exampleImage());
    EXPECT_EQ(drawingTextFrom(read(text)), exampleText());
}

TEST_F(DrawingFileText, AnIntegerInThePlaceOfAReal_IsThatReal)
{
    EXPECT_EQ(read(edited(exampleText(), "6378137.0", "6378137")), exampleImage());
}

TEST_F(DrawingFileText, RealsAtTheEndsOfTheRange_ComeBackExactly)
{
    for (const double real : {std::numeric_limits<double>::denorm_min(), std::numeric_limits<double>::min(),
                              std::numeric_limits<double>::max(), std::numeric_limits<double>::lowest(),
                              std::nextafter(1.0, 2.0), 0.1, -1.0 / 3})
        EXPECT_EQ(bitsReadBack(real), std::bit_cast<std::uint64_t>(real)) << real;
}

TEST_F(DrawingFileText, ManyRandomReals_ComeBackExactly)
{
    std::mt19937_64 random(20'261);
    std::vector<std::uint64_t> bits(20'000);
    ImageChain reals(bits.size(), ImageValue{1040, 0.0});
    for (std::size_t index = 0; index < bits.size(); ++index) {
        bits[index] = random();
        reals[index].value = std::bit_cast<double>(bits[index]);
    }
    DrawingImage image = exampleImage();
    image.objects[5].contents = XrecordImage{std::move(reals)};
    const DrawingImage found = read(drawingTextFrom(image));
    for (std::size_t index = 0; index < bits.size(); ++index) {
        const ImageValue& value = std::get<XrecordImage>(found.objects[5].contents).chain[index];
        ASSERT_EQ(std::bit_cast<std::uint64_t>(std::get<double>(value.value)), bits[index]) << std::hex << bits[index];
    }
}

TEST_F(DrawingFileText, NotANumber_KeepsItsSignAndPayload)
{
    expectLine(textWith({1040, std::bit_cast<double>(std::uint64_t{0xFFF8'0000'0000'0123})}),
               R"(      {"code": 1040, "value": {"bits": "fff8000000000123"}},)");
    EXPECT_EQ(bitsReadBack(std::bit_cast<double>(std::uint64_t{0xFFF8'0000'0000'0123})), 0xFFF8'0000'0000'0123U);
}

TEST_F(DrawingFileText, Infinities_ComeBack)
{
    EXPECT_EQ(bitsReadBack(std::numeric_limits<double>::infinity()), 0x7FF0'0000'0000'0000U);
    EXPECT_EQ(bitsReadBack(-std::numeric_limits<double>::infinity()), 0xFFF0'0000'0000'0000U);
}

TEST_F(DrawingFileText, TheLargestChunkOfAnXrecord_ComesBack)
{
    const ImageValue chunk{310, std::vector<unsigned char>(32'767, 0xA5)};
    EXPECT_EQ(readBack(chunk), chunk);
}

TEST_F(DrawingFileText, TheLargestChunkOfExtendedData_ComesBack)
{
    DrawingImage image = exampleImage();
    image.objects[0].extendedData[0].second.push_back({1004, std::vector<unsigned char>(127, 0x5A)});
    EXPECT_EQ(read(drawingTextFrom(image)), image);
}

TEST_F(DrawingFileText, TheLargestHandles_ComeBack)
{
    DrawingImage image = exampleImage();
    image.nextHandle = Handle{0x7FFF'FFFF'FFFF'FFFF};
    image.objects.back().handle = image.nextHandle - 1;
    expectLine(drawingTextFrom(image), R"(  "nextHandle": "7FFFFFFFFFFFFFFF",)");
    EXPECT_EQ(read(drawingTextFrom(image)), image);
}

TEST_F(DrawingFileText, EmptyLists_ComeBack)
{
    DrawingImage image = exampleImage();
    image.objects[5].contents = XrecordImage{};
    image.objects[6].contents = DictionaryImage{};
    image.objects[7].owner = 0;
    expectLine(drawingTextFrom(image), R"(    {"handle": "6", "owner": "1", "class": "QeDbXrecord", "chain": []},)");
    EXPECT_EQ(read(drawingTextFrom(image)), image);
}

TEST_F(DrawingFileText, EveryDrawingVersion_IsRead)
{
    for (int version = 21; version <= 33; ++version) {
        DrawingImage image = exampleImage();
        image.drawingVersion = version;
        EXPECT_EQ(read(drawingTextFrom(image)), image);
    }
}

TEST_F(DrawingFileText, RandomImages_ComeBackInTheSameText)
{
    constexpr std::uint64_t seed = 7'321;
    RandomImages images(seed);
    for (int count = 0; count < 500; ++count) {
        const DrawingImage image = images.next();
        ASSERT_EQ(validateImage(image), "") << "seed " << seed << ", image " << count;
        const std::string text = drawingTextFrom(image);
        const DrawingImage found = read(text);
        ASSERT_EQ(found, image) << "seed " << seed << ", image " << count << "\n" << text;
        ASSERT_EQ(drawingTextFrom(found), text) << "seed " << seed << ", image " << count;
    }
}

} // namespace
} // namespace Tests
