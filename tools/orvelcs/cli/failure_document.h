// What a command prints as JSON when it ends early.
#pragma once

#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/output.h"

namespace Orvelcs {

enum class DocumentedFailures { all, allButWrongUsage };

/// Answers what the work does. A Failure of it goes on to the caller, where JSON is wanted after the document `failed`.
template <class Work>
auto withFailureDocument(const Json& failed, DocumentedFailures documented, Output& output, const Work& work)
{
    try {
        return work();
    } catch (const Failure& failure) {
        const bool isDocumented = documented == DocumentedFailures::all || failure.status() != ExitStatus::wrongUsage;
        if (output.json() && isDocumented)
            output.document(failed);
        throw;
    }
}

} // namespace Orvelcs
