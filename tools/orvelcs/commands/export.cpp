// export: a system as a file that other programs read.
#include <filesystem>
#include <memory>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "embedded/base/case_folding.h"
#include "embedded/base/parse_number.h"
#include "embedded/base/path.h"
#include "embedded/base/text.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/display_text.h"
#include "orvelcs/cli/error_document.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/cli/output_file.h"
#include "orvelcs/cli/suggestion.h"
#include "orvelcs/drawing/system_argument.h"
#include "orvelcs/output/geopackage.h"
#include "orvelcs/output/system_format.h"

namespace Orvelcs {

namespace {

constexpr const char* kGeoPackageName = "gpkg";
constexpr const char* kGeoPackageEnding = ".gpkg";
constexpr const char* kOrganizationThatProgramsKnow = "EPSG"; // and whose codes they look up

struct ExportOptions {
    std::string file;
    std::string target;
    FormatOption format;
    bool force = false;

    bool isPrinted() const { return target == kStandardStream; }
};

/// What is written.
struct ExportFormat {
    std::string name;
    std::optional<Embedded::SystemTextFormat> text; // none for a GeoPackage
};

/// The format that a name or an ending of files stands for. Throws Failure for wrong usage.
ExportFormat findFormat(const std::string& word, FormatNotation notation, const std::string& subject)
{
    const bool isName = notation == FormatNotation::name;
    std::vector<std::string> words;
    for (const TextFormat& format : textFormats()) {
        if (format.ending == nullptr)
            continue;
        words.emplace_back(isName ? format.name : format.ending);
        if (word == words.back())
            return {format.name, format.format};
    }
    if (!isName && word == kGeoPackageEnding)
        return {kGeoPackageName, std::nullopt};
    if (!isName)
        words.emplace_back(kGeoPackageEnding);
    throw wrongUsage(subject, fmt::format("expected {} {}, found {}{}", isName ? "one of" : "a name that ends in",
                                          fmt::join(words, ", "), word.empty() ? "none" : oneLine(word),
                                          nearestClause(nearest(word, words))));
}

ExportFormat chooseFormat(const ExportOptions& options, const Output& output)
{
    if (!options.isPrinted()) {
        if (options.format.isGiven())
            throw wrongUsage("--format", "goes with -o - only; the ending of the file's name chooses the format");
        const std::string ending = Embedded::displayName(Embedded::pathFromUtf8(options.target).extension());
        return findFormat(Embedded::toLowerAscii(ending), FormatNotation::ending, options.target);
    }
    if (output.json())
        throw wrongUsage("--json", "has no place beside -o -, which prints the definition alone");
    return findFormat(options.format.isGiven() ? options.format.name : "wkt2", FormatNotation::name, "--format");
}

/// The number that the code's organization gives the system. Nothing for codes that are no numbers, and where the
/// catalog has another system under the code, or none: programs look up the code and pass over the definition.
std::optional<int> numberInCatalog(const NamedSystem& system)
{
    const std::string code = Embedded::utf8FromWide(system.code);
    const auto number = Embedded::parseInteger<int>(code.substr(code.find(':') + 1));
    if (!number || !catalogAgrees(system.code, *system.definition).value_or(false))
        return std::nullopt;
    return *number;
}

/// How a GeoPackage names the system, without its definition.
GeoPackageSystem nameForGeoPackage(const NamedSystem& system)
{
    GeoPackageSystem named;
    named.id = kGeoPackageOwnSystem;
    named.codeOfOrganization = kGeoPackageOwnSystem;
    named.name = Embedded::utf8FromWide(definitionText(*system.definition, &System::GetName).value_or(L"unnamed"));
    if (const std::optional<int> number = numberInCatalog(system)) {
        named.organization = Embedded::utf8FromWide(system.code.substr(0, system.code.find(L':')));
        named.codeOfOrganization = *number;
        if (named.organization == kOrganizationThatProgramsKnow)
            named.id = *number;
    }
    return named;
}

/// WKT 2 needs an extension of the standard, so it is left out where the code says all. WKT 1 does not: it leaves out
/// the order of axes of a projected system's base.
std::string exportGeoPackage(const NamedSystem& system, const std::string& subject)
{
    GeoPackageSystem described = nameForGeoPackage(system);
    auto wkt1 = Embedded::writeSystemText(*system.definition, Embedded::SystemTextFormat::wkt1);
    auto wkt2 = Embedded::writeSystemText(*system.definition, Embedded::SystemTextFormat::wkt2);
    if (!wkt1 && !wkt2)
        throw formatFailure(*system.definition, wkt2.error(), FormatNotation::ending, subject);
    described.wkt1 = std::move(wkt1).value_or("");
    if (!wkt1 || described.organization != kOrganizationThatProgramsKnow)
        described.wkt2 = std::move(wkt2).value_or("");
    return writeGeoPackage(described, subject);
}

std::string exportSystem(const NamedSystem& system, const ExportFormat& format, const ExportOptions& options)
{
    if (!format.text)
        return exportGeoPackage(system, options.file);
    auto text = Embedded::writeSystemText(*system.definition, *format.text);
    if (!text)
        throw formatFailure(*system.definition, text.error(),
                            options.isPrinted() ? FormatNotation::name : FormatNotation::ending, options.file);
    return *text + "\n";
}

/// Throws Failure for wrong usage when the drawing itself would be replaced.
void checkIsNotSource(const NamedSystem& system, const ExportOptions& options)
{
    const std::string source = namesSystemOnly(options.file) ? options.file.substr(1) : options.file;
    std::error_code error;
    if (system.source == SystemSource::drawing &&
        std::filesystem::equivalent(Embedded::pathFromUtf8(source), Embedded::pathFromUtf8(options.target), error))
        throw wrongUsage(options.target, "is the drawing itself; -o needs the name of another file");
}

Json exportedAsJson(const ExportOptions& options, const ExportFormat& format, const SystemDescription& system)
{
    return {{"file", options.file},
            {"output", options.target},
            {"format", format.name},
            {"code", jsonText(system.code)},
            {"name", jsonText(system.name)}};
}

ExitStatus runExport(const ExportOptions& options, Output& output)
{
    const ExportFormat format = chooseFormat(options, output);
    return withFailureDocument(exportedAsJson(options, format, {}), output, [&] {
        const NamedSystem system = readDrawingOrSystem("FILE", options.file, output);
        checkIsNotSource(system, options);
        const std::string bytes = exportSystem(system, format, options);
        if (options.isPrinted()) {
            output.write(bytes);
            return ExitStatus::done;
        }
        writeOutputFile(options.target, bytes, options.force ? OverwritingFiles::allowed : OverwritingFiles::refused);
        const SystemDescription description = describe(system);
        if (output.json())
            output.document(exportedAsJson(options, format, description));
        output.confirm(options.target, oneLine(description.name.value_or(L"unnamed")) + ", as " + format.name);
        return ExitStatus::done;
    });
}

std::vector<Command> declareExport(CLI::App& program)
{
    auto options = std::make_shared<ExportOptions>();
    CLI::App* app = addCommand(
        program,
        {"export",
         "Write the coordinate reference system of a drawing as a file for other programs",
         {"export [OPTIONS] FILE -o OUT.prj|.wkt|.json|.gpkg", "export [OPTIONS] FILE -o - [--format FORMAT]"},
         "FILE may also be a code of the catalog, or @FILE: a text with WKT, PROJJSON or a PROJ string.\n\n"
         "The ending of OUT chooses the format: .prj is ESRI WKT, the sidecar of shapefiles and images;\n"
         ".wkt is WKT 2 of 2019; .json is PROJJSON; .gpkg is a GeoPackage with the empty layer \"drawing\"\n"
         "in that system (as WKT 1, and as WKT 2 where an EPSG code and WKT 1 do not say all).\n\n"
         "What a format cannot say is refused, and no file is written. In .prj and in the features of\n"
         ".gpkg an easting or a longitude always comes first.",
         {{"Write the sidecar of a shapefile", "orvelcs export plan.qedb -o plan.prj"},
          {"Make a GeoPackage with an empty layer in the drawing's system", "orvelcs export plan.qedb -o plan.gpkg"},
          {"Export what has no system", "orvelcs export other.qedb -o other.wkt", ExitStatus::nothingFound}},
         {{ExitStatus::nothingFound, "the drawing has no coordinate reference system"}}});
    addArgument(*app, "FILE", options->file, "the drawing; - is standard input")->required();
    addArgument(*app, "-o,--output OUT", options->target,
                "write to OUT, which must not exist; - prints the definition as text")
        ->required();
    options->format.option = addArgument(*app, "--format FORMAT", options->format.name, "the format for -o -",
                                         {.choices = {"wkt2", "esri", "projjson"}, .defaultValue = "wkt2"});
    app->add_flag("--force", options->force, "overwrite OUT, completely or not at all");
    return {{app, [options](Output& output) { return runExport(*options, output); }}};
}

const CommandRegistration kExportCommand({HelpGroup::drawings, 9}, declareExport);

} // namespace

} // namespace Orvelcs
