// The fixture of tests that run several processes at once.
#pragma once

#include <cstdlib>
#include <future>
#include <set>

#include "command_line_test.h"

namespace Tests {

class ConcurrentCommands : public CommandLineTest {
protected:
    /// The number of rounds that the environment variable ORVEL_ROUNDS asks for, or `ordinary`.
    static int rounds(int ordinary)
    {
        const char* const text = std::getenv("ORVEL_ROUNDS");
        return text != nullptr ? std::atoi(text) : ordinary;
    }

    /// The command that adds an item with this source to a store. The store is an option with its values.
    static Arguments addition(const std::string& source, const Arguments& store)
    {
        return concatenate({"config", "add", "--source", source, "--target", "T", "--name", "EPSG:1241", "--type",
                            "transformation", "--force", "-q", "--wait", "120"},
                           store);
    }

    /// Starts all commands at once and returns their results in order.
    std::vector<ProgramResult> runAtOnce(const std::vector<Arguments>& commands) const
    {
        std::vector<std::future<ProgramResult>> processes;
        for (std::size_t index = 0; index < commands.size(); ++index)
            processes.push_back(std::async(std::launch::async, [this, &commands, index] {
                return runInParallel(commands[index], static_cast<int>(index));
            }));
        std::vector<ProgramResult> results;
        for (auto& process : processes)
            results.push_back(process.get());
        return results;
    }

    /// The sources of the items in a store.
    std::set<std::string> storedSources(const Arguments& store) const
    {
        const ProgramResult stored = run(concatenate({"config", "get"}, store));
        std::set<std::string> sources;
        for (const Json& item : Json::parse(run({"config", "items", "--json"}, stored.output).output))
            sources.insert(item["sourceCs"]);
        return sources;
    }

    /// Adds eight items at once and expects that the store has them all.
    void expectAdditionsStored(const Arguments& store) const
    {
        std::vector<Arguments> additions;
        std::set<std::string> expected;
        for (int number = 0; number < 8; ++number) {
            const std::string source = "S" + std::to_string(number);
            additions.push_back(addition(source, store));
            expected.insert(source);
        }
        for (const ProgramResult& result : runAtOnce(additions))
            expectResult(result, 0, "", "");
        EXPECT_EQ(storedSources(store), expected);
    }
};

} // namespace Tests
