#include "cli/program_run.h"

#include <cstdlib>
#include <stdexcept>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "cli/posix/json_documents.h"
#include "support/file_text.h"

namespace Tests {
namespace {

class SpawnActions {
public:
    SpawnActions() { check(::posix_spawn_file_actions_init(&actions_)); }
    SpawnActions(const SpawnActions&) = delete;
    SpawnActions& operator=(const SpawnActions&) = delete;
    ~SpawnActions() { ::posix_spawn_file_actions_destroy(&actions_); }

    void changeFolder(const std::filesystem::path& folder)
    {
        check(::posix_spawn_file_actions_addchdir_np(&actions_, folder.c_str()));
    }
    void open(int descriptor, const std::filesystem::path& file, int flags)
    {
        check(::posix_spawn_file_actions_addopen(&actions_, descriptor, file.c_str(), flags, 0600));
    }
    void duplicate(int from, int to) { check(::posix_spawn_file_actions_adddup2(&actions_, from, to)); }
    void close(int descriptor) { check(::posix_spawn_file_actions_addclose(&actions_, descriptor)); }
    const posix_spawn_file_actions_t* get() const { return &actions_; }

    static void check(int error)
    {
        if (error != 0)
            throw std::runtime_error("posix_spawn: error " + std::to_string(error));
    }

private:
    posix_spawn_file_actions_t actions_{};
};

/// The writing end of a pipe that nobody reads.
class UnreadPipe {
public:
    UnreadPipe()
    {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0)
            throw std::runtime_error("pipe2 failed");
        ::close(ends[0]);
        writingEnd_ = ends[1];
    }
    UnreadPipe(const UnreadPipe&) = delete;
    UnreadPipe& operator=(const UnreadPipe&) = delete;
    ~UnreadPipe() { ::close(writingEnd_); }
    int writingEnd() const { return writingEnd_; }

private:
    int writingEnd_ = -1;
};

std::vector<std::string> makeEnvironment(const ProgramRun& run)
{
    std::map<std::string, std::string> all = {{"LC_ALL", "C"}};
    for (const char* name : {"PATH", "HOME", "ASAN_OPTIONS", "UBSAN_OPTIONS", "LLVM_PROFILE_FILE"})
        if (const char* value = std::getenv(name); value != nullptr)
            all[name] = value;
    for (const auto& [name, value] : run.environment)
        all[name] = value;
    std::vector<std::string> lines;
    for (const auto& [name, value] : all)
        lines.push_back(name + "=" + value);
    return lines;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

void directOutput(SpawnActions& actions, OutputTarget target, const std::filesystem::path& captures,
                  const UnreadPipe& unread)
{
    switch (target) {
    case OutputTarget::captured:
        return actions.open(STDOUT_FILENO, captures / "output", O_WRONLY | O_CREAT | O_TRUNC);
    case OutputTarget::full:
        return actions.open(STDOUT_FILENO, "/dev/full", O_WRONLY);
    case OutputTarget::closed:
        return actions.close(STDOUT_FILENO);
    case OutputTarget::closedPipe:
        return actions.duplicate(unread.writingEnd(), STDOUT_FILENO);
    }
}

} // namespace

std::vector<UnwritableOutput> unwritableOutputs()
{
    return {{OutputTarget::full, "No space left on device"}, {OutputTarget::closed, "Bad file descriptor"}};
}

const int kClosedPipeStatus = 141;

ProgramRun withoutCatalog(ProgramRun run, const std::filesystem::path& folder)
{
    run.environment["PROJ_LIB"] = run.environment["PROJ_DATA"] = (folder / "nonexistent").string();
    return run;
}

ProgramResult runProgram(const ProgramRun& run, const std::filesystem::path& folder,
                         const std::filesystem::path& captures)
{
    writeFile(captures / "input", run.input);
    writeFile(captures / "output", "");
    const UnreadPipe unread;
    SpawnActions actions;
    actions.open(STDIN_FILENO, captures / "input", O_RDONLY);
    directOutput(actions, run.target, captures, unread);
    actions.open(STDERR_FILENO, captures / "errors", O_WRONLY | O_CREAT | O_TRUNC);
    actions.changeFolder(folder);

    std::vector<std::string> words = {run.program.string()};
    words.insert(words.end(), run.arguments.begin(), run.arguments.end());
    std::vector<std::string> environment = makeEnvironment(run);
    pid_t child = 0;
    SpawnActions::check(::posix_spawn(&child, run.program.c_str(), actions.get(), nullptr, pointersTo(words).data(),
                                      pointersTo(environment).data()));
    int waitStatus = 0;
    ::waitpid(child, &waitStatus, 0);
    const ProgramResult result{WIFEXITED(waitStatus) ? WEXITSTATUS(waitStatus) : -1, readFile(captures / "output"),
                               readFile(captures / "errors")};
    if (run.program == ORVELCS_PROGRAM)
        recordDocument(run.arguments, result.output);
    return result;
}

} // namespace Tests
