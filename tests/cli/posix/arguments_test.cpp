// Arguments that only this system allows: bytes that are not UTF-8, very long texts, and unusual names of files.
#include "cli/command_line_test.h"

namespace Tests {
namespace {

using PosixArguments = CommandLineTest;

TEST_F(PosixArguments, FileNameThatIsNotUtf8_IsPrintedWithAReplacementCharacter)
{
    const std::string name = "nope\xFF";
    const std::string shown = "nope\xEF\xBF\xBD";
    expectResult(run({"show", name}), 1, "",
                 "orvelcs: show: " + shown + ": eFileNotFound (50): No such file or directory\n");
}

TEST_F(PosixArguments, TextThatIsNotUtf8_IsWrongUsage)
{
    givenDrawing("plan.qedb");
    expectWrongUsage(run({"assign", "\xFF", "plan.qedb"}), "orvelcs: assign: SYSTEM: is not UTF-8");
    expectWrongUsage(run({"encode", "\xFF", "--drawing-version", "29"}), "orvelcs: encode: SYSTEM: is not UTF-8");
    expectWrongUsage(run({"forms", "plan.qedb", "--put", "geodata=\xFF"}),
                     "orvelcs: forms: --put: the value of geodata is not UTF-8");
}

TEST_F(PosixArguments, OverlongChunk_IsRefused)
{
    givenDrawing("plan.qedb");
    const std::string chain = "[{\"code\": 310, \"hex\": \"" + std::string(65536, '0') + "\"}]";
    expectResult(run({"forms", "plan.qedb", "--put", "xrecord-chain=" + chain}), 1, "",
                 "orvelcs: forms: plan.qedb: xrecord-chain: [0]: \"hex\" holds more than 32767 bytes\n");
}

TEST_F(PosixArguments, FileNameWithALineEnd_IsPrintedOnOneLine)
{
    expectResult(run({"new", "a\nb.qedb"}), 0, "a\\nb.qedb: new drawing, version 33\n", "");
}

} // namespace
} // namespace Tests
