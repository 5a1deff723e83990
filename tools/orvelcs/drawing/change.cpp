#include "orvelcs/drawing/change.h"

#include <algorithm>

#include <fmt/format.h>

#include "orvelcs/cli/display_text.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/cli/suggestion.h"
#include "orvelcs/output/result_names.h"

namespace Orvelcs {

namespace Library = Zentara::Infrastructure::SpatialReference;

namespace {

/// The result for one drawing.
struct ChangeReport {
    std::string file;
    std::optional<int> result = 0;
    int status = Library::statusOk;
    std::vector<Event> events;
    std::optional<std::string> error; // none where it was done
};

void fail(ChangeReport& report, const Embedded::Error& error)
{
    report.result = error.status;
    report.error = describe(report.file, error);
}

void fail(ChangeReport& report, Qeapp::ErrorStatus result, const Change& change)
{
    report.result = result;
    const std::string reason = result == Qeapp::eVetoed ? "a reactor vetoed the change" : change.reason(result);
    report.error = fmt::format("{}: {}", resultName(result), reason);
}

ChangeReport changeOne(const std::string& file, const ChangeOptions& options, const Change& change, Output& output)
{
    ChangeReport report;
    report.file = file;
    OpenDrawing drawing(file, Embedded::DrawingAccess::changing, output);
    if (const Embedded::Expected<void> loaded = drawing.load(); !loaded) {
        fail(report, loaded.error());
        return report;
    }
    RecordingReactor reactor(parseVetoes(options));
    Library::Status status = Library::statusOk;
    const Qeapp::ErrorStatus result = change.apply(drawing.database(), status);
    report.status = status;
    report.events = reactor.events();
    if (const Embedded::Expected<void> loading = drawing.loadingResult(); !loading)
        fail(report, loading.error());
    else if (result != Qeapp::eOk)
        fail(report, result, change);
    else if (const Embedded::Expected<void> saved = drawing.save(output); !saved)
        fail(report, saved.error());
    return report;
}

Json asJson(const ChangeReport& report)
{
    Json json = {{"file", report.file},
                 {"result", jsonValue(report.result)},
                 {"status", report.status},
                 {"events", eventsAsJson(report.events)}};
    if (report.error)
        json["error"] = *report.error;
    return json;
}

void print(const ChangeReport& report, const ChangeOptions& options, const Change& change, Output& output)
{
    printEvents(report.file, report.events, options, output);
    if (report.error)
        output.error(report.file, *report.error);
    else if (report.file != kStandardStream)
        output.confirm(report.file, change.done);
}

} // namespace

void addChangeOptions(CLI::App& command, ChangeOptions& options)
{
    command.add_flag("--events", options.events, "print each notice that a registered reactor receives, in order");
    addArguments(
        command, "--veto WHICH", options.vetoes, "let the reactor veto one or both of these changes",
        {.choices = {{"named", "assignments, which have a name"}, {"removal", "removals, whose name is null"}}})
        ->allow_extra_args(false);
}

void checkChangeOptions(const ChangeOptions& options, const Output& output)
{
    const std::vector<std::string> known = {"named", "removal"};
    for (const std::string& veto : options.vetoes)
        if (std::find(known.begin(), known.end(), veto) == known.end())
            throw wrongUsage("--veto", fmt::format("expected named or removal, found {}{}", veto,
                                                   nearestClause(nearest(veto, known))));
    checkFileNames(options.files.names, true, output);
    if (options.events && !options.files.isBatch() && options.files.names.front() == kStandardStream)
        throw wrongUsage(kStandardStream, "the drawing itself goes to standard output, where --events has no place");
}

Vetoes parseVetoes(const ChangeOptions& options)
{
    Vetoes vetoes;
    for (const std::string& veto : options.vetoes)
        (veto == "named" ? vetoes.named : vetoes.removal) = true;
    return vetoes;
}

void printEvents(const std::string& file, const std::vector<Event>& events, const ChangeOptions& options,
                 Output& output)
{
    if (options.events && !output.json())
        for (const Event& event : events)
            output.line(fmt::format("{}: {}", oneLine(file), eventAsLine(event)));
}

ExitStatus changeDrawings(const ChangeOptions& options, const Change& change, Output& output)
{
    return forEachDrawing(options.files, output, [&](const std::string& file) {
        const ChangeReport report = changeOne(file, options, change, output);
        print(report, options, change, output);
        return DrawingOutcome{!report.error ? ExitStatus::done : ExitStatus::failed, asJson(report)};
    });
}

void printUnchanged(const DrawingFiles& files, const Failure& failure, std::optional<int> result, Output& output)
{
    if (!output.json() || failure.status() == ExitStatus::wrongUsage)
        return;
    const int status = failure.code() ? failure.code()->number : Library::statusOk;
    const std::string error = result ? failure.what() : failure.text();
    const auto unchanged = [&](const std::string& file) {
        return DrawingOutcome{ExitStatus::failed, asJson({file, result, status, {}, error})};
    };
    static_cast<void>(forEachDrawing(files, output, unchanged)); // the Failure has the exit status
}

} // namespace Orvelcs
