// Something a test does in a process of its own, because it changes what belongs to the whole process.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <string>

namespace Tests {

/// What the function answers when it runs in a child process.
inline std::string runInChildProcess(const std::function<std::string()>& function)
{
    int ends[2] = {-1, -1};
    EXPECT_EQ(::pipe(ends), 0);
    const pid_t child = ::fork();
    EXPECT_GE(child, 0);
    if (child == 0) {
        const std::string answer = function();
        ::_exit(::write(ends[1], answer.data(), answer.size()) == static_cast<ssize_t>(answer.size()) ? 0 : 1);
    }
    ::close(ends[1]);
    std::string answer(4096, '\0');
    const ssize_t length = ::read(ends[0], answer.data(), answer.size());
    ::close(ends[0]);
    int status = -1;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    answer.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    return answer;
}

/// The same as a user without privileges, which the tests need not be run as.
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
