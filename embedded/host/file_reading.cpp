#include "embedded/host/file_reading.h"

#include <cerrno>
#include <fstream>
#include <system_error>
#include <utility>

#include "embedded/foundation/file_look_up.h"
#include "embedded/foundation/system_path.h"
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
FileResult inspect(const fs::path& file)
{
    FileLookUp found = lookUpFile(file);
    switch (found.kind) {
    case FileKind::regular:
        return {};
    case FileKind::nothing:
        return {Qeapp::eFileNotFound, std::move(found.reason)};
    case FileKind::folder:
        return {Qeapp::eFileDamaged, "is a folder"};
    case FileKind::other:
        break;
    }
    return {Qeapp::eFileDamaged, "is not a regular file"};
}

/// Of the file that was opened: another may have taken its name since.
std::uint64_t sizeOf(std::ifstream& stream)
{
    stream.seekg(0, std::ios::end);
    const std::streamoff size = stream.tellg();
    stream.seekg(0);
    return size > 0 ? static_cast<std::uint64_t>(size) : 0;
}

} // namespace

FileResult readWholeFile(const fs::path& file, std::uint64_t mostBytes, std::string& text)
{
    text.clear();
    if (const auto fault = QeHost::faultOf("readWholeFile", Qeapp::eFileNotFound))
        return {*fault, reasonOf(EIO)};
    if (FileResult refusal = inspect(file); refusal.status != Qeapp::eOk)
        return refusal;
    errno = 0;
    std::ifstream stream(systemPath(file), std::ios::binary);
    if (!stream)
        return {Qeapp::eFileNotFound, reasonOf(errno != 0 ? errno : EIO)};
    const std::uint64_t size = sizeOf(stream);
    if (size > mostBytes)
        return tooLarge(mostBytes);
    std::string contents(size, '\0');
    if (!stream.read(contents.data(), static_cast<std::streamsize>(size)))
        return {Qeapp::eFileDamaged, "cannot be read to its end"};
    text = std::move(contents);
    return {};
}

} // namespace Embedded
