#include "orvelcs/drawing/fitted_comparison_page.h"

#include <algorithm>

#include "orvelcs/output/pages/comparison_page.h"

namespace Orvelcs {
namespace {

/// Between the first and the second, the first and the third, and so on.
std::vector<std::vector<double>> distancesBetweenAll(TransformationComparison& comparison,
                                                     const std::vector<Candidate>& candidates,
                                                     const std::vector<Embedded::GeographicPoint>& points)
{
    std::vector<std::vector<Embedded::GeographicPoint>> positions;
    for (const Candidate& candidate : candidates)
        positions.push_back(comparison.positions(candidate, points));
    std::vector<std::vector<double>> distances;
    for (std::size_t from = 0; from < positions.size(); ++from)
        for (std::size_t to = from + 1; to < positions.size(); ++to)
            distances.push_back(comparison.distances(positions[from], positions[to]));
    return distances;
}

} // namespace

std::vector<Candidate> pageCandidates(const TransformationComparison& comparison, const std::vector<Candidate>& shown)
{
    constexpr std::size_t kMostCandidates = 10;
    std::vector<Candidate> all = shown;
    for (const Candidate& candidate : comparison.candidates())
        if (candidate.isUsable && all.size() < kMostCandidates &&
            std::ranges::find(all, candidate.number, &Candidate::number) == all.end())
            all.push_back(candidate);
    return all;
}

std::string fitComparisonPage(const PicturedPair& pair, TransformationComparison& comparison,
                              const std::vector<Candidate>& candidates)
{
    constexpr std::size_t kMostPageNodes = 16'000;
    ComparedCandidates compared{.pair = pair, .candidates = {}, .nodes = {}, .metres = {}};
    std::ranges::transform(candidates, std::back_inserter(compared.candidates), pictureCandidate);
    std::string page;
    for (std::size_t mostNodes = kMostPageNodes; page.empty() || page.size() > kLargestPage;
         mostNodes = compared.nodes.size() - 1) {
        compared.nodes = makeNodeGrid(pair.extent, mostNodes);
        compared.metres = distancesBetweenAll(comparison, candidates, compared.nodes.points());
        page = writeComparisonPage(compared);
    }
    return page;
}

} // namespace Orvelcs
