#include "cli/posix/installed_program.h"

#include <cstdlib>
#include <sstream>
#include <stdexcept>

namespace Tests {

std::filesystem::path findProgram(const std::string& name, const std::string& package)
{
    std::istringstream folders(std::getenv("PATH") != nullptr ? std::getenv("PATH") : "");
    for (std::string folder; std::getline(folders, folder, ':');)
        if (std::filesystem::exists(std::filesystem::path(folder) / name))
            return std::filesystem::path(folder) / name;
    throw std::runtime_error(name + " is missing: install " + package);
}

} // namespace Tests
