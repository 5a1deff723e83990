// Fails when a command on a large drawing takes more than 1.2 times the processor time of the same command on a small
// one, or 10 MB more memory: the cost of a command depends on what it touches, not on the size of the drawing. Runs of
// the commands alternate between the drawings, and their medians are compared.
//
//     orvel_drawing_scale [ROUNDS]
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "embedded/host/drawing_file/drawing_file.h"
#include "measurement.h"
#include "storage/host_holders.h"
#include "storage/resbuf_dictionary.h"
#include "support/drawing.h"
#include "support/temporary_folder.h"
#include "transformation/drawing_config.h"

namespace Bench {
namespace {

namespace fs = std::filesystem;

constexpr int kXrecords = 1'000'000;
constexpr std::size_t kConfigurationCharacters = 100'000'000;
constexpr double kMaximumTimes = 1.2;
constexpr double kMaximumMegabytes = 10;
constexpr int kRounds = 15;

void addXrecords(QeDbDictionary& dictionary)
{
    resbuf* const chain = qeutBuildList(300, L"a record that no command reads", 1070, 7, QeRb::kListEnd);
    for (int number = 0; number < kXrecords; ++number) {
        const Orvel::HostObject<QeDbXrecord> xrecord(new QeDbXrecord);
        QeDbObjectId id;
        requireSuccess(xrecord->setFromRbChain(chain) == Qeapp::eOk, "an xrecord");
        requireSuccess(dictionary.setAt(std::to_wstring(number).c_str(), xrecord.get(), id) == Qeapp::eOk, "an entry");
    }
    qeutRelRb(chain);
}

QeDbDictionary* addDictionary(QeDbDictionary& namedObjects)
{
    auto* const dictionary = new QeDbDictionary;
    QeDbObjectId id;
    requireSuccess(namedObjects.setAt(L"BELOW", dictionary, id) == Qeapp::eOk, "a dictionary");
    return dictionary;
}

struct Sample {
    const char* name;
    std::function<void(Tests::Drawing& drawing)> fill;
};

const std::vector<Sample>& samples()
{
    static const std::vector<Sample> all = {
        {"small", [](Tests::Drawing&) {}},
        {"1,000,000 xrecords in the named objects",
         [](Tests::Drawing& drawing) {
             Orvel::NamedObjects dictionary;
             requireSuccess(dictionary.openIn(drawing.database(), QeDb::kForWrite) == Qeapp::eOk, "the named objects");
             addXrecords(*dictionary.get());
         }},
        {"1,000,000 xrecords below them",
         [](Tests::Drawing& drawing) {
             Orvel::NamedObjects dictionary;
             requireSuccess(dictionary.openIn(drawing.database(), QeDb::kForWrite) == Qeapp::eOk, "the named objects");
             const Orvel::HostObject<QeDbDictionary> below(addDictionary(*dictionary.get()));
             addXrecords(*below.get());
         }},
        {"100 MB of configuration",
         [](Tests::Drawing& drawing) {
             const std::wstring text(kConfigurationCharacters, L'x');
             const Orvel::CResbufDictionary dictionary(Orvel::kTransformationConfigDictionary, drawing.database());
             requireSuccess(
                 dictionary.SetResbuf(Orvel::kTransformationConfigKey, Tests::makeChain({{300, text}}).get(), nullptr),
                 "a configuration");
         }},
    };
    return all;
}

struct Command {
    const char* name;
    std::vector<std::string> arguments; // those before the drawing
};

const std::vector<Command>& commands()
{
    static const std::vector<Command> all = {
        {"show", {"show"}},
        {"assign", {"assign", "-q", "EPSG:31467"}},
        {"convert to 29", {"convert", "-q", "--drawing-version", "29"}},
        {"forms", {"forms"}},
        {"clear", {"clear", "-q"}},
    };
    return all;
}

struct Cost {
    double milliseconds = 0; // of processor time
    double megabytes = 0;    // peak
};

Cost run(const fs::path& program, const Command& command, const fs::path& drawing)
{
    std::vector<std::string> words = {program.string()};
    words.insert(words.end(), command.arguments.begin(), command.arguments.end());
    words.push_back(drawing.string());
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        requireSuccess(std::freopen("/dev/null", "w", stdout) != nullptr, "standard output");
        ::execv(arguments.front(), arguments.data());
        ::_exit(127);
    }
    int status = 0;
    rusage used{};
    requireSuccess(::wait4(child, &status, 0, &used) == child && status == 0, "a command failed");
    return {processorSeconds(used) * 1e3, static_cast<double>(used.ru_maxrss) / 1024};
}

/// The figures of one command on one sample.
struct Costs {
    std::vector<double> milliseconds;
    std::vector<double> megabytes;
};

void makeDrawingsInThisProcess(const fs::path& folder)
{
    for (std::size_t index = 0; index < samples().size(); ++index) {
        Tests::Drawing drawing;
        drawing.withGeoData(L"");
        samples()[index].fill(drawing);
        const fs::path file = folder / (std::to_string(index) + ".qedb");
        requireSuccess(Embedded::saveDrawing(*drawing.database(), file, QeDb::kCurrentDwg).has_value(), "a drawing");
    }
}

/// Runs in a process of its own, since the memory of this process would count for the processes that it starts.
void makeDrawings(const fs::path& folder)
{
    const pid_t child = ::fork();
    if (child == 0) {
        try {
            makeDrawingsInThisProcess(folder);
            ::_exit(0);
        } catch (const std::exception& failure) {
            std::fprintf(stderr, "making a drawing: %s\n", failure.what());
            ::_exit(1);
        }
    }
    int status = 0;
    requireSuccess(::waitpid(child, &status, 0) == child && status == 0, "the drawings cannot be made");
}

bool report(const std::vector<std::vector<Costs>>& costs)
{
    bool allFit = true;
    std::printf("%-42s %-16s %9s %6s %9s\n", "drawing", "command", "ms (cpu)", "times", "more MB");
    for (std::size_t sample = 0; sample < samples().size(); ++sample) {
        for (std::size_t command = 0; command < commands().size(); ++command) {
            const double milliseconds = median(costs[sample][command].milliseconds);
            const double times = milliseconds / median(costs[0][command].milliseconds);
            const double more = median(costs[sample][command].megabytes) - median(costs[0][command].megabytes);
            const bool fits = times <= kMaximumTimes && more <= kMaximumMegabytes;
            allFit = allFit && fits;
            std::printf("%-42s %-16s %9.1f %6.2f %9.1f%s\n", samples()[sample].name, commands()[command].name,
                        milliseconds, times, more, fits ? "" : "  too much");
        }
    }
    return allFit;
}

bool check(const fs::path& program, int rounds)
{
    const Tests::TemporaryFolder folder;
    makeDrawings(folder.path());
    const Command assign{"", {"assign", "-q", "EPSG:25832"}};
    std::vector costs(samples().size(), std::vector<Costs>(commands().size()));
    for (std::size_t sample = 0; sample < samples().size(); ++sample)
        run(program, assign, folder.path() / (std::to_string(sample) + ".qedb"));
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t command = 0; command < commands().size(); ++command) {
            for (std::size_t sample = 0; sample < samples().size(); ++sample) {
                const fs::path file = folder.path() / (std::to_string(sample) + ".qedb");
                const Cost cost = run(program, commands()[command], file);
                costs[sample][command].milliseconds.push_back(cost.milliseconds);
                costs[sample][command].megabytes.push_back(cost.megabytes);
            }
        }
        for (std::size_t sample = 0; sample < samples().size(); ++sample) {
            run(program, {"", {"convert", "-q", "--drawing-version", "33"}},
                folder.path() / (std::to_string(sample) + ".qedb"));
            run(program, assign, folder.path() / (std::to_string(sample) + ".qedb"));
        }
    }
    return report(costs);
}

} // namespace
} // namespace Bench

int main(int count, char** arguments)
{
    try {
        const std::filesystem::path program = std::filesystem::canonical("/proc/self/exe").parent_path() / "orvelcs";
        return Bench::check(program, count > 1 ? std::atoi(arguments[1]) : Bench::kRounds) ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "orvel_drawing_scale: %s\n", failure.what());
        return 1;
    }
}
