#include "orvelcs/drawing/candidate_choice.h"

#include <algorithm>

#include <fmt/format.h>

#include "embedded/base/case_folding.h"
#include "embedded/base/parse_number.h"
#include "embedded/base/text.h"
#include "orvelcs/cli/display_text.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/suggestion.h"

namespace Orvelcs {
namespace {

using Candidates = std::vector<Candidate>;

const Candidate& candidateWithNumber(const std::string& option, std::size_t number, const Candidates& candidates)
{
    if (number < 1 || number > candidates.size())
        throw Failure(option,
                      fmt::format("there is no candidate {}; the numbers are from 1 to {}", number, candidates.size()),
                      ExitStatus::nothingFound);
    return candidates[number - 1];
}

std::string nearestCandidatesClause(const std::string& text, const Candidates& candidates)
{
    std::vector<std::string> names;
    for (const Candidate& candidate : candidates) {
        names.push_back(Embedded::utf8FromWide(candidate.operation.name));
        if (candidate.hasCode())
            names.push_back(Embedded::utf8FromWide(candidate.operation.code));
    }
    return nearestClause(nearest(text, names));
}

bool isCalled(const Candidate& candidate, const std::string& text)
{
    return Embedded::equalsIgnoringAsciiCase(Embedded::utf8FromWide(candidate.operation.code), text) ||
           Embedded::equalsIgnoringAsciiCase(Embedded::utf8FromWide(candidate.operation.name), text);
}

} // namespace

const Candidate& chooseCandidate(const std::string& option, const std::string& numberCodeOrName,
                                 const TransformationComparison& comparison)
{
    const Candidates& candidates = comparison.candidates();
    if (const auto number = Embedded::parseInteger<std::size_t>(numberCodeOrName))
        return candidateWithNumber(option, *number, candidates);
    const auto isMeant = [&](const Candidate& candidate) { return isCalled(candidate, numberCodeOrName); };
    const auto first = std::ranges::find_if(candidates, isMeant);
    if (first == candidates.end())
        throw Failure(option,
                      fmt::format("no candidate is called {}{}", oneLine(numberCodeOrName),
                                  nearestCandidatesClause(numberCodeOrName, candidates)),
                      ExitStatus::nothingFound);
    if (const auto second = std::find_if(first + 1, candidates.end(), isMeant); second != candidates.end())
        throw wrongUsage(option, fmt::format("several candidates are called {}, such as {} and {}; give a number",
                                             oneLine(numberCodeOrName), first->number, second->number));
    return *first;
}

} // namespace Orvelcs
