#include "embedded/spatial_reference/remembered.h"

#include <string>

#include "spatial_reference_test.h"

namespace {

using namespace Tests;

TEST(Remembered, WhatWasKept_IsFound)
{
    Embedded::Remembered<std::string, int> numbers;
    numbers.keep("one", 1);
    ASSERT_NE(numbers.find("one"), nullptr);
    EXPECT_EQ(*numbers.find("one"), 1);
    EXPECT_EQ(numbers.find("two"), nullptr);
}

TEST(Remembered, WhatIsKeptBeyondTheRoom_TakesTheOthersPlace)
{
    Embedded::Remembered<int, int> numbers;
    constexpr int kMore = 65;
    for (int number = 0; number < kMore; ++number)
        numbers.keep(number, number);
    EXPECT_EQ(numbers.find(0), nullptr);
    EXPECT_NE(numbers.find(kMore - 1), nullptr);
}

TEST(Remembered, WhatIsLongerThanADefinition_IsNotKept)
{
    Embedded::Remembered<std::string, int> numbers;
    const std::string longest(16384, 'x');
    numbers.keep(longest, 1);
    numbers.keep(longest + 'x', 2);
    EXPECT_NE(numbers.find(longest), nullptr);
    EXPECT_EQ(numbers.find(longest + 'x'), nullptr);
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
