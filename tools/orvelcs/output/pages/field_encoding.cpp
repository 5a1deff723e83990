#include "orvelcs/output/pages/field_encoding.h"

#include "orvelcs/output/pages/base64.h"

namespace Orvelcs {
namespace {

std::int64_t predictNumber(const std::vector<std::int64_t>& numbers, std::size_t index, std::size_t columns)
{
    const bool hasWest = index % columns > 0;
    const bool hasSouth = index >= columns;
    if (hasWest && hasSouth)
        return numbers[index - 1] + numbers[index - columns] - numbers[index - columns - 1];
    if (hasWest)
        return numbers[index - 1];
    return hasSouth ? numbers[index - columns] : 0;
}

void appendSigned(std::int64_t number, std::string& bytes)
{
    constexpr std::uint64_t kGroup = 128;
    std::uint64_t rest =
        number < 0 ? static_cast<std::uint64_t>(-(number + 1)) * 2 + 1 : static_cast<std::uint64_t>(number) * 2;
    for (; rest >= kGroup; rest /= kGroup)
        bytes += static_cast<char>(rest % kGroup + kGroup);
    bytes += static_cast<char>(rest);
}

} // namespace

std::string encodeField(const std::vector<std::int64_t>& numbers, std::size_t columns)
{
    std::string bytes;
    for (std::size_t index = 0; index < numbers.size(); ++index)
        appendSigned(numbers[index] - predictNumber(numbers, index, columns), bytes);
    return encodeBase64(bytes);
}

} // namespace Orvelcs
