#include "orvelcs/cli/standard_streams.h"

#include <array>
#include <cerrno>
#include <memory>
#include <system_error>

#include <fmt/format.h>

#include "embedded/base/file_kind.h"
#include "embedded/base/path.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/process.h"

namespace Orvelcs {
namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); } // it was only read
};

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

std::string readWhole(const std::string& file, std::size_t limitInBytes)
{
    if (file == kStandardStream)
        return readToEnd(stdin, "standard input", limitInBytes);
    if (Embedded::fileKind(Embedded::pathFromUtf8(file)) == Embedded::FileKind::folder)
        throw Failure(file, "is a folder");
    const std::unique_ptr<std::FILE, CloseFile> stream(openForReading(file));
    if (!stream)
        throw Failure(file, "cannot be opened: " + reasonOf(errno));
    return readToEnd(stream.get(), file, limitInBytes);
}

} // namespace Orvelcs
