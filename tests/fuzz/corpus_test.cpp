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

const fs::path kFuzzFolder = fs::path(ORVEL_SOURCE_DIR) / "fuzz";

Names listTargets()
{
    Names names;
    for (const Fuzz::Target& target : Fuzz::targets())
        names.emplace(target.name);
    return names;
}

Names listNames(const fs::path& folder)
{
    Names names;
    if (!fs::exists(folder))
        return names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        names.insert(entry.path().filename().string());
    return names;
}

std::vector<std::uint8_t> readBytes(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

/// Returns the number of inputs.
std::size_t replay(const Fuzz::Target& target, const fs::path& folder)
{
    const Names names = listNames(folder);
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        target.run(readBytes(folder / name));
    }
    return names.size();
}

class FuzzCorpus : public PlatformTest, public testing::WithParamInterface<std::string> {
protected:
    const Fuzz::Target& target = Fuzz::findTarget(GetParam());
};

TEST_P(FuzzCorpus, EverySeedAndEveryPastFinding_KeepsThePromisesOfItsTarget)
{
    EXPECT_GT(replay(target, kFuzzFolder / "corpus" / GetParam()), 0U) << "a fuzzer needs seeds";
    const fs::path findings = kFuzzFolder / "findings" / GetParam();
    if (fs::exists(findings)) {
        EXPECT_GT(replay(target, findings), 0U) << "a folder of findings has some";
    }
}

INSTANTIATE_TEST_SUITE_P(Target, FuzzCorpus, testing::ValuesIn(listTargets()),
                         [](const auto& name) { return name.param; });

using FuzzFolder = PlatformTest;

TEST_F(FuzzFolder, EveryTarget_HasSeedsAndADictionary)
{
    Names dictionaries;
    for (const std::string& name : listTargets())
        dictionaries.insert(name + ".dict");
    EXPECT_EQ(listNames(kFuzzFolder / "corpus"), listTargets());
    EXPECT_EQ(listNames(kFuzzFolder / "dictionaries"), dictionaries);
}

TEST_F(FuzzFolder, EveryFolderOfFindings_BelongsToATarget)
{
    const Names targets = listTargets();
    for (const std::string& name : listNames(kFuzzFolder / "findings"))
        EXPECT_TRUE(targets.contains(name)) << name;
}

TEST_F(FuzzFolder, EverySeed_HasAtMost4096Bytes)
{
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(kFuzzFolder / "corpus")) {
        if (entry.is_regular_file()) {
            EXPECT_LE(entry.file_size(), 4096U) << entry.path();
        }
    }
}

} // namespace
} // namespace Tests
