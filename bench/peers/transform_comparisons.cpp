// Points of a file into a file, beside cs2cs. Both ask the same library for each point and print the same digits.
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <utility>

#include "measurement.h"
#include "peers/comparisons.h"
#include "peers/process.h"
#include "support/temporary_folder.h"

namespace Bench {
namespace {

constexpr int kPoints = 1'000'000;
constexpr unsigned kPointSeed = 1;
constexpr const char* kSource = "EPSG:4326";

struct Area {
    std::string target; // a system that is made for it
    double south, north, west, east;
};

std::string contentsOf(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// The points are written when they are first needed.
class PointFile {
public:
    explicit PointFile(Area area) : area_(std::move(area)) {}

    void runOurs() { run({builtProgram("orvelcs"), "transform", kSource, area_.target}, "ours"); }
    /// Heights and coordinates have six decimals, as metres have in ours.
    void runTheirs() { run({"cs2cs", "-f", "%.6f", kSource, area_.target}, "theirs"); }

private:
    std::filesystem::path path(const char* name) const { return folder_.path() / name; }

    void run(std::vector<std::string> words, const char* results)
    {
        if (!exists(path("points")))
            prepare();
        words.insert(words.begin(), {"/bin/sh", "-c", R"(exec "$@" < "$0")", path("points").string()});
        runProcess(words, path(results));
    }

    void prepare()
    {
        writePoints();
        runOurs();
        runTheirs();
        std::string theirs = contentsOf(path("theirs"));
        std::ranges::replace(theirs, '\t', ' ');
        requireSuccess(!theirs.empty() && contentsOf(path("ours")) == theirs, "the same results as cs2cs");
    }

    void writePoints() const
    {
        std::mt19937 random(kPointSeed);
        std::uniform_real_distribution<double> latitude(area_.south, area_.north);
        std::uniform_real_distribution<double> longitude(area_.west, area_.east);
        std::uniform_real_distribution<double> height(0, 3000);
        std::ofstream stream(path("points"), std::ios::binary);
        char line[100];
        for (int point = 0; point < kPoints; ++point) {
            std::snprintf(line, sizeof line, "%.8f %.8f %.3f\n", latitude(random), longitude(random), height(random));
            stream << line;
        }
        requireSuccess(stream.flush().good(), "writing points");
    }

    Area area_;
    Tests::TemporaryFolder folder_;
};

Comparison transforming(double goal, const Area& area)
{
    const auto points = std::make_shared<PointFile>(area);
    return {.work = std::string("transform 1,000,000 points, ") + kSource + " to " + area.target,
            .peer = "cs2cs",
            .goal = goal,
            .ours = [points] { points->runOurs(); },
            .theirs = [points] { points->runTheirs(); }};
}

} // namespace

void addTransformComparisons(std::vector<Comparison>& comparisons)
{
    comparisons.push_back(transforming(4, {"EPSG:25832", 47.5, 55, 6.1, 11.9}));
    comparisons.push_back(transforming(2.5, {"EPSG:27572", 42.5, 51, -4.5, 8}));
}

} // namespace Bench
