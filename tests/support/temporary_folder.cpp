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
    std::error_code ignored; // a folder that cannot be removed is no failure of the test
    std::filesystem::remove_all(path_, ignored);
}

} // namespace Tests
