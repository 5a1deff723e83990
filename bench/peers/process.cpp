#include "peers/process.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

namespace Bench {
namespace {

constexpr int kNotStarted = 127;

[[noreturn]] void becomeProgram(std::vector<char*> arguments, const char* output)
{
    const int results = open(output, O_WRONLY | O_CREAT | O_TRUNC, 0600);
    const int messages = open("/dev/null", O_WRONLY);
    if (dup2(results, STDOUT_FILENO) >= 0 && dup2(messages, STDERR_FILENO) >= 0)
        execvp(arguments.front(), arguments.data());
    _exit(kNotStarted);
}

} // namespace

void runProcess(const std::vector<std::string>& words, const std::filesystem::path& output, int status)
{
    std::vector<char*> arguments;
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    const pid_t child = fork();
    if (child == 0)
        becomeProgram(std::move(arguments), output.c_str());
    int result = 0;
    if (child < 0 || waitpid(child, &result, 0) != child || !WIFEXITED(result) || WEXITSTATUS(result) != status)
        throw std::runtime_error(words.front() + " did not end with status " + std::to_string(status));
}

std::string builtProgram(const char* name)
{
    return std::filesystem::read_symlink("/proc/self/exe").replace_filename(name).string();
}

} // namespace Bench
