// Work that is killed.
#pragma once

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Tests {

/// Runs the work in a child process, which must be killed before the work ends.
template <class Work>
void runUntilKilled(Work work)
{
    const pid_t child = ::fork();
    EXPECT_GE(child, 0);
    if (child == 0) {
        work();
        ::_exit(0);
    }
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << status;
}

} // namespace Tests
