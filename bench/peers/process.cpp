#include "peers/process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

namespace Bench {
namespace {

/// Sends a program's standard output to a file, and discards its standard error.
class Redirection {
public:
    explicit Redirection(const char* output)
    {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, output, O_WRONLY | O_CREAT | O_TRUNC, 0600);
        posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    }
    Redirection(const Redirection&) = delete;
    Redirection& operator=(const Redirection&) = delete;
    ~Redirection() { posix_spawn_file_actions_destroy(&actions_); }

    const posix_spawn_file_actions_t* get() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_{};
};

} // namespace

// The memory of this process is not copied for the new one, which would count for it.
void runProcess(const std::vector<std::string>& words, const std::filesystem::path& output, int status)
{
    std::vector<char*> arguments;
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    const Redirection redirection(output.c_str());
    pid_t child = 0;
    int result = 0;
    if (posix_spawnp(&child, arguments.front(), redirection.get(), nullptr, arguments.data(), environ) != 0 ||
        waitpid(child, &result, 0) != child || !WIFEXITED(result) || WEXITSTATUS(result) != status)
        throw std::runtime_error(words.front() + " did not end with status " + std::to_string(status));
}

std::string builtProgram(const char* name)
{
    return std::filesystem::read_symlink("/proc/self/exe").replace_filename(name).string();
}

} // namespace Bench
