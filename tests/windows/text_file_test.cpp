#include "windows/text_file_test.h"

#include <cerrno>
#include <cstdlib>

#include "embedded/diagnostics/fault_injection.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;
using Embedded::ScopedFault;
using TextFile = TextFileTest;

TEST_F(TextFile, WrittenLine_EndsWithCarriageReturnAndLineFeed)
{
    write("one\ntwo\n\nthree");
    EXPECT_EQ(readFile(file), "one\r\ntwo\r\n\r\nthree");
}

TEST_F(TextFile, CarriageReturnInTheText_IsWrittenUnchanged)
{
    write("a\r\nb\rc");
    EXPECT_EQ(readFile(file), "a\r\r\nb\rc");
}

TEST_F(TextFile, Mode_DecidesWhetherTheFileIsTruncated)
{
    write("old\n");
    write("new\n", L"wt");
    EXPECT_EQ(readFile(file), "new\r\n");
    write("more\n", L"a");
    write("yet more\n", L"at");
    EXPECT_EQ(readFile(file), "new\r\nmore\r\nyet more\r\n");
}

TEST_F(TextFile, BinaryMode_TranslatesNothing)
{
    write("a\nb\r\n", L"wb");
    EXPECT_EQ(readFile(file), "a\nb\r\n");
    EXPECT_EQ(read(L"rb"), "a\nb\r\n");
    write("\n", L"ab");
    EXPECT_EQ(readFile(file), "a\nb\r\n\n");
}

TEST_F(TextFile, Reading_DropsOnlyTheCarriageReturnOfALineEnd)
{
    writeFile(file, "a\r\nb\nc\rd\r\r\ne\r");
    EXPECT_EQ(read(), "a\nb\nc\rd\r\ne\r");
    EXPECT_EQ(read(L"rt"), "a\nb\nc\rd\r\ne\r");
}

TEST_F(TextFile, Reading_EndsAtControlZ)
{
    writeFile(file, "a\r\nb\x1A"
                    "c\r\n");
    EXPECT_EQ(read(), "a\nb");
    EXPECT_EQ(read(L"rt"), "a\nb");
    EXPECT_EQ(read(L"rb"), "a\r\nb\x1A"
                           "c\r\n");
    writeFile(file, "\x1A");
    EXPECT_EQ(read(), "");
}

