// The distances between candidates are those of PROJ's program geod.
#include <cmath>
#include <sstream>

#include "cli/command_line_test.h"
#include "cli/posix/proj_program.h"
#include "embedded/spatial_reference/operations/candidate_operations.h"

namespace Tests {
namespace {

using Embedded::GeographicPoint;
using GeographicPoints = std::vector<GeographicPoint>;

constexpr double kMillimetre = 0.001;
constexpr const char* kWgs84 = "+a=6378137 +rf=298.257223563";

class GeodAgreement : public CommandLineTest {
protected:
    /// The third number of each line: azimuth, back azimuth, distance.
    std::vector<double> distancesOfGeod(const GeographicPoints& from, const GeographicPoints& to) const
    {
        std::ostringstream lines;
        lines.precision(15);
        for (std::size_t index = 0; index < from.size(); ++index)
            lines << from[index].latitude << ' ' << from[index].longitude << ' ' << to[index].latitude << ' '
                  << to[index].longitude << '\n';
        ProgramRun geod;
        geod.program = findProjProgram("geod");
        std::istringstream ellipsoid(kWgs84);
        geod.arguments = {"-I", "-f", "%.9f", "-F", "%.6f"};
        for (std::string word; ellipsoid >> word;)
            geod.arguments.push_back(word);
        geod.input = lines.str();
        const ProgramResult result = run(geod);
        EXPECT_EQ(result.status, 0) << result.errors;
        std::vector<double> distances;
        std::istringstream output(result.output);
        for (double azimuth = 0, back = 0, distance = 0; output >> azimuth >> back >> distance;)
            distances.push_back(distance);
        return distances;
    }
};

/// A hundred places all over the area in which the two are used, each of which is its own.
GeographicPoints hundredPoints()
{
    GeographicPoints points;
    for (int row = 0; row < 10; ++row)
        for (int column = 0; column < 10; ++column)
            points.push_back({36 + 3.7 * row + 0.013 * column, -9 + 4.9 * column + 0.017 * row});
    return points;
}

TEST_F(GeodAgreement, HundredPointsThroughEveryTwoCandidates_LieAsFarApartAsGeodSays)
{
    const GeographicPoints points = hundredPoints();
    const auto candidates = Embedded::findCandidateOperations(L"EPSG:4230", L"EPSG:4326");
    ASSERT_TRUE(candidates);
    GeographicPoints from;
    GeographicPoints to;
    std::vector<double> distances;
    std::optional<GeographicPoints> first;
    for (std::size_t index = 0; index < (*candidates)->operations().size(); ++index) {
        const auto positions = (*candidates)->positions(index, points);
        if (!positions)
            continue;
        if (!first)
            first = *positions;
        const std::vector<double> own = (*candidates)->distances(*first, *positions);
        distances.insert(distances.end(), own.begin(), own.end());
        from.insert(from.end(), first->begin(), first->end());
        to.insert(to.end(), positions->begin(), positions->end());
    }
    const std::vector<double> expected = distancesOfGeod(from, to);
    ASSERT_GT(distances.size(), 20 * points.size());
    ASSERT_EQ(expected.size(), distances.size());
    double largest = 0;
    for (std::size_t index = 0; index < distances.size(); ++index)
        largest = std::max(largest, std::abs(distances[index] - expected[index]));
    EXPECT_LT(largest, kMillimetre);
    RecordProperty("largestDifferenceInMetres", std::to_string(largest));
}

TEST_F(GeodAgreement, DistanceThatTheProgramPrints_IsThatOfPointsThatTransformPrints)
{
    const Json comparison = runForJson(
        {"transformation", "compare", "EPSG:4230", "EPSG:4326", "--at", "46,2", "--between", "EPSG:1133", "EPSG:1275"});
    GeographicPoints positions;
    for (const std::string name : {"ED50 to WGS 84 (1)", "ED50 to WGS 84 (17)"}) {
        givenConfiguredDrawing("plan.qedb", configurationItem("EPSG:4230", "EPSG:4326", name, 2));
        std::istringstream output(
            run({"transform", "EPSG:4230", "EPSG:4326", "--drawing", "plan.qedb"}, "46 2\n").output);
        GeographicPoint position;
        output >> position.latitude >> position.longitude;
        positions.push_back(position);
        std::filesystem::remove(path("plan.qedb"));
    }
    const std::vector<double> expected = distancesOfGeod({positions[0]}, {positions[1]});
    ASSERT_EQ(expected.size(), 1U);
    EXPECT_GT(expected[0], 0.1);
    EXPECT_NEAR(comparison["candidates"][1]["distance"].get<double>(), expected[0], kMillimetre);
}

} // namespace
} // namespace Tests
