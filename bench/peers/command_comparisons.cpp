// Commands that ask the catalog, beside PROJ's own program for it.
#include <memory>
#include <utility>

#include "peers/comparisons.h"
#include "peers/process.h"
#include "support/temporary_folder.h"

namespace Bench {
namespace {

using Words = std::vector<std::string>;

struct CommandWork {
    std::string work;
    double goal;
    Words ours; // of orvelcs
    Words theirs;
};

std::function<void()> run(Words words, int status = 0)
{
    return [words = std::move(words), status] { runProcess(words, "/dev/null", status); };
}

Words withProgram(Words arguments)
{
    arguments.insert(arguments.begin(), builtProgram("orvelcs"));
    return arguments;
}

Comparison command(const CommandWork& work)
{
    std::string peer;
    for (const std::string& word : work.theirs)
        peer += (peer.empty() ? "" : " ") + word;
    return {work.work, peer, work.goal, run(withProgram(work.ours)), run(work.theirs)};
}

} // namespace

void addCommandComparisons(std::vector<Comparison>& comparisons)
{
    const auto folder = std::make_shared<Tests::TemporaryFolder>();
    const std::string drawing = (folder->path() / "a.qedb").string();
    runProcess(withProgram({"new", drawing}));
    runProcess(withProgram({"assign", "EPSG:25832", drawing}));
    const Words show = withProgram({"show", drawing});
    comparisons.push_back({"orvelcs show", "projinfo -o PROJJSON EPSG:25832", 0.85,
                           [folder, show] { runProcess(show); }, run({"projinfo", "-o", "PROJJSON", "EPSG:25832"})});
    comparisons.push_back(
        command({"orvelcs catalog search", 1, {"catalog", "search", "UTM zone 32N"}, {"projinfo", "--list-crs"}}));
    for (const auto& [source, target] : {std::pair("EPSG:4230", "EPSG:4326"), std::pair("EPSG:4314", "EPSG:4258")})
        comparisons.push_back(command({std::string("orvelcs transformation list ") + source + " " + target,
                                       0.8,
                                       {"transformation", "list", source, target},
                                       {"projinfo", "-s", source, "-t", target}}));
    constexpr int kNothingFound = 3;
    comparisons.push_back({"orvelcs catalog show of a misspelt code", "orvelcs show", 0.67,
                           run(withProgram({"catalog", "show", "EPSG:25823"}), kNothingFound),
                           [folder, show] { runProcess(show); }});
}

} // namespace Bench
