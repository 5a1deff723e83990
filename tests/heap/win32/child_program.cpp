#include "heap/win32/child_program.h"

#include <windows.h>

#include <array>
#include <stdexcept>

namespace Tests {
namespace {

class Handle {
public:
    Handle() = default;
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() { close(); }

    HANDLE get() const { return handle_; }
    HANDLE* put() { return &handle_; }
    void close()
    {
        if (handle_ != nullptr)
            static_cast<void>(CloseHandle(handle_)); // nothing is written through these
        handle_ = nullptr;
    }

private:
    HANDLE handle_ = nullptr;
};

void require(BOOL answer, const char* call)
{
    if (answer == 0)
        throw std::runtime_error(std::string(call) + ": error " + std::to_string(GetLastError()));
}

std::string readAll(HANDLE stream)
{
    std::string text;
    std::array<char, 4096> part;
    DWORD size = 0;
    // It fails when the program has closed its end.
    while (ReadFile(stream, part.data(), static_cast<DWORD>(part.size()), &size, nullptr) != 0 && size != 0)
        text.append(part.data(), size);
    return text;
}

void start(const std::filesystem::path& program, const std::string& argument, HANDLE output, PROCESS_INFORMATION& child)
{
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = output;
    startup.hStdError = output;
    std::wstring line = L"\"" + program.wstring() + L"\" " + std::filesystem::path(argument).wstring();
    require(CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                           program.parent_path().c_str(), &startup, &child),
            "CreateProcessW");
}

} // namespace

ChildProgramEnd runChildProgram(const std::filesystem::path& program, const std::string& argument)
{
    Handle reading;
    Handle writing;
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    require(CreatePipe(reading.put(), writing.put(), &inherited, 0), "CreatePipe");
    require(SetHandleInformation(reading.get(), HANDLE_FLAG_INHERIT, 0), "SetHandleInformation");

    PROCESS_INFORMATION child{};
    start(program, argument, writing.get(), child);
    Handle process;
    Handle thread;
    *process.put() = child.hProcess;
    *thread.put() = child.hThread;
    writing.close(); // or the reading would not end

    ChildProgramEnd end;
    end.output = readAll(reading.get());
    DWORD exitCode = 0;
    static_cast<void>(WaitForSingleObject(process.get(), INFINITE)); // the code below says whether it ended
    require(GetExitCodeProcess(process.get(), &exitCode), "GetExitCodeProcess");
    end.exitCode = exitCode;
    return end;
}

} // namespace Tests
