#include "command_line_test.h"

namespace Tests {
namespace {

class CodecCommand : public CommandLineTest {
protected:
    /// Expects that packing gives these bytes, and that unpacking them gives the input.
    void expectPacked(const std::string& input, const std::string& packed) const
    {
        expectResult(run({"codec", "pack"}, input), 0, packed, "");
        expectResult(run({"codec", "unpack"}, packed), 0, input, "");
    }

    void expectMalformed(const std::string& packed) const
    {
        expectResult(run({"codec", "unpack"}, packed), 1, "",
                     "orvelcs: codec unpack: standard input: is malformed: it ends inside a packet\n");
    }
};

TEST_F(CodecCommand, ShortInput_IsPackedAsALiteral)
{
    expectPacked("a", "\x01"
                      "a");
    expectPacked("aa", "\x02"
                       "aa");
}

TEST_F(CodecCommand, EqualBytes_ArePackedAsARun)
{
    expectPacked("aaa", "\x83"
                        "a");
    expectPacked(std::string(128, 'a'), "\x80"
                                        "a");
}

TEST_F(CodecCommand, DifferentBytes_ArePackedAsLiterals)
{
    std::string input;
    for (int byte = 0; byte < 130; ++byte)
        input.push_back(static_cast<char>(byte));
    expectPacked(input, std::string(1, '\0') + input.substr(0, 128) + "\x02" + input.substr(128));
}

TEST_F(CodecCommand, LineEndsAndNuls_AreOrdinaryBytes)
{
    const std::string input("\r\n\0\x1A\n", 5);
    expectPacked(input, "\x05" + input);
}

TEST_F(CodecCommand, EmptyInput_GivesEmptyOutput)
{
    expectPacked("", "");
}

TEST_F(CodecCommand, LargeInput_IsRestoredByUnpacking)
{
    std::string input;
    for (unsigned index = 0; index < 2'000'000; ++index)
        input.push_back(static_cast<char>((index * 7919) >> (index % 13)));
    const ProgramResult packed = run({"codec", "pack"}, input);
    EXPECT_EQ(packed.status, 0);
    EXPECT_TRUE(run({"codec", "unpack"}, packed.output).output == input);
}

TEST_F(CodecCommand, InputThatEndsInsideAPacket_IsMalformed)
{
    expectMalformed("\x05\x01\x02");
    expectMalformed("\x83");
    expectMalformed(std::string("\x01"
                                "a\0",
                                3));
}

TEST_F(CodecCommand, JsonOption_IsWrongUsage)
{
    expectWrongUsageAsJson(run({"codec", "pack", "--json"}),
                           "orvelcs: codec pack: --json: has no place here; the output is bytes");
}

TEST_F(CodecCommand, InvalidArguments_AreWrongUsage)
{
    expectWrongUsage(run({"codec"}), "orvelcs: codec: COMMAND: is required; one of pack, unpack");
    expectWrongUsage(run({"codec", "pak"}), "orvelcs: codec: pak: no such command; the nearest is pack");
    expectWrongUsage(run({"codec", "pack", "file"}), "orvelcs: codec pack: file: one argument too many");
}

} // namespace
} // namespace Tests
