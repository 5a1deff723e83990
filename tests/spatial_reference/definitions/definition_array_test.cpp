#include "embedded/diagnostics/resource_counters.h"
#include "spatial_reference/spatial_reference_test.h"

namespace {

using namespace Tests;

class DefinitionArray : public SpatialReferenceTest {
protected:
    DefinitionArray()
    {
        DefinitionBaseArray* created = nullptr;
        EXPECT_EQ(DefinitionBaseArray::CreateInstance(created), statusOk);
        array_.reset(created);
    }

    static long countLibraryObjects()
    {
        return Embedded::ResourceCounters::now()[Embedded::ResourceKind::libraryObject];
    }

    Holder<DefinitionBaseArray> array_;
};

TEST_F(DefinitionArray, ANewArrayIsEmpty)
{
    EXPECT_EQ(array_->GetCount(), 0);
    EXPECT_EQ(array_->GetItem(0), nullptr);
    EXPECT_EQ(array_->Remove(0), nullptr);
}

TEST_F(DefinitionArray, AnAddedItemBelongsToTheArray)
{
    const long before = countLibraryObjects();
    EXPECT_EQ(array_->Add(loadEllipsoid(L"EPSG:7004").release()), statusOk);
    EXPECT_EQ(array_->Add(loadDatum(L"EPSG:6289").release()), statusOk);
    EXPECT_EQ(array_->GetCount(), 2);
    EXPECT_EQ(codeOf(*array_->GetItem(0)), L"EPSG:7004");
    EXPECT_EQ(codeOf(*array_->GetItem(1)), L"EPSG:6289");
    EXPECT_EQ(countLibraryObjects(), before + 2);
    array_.reset();
    EXPECT_EQ(countLibraryObjects(), before - 1);
}

TEST_F(DefinitionArray, ARemovedItemBelongsToTheCaller)
{
    EXPECT_EQ(array_->Add(loadEllipsoid(L"EPSG:7004").release()), statusOk);
    EXPECT_EQ(array_->Add(loadDatum(L"EPSG:6289").release()), statusOk);
    const Holder<DefinitionBase> first(array_->Remove(0));
    EXPECT_EQ(codeOf(*first), L"EPSG:7004");
    EXPECT_EQ(array_->GetCount(), 1);
    EXPECT_EQ(codeOf(*array_->GetItem(0)), L"EPSG:6289");
}

TEST_F(DefinitionArray, AnIndexOutOfRangeReturnsNothing)
{
    EXPECT_EQ(array_->Add(loadEllipsoid(L"EPSG:7004").release()), statusOk);
    for (const int index : {-1, 1, 2, 2147483647, -2147483647 - 1}) {
        EXPECT_EQ(array_->GetItem(index), nullptr);
        EXPECT_EQ(array_->Remove(index), nullptr);
    }
    EXPECT_EQ(array_->GetCount(), 1);
}

TEST_F(DefinitionArray, NullCannotBeAdded)
{
    EXPECT_EQ(array_->Add(nullptr), statusInvalidArgument);
    EXPECT_EQ(array_->GetCount(), 0);
}

TEST_F(DefinitionArray, ItemsKeepTheirClass)
{
    EXPECT_EQ(array_->Add(loadDatum(L"EPSG:6289").release()), statusOk);
    EXPECT_EQ(array_->Add(loadSystem(L"EPSG:28992").release()), statusOk);
    EXPECT_EQ(dynamic_cast<const CoordinateReferenceSystemDefinition*>(array_->GetItem(0)), nullptr);
    EXPECT_NE(dynamic_cast<const CoordinateReferenceSystemDefinition*>(array_->GetItem(1)), nullptr);
    EXPECT_NE(dynamic_cast<const DatumDefinition*>(array_->GetItem(0)), nullptr);
}

TEST_F(DefinitionArray, DestroyingNullIsAllowed)
{
    Object::Destroy(nullptr);
}

} // namespace
