// A process that lives beside the test's and does what it is asked to. It is started before the test opens anything: a
// process that is made while SQLite has a file open takes its parent's locks for its own.
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
    /// The function is called there, with what it is asked, and answers with less than 4,096 bytes.
    explicit OtherProcess(const std::function<std::string(char)>& answer)
    {
        std::array<int, 2> asked{-1, -1};
        std::array<int, 2> answered{-1, -1};
        EXPECT_EQ(::pipe(asked.data()), 0);
        EXPECT_EQ(::pipe(answered.data()), 0);
        process_ = ::fork();
        EXPECT_GE(process_, 0);
        ::close(asked[process_ == 0 ? 1 : 0]);
        ::close(answered[process_ == 0 ? 0 : 1]);
        if (process_ == 0) {
            for (char question = 0; ::read(asked[0], &question, 1) == 1;) {
                const std::string text = answer(question);
                if (::write(answered[1], text.data(), text.size()) != static_cast<ssize_t>(text.size()))
                    break;
            }
            ::_exit(0);
        }
        questions_ = asked[1];
        answers_ = answered[0];
    }
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;
    ~OtherProcess()
    {
        ::close(questions_);
        ::close(answers_);
        int status = -1;
        EXPECT_EQ(::waitpid(process_, &status, 0), process_);
        EXPECT_EQ(status, 0);
    }

    std::string ask(char question) const
    {
        EXPECT_EQ(::write(questions_, &question, 1), 1);
        std::string text(4096, '\0');
        const ssize_t length = ::read(answers_, text.data(), text.size());
        text.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
        return text;
    }

private:
    pid_t process_ = -1;
    int questions_ = -1;
    int answers_ = -1;
};

} // namespace Tests
