#include "saves/posix/save_scenario.h"

#include "embedded/base/staged_file.h"
#include "support/file_text.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

fs::path fileIn(const fs::path& folder)
{
    return folder / "a.txt";
}

void nothing(const fs::path& /*folder*/)
{
}

void olderFile(const fs::path& folder)
{
    writeFile(fileIn(folder), std::string(3'000, 'o'));
}

void linkToOlderFile(const fs::path& folder)
{
    olderFile(folder);
    fs::rename(fileIn(folder), folder / "real.txt");
    fs::create_symlink("real.txt", fileIn(folder));
}

bool newFile(const fs::path& folder)
{
    return Embedded::replaceFile(fileIn(folder), std::string(20'000, 'n')).has_value();
}

std::string fileContent(const fs::path& folder)
{
    return fs::exists(fileIn(folder)) ? readFile(fileIn(folder)) : std::string();
}

std::string linkedContent(const fs::path& folder)
{
    return fs::is_symlink(fileIn(folder)) ? fileContent(folder) : "refused: not a link";
}

} // namespace

constinit const SaveScenario kNewFile = {"NewFile", nothing, newFile, fileContent};
constinit const SaveScenario kReplacedFile = {"ReplacedFile", olderFile, newFile, fileContent};
constinit const SaveScenario kLinkedFile = {"LinkedFile", linkToOlderFile, newFile, linkedContent};

} // namespace Tests
