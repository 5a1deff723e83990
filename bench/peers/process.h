// Programs that a comparison starts and waits for, so that their processor time counts.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Bench {

/// Starts the program, which the search path may find, and waits for it. What it prints goes to `output`, its messages
/// nowhere. Throws std::runtime_error unless it ends with `status`.
void runProcess(const std::vector<std::string>& words, const std::filesystem::path& output = "/dev/null",
                int status = 0);

/// The path of a program that is built beside this one.
std::string builtProgram(const char* name);

} // namespace Bench
