// Where results, diagnostics and progress go.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "orvelcs/cli/exit_status.h"
#include "orvelcs/cli/json.h"

namespace Orvelcs {

struct OutputOptions {
    bool json = false;
    bool quiet = false;
    bool noColor = false;
};

/// Results go to standard output, everything else to standard error. Subjects and messages may hold any bytes.
class Output {
public:
    Output(std::string command, const OutputOptions& options);
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    ~Output() { hideProgress(); }

    bool json() const { return options_.json; }
    bool isQuiet() const { return options_.quiet; }

    /// Bytes, exactly.
    void write(std::string_view bytes);
    /// A line of a result.
    void line(std::string_view utf8);
    /// A line that stands above others; bold on a terminal.
    void heading(std::string_view utf8);
    /// The one JSON document.
    void document(const Json& json);
    /// Hands out what was printed so far, for a reader that waits for it; false when nothing can be printed any more.
    [[nodiscard]] bool flush();
    /// Says that something was done; not in JSON and not when quiet.
    void confirm(std::string_view subject, std::string_view message);

    void error(std::string_view subject, std::string_view message);
    /// Something worth knowing that is no failure; not when quiet.
    void note(std::string_view subject, std::string_view message);
    /// A note that nobody may miss; also when quiet.
    void importantNote(std::string_view subject, std::string_view message);
    /// Shows how far a batch has come; only on a terminal and not when quiet.
    void progress(std::size_t position, std::size_t total, std::string_view subject);
    /// Shows that the command waits for another process; only on a terminal and not when quiet.
    void showWaiting(std::string_view what) const;
    /// Takes away what the two show, as all further output does.
    void hideProgress() const;

    /// Hands out what is still buffered. Answers `status`, or a worse one when the results could not be written.
    [[nodiscard]] ExitStatus finish(ExitStatus status);

private:
    void diagnose(std::string_view subject, std::string_view message);
    void showProgress(const std::string& text) const;

    std::string command_;
    OutputOptions options_;
    bool escapes_; // whether a terminal may be sent escape sequences
    bool bold_;
    mutable bool progressIsShown_ = false; // which tells of the terminal alone
    int writeError_ = 0;
};

} // namespace Orvelcs
