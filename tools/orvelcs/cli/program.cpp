#include "orvelcs/cli/program.h"

#include <exception>
#include <new>
#include <string_view>

#include "embedded/base/path.h"
#include "embedded/spatial_reference/catalog/catalog.h"
#include "orvelcs/cli/command_line.h"
#include "orvelcs/cli/display_text.h"
#include "orvelcs/cli/error_document.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/help_text.h"
#include "orvelcs/cli/process.h"

namespace Orvelcs {
namespace {

constexpr std::string_view kProjName = "PROJ "; // before the number of its version

struct CatalogCheck {
    std::string path;
    std::optional<std::string> fault;
};

Json asJson(const CatalogCheck& check)
{
    return {{"database", check.path.empty() ? Json(nullptr) : Json(check.path)}, {"fault", jsonValue(check.fault)}};
}

CatalogCheck checkCatalog()
{
    const auto check = Embedded::checkCatalog();
    return {Embedded::catalogPath(), check ? std::nullopt : std::optional(check.error().text())};
}

/// The folder of PROJ's database; nothing when it has none open.
std::optional<std::string> dataFolder()
{
    const std::string path = Embedded::catalogPath();
    if (path.empty())
        return std::nullopt;
    return Embedded::displayName(Embedded::pathFromUtf8(path).parent_path());
}

Json versionAsJson(const std::optional<CatalogCheck>& check)
{
    Json catalog = Json::object();
    for (const Embedded::AuthorityVersion& entry : Embedded::catalogVersions())
        catalog[entry.authority] = jsonValue(entry.version);
    Json json = {{"orvelcs", ORVELCS_VERSION},
                 {"proj", Embedded::projVersion().substr(kProjName.size())},
                 {"dataFolder", jsonValue(dataFolder())},
                 {"catalog", std::move(catalog)}};
    if (check)
        json["check"] = asJson(*check);
    return json;
}

void printVersion(const std::optional<CatalogCheck>& check, Output& output)
{
    if (output.json())
        return output.document(versionAsJson(check));
    output.line(std::string("orvelcs ") + ORVELCS_VERSION);
    output.line(Embedded::projVersion());
    output.line("data folder: " + oneLine(dataFolder().value_or("none")));
    for (const Embedded::AuthorityVersion& entry : Embedded::catalogVersions())
        output.line(oneLine(entry.authority + " " + entry.version.value_or("without a version")));
    if (check && !check->fault)
        output.line(oneLine(check->path) + ": no damage found");
}

ExitStatus reportVersion(bool checksCatalog, Output& output)
{
    std::optional<CatalogCheck> check;
    if (checksCatalog)
        check = checkCatalog();
    printVersion(check, output);
    if (!check || !check->fault)
        return ExitStatus::done;
    output.error("catalog", *check->fault);
    return ExitStatus::failed;
}

ExitStatus execute(const CommandLine& commandLine, const Invocation& invocation, Output& output)
{
    switch (invocation.kind) {
    case Invocation::Kind::command:
        applyUserOptions(commandLine.userOptions());
        applyWaitOption(commandLine.waitOption());
        return commandLine.run(output);
    case Invocation::Kind::help:
        output.write(helpText(*invocation.helpOf, Output::helpColumns()));
        return ExitStatus::done;
    case Invocation::Kind::version:
        return reportVersion(invocation.checksCatalog, output);
    case Invocation::Kind::wrongUsage:
        break;
    }
    throw *invocation.failure;
}

/// The document of a command that has printed one already says what failed.
ExitStatus report(const Failure& failure, Output& output)
{
    if (output.json() && !output.hasResult())
        output.document(errorDocument(output.command(), failure));
    output.error(failure.subject(), failure.what());
    return failure.status();
}

ExitStatus executeAndReport(const CommandLine& commandLine, const Invocation& invocation, Output& output)
{
    try {
        return execute(commandLine, invocation, output);
    } catch (const Failure& failure) {
        return report(failure, output);
    } catch (const std::bad_alloc&) {
        return report(Failure("memory", "not enough memory"), output);
    } catch (const std::exception& exception) {
        return report(Failure("unexpected failure", exception.what()), output);
    }
}

} // namespace

ExitStatus runProgram(int argumentCount, const char* const* arguments)
{
    prepareForUnhandledFailures();
    prepareStandardStreams();
    CommandLine commandLine;
    const Invocation invocation = commandLine.parse(argumentCount, arguments);
    Output output(invocation.command, commandLine.outputOptions());
    return output.finish(executeAndReport(commandLine, invocation, output));
}

} // namespace Orvelcs
