#include "support/temporary_folder.h"

#include <random>
#include <string>
#include <system_error>

namespace Tests {
namespace {

std::filesystem::path newFolder()
{
    std::random_device random;
    for (;;) {
        const std::filesystem::path path =
            std::filesystem::temp_directory_path() / ("orvel-test-" + std::to_string(random()));
        if (std::filesystem::create_directory(path))
            return path;
    }
}

} // namespace

TemporaryFolder::TemporaryFolder() : path_(newFolder())
{
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored; // a folder that cannot be removed does not fail the test
    std::filesystem::remove_all(path_, ignored);
}

std::set<std::string> TemporaryFolder::names() const
{
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_))
        names.insert(entry.path().filename().string());
    return names;
}

} // namespace Tests
