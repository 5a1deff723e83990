// Reads the headers and directories of a DLL or a program of Windows.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace Tests {

/// The functions by DLL. A function that is imported by number is "#" and the number.
using Imports = std::map<std::string, std::set<std::string>>;

/// Every member throws std::runtime_error if a 64-bit Windows would not load the file.
class PortableExecutable {
public:
    explicit PortableExecutable(const std::filesystem::path& file);

    std::uint16_t flags() const;
    /// The time of linking in seconds since 1970, if the linker recorded it.
    std::uint32_t timestamp() const;
    /// The entries of the export table, in its order.
    std::vector<std::string> exportedNames() const;
    /// Includes functions that have only a number.
    std::uint32_t exportedEntries() const;
    Imports imports() const;
    /// Whether the file loads libraries on first use. imports() leaves those out.
    bool hasLateImports() const;

private:
    std::string bytes_;

    template <class Number>
    Number number(std::size_t offset) const;
    std::string text(std::size_t offset) const;
    std::size_t header() const { return number<std::uint32_t>(0x3C) + 4; }
    std::size_t optionalHeader() const { return header() + 20; }
    /// The address of a table in memory; 0 for none.
    std::uint32_t directory(std::size_t index) const;
    /// Converts an address in memory to an offset in the file.
    std::size_t fileOffset(std::uint32_t address) const;
    std::set<std::string> functionsAt(std::uint32_t lookupTable) const;
};

} // namespace Tests
