// A program that is started, waited for and heard out.
#pragma once

#include <filesystem>
#include <string>

namespace Tests {

struct ChildProgramEnd {
    unsigned exitCode = 0;
    std::string output; // of both streams, in the order of writing
};

ChildProgramEnd runChildProgram(const std::filesystem::path& program, const std::string& argument);

} // namespace Tests
