#include "saves/posix/save_scenario.h"

#include "embedded/base/staged_file.h"
#include "support/file_text.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

fs::path savedFile(const fs::path& folder)
{
    return folder / "a.txt";
}

void prepareNothing(const fs::path& /*folder*/)
{
}

void writeOlderFile(const fs::path& folder)
{
    writeFile(savedFile(folder), std::string(3'000, 'o'));
}

void linkOlderFile(const fs::path& folder)
{
    writeOlderFile(folder);
    fs::rename(savedFile(folder), folder / "real.txt");
    fs::create_symlink("real.txt", savedFile(folder));
}

bool saveNewFile(const fs::path& folder)
{
    return Embedded::replaceFile(savedFile(folder), std::string(20'000, 'n')).has_value();
}

std::string readContent(const fs::path& folder)
{
    return fs::exists(savedFile(folder)) ? readFile(savedFile(folder)) : std::string();
}

std::string readLinkedContent(const fs::path& folder)
{
    return fs::is_symlink(savedFile(folder)) ? readContent(folder) : "refused: not a link";
}

} // namespace

constinit const SaveScenario kNewFile = {"NewFile", prepareNothing, saveNewFile, readContent};
constinit const SaveScenario kReplacedFile = {"ReplacedFile", writeOlderFile, saveNewFile, readContent};
constinit const SaveScenario kLinkedFile = {"LinkedFile", linkOlderFile, saveNewFile, readLinkedContent};

} // namespace Tests
