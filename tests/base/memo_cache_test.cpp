#include "embedded/base/memo_cache.h"

#include <optional>
#include <string>

#include <gtest/gtest.h>

namespace Tests {
namespace {

/// The cached value of the key, or nothing, which is not kept.
template <class Key>
std::optional<int> found(Embedded::MemoCache<Key, std::optional<int>>& numbers, const Key& key)
{
    return numbers.getOrCompute(
        key, [] { return std::optional<int>(); }, [](const auto&) { return false; });
}

template <class Key>
void keep(Embedded::MemoCache<Key, std::optional<int>>& numbers, const Key& key, int number)
{
    EXPECT_EQ(numbers.getOrCompute(
                  key, [number] { return std::optional(number); }, [](const auto&) { return true; }),
              number);
}

TEST(MemoCache, WhatWasKept_IsFound)
{
    Embedded::MemoCache<std::string, std::optional<int>> numbers;
    keep<std::string>(numbers, "one", 1);
    EXPECT_EQ(found<std::string>(numbers, "one"), 1);
    EXPECT_EQ(found<std::string>(numbers, "two"), std::nullopt);
}

TEST(MemoCache, WhatIsKeptBeyondTheRoom_TakesTheOthersPlace)
{
    Embedded::MemoCache<int, std::optional<int>> numbers;
    constexpr int kMore = 65;
    for (int number = 0; number < kMore; ++number)
        keep(numbers, number, number);
    EXPECT_EQ(found(numbers, 0), std::nullopt);
    EXPECT_NE(found(numbers, kMore - 1), std::nullopt);
}

TEST(MemoCache, WhatIsLongerThanADefinition_IsNotKept)
{
    Embedded::MemoCache<std::string, std::optional<int>> numbers;
    const std::string longest(16384, 'x');
    keep(numbers, longest, 1);
    keep(numbers, longest + 'x', 2);
    EXPECT_NE(found(numbers, longest), std::nullopt);
    EXPECT_EQ(found(numbers, longest + 'x'), std::nullopt);
}

} // namespace
} // namespace Tests
