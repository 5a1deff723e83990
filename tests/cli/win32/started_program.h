// Starts a program with the standard streams that a test chooses.
#pragma once

#include <windows.h>

#include <filesystem>

#include "cli/program_run.h"
#include "embedded/base/win32/file_handle.h"

namespace Tests {

/// The standard streams of a program. A stream without a handle is closed.
struct ProgramStreams {
    HANDLE input = nullptr;
    HANDLE output = nullptr;
    HANDLE errors = nullptr;
};

class StartedProgram {
public:
    /// Throws if the program cannot be started. The handles of the streams must be inheritable.
    StartedProgram(const ProgramRun& run, const std::filesystem::path& folder, const ProgramStreams& streams);

    /// Waits for the end of the program and returns its exit status.
    int wait() const;

private:
    Embedded::FileHandle process_;
};

/// Opens a file with an inheritable handle.
Embedded::FileHandle openInherited(const std::filesystem::path& file, DWORD access, DWORD disposition);

/// The two ends of a pipe. Programs inherit every end that is not the test's own.
struct Pipe {
    enum class Own { none, reading, writing };
    explicit Pipe(Own own);
    Embedded::FileHandle reading;
    Embedded::FileHandle writing;
};

} // namespace Tests
