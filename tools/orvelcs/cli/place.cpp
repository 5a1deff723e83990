#include "orvelcs/cli/place.h"

#include <cmath>
#include <cstddef>
#include <optional>
#include <vector>

#include <fmt/format.h>

#include "embedded/base/parse_number.h"
#include "embedded/base/trim.h"
#include "orvelcs/cli/failure.h"

namespace Orvelcs {
namespace {

constexpr double kPoleLatitude = 90;
constexpr double kAntimeridian = 180;

/// Throws unless the text is that many numbers with commas between them.
std::vector<double> numbersArgument(const std::string& option, const std::string& text, const std::string& form,
                                    std::size_t count)
{
    std::vector<double> numbers;
    std::string_view rest = text;
    for (bool isLast = false; !isLast;) {
        const std::size_t comma = rest.find(',');
        isLast = comma == std::string_view::npos;
        const std::optional<double> number = Embedded::parseReal(Embedded::trim(rest.substr(0, comma), " "));
        if (!number || !std::isfinite(*number))
            throw wrongUsage(option, fmt::format("expected {} in degrees, found {}", form, text));
        numbers.push_back(*number);
        rest.remove_prefix(isLast ? rest.size() : comma + 1);
    }
    if (numbers.size() != count)
        throw wrongUsage(option, fmt::format("expected {} in degrees, found {}", form, text));
    return numbers;
}

void checkLatitude(const std::string& option, double latitude, const std::string& form)
{
    if (std::abs(latitude) > kPoleLatitude)
        throw wrongUsage(option,
                         fmt::format("a latitude is from -90 to 90, found {}; the order is {}", latitude, form));
}

void checkLongitude(const std::string& option, double longitude, const std::string& form)
{
    if (std::abs(longitude) > kAntimeridian)
        throw wrongUsage(option,
                         fmt::format("a longitude is from -180 to 180, found {}; the order is {}", longitude, form));
}

} // namespace

Embedded::GeographicBounds pointArgument(const std::string& option, const std::string& text)
{
    const std::string form = "LAT,LON";
    const std::vector<double> numbers = numbersArgument(option, text, form, 2);
    const double latitude = numbers[0];
    const double longitude = numbers[1];
    checkLatitude(option, latitude, form);
    checkLongitude(option, longitude, form);
    return {.west = longitude, .south = latitude, .east = longitude, .north = latitude};
}

Embedded::GeographicBounds boundsArgument(const std::string& option, const std::string& text)
{
    const std::string form = "W,S,E,N";
    const std::vector<double> numbers = numbersArgument(option, text, form, 4);
    const Embedded::GeographicBounds bounds{
        .west = numbers[0], .south = numbers[1], .east = numbers[2], .north = numbers[3]};
    for (const double longitude : {bounds.west, bounds.east})
        checkLongitude(option, longitude, form);
    for (const double latitude : {bounds.south, bounds.north})
        checkLatitude(option, latitude, form);
    if (bounds.south > bounds.north)
        throw wrongUsage(option, fmt::format("the south {} is north of the north {}; the order is {}", bounds.south,
                                             bounds.north, form));
    return bounds;
}

} // namespace Orvelcs
