// The JSON document of a command that ends early.
#pragma once

#include <concepts>

#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/output.h"

namespace Orvelcs {

enum class DocumentedFailures { all, allButWrongUsage };

/// Returns what the work returns. When the work throws a Failure, prints `document(failure)` where JSON is wanted and
/// throws the Failure on.
template <class Document, class Work>
requires std::invocable<Document, const Failure&>
auto withFailureDocument(const Document& document, DocumentedFailures documented, Output& output, const Work& work)
{
    try {
        return work();
    } catch (const Failure& failure) {
        const bool isDocumented = documented == DocumentedFailures::all || failure.status() != ExitStatus::wrongUsage;
        if (output.json() && isDocumented)
            output.document(document(failure));
        throw;
    }
}

/// The same with one document for every Failure.
template <class Work>
auto withFailureDocument(const Json& document, DocumentedFailures documented, Output& output, const Work& work)
{
    return withFailureDocument([&](const Failure&) { return document; }, documented, output, work);
}

} // namespace Orvelcs
