#include "cli/posix/started_batch.h"

#include <array>
#include <csignal>
#include <stdexcept>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "cli/posix/json_documents.h"

namespace Tests {
namespace {

constexpr int kSmallestPipe = 4096;

[[noreturn]] void execute(const std::vector<char*>& words, const std::filesystem::path& folder,
                          const std::filesystem::path& errors, int output)
{
    const int errorsDescriptor = ::open(errors.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (::chdir(folder.c_str()) == 0 && ::dup2(output, STDOUT_FILENO) != -1 &&
        ::dup2(errorsDescriptor, STDERR_FILENO) != -1) {
        for (const int signal : {SIGINT, SIGTERM}) // a shell makes what runs in the background ignore them
            std::signal(signal, SIG_DFL);
        ::execv(words.front(), words.data());
    }
    ::_exit(127);
}

} // namespace

StartedBatch::StartedBatch(std::vector<std::string> arguments, const std::filesystem::path& folder,
                           const std::filesystem::path& errors)
{
    arguments_ = arguments;
    arguments.insert(arguments.begin(), ORVELCS_PROGRAM);
    std::vector<char*> words;
    for (std::string& argument : arguments)
        words.push_back(argument.data());
    words.push_back(nullptr);
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0 || ::fcntl(ends[1], F_SETPIPE_SZ, kSmallestPipe) == -1)
        throw std::runtime_error("there is no small pipe");
    descriptor_ = ends[0];
    child_ = ::fork();
    if (child_ == 0)
        execute(words, folder, errors, ends[1]);
    ::close(ends[1]);
    if (child_ == -1)
        throw std::runtime_error("fork failed");
}

StartedBatch::~StartedBatch()
{
    ::close(descriptor_);
    if (child_ > 0) { // a test has failed before the end
        ::kill(child_, SIGKILL);
        ::waitpid(child_, nullptr, 0);
    }
}

bool StartedBatch::readMore()
{
    std::array<char, 4096> block{};
    const ssize_t length = ::read(descriptor_, block.data(), block.size());
    if (length > 0)
        output_.append(block.data(), static_cast<std::size_t>(length));
    return length > 0;
}

std::string StartedBatch::readLine()
{
    while (output_.find('\n') == std::string::npos && readMore()) {
    }
    return output_.substr(0, output_.find('\n'));
}

void StartedBatch::send(int signal) const
{
    if (::kill(child_, signal) != 0)
        throw std::runtime_error("the program cannot be signalled");
}

void StartedBatch::waitUntilFull(std::size_t lengthOfLine) const
{
    int held = 0;
    while (static_cast<std::size_t>(held) + lengthOfLine <= kSmallestPipe)
        if (::ioctl(descriptor_, FIONREAD, &held) != 0)
            throw std::runtime_error("the pipe cannot be asked");
}

int StartedBatch::sendUntilEnd(int signal)
{
    int waitStatus = 0;
    while (::waitpid(child_, &waitStatus, WNOHANG) == 0)
        send(signal);
    child_ = -1;
    return waitStatus;
}

int StartedBatch::finish()
{
    while (readMore()) {
    }
    int waitStatus = 0;
    ::waitpid(child_, &waitStatus, 0);
    child_ = -1;
    recordDocument(arguments_, output_);
    return waitStatus;
}

} // namespace Tests
