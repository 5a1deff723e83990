// The fixture of the tests of coordinate transformers.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "embedded/spatial_reference/operations/coordinate_transformer.h"
#include "spatial_reference/spatial_reference_test.h"

namespace Tests {

class CoordinateTransformerTest : public SpatialReferenceTest {
protected:
    using Configured = std::optional<Embedded::ConfiguredOperation>;
    using Transformer = std::unique_ptr<Embedded::CoordinateTransformer>;

    static Configured path(const wchar_t* codeOrName)
    {
        return Embedded::ConfiguredOperation{codeOrName, transformationPath};
    }
    static Configured transformation(const wchar_t* codeOrName)
    {
        return Embedded::ConfiguredOperation{codeOrName, transformationSingle};
    }

    static Transformer transformer(const wchar_t* source, const wchar_t* target,
                                   const Configured& configured = std::nullopt)
    {
        auto result = Embedded::makeTransformer(source, target, configured);
        if (!result)
            throw std::runtime_error(result.error().text()); // fails the test
        return *std::move(result);
    }
    /// The error of a transformer that must not be created.
    static Embedded::Error errorOf(const wchar_t* source, const wchar_t* target, const Configured& configured)
    {
        const auto result = Embedded::makeTransformer(source, target, configured);
        EXPECT_FALSE(result);
        return result ? Embedded::Error() : result.error();
    }
    static Embedded::OperationError kindOfError(const wchar_t* source, const wchar_t* target,
                                                const Configured& configured)
    {
        return Embedded::operationErrorOf(errorOf(source, target, configured));
    }

    static Embedded::CoordinatePoint transformed(Embedded::CoordinateTransformer& transformer,
                                                 const Embedded::CoordinatePoint& point)
    {
        const Embedded::TransformedPoint result = transformer.transform(point);
        EXPECT_TRUE(result.point.has_value());
        return result.point.value_or(Embedded::CoordinatePoint{});
    }
    static void expectNear(const Embedded::CoordinatePoint& point, double x, double y, double tolerance)
    {
        EXPECT_NEAR(point.x, x, tolerance);
        EXPECT_NEAR(point.y, y, tolerance);
    }
    static void expectNear(const Embedded::CoordinatePoint& point, const Embedded::CoordinatePoint& expected,
                           double tolerance)
    {
        expectNear(point, expected.x, expected.y, tolerance);
        ASSERT_EQ(point.z.has_value(), expected.z.has_value());
        EXPECT_NEAR(point.z.value_or(0), expected.z.value_or(0), kMetres);
    }

    static constexpr double kDegrees = 1e-9;
    static constexpr double kMetres = 1e-6;
};

} // namespace Tests
