#include "embedded/windows/registry_line.h"

#include <charconv>
#include <nlohmann/json.hpp>

#include "embedded/windows/registry_change.h"

namespace Embedded {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t kChecksumDigits = 8;
constexpr const char* kFormat = "embedded registry";
constexpr int kFormatVersion = 1;

std::string digitsOf(std::uint32_t number)
{
    std::string digits(kChecksumDigits, '0');
    for (std::size_t at = kChecksumDigits; at-- > 0; number >>= 4)
        digits[at] = "0123456789abcdef"[number & 0xF];
    return digits;
}

bool isFramed(std::string_view line)
{
    return line.size() > kChecksumDigits && line[kChecksumDigits] == ' ';
}

} // namespace

std::string framedLine(std::string_view json, RunningChecksum& checksum)
{
    checksum.add(json);
    std::string line = digitsOf(checksum.value());
    line.reserve(line.size() + json.size() + 2);
    line += ' ';
    line += json;
    line += '\n';
    return line;
}

std::string_view unframed(std::string_view line, RunningChecksum& checksum)
{
    if (!isFramed(line))
        throw RegistryDamage{"not a checksum and a JSON object"};
    const std::string_view json = line.substr(kChecksumDigits + 1);
    checksum.add(json);
    if (line.substr(0, kChecksumDigits) != digitsOf(checksum.value()))
        throw RegistryDamage{"the checksum does not fit"};
    return json;
}

std::string headerJson()
{
    return Json{{"format", kFormat}, {"formatVersion", kFormatVersion}}.dump();
}

void checkHeader(std::string_view line)
{
    const auto header =
        Json::parse(isFramed(line) ? line.substr(kChecksumDigits + 1) : std::string_view(), nullptr, false);
    if (!header.is_object() || header.value("format", Json()) != kFormat)
        throw RegistryDamage{"this is not a registry file"};
    const auto version = header.value("formatVersion", Json());
    if (!version.is_number_unsigned() || version == 0U)
        throw RegistryDamage{"the format version is not a number from 1"};
    if (version != kFormatVersion)
        throw RegistryDamage{"format version " + version.dump() + " is newer than " + std::to_string(kFormatVersion) +
                             ", the newest that is known here"};
}

} // namespace Embedded
