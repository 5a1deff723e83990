// Lists the catalog's transformations and paths between two systems.
#include "embedded/spatial_reference/operations/coordinate_operations.h"

#include <algorithm>
#include <limits>

#include "spatial_reference/spatial_reference_test.h"

namespace {

using namespace Tests;
using Embedded::CatalogOperation;
using Embedded::OperationDirection;
using Embedded::OperationError;

class OperationsBetween : public SpatialReferenceTest {
protected:
    static std::vector<CatalogOperation> between(const wchar_t* source, const wchar_t* target)
    {
        auto operations = Embedded::operationsBetween(source, target);
        EXPECT_TRUE(operations);
        return operations ? *std::move(operations) : std::vector<CatalogOperation>();
    }
    static void expectRefused(const wchar_t* source, const wchar_t* target, OperationError kind,
                              const std::string& place)
    {
        const auto operations = Embedded::operationsBetween(source, target);
        ASSERT_FALSE(operations);
        EXPECT_EQ(operationErrorOf(operations.error()), kind);
        EXPECT_EQ(operations.error().place, place);
        EXPECT_NE(operations.error().message, "");
    }
    static std::vector<std::wstring> codesOf(const std::vector<CatalogOperation>& operations)
    {
        std::vector<std::wstring> codes;
        for (const CatalogOperation& operation : operations)
            codes.push_back(operation.code);
        return codes;
    }
    static const CatalogOperation* find(const std::vector<CatalogOperation>& operations, const std::wstring& code)
    {
        const auto found = std::ranges::find(operations, code, &CatalogOperation::code);
        return found == operations.end() ? nullptr : &*found;
    }
    static std::vector<std::wstring> sortedCodes(const std::vector<CatalogOperation>& operations)
    {
        auto codes = codesOf(operations);
        std::ranges::sort(codes);
        return codes;
    }
};

TEST_F(OperationsBetween, Ed50AndWgs84_HaveManyOperations)
{
    const auto operations = between(L"EPSG:4230", L"EPSG:4326");
    EXPECT_GE(operations.size(), 40U);
    for (const wchar_t* code : {L"EPSG:1133", L"EPSG:1311", L"EPSG:15933", L"EPSG:8047"})
        EXPECT_NE(find(operations, code), nullptr) << code;
}

TEST_F(OperationsBetween, EachOperation_IsListedOnceAndLoadsByItsCode)
{
    const auto operations = between(L"EPSG:4230", L"EPSG:4326");
    auto codes = sortedCodes(operations);
    EXPECT_EQ(std::ranges::adjacent_find(codes), codes.end());
    for (const CatalogOperation& operation : operations) {
        GeodeticTransformationDefinition* transformation = nullptr;
        GeodeticPathDefinition* path = nullptr;
        const Status status = operation.kind == transformationPath
                                  ? GeodeticPathDefinition::Load(operation.code.c_str(), path)
                                  : GeodeticTransformationDefinition::Load(operation.code.c_str(), transformation);
        EXPECT_EQ(status, statusOk) << operation.code.c_str();
        Object::Destroy(transformation);
        Object::Destroy(path);
    }
}

TEST_F(OperationsBetween, UsableOperations_AreListedFirst)
{
    for (const auto& [source, target] : {std::pair(L"EPSG:4230", L"EPSG:4326"), std::pair(L"EPSG:4314", L"EPSG:4258"),
                                         std::pair(L"EPSG:4267", L"EPSG:4269")}) {
        const auto operations = between(source, target);
        EXPECT_TRUE(std::ranges::is_sorted(operations, std::ranges::greater(), &CatalogOperation::isUsable));
    }
}

TEST_F(OperationsBetween, OperationsOfOneArea_AreOrderedByAccuracy)
{
    const auto operations = between(L"EPSG:4230", L"EPSG:4326");
    std::size_t pairs = 0;
    for (std::size_t index = 1; index < operations.size(); ++index) {
        const CatalogOperation& left = operations[index - 1];
        const CatalogOperation& right = operations[index];
        if (left.areaOfUse != right.areaOfUse || left.isUsable() != right.isUsable() ||
            !left.code.starts_with(L"EPSG:") || !right.code.starts_with(L"EPSG:"))
            continue;
        ++pairs;
        EXPECT_LE(left.accuracyInMetres.value_or(std::numeric_limits<double>::infinity()),
                  right.accuracyInMetres.value_or(std::numeric_limits<double>::infinity()))
            << left.code.c_str() << " and " << right.code.c_str();
    }
    EXPECT_GT(pairs, 0U);
}

TEST_F(OperationsBetween, Operation_HasNameAccuracyAreaAndDirection)
{
    const auto operations = between(L"EPSG:4230", L"EPSG:4326");
    const CatalogOperation* operation = find(operations, L"EPSG:1311");
    ASSERT_NE(operation, nullptr);
    EXPECT_EQ(operation->name, L"ED50 to WGS 84 (18)");
    EXPECT_EQ(operation->kind, transformationSingle);
    EXPECT_EQ(operation->accuracyInMetres, 1.0);
    EXPECT_TRUE(operation->areaOfUse.starts_with(L"Denmark - offshore"));
    EXPECT_EQ(operation->direction, OperationDirection::forward);
    EXPECT_TRUE(operation->isReversible);
    EXPECT_TRUE(operation->isUsable());
    EXPECT_TRUE(operation->grids.empty());
}

TEST_F(OperationsBetween, SwappedSystems_HaveTheSameOperationsInReverse)
{
    const auto forward = between(L"EPSG:4230", L"EPSG:4326");
    const auto inverse = between(L"EPSG:4326", L"EPSG:4230");
    EXPECT_EQ(sortedCodes(forward), sortedCodes(inverse));
    EXPECT_EQ(find(inverse, L"EPSG:1133")->direction, OperationDirection::inverse);
    EXPECT_TRUE(find(inverse, L"EPSG:1133")->isUsable());
}

TEST_F(OperationsBetween, Path_IsListedWithItsKind)
{
    const auto operations = between(L"EPSG:4807", L"EPSG:4326");
    ASSERT_FALSE(operations.empty());
    EXPECT_EQ(operations.front().code, L"EPSG:8094");
    EXPECT_EQ(operations.front().kind, transformationPath);
    EXPECT_EQ(operations.front().name, L"NTF (Paris) to WGS 84 (1)");
}

TEST_F(OperationsBetween, ProjectedAndCompoundSystems_HaveTheOperationsOfTheirGeodeticBases)
{
    const auto expected = codesOf(between(L"EPSG:4230", L"EPSG:4258"));
    ASSERT_FALSE(expected.empty());
    EXPECT_EQ(codesOf(between(L"EPSG:23032", L"EPSG:25832")), expected);
    EXPECT_EQ(codesOf(between(L"EPSG:23032", L"EPSG:5555")), expected);
}

TEST_F(OperationsBetween, OperationBetweenGeocentricSystems_IsListedForTheirGeographicOnes)
{
    const auto geocentric = between(L"EPSG:7789", L"EPSG:8401"); // ITRF2014 and ETRF2014
    ASSERT_NE(find(geocentric, L"EPSG:8366"), nullptr);
    EXPECT_NE(find(between(L"EPSG:9000", L"EPSG:9069"), L"EPSG:8366"), nullptr);
}

TEST_F(OperationsBetween, MissingGrid_IsListed)
{
    const auto operations = between(L"EPSG:4314", L"EPSG:4258");
    const CatalogOperation* operation = find(operations, L"EPSG:9940");
    if (!isReferenceCatalog() || !operation)
        GTEST_SKIP() << "another version of the catalog has that grid";
    ASSERT_EQ(operation->grids.size(), 1U);
    EXPECT_EQ(operation->grids[0].name, L"HeTa2010.gsb");
    EXPECT_FALSE(operation->grids[0].isInstalled);
    EXPECT_FALSE(operation->isUsable());
}

TEST_F(OperationsBetween, HeightOperation_IsListedOnlyForSystemsWithThoseHeights)
{
    const auto operations = between(L"EPSG:4979", L"EPSG:9707"); // WGS 84, and with EGM96 heights
    ASSERT_NE(find(operations, L"EPSG:10084"), nullptr);
    EXPECT_FALSE(find(operations, L"EPSG:10084")->isReversible);
    EXPECT_EQ(find(between(L"EPSG:4979", L"EPSG:9518"), L"EPSG:10084"), nullptr); // with EGM2008 heights
}

TEST_F(OperationsBetween, IrreversibleOperationInReverse_IsNotUsable)
{
    const auto operations = between(L"EPSG:9707", L"EPSG:4979");
    const CatalogOperation* operation = find(operations, L"EPSG:10084");
    ASSERT_NE(operation, nullptr);
    EXPECT_EQ(operation->direction, OperationDirection::inverse);
    EXPECT_FALSE(operation->isUsable());
}

TEST_F(OperationsBetween, SystemsOfOneDatum_HaveNoOperation)
{
    EXPECT_TRUE(between(L"EPSG:25832", L"EPSG:25833").empty());
    EXPECT_TRUE(between(L"EPSG:4326", L"EPSG:4326").empty());
}

TEST_F(OperationsBetween, SystemsOfDistantContinents_HaveNoOperation)
{
    EXPECT_TRUE(between(L"EPSG:2263", L"EPSG:2154").empty());
}

TEST_F(OperationsBetween, Authority_IsFoundInAnyCase)
{
    EXPECT_EQ(codesOf(between(L"epsg:4807", L"Epsg:4326")), codesOf(between(L"EPSG:4807", L"EPSG:4326")));
}

TEST_F(OperationsBetween, UnknownSystem_IsRefused)
{
    expectRefused(L"EPSG:1", L"EPSG:4326", OperationError::unknownSystem, "EPSG:1");
    expectRefused(L"EPSG:4326", L"nonsense", OperationError::unknownSystem, "nonsense");
    expectRefused(L"", L"EPSG:4326", OperationError::unknownSystem, "");
}

TEST_F(OperationsBetween, LocalPlane_IsRefused)
{
    expectRefused(L"EPSG:4326", L"local:METRE", OperationError::notEarthReferenced, "LOCAL:METRE");
}

} // namespace
