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

TEST(MemoCache, FullCache_IsClearedForTheNextValue)
{
    Embedded::MemoCache<int, std::optional<int>> numbers;
    constexpr int kMore = 65;
    for (int number = 0; number < kMore; ++number)
        store(numbers, number, number);
    EXPECT_EQ(cached(numbers, 0), std::nullopt);
    EXPECT_NE(cached(numbers, kMore - 1), std::nullopt);
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
