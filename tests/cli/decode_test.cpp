#include "command_line_test.h"
#include "embedded/base/hex.h"

namespace Tests {
namespace {

class DecodeCommand : public CommandLineTest {
protected:
    const std::string kMessage = "orvelcs: decode: standard input: eInvalidInput (3): holds no definition, neither "
                                 "packed nor as text";

    std::string encoded(const std::string& code, const std::string& version) const
    {
        const ProgramResult result = run({"encode", code, "--drawing-version", version});
        EXPECT_EQ(result.status, 0) << result.errors;
        return result.output;
    }
    void expectRefused(const std::string& block) const { expectResult(run({"decode"}, block), 1, "", kMessage + "\n"); }
    void expectRefusedAsUnterminated(const std::string& block) const
    {
        expectResult(run({"decode"}, block), 1, "", kMessage + ", which would end with a NUL\n");
    }
    /// Converts ASCII to UTF-16 little-endian.
    static std::string utf16le(const std::string& ascii)
    {
        std::string bytes;
        for (const char character : ascii)
            bytes += {character, '\0'};
        return bytes;
    }
};

TEST_F(DecodeCommand, PackedAndTextForms_AreDecoded)
{
    const std::string line = "CoordinateReferenceSystemDefinition  EPSG:25832  ETRS89 / UTM zone 32N\n";
    expectResult(run({"decode"}, encoded("EPSG:25832", "29")), 0, line, "");
    expectResult(run({"decode", "-"}, encoded("EPSG:25832", "33")), 0, line, "");
}

TEST_F(DecodeCommand, Json_IsAnArrayOfDefinitions)
{
    given("block", encoded("EPSG:4326", "29"));
    EXPECT_EQ(
        runForJson({"decode", "block"}),
        Json::array({{{"type", "CoordinateReferenceSystemDefinition"}, {"code", "EPSG:4326"}, {"name", "WGS 84"}}}));
}

TEST_F(DecodeCommand, TextOfADrawing_IncludesDatumAndEllipsoid)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    const std::string text = runForJson({"forms", "plan.qedb"})["geoData"]["text"].get<std::string>();
    expectResult(run({"decode"}, utf16le(text) + std::string(2, '\0')), 0,
                 "CoordinateReferenceSystemDefinition  EPSG:25832  ETRS89 / UTM zone 32N\n"
                 "DatumDefinition                      EPSG:6258   European Terrestrial Reference System 1989\n"
                 "EllipsoidDefinition                  EPSG:7019   GRS 1980\n",
                 "");
}

TEST_F(DecodeCommand, PackedBytesOfADrawing_AreDecoded)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    ASSERT_EQ(run({"convert", "plan.qedb", "--to", "29"}).status, 0);
    const Json chain = runForJson({"forms", "plan.qedb"})["definitionXrecord"]["chain"];
    ASSERT_EQ(chain.size(), 11U); // the layout and groups of 2, 1 and 1 chunks
    const std::string datum = *Embedded::bytesFromHex(chain[6]["hex"].get<std::string>());
    expectResult(run({"decode"}, datum), 0, "DatumDefinition  EPSG:6258  European Terrestrial Reference System 1989\n",
                 "");
    const std::string system =
        *Embedded::bytesFromHex(chain[2]["hex"].get<std::string>() + chain[3]["hex"].get<std::string>());
    EXPECT_EQ(system, encoded("EPSG:25832", "29"));
}

TEST_F(DecodeCommand, BytesAfterTheEndOfAText_AreIgnored)
{
    const std::string line = "CoordinateReferenceSystemDefinition  EPSG:4326  WGS 84\n";
    expectResult(run({"decode"}, encoded("EPSG:4326", "33") + "x"), 0, line, "");
    expectResult(run({"decode"}, encoded("EPSG:4326", "33") + std::string(100'000, 'x')), 0, line, "");
}

TEST_F(DecodeCommand, EmptyInput_IsRefused)
{
    expectResult(run({"decode"}), 1, "", "orvelcs: decode: standard input: is empty\n");
}

TEST_F(DecodeCommand, ShortInput_IsRefused)
{
    for (const std::string block : {"x", "xy", "xyz", "\x01", "{"})
        expectRefusedAsUnterminated(block);
    expectRefusedAsUnterminated(std::string(1, '\0'));
    expectRefused(std::string(2, '\0'));
    expectRefused(std::string(3, '\0'));
}

TEST_F(DecodeCommand, TruncatedText_IsRefused)
{
    const std::string block = encoded("EPSG:4326", "33");
    for (const std::size_t missing : {1U, 2U, 3U, 4U, 100U, 101U}) {
        SCOPED_TRACE(missing);
        expectRefusedAsUnterminated(block.substr(0, block.size() - missing));
    }
}

TEST_F(DecodeCommand, NulAcrossTwoCodeUnits_DoesNotEndTheText)
{
    expectRefusedAsUnterminated(std::string("x\0\0yz\0\0", 7));
}

TEST_F(DecodeCommand, TruncatedOrExtendedPackedBytes_AreRefused)
{
    const std::string block = encoded("EPSG:4326", "29");
    for (std::size_t length = 1; length < block.size(); length += block.size() / 7)
        EXPECT_EQ(run({"decode"}, block.substr(0, length)).status, 1) << length;
    EXPECT_EQ(run({"decode"}, block + "x").status, 1);
}

TEST_F(DecodeCommand, TextWithoutADefinition_IsRefused)
{
    expectRefused(utf16le("{\"definitions\": []}") + std::string(2, '\0'));
    expectRefused(utf16le("no definition") + std::string(2, '\0'));
}

// These bytes would unpack to 64 times their size.
TEST_F(DecodeCommand, LargeInput_IsRefused)
{
    expectResult(run({"decode"}, std::string(20'000'000, '\x80')), 1, "", kMessage + ", which would end with a NUL\n");
}

TEST_F(DecodeCommand, UnreadableFile_IsReported)
{
    std::filesystem::create_directory(path("folder"));
    expectResult(run({"decode", "missing"}), 1, "",
                 "orvelcs: decode: missing: cannot be opened: No such file or directory\n");
    expectResult(run({"decode", "folder"}), 1, "", "orvelcs: decode: folder: is a folder\n");
}

TEST_F(DecodeCommand, SecondFile_IsWrongUsage)
{
    expectWrongUsage(run({"decode", "a", "b"}), "orvelcs: decode: b: one argument too many");
}

} // namespace
} // namespace Tests
