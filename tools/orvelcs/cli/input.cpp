#include "orvelcs/cli/input.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <optional>
#include <system_error>

#include <fmt/format.h>

#include "embedded/base/file_kind.h"
#include "embedded/base/path.h"
#include "embedded/base/text.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/process.h"

namespace Orvelcs {
namespace {

constexpr const char* kStandardInput = "standard input";

struct CloseFile {
    void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); } // it was only read
};

std::string describeError(int error)
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
            throw Failure(name, "cannot be read: " + describeError(errno));
        if (length < block.size() && std::feof(stream) != 0)
            return bytes;
    }
}

} // namespace

std::string inputName(const std::string& file)
{
    return file == kStandardStream ? kStandardInput : file;
}

std::string readWhole(const std::string& file, std::size_t limitInBytes)
{
    if (file == kStandardStream)
        return readToEnd(stdin, kStandardInput, limitInBytes);
    if (Embedded::fileKind(Embedded::pathFromUtf8(file)) == Embedded::FileKind::folder)
        throw Failure(file, "is a folder");
    const std::unique_ptr<std::FILE, CloseFile> stream(openForReading(file));
    if (!stream)
        throw Failure(file, "cannot be opened: " + describeError(errno));
    return readToEnd(stream.get(), file, limitInBytes);
}

std::wstring readText(const std::string& file, std::size_t limitInBytes)
{
    const std::string bytes = readWhole(file, limitInBytes);
    return decodeText(inputName(file), bytes);
}

std::wstring decodeText(const std::string& subject, std::string_view bytes)
{
    if (!Embedded::isValidUtf8(bytes))
        throw Failure(subject, "is not UTF-8");
    if (bytes.find('\0') != std::string_view::npos)
        throw Failure(subject, "holds a NUL character");
    const bool hasMark = bytes.starts_with(kByteOrderMark);
    return Embedded::wideFromUtf8(bytes.substr(hasMark ? kByteOrderMark.size() : 0));
}

std::size_t readAvailable(char* bytes, std::size_t length)
{
    const std::optional<std::size_t> count = readStandardInput(bytes, length);
    if (!count)
        throw Failure(kStandardInput, "cannot be read: " + describeError(errno));
    return *count;
}

} // namespace Orvelcs
