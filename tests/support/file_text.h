// Whole files as bytes.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace Tests {

inline std::string readFile(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw std::runtime_error("cannot read " + file.string());
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

inline void writeFile(const std::filesystem::path& file, const std::string& bytes)
{
    std::ofstream stream(file, std::ios::binary);
    stream << bytes;
    if (!stream.flush())
        throw std::runtime_error("cannot write " + file.string());
}

} // namespace Tests
