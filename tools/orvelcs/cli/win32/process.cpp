#include "orvelcs/cli/process.h"

#include <windows.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <optional>

#include <fcntl.h>
#include <io.h>

#include "embedded/base/path.h"
#include "embedded/base/text.h"
#include "orvelcs/cli/win32/console.h"

namespace Orvelcs {
namespace {

constexpr UINT kUnhandledFailure = 70;
constexpr ULONG kBeforeOthers = 1;

[[noreturn]] void endProcess()
{
    TerminateProcess(GetCurrentProcess(), kUnhandledFailure);
    std::_Exit(kUnhandledFailure); // not reached
}

LONG WINAPI endAfterException(EXCEPTION_POINTERS* /*exception*/)
{
    endProcess();
}

/// The rest of the stack may be too small for the search that ends at the filter.
LONG WINAPI endAfterStackOverflow(EXCEPTION_POINTERS* exception)
{
    if (exception->ExceptionRecord->ExceptionCode == EXCEPTION_STACK_OVERFLOW)
        endProcess();
    return EXCEPTION_CONTINUE_SEARCH;
}

void endAfterAbort(int /*signal*/)
{
    endProcess();
}

/// Returns whether the stream is a console, and how it is set. Other devices count as terminals for the C runtime.
std::optional<DWORD> consoleMode(std::FILE* stream)
{
    DWORD mode = 0;
    if (GetConsoleMode(reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream))), &mode) == 0)
        return std::nullopt;
    return mode;
}

} // namespace

void prepareForUnhandledFailures()
{
    // A failure of the calls leaves the process as it was.
    static_cast<void>(AddVectoredExceptionHandler(kBeforeOthers, endAfterStackOverflow));
    static_cast<void>(SetUnhandledExceptionFilter(endAfterException)); // returns the former filter
    static_cast<void>(std::signal(SIGABRT, endAfterAbort));            // cannot fail for this signal
}

void prepareStandardStreams()
{
    static const ConsoleSettings settings; // until the process ends
    for (std::FILE* stream : {stdin, stdout, stderr})
        static_cast<void>(_setmode(_fileno(stream), _O_BINARY)); // a stream that is closed has no mode
}

// The C runtime reports a pipe without a reader as a wrong argument.
int streamError()
{
    const bool hasNoReader = _doserrno == ERROR_NO_DATA || _doserrno == ERROR_PIPE_NOT_CONNECTED;
    return errno == EINVAL && hasNoReader ? EPIPE : errno;
}

// No name of a file has a quote in it.
std::string quotedArgument(const std::string& text)
{
    const bool needsQuotes = text.empty() || text.find_first_of(" \t&()[]{}^=;!'+,`~@") != std::string::npos;
    return needsQuotes ? '"' + text + '"' : text;
}

int systemExitStatus(ExitStatus status)
{
    return static_cast<int>(status == ExitStatus::readerGone ? ExitStatus::failed : status);
}

std::optional<std::size_t> readStandardInput(char* bytes, std::size_t length)
{
    const int count = _read(_fileno(stdin), bytes, static_cast<unsigned int>(length));
    return count >= 0 ? std::optional(static_cast<std::size_t>(count)) : std::nullopt;
}

bool isTerminal(std::FILE* stream)
{
    return consoleMode(stream).has_value();
}

bool supportsEscapes(std::FILE* stream)
{
    return (consoleMode(stream).value_or(0) & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

std::optional<std::size_t> terminalWidth(std::FILE* stream)
{
    CONSOLE_SCREEN_BUFFER_INFO info{};
    const auto console = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
    if (GetConsoleScreenBufferInfo(console, &info) == 0 || info.srWindow.Right < info.srWindow.Left)
        return std::nullopt;
    return static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left + 1);
}

std::FILE* openForReading(const std::string& file)
{
    const std::filesystem::path path = Embedded::pathFromUtf8(file);
    return _wfopen(Embedded::systemPath(path).c_str(), L"rb");
}

std::optional<std::string> variable(const char* name)
{
    const wchar_t* value = _wgetenv(Embedded::wideFromUtf8(name).c_str());
    return value != nullptr ? std::optional(Embedded::utf8FromWide(value)) : std::nullopt;
}

// An empty value removes it, for the C runtime knows no other way.
bool setVariable(const char* name, const std::optional<std::string>& value)
{
    return _wputenv_s(Embedded::wideFromUtf8(name).c_str(), Embedded::wideFromUtf8(value.value_or("")).c_str()) == 0;
}

} // namespace Orvelcs
