#include "orvelcs/cli/process.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "embedded/base/posix/file_descriptor.h"

namespace Orvelcs {
namespace {

// Opens something under the number of a stream that the caller closed. Otherwise the next file that is opened gets the
// number, and the output goes into it. The modes are swapped so that using the stream still fails.
void occupy(int descriptor, int mode)
{
    if (::fcntl(descriptor, F_GETFD) == -1 && errno == EBADF)
        static_cast<void>(::open("/dev/null", mode)); // a failure leaves the stream as it was
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
    // Writing then fails and is reported as other failures are. Neither call can fail for these signals.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
}

int streamError()
{
    return errno;
}

std::string quotedArgument(const std::string& text)
{
    constexpr const char* kPlain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-+=:,./@%";
    if (!text.empty() && text.find_first_not_of(kPlain) == std::string::npos)
        return text;
    std::string quoted = "'";
    for (const char character : text)
        character == '\'' ? quoted.append("'\\''") : quoted.append(1, character);
    return quoted + "'";
}

int systemExitStatus(ExitStatus status)
{
    return static_cast<int>(status);
}

std::optional<std::size_t> readStandardInput(char* bytes, std::size_t length)
{
    const ssize_t count = Embedded::retried([&] { return ::read(STDIN_FILENO, bytes, length); });
    return count >= 0 ? std::optional(static_cast<std::size_t>(count)) : std::nullopt;
}

bool isTerminal(std::FILE* stream)
{
    return ::isatty(::fileno(stream)) == 1;
}

bool supportsEscapes(std::FILE* stream)
{
    return isTerminal(stream);
}

std::optional<std::size_t> terminalWidth(std::FILE* stream)
{
    winsize size{};
    if (::ioctl(::fileno(stream), TIOCGWINSZ, &size) != 0 || size.ws_col == 0)
        return std::nullopt;
    return size.ws_col;
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
