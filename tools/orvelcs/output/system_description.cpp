#include "orvelcs/output/system_description.h"

#include <fmt/format.h>

#include "embedded/base/text.h"
#include "orvelcs/cli/display_text.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/output/result_names.h"
#include "orvelcs/output/table.h"

namespace Orvelcs {

namespace Library = Zentara::Infrastructure::SpatialReference;

std::string definitionType(const Library::DefinitionBase& definition)
{
    if (dynamic_cast<const Library::CoordinateReferenceSystemDefinition*>(&definition) != nullptr)
        return "CoordinateReferenceSystemDefinition";
    if (dynamic_cast<const Library::DatumDefinition*>(&definition) != nullptr)
        return "DatumDefinition";
    if (dynamic_cast<const Library::EllipsoidDefinition*>(&definition) != nullptr)
        return "EllipsoidDefinition";
    return "DefinitionBase";
}

SystemDescription describe(const System& system)
{
    SystemDescription description;
    description.code = definitionText(system, &System::GetCode);
    description.name = definitionText(system, &System::GetName);
    if (int kind = 0; system.GetKind(kind) == Library::statusOk)
        description.kind = kind;
    description.datum = definitionText(system, &System::GetDatumCode);
    description.ellipsoid = definitionText(system, &System::GetEllipsoidCode);
    return description;
}

std::wstring writeWkt(const System& system)
{
    constexpr std::size_t kCharacters = std::size_t{1} << 20;
    std::wstring buffer(kCharacters, L'\0');
    const Library::Status status =
        Library::FormatConverter::DefinitionToWkt_s(&system, Library::wktFlavorDefault, buffer.data(), buffer.size());
    if (status != Library::statusOk && status != Library::statusInexact) {
        const std::optional<std::wstring> code = definitionText(system, &System::GetCode);
        throw Failure(code ? Embedded::utf8FromWide(*code) : "the system",
                      "cannot be written as WKT: " + statusName(status), ExitStatus::failed, resultCode(status));
    }
    buffer.resize(buffer.find(L'\0'));
    return buffer;
}

std::optional<std::wstring> replacementsText(const std::vector<std::wstring>& codes)
{
    std::optional<std::wstring> text;
    for (const std::wstring& code : codes)
        text = text ? *text + L", " + code : code;
    return text;
}

Json firstReplacement(const std::vector<std::wstring>& codes)
{
    return codes.empty() ? Json(nullptr) : Json(Embedded::utf8FromWide(codes.front()));
}

std::string kindName(int kind)
{
    switch (kind) {
    case Library::kindNotEarthReferenced:
        return "not referenced to the Earth";
    case Library::kindGeographic:
        return "geographic";
    case Library::kindProjected:
        return "projected";
    case Library::kindGeocentric:
        return "geocentric";
    default:
        return "unknown";
    }
}

void LabelledLines::add(std::string_view label, const std::optional<std::wstring>& value)
{
    if (value)
        add(label, std::string_view(oneLine(*value)));
}

void LabelledLines::add(std::string_view label, std::string_view value)
{
    lines_.push_back({std::string(label), std::string(value)});
}

void LabelledLines::add(const SystemDescription& description)
{
    add("code", description.code);
    add("name", description.name);
    if (description.kind)
        add("kind", fmt::format("{} ({})", *description.kind, kindName(*description.kind)));
    add("datum", description.datum);
    add("ellipsoid", description.ellipsoid);
}

void LabelledLines::print(Output& output) const
{
    for (const std::string& line : alignColumns(lines_, std::nullopt))
        output.line("  " + line);
}

} // namespace Orvelcs
