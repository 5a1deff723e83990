#include "embedded/host/file_reading.h"

#include <cerrno>
#include <fstream>
#include <system_error>

#include "embedded/host/fault.h"

namespace Embedded {
namespace {

namespace fs = std::filesystem;

std::string reasonOf(int error)
{
    return std::generic_category().message(error);
}

FileResult tooLarge(std::uint64_t mostBytes)
{
    return {Qeapp::eFileTooLarge, "larger than the " + std::to_string(mostBytes) + " bytes that are read"};
}

/// Asked before the file is opened: opening a pipe would wait for its writer.
FileResult inspect(const fs::path& file, std::uint64_t mostBytes, std::uint64_t& size)
{
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (!fs::status_known(status) || !fs::exists(status))
        return {Qeapp::eFileNotFound, error ? error.message() : reasonOf(ENOENT)};
    if (!fs::is_regular_file(status))
        return {Qeapp::eFileDamaged, fs::is_directory(status) ? "is a folder" : "is not a regular file"};
    size = fs::file_size(file, error);
    if (error)
        return {Qeapp::eFileNotFound, error.message()};
    return size > mostBytes ? tooLarge(mostBytes) : FileResult{};
}

} // namespace

FileResult readWholeFile(const fs::path& file, std::uint64_t mostBytes, std::string& text)
{
    text.clear();
    if (const auto fault = QeHost::faultOf("readWholeFile", Qeapp::eFileNotFound))
        return {*fault, reasonOf(EIO)};
    std::uint64_t size = 0;
    if (FileResult refusal = inspect(file, mostBytes, size); refusal.status != Qeapp::eOk)
        return refusal;
    errno = 0;
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        return {Qeapp::eFileNotFound, reasonOf(errno != 0 ? errno : EIO)};
    std::string contents(size, '\0');
    if (!stream.read(contents.data(), static_cast<std::streamsize>(size)))
        return {Qeapp::eFileDamaged, "cannot be read to its end"};
    if (stream.peek() != std::ifstream::traits_type::eof())
        return {Qeapp::eFileDamaged, "is being written to"};
    text = std::move(contents);
    return {};
}

} // namespace Embedded
