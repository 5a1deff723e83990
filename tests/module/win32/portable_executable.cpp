#include "module/win32/portable_executable.h"

#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace Tests {
namespace {

constexpr std::size_t kExports = 0;
constexpr std::size_t kImports = 1;
constexpr std::size_t kLateImports = 13;
constexpr std::uint64_t kByNumber = std::uint64_t{1} << 63;

} // namespace

PortableExecutable::PortableExecutable(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    bytes_.assign(std::istreambuf_iterator<char>(stream), {});
    if (number<std::uint32_t>(header() - 4) != 0x4550 || number<std::uint16_t>(optionalHeader()) != 0x20B)
        throw std::runtime_error(file.string() + " is not for 64-bit Windows");
}

std::uint16_t PortableExecutable::flags() const
{
    return number<std::uint16_t>(optionalHeader() + 70);
}

std::uint32_t PortableExecutable::timestamp() const
{
    return number<std::uint32_t>(header() + 4);
}

std::vector<std::string> PortableExecutable::exportedNames() const
{
    const std::size_t table = fileOffset(directory(kExports));
    const auto count = number<std::uint32_t>(table + 24);
    const std::size_t addresses = fileOffset(number<std::uint32_t>(table + 32));
    std::vector<std::string> names;
    for (std::size_t index = 0; index < count; ++index)
        names.push_back(text(fileOffset(number<std::uint32_t>(addresses + 4 * index))));
    return names;
}

std::uint32_t PortableExecutable::exportedEntries() const
{
    return number<std::uint32_t>(fileOffset(directory(kExports)) + 20);
}

Imports PortableExecutable::imports() const
{
    Imports imports;
    for (std::size_t entry = fileOffset(directory(kImports)); number<std::uint32_t>(entry + 12) != 0; entry += 20)
        imports.emplace(text(fileOffset(number<std::uint32_t>(entry + 12))), functionsAt(number<std::uint32_t>(entry)));
    return imports;
}

bool PortableExecutable::hasLateImports() const
{
    return directory(kLateImports) != 0;
}

std::set<std::string> PortableExecutable::functionsAt(std::uint32_t lookupTable) const
{
    std::set<std::string> functions;
    std::size_t offset = fileOffset(lookupTable);
    for (auto entry = number<std::uint64_t>(offset); entry != 0; entry = number<std::uint64_t>(offset += 8)) {
        if ((entry & kByNumber) != 0)
            functions.insert("#" + std::to_string(entry & 0xFFFF));
        else
            functions.insert(text(fileOffset(static_cast<std::uint32_t>(entry)) + 2));
    }
    return functions;
}

std::uint32_t PortableExecutable::directory(std::size_t index) const
{
    const bool isThere = index < number<std::uint32_t>(optionalHeader() + 108);
    return isThere ? number<std::uint32_t>(optionalHeader() + 112 + 8 * index) : 0;
}

std::size_t PortableExecutable::fileOffset(std::uint32_t address) const
{
    const std::size_t sections = optionalHeader() + number<std::uint16_t>(header() + 16);
    for (std::size_t index = 0; index < number<std::uint16_t>(header() + 2); ++index) {
        const std::size_t section = sections + 40 * index;
        const auto start = number<std::uint32_t>(section + 12);
        if (address >= start && address - start < number<std::uint32_t>(section + 16))
            return number<std::uint32_t>(section + 20) + (address - start);
    }
    throw std::runtime_error("no section of the file is loaded at " + std::to_string(address));
}

template <class Number>
Number PortableExecutable::number(std::size_t offset) const
{
    if (offset > bytes_.size() || bytes_.size() - offset < sizeof(Number))
        throw std::runtime_error("the file ends before " + std::to_string(offset));
    Number value;
    std::memcpy(&value, bytes_.data() + offset, sizeof value);
    return value;
}

std::string PortableExecutable::text(std::size_t offset) const
{
    const std::size_t end = bytes_.find('\0', offset);
    if (end == std::string::npos)
        throw std::runtime_error("the file ends within a name");
    return bytes_.substr(offset, end - offset);
}

} // namespace Tests
