// Transforms points with configured transformations and paths.
#include <algorithm>
#include <cmath>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog.h"
#include "embedded/spatial_reference/operations/coordinate_operations.h"
#include "spatial_reference/operations/coordinate_transformer_test.h"

namespace {

using namespace Tests;
using Embedded::CoordinatePoint;
using Embedded::OperationDirection;
using Embedded::OperationError;

using ConfiguredTransformation = CoordinateTransformerTest;

TEST_F(ConfiguredTransformation, Path_EqualsItsStepsOneAfterAnother)
{
    const auto whole = transformer(L"EPSG:4807", L"EPSG:4326", path(L"EPSG:8094"));
    const auto first = transformer(L"EPSG:4807", L"EPSG:4275", transformation(L"EPSG:1763"));
    const auto second = transformer(L"EPSG:4275", L"EPSG:4326", transformation(L"EPSG:1193"));
    const CoordinatePoint point{54, 1, std::nullopt};
    expectNear(transformed(*whole, point), transformed(*second, transformed(*first, point)), kDegrees);
}

TEST_F(ConfiguredTransformation, Path_IsFoundByItsName)
{
    const auto named = transformer(L"EPSG:4807", L"EPSG:4326", path(L"NTF (Paris) to WGS 84 (1)"));
    EXPECT_EQ(named->operations().front().code, L"EPSG:8094");
    EXPECT_EQ(named->operations().front().name, L"NTF (Paris) to WGS 84 (1)");
    EXPECT_EQ(named->operations().front().accuracyInMetres, 2.0);
    EXPECT_FALSE(named->operations().front().isBallpark);
}

TEST_F(ConfiguredTransformation, TransformationThereAndBack_ReturnsToThePoint)
{
    struct Case {
        const wchar_t* source;
        const wchar_t* target;
        Configured configured;
        CoordinatePoint point;
    };
    for (const Case& each : {Case{L"EPSG:4807", L"EPSG:4326", path(L"EPSG:8094"), {54, 1, 100.0}},
                             Case{L"EPSG:4289", L"EPSG:4230", path(L"EPSG:4837"), {52, 5, 3.0}},
                             Case{L"EPSG:4230", L"EPSG:4326", transformation(L"EPSG:1133"), {50, 8, std::nullopt}}}) {
        const auto there = transformer(each.source, each.target, each.configured);
        const auto back = transformer(each.target, each.source, each.configured);
        EXPECT_EQ(there->operations().front().direction, OperationDirection::forward);
        EXPECT_EQ(back->operations().front().direction, OperationDirection::inverse);
        const CoordinatePoint target = transformed(*there, each.point);
        EXPECT_GT(std::abs(target.x - each.point.x) + std::abs(target.y - each.point.y), 1e-5);
        // The shift also changes the height by some tens of metres, which two coordinates do not keep.
        expectNear(transformed(*back, target), each.point, 1e-8);
    }
}

TEST_F(ConfiguredTransformation, ProjectedSystems_AreTransformedThroughTheirGeodeticBases)
{
    const Configured ed50ToEtrs89 = transformation(L"EPSG:1588");
    const auto whole = transformer(L"EPSG:23032", L"EPSG:25832", ed50ToEtrs89);
    const auto unprojected = transformer(L"EPSG:23032", L"EPSG:4230");
    const auto shifted = transformer(L"EPSG:4230", L"EPSG:4258", ed50ToEtrs89);
    const auto projected = transformer(L"EPSG:4258", L"EPSG:25832");
    const CoordinatePoint point{500000, 5700000, std::nullopt};
    const CoordinatePoint expected = transformed(*projected, transformed(*shifted, transformed(*unprojected, point)));
    expectNear(transformed(*whole, point), expected, kMetres);
    EXPECT_GT(std::abs(expected.x - point.x), 50);
}

TEST_F(ConfiguredTransformation, TransformationFromAnotherPrimeMeridian_IsReachedByARotation)
{
    const auto whole = transformer(L"EPSG:27572", L"EPSG:4326", path(L"EPSG:8094"));
    const auto rotated = transformer(L"EPSG:27572", L"EPSG:4326", transformation(L"NTF to WGS 84 (1)"));
    const CoordinatePoint point{600000, 2200000, std::nullopt};
    expectNear(transformed(*rotated, point), transformed(*whole, point), kDegrees);
}

TEST_F(ConfiguredTransformation, LongitudeRotation_IsAppliedInItsOwnDirection)
{
    const auto there = transformer(L"EPSG:4807", L"EPSG:4275", transformation(L"EPSG:1763"));
    const auto back = transformer(L"EPSG:4275", L"EPSG:4807", transformation(L"EPSG:1763"));
    EXPECT_EQ(there->operations().front().direction, OperationDirection::forward);
    EXPECT_EQ(back->operations().front().direction, OperationDirection::inverse);
    constexpr double kParisInGrads = 2.5969213;
    constexpr double kDigitsOfProj = 5e-9; // the precision of the meridian
    expectNear(transformed(*there, {50, 0, std::nullopt}), 45, kParisInGrads * 0.9, kDigitsOfProj);
    expectNear(transformed(*back, {45, 0, std::nullopt}), 50, -kParisInGrads, kDigitsOfProj);
}

TEST_F(ConfiguredTransformation, IrreversibleTransformation_IsRefusedInReverse)
{
    const Embedded::Error error = errorOf(L"EPSG:9707", L"EPSG:4979", transformation(L"EPSG:10084"));
    EXPECT_EQ(operationErrorOf(error), OperationError::notReversible);
    EXPECT_EQ(error.place, "EPSG:10084");
    EXPECT_EQ(error.message, "leads from EPSG:4979 (WGS 84) to EPSG:5773 (EGM96 height) and is not reversible");
}

TEST_F(ConfiguredTransformation, TransformationThatFitsInNeitherDirection_IsRefusedAndNamesItsSystems)
{
    const Embedded::Error error = errorOf(L"EPSG:4326", L"EPSG:4230", path(L"EPSG:8094"));
    EXPECT_EQ(operationErrorOf(error), OperationError::doesNotFit);
    EXPECT_EQ(error.place, "EPSG:8094");
    EXPECT_EQ(error.message, "leads from EPSG:4807 (NTF (Paris)) to EPSG:4326 (WGS 84), and so does not fit between "
                             "EPSG:4326 (WGS 84) and EPSG:4230 (ED50)");
}

TEST_F(ConfiguredTransformation, TransformationThatFitsOneSystemOnly_IsRefused)
{
    EXPECT_EQ(kindOfError(L"EPSG:4230", L"EPSG:4258", transformation(L"EPSG:1133")), OperationError::doesNotFit);
    EXPECT_EQ(kindOfError(L"EPSG:4258", L"EPSG:4326", transformation(L"EPSG:1133")), OperationError::doesNotFit);
}

TEST_F(ConfiguredTransformation, TimeDependentTransformation_UsesTheEpochOfThePoint)
{
    const auto configured = transformer(L"EPSG:9000", L"EPSG:7844", transformation(L"EPSG:8049"));
    EXPECT_TRUE(configured->operations().front().isTimeDependent);
    const CoordinatePoint without = transformed(*configured, {-30, 130});
    expectNear(transformed(*configured, {-30, 130, std::nullopt, 2020.0}), without, kDegrees);
    EXPECT_GT(std::abs(transformed(*configured, {-30, 130, std::nullopt, 2030.0}).x - without.x), 1e-6);
}

TEST_F(ConfiguredTransformation, MissingGrid_IsRefusedAndNamed)
{
    if (!isReferenceCatalog())
        GTEST_SKIP() << "another version of the catalog has that grid";
    const Embedded::Error error = errorOf(L"EPSG:4314", L"EPSG:4258", transformation(L"EPSG:9940"));
    EXPECT_EQ(operationErrorOf(error), OperationError::missingGrid);
    EXPECT_EQ(error.place, "EPSG:9940");
    EXPECT_EQ(error.message, "needs the grid HeTa2010.gsb, which is not installed");
}

TEST_F(ConfiguredTransformation, MethodThatProjDoesNotImplement_IsRefusedAndNamed)
{
    if (!isReferenceCatalog())
        GTEST_SKIP() << "another version of PROJ may implement it";
    const Embedded::Error error =
        errorOf(L"EPSG:7660", L"EPSG:7677", transformation(L"EPSG:7961")); // for one epoch only
    EXPECT_EQ(operationErrorOf(error), OperationError::notImplemented);
    EXPECT_EQ(error.message, "cannot be applied: PROJ does not implement its method Time-specific Coordinate Frame "
                             "rotation (geocen)");
}

TEST_F(ConfiguredTransformation, EveryListedOperation_IsUsableAsTheListSays)
{
    for (const auto& [source, target] : {std::pair(L"EPSG:4230", L"EPSG:4326"), std::pair(L"EPSG:4314", L"EPSG:25832"),
                                         std::pair(L"EPSG:4269", L"EPSG:4267")}) {
        const auto operations = Embedded::operationsBetween(source, target);
        for (const auto& operation : operations.value()) {
            const auto result = Embedded::makeTransformer(
                source, target, Embedded::ConfiguredOperation{operation.code, operation.kind});
            ASSERT_EQ(result.has_value(), operation.isUsable()) << operation.code.c_str();
            const auto direction = result ? (*result)->operations().front().direction : operation.direction;
            EXPECT_EQ(direction, operation.direction) << operation.code.c_str();
        }
    }
}

TEST_F(ConfiguredTransformation, UnknownName_IsRefused)
{
    for (const Configured& configured :
         {path(L"NTF (Paris) to nowhere"), path(L"EPSG:1193"), transformation(L"EPSG:8094"), transformation(L"")})
        EXPECT_EQ(kindOfError(L"EPSG:4807", L"EPSG:4326", configured), OperationError::unknownOperation);
}

TEST_F(ConfiguredTransformation, AmbiguousName_IsRefusedAndNamesItsCandidates)
{
    if (!isReferenceCatalog())
        GTEST_SKIP() << "the name is ambiguous in another version of the catalog only";
    const Embedded::Error error = errorOf(L"EPSG:9069", L"EPSG:4258", transformation(L"NKG_ETRF14 to ETRF93@2000.0"));
    EXPECT_EQ(operationErrorOf(error), OperationError::ambiguousOperation);
    const auto candidates = Embedded::transformationCandidates(L"NKG_ETRF14 to ETRF93@2000.0");
    ASSERT_EQ(candidates.size(), 2U);
    for (const auto& candidate : candidates)
        EXPECT_NE(error.message.find(Embedded::utf8FromWide(candidate.code)), std::string::npos);
}

TEST_F(ConfiguredTransformation, UnknownKind_IsRefused)
{
    const Embedded::Error error = errorOf(
        L"EPSG:4807", L"EPSG:4326", Embedded::ConfiguredOperation{L"NTF (Paris) to WGS 84 (1)", transformationNone});
    EXPECT_EQ(operationErrorOf(error), OperationError::doesNotFit);
    EXPECT_EQ(error.message, "is configured as neither a path nor a transformation");
}

TEST_F(ConfiguredTransformation, InstalledGrid_IsApplied)
{
    const auto operations = Embedded::operationsBetween(L"EPSG:4314", L"EPSG:4258").value();
    const auto grid = std::ranges::find(operations, std::wstring(L"EPSG:15948"), &Embedded::CatalogOperation::code);
    if (grid == operations.end() || !grid->isUsable())
        GTEST_SKIP() << "the grid of EPSG:15948 is not installed";
    const auto shift = transformer(L"EPSG:4314", L"EPSG:4258", transformation(L"DHDN to ETRS89 (8)"));
    const CoordinatePoint inside = transformed(*shift, {52, 9, std::nullopt});
    EXPECT_NEAR(inside.x, 52, 0.01);
    EXPECT_GT(std::abs(inside.y - 9), 1e-4);
    const auto outside = shift->transform({62, 9, std::nullopt});
    EXPECT_FALSE(outside.point.has_value());
    EXPECT_NE(outside.point.error().message, "");
}

} // namespace
