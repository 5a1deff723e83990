// Runs a function in a child process, because it changes the state of its process.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <string>

namespace Tests {

/// Returns the result of the function. The child process must succeed.
inline std::string runInChildProcess(const std::function<std::string()>& function)
{
    int ends[2] = {-1, -1};
    EXPECT_EQ(::pipe(ends), 0);
    const pid_t child = ::fork();
    EXPECT_GE(child, 0);
    if (child == 0) {
        const std::string result = function();
        ::_exit(::write(ends[1], result.data(), result.size()) == static_cast<ssize_t>(result.size()) ? 0 : 1);
    }
    ::close(ends[1]);
    std::string result(4096, '\0');
    const ssize_t length = ::read(ends[0], result.data(), result.size());
    ::close(ends[0]);
    int status = -1;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    result.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    return result;
}

/// Runs the function in a child process as a user without privileges.
inline std::string runAsOrdinaryUser(const std::function<std::string()>& function)
{
    return runInChildProcess([&]() -> std::string {
        constexpr unsigned kNobody = 65'534;
        if (::geteuid() == 0 && (::setegid(kNobody) != 0 || ::seteuid(kNobody) != 0))
            return "cannot become an ordinary user";
        return function();
    });
}

} // namespace Tests
