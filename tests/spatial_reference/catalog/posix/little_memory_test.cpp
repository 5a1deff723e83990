// A catalog that there is no memory to read. The limit is SQLite's, which PROJ shares with the test here.
#include <sqlite3.h>

#include <algorithm>

#include "embedded/spatial_reference/catalog/catalog.h"
#include "spatial_reference/spatial_reference_test.h"

namespace {

using namespace Tests;

class LittleMemory : public SpatialReferenceTest {
protected:
    /// PROJ tries to open its database once only, and needs memory for that.
    LittleMemory() { EXPECT_NE(Embedded::catalogPath(), ""); }

    /// For the length of a scope SQLite gets no more memory than it has.
    class Limit {
    public:
        Limit() { sqlite3_hard_heap_limit64(std::max<sqlite3_int64>(sqlite3_memory_used(), 1)); }
        Limit(const Limit&) = delete;
        Limit& operator=(const Limit&) = delete;
        ~Limit() { sqlite3_hard_heap_limit64(0); }
    };
};

TEST_F(LittleMemory, IsNotTakenForAMissingCode)
{
    CoordinateReferenceSystemDefinition* definition = nullptr;
    {
        const Limit limit;
        EXPECT_EQ(CoordinateReferenceSystemDefinition::Load(L"EPSG:2391", definition), statusOutOfMemory);
        EXPECT_EQ(definition, nullptr);
        const auto check = Embedded::checkCatalogFor(L"EPSG:2391");
        ASSERT_FALSE(check);
        EXPECT_EQ(check.error().text(), Embedded::catalogPath() + ": not enough memory to read it");
    }
    EXPECT_EQ(codeOf(*system(L"EPSG:2391")), L"EPSG:2391");
}

TEST_F(LittleMemory, IsNotTakenForAMissingTransformation)
{
    const Limit limit;
    GeodeticTransformationDefinition* definition = nullptr;
    EXPECT_EQ(GeodeticTransformationDefinition::Load(L"KKJ to ETRS89 (2)", definition), statusOutOfMemory);
    EXPECT_EQ(definition, nullptr);
}

} // namespace
