// The operations that PROJ chooses for transform give the same points as PROJ's program cs2cs.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <future>
#include <iostream>
#include <numbers>
#include <optional>
#include <sstream>

#include "cli/command_line_test.h"
#include "cli/posix/catalog_pairs.h"
#include "cli/posix/installed_program.h"
#include "embedded/base/text.h"
#include "embedded/spatial_reference/operations/coordinate_transformer.h"

namespace Tests {
namespace {

/// Nothing for a point that was refused.
using Points = std::vector<std::optional<AxisPoint>>;
using Units = std::vector<Embedded::AxisUnit>;

constexpr double kDegreeInRadians = std::numbers::pi / 180;

std::string formatPoints(const std::vector<AxisPoint>& points, double horizontalFactor)
{
    std::ostringstream text;
    text.precision(12);
    text << std::fixed;
    for (const AxisPoint& point : points)
        text << point[0] * horizontalFactor << ' ' << point[1] * horizontalFactor << ' ' << point[2] << '\n';
    return text.str();
}

/// Reads lines of three numbers. Any other line is a refused point.
Points parseResults(const std::string& text)
{
    Points points;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        AxisPoint point{};
        words >> point[0] >> point[1] >> point[2];
        points.push_back(words.fail() ? std::nullopt : std::optional(point));
    }
    return points;
}

/// The results of the library that the program uses.
struct LibraryResult {
    Points points;
    Units units = Units(3);
    bool hasChoice = false;
};

LibraryResult transformByLibrary(const CatalogPair& pair)
{
    const auto made = Embedded::makeTransformer(Embedded::wideFromUtf8(pair.source),
                                                Embedded::wideFromUtf8(pair.target), std::nullopt);
    Embedded::CoordinateTransformer* const transformer = made ? made->get() : nullptr;
    LibraryResult result;
    for (const AxisPoint& point : pair.points) {
        result.points.emplace_back();
        if (!transformer)
            continue;
        if (const auto transformed = transformer->transform({point[0], point[1], point[2]}); transformed.point)
            result.points.back() =
                AxisPoint{transformed.point->x, transformed.point->y, transformed.point->z.value_or(HUGE_VAL)};
    }
    if (transformer) {
        result.units = transformer->targetAxes().units;
        result.hasChoice = transformer->choosesForEachPoint();
    }
    return result;
}

/// cs2cs reads and writes degrees for a geographic system in any unit, but not for a compound of it with a vertical
/// system.
Points transformByCs2cs(const CatalogPair& pair, const std::filesystem::path& folder)
{
    ProgramRun programRun;
    programRun.program = findProjProgram("cs2cs");
    programRun.arguments = {"-f", "%.12f", pair.source, pair.target};
    programRun.input = formatPoints(pair.points, pair.degreesInSourceUnit);
    Points points = parseResults(runProgram(programRun, folder, folder).output);
    points.resize(pair.points.size()); // points are missing if cs2cs ended early
    return points;
}

class Cs2csAgreement : public CommandLineTest {
protected:
    static constexpr double kMaximumDegrees = 1e-7;
    static constexpr double kMaximumMetres = 0.01;

    struct Counts {
        int pairs = 0;
        int points = 0;
        int withTwoDatums = 0;
        int withChoice = 0;
        int refusedByBoth = 0; // at all of their points
        double largestDegrees = 0;
        double largestMetres = 0;
    };

    Points transformByProgram(const CatalogPair& pair) const
    {
        Points points =
            parseResults(run({"transform", "-q", pair.source, pair.target}, formatPoints(pair.points, 1)).output);
        points.resize(pair.points.size());
        return points;
    }
    void count(const CatalogPair& pair, const LibraryResult& ours)
    {
        ++counts_.pairs;
        counts_.points += static_cast<int>(pair.points.size());
        counts_.withTwoDatums += pair.hasTwoDatums ? 1 : 0;
        counts_.withChoice += ours.hasChoice ? 1 : 0;
        counts_.refusedByBoth += std::ranges::none_of(ours.points, &std::optional<AxisPoint>::has_value) ? 1 : 0;
    }

