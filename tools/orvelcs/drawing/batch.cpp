#include "orvelcs/drawing/batch.h"

#include <chrono>

#include <fmt/format.h>

#include "orvelcs/cli/interruption.h"
#include "orvelcs/cli/json_array.h"
#include "orvelcs/cli/progress_text.h"
#include "orvelcs/drawing/loaded_module.h"

namespace Orvelcs {
namespace {

/// How far a batch has come.
struct BatchCount {
    std::size_t total = 0;
    std::size_t done = 0;
    std::size_t failed = 0;
    ExitStatus status = ExitStatus::done;

    void add(ExitStatus outcome)
    {
        ++done;
        failed += outcome == ExitStatus::failed ? 1 : 0;
        status = worse(status, outcome);
    }
};

class BatchProgress {
public:
    explicit BatchProgress(const Output& output) : output_(output) {}

    void show(const BatchCount& count, const std::string& file) const
    {
        using std::chrono::milliseconds;
        const auto elapsed = std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now() - start_);
        if (count.total > 1)
            output_.progress(progressText(count.done + 1, count.total, elapsed), file);
    }

private:
    const Output& output_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

void reportInterruption(const BatchCount& count, Output& output)
{
    const std::string failed = count.failed > 0 ? fmt::format(", {} of which failed", count.failed) : "";
    output.error("interrupted", fmt::format("after {} of {} drawings{}; {} not opened", count.done, count.total, failed,
                                            count.total - count.done));
}

BatchCount runEach(const std::vector<std::string>& names, Output& output, const DrawingWork& work)
{
    BatchCount count{.total = names.size()};
    JsonArray documents(output);
    const BatchProgress progress(output);
    for (const std::string& name : names) {
        progress.show(count, name);
        const DrawingOutcome outcome = work(name);
        documents.add(outcome.json);
        count.add(outcome.status);
        static_cast<void>(output.flush()); // finish() reports it
        if (isInterrupted() || output.readerIsGone())
            break;
    }
    return count;
}

ExitStatus runBatch(const DrawingFiles& files, Output& output, const DrawingWork& work)
{
    const DeferredInterruption interruption;
    if (files.names.empty())
        output.note(files.list, "names no drawing, and so nothing was done");
    const BatchCount count = runEach(files.names, output, work);
    if (output.readerIsGone())
        return ExitStatus::readerGone;
    if (!isInterrupted())
        return count.status;
    reportInterruption(count, output);
    return ExitStatus::interrupted;
}

} // namespace

ExitStatus forEachDrawing(const DrawingFiles& files, Output& output, const DrawingWork& work)
{
    const LoadedModule module;
    if (files.isBatch())
        return runBatch(files, output, work);
    const DrawingOutcome outcome = work(files.names.front());
    if (output.json())
        output.document(outcome.json);
    return outcome.status;
}

ExitStatus forEachDrawing(const std::vector<std::string>& files, Output& output, const DrawingWork& work)
{
    DrawingFiles named;
    named.names = files;
    return forEachDrawing(named, output, work);
}

} // namespace Orvelcs
