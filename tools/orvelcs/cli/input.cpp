#include "orvelcs/cli/input.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
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

using InputFile = std::unique_ptr<std::FILE, CloseFile>;

/// A pipe is opened as well.
InputFile openFile(const std::string& file)
{
    if (Embedded::fileKind(Embedded::pathFromUtf8(file)) == Embedded::FileKind::folder)
        throw Failure(file, "is a folder");
    InputFile stream(openForReading(file));
    if (!stream)
        throw Failure(file, "cannot be opened: " + describeError(errno));
    return stream;
}

std::size_t readPiece(std::FILE* stream, const std::string& name, char* bytes, std::size_t length)
{
    errno = 0;
    const std::size_t count = std::fread(bytes, 1, length, stream);
    if (std::ferror(stream) != 0)
        throw Failure(name, "cannot be read: " + describeError(errno));
    return count;
}

std::string readToEnd(std::FILE* stream, const std::string& name, std::size_t limitInBytes)
{
    std::string bytes;
    std::array<char, std::size_t{64} * 1024> block{};
    for (;;) {
        const std::size_t length = readPiece(stream, name, block.data(), block.size());
        bytes.append(block.data(), length);
        if (limitInBytes != 0 && bytes.size() > limitInBytes)
            throw Failure(name, fmt::format("longer than {} bytes", limitInBytes));
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
    return readToEnd(openFile(file).get(), file, limitInBytes);
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

InputStream openInput(const std::string& file)
{
    if (file == kStandardStream)
        return {readAvailable, std::nullopt};
    std::error_code isNoFile;
    const std::uintmax_t size = std::filesystem::file_size(Embedded::pathFromUtf8(file), isNoFile);
    const std::shared_ptr<std::FILE> stream = openFile(file);
    return {[stream, file](char* bytes, std::size_t length) { return readPiece(stream.get(), file, bytes, length); },
            isNoFile ? std::nullopt : std::optional(size)};
}

std::size_t readAvailable(char* bytes, std::size_t length)
{
    const std::optional<std::size_t> count = readStandardInput(bytes, length);
    if (!count)
        throw Failure(kStandardInput, "cannot be read: " + describeError(errno));
    return *count;
}

} // namespace Orvelcs