    void expectSame(const CatalogPair& pair, const Units& units, const Points& ours, const Points& theirs)
    {
        ASSERT_EQ(ours.size(), theirs.size()) << pair.source << " to " << pair.target;
        for (std::size_t index = 0; index < ours.size(); ++index) {
            ASSERT_EQ(ours[index].has_value(), theirs[index].has_value())
                << pair.source << " to " << pair.target << ", point " << index;
            for (std::size_t axis = 0; ours[index] && axis < units.size(); ++axis)
                expectNear(pair, units[axis], (*ours[index])[axis], (*theirs[index])[axis]);
        }
    }

    Counts counts_;

private:
    void expectNear(const CatalogPair& pair, const Embedded::AxisUnit& unit, double ours, double theirs)
    {
        const double expected = unit.isAngular ? theirs / pair.degreesInTargetUnit : theirs;
        const double difference = std::abs(ours - expected) * unit.toBaseUnit / (unit.isAngular ? kDegreeInRadians : 1);
        EXPECT_LE(difference, unit.isAngular ? kMaximumDegrees : kMaximumMetres)
            << pair.source << " to " << pair.target << ": " << ours << " and " << expected;
        double& largest = unit.isAngular ? counts_.largestDegrees : counts_.largestMetres;
        largest = std::max(largest, difference);
    }
};

/// A slow build tests a share of the pairs.
constexpr int kPairs = 400 / ORVEL_CATALOG_STRIDE;
constexpr bool kAreAll = ORVEL_CATALOG_STRIDE == 1;

unsigned readSeed()
{
    const char* seed = std::getenv("ORVEL_PAIRS_SEED");
    return seed != nullptr ? static_cast<unsigned>(std::strtoul(seed, nullptr, 10)) : 1;
}

std::vector<CatalogPair> drawPairs()
{
    CatalogPairs catalog(readSeed());
    std::vector<CatalogPair> pairs(kPairs);
    std::ranges::generate(pairs, [&] { return catalog.draw(); });
    return pairs;
}

std::vector<Points> transformAllByCs2cs(const std::vector<CatalogPair>& pairs)
{
    const TemporaryFolder folder;
    std::vector<Points> points;
    for (const CatalogPair& pair : pairs)
        points.push_back(transformByCs2cs(pair, folder.path()));
    return points;
}

/// The environment variable ORVEL_PAIRS_SEED chooses other pairs.
TEST_F(Cs2csAgreement, RandomCatalogPairs_AgreeInTheLibrary)
{
    const std::vector<CatalogPair> pairs = drawPairs();
    auto pending =
        std::async(std::launch::async, [&] { return transformAllByCs2cs(pairs); }); // takes as long as the library
    std::vector<LibraryResult> ours;
    for (const CatalogPair& pair : pairs)
        ours.push_back(transformByLibrary(pair));
    const std::vector<Points> theirs = pending.get();
    for (std::size_t index = 0; index < pairs.size(); ++index) {
        expectSame(pairs[index], ours[index].units, ours[index].points, theirs[index]);
        count(pairs[index], ours[index]);
    }
    std::cout << counts_.pairs << " pairs with " << counts_.points << " points by seed " << readSeed() << ": "
              << counts_.withTwoDatums << " with different datums, " << counts_.withChoice
              << " whose operation depends on the place, " << counts_.refusedByBoth
              << " that both refuse; largest differences " << counts_.largestDegrees << " degrees and "
              << counts_.largestMetres << " m\n";
    if (!kAreAll)
        return;
    EXPECT_EQ(counts_.pairs, 400);
    EXPECT_GE(counts_.withTwoDatums, 200);
    EXPECT_GE(counts_.withChoice, 50);
    EXPECT_LE(counts_.refusedByBoth, 20);
}

TEST_F(Cs2csAgreement, AxesUnitsAndHeights_AgreeInTheProgram)
{
    const CatalogPair cases[] = {
        {"EPSG:4301", "EPSG:6668", 1, 1, {{35.68, 139.77, 0}}}, // Tokyo, in Japan
        {"EPSG:4267", "EPSG:4269", 1, 1, {{40, -100, 0}, {60, -100, 0}, {25, -80, 0}, {0, 0, 0}}},
        {"EPSG:4135", "EPSG:4152", 1, 1, {{21.3, -157.9, 0}, {19.6, -155.5, 0}}}, // islands of Hawaii
        {"EPSG:4230", "EPSG:4326", 1, 1, {{38, -9, 0}, {52, 9, 0}, {63, 10, 0}}},
        {"EPSG:4267", "EPSG:2263", 1, 1, {{40.7, -74, 0}}}, // US survey feet
        {"EPSG:2263", "EPSG:4326", 1, 1, {{980000, 200000, 0}}},
        {"EPSG:4807", "EPSG:4326", 0.9, 1, {{54, 1, 0}, {50, -5, 0}}}, // grads from Paris
        {"EPSG:4258", "EPSG:4807", 1, 0.9, {{48.6, 3.2, 0}}},
        {"EPSG:3947", "IGNF:NTFPGRAD.IGN69", 1, 1, {{1500000, 6200000, 20}}}, // grads of a system with heights
        {"IGNF:NTFPGRAD.IGN69", "EPSG:4326", 1, 1, {{2, 52, 20}}},
        {"EPSG:4326", "EPSG:2193", 1, 1, {{-41.3, 174.8, 0}}}, // north before east
        {"EPSG:2193", "EPSG:3857", 1, 1, {{5427000, 1749000, 0}}},
        {"EPSG:4326", "EPSG:2053", 1, 1, {{-29.9, 30.9, 0}}}, // to the west and the south
        {"EPSG:2053", "EPSG:22235", 1, 1, {{10000, 3300000, 0}}},
        {"EPSG:4326", "EPSG:32761", 1, 1, {{-85, 30, 0}}}, // a pole
        {"EPSG:4326", "EPSG:3408", 1, 1, {{85, 30, 0}}},
        {"EPSG:4979", "EPSG:4978", 1, 1, {{48, 11, 500}}},
        {"EPSG:4978", "EPSG:4937", 1, 1, {{4177000, 855000, 4728000}}},
        {"EPSG:4979", "EPSG:9707", 1, 1, {{49, 2, 100}}}, // heights above a geoid
        {"EPSG:7415", "EPSG:4979", 1, 1, {{100000, 400000, 5}}},
        {"EPSG:6349", "EPSG:6360", 1, 1, {{40, -100, 30}}}, // heights in feet
        {"EPSG:9000", "EPSG:7844", 1, 1, {{-30, 130, 0}}},  // a plate that moves
    };
    const TemporaryFolder folder;
    for (const CatalogPair& pair : cases)
        expectSame(pair, transformByLibrary(pair).units, transformByProgram(pair),
                   transformByCs2cs(pair, folder.path()));
    EXPECT_GT(counts_.largestDegrees + counts_.largestMetres, 0); // finite points were compared
}

TEST_F(Cs2csAgreement, RandomCatalogPairs_AgreeInTheProgram)
{
    constexpr std::size_t kShare = 40;
    const std::vector<CatalogPair> pairs = drawPairs();
    const TemporaryFolder folder;
    for (std::size_t index = 0; index < pairs.size(); index += kShare)
        expectSame(pairs[index], transformByLibrary(pairs[index]).units, transformByProgram(pairs[index]),
                   transformByCs2cs(pairs[index], folder.path()));
}

} // namespace
} // namespace Tests
