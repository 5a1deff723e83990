// forms: shows the forms that a drawing stores, or writes them directly.
#include <memory>

#include <fmt/format.h>

#include "embedded/base/text.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/display_text.h"
#include "orvelcs/cli/error_document.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/drawing/drawing_files.h"
#include "orvelcs/drawing/drawings.h"
#include "orvelcs/drawing/form_value.h"
#include "orvelcs/drawing/resbuf_json.h"
#include "orvelcs/drawing/stored_forms.h"

namespace Orvelcs {
namespace {

struct FormsOptions {
    std::string file;
    std::vector<std::string> puts;
    CLI::Option* fileArgument = nullptr;
};

Json definitionsAsJson(const std::vector<StoredDefinition>& definitions)
{
    Json array = Json::array();
    for (const StoredDefinition& definition : definitions)
        array.push_back({{"type", definition.type}, {"code", jsonText(definition.code)}});
    return array;
}

Json asJson(const std::string& file, int version, const StoredForms& forms)
{
    Json json = {{"file", file},
                 {"drawingVersion", version},
                 {"legacyProjection", nullptr},
                 {"definitionXrecord", nullptr},
                 {"geoData", nullptr},
                 {"transformationConfig", nullptr}};
    if (forms.legacyProjection)
        json["legacyProjection"] = {{"code", jsonText(forms.legacyProjection->code)}};
    if (const auto& record = forms.definitionXrecord)
        json["definitionXrecord"] = {{"layout", record->layout},
                                     {"chain", resbufsAsJson(record->chain.get())},
                                     {"definitions", definitionsAsJson(record->definitions)}};
    if (forms.geoData)
        json["geoData"] = {{"text", jsonText(forms.geoData->text)}, {"owner", jsonText(forms.geoData->owner)}};
    if (forms.transformationConfiguration)
        json["transformationConfig"] = {{"text", jsonText(forms.transformationConfiguration->text)}};
    return json;
}

Json failureAsJson(const Failure& failure, const Output& output)
{
    return {{"file", failure.subject()},
            {"drawingVersion", nullptr},
            {"legacyProjection", nullptr},
            {"definitionXrecord", nullptr},
            {"geoData", nullptr},
            {"transformationConfig", nullptr},
            {"result", failure.code() ? Json(failure.code()->number) : Json(nullptr)},
            {"error", errorAsJson(output.command(), failure)}};
}

std::string textOrNone(const std::optional<std::wstring>& text)
{
    return text ? fmt::format("\"{}\"", oneLine(*text)) : "no text";
}

void printDefinitionXrecord(const DefinitionXrecord& record, Output& output)
{
    output.line(fmt::format("  definition xrecord: layout {}", record.layout));
    for (const Json& buffer : resbufsAsJson(record.chain.get())) {
        const Json& value = buffer.contains("hex") ? buffer["hex"] : buffer["value"];
        const std::string text = value.is_string() ? oneLine(value.get<std::string>()) : value.dump();
        output.line(fmt::format("    {:>4}  {}", buffer["code"].get<int>(), text));
    }
    for (const StoredDefinition& definition : record.definitions)
        output.line(
            fmt::format("    holds {} {}", definition.type, oneLine(definition.code.value_or(L"without a code"))));
}

void print(const std::string& file, int version, const StoredForms& forms, Output& output)
{
    output.heading(fmt::format("{}, drawing version {}", oneLine(file), version));
    const auto& [legacy, record, geoData, configuration] = forms;
    output.line(fmt::format("  legacy projection: {}", legacy ? textOrNone(legacy->code) : "none"));
    if (record)
        printDefinitionXrecord(*record, output);
    else
        output.line("  definition xrecord: none");
    output.line(fmt::format("  GeoData: {}", geoData ? textOrNone(geoData->text) : "none"));
    if (geoData && geoData->owner)
        output.line(fmt::format("    owned by {}", oneLine(*geoData->owner)));
    output.line(
        fmt::format("  transformation configuration: {}", configuration ? textOrNone(configuration->text) : "none"));
}

void putForms(OpenDrawing& drawing, const FormsOptions& options, const std::vector<FormValue>& values, Output& output)
{
    for (const FormValue& value : values)
        putForm(drawing.database(), value);
    require(options.file, drawing.save(output));
}

// The module is not loaded, because it would convert the forms of an older drawing when that is saved.
// The file is written only when all forms were put. Otherwise the open drawing is discarded.
void showForms(const FormsOptions& options, const std::vector<FormValue>& values, Output& output)
{
    const auto access = values.empty() ? Embedded::DrawingAccess::reading : Embedded::DrawingAccess::changing;
    OpenDrawing drawing(options.file, access, output);
    require(options.file, drawing.load());
    if (!values.empty())
        putForms(drawing, options, values, output);
    if (!values.empty() && options.file == kStandardStream)
        return;
    const StoredForms forms = readStoredForms(drawing.database());
    require(options.file, drawing.loadingResult());
    if (const auto& record = forms.definitionXrecord; record && !record->readable)
        output.note(options.file,
                    fmt::format("definition xrecord of layout {}: not readable by the module", record->layout));
    if (output.json())
        output.document(asJson(options.file, drawing.version(), forms));
    else
        print(options.file, drawing.version(), forms, output);
}

/// The subject of what is reported is the drawing.
Failure failureOfDrawing(const std::string& file, const Failure& failure)
{
    return failure.subject() == file ? failure : Failure(file, failure.text(), ExitStatus::failed, failure.code());
}

ExitStatus fail(const Failure& failure, Output& output)
{
    if (output.json())
        output.document(failureAsJson(failure, output));
    output.error(failure.subject(), failure.what());
    return ExitStatus::failed;
}

// Behind "--put A=B" the parser reads the file as another value.
void findFile(FormsOptions& options)
{
    if (options.fileArgument->count() > 0)
        return;
    if (options.puts.empty() || options.puts.back().find('=') != std::string::npos)
        throw wrongUsage("FILE", "is required");
    options.file = options.puts.back();
    options.puts.pop_back();
}

ExitStatus runForms(FormsOptions& options, Output& output)
{
    findFile(options);
    std::vector<FormValue> values;
    for (const std::string& put : options.puts)
        values.push_back(parseFormValue(put));
    checkFileNames({options.file}, !values.empty(), output);
    try {
        showForms(options, values, output);
        return ExitStatus::done;
    } catch (const Failure& failure) {
        return fail(failureOfDrawing(options.file, failure), output);
    }
}

constexpr const char* kFormsDetails =
    "The forms are shown without the module: the legacy projection record, the definition xrecord with the "
    "definitions that can be unpacked from it, the GeoData text and the transformation configuration. A definition "
    "xrecord whose layout the module does not know, or whose last group is not closed, is noted as not readable by "
    "the module. An unpaired surrogate of a text is shown as U+FFFD.\n\n"
    "--put writes the forms in the given order, either all or none, and prints all forms of the drawing. FORM=VALUE "
    "is one of these:\n"
    "  legacy=CODE  The legacy projection record. Without CODE it is removed.\n"
    "  legacy-chain=JSON  The same from a chain, with or without the application name that begins it. Without JSON it "
    "is removed.\n"
    "  xrecord-chain=JSON  The definition xrecord. Without JSON it is removed; an empty array stores an empty one.\n"
    "  geodata=TEXT  The GeoData text. The object is made in model space when it is missing, unless the text is "
    "empty.\n"
    "  config=TEXT  The transformation configuration, which may be empty.\n\n"
    "A chain is a JSON array of objects with code, the group code, and value, a string or a number, or hex, the bytes "
    "of a binary chunk:\n\n"
    "  [{\"code\": 1071, \"value\": 1}, {\"code\": 310, \"hex\": \"0aff\"}]";

std::vector<Command> declareForms(CLI::App& program)
{
    auto options = std::make_shared<FormsOptions>();
    CLI::App* app = addCommand(
        program, {"forms",
                  "Show the forms that a drawing stores, or write them directly",
                  {"forms [OPTIONS] FILE", "forms [OPTIONS] FILE --put FORM=VALUE..."},
                  kFormsDetails,
                  {{"Show the forms of a drawing", "orvelcs forms plan.qedb"},
                   {"Write the legacy code of a drawing", "orvelcs forms plan.qedb --put legacy=EPSG:25832"},
                   {"Remove the legacy code and write a text", "orvelcs forms plan.qedb --put legacy= geodata=text"}}});
    options->fileArgument = addArgument(*app, "FILE", options->file, "the drawing; - is standard input");
    addArguments(*app, "--put FORM=VALUE...", options->puts, "write these forms");
    return {{app, [options](Output& output) { return runForms(*options, output); }}};
}

const CommandRegistration kFormsCommand({HelpGroup::drawings, 5}, declareForms);

} // namespace

} // namespace Orvelcs
