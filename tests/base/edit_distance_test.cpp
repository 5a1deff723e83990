#include "embedded/base/edit_distance.h"

#include <gtest/gtest.h>

namespace Tests {
namespace {

using Embedded::EditCosts;
using Embedded::editDistance;

TEST(EditDistance, CountsInsertionsDeletionsReplacementsAndSwaps)
{
    struct Case {
        const char* left;
        const char* right;
        std::size_t distance;
    };
    for (const Case& row : {Case{"", "", 0}, Case{"assign", "assign", 0}, Case{"", "abc", 3}, Case{"abc", "", 3},
                            Case{"asign", "assign", 1}, Case{"assignn", "assign", 1}, Case{"assihn", "assign", 1},
                            Case{"assing", "assign", 1}, Case{"ab", "ba", 1}, Case{"abc", "ca", 3},
                            Case{"Assign", "assign", 1}, Case{"kitten", "sitting", 3}})
        EXPECT_EQ(editDistance(row.left, row.right, EditCosts{}), row.distance) << row.left << ", " << row.right;
}

TEST(EditDistance, UsesTheCostsThatItIsGiven)
{
    constexpr EditCosts kCosts{.edit = 3, .swap = 2};
    EXPECT_EQ(editDistance(L"25832", L"25823", kCosts), 2U);
    EXPECT_EQ(editDistance(L"25832", L"2583", kCosts), 3U);
    EXPECT_EQ(editDistance(L"2532", L"25832", kCosts), 3U);
    EXPECT_EQ(editDistance(L"25832", L"52823", kCosts), 4U);
    EXPECT_EQ(editDistance(L"", L"12", kCosts), 6U);
}

} // namespace
} // namespace Tests
