#include "orvelcs/cli/output.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <system_error>
#include <utility>

#include <fmt/format.h>

#include "embedded/base/parse_number.h"
#include "orvelcs/cli/display_text.h"
#include "orvelcs/cli/display_width.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/cli/process.h"

namespace Orvelcs {
namespace {

bool wantsEscapes(ColorUse color)
{
    if (color != ColorUse::automatic)
        return color == ColorUse::always;
    const char* noColor = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    return (noColor == nullptr || *noColor == '\0') && (terminal == nullptr || std::string_view(terminal) != "dumb");
}

/// The environment variable COLUMNS, or what the terminal says of itself; nothing where neither does.
std::optional<std::size_t> outputColumns()
{
    const auto columns = Embedded::parseInteger<std::size_t>(variable("COLUMNS").value_or(""));
    return columns.value_or(0) > 0 ? columns : terminalWidth(stdout);
}

void writeToStandardError(std::string_view text)
{
    static_cast<void>(std::fwrite(text.data(), 1, text.size(), stderr)); // a failure could be reported nowhere else
}

} // namespace

Output::Output(std::string command, const OutputOptions& options)
    : command_(std::move(command)),
      options_(options),
      escapes_(wantsEscapes(options.color)),
      bold_(options.color == ColorUse::always || (escapes_ && supportsEscapes(stdout)))
{
}

void Output::write(std::string_view bytes)
{
    hideProgress();
    hasResult_ = true;
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) < bytes.size() && writeError_ == 0)
        writeError_ = streamError();
}

void Output::line(std::string_view utf8)
{
    write(fmt::format("{}\n", utf8));
}

void Output::heading(std::string_view utf8)
{
    line(bold_ ? fmt::format("\x1B[1m{}\x1B[0m", utf8) : std::string(utf8));
}

std::optional<std::size_t> Output::tableColumns()
{
    return isTerminal(stdout) ? std::optional(helpColumns()) : std::nullopt;
}

std::size_t Output::helpColumns()
{
    constexpr std::size_t kUsual = 80;
    constexpr std::size_t kLeast = 20;
    return std::max(outputColumns().value_or(kUsual), kLeast);
}

void Output::document(const Json& json)
{
    write(printedJson(json) + "\n");
}

void Output::confirm(std::string_view subject, std::string_view message)
{
    if (!options_.json && !options_.quiet)
        line(fmt::format("{}: {}", oneLine(subject), oneLine(message)));
}

void Output::error(std::string_view subject, std::string_view message)
{
    diagnose(subject, message);
}

void Output::note(std::string_view subject, std::string_view message)
{
    if (!options_.quiet)
        importantNote(subject, message);
}

void Output::importantNote(std::string_view subject, std::string_view message)
{
    diagnose(subject, fmt::format("note: {}", message));
}

void Output::progress(std::string_view position, std::string_view subject) const
{
    showProgress(fmt::format("{} {}", position, oneLine(subject)));
}

void Output::showWaiting(std::string_view what) const
{
    showProgress(fmt::format("waiting for {}, which another process is changing", oneLine(what)));
}

void Output::showProgress(const std::string& text) const
{
    if (options_.quiet || !isTerminal(stderr))
        return;
    progressIsShown_ = escapes_ && supportsEscapes(stderr);
    if (!progressIsShown_)
        return writeToStandardError(text + "\n");
    // A line that goes on in the next one could not be removed. The last column stays free, since some terminals go on
    // to the next line when it is written.
    const std::optional<std::size_t> width = terminalWidth(stderr);
    writeToStandardError("\r\x1B[K" + (width ? truncated(text, *width - 1) : text));
}

bool Output::flush()
{
    if (std::fflush(stdout) != 0 && writeError_ == 0)
        writeError_ = streamError();
    return writeError_ == 0;
}

bool Output::readerIsGone() const
{
    return writeError_ == EPIPE;
}

ExitStatus Output::finish(ExitStatus status)
{
    hideProgress();
    if (flush())
        return status;
    if (readerIsGone())
        return ExitStatus::readerGone;
    error("standard output", "cannot be written: " + std::generic_category().message(writeError_));
    return worse(status, ExitStatus::failed);
}

// Results that were printed before come first where both streams are one.
void Output::diagnose(std::string_view subject, std::string_view message)
{
    hideProgress();
    static_cast<void>(flush()); // finish() reports it
    writeToStandardError(fmt::format("orvelcs: {}: {}: {}\n", command_, oneLine(subject), oneLine(message)));
}

void Output::hideProgress() const
{
    if (std::exchange(progressIsShown_, false))
        writeToStandardError("\r\x1B[K");
}

} // namespace Orvelcs
