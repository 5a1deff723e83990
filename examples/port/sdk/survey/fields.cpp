#include "fields.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace Survey {
namespace {

constexpr std::array kindNames{"local", "geographic", "projected"};

bool readDecimal(const std::string& text, double& number)
{
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end;
}

std::optional<Definition> systemFrom(const std::vector<std::string>& fields)
{
    const auto kind = std::find(kindNames.begin(), kindNames.end(), fields[3]);
    if (kind == kindNames.end())
        return std::nullopt;
    System system;
    system.code = fields[1];
    system.name = fields[2];
    system.kind = static_cast<SystemKind>(kind - kindNames.begin());
    system.datumCode = fields[4];
    system.ellipsoidCode = fields[5];
    system.projection = fields[6];
    return system;
}

std::optional<Definition> ellipsoidFrom(const std::vector<std::string>& fields)
{
    Ellipsoid ellipsoid{fields[1], fields[2], 0, 0};
    if (!readDecimal(fields[3], ellipsoid.semiMajorAxis) || !readDecimal(fields[4], ellipsoid.inverseFlattening))
        return std::nullopt;
    return ellipsoid;
}

} // namespace

std::string toDecimal(double number)
{
    std::array<char, 32> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    return {digits.data(), result.ptr};
}

std::vector<std::string> fieldsFor(const Definition& definition)
{
    if (const auto* ellipsoid = std::get_if<Ellipsoid>(&definition))
        return {"ellipsoid", ellipsoid->code, ellipsoid->name, toDecimal(ellipsoid->semiMajorAxis),
                toDecimal(ellipsoid->inverseFlattening)};
    if (const auto* datum = std::get_if<Datum>(&definition))
        return {"datum", datum->code, datum->name, datum->ellipsoidCode};
    const auto& system = std::get<System>(definition);
    return {
        "system",         system.code,          system.name,      kindNames.at(static_cast<std::size_t>(system.kind)),
        system.datumCode, system.ellipsoidCode, system.projection};
}

std::optional<Definition> definitionFrom(const std::vector<std::string>& fields)
{
    if (fields.size() == 7 && fields[0] == "system")
        return systemFrom(fields);
    if (fields.size() == 4 && fields[0] == "datum")
        return Datum{fields[1], fields[2], fields[3], {}};
    if (fields.size() == 5 && fields[0] == "ellipsoid")
        return ellipsoidFrom(fields);
    return std::nullopt;
}

} // namespace Survey
