// A process beside the test's process that runs commands. It must start before the test opens a file with SQLite,
// because a child process mistakes the locks of its parent for its own.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <functional>
#include <string>

namespace Tests {

class OtherProcess {
public:
    /// `execute` runs in the other process. It returns less than 4,096 bytes.
    explicit OtherProcess(const std::function<std::string(char)>& execute)
    {
        std::array<int, 2> commands{-1, -1};
        std::array<int, 2> results{-1, -1};
        EXPECT_EQ(::pipe(commands.data()), 0);
        EXPECT_EQ(::pipe(results.data()), 0);
        process_ = ::fork();
        EXPECT_GE(process_, 0);
        ::close(commands[process_ == 0 ? 1 : 0]);
        ::close(results[process_ == 0 ? 0 : 1]);
        if (process_ == 0) {
            for (char command = 0; ::read(commands[0], &command, 1) == 1;) {
                const std::string result = execute(command);
                if (::write(results[1], result.data(), result.size()) != static_cast<ssize_t>(result.size()))
                    break;
            }
            ::_exit(0);
        }
        commands_ = commands[1];
        results_ = results[0];
    }
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;
    ~OtherProcess()
    {
        ::close(commands_);
        ::close(results_);
        int status = -1;
        EXPECT_EQ(::waitpid(process_, &status, 0), process_);
        EXPECT_EQ(status, 0);
    }

    std::string run(char command) const
    {
        EXPECT_EQ(::write(commands_, &command, 1), 1);
        std::string result(4096, '\0');
        const ssize_t length = ::read(results_, result.data(), result.size());
        result.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
        return result;
    }

private:
    pid_t process_ = -1;
    int commands_ = -1;
    int results_ = -1;
};

} // namespace Tests
