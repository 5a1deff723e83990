// Texts that were damaged at random, cut off or built to break a reader.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "drawing_file_samples.h"
#include "embedded/foundation/text.h"
#include "embedded/host/drawing_file.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using namespace Embedded;

class DrawingFileRobustness : public PlatformTest {
protected:
    /// Either a refusal that says something, or an image that is as valid as the reader claims.
    static void expectRefusedOrValid(const std::string& text, const std::string& what)
    {
        DrawingImage image;
        const FileResult result = drawingImageFrom(text, image);
        if (result.status == Qeapp::eOk) {
            ASSERT_EQ(validateImage(image), "") << what;
        } else {
            ASSERT_TRUE(result.status == Qeapp::eFileDamaged || result.status == Qeapp::eFileTooNew) << what;
            ASSERT_NE(result.message.find(": "), std::string::npos) << what;
            ASSERT_TRUE(isValidUtf8(result.message)) << what;
            ASSERT_LT(result.message.size(), 1'000U) << what;
        }
    }
    static FileResult resultOf(const std::string& text)
    {
        DrawingImage image;
        return drawingImageFrom(text, image);
    }
};

TEST_F(DrawingFileRobustness, EveryTruncation_IsRefused)
{
    const std::string text = exampleText();
    for (std::size_t length = 0; length < text.size(); ++length) {
        const FileResult result = resultOf(text.substr(0, length));
        EXPECT_EQ(result.status, Qeapp::eFileDamaged) << length;
        const auto byte = result.message.find(", byte ");
        ASSERT_NE(byte, std::string::npos) << result.message;
        EXPECT_LE(std::stoul(result.message.substr(byte + 7)), length + 1) << result.message;
    }
}

TEST_F(DrawingFileRobustness, TheTailOfAFile_IsRefused)
{
    const std::string text = exampleText();
    for (std::size_t begin = 1; begin < text.size(); ++begin)
        EXPECT_EQ(resultOf(text.substr(begin)).status, Qeapp::eFileDamaged) << begin;
}

TEST_F(DrawingFileRobustness, AnyByteChanged_IsRefusedOrGivesAValidImage)
{
    constexpr std::uint64_t seed = 4'711;
    std::mt19937_64 random(seed);
    const std::string original = exampleText();
    for (int count = 0; count < 20'000; ++count) {
        std::string text = original;
        const std::size_t place = random() % text.size();
        text[place] = static_cast<char>(random());
        expectRefusedOrValid(text, "seed " + std::to_string(seed) + ", change " + std::to_string(count));
        if (HasFatalFailure())
            return;
    }
}

TEST_F(DrawingFileRobustness, ADigitOrLetterChanged_IsRefusedOrGivesAValidImage)
{
    constexpr std::uint64_t seed = 815;
    const std::string characters = "0123456789ABCDEFabcdef-.,:[]{}\" ";
    std::mt19937_64 random(seed);
    RandomImages images(seed);
    for (int count = 0; count < 1'000; ++count) {
        std::string text = drawingTextFrom(images.next());
        for (std::size_t changes = 1 + random() % 2; changes > 0; --changes)
            text[random() % text.size()] = characters[random() % characters.size()];
        expectRefusedOrValid(text, "seed " + std::to_string(seed) + ", change " + std::to_string(count));
        if (HasFatalFailure())
            return;
    }
}

TEST_F(DrawingFileRobustness, SixtyFourLevels_AreNotTooDeep)
{
    EXPECT_EQ(resultOf(std::string(64, '[') + std::string(64, ']') + "\n").message,
              "drawing: not a drawing file: its field \"format\" is not \"embedded host drawing\"");
}

TEST_F(DrawingFileRobustness, SixtyFiveLevels_AreTooDeep)
{
    const FileResult result = resultOf(std::string(65, '[') + std::string(65, ']') + "\n");
    EXPECT_EQ(result.status, Qeapp::eFileDamaged);
    EXPECT_NE(result.message.find("[0][0]: nested deeper than 64 levels"), std::string::npos) << result.message;
}

TEST_F(DrawingFileRobustness, AMillionLevels_AreRefusedOnTheWayDown)
{
    for (const std::string opening : {"[", "{\"a\":"}) {
        std::string text;
        for (int level = 0; level < 1'000'000; ++level)
            text += opening;
        const FileResult result = resultOf(text);
        EXPECT_EQ(result.status, Qeapp::eFileDamaged);
        EXPECT_NE(result.message.find(": nested deeper than 64 levels"), std::string::npos) << result.message;
    }
}

TEST_F(DrawingFileRobustness, TenThousandLevelsInsideADrawing_AreRefusedWithTheirPlace)
{
    const std::string nested = std::string(10'000, '[') + std::string(10'000, ']');
    const FileResult result = resultOf(edited(exampleText(), "6378137.0", nested));
    EXPECT_EQ(result.status, Qeapp::eFileDamaged);
    EXPECT_EQ(result.message.substr(0, 33), "objects[7].chain[4].value[0][0][0") << result.message;
}

TEST_F(DrawingFileRobustness, AnEmptyText_IsRefused)
{
    EXPECT_EQ(resultOf("").status, Qeapp::eFileDamaged);
    EXPECT_EQ(resultOf("").message, "line 1, byte 1: the file is empty");
}

TEST_F(DrawingFileRobustness, OtherDocuments_AreNoDrawings)
{
    for (const std::string text : {"null\n", "[]\n", "{}\n", "\"embedded host drawing\"\n", "33\n", "-0\n", "true\n"})
        EXPECT_EQ(resultOf(text).message,
                  "drawing: not a drawing file: its field \"format\" is not \"embedded host drawing\"")
            << text;
}

TEST_F(DrawingFileRobustness, AVeryLongToken_DoesNotMakeAVeryLongMessage)
{
    const std::string token(1'000'000, '7');
    expectRefusedOrValid(edited(exampleText(), "6378137.0", token), "digits");
    expectRefusedOrValid(edited(exampleText(), "6378137.0", "1." + token + "x"), "digits and a letter");
    expectRefusedOrValid(edited(exampleText(), "6378137.0", "0.0" + token + "e-400"), "a small number");
    expectRefusedOrValid(edited(exampleText(), "\"EXAMPLE\"", "\"" + token), "an endless string");
    expectRefusedOrValid(edited(exampleText(), "QeDbGeoData", token), "a class");
    expectRefusedOrValid(edited(exampleText(), "\"format\"", "\"" + token + "\""), "a field");
    EXPECT_LT(resultOf(edited(exampleText(), "6378137.0", token)).message.size(), 200U);
}

TEST_F(DrawingFileRobustness, ANumberOf1024Characters_IsNotTooLong)
{
    DrawingImage image;
    const std::string number = "6378137." + std::string(1'016, '0');
    EXPECT_EQ(drawingImageFrom(edited(exampleText(), "6378137.0", number), image).message, "");
    EXPECT_EQ(image, exampleImage());
    EXPECT_EQ(drawingImageFrom(edited(exampleText(), "6378137.0", number + "e0"), image).message, "");
}

TEST_F(DrawingFileRobustness, ANumberOf1025Characters_IsRefusedWithItsPlace)
{
    const std::string number = "6378137." + std::string(1'017, '0');
    const FileResult result = resultOf(edited(exampleText(), "6378137.0", number));
    EXPECT_EQ(result.status, Qeapp::eFileDamaged);
    EXPECT_EQ(result.message, "line 36, byte 2447: the number has more than 1024 digits");
}

TEST_F(DrawingFileRobustness, DigitsInAString_AreNoNumber)
{
    const std::string text = edited(exampleText(), "\"{\"", "\"\\\"" + std::string(5'000, '7') + "\\\\\"");
    EXPECT_EQ(resultOf(text).message, "");
}

TEST_F(DrawingFileRobustness, ADrawingWithManyObjects_IsReadAndWritten)
{
    DrawingImage image = exampleImage();
    for (Handle handle = 11; handle < 8'011; ++handle) {
        image.objects.push_back({handle, 1, {}, XrecordImage{{{1071, static_cast<std::int32_t>(handle)}}}});
        std::get<DictionaryImage>(image.objects[0].contents)
            .entries.emplace_back(L"k" + std::to_wstring(handle), handle);
    }
    image.nextHandle = 8'011;
    DrawingImage read;
    EXPECT_EQ(drawingImageFrom(drawingTextFrom(image), read).message, "");
    EXPECT_EQ(read, image);
}

} // namespace
} // namespace Tests
