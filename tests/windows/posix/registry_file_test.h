// The file that stands for the registry, as a test sees it and writes it.
#pragma once

#include <fstream>
#include <iterator>

#include "support/file_text.h"
#include "windows/registry_test.h"

namespace Tests {

class RegistryFileTest : public RegistryTest {
protected:
    std::string onDisk() const
    {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    void put(const std::string& bytes) const
    {
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
    }
};

} // namespace Tests
