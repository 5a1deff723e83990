#include "embedded/base/edit_distance.h"

#include <algorithm>
#include <vector>

namespace Embedded {
namespace {

/// Keeps three rows of the table of distances. Row and column are the lengths of the prefixes that it compares.
template <class Text>
std::size_t distanceBetween(Text left, Text right, EditCosts costs)
{
    std::vector<std::size_t> beforeLast(right.size() + 1), last(right.size() + 1), current(right.size() + 1);
    for (std::size_t column = 0; column <= right.size(); ++column)
        current[column] = column * costs.edit;
    for (std::size_t row = 1; row <= left.size(); ++row) {
        beforeLast.swap(last);
        last.swap(current); // what the row before the last one held is overwritten
        current[0] = row * costs.edit;
        for (std::size_t column = 1; column <= right.size(); ++column) {
            const std::size_t replacement = left[row - 1] == right[column - 1] ? 0 : costs.edit;
            current[column] =
                std::min({last[column] + costs.edit, current[column - 1] + costs.edit, last[column - 1] + replacement});
            const bool isSwapped =
                row > 1 && column > 1 && left[row - 1] == right[column - 2] && left[row - 2] == right[column - 1];
            if (isSwapped)
                current[column] = std::min(current[column], beforeLast[column - 2] + costs.swap);
        }
    }
    return current.back();
}

} // namespace

std::size_t editDistance(std::string_view left, std::string_view right, EditCosts costs)
{
    return distanceBetween(left, right, costs);
}

std::size_t editDistance(std::wstring_view left, std::wstring_view right, EditCosts costs)
{
    return distanceBetween(left, right, costs);
}

} // namespace Embedded
