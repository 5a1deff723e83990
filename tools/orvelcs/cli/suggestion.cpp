#include "orvelcs/cli/suggestion.h"

#include <algorithm>
#include <cstddef>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace Orvelcs {
namespace {

char lowered(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

bool same(char left, char right)
{
    return lowered(left) == lowered(right);
}

// Optimal string alignment: each row of the table of distances is for a prefix of `left`.
std::size_t distanceBetween(std::string_view left, std::string_view right)
{
    std::vector<std::vector<std::size_t>> table(left.size() + 1, std::vector<std::size_t>(right.size() + 1));
    for (std::size_t row = 0; row <= left.size(); ++row) {
        for (std::size_t column = 0; column <= right.size(); ++column) {
            std::size_t& cell = table[row][column];
            if (row == 0 || column == 0) {
                cell = row + column;
                continue;
            }
            const std::size_t change = same(left[row - 1], right[column - 1]) ? 0 : 1;
            cell =
                std::min({table[row - 1][column] + 1, table[row][column - 1] + 1, table[row - 1][column - 1] + change});
            if (row > 1 && column > 1 && same(left[row - 1], right[column - 2]) &&
                same(left[row - 2], right[column - 1]))
                cell = std::min(cell, table[row - 2][column - 2] + 1);
        }
    }
    return table[left.size()][right.size()];
}

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
        const std::size_t distance = distanceBetween(withoutDashes(word), withoutDashes(candidate));
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
