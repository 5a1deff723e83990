// Files as the C runtime of Windows opens them: lines that end with LF in memory and with CR LF on disk, and texts that
// end at a control-Z.
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "embedded/base/posix/file_descriptor.h"
#include "embedded/base/text.h"
#include "embedded/diagnostics/fault_injection.h"
#include "embedded/diagnostics/resource_counters.h"
#include "platform/win32.h"

namespace {

using Embedded::FaultInjection;
using Embedded::FileDescriptor;
using Embedded::ResourceCounters;
using Embedded::ResourceKind;
using Embedded::retried;

constexpr std::size_t kBufferInBytes = 1U << 16;

struct Mode {
    int flags = 0;
    bool isBinary = false;
};

/// "r", "w" or "a", optionally followed by "t" or "b"; nothing for any other text.
std::optional<Mode> parseMode(std::wstring_view text)
{
    const std::wstring_view kind = text.substr(0, 1);
    const std::wstring_view translation = text.substr(std::min<std::size_t>(1, text.size()));
    Mode mode{.flags = O_RDONLY, .isBinary = translation == L"b"};
    if (kind == L"w")
        mode.flags = O_WRONLY | O_CREAT | O_TRUNC;
    else if (kind == L"a")
        mode.flags = O_WRONLY | O_CREAT | O_APPEND;
    else if (kind != L"r")
        return std::nullopt;
    if (!translation.empty() && translation != L"t" && translation != L"b")
        return std::nullopt;
    return mode;
}

/// Translates between a stream and its file.
class OpenFile {
public:
    OpenFile(FileDescriptor descriptor, bool isBinary) : descriptor_(std::move(descriptor)), isBinary_(isBinary)
    {
        translated_.reserve(2 * kBufferInBytes); // it must not grow below the C library, which throws nothing on
        ResourceCounters::add(ResourceKind::textFile);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() { ResourceCounters::remove(ResourceKind::textFile); }

    /// Both return what the system's calls return: a count, 0 at the end of the file, -1 with errno.
    ssize_t read(char* output, std::size_t size);
    ssize_t write(std::string_view bytes);
    /// Positions count the bytes of the file, those of line ends included. Returns -1 with errno if it cannot seek.
    off_t seek(off_t offset, int origin);
    bool close() { return descriptor_.close(); }
    char* streamBuffer() { return streamBuffer_.get(); }

private:
    bool isLineFeedNext() const;
    std::size_t upToControlZ(const char* bytes, std::size_t size);
    std::size_t withoutCarriageReturns(char* bytes, std::size_t size) const;
    bool writeAll(std::string_view bytes);

    FileDescriptor descriptor_;
    bool isBinary_;
    bool isAtEnd_ = false; // a control-Z ended the text
    std::unique_ptr<char[]> streamBuffer_ = std::make_unique_for_overwrite<char[]>(kBufferInBytes);
    std::string translated_;
};

/// Reads the next byte without consuming it. Only a regular file allows that.
bool OpenFile::isLineFeedNext() const
{
    const off_t position = ::lseek(descriptor_.get(), 0, SEEK_CUR);
    char next = '\0';
    return position >= 0 && retried([&] { return ::pread(descriptor_.get(), &next, 1, position); }) == 1 &&
           next == '\n';
}

/// The number of bytes before the first control-Z, which ends a text.
std::size_t OpenFile::upToControlZ(const char* bytes, std::size_t size)
{
    const auto* const end = static_cast<const char*>(std::memchr(bytes, '\x1A', size));
    isAtEnd_ = end != nullptr;
    return end != nullptr ? static_cast<std::size_t>(end - bytes) : size;
}

/// Drops each CR before an LF, in place.
std::size_t OpenFile::withoutCarriageReturns(char* bytes, std::size_t size) const
{
    const bool endsInLine = !isAtEnd_ && size > 0 && bytes[size - 1] == '\r' && isLineFeedNext();
    const char* const end = bytes + size - (endsInLine ? 1 : 0);
    char* kept = bytes;
    for (const char* from = bytes; from != end;) {
        const auto* const found =
            static_cast<const char*>(std::memchr(from, '\r', static_cast<std::size_t>(end - from)));
        const char* const stop = found != nullptr ? found : end;
        kept = std::char_traits<char>::move(kept, from, static_cast<std::size_t>(stop - from)) + (stop - from);
        from = stop;
        if (from == end)
            break;
        if (from + 1 == end || from[1] != '\n')
            *kept++ = '\r';
        ++from;
    }
    return static_cast<std::size_t>(kept - bytes);
}

ssize_t OpenFile::read(char* output, std::size_t size)
{
    while (!isAtEnd_) {
        const ssize_t count = retried([&] { return ::read(descriptor_.get(), output, size); });
        if (count <= 0 || isBinary_)
            return count;
        const std::size_t kept = withoutCarriageReturns(output, upToControlZ(output, static_cast<std::size_t>(count)));
        if (kept > 0) // 0 would mean the end of the file
            return static_cast<ssize_t>(kept);
    }
    return 0;
}

off_t OpenFile::seek(off_t offset, int origin)
{
    const off_t position = ::lseek(descriptor_.get(), offset, origin);
    if (position >= 0)
        isAtEnd_ = false;
    return position;
}

bool OpenFile::writeAll(std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = retried([&] { return ::write(descriptor_.get(), bytes.data(), bytes.size()); });
        if (written <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

ssize_t OpenFile::write(std::string_view bytes)
{
    const auto whole = static_cast<ssize_t>(bytes.size());
    if (isBinary_)
        return writeAll(bytes) ? whole : -1;
    while (!bytes.empty()) {
        const std::string_view part = bytes.substr(0, kBufferInBytes);
        bytes.remove_prefix(part.size());
        translated_.clear();
        for (std::size_t at = 0; at < part.size();) {
            const std::size_t end = std::min(part.find('\n', at), part.size());
            translated_ += part.substr(at, end - at);
            if (end < part.size())
                translated_ += "\r\n";
            at = end + 1;
        }
        if (!writeAll(translated_))
            return -1;
    }
    return whole;
}

ssize_t readFrom(void* file, char* output, std::size_t size)
{
    if (const auto fault = FaultInjection::injectedFailure("_wfsopen.read", EIO)) {
        errno = *fault;
        return -1;
    }
    return static_cast<OpenFile*>(file)->read(output, size);
}

/// Returns 0 for a failure, as a stream expects.
ssize_t writeTo(void* file, const char* bytes, std::size_t size)
{
    if (const auto fault = FaultInjection::injectedFailure("_wfsopen.write", ENOSPC)) {
        errno = *fault;
        return 0;
    }
    return std::max<ssize_t>(0, static_cast<OpenFile*>(file)->write({bytes, size}));
}

/// Returns 0 and the new position, or -1, as a stream expects.
int seekIn(void* file, off64_t* position, int origin)
{
    *position = static_cast<OpenFile*>(file)->seek(*position, origin);
    return *position >= 0 ? 0 : -1;
}

/// Closes the file even if it returns a failure.
int closeFile(void* file)
{
    const std::unique_ptr<OpenFile> owner(static_cast<OpenFile*>(file));
    const bool closed = owner->close();
    if (const auto fault = FaultInjection::injectedFailure("_wfsopen.close", EIO)) {
        errno = *fault;
        return EOF;
    }
    return closed ? 0 : EOF;
}

std::string nativePath(const wchar_t* path)
{
    std::string native = Embedded::utf8FromWide(path);
    std::ranges::replace(native, '\\', '/');
    return native;
}

/// Returns a closed descriptor and sets errno if the file cannot be opened or is a folder.
FileDescriptor openFile(const std::string& path, const Mode& mode)
{
    FileDescriptor descriptor(retried([&] { return ::open(path.c_str(), mode.flags | O_CLOEXEC, 0666); }));
    struct stat found {};
    if (descriptor.isOpen() && ::fstat(descriptor.get(), &found) == 0 && S_ISDIR(found.st_mode)) {
        errno = EACCES;
        return FileDescriptor();
    }
    return descriptor;
}

std::FILE* openStream(std::unique_ptr<OpenFile> file, const Mode& mode)
{
    const cookie_io_functions_t calls{.read = readFrom, .write = writeTo, .seek = seekIn, .close = closeFile};
    std::FILE* const stream = ::fopencookie(file.get(), mode.flags == O_RDONLY ? "r" : "w", calls);
    if (stream == nullptr)
        return nullptr;
    if (std::setvbuf(stream, file.release()->streamBuffer(), _IOFBF, kBufferInBytes) != 0)
        errno = 0; // the stream then uses its own buffer, which is only slower
    return stream;
}

} // namespace

std::FILE* _wfsopen(const wchar_t* path, const wchar_t* mode, int sharing)
{
    if (const auto fault = FaultInjection::injectedFailure("_wfsopen", EACCES)) {
        errno = *fault;
        return nullptr;
    }
    const std::optional<Mode> wanted = mode != nullptr ? parseMode(mode) : std::nullopt;
    if (path == nullptr || !wanted || sharing != _SH_DENYNO) {
        errno = EINVAL;
        return nullptr;
    }
    FileDescriptor descriptor = openFile(nativePath(path), *wanted);
    if (!descriptor.isOpen())
        return nullptr;
    return openStream(std::make_unique<OpenFile>(std::move(descriptor), wanted->isBinary), *wanted);
}
