// The program reads and writes pipes, a line at a time.
#include "cli/command_line_test.h"
#include "cli/win32/started_program.h"

namespace Tests {
namespace {

class InteractiveTransform : public CommandLineTest {
protected:
    static void writeLine(const Embedded::FileHandle& pipe, const std::string& line)
    {
        DWORD written = 0;
        ASSERT_TRUE(WriteFile(pipe.get(), line.data(), static_cast<DWORD>(line.size()), &written, nullptr));
        ASSERT_EQ(written, line.size());
    }
    /// Waits for the next line, or for the end of the program.
    static std::string readLine(const Embedded::FileHandle& pipe)
    {
        std::string line;
        char character = '\0';
        DWORD read = 0;
        while (!line.ends_with('\n') && ReadFile(pipe.get(), &character, 1, &read, nullptr) && read == 1)
            line += character;
        return line;
    }
};

TEST_F(InteractiveTransform, EachTransformedPoint_IsPrintedBeforeTheNextIsRead)
{
    ProgramRun programRun;
    programRun.arguments = {"transform", "-q", "EPSG:4258", "EPSG:25832"};
    Pipe points(Pipe::Own::writing);
    Pipe answers(Pipe::Own::reading);
    const Embedded::FileHandle errors = openInherited(path("errors"), GENERIC_WRITE, CREATE_ALWAYS);
    const StartedProgram program(programRun, path(""), {points.reading.get(), answers.writing.get(), errors.get()});
    points.reading.close();
    answers.writing.close();

    writeLine(points.writing, "0 9\r\n");
    EXPECT_EQ(readLine(answers.reading), "500000.000000 0.000000\n");
    writeLine(points.writing, "0 9 5\n");
    EXPECT_EQ(readLine(answers.reading), "500000.000000 0.000000 5.000000\n");
    points.writing.close();
    EXPECT_EQ(readLine(answers.reading), "");
    EXPECT_EQ(program.wait(), 0);
}

} // namespace
} // namespace Tests
