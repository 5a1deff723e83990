#include "embedded/base/memo_cache.h"

#include <optional>
#include <string>

#include "spatial_reference/spatial_reference_test.h"

namespace {

using namespace Tests;

/// What is remembered of the key, or nothing, which is not kept.
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

class RememberedDefinition : public SpatialReferenceTest {
protected:
    /// Gives the system another datum than it came with.
    static void change(CoordinateReferenceSystemDefinition& definition)
    {
        const std::wstring before = factsOf(definition);
        ASSERT_EQ(definition.SetDatum(datum(L"EPSG:6326").get()), statusOk);
        ASSERT_NE(factsOf(definition), before);
    }
    static void changeFirst(DefinitionBaseArray& definitions)
    {
        const Held<DefinitionBase> first(definitions.Remove(0));
        change(dynamic_cast<CoordinateReferenceSystemDefinition&>(*first));
    }
};

TEST_F(RememberedDefinition, ChangedAfterItWasLoaded_IsLoadedAsItWas)
{
    const auto first = system(L"EPSG:25832");
    const std::wstring before = factsOf(*first);
    change(*first);
    EXPECT_EQ(factsOf(*system(L"EPSG:25832")), before);
}

TEST_F(RememberedDefinition, ChangedAfterItsStreamWasRead_IsReadAsItWas)
{
    const auto written = system(L"EPSG:25832");
    const Bytes bytes = bytesOf({written.get()});
    const auto first = read(bytes);
    changeFirst(*first);
    EXPECT_EQ(factsOf(*read(bytes)->GetItem(0)), factsOf(*written));
}

TEST_F(RememberedDefinition, ChangedAfterItsTextWasRead_IsReadAsItWas)
{
    const auto written = system(L"EPSG:25832");
    const Bytes bytes = serialized(*written, true);
    Held<DefinitionBaseArray> first;
    ASSERT_EQ(deserialize(bytes, first), statusOk);
    changeFirst(*first);
    Held<DefinitionBaseArray> second;
    ASSERT_EQ(deserialize(bytes, second), statusOk);
    EXPECT_EQ(factsOf(*second->GetItem(0)), factsOf(*written));
}

TEST_F(RememberedDefinition, ChangedAfterItsWktWasWritten_HasAnotherWkt)
{
    const auto definition = system(L"EPSG:25832");
    const std::wstring before = wktOf(*definition);
    change(*definition);
    EXPECT_NE(wktOf(*definition), before);
}

} // namespace
