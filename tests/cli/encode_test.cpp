#include <sstream>

#include "command_line_test.h"
#include "embedded/base/hex.h"

namespace Tests {
namespace {

class EncodeCommand : public CommandLineTest {
protected:
    /// The bytes of a block that was written once and must stay the same in every version.
    static std::string goldenBlock(const std::string& name)
    {
        std::istringstream lines(
            readFile(std::filesystem::path(ORVEL_SOURCE_DIR) / "tests" / "coordsys" / "golden" / (name + ".hex")));
        std::string bytes;
        for (std::string line; std::getline(lines, line);)
            bytes += *Embedded::bytesFromHex(line.substr(0, line.find(' ')));
        return bytes;
    }

    void expectGolden(const std::string& code, const std::string& name) const
    {
        expectResult(run({"encode", code, "--drawing-version", "29"}), 0, goldenBlock(name + ".packed"), "");
        expectResult(run({"encode", code, "--drawing-version", "30"}), 0, goldenBlock(name + ".text"), "");
    }
};

TEST_F(EncodeCommand, EachKindOfSystem_HasTheBytesOfItsGoldenBlock)
{
    ASSERT_GT(goldenBlock("projected.packed").size(), 100U);
    expectGolden("EPSG:25832", "projected");
    expectGolden("EPSG:4326", "geographic");
    expectGolden("EPSG:4979", "geographic_3d");
    expectGolden("EPSG:7415", "compound");
    expectGolden("LOCAL:METRE", "local");
}

TEST_F(EncodeCommand, EveryVersionOfAForm_GivesTheSameBytes)
{
    EXPECT_EQ(run({"encode", "EPSG:4326", "--drawing-version", "21"}).output, goldenBlock("geographic.packed"));
    EXPECT_EQ(run({"encode", "EPSG:4326", "--drawing-version", "33"}).output, goldenBlock("geographic.text"));
}

TEST_F(EncodeCommand, FileThatExists_IsNotOverwritten)
{
    given("block", "something else");
    expectResult(run({"encode", "EPSG:4326", "--drawing-version", "29", "-o", "block"}), 1, "",
                 "orvelcs: encode: block: exists; --force overwrites it\n");
    EXPECT_EQ(contents("block"), "something else");
    EXPECT_EQ(files(), std::vector<std::string>{"block"});
}

TEST_F(EncodeCommand, ForceOption_OverwritesTheFile)
{
    given("block", "something else");
    ASSERT_EQ(run({"encode", "EPSG:4326", "--drawing-version", "29", "-o", "block", "--force"}).status, 0);
    EXPECT_EQ(contents("block"), goldenBlock("geographic.packed"));
    EXPECT_EQ(files(), std::vector<std::string>{"block"});
}

TEST_F(EncodeCommand, OutputOption_WritesTheBytesIntoAFile)
{
    expectResult(run({"encode", "EPSG:4326", "--drawing-version", "29", "-o", "block"}), 0,
                 "block: EPSG:4326 for drawing version 29, " + std::to_string(goldenBlock("geographic.packed").size()) +
                     " bytes\n",
                 "");
    EXPECT_EQ(contents("block"), goldenBlock("geographic.packed"));
    EXPECT_EQ(files(), std::vector<std::string>{"block"});
}

TEST_F(EncodeCommand, Json_HasTheFileAndTheNumberOfBytes)
{
    EXPECT_EQ(runForJson({"encode", "epsg:4326", "--drawing-version", "33", "-o", "block"}),
              Json({{"file", "block"}, {"bytes", goldenBlock("geographic.text").size()}}));
    EXPECT_EQ(contents("block"), goldenBlock("geographic.text"));
}

TEST_F(EncodeCommand, DashAsOutput_WritesToStandardOutput)
{
    expectResult(run({"encode", "LOCAL:METRE", "--drawing-version", "29", "-o", "-"}), 0, goldenBlock("local.packed"),
                 "");
}

TEST_F(EncodeCommand, UnknownCode_ExitsWithStatusThreeAndSuggestsTheNearest)
{
    const ProgramResult result = run({"encode", "EPGS:25832", "--drawing-version", "29", "-o", "block"});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors,
                testing::StartsWith("orvelcs: encode: EPGS:25832: the catalog has no such code; the nearest "));
    EXPECT_THAT(result.errors, testing::HasSubstr("EPSG:25832"));
    EXPECT_TRUE(files().empty());
}

TEST_F(EncodeCommand, UnknownCode_HasNullBytesInJson)
{
    const Json json = runForJson({"encode", "NO:1", "--drawing-version", "29", "-o", "block"}, 3);
    EXPECT_EQ(json["file"], "block");
    EXPECT_EQ(json["bytes"], nullptr);
    EXPECT_EQ(json["error"]["what"], "NO:1");
    EXPECT_EQ(json["error"]["code"], 35);
    EXPECT_EQ(json["error"]["name"], "statusNotFound");
    EXPECT_THAT(json["error"]["message"].get<std::string>(), testing::StartsWith("the catalog has no such code"));
}

TEST_F(EncodeCommand, OutputThatIsAFolder_IsRefused)
{
    std::filesystem::create_directory(path("folder"));
    expectResult(run({"encode", "EPSG:4326", "--drawing-version", "29", "-o", "folder"}), 1, "",
                 "orvelcs: encode: folder: eFileWriteFailed (54): cannot be written: Is a directory\n");
}

TEST_F(EncodeCommand, JsonWithoutAnOutputFile_IsWrongUsage)
{
    expectWrongUsageAsJson(
        run({"encode", "EPSG:4326", "--drawing-version", "29", "--json"}),
        "orvelcs: encode: --json: has no place here; the output is bytes, unless they go into a file");
}

TEST_F(EncodeCommand, MissingOrInvalidArguments_AreWrongUsage)
{
    expectWrongUsage(run({"encode"}), "orvelcs: encode: SYSTEM: is required");
    expectWrongUsage(run({"encode", "EPSG:4326"}), "orvelcs: encode: --drawing-version: is required");
    expectWrongUsage(run({"encode", "EPSG:4326", "--drawing-version", "34"}),
                     "orvelcs: encode: --drawing-version: expected a whole number from 21 to 33, found 34");
    expectWrongUsage(run({"encode", "", "--drawing-version", "29"}), "orvelcs: encode: SYSTEM: is empty");
}

} // namespace
} // namespace Tests
