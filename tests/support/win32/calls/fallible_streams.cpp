// Streams of _wfsopen, whose reading, writing and closing can be made to fail. The C runtime is called by name and not
// through a pointer; the linker is told to lead those names here (`--wrap`), where other streams just pass.
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>

#include "embedded/diagnostics/resource_counters.h"
#include "platform/windows.h"
#include "support/win32/calls/fallible_call.h"

extern "C" {
std::size_t __real_fread(void* output, std::size_t size, std::size_t count, std::FILE* stream);
int __real_fflush(std::FILE* stream);
int __real_fclose(std::FILE* stream);
}

namespace Tests {
namespace {

using Embedded::FaultInjection;
using Embedded::ResourceCounters;
using Embedded::ResourceKind;

/// Nothing is allocated for them: that would be counted among the module's own allocations.
std::array<std::FILE*, 64> openStreams;

/// Replaces one entry by another; null stands for a place that is free.
bool replaceOpenStream(std::FILE* former, std::FILE* next)
{
    const auto place = std::ranges::find(openStreams, former);
    if (place == openStreams.end())
        return false;
    *place = next;
    return true;
}

std::FILE* openStream(const wchar_t* path, const wchar_t* mode, int sharing)
{
    static const auto real = systemFunction<decltype(_wfsopen)>(L"msvcrt.dll", "_wfsopen");
    if (const auto planned = FaultInjection::injectedFailure("_wfsopen", EACCES)) {
        errno = *planned;
        return nullptr;
    }
    std::FILE* const stream = real(path, mode, sharing);
    if (stream != nullptr && replaceOpenStream(nullptr, stream))
        ResourceCounters::add(ResourceKind::textFile);
    return stream;
}

/// Whether the stream's next step fails, and then marks it as the C runtime does.
bool fails(std::FILE* stream, const char* step, int failure)
{
    if (std::ranges::find(openStreams, stream) == openStreams.end())
        return false;
    const auto planned = FaultInjection::injectedFailure(step, failure);
    if (planned) {
        stream->_flag |= _IOERR;
        errno = *planned;
    }
    return planned.has_value();
}

} // namespace
} // namespace Tests

extern "C" {

decltype(&_wfsopen) __imp__wfsopen = Tests::openStream;

std::size_t __wrap_fread(void* output, std::size_t size, std::size_t count, std::FILE* stream)
{
    return Tests::fails(stream, "_wfsopen.read", EIO) ? 0 : __real_fread(output, size, count, stream);
}

// What was to be written stays in the stream, to be tried once more.
int __wrap_fflush(std::FILE* stream)
{
    return Tests::fails(stream, "_wfsopen.write", ENOSPC) ? EOF : __real_fflush(stream);
}

/// Whatever comes of it, the file is closed.
int __wrap_fclose(std::FILE* stream)
{
    const bool planned = Tests::fails(stream, "_wfsopen.close", EIO);
    const int plannedError = errno;
    if (Tests::replaceOpenStream(stream, nullptr))
        Embedded::ResourceCounters::remove(Embedded::ResourceKind::textFile);
    const int result = __real_fclose(stream);
    if (!planned)
        return result;
    errno = plannedError;
    return EOF;
}

} // extern "C"
