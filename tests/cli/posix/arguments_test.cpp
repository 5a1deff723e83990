// Arguments that only this system allows: bytes that are not UTF-8, very long texts, and unusual names of files.
#include <sys/stat.h>

#include "cli/command_line_test.h"

namespace Tests {
namespace {

using PosixArguments = CommandLineTest;

TEST_F(PosixArguments, FileNameThatIsNotUtf8_IsPrintedEscaped)
{
    expectResult(run({"show", "nope\xFF\xC3-\xC3\xA9"}), 1, "",
                 "orvelcs: show: nope\\xFF\\xC3-\xC3\xA9: eFileNotFound (50): No such file or directory\n");
    expectResult(run({"new", "a\xFF.qedb"}), 0, "a\\xFF.qedb: new drawing, version 33\n", "");
    EXPECT_EQ(runForJson({"show", "a\xFF.qedb"}, 3)["file"], "a\xEF\xBF\xBD.qedb");
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

TEST_F(PosixArguments, ControlCharactersOfAFileName_ArePrintedEscaped)
{
    const std::string name = "a\x1B[31m\r\t\n.qedb";
    expectResult(run({"new", name}), 0, "a\\x1B[31m\\r\\t\\n.qedb: new drawing, version 33\n", "");
    EXPECT_THAT(run({"forms", name}).output, testing::StartsWith("a\\x1B[31m\\r\\t\\n.qedb, drawing version 33\n"));
    EXPECT_EQ(runForJson({"show", name}, 3)["file"], name);
}

TEST_F(PosixArguments, FolderPipeAndDevice_AreNamed)
{
    std::filesystem::create_directory(path("folder"));
    ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
    const std::string damaged = ": eFileDamaged (51): ";
    for (const std::string command : {"show", "clear", "check", "dump", "forms"}) {
        const std::string begin = "orvelcs: " + command + ": ";
        expectResult(run({command, "folder"}), 1, "", begin + "folder" + damaged + "is a folder\n");
        expectResult(run({command, "pipe"}), 1, "", begin + "pipe" + damaged + "is a pipe, not a regular file\n");
        expectResult(run({command, "/dev/null"}), 1, "",
                     begin + "/dev/null" + damaged + "is a device, not a regular file\n");
    }
}

TEST_F(PosixArguments, FileNameWithALineEnd_IsPrintedOnOneLine)
{
    expectResult(run({"new", "a\nb.qedb"}), 0, "a\\nb.qedb: new drawing, version 33\n", "");
}

} // namespace
} // namespace Tests
