// The JSON document of a command that ends early.
#pragma once

#include "orvelcs/cli/error_document.h"
#include "orvelcs/cli/output.h"

namespace Orvelcs {

/// Returns what the work returns. When the work throws a Failure other than wrong usage, prints
/// `failureDocument(document, …)` where JSON is wanted and throws the Failure on. The program itself prints the error
/// document of a command that has printed nothing.
template <class Work>
auto withFailureDocument(const Json& document, Output& output, const Work& work)
{
    try {
        return work();
    } catch (const Failure& failure) {
        if (output.json() && failure.status() != ExitStatus::wrongUsage)
            output.document(failureDocument(document, output.command(), failure));
        throw;
    }
}

} // namespace Orvelcs
