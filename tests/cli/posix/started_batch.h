// A batch that a test interrupts while it runs.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

namespace Tests {

/// Runs the program with its output in a pipe that holds very little: after some lines the program waits for the test
/// to read on. The test decides by that, and not by time, how far the program can have come.
class StartedBatch {
public:
    StartedBatch(std::vector<std::string> arguments, const std::filesystem::path& folder,
                 const std::filesystem::path& errors);
    StartedBatch(const StartedBatch&) = delete;
    StartedBatch& operator=(const StartedBatch&) = delete;
    ~StartedBatch();

    /// Waits for the first line. Returns it without its end.
    std::string readLine();
    void send(int signal) const;
    /// Reads the rest of the output and waits for the end. Returns the status as waitpid sets it.
    int finish();
    /// Waits until the pipe has no room for another line of this length, so that the program waits for the test.
    void waitUntilFull(std::size_t lengthOfLine) const;
    /// Sends the signal again and again until the program has ended. Returns the status as waitpid sets it.
    int sendUntilEnd(int signal);
    /// All that was read.
    const std::string& output() const { return output_; }

private:
    /// Returns false at the end of the output.
    bool readMore();

    std::vector<std::string> arguments_;
    pid_t child_ = -1;
    int descriptor_ = -1;
    std::string output_;
};

} // namespace Tests
