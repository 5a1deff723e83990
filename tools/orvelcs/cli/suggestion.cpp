#include "orvelcs/cli/suggestion.h"

#include <algorithm>
#include <cstddef>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "embedded/base/case_folding.h"
#include "embedded/base/edit_distance.h"

namespace Orvelcs {
namespace {

std::string_view withoutDashes(std::string_view word)
{
    return word.substr(std::min(word.size(), word.find_first_not_of('-')));
}

} // namespace

std::vector<std::string> nearest(std::string_view word, const std::vector<std::string>& candidates)
{
    constexpr std::size_t kLongestWord = 64; // nothing that long is a misspelling
    if (word.size() > kLongestWord)
        return {};
    std::size_t best = (withoutDashes(word).size() + 1) / 2;
    std::vector<std::string> names;
    for (const std::string& candidate : candidates) {
        const std::size_t distance = Embedded::editDistance(Embedded::toLowerAscii(withoutDashes(word)),
                                                            Embedded::toLowerAscii(withoutDashes(candidate)), {});
        if (distance < best)
            names.clear();
        if (distance <= best && distance < withoutDashes(candidate).size()) {
            best = distance;
            names.push_back(candidate);
        }
    }
    return names;
}

std::string nearestClause(const std::vector<std::string>& names)
{
    if (names.empty())
        return {};
    return fmt::format("; the nearest {} {}", names.size() == 1 ? "is" : "are", fmt::join(names, ", "));
}

} // namespace Orvelcs
