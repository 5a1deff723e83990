#include "orvelcs/output/system_format.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "orvelcs/cli/command.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/suggestion.h"
#include "orvelcs/output/result_names.h"

namespace Orvelcs {
namespace {

using Format = Embedded::SystemTextFormat;

struct NamedFormat {
    const char* name;
    Format format;
};
constexpr NamedFormat kFormats[] = {{"wkt2", Format::wkt2},
                                    {"wkt1", Format::wkt1},
                                    {"esri", Format::esri},
                                    {"projjson", Format::projjson},
                                    {"proj", Format::projString}};

Format parseFormat(const std::string& name)
{
    std::vector<std::string> names;
    for (const NamedFormat& known : kFormats) {
        if (name == known.name)
            return known.format;
        names.emplace_back(known.name);
    }
    throw wrongUsage("--format", fmt::format("expected one of {}, found {}{}", fmt::join(names, ", "), name,
                                             nearestClause(nearest(name, names))));
}

} // namespace

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
    const auto status = static_cast<Zentara::Infrastructure::SpatialReference::Status>(text.error().status);
    throw Failure(subject, text.error().message + ": " + statusName(status), ExitStatus::failed, resultCode(status));
}

void addFormatted(Json& json, const FormatOption& option, const std::optional<std::string>& definition)
{
    if (!option.isGiven())
        return;
    json["format"] = option.name;
    json["definition"] = jsonValue(definition);
}

} // namespace Orvelcs
