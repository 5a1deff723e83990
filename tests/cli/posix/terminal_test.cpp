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

/// The program with a terminal for all of its streams.
class OnATerminal : public CommandLineTest {
protected:
    /// Hears of everything that has appeared so far, and of the terminal's descriptor.
    using Spectator = std::function<void(const std::string& text, int terminal)>;

    /// What appears on the terminal, line ends as the terminal makes them.
    std::string shown(std::vector<std::string> arguments, const char* noColor = nullptr, const char* type = "xterm",
                      const Spectator& spectator = {})
    {
        arguments.insert(arguments.begin(), ORVELCS_PROGRAM);
        std::vector<char*> words;
        for (std::string& argument : arguments)
            words.push_back(argument.data());
        words.push_back(nullptr);
        const std::string folder = path("").string();
        int terminal = -1;
        const pid_t child = ::forkpty(&terminal, nullptr, nullptr, nullptr);
        if (child == -1)
            throw std::runtime_error("forkpty failed");
        if (child == 0)
            runIn(folder, words, noColor, type);
        const std::string text = readToEnd(terminal, spectator);
        ::close(terminal);
        ::waitpid(child, &ended, 0);
        return text;
    }

    int ended = 0; // how the last one did, as waitpid tells it

private:
    [[noreturn]] static void runIn(const std::string& folder, const std::vector<char*>& words, const char* noColor,
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

    static std::string readToEnd(int terminal, const Spectator& spectator)
    {
        std::string text;
        std::array<char, 4096> block{};
        for (;;) {
            const ssize_t length = ::read(terminal, block.data(), block.size());
            if (length <= 0) // a terminal whose program has gone answers with an error
                return text;
            text.append(block.data(), static_cast<std::size_t>(length));
            if (spectator)
                spectator(text, terminal);
        }
    }
};

TEST_F(OnATerminal, Batch_ShowsItsProgressAndTakesItAway)
{
    givenDrawing("a.qedb");
    givenDrawing("b.qedb");
    EXPECT_EQ(shown({"clear", "a.qedb", "b.qedb"}), "\r\x1B[K[1/2] a.qedb"
                                                    "\r\x1B[Ka.qedb: cleared\r\n"
                                                    "\r\x1B[K[2/2] b.qedb"
                                                    "\r\x1B[Kb.qedb: cleared\r\n");
}

TEST_F(OnATerminal, QuietBatch_ShowsNothing)
{
    givenDrawing("a.qedb");
    givenDrawing("b.qedb");
    EXPECT_EQ(shown({"clear", "--quiet", "a.qedb", "b.qedb"}), "");
}

TEST_F(OnATerminal, SingleDrawing_HasNoProgress)
{
    givenDrawing("a.qedb");
    EXPECT_EQ(shown({"clear", "a.qedb"}), "a.qedb: cleared\r\n");
}

TEST_F(OnATerminal, Heading_IsBold)
{
    givenDrawing("a.qedb");
    EXPECT_THAT(shown({"forms", "a.qedb"}), testing::StartsWith("\x1B[1ma.qedb, drawing version 33\x1B[0m\r\n"));
}

TEST_F(OnATerminal, Bytes_AreNotPrinted)
{
    const std::string refusal = "orvelcs: encode: standard output: is a terminal, and the output is bytes; -o writes "
                                "them into a file\r\n";
    EXPECT_EQ(shown({"encode", "EPSG:4326", "--drawing-version", "29"}), refusal);
    EXPECT_EQ(shown({"encode", "EPSG:4326", "--drawing-version", "29", "-o", "-"}), refusal);
    EXPECT_EQ(shown({"encode", "EPSG:4326", "--drawing-version", "29", "-q", "-o", "block"}), "");
}

TEST_F(OnATerminal, NoColor_IsPlain)
{
    givenDrawing("a.qedb");
    EXPECT_THAT(shown({"forms", "a.qedb", "--no-color"}), testing::StartsWith("a.qedb, drawing version 33\r\n"));
    EXPECT_THAT(shown({"forms", "a.qedb"}, "1"), testing::StartsWith("a.qedb, drawing version 33\r\n"));
}

TEST_F(OnATerminal, EmptyNoColor_CountsAsNotSet)
{
    givenDrawing("a.qedb");
    EXPECT_THAT(shown({"forms", "a.qedb"}, ""), testing::StartsWith("\x1B[1m"));
}

TEST_F(OnATerminal, ProgressWithoutEscapeSequences_IsOneLineForEach)
{
    givenDrawing("a.qedb");
    givenDrawing("b.qedb");
    const std::string plain = "[1/2] a.qedb\r\na.qedb: cleared\r\n[2/2] b.qedb\r\nb.qedb: cleared\r\n";
    EXPECT_EQ(shown({"clear", "--no-color", "a.qedb", "b.qedb"}), plain);
    EXPECT_EQ(shown({"clear", "a.qedb", "b.qedb"}, "1"), plain);
    EXPECT_EQ(shown({"clear", "a.qedb", "b.qedb"}, nullptr, "dumb"), plain);
}

TEST_F(OnATerminal, DumbTerminal_IsPlain)
{
    givenDrawing("a.qedb");
    EXPECT_THAT(shown({"forms", "a.qedb"}, nullptr, "dumb"), testing::StartsWith("a.qedb, drawing version 33\r\n"));
}

/// A command that needs what another process holds.
struct WaitingCommand {
    const char* name;
    std::vector<std::string> arguments;
    const char* waiting;
    const char* done;
};

const WaitingCommand kWaitingCommands[] = {
    {"OfTheUser",
     {"config", "set", "text", "--user", "--user-dir", "."},
     "waiting for the user's configuration, which another process is changing",
     "./TransformationSetting.xml: configuration stored\r\n"},
    {"OfADrawing", {"clear", "a.qedb"}, "waiting for a.qedb, which another process is changing", "a.qedb: cleared\r\n"},
};

class WaitOnATerminal : public OnATerminal, public testing::WithParamInterface<WaitingCommand> {
protected:
    WaitOnATerminal()
    {
        given("text", "<Item></Item>");
        givenDrawingWith("a.qedb", "EPSG:25832");
        sqlite3_open(path("a.qedb").string().c_str(), &drawing_);
        EXPECT_EQ(sqlite3_exec(drawing_, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    }
    ~WaitOnATerminal() override { sqlite3_close(drawing_); }

    static std::vector<std::string> waitingFor(const std::string& seconds)
    {
        std::vector<std::string> arguments = GetParam().arguments;
        arguments.insert(arguments.end(), {"--wait", seconds});
        return arguments;
    }
    /// Both locks are released when the waiting is shown.
    std::string shownUntilReleased(const char* type = "xterm")
    {
        return shown(waitingFor("60"), nullptr, type, [this](const std::string& text, int) {
            if (text.find(GetParam().waiting) == std::string::npos)
                return;
            user_.release();
            sqlite3_exec(drawing_, "ROLLBACK", nullptr, nullptr, nullptr); // again and again, which changes nothing
        });
    }

private:
    HeldLock user_{path("orvelcs.lock")};
    sqlite3* drawing_ = nullptr;
};

TEST_P(WaitOnATerminal, IsShownAndTakenAway)
{
    EXPECT_EQ(shownUntilReleased(), "\r\x1B[K" + std::string(GetParam().waiting) + "\r\x1B[K" + GetParam().done);
}

TEST_P(WaitOnATerminal, WithoutEscapeSequences_IsOneLine)
{
    EXPECT_EQ(shownUntilReleased("dumb"), GetParam().waiting + std::string("\r\n") + GetParam().done);
}

TEST_P(WaitOnATerminal, ThatIsShortOrQuiet_IsNotShown)
{
    EXPECT_THAT(shown(waitingFor("0.3")), testing::Not(testing::HasSubstr("waiting")));
    std::vector<std::string> quiet = waitingFor("0.7");
    quiet.push_back("--quiet");
    EXPECT_THAT(shown(quiet), testing::Not(testing::HasSubstr("waiting")));
    EXPECT_EQ(WEXITSTATUS(ended), 1);
}

TEST_P(WaitOnATerminal, EndsAtOnceWhenInterrupted)
{
    const auto interrupt = [](const std::string& text, int terminal) {
        if (text.ends_with(GetParam().waiting) && ::write(terminal, "\x03", 1) != 1)
            throw std::runtime_error("the terminal takes nothing");
    };
    EXPECT_THAT(shown(waitingFor("60"), nullptr, "xterm", interrupt),
                testing::Not(testing::HasSubstr(GetParam().done)));
    EXPECT_TRUE(WIFSIGNALED(ended));
    EXPECT_EQ(WTERMSIG(ended), SIGINT);
}

INSTANTIATE_TEST_SUITE_P(Each, WaitOnATerminal, testing::ValuesIn(kWaitingCommands),
                         [](const auto& command) { return std::string(command.param.name); });

} // namespace
} // namespace Tests
