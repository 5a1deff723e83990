// A definition that a client changes does not change the cached one.
#include "spatial_reference/spatial_reference_test.h"

namespace Tests {
namespace {

class CachedDefinition : public SpatialReferenceTest {
protected:
    /// Gives the system another datum.
    static void change(CoordinateReferenceSystemDefinition& definition)
    {
        const std::wstring before = describe(definition);
        ASSERT_EQ(definition.SetDatum(loadDatum(L"EPSG:6326").get()), statusOk);
        ASSERT_NE(describe(definition), before);
    }
    static void changeFirst(DefinitionBaseArray& definitions)
    {
        const Holder<DefinitionBase> first(definitions.Remove(0));
        change(dynamic_cast<CoordinateReferenceSystemDefinition&>(*first));
    }
};

TEST_F(CachedDefinition, ChangeAfterALoad_DoesNotAffectTheNextLoad)
{
    const auto first = loadSystem(L"EPSG:25832");
    const std::wstring before = describe(*first);
    change(*first);
    EXPECT_EQ(describe(*loadSystem(L"EPSG:25832")), before);
}

TEST_F(CachedDefinition, ChangeAfterReadingAStream_DoesNotAffectTheNextRead)
{
    const auto written = loadSystem(L"EPSG:25832");
    const Bytes bytes = writeStream({written.get()});
    const auto first = readStream(bytes);
    changeFirst(*first);
    EXPECT_EQ(describe(*readStream(bytes)->GetItem(0)), describe(*written));
}

TEST_F(CachedDefinition, ChangeAfterReadingAText_DoesNotAffectTheNextRead)
{
    const auto written = loadSystem(L"EPSG:25832");
    const Bytes bytes = serialize(*written, true);
    Holder<DefinitionBaseArray> first;
    ASSERT_EQ(deserialize(bytes, first), statusOk);
    changeFirst(*first);
    Holder<DefinitionBaseArray> second;
    ASSERT_EQ(deserialize(bytes, second), statusOk);
    EXPECT_EQ(describe(*second->GetItem(0)), describe(*written));
}

TEST_F(CachedDefinition, ChangeAfterWritingWkt_ChangesTheNextWkt)
{
    const auto definition = loadSystem(L"EPSG:25832");
    const std::wstring before = writeWkt(*definition);
    change(*definition);
    EXPECT_NE(writeWkt(*definition), before);
}

} // namespace
} // namespace Tests
