// Gives every seed and every finding of the fuzzers to its target. A broken promise ends the program.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "fuzz/targets.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

using Names = std::set<std::string>;

const fs::path kRoom = fs::path(ORVEL_SOURCE_DIR) / "fuzz";

Names targetNames()
{
    Names names;
    for (const Fuzz::Target& target : Fuzz::targets())
        names.emplace(target.name);
    return names;
}

Names namesIn(const fs::path& folder)
{
    Names names;
    if (!fs::exists(folder))
        return names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        names.insert(entry.path().filename().string());
    return names;
}

std::vector<std::uint8_t> bytesOf(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

/// Returns the number of inputs.
std::size_t replay(const Fuzz::Target& target, const fs::path& folder)
{
    const Names names = namesIn(folder);
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        target.run(bytesOf(folder / name));
    }
    return names.size();
}

std::vector<std::string> listOf(const Names& names)
{
    return {names.begin(), names.end()};
}

class FuzzCorpus : public PlatformTest, public testing::WithParamInterface<std::string> {
protected:
    const Fuzz::Target& target = Fuzz::targetNamed(GetParam());
};

TEST_P(FuzzCorpus, EverySeedAndEveryPastFinding_KeepsThePromisesOfItsTarget)
{
    EXPECT_GT(replay(target, kRoom / "corpus" / GetParam()), 0U) << "a fuzzer needs seeds";
    const fs::path findings = kRoom / "findings" / GetParam();
    if (fs::exists(findings)) {
        EXPECT_GT(replay(target, findings), 0U) << "a folder of findings has some";
    }
}

INSTANTIATE_TEST_SUITE_P(Target, FuzzCorpus, testing::ValuesIn(listOf(targetNames())),
                         [](const auto& one) { return one.param; });

class FuzzRoom : public PlatformTest {};

TEST_F(FuzzRoom, EveryTarget_HasSeedsAndADictionary)
{
    Names dictionaries;
    for (const std::string& name : targetNames())
        dictionaries.insert(name + ".dict");
    EXPECT_EQ(namesIn(kRoom / "corpus"), targetNames());
    EXPECT_EQ(namesIn(kRoom / "dictionaries"), dictionaries);
}

TEST_F(FuzzRoom, EveryFolderOfFindings_BelongsToATarget)
{
    const Names targets = targetNames();
    for (const std::string& name : namesIn(kRoom / "findings"))
        EXPECT_TRUE(targets.contains(name)) << name;
}

TEST_F(FuzzRoom, Seeds_StaySmall)
{
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(kRoom / "corpus")) {
        if (entry.is_regular_file()) {
            EXPECT_LE(entry.file_size(), 4096U) << entry.path();
        }
    }
}

} // namespace
} // namespace Tests
