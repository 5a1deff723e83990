// transform in reverse, with angles, with epochs and with longitudes first gives the points of PROJ's own programs.
#include <cmath>
#include <sstream>

#include "cli/command_line_test.h"
#include "cli/posix/installed_program.h"

namespace Tests {
namespace {

class TransformPeer : public CommandLineTest {
protected:
    using Point = std::vector<double>;

    std::vector<Point> ours(const Arguments& arguments, const std::string& points) const
    {
        const ProgramResult result = run(concatenate({"transform", "-q"}, arguments), points);
        EXPECT_EQ(result.status, 0) << result.errors;
        return parse(result.output);
    }
    std::vector<Point> ofProj(const std::string& program, const Arguments& arguments, const std::string& points) const
    {
        ProgramRun programRun;
        programRun.program = findProjProgram(program);
        programRun.arguments = arguments;
        programRun.input = points;
        const TemporaryFolder captures;
        return parse(runProgram(programRun, path(""), captures.path()).output);
    }

    /// Expects the same number of points, and their coordinates as near as both programs print them.
    static void expectSame(const std::vector<Point>& left, const std::vector<Point>& right, std::size_t points)
    {
        constexpr std::size_t kCoordinates = 3;
        constexpr double kDifference = 2e-6;
        ASSERT_EQ(left.size(), points);
        ASSERT_EQ(right.size(), points);
        for (std::size_t point = 0; point < points; ++point) {
            ASSERT_GE(left[point].size(), kCoordinates);
            ASSERT_GE(right[point].size(), kCoordinates);
            for (std::size_t axis = 0; axis < kCoordinates; ++axis)
                EXPECT_NEAR(left[point][axis], right[point][axis], kDifference) << "point " << point;
        }
    }

private:
    static std::vector<Point> parse(const std::string& text)
    {
        std::vector<Point> points;
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            std::istringstream words(line);
            points.emplace_back();
            for (double number = 0; words >> number;)
                points.back().push_back(number);
        }
        return points;
    }
};

TEST_F(TransformPeer, Inverse_AgreesWithCs2cs)
{
    const std::string points = "500000 5500000 10\n650000 5900000 0\n450000 5300000 -5\n";
    expectSame(ours({"EPSG:4326", "EPSG:25832", "--inverse"}, points),
               ofProj("cs2cs", {"-I", "-f", "%.10f", "EPSG:4326", "EPSG:25832"}, points), 3);
    const std::string places = "48.5 2.3 10\n43 5 0\n";
    expectSame(ours({"EPSG:27572", "EPSG:4326", "--inverse"}, places),
               ofProj("cs2cs", {"-I", "-f", "%.10f", "EPSG:27572", "EPSG:4326"}, places), 2);
}

TEST_F(TransformPeer, Angles_AgreeWithCs2cs)
{
    const std::string points =
        "52d30'15.5\"N 13d24'E 0\n52d30'15.123456 13d24.25'E 7\n0d0'30\"S 0d30'W 0\n-12d59'59.99\" "
        "7.5E 0\n52.25N 13.75E 100\n";
    expectSame(ours({"EPSG:4326", "EPSG:25833"}, points),
               ofProj("cs2cs", {"-f", "%.6f", "EPSG:4326", "EPSG:25833"}, points), 5);
}

TEST_F(TransformPeer, EpochsOfAMovingPlate_AgreeWithCs2cs)
{
    const std::string points = "-30 130 0 2020\n-30 130 0 2030.5\n-12.5 131 50 1994\n-42 147 0 2012.25\n";
    expectSame(ours({"EPSG:9000", "EPSG:7844"}, points),
               ofProj("cs2cs", {"-f", "%.10f", "EPSG:9000", "EPSG:7844"}, points), 4);
    const std::string geocentric = "-4052051.7643 4212836.2017 -2545106.0245 2030\n-4052051 4212836 -2545106 2010.5\n";
    expectSame(ours({"EPSG:7789", "EPSG:7842"}, geocentric),
               ofProj("cs2cs", {"-f", "%.6f", "EPSG:7789", "EPSG:7842"}, geocentric), 2);
    EXPECT_GT(std::abs(ours({"EPSG:7789", "EPSG:7842"}, geocentric)[0][0] + 4052051.7643), 0.1);
}

TEST_F(TransformPeer, EpochOption_AgreesWithCct)
{
    const std::string point = "-4052051.7643 4212836.2017 -2545106.0245";
    expectSame(ours({"EPSG:7789", "EPSG:7842", "--epoch", "2030.25"}, point + "\n"),
               ofProj("cct", {"-d", "6", "EPSG:8049"}, point + " 2030.25\n"), 1);
}

TEST_F(TransformPeer, LongitudesFirst_AgreeWithCs2csForASystemOfThatOrder)
{
    const std::string points = "13.4 52.5 0\n15 50 100\n17 51 0\n";
    expectSame(ours({"EPSG:4326", "EPSG:32633", "--lonlat"}, points),
               ofProj("cs2cs", {"-f", "%.6f", "OGC:CRS84", "EPSG:32633"}, points), 3);
    const std::string places = "391390 5817855 0\n500000 5500000 10\n";
    expectSame(ours({"EPSG:32633", "EPSG:4326", "--lonlat"}, places),
               ofProj("cs2cs", {"-f", "%.10f", "EPSG:32633", "OGC:CRS84"}, places), 2);
}

} // namespace
} // namespace Tests
