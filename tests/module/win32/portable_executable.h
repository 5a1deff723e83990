// A DLL or a program of Windows as it lies on disk: what its headers and directories say.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace Tests {

/// The functions of each DLL; one that is imported by number is "#" and the number.
using Imports = std::map<std::string, std::set<std::string>>;

/// Every reading throws std::runtime_error where the file is not what a 64-bit Windows would load.
class PortableExecutable {
public:
    explicit PortableExecutable(const std::filesystem::path& file);

    std::uint16_t flags() const;
    /// When it was linked, in seconds since 1970, if the linker was to note that.
    std::uint32_t timestamp() const;
    /// One for each entry of the export table, in its order.
    std::vector<std::string> exportedNames() const;
    /// With those that have a number alone.
    std::uint32_t exportedEntries() const;
    Imports imports() const;
    /// Whether there are libraries that it loads on first use, which imports() does not tell.
    bool hasLateImports() const;

private:
    std::string bytes_;

    template <class Number>
    Number number(std::size_t offset) const;
    std::string text(std::size_t offset) const;
    std::size_t header() const { return number<std::uint32_t>(0x3C) + 4; }
    std::size_t optionalHeader() const { return header() + 20; }
    /// Where a table is in memory; 0 when there is none.
    std::uint32_t directory(std::size_t index) const;
    /// Where in the file that lies which the headers place there in memory.
    std::size_t offsetOf(std::uint32_t address) const;
    std::set<std::string> functionsAt(std::uint32_t lookupTable) const;
};

} // namespace Tests
