// What only the command line of this system can hold: bytes that are not UTF-8, very long texts, and names of files
// that other systems do not have.
#include "cli/command_line_test.h"

namespace Tests {
namespace {

using Arguments = CommandLineTest;

TEST_F(Arguments, FileNameThatIsNotUtf8_IsToldOnce)
{
    const std::string name = "nope\xFF";
    const std::string shown = "nope\xEF\xBF\xBD";
    expectResult(run({"show", name}), 1, "",
                 "orvelcs: show: " + shown + ": eFileNotFound (50): No such file or directory\n");
}

TEST_F(Arguments, TextThatIsNotUtf8_IsWrongUsage)
{
    givenDrawing("plan.qedb");
    expectWrongUsage(run({"assign", "\xFF", "plan.qedb"}), "orvelcs: assign: CODE: is not UTF-8");
    expectWrongUsage(run({"encode", "\xFF", "--drawing-version", "29"}), "orvelcs: encode: CODE: is not UTF-8");
    expectWrongUsage(run({"forms", "plan.qedb", "--put", "geodata=\xFF"}),
                     "orvelcs: forms: --put: the value of geodata is not UTF-8");
}

TEST_F(Arguments, ChunkBeyondTheLargest_IsRefused)
{
    givenDrawing("plan.qedb");
    const std::string chain = "[{\"code\": 310, \"hex\": \"" + std::string(65536, '0') + "\"}]";
    expectResult(run({"forms", "plan.qedb", "--put", "xrecord-chain=" + chain}), 1, "",
                 "orvelcs: forms: plan.qedb: xrecord-chain: [0]: \"hex\" holds more than 32767 bytes\n");
}

TEST_F(Arguments, FileNameWithALineEnd_StaysOnOneLine)
{
    expectResult(run({"new", "a\nb.qedb"}), 0, "a\\nb.qedb: new drawing, version 33\n", "");
}

} // namespace
} // namespace Tests
