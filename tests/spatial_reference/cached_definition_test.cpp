// A definition that a client changes does not change the cached one.
#include "spatial_reference_test.h"

namespace Tests {
namespace {

class CachedDefinition : public SpatialReferenceTest {
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

TEST_F(CachedDefinition, ChangedAfterItWasLoaded_IsLoadedAsItWas)
{
    const auto first = system(L"EPSG:25832");
    const std::wstring before = factsOf(*first);
    change(*first);
    EXPECT_EQ(factsOf(*system(L"EPSG:25832")), before);
}

TEST_F(CachedDefinition, ChangedAfterItsStreamWasRead_IsReadAsItWas)
{
    const auto written = system(L"EPSG:25832");
    const Bytes bytes = bytesOf({written.get()});
    const auto first = read(bytes);
    changeFirst(*first);
    EXPECT_EQ(factsOf(*read(bytes)->GetItem(0)), factsOf(*written));
}

TEST_F(CachedDefinition, ChangedAfterItsTextWasRead_IsReadAsItWas)
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

TEST_F(CachedDefinition, ChangedAfterItsWktWasWritten_HasAnotherWkt)
{
    const auto definition = system(L"EPSG:25832");
    const std::wstring before = wktOf(*definition);
    change(*definition);
    EXPECT_NE(wktOf(*definition), before);
}

} // namespace
} // namespace Tests
