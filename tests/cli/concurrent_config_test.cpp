// Several processes that change the user's configuration at once.
#include <algorithm>
#include <cstdlib>
#include <future>

#include "command_line_test.h"

namespace Tests {
namespace {

constexpr int kProcesses = 8;
constexpr int kRounds = 2;

/// ORVEL_ROUNDS in the environment asks for more than there are in an ordinary run.
int rounds()
{
    const char* const wanted = std::getenv("ORVEL_ROUNDS");
    return wanted != nullptr ? std::atoi(wanted) : kRounds;
}

class ConcurrentConfig : public CommandLineTest {
protected:
    std::vector<std::string> additionOf(int number) const
    {
        return {"config",     "add",
                "--source",   "S" + std::to_string(number),
                "--target",   "T",
                "--name",     "EPSG:1241",
                "--type",     "transformation",
                "--user",     "--quiet",
                "--wait",     "60",
                "--user-dir", path("user").string()};
    }
    /// The sources of the items that are stored, in the order of their names.
    std::vector<std::string> storedSources() const
    {
        const ProgramResult stored = run({"config", "get", "--user", "--user-dir", path("user").string()});
        std::vector<std::string> sources;
        for (const Json& item : Json::parse(run({"config", "items", "--json"}, stored.output).output))
            sources.push_back(item["sourceCs"]);
        std::sort(sources.begin(), sources.end());
        return sources;
    }
};

TEST_F(ConcurrentConfig, EveryItemThatWasAddedIsThere)
{
    std::vector<std::string> expected;
    for (int number = 0; number < kProcesses; ++number)
        expected.push_back("S" + std::to_string(number));
    for (int round = 0; round < rounds() && !HasFailure(); ++round) {
        std::filesystem::remove_all(path("user"));
        std::vector<std::future<ProgramResult>> processes;
        for (int number = 0; number < kProcesses; ++number)
            processes.push_back(
                std::async(std::launch::async, [this, number] { return runBeside(additionOf(number), number); }));
        for (auto& process : processes)
            expectResult(process.get(), 0, "", "");
        EXPECT_EQ(storedSources(), expected) << "round " << round;
    }
}

} // namespace
} // namespace Tests
