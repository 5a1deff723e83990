#include "orvelcs/drawing/best_item.h"

#include <algorithm>

#include <fmt/format.h>

#include "embedded/base/text.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/display_text.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/drawing/candidate_description.h"
#include "orvelcs/output/operation_description.h"

namespace Orvelcs {
namespace {

/// Empty for a candidate that is stored.
std::string whyNotStored(const Candidate& candidate)
{
    if (candidate.coverage == Coverage::none)
        return "its area of use lies outside of the place";
    if (!candidate.hasCode())
        return "it is not in the catalog, and a configuration names operations of the catalog";
    return candidate.isUsable ? "" : "it " + candidate.reason;
}

/// The name, or the code where several have the name.
std::string nameToStore(const Embedded::CatalogOperation& operation)
{
    const bool isUnique =
        operationStatus(operation.name, operation.kind) == Zentara::Infrastructure::SpatialReference::statusOk;
    return Embedded::utf8FromWide(isUnique ? operation.name : operation.code);
}

} // namespace

BestItem bestItem(const ConfigItemText& item, const ComparedPlace& place, Output& output)
{
    const std::string subject = item.source + " to " + item.target;
    const TransformationComparison comparison(
        {wideArgument("--source", item.source), wideArgument("--target", item.target)}, place);
    const std::vector<Candidate>& candidates = comparison.candidates();
    const auto best =
        std::ranges::find_if(candidates, [](const auto& candidate) { return whyNotStored(candidate).empty(); });
    for (auto skipped = candidates.begin(); skipped != best; ++skipped)
        output.note(subject, fmt::format("{} is skipped: {}", describeCandidate(*skipped), whyNotStored(*skipped)));
    if (best == candidates.end())
        throw Failure(subject,
                      fmt::format("none of the {} that lead from one to the other can be stored for the place",
                                  candidates.size()),
                      ExitStatus::nothingFound);
    const std::string area = oneLine(best->operation.areaOfUse);
    output.note(subject, fmt::format("the best that can be stored is {}, {}, {}{}", describeCandidate(*best),
                                     accuracyText(best->operation), coverageText(best->coverage),
                                     area.empty() ? "" : ": " + area));
    BestItem found{item, *best};
    found.item.name = nameToStore(best->operation);
    found.item.type = best->operation.kind;
    return found;
}

} // namespace Orvelcs
