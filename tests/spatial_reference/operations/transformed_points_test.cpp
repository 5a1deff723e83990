// Many points in one call, beside each of them in a call of its own.
#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "spatial_reference/operations/coordinate_transformer_test.h"

namespace {

using namespace Tests;
using Embedded::CoordinatePoint;
using Embedded::TransformedPoint;

class TransformedPoints : public CoordinateTransformerTest {
protected:
    /// All over the range and beyond, with and without heights and epochs; some cannot be transformed at all.
    static std::vector<CoordinatePoint> points(double xRange, double yRange)
    {
        std::mt19937 random(1);
        std::uniform_real_distribution<double> unit(-1, 1);
        std::vector<CoordinatePoint> points;
        for (int index = 0; index < 2000; ++index) {
            CoordinatePoint point{1.1 * xRange * unit(random), 1.1 * yRange * unit(random)};
            if (index % 2 == 0)
                point.z = 5000 * unit(random);
            if (index % 4 == 0)
                point.epoch = 2020 + 10 * unit(random);
            if (index % 100 == 7)
                point.x = std::numeric_limits<double>::quiet_NaN();
            if (index % 100 == 8)
                point.z = HUGE_VAL;
            if (index % 100 == 12)
                point.epoch = HUGE_VAL;
            points.push_back(point);
        }
        return points;
    }

    static void expectSame(const TransformedPoint& one, const TransformedPoint& other)
    {
        ASSERT_EQ(one.point.has_value(), other.point.has_value());
        EXPECT_EQ(one.operation, other.operation);
        if (one.point) { // to the last bit
            EXPECT_EQ(one.point->x, other.point->x);
            EXPECT_EQ(one.point->y, other.point->y);
            EXPECT_EQ(one.point->z, other.point->z);
        } else {
            EXPECT_EQ(one.point.error().text(), other.point.error().text());
        }
    }

    /// Returns how many points failed.
    static int expectSameAsOneByOne(const wchar_t* source, const wchar_t* target,
                                    const std::vector<CoordinatePoint>& points, const Configured& configured = {})
    {
        const auto together = transformer(source, target, configured);
        const auto oneByOne = transformer(source, target, configured);
        const std::vector<TransformedPoint> results = together->transformAll(points);
        EXPECT_EQ(results.size(), points.size());
        int failures = 0;
        for (std::size_t index = 0; index < results.size(); ++index) {
            SCOPED_TRACE(index);
            expectSame(results[index], oneByOne->transform(points[index]));
            failures += results[index].point ? 0 : 1;
        }
        EXPECT_EQ(together->operations().size(), oneByOne->operations().size());
        for (std::size_t index = 0; index < oneByOne->operations().size(); ++index)
            EXPECT_EQ(together->operations().at(index).name, oneByOne->operations()[index].name);
        return failures;
    }
};

TEST_F(TransformedPoints, AreTheSameAsOneByOne)
{
    EXPECT_GT(expectSameAsOneByOne(L"EPSG:4326", L"EPSG:25832", points(90, 180)), 60);
    EXPECT_GT(expectSameAsOneByOne(L"EPSG:4326", L"EPSG:27572", points(90, 180)), 60);
    EXPECT_GE(expectSameAsOneByOne(L"EPSG:25832", L"EPSG:4326", points(1e7, 1e7)), 60);
    EXPECT_GE(expectSameAsOneByOne(L"EPSG:25832", L"EPSG:32632", points(1e7, 1e7)), 60);
    EXPECT_GE(expectSameAsOneByOne(L"EPSG:9000", L"EPSG:7844", points(90, 180)), 60);
}

TEST_F(TransformedPoints, OfGeocentricSystems_AreTheSameAsOneByOne)
{
    EXPECT_GE(expectSameAsOneByOne(L"EPSG:4326", L"EPSG:4978", points(90, 180)), 60);
    EXPECT_GE(expectSameAsOneByOne(L"EPSG:4978", L"EPSG:4326", points(7e6, 7e6)), 1000); // without a height
}

TEST_F(TransformedPoints, WhereProjChoosesForEach_AreTheSameAsOneByOne)
{
    EXPECT_GE(expectSameAsOneByOne(L"EPSG:4267", L"EPSG:4269", points(90, 180)), 60);
    EXPECT_GE(expectSameAsOneByOne(L"EPSG:4230", L"EPSG:4326", points(90, 180)), 60);
}

TEST_F(TransformedPoints, ThroughWhatIsConfigured_AreTheSameAsOneByOne)
{
    EXPECT_GE(expectSameAsOneByOne(L"EPSG:4326", L"EPSG:27572", points(90, 180), transformation(L"NTF to WGS 84 (1)")),
              60);
}

TEST_F(TransformedPoints, NoPoints_GiveNoResults)
{
    EXPECT_TRUE(transformer(L"EPSG:4326", L"EPSG:25832")->transformAll({}).empty());
}

} // namespace
