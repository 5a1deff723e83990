#include "orvelcs/output/system_format.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "embedded/spatial_reference/catalog/catalog.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/suggestion.h"
#include "orvelcs/output/result_names.h"

namespace Orvelcs {
namespace {

using Format = Embedded::SystemTextFormat;

constexpr TextFormat kFormats[] = {{"wkt2", Format::wkt2, ".wkt"},
                                   {"wkt1", Format::wkt1, nullptr},
                                   {"esri", Format::esri, ".prj"},
                                   {"projjson", Format::projjson, ".json"},
                                   {"proj", Format::projString, nullptr}};

Format parseFormat(const std::string& name)
{
    std::vector<std::string> names;
    for (const TextFormat& known : kFormats) {
        if (name == known.name)
            return known.format;
        names.emplace_back(known.name);
    }
    throw wrongUsage("--format", fmt::format("expected one of {}, found {}{}", fmt::join(names, ", "), name,
                                             nearestClause(nearest(name, names))));
}

/// "; wkt2, projjson can" of the formats that can say the system; empty when none can.
std::string otherFormatsClause(const System& system, FormatNotation notation)
{
    std::vector<std::string> able;
    for (const TextFormat& format : kFormats) {
        const char* const word = notation == FormatNotation::name ? format.name : format.ending;
        if (word != nullptr && Embedded::writeSystemText(system, format.format))
            able.emplace_back(word);
    }
    return able.empty() ? "" : fmt::format("; {} can", fmt::join(able, ", "));
}

} // namespace

std::span<const TextFormat> textFormats()
{
    return kFormats;
}

void addFormatOption(CLI::App& command, FormatOption& option)
{
    option.option =
        addArgument(command, "--format FORMAT", option.name, "print only the definition, for other programs",
                    {.choices = {{"wkt2", "ISO 19162:2019"},
                                 {"wkt1", "as GDAL writes it"},
                                 {"esri", "WKT 1 as ESRI writes it"},
                                 "projjson",
                                 {"proj", "a PROJ string"}}});
}

void checkFormatOption(const FormatOption& option, bool wantsWkt)
{
    if (!option.isGiven())
        return;
    static_cast<void>(parseFormat(option.name)); // it throws
    if (wantsWkt)
        throw wrongUsage("--wkt", "has no place beside --format, which prints the definition alone");
}

std::string writeInFormat(const System& system, const FormatOption& option, const std::string& subject)
{
    auto text = Embedded::writeSystemText(system, parseFormat(option.name));
    if (text)
        return *std::move(text);
    throw formatFailure(system, text.error(), FormatNotation::name, subject);
}

Failure formatFailure(const System& system, const Embedded::Error& error, FormatNotation notation,
                      const std::string& subject)
{
    const auto status = static_cast<Zentara::Infrastructure::SpatialReference::Status>(error.status);
    std::string message = error.message;
    // Without the catalog PROJ does not know what ESRI calls a datum.
    if (const auto check = Embedded::checkCatalogFor(definitionText(system, &System::GetCode).value_or(L"")); !check)
        message += "; " + Embedded::unreadableCatalogMessage(check.error());
    return Failure(subject, message + otherFormatsClause(system, notation) + ": " + statusName(status),
                   ExitStatus::failed, resultCode(status));
}

void addFormatted(Json& json, const FormatOption& option, const std::optional<std::string>& definition)
{
    if (!option.isGiven())
        return;
    json["format"] = option.name;
    json["definition"] = jsonValue(definition);
}

} // namespace Orvelcs
