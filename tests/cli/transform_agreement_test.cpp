// Points through what a drawing configures, against PROJ itself.
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

struct Comparison {
    const char* source; // of the operation, as the drawing configures it
    const char* target;
    const char* name;
    const char* code;
    int type;
};

class TransformAgreement : public CommandLineTest {
protected:
    static constexpr int kPoints = 1000;

    void givenConfiguration(const Comparison& one) const
    {
        givenDrawing("plan.qedb");
        const std::string item = std::string("<Item><Version>1.0</Version><SourceCs>") + one.source +
                                 "</SourceCs><TargetCs>" + one.target + "</TargetCs><Name>" + one.name +
                                 "</Name><Type>" + std::to_string(one.type) + "</Type><Note></Note></Item>";
        ASSERT_EQ(run({"forms", "plan.qedb", "--quiet", "--put", "config=" + item}).status, 0);
    }

    /// Spread over the area without a pattern that a grid of points would have: multiples of two irrational numbers.
    static std::string pointsOf(const Area& area)
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

    static std::vector<Point> pointsFrom(const std::string& text)
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

    std::vector<Point> pointsOfOrvelcs(const Comparison& one, bool isInverse, const std::string& points) const
    {
        const ProgramResult result = run({"transform", isInverse ? one.target : one.source,
                                          isInverse ? one.source : one.target, "--drawing", "plan.qedb"},
                                         points);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.errors, ""); // and so no note that nothing was configured
        return pointsFrom(result.output);
    }

    std::string carriedOver(const char* code, bool isInverse, const std::string& points) const
    {
        return carriedOverByProj(code, isInverse, points, path(""));
    }

    /// In each axis; fails unless there are as many points of both as were given.
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

    void expectAgreement(const Comparison& one, bool isInverse, const Area& area) const
    {
        const std::string points = pointsOf(area);
        const auto ours = pointsOfOrvelcs(one, isInverse, points);
        const Point largest = largestDifference(ours, pointsFrom(carriedOver(one.code, isInverse, points)));
        std::ostringstream text;
        text.precision(1);
        text << std::scientific << one.code << (isInverse ? " in reverse" : "") << ", " << kPoints
             << " points: the largest differences from PROJ are " << largest[0] << ", " << largest[1] << " and "
             << largest[2] << " m\n";
        std::cout << text.str();
        EXPECT_LE(largest[0], 1e-9);
        EXPECT_LE(largest[1], 1e-9);
        EXPECT_LE(largest[2], 1e-6);
        EXPECT_GT(largestDifference(ours, pointsFrom(points))[0], 1e-6); // it has done something
    }
};

constexpr Comparison kNtfParis{"EPSG:4807", "EPSG:4326", "NTF (Paris) to WGS 84 (1)", "EPSG:8094", 1};
constexpr Comparison kAmersfoort{"EPSG:4289", "EPSG:4230", "Amersfoort to ED50 (1)", "EPSG:4837", 1};
constexpr Comparison kEd50{"EPSG:4230", "EPSG:4326", "ED50 to WGS 84 (18)", "EPSG:1311", 2};

TEST_F(TransformAgreement, APathOfTwoSteps_AgreesWithProjInBothDirections)
{
    givenConfiguration(kNtfParis);
    expectAgreement(kNtfParis, false, {46.7, 56.7, -7.5, 8}); // grads of France, from Paris
    expectAgreement(kNtfParis, true, {42, 51, -5, 9});
}

TEST_F(TransformAgreement, AReversiblePath_AgreesWithProjInBothDirections)
{
    givenConfiguration(kAmersfoort);
    expectAgreement(kAmersfoort, false, {50.7, 53.6, 3.3, 7.3});
    expectAgreement(kAmersfoort, true, {50.7, 53.6, 3.3, 7.3});
}

TEST_F(TransformAgreement, ASingleTransformation_AgreesWithProjInBothDirections)
{
    givenConfiguration(kEd50);
    expectAgreement(kEd50, true, {49, 63, -12, 6}); // the North Sea
    expectAgreement(kEd50, false, {49, 63, -12, 6});
}

} // namespace
} // namespace Tests
