#include "embedded/base/memo_cache.h"

#include <optional>
#include <string>

#include <gtest/gtest.h>

namespace Tests {
namespace {

/// The cached value of the key, or nothing.
template <class Key>
std::optional<int> cached(Embedded::MemoCache<Key, std::optional<int>>& numbers, const Key& key)
{
    return numbers.getOrCompute(
        key, [] { return std::optional<int>(); }, [](const auto&) { return false; });
}

template <class Key>
void store(Embedded::MemoCache<Key, std::optional<int>>& numbers, const Key& key, int number)
{
    EXPECT_EQ(numbers.getOrCompute(
                  key, [number] { return std::optional(number); }, [](const auto&) { return true; }),
              number);
}

TEST(MemoCache, CachedValue_IsReturned)
{
    Embedded::MemoCache<std::string, std::optional<int>> numbers;
    store<std::string>(numbers, "one", 1);
    EXPECT_EQ(cached<std::string>(numbers, "one"), 1);
    EXPECT_EQ(cached<std::string>(numbers, "two"), std::nullopt);
}

TEST(MemoCache, FullCache_DropsTheValueThatWasUsedLongestAgo)
{
    Embedded::MemoCache<int, std::optional<int>> numbers;
    constexpr int kMost = numbers.kMaxEntries;
    for (int number = 0; number < kMost; ++number)
        store(numbers, number, number);
    EXPECT_EQ(cached(numbers, 0), 0); // is the most recently used one now
    store(numbers, kMost, kMost);
    EXPECT_EQ(cached(numbers, 1), std::nullopt);
    for (const int number : {0, 2, kMost - 1, kMost})
        EXPECT_EQ(cached(numbers, number), number);
}

TEST(MemoCache, Cache_CountsHitsAndMisses)
{
    Embedded::MemoCache<std::string, std::optional<int>> numbers;
    EXPECT_EQ(numbers.hits() + numbers.misses(), 0U);
    store<std::string>(numbers, "one", 1);
    EXPECT_EQ(numbers.misses(), 1U);
    EXPECT_EQ(cached<std::string>(numbers, "one"), 1);
    EXPECT_EQ(cached<std::string>(numbers, "one"), 1);
    EXPECT_EQ(cached<std::string>(numbers, "two"), std::nullopt);
    EXPECT_EQ(numbers.hits(), 2U);
    EXPECT_EQ(numbers.misses(), 2U);
}

TEST(MemoCache, MoreKeysThanFitInTurns_AreComputedEachTime)
{
    Embedded::MemoCache<int, std::optional<int>> numbers;
    constexpr int kKeys = numbers.kMaxEntries + 1;
    for (int turn = 0; turn < 3; ++turn) {
        for (int key = 0; key < kKeys; ++key)
            store(numbers, key, key);
    }
    EXPECT_EQ(numbers.hits(), 0U);
}

TEST(MemoCache, TooLongKey_IsNotCached)
{
    Embedded::MemoCache<std::string, std::optional<int>> numbers;
    const std::string longest(16384, 'x');
    store(numbers, longest, 1);
    store(numbers, longest + 'x', 2);
    EXPECT_NE(cached(numbers, longest), std::nullopt);
    EXPECT_EQ(cached(numbers, longest + 'x'), std::nullopt);
}

} // namespace
} // namespace Tests
