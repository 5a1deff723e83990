#include "cli/program_run.h"

#include <stdexcept>

#include "cli/win32/started_program.h"
#include "support/file_text.h"

namespace Tests {
namespace {

using Embedded::FileHandle;

/// The standard output of a program.
class OutputHandle {
public:
    OutputHandle(OutputTarget target, const std::filesystem::path& captures)
    {
        switch (target) {
        case OutputTarget::captured:
            handle_ = openInherited(captures / "output", GENERIC_WRITE, CREATE_ALWAYS);
            return;
        case OutputTarget::full:
            throw std::runtime_error("no file of Windows is always full");
        case OutputTarget::closed:
            return;
        case OutputTarget::closedPipe:
            handle_ = std::move(Pipe(Pipe::Own::reading).writing);
            return;
        }
    }
    HANDLE get() const { return handle_.isOpen() ? handle_.get() : nullptr; }

private:
    FileHandle handle_;
};

} // namespace

std::vector<UnwritableOutput> unwritableOutputs()
{
    return {{OutputTarget::closed, "Bad file descriptor"}};
}

const int kClosedPipeStatus = 1;

// On Windows the program reads the catalog beside it, so the program and its libraries are copied without it.
ProgramRun withoutCatalog(ProgramRun run, const std::filesystem::path& folder)
{
    const std::filesystem::path programs = folder / "programs";
    if (std::filesystem::create_directory(programs))
        for (const auto& entry : std::filesystem::directory_iterator(run.program.parent_path()))
            if (entry.path().extension() == ".dll" || entry.path().filename() == run.program.filename())
                std::filesystem::copy_file(entry.path(), programs / entry.path().filename());
    run.program = programs / run.program.filename();
    run.environment["PROJ_LIB"] = run.environment["PROJ_DATA"] = (folder / "nonexistent").string();
    return run;
}

ProgramResult runProgram(const ProgramRun& run, const std::filesystem::path& folder,
                         const std::filesystem::path& captures)
{
    writeFile(captures / "input", run.input);
    writeFile(captures / "output", "");
    int status = -1;
    {
        const FileHandle input = openInherited(captures / "input", GENERIC_READ, OPEN_EXISTING);
        const OutputHandle output(run.target, captures);
        const FileHandle errors = openInherited(captures / "errors", GENERIC_WRITE, CREATE_ALWAYS);
        status = StartedProgram(run, folder, {input.get(), output.get(), errors.get()}).wait();
    }
    return {status, readFile(captures / "output"), readFile(captures / "errors")};
}

} // namespace Tests
