#include <array>
#include <csignal>
#include <functional>
#include <stdexcept>

#include <fcntl.h>
#include <pty.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include "cli/command_line_test.h"
#include "cli/posix/held_lock.h"

namespace Tests {
namespace {

/// Runs the program with a terminal as its input, output and error stream.
class Terminal : public CommandLineTest {
protected:
    /// Is called with everything that has appeared so far and the descriptor of the terminal.
    using Listener = std::function<void(const std::string& text, int terminal)>;

    /// Returns what appears on the terminal, with its line ends.
    std::string runOnTerminal(Arguments arguments, const char* noColor = nullptr, const char* type = "xterm",
                              const Listener& listener = {}, const winsize* size = nullptr)
    {
        arguments.insert(arguments.begin(), ORVELCS_PROGRAM);
        std::vector<char*> words;
        for (std::string& argument : arguments)
            words.push_back(argument.data());
        words.push_back(nullptr);
        const std::string folder = path("").string();
        int terminal = -1;
        const pid_t child = ::forkpty(&terminal, nullptr, nullptr, size);
        if (child == -1)
            throw std::runtime_error("forkpty failed");
        if (child == 0)
            execute(folder, words, noColor, type);
        const std::string text = readToEnd(terminal, listener);
        ::close(terminal);
        ::waitpid(child, &waitStatus, 0);
        return text;
    }

    int waitStatus = 0; // of the last run, as waitpid sets it

private:
    [[noreturn]] static void execute(const std::string& folder, const std::vector<char*>& words, const char* noColor,
                                     const char* type)
    {
        if (::chdir(folder.c_str()) == 0) {
            ::setenv("TERM", type, 1);
            ::unsetenv("NO_COLOR");
            if (noColor != nullptr)
                ::setenv("NO_COLOR", noColor, 1);
            ::execv(words.front(), words.data());
        }
        ::_exit(127);
    }

