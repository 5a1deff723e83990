#include "cli/win32/started_program.h"

#include <cstdlib>
#include <stdexcept>

#include "embedded/base/text.h"

namespace Tests {
namespace {

using Embedded::FileHandle;
using Embedded::wideFromUtf8;

void check(bool succeeded, const std::string& call)
{
    if (!succeeded)
        throw std::runtime_error(call + ": error " + std::to_string(GetLastError()));
}

constexpr std::size_t kLongestCommandLine = 32'766; // the limit of Windows
constexpr int kMaximumStarts = 5;

/// Converts UTF-8. Three bytes that would encode a surrogate, which UTF-8 forbids, become that unpaired surrogate.
std::wstring wideArgument(const std::string& argument)
{
    std::wstring text;
    std::size_t begin = 0;
    const auto byteAt = [&](std::size_t index) { return static_cast<unsigned char>(argument[index]); };
    for (std::size_t index = 0; index + 2 < argument.size(); ++index) {
        if (byteAt(index) != 0xED || byteAt(index + 1) < 0xA0)
            continue;
        text += wideFromUtf8(std::string_view(argument).substr(begin, index - begin));
        text += static_cast<wchar_t>(0xD000 | (byteAt(index + 1) & 0x3F) << 6 | (byteAt(index + 2) & 0x3F));
        begin = index + 3;
    }
    return text + wideFromUtf8(std::string_view(argument).substr(begin));
}

/// Quotes a word as the start-up code of programs expects. That code reads backslashes as they are, unless a quotation
/// mark follows them.
std::wstring quoted(const std::wstring& word)
{
    std::wstring text = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t character : word) {
        if (character == L'"')
            text.append(backslashes + 1, L'\\');
        backslashes = character == L'\\' ? backslashes + 1 : 0;
        text += character;
    }
    return text.append(backslashes, L'\\') + L'"';
}

std::wstring makeCommandLine(const ProgramRun& run)
{
    std::wstring line = quoted(run.program.wstring());
    for (const std::string& argument : run.arguments)
        line += L' ' + quoted(wideArgument(argument));
    if (line.size() > kLongestCommandLine)
        throw std::runtime_error("a command line of " + std::to_string(line.size()) + " characters");
    return line;
}

/// A block of NAME=VALUE, each ended by a NUL, with another NUL at the end.
std::wstring makeEnvironment(const ProgramRun& run)
{
    std::map<std::wstring, std::wstring> all;
    for (const wchar_t* name : {L"PATH", L"SystemRoot", L"SystemDrive", L"windir", L"ComSpec", L"USERPROFILE",
                                L"HOMEDRIVE", L"HOMEPATH", L"APPDATA", L"LOCALAPPDATA", L"ProgramData", L"TEMP", L"TMP",
                                L"LANG", L"LC_ALL", L"WINEPREFIX", L"WINEDEBUG"})
        if (const wchar_t* value = _wgetenv(name); value != nullptr)
            all[name] = value;
    for (const auto& [name, value] : run.environment)
        all[wideFromUtf8(name)] = wideFromUtf8(value);
    std::wstring block;
    for (const auto& [name, value] : all)
        block += name + L'=' + value + L'\0';
    return block + L'\0';
}

/// Once in some thousand starts on a busy machine, Wine loses a process before its first instruction.
bool isLostByWine(DWORD error)
{
    return error == ERROR_INTERNAL_ERROR;
}

} // namespace

StartedProgram::StartedProgram(const ProgramRun& run, const std::filesystem::path& folder,
                               const ProgramStreams& streams)
{
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = streams.input;
    startup.hStdOutput = streams.output;
    startup.hStdError = streams.errors;
    PROCESS_INFORMATION started{};
    const std::filesystem::path program = std::filesystem::path(run.program).make_preferred();
    const auto start = [&] {
        return CreateProcessW(program.c_str(), makeCommandLine(run).data(), nullptr, nullptr, TRUE,
                              CREATE_UNICODE_ENVIRONMENT, makeEnvironment(run).data(), folder.c_str(), &startup,
                              &started) != 0;
    };
    bool isStarted = start();
    for (int starts = 1; !isStarted && isLostByWine(GetLastError()) && starts < kMaximumStarts; ++starts)
        isStarted = start();
    check(isStarted, "CreateProcessW");
    process_ = FileHandle(started.hProcess);
    const FileHandle thread(started.hThread); // closes the handle
}

int StartedProgram::wait() const
{
    DWORD status = 0;
    check(WaitForSingleObject(process_.get(), INFINITE) == WAIT_OBJECT_0, "WaitForSingleObject");
    check(GetExitCodeProcess(process_.get(), &status) != 0, "GetExitCodeProcess");
    return static_cast<int>(status);
}

FileHandle openInherited(const std::filesystem::path& file, DWORD access, DWORD disposition)
{
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    // A program that was started at the same time may have inherited the handle that the file was written with.
    constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE;
    FileHandle handle(
        CreateFileW(file.c_str(), access, kShared, &inherited, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
    check(handle.isOpen(), "CreateFileW " + file.string());
    return handle;
}

Pipe::Pipe(Own own)
{
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    HANDLE readingEnd = nullptr;
    HANDLE writingEnd = nullptr;
    check(CreatePipe(&readingEnd, &writingEnd, &inherited, 0) != 0, "CreatePipe");
    reading = FileHandle(readingEnd);
    writing = FileHandle(writingEnd);
    if (own != Own::none)
        check(SetHandleInformation(own == Own::reading ? readingEnd : writingEnd, HANDLE_FLAG_INHERIT, 0) != 0,
              "SetHandleInformation");
}

} // namespace Tests
