// The catalog cannot be read for lack of memory. The test limits the memory of SQLite, which it shares with PROJ.
#include <sqlite3.h>

#include <algorithm>

#include "embedded/spatial_reference/catalog/catalog.h"
#include "spatial_reference/spatial_reference_test.h"

namespace {

using namespace Tests;

class LittleMemory : public SpatialReferenceTest {
protected:
    /// PROJ opens its database only once, and needs memory for it.
    LittleMemory() { EXPECT_NE(Embedded::catalogPath(), ""); }

    /// Prevents SQLite from allocating more memory during a scope.
    class Limit {
    public:
        Limit() { sqlite3_hard_heap_limit64(std::max<sqlite3_int64>(sqlite3_memory_used(), 1)); }
        Limit(const Limit&) = delete;
        Limit& operator=(const Limit&) = delete;
        ~Limit() { sqlite3_hard_heap_limit64(0); }
    };
};

TEST_F(LittleMemory, OutOfMemory_IsNotReportedAsAnUnknownCode)
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
    EXPECT_EQ(codeOf(*loadSystem(L"EPSG:2391")), L"EPSG:2391");
}

TEST_F(LittleMemory, OutOfMemory_IsNotReportedAsAnUnknownTransformation)
{
    const Limit limit;
    GeodeticTransformationDefinition* definition = nullptr;
    EXPECT_EQ(GeodeticTransformationDefinition::Load(L"KKJ to ETRS89 (2)", definition), statusOutOfMemory);
    EXPECT_EQ(definition, nullptr);
}

} // namespace
