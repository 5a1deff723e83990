// Where results, diagnostics and progress go.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "orvelcs/cli/exit_status.h"
#include "orvelcs/cli/json.h"

namespace Orvelcs {

enum class ColorUse { automatic, always, never };

struct OutputOptions {
    bool json = false;
    bool quiet = false;
    ColorUse color = ColorUse::automatic;
};

/// Results go to standard output, everything else to standard error. Subjects and messages may hold any bytes.
class Output {
public:
    Output(std::string command, const OutputOptions& options);
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    ~Output() { hideProgress(); }

    const std::string& command() const { return command_; }
    bool json() const { return options_.json; }
    bool isQuiet() const { return options_.quiet; }

    /// Whether a result was written, or a part of one.
    bool hasResult() const { return hasResult_; }
    /// Writes the bytes as they are.
    void write(std::string_view bytes);
    /// Writes a line of a result.
    void line(std::string_view utf8);
    /// Writes a line that is bold on a terminal.
    void heading(std::string_view utf8);
    /// The columns that a line of a table may take; nothing where lines are never cut, as in a pipe.
    static std::optional<std::size_t> tableColumns();
    /// The columns of the help: those of the terminal, or 80.
    static std::size_t helpColumns();
    /// Writes the one JSON document.
    void document(const Json& json);
    /// Writes out what is buffered. Returns false when standard output cannot be written.
    [[nodiscard]] bool flush();
    /// Returns whether a write failed because nobody reads standard output any more.
    bool readerIsGone() const;
    /// Prints that something was done, unless JSON or --quiet is wanted.
    void confirm(std::string_view subject, std::string_view message);

    void error(std::string_view subject, std::string_view message);
    /// Prints what a person should know although nothing failed, unless --quiet is given.
    void note(std::string_view subject, std::string_view message);
    /// Prints a note with --quiet too.
    void importantNote(std::string_view subject, std::string_view message);
    /// Shows the position in a batch, on a terminal and without --quiet.
    void progress(std::string_view position, std::string_view subject) const;
    /// Shows that the command waits for another process, on a terminal and without --quiet.
    void showWaiting(std::string_view what) const;
    /// Removes the line of progress or of waiting. All further output does so too.
    void hideProgress() const;

    /// Writes out what is buffered. Returns `status`, or a worse one when the results could not be written. A reader
    /// that went away is no message.
    [[nodiscard]] ExitStatus finish(ExitStatus status);

private:
    void diagnose(std::string_view subject, std::string_view message);
    void showProgress(const std::string& text) const;

    std::string command_;
    OutputOptions options_;
    bool escapes_; // whether escape sequences are wanted on a terminal
    bool bold_;
    mutable bool progressIsShown_ = false; // about the terminal, not about the output
    bool hasResult_ = false;
    int writeError_ = 0;
};

} // namespace Orvelcs
