#include "orvelcs/standard_streams.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <memory>
#include <system_error>

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include "orvelcs/failure.h"

namespace Orvelcs {
namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); } // it was only read
};

// A file opened later would take the number of a stream that the caller closed, and what is printed would go into it.
// The modes are the wrong way round so that using the stream still fails.
void occupy(int descriptor, int mode)
{
    if (::fcntl(descriptor, F_GETFD) == -1 && errno == EBADF)
        static_cast<void>(::open("/dev/null", mode)); // without it nothing is worse than before
}

std::string reasonOf(int error)
{
    return std::generic_category().message(error);
}

std::string readToEnd(std::FILE* stream, const std::string& name, std::size_t limitInBytes)
{
    std::string bytes;
    std::array<char, std::size_t{64} * 1024> block{};
    for (;;) {
        errno = 0;
        const std::size_t length = std::fread(block.data(), 1, block.size(), stream);
        bytes.append(block.data(), length);
        if (limitInBytes != 0 && bytes.size() > limitInBytes)
            throw Failure(name, fmt::format("longer than {} bytes", limitInBytes));
        if (std::ferror(stream) != 0)
            throw Failure(name, "cannot be read: " + reasonOf(errno));
        if (length < block.size() && std::feof(stream) != 0)
            return bytes;
    }
}

} // namespace

void prepareStandardStreams()
{
    occupy(STDIN_FILENO, O_WRONLY);
    occupy(STDOUT_FILENO, O_RDONLY);
    occupy(STDERR_FILENO, O_WRONLY);
    // Writing fails instead, and is told as any other failure. Neither call can fail for these signals.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
}

bool isTerminal(std::FILE* stream)
{
    return ::isatty(::fileno(stream)) == 1;
}

std::string readWhole(const std::string& file, std::size_t limitInBytes)
{
    if (file == kStandardStream)
        return readToEnd(stdin, "standard input", limitInBytes);
    const std::unique_ptr<std::FILE, CloseFile> stream(std::fopen(file.c_str(), "rb"));
    if (!stream)
        throw Failure(file, "cannot be opened: " + reasonOf(errno));
    return readToEnd(stream.get(), file, limitInBytes);
}

} // namespace Orvelcs
