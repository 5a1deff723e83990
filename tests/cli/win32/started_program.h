// A program that the test started, with standard streams of the test's choice.
#pragma once

#include <windows.h>

#include <filesystem>

#include "cli/program_run.h"
#include "embedded/base/win32/file_handle.h"

namespace Tests {

/// What a program is given for its streams; a stream without a handle is closed.
struct ProgramStreams {
    HANDLE input = nullptr;
    HANDLE output = nullptr;
    HANDLE errors = nullptr;
};

class StartedProgram {
public:
    /// Throws when it cannot be started. The streams must be such that a program inherits them.
    StartedProgram(const ProgramRun& run, const std::filesystem::path& folder, const ProgramStreams& streams);

    /// Its exit status, once it has ended.
    int wait() const;

private:
    Embedded::FileHandle process_;
};

/// An open file that a program inherits.
Embedded::FileHandle openInherited(const std::filesystem::path& file, DWORD access, DWORD disposition);

/// The two ends of a pipe. A program inherits the one that is not the test's own.
struct Pipe {
    enum class Own { none, reading, writing };
    explicit Pipe(Own own);
    Embedded::FileHandle reading;
    Embedded::FileHandle writing;
};

} // namespace Tests
