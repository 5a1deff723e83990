// Configured transformations agree with PROJ.
#include <algorithm>
#include <array>
#include <cmath>
#include <iostream>
#include <sstream>

#include "command_line_test.h"
#include "proj_points.h"

namespace Tests {
namespace {

using Point = std::array<double, 3>;

struct Area {
    double fromX, toX, fromY, toY;
};

/// An operation as the drawing configures it, and areas in the axes of its source and of its target.
struct ComparedOperation {
    const char* test;
    const char* source;
    const char* target;
    const char* name;
    const char* code;
    int type;
    Area sourceArea;
    Area targetArea;
};

class TransformAgreement : public CommandLineTest, public testing::WithParamInterface<ComparedOperation> {
protected:
    static constexpr int kPoints = 1000;

    /// Points that are spread over the area by multiples of two irrational numbers, without the pattern of a grid.
    static std::string spreadPoints(const Area& area)
    {
        std::ostringstream text;
        text.precision(12);
        for (int index = 1; index <= kPoints; ++index) {
            const double u = std::fmod(index * 0.7548776662466927, 1);
            const double v = std::fmod(index * 0.5698402909980532, 1);
            text << area.fromX + u * (area.toX - area.fromX) << ' ' << area.fromY + v * (area.toY - area.fromY) << ' '
                 << index << '\n';
        }
        return text.str();
    }

    static std::vector<Point> parsePoints(const std::string& text)
    {
        std::vector<Point> points;
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            std::istringstream words(line);
            Point point{};
            words >> point[0] >> point[1] >> point[2];
            EXPECT_FALSE(words.fail()) << line;
            points.push_back(point);
        }
        return points;
    }

    std::vector<Point> transformByOrvelcs(const ComparedOperation& operation, bool isInverse,
                                          const std::string& points) const
    {
        const ProgramResult result = run({"transform", isInverse ? operation.target : operation.source,
                                          isInverse ? operation.source : operation.target, "--drawing", "plan.qedb"},
                                         points);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.errors, ""); // and so no note that the configuration is missing
        return parsePoints(result.output);
    }

    /// The largest difference in each axis. Expects as many points in both lists as were given.
    static Point largestDifference(const std::vector<Point>& left, const std::vector<Point>& right)
    {
        EXPECT_EQ(left.size(), static_cast<std::size_t>(kPoints));
        EXPECT_EQ(right.size(), static_cast<std::size_t>(kPoints));
        Point largest{};
        for (std::size_t index = 0; index < std::min(left.size(), right.size()); ++index)
            for (std::size_t axis = 0; axis < largest.size(); ++axis)
                largest[axis] = std::max(largest[axis], std::abs(left[index][axis] - right[index][axis]));
        return largest;
    }

    void expectAgreement(const ComparedOperation& operation, bool isInverse, const Area& area) const
    {
        const std::string points = spreadPoints(area);
        const auto ours = transformByOrvelcs(operation, isInverse, points);
        const Point largest =
            largestDifference(ours, parsePoints(transformByProj(operation.code, isInverse, points, path(""))));
        std::ostringstream text;
        text.precision(1);
        text << std::scientific << operation.code << (isInverse ? " in reverse" : "") << ", " << kPoints
             << " points: the largest differences from PROJ are " << largest[0] << ", " << largest[1] << " and "
             << largest[2] << " m\n";
        std::cout << text.str();
        EXPECT_LE(largest[0], 1e-9);
        EXPECT_LE(largest[1], 1e-9);
        EXPECT_LE(largest[2], 1e-6);
        EXPECT_GT(largestDifference(ours, parsePoints(points))[0], 1e-6); // the points have changed
    }
};

constexpr ComparedOperation kOperations[] = {
    {"PathOfTwoSteps",
     "EPSG:4807",
     "EPSG:4326",
     "NTF (Paris) to WGS 84 (1)",
     "EPSG:8094",
     1,
     {46.7, 56.7, -7.5, 8}, // France in grads from Paris
     {42, 51, -5, 9}},
    {"ReversiblePath",
     "EPSG:4289",
     "EPSG:4230",
     "Amersfoort to ED50 (1)",
     "EPSG:4837",
     1,
     {50.7, 53.6, 3.3, 7.3},
     {50.7, 53.6, 3.3, 7.3}},
    {"SingleTransformation",
     "EPSG:4230",
     "EPSG:4326",
     "ED50 to WGS 84 (18)",
     "EPSG:1311",
     2,
     {49, 63, -12, 6}, // the North Sea
     {49, 63, -12, 6}},
};

TEST_P(TransformAgreement, ConfiguredOperation_AgreesWithProjInBothDirections)
{
    const ComparedOperation& operation = GetParam();
    givenConfiguredDrawing("plan.qedb",
                           configurationItem(operation.source, operation.target, operation.name, operation.type));
    expectAgreement(operation, false, operation.sourceArea);
    expectAgreement(operation, true, operation.targetArea);
}

INSTANTIATE_TEST_SUITE_P(Each, TransformAgreement, testing::ValuesIn(kOperations),
                         [](const auto& operation) { return std::string(operation.param.test); });

} // namespace
} // namespace Tests
