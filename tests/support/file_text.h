// Whole files as bytes.
#pragma once

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace Tests {

inline std::string readFile(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw std::runtime_error("cannot read " + file.string());
    std::string bytes(std::filesystem::file_size(file), '\0');
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(stream.gcount()));
    return bytes;
}

inline void writeFile(const std::filesystem::path& file, const std::string& bytes)
{
    std::ofstream stream(file, std::ios::binary);
    stream << bytes;
    if (!stream.flush())
        throw std::runtime_error("cannot write " + file.string());
}

} // namespace Tests