    static std::string readToEnd(int terminal, const Listener& listener)
    {
        std::string text;
        std::array<char, 4096> block{};
        for (;;) {
            const ssize_t length = ::read(terminal, block.data(), block.size());
            if (length <= 0) // reading fails when the program has ended
                return text;
            text.append(block.data(), static_cast<std::size_t>(length));
            if (listener)
                listener(text, terminal);
        }
    }
};

TEST_F(Terminal, Batch_ShowsItsProgressAndRemovesIt)
{
    givenDrawing("a.qedb");
    givenDrawing("b.qedb");
    EXPECT_EQ(runOnTerminal({"clear", "a.qedb", "b.qedb"}), "\r\x1B[K[1/2] a.qedb"
                                                            "\r\x1B[Ka.qedb: cleared\r\n"
                                                            "\r\x1B[K[2/2] b.qedb"
                                                            "\r\x1B[Kb.qedb: cleared\r\n");
}

TEST_F(Terminal, ProgressOfALongName_IsCutToTheWidthOfTheTerminal)
{
    const std::string name = "folder-of-a-project/" + std::string(30, 'x') + ".qedb";
    const winsize size{.ws_row = 24, .ws_col = 40, .ws_xpixel = 0, .ws_ypixel = 0};
    EXPECT_THAT(runOnTerminal({"show", name, name}, nullptr, "xterm", {}, &size),
                testing::StartsWith("\r\x1B[K[1/2] folder-of-a-project/xxxxxxxxxxxx…\r\x1B[K"));
}

TEST_F(Terminal, QuietBatch_ShowsNothing)
{
    givenDrawing("a.qedb");
    givenDrawing("b.qedb");
    EXPECT_EQ(runOnTerminal({"clear", "--quiet", "a.qedb", "b.qedb"}), "");
}

TEST_F(Terminal, SingleDrawing_ShowsNoProgress)
{
    givenDrawing("a.qedb");
    EXPECT_EQ(runOnTerminal({"clear", "a.qedb"}), "a.qedb: cleared\r\n");
}

TEST_F(Terminal, Heading_IsBold)
{
    givenDrawing("a.qedb");
    EXPECT_THAT(runOnTerminal({"forms", "a.qedb"}),
                testing::StartsWith("\x1B[1ma.qedb, drawing version 33\x1B[0m\r\n"));
}

TEST_F(Terminal, BinaryOutput_IsRefused)
{
    const std::string refusal = "orvelcs: encode: standard output: is a terminal, and the output is bytes; -o writes "
                                "them into a file\r\n";
    EXPECT_EQ(runOnTerminal({"encode", "EPSG:4326", "--drawing-version", "29"}), refusal);
    EXPECT_EQ(runOnTerminal({"encode", "EPSG:4326", "--drawing-version", "29", "-o", "-"}), refusal);
    EXPECT_EQ(runOnTerminal({"encode", "EPSG:4326", "--drawing-version", "29", "-q", "-o", "block"}), "");
}

TEST_F(Terminal, NoColor_RemovesTheFormatting)
{
    givenDrawing("a.qedb");
    EXPECT_THAT(runOnTerminal({"forms", "a.qedb", "--no-color"}),
                testing::StartsWith("a.qedb, drawing version 33\r\n"));
    EXPECT_THAT(runOnTerminal({"forms", "a.qedb"}, "1"), testing::StartsWith("a.qedb, drawing version 33\r\n"));
}

TEST_F(Terminal, Color_IsAutomaticUnlessAnOptionSaysOtherwise)
{
    givenDrawing("a.qedb");
    EXPECT_THAT(runOnTerminal({"forms", "a.qedb", "--color", "never"}), testing::StartsWith("a.qedb"));
    EXPECT_THAT(runOnTerminal({"forms", "a.qedb", "--color", "auto"}, "1"), testing::StartsWith("a.qedb"));
    EXPECT_THAT(runOnTerminal({"forms", "a.qedb", "--color", "always"}, "1"), testing::StartsWith("\x1B[1m"));
}

TEST_F(Terminal, Table_IsCutToTheWidthOfTheTerminal_AndJsonIsNot)
{
    const winsize size{.ws_row = 24, .ws_col = 50, .ws_xpixel = 0, .ws_ypixel = 0};
    const auto onTerminal = [&](const Arguments& arguments) {
        return runOnTerminal(arguments, nullptr, "xterm", {}, &size);
    };
    EXPECT_EQ(onTerminal({"catalog", "search", "EPSG:25832"}),
              "EPSG:25832  projected  ETRS89 / UT…  Europe betwe…\r\n");
    EXPECT_THAT(onTerminal({"catalog", "search", "EPSG:25832", "--json"}),
                testing::HasSubstr("\"ETRS89 / UTM zone 32N\""));
}

TEST_F(Terminal, Help_FitsTheWidthOfTheTerminal)
{
    const winsize size{.ws_row = 24, .ws_col = 40, .ws_xpixel = 0, .ws_ypixel = 0};
    EXPECT_THAT(runOnTerminal({"help"}, nullptr, "xterm", {}, &size),
                testing::HasSubstr("\r\nExit status: 0 done, 1 failed or\r\nrefused, 2"));
}

TEST_F(Terminal, EmptyNoColor_CountsAsNotSet)
{
    givenDrawing("a.qedb");
    EXPECT_THAT(runOnTerminal({"forms", "a.qedb"}, ""), testing::StartsWith("\x1B[1m"));
}

TEST_F(Terminal, ProgressWithoutEscapeSequences_IsOneLineForEachDrawing)
{
    givenDrawing("a.qedb");
    givenDrawing("b.qedb");
    const std::string plain = "[1/2] a.qedb\r\na.qedb: cleared\r\n[2/2] b.qedb\r\nb.qedb: cleared\r\n";
    EXPECT_EQ(runOnTerminal({"clear", "--no-color", "a.qedb", "b.qedb"}), plain);
    EXPECT_EQ(runOnTerminal({"clear", "a.qedb", "b.qedb"}, "1"), plain);
    EXPECT_EQ(runOnTerminal({"clear", "a.qedb", "b.qedb"}, nullptr, "dumb"), plain);
}

TEST_F(Terminal, DumbTerminal_HasNoFormatting)
{
    givenDrawing("a.qedb");
    EXPECT_THAT(runOnTerminal({"forms", "a.qedb"}, nullptr, "dumb"),
                testing::StartsWith("a.qedb, drawing version 33\r\n"));
}

/// A command that waits for another process.
struct WaitingCommand {
    const char* name;
    Arguments arguments;
    const char* waiting;
    const char* done;
};

const WaitingCommand kWaitingCommands[] = {
    {"User",
     {"config", "set", "text", "--user", "--user-dir", "."},
     "waiting for the user's configuration, which another process is changing",
     "./TransformationSetting.xml: configuration stored\r\n"},
    {"Drawing", {"clear", "a.qedb"}, "waiting for a.qedb, which another process is changing", "a.qedb: cleared\r\n"},
};

class WaitOnTerminal : public Terminal, public testing::WithParamInterface<WaitingCommand> {
protected:
    WaitOnTerminal()
    {
        given("text", "<Item></Item>");
        givenDrawingWith("a.qedb", "EPSG:25832");
        sqlite3_open(path("a.qedb").string().c_str(), &drawing_);
        EXPECT_EQ(sqlite3_exec(drawing_, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    }
    ~WaitOnTerminal() override { sqlite3_close(drawing_); }

    static Arguments waitingFor(const std::string& seconds)
    {
        return concatenate(GetParam().arguments, {"--wait", seconds});
    }
    /// Releases both locks when the message about waiting has appeared.
    std::string runUntilReleased(const char* type = "xterm")
    {
        return runOnTerminal(waitingFor("60"), nullptr, type, [this](const std::string& text, int) {
            if (text.find(GetParam().waiting) == std::string::npos)
                return;
            user_.release();
            sqlite3_exec(drawing_, "ROLLBACK", nullptr, nullptr, nullptr); // fails without effect after the first time
        });
    }

private:
    HeldLock user_{path(kLockFile)};
    sqlite3* drawing_ = nullptr;
};

TEST_P(WaitOnTerminal, WaitMessage_IsShownAndRemoved)
{
    EXPECT_EQ(runUntilReleased(), "\r\x1B[K" + std::string(GetParam().waiting) + "\r\x1B[K" + GetParam().done);
}

TEST_P(WaitOnTerminal, WaitMessageWithoutEscapeSequences_IsOneLine)
{
    EXPECT_EQ(runUntilReleased("dumb"), GetParam().waiting + std::string("\r\n") + GetParam().done);
}

TEST_P(WaitOnTerminal, ShortOrQuietWait_ShowsNoMessage)
{
    EXPECT_THAT(runOnTerminal(waitingFor("0.3")), testing::Not(testing::HasSubstr("waiting")));
    EXPECT_THAT(runOnTerminal(concatenate(waitingFor("0.7"), {"--quiet"})),
                testing::Not(testing::HasSubstr("waiting")));
    EXPECT_EQ(WEXITSTATUS(waitStatus), 1);
}

TEST_F(Terminal, InterruptInABatch_EndsTheWaitForADrawingAndIsReported)
{
    givenDrawing("a.qedb");
    givenDrawing("b.qedb");
    sqlite3* held = nullptr;
    sqlite3_open(path("b.qedb").string().c_str(), &held);
    EXPECT_EQ(sqlite3_exec(held, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    const auto interrupt = [](const std::string& text, int terminal) {
        if (text.ends_with("waiting for b.qedb, which another process is changing") &&
            ::write(terminal, "\x03", 1) != 1)
            throw std::runtime_error("the terminal cannot be written");
    };
    const std::string text =
        runOnTerminal({"clear", "a.qedb", "b.qedb", "b.qedb", "--wait", "60"}, nullptr, "xterm", interrupt);
    sqlite3_close(held);
    EXPECT_THAT(text, testing::HasSubstr("b.qedb: eFileLocked (55): another process holds it\r\n"));
    EXPECT_THAT(text, testing::EndsWith("orvelcs: clear: interrupted: after 2 of 3 drawings, 1 of which failed; 1 not "
                                        "opened\r\n"));
    EXPECT_EQ(WEXITSTATUS(waitStatus), 130);
}

TEST_P(WaitOnTerminal, Interrupt_EndsTheWait)
{
    const auto interrupt = [](const std::string& text, int terminal) {
        if (text.ends_with(GetParam().waiting) && ::write(terminal, "\x03", 1) != 1)
            throw std::runtime_error("the terminal cannot be written");
    };
    EXPECT_THAT(runOnTerminal(waitingFor("60"), nullptr, "xterm", interrupt),
                testing::Not(testing::HasSubstr(GetParam().done)));
    EXPECT_TRUE(WIFSIGNALED(waitStatus));
    EXPECT_EQ(WTERMSIG(waitStatus), SIGINT);
}

INSTANTIATE_TEST_SUITE_P(Each, WaitOnTerminal, testing::ValuesIn(kWaitingCommands),
                         [](const auto& command) { return std::string(command.param.name); });

} // namespace
} // namespace Tests