TEST_F(TextFile, LineEndAcrossTwoBuffers_IsTranslated)
{
    for (const std::size_t length : {65'534U, 65'535U, 65'536U, 131'071U}) {
        writeFile(file, std::string(length, 'x') + "\r\ny\r" + std::string(65'535, 'z') + "\r");
        EXPECT_TRUE(read() == std::string(length, 'x') + "\ny\r" + std::string(65'535, 'z') + "\r") << length;
    }
}

TEST_F(TextFile, UnbufferedStream_ReadsTheSame)
{
    writeFile(file, "a\r\nb\rc\r\n");
    std::FILE* const stream = open(L"r");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(std::setvbuf(stream, nullptr, _IONBF, 0), 0);
    std::string text;
    for (int byte = std::fgetc(stream); byte != EOF; byte = std::fgetc(stream))
        text += static_cast<char>(byte);
    EXPECT_EQ(std::fclose(stream), 0);
    EXPECT_EQ(text, "a\nb\rc\n");
}

TEST_F(TextFile, Lines_AreReadOneByOne)
{
    writeFile(file, "one\r\n\r\nlast");
    std::FILE* const stream = open(L"r");
    ASSERT_NE(stream, nullptr);
    char line[16];
    EXPECT_STREQ(std::fgets(line, sizeof line, stream), "one\n");
    EXPECT_STREQ(std::fgets(line, sizeof line, stream), "\n");
    EXPECT_STREQ(std::fgets(line, sizeof line, stream), "last");
    EXPECT_EQ(std::fgets(line, sizeof line, stream), nullptr);
    EXPECT_NE(std::feof(stream), 0);
    EXPECT_EQ(std::fclose(stream), 0);
}

TEST_F(TextFile, PositionOfTheEnd_IsTheLengthOfTheFile)
{
    for (const std::string& text :
         {std::string("a\r\nb\r\n"), std::string("a\x1A\r\n"), std::string(70'000, 'x'), std::string()}) {
        writeFile(file, text);
        std::FILE* const stream = open(L"rt");
        ASSERT_NE(stream, nullptr);
        EXPECT_EQ(std::fseek(stream, 0, SEEK_END), 0);
        EXPECT_EQ(std::ftell(stream), static_cast<long>(text.size()));
        EXPECT_EQ(std::fclose(stream), 0);
    }
}

TEST_F(TextFile, RewoundStream_ReadsFromTheBeginning)
{
    writeFile(file, "a\r\nb\x1A"
                    "c");
    std::FILE* const stream = open(L"rt");
    ASSERT_NE(stream, nullptr);
    for (int time = 0; time < 3; ++time) {
        char text[16]{};
        EXPECT_EQ(std::fread(text, 1, sizeof text, stream), 3);
        EXPECT_STREQ(text, "a\nb");
        std::rewind(stream);
    }
    EXPECT_EQ(std::fclose(stream), 0);
}

TEST_F(TextFile, FlushedText_IsOnDisk)
{
    std::FILE* const stream = open(L"w");
    ASSERT_NE(stream, nullptr);
    EXPECT_GE(std::fputs("line\n", stream), 0);
    EXPECT_EQ(std::fflush(stream), 0);
    EXPECT_EQ(readFile(file), "line\r\n");
    EXPECT_EQ(std::fclose(stream), 0);
}

TEST_F(TextFile, ManyLines_AreWrittenAndRead)
{
    std::string text;
    for (int line = 0; line < 50'000; ++line)
        text += std::to_string(line) + '\n';
    write(text);
    EXPECT_EQ(fs::file_size(file), text.size() + 50'000);
    EXPECT_TRUE(read() == text);
}

TEST_F(TextFile, Backslash_SeparatesFolders)
{
    fs::create_directory(folder.path() / "a");
    std::FILE* const stream = _wfsopen((wideName(folder.path()) + L"\\a\\\\b.txt").c_str(), L"w", _SH_DENYNO);
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(std::fclose(stream), 0);
    EXPECT_TRUE(fs::exists(folder.path() / "a/b.txt"));
}

TEST_F(TextFile, NameOutsideAscii_IsUtf8)
{
    file = folder.path() / "K\xC3\xB8ge \xF0\x9F\x8C\x8D";
    write("x");
    EXPECT_EQ(readFile(file), "x");
}

TEST_F(TextFile, MissingFile_IsNotOpened)
{
    EXPECT_EQ(open(L"r"), nullptr);
    EXPECT_EQ(errno, ENOENT);
    file = folder.path() / "missing/settings.xml";
    EXPECT_EQ(open(L"w"), nullptr);
    EXPECT_FALSE(fs::exists(folder.path() / "missing"));
}

TEST_F(TextFile, Folder_IsNotOpened)
{
    file = folder.path();
    EXPECT_EQ(open(L"r"), nullptr);
    EXPECT_EQ(errno, EACCES);
    EXPECT_EQ(open(L"w"), nullptr);
}

TEST_F(TextFile, OpenFile_IsCounted)
{
    const Embedded::ResourceCounts before = Embedded::ResourceCounters::now();
    std::FILE* const stream = open(L"w");
    EXPECT_EQ(Embedded::ResourceCounters::difference(before, Embedded::ResourceCounters::now()), "1 open file");
    EXPECT_EQ(std::fclose(stream), 0);
    EXPECT_EQ(Embedded::ResourceCounters::now(), before);
}

TEST_F(TextFile, InjectedFault_FailsToOpen)
{
    const ScopedFault fault({.call = "_wfsopen", .code = {}});
    EXPECT_EQ(open(L"w"), nullptr);
    EXPECT_EQ(errno, EACCES);
    EXPECT_FALSE(fs::exists(file));
}

TEST_F(TextFile, InjectedFault_FailsToRead)
{
    writeFile(file, "text");
    std::FILE* const stream = open(L"r");
    const ScopedFault fault({.call = "_wfsopen.read", .code = {}});
    char bytes[4];
    EXPECT_EQ(std::fread(bytes, 1, sizeof bytes, stream), 0U);
    EXPECT_NE(std::ferror(stream), 0);
    EXPECT_EQ(std::feof(stream), 0);
    static_cast<void>(std::fclose(stream)); // it may report the failure again
}

TEST_F(TextFile, InjectedFault_FailsToWrite)
{
    std::FILE* const stream = open(L"w");
    EXPECT_GE(std::fputs("text", stream), 0);
    const ScopedFault fault({.call = "_wfsopen.write", .code = {}});
    EXPECT_EQ(std::fflush(stream), EOF);
    EXPECT_NE(std::ferror(stream), 0);
    static_cast<void>(std::fclose(stream)); // it may try to write the text again
}

TEST_F(TextFile, InjectedFault_FailsToCloseButClosesTheFile)
{
    std::FILE* const stream = open(L"w");
    const ScopedFault fault({.call = "_wfsopen.close", .code = {}});
    EXPECT_EQ(std::fclose(stream), EOF);
}

} // namespace
} // namespace Tests
