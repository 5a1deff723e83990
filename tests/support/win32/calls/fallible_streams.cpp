// Streams of _wfsopen whose reading, writing and closing a test can make fail. The module calls the C runtime by name
// and not through a pointer, so the linker redirects those names to this file (`--wrap`). Other streams are not
// affected.
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>

#include "embedded/diagnostics/resource_counters.h"
#include "platform/win32.h"
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

/// An array, since an allocation would count as one of the module's.
std::array<std::FILE*, 64> openStreams;

/// Replaces one entry by another. Null stands for a free place.
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
    if (const auto injected = FaultInjection::injectedFailure("_wfsopen", EACCES)) {
        errno = *injected;
        return nullptr;
    }
    std::FILE* const stream = real(path, mode, sharing);
    if (stream != nullptr && replaceOpenStream(nullptr, stream))
        ResourceCounters::add(ResourceKind::textFile);
    return stream;
}

/// Whether the stream's next step fails. If it does, marks the stream as the C runtime does.
bool fails(std::FILE* stream, const char* step, int failure)
{
    if (std::ranges::find(openStreams, stream) == openStreams.end())
        return false;
    const auto injected = FaultInjection::injectedFailure(step, failure);
    if (injected) {
        stream->_flag |= _IOERR;
        errno = *injected;
    }
    return injected.has_value();
}

} // namespace
} // namespace Tests

extern "C" {

decltype(&_wfsopen) __imp__wfsopen = Tests::openStream;

std::size_t __wrap_fread(void* output, std::size_t size, std::size_t count, std::FILE* stream)
{
    return Tests::fails(stream, "_wfsopen.read", EIO) ? 0 : __real_fread(output, size, count, stream);
}

// The stream keeps its bytes, so that a later flush writes them.
int __wrap_fflush(std::FILE* stream)
{
    return Tests::fails(stream, "_wfsopen.write", ENOSPC) ? EOF : __real_fflush(stream);
}

/// Closes the file even when the call fails.
int __wrap_fclose(std::FILE* stream)
{
    const bool injected = Tests::fails(stream, "_wfsopen.close", EIO);
    const int injectedError = errno;
    if (Tests::replaceOpenStream(stream, nullptr))
        Embedded::ResourceCounters::remove(Embedded::ResourceKind::textFile);
    const int result = __real_fclose(stream);
    if (!injected)
        return result;
    errno = injectedError;
    return EOF;
}

} // extern "C"
