#include "orvelcs/cli/process.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

namespace Orvelcs {
namespace {

// A file opened later would take the number of a stream that the caller closed, and what is printed would go into it.
// The modes are the wrong way round so that using the stream still fails.
void occupy(int descriptor, int mode)
{
    if (::fcntl(descriptor, F_GETFD) == -1 && errno == EBADF)
        static_cast<void>(::open("/dev/null", mode)); // without it nothing is worse than before
}

} // namespace

void prepareForUnhandledFailures()
{
}

void prepareStandardStreams()
{
    occupy(STDIN_FILENO, O_WRONLY);
    occupy(STDOUT_FILENO, O_RDONLY);
    occupy(STDERR_FILENO, O_WRONLY);
    // Writing fails instead, and is told as any other failure. Neither call can fail for these signals.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
}

int streamError()
{
    return errno;
}

bool isTerminal(std::FILE* stream)
{
    return ::isatty(::fileno(stream)) == 1;
}

bool takesEscapes(std::FILE* stream)
{
    return isTerminal(stream);
}

std::FILE* openForReading(const std::string& file)
{
    return std::fopen(file.c_str(), "rb");
}

std::optional<std::string> variable(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

bool setVariable(const char* name, const std::optional<std::string>& value)
{
    return (value ? ::setenv(name, value->c_str(), 1) : ::unsetenv(name)) == 0;
}

} // namespace Orvelcs
