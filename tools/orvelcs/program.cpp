#include "orvelcs/program.h"

#include <exception>
#include <new>

#include "embedded/spatial_reference/catalog.h"
#include "orvelcs/command_line.h"
#include "orvelcs/failure.h"
#include "orvelcs/process.h"

namespace Orvelcs {
namespace {

void printVersion(Output& output)
{
    if (output.json())
        output.document(
            {{"version", ORVELCS_VERSION}, {"proj", Embedded::projVersion()}, {"catalog", Embedded::catalogVersion()}});
    else
        output.write(std::string("orvelcs ") + ORVELCS_VERSION + "\n" + Embedded::projVersion() + "\n" +
                     Embedded::catalogVersion() + "\n");
}

ExitStatus carryOut(const CommandLine& commandLine, const Invocation& invocation, Output& output)
{
    switch (invocation.kind) {
    case Invocation::Kind::command:
        applyUserOptions(commandLine.userOptions());
        return commandLine.run(output);
    case Invocation::Kind::help:
        output.write(invocation.help);
        return ExitStatus::done;
    case Invocation::Kind::version:
        printVersion(output);
        return ExitStatus::done;
    case Invocation::Kind::wrongUsage:
        break;
    }
    throw wrongUsage(invocation.subject, invocation.message);
}

ExitStatus attempt(const CommandLine& commandLine, const Invocation& invocation, Output& output)
{
    try {
        return carryOut(commandLine, invocation, output);
    } catch (const Failure& failure) {
        output.error(failure.subject(), failure.what());
        return failure.status();
    } catch (const std::bad_alloc&) {
        output.error("memory", "not enough memory");
    } catch (const std::exception& exception) {
        output.error("unexpected failure", exception.what());
    }
    return ExitStatus::failed;
}

} // namespace

ExitStatus runProgram(int argumentCount, const char* const* arguments)
{
    prepareForUnhandledFailures();
    prepareStandardStreams();
    CommandLine commandLine;
    const Invocation invocation = commandLine.parse(argumentCount, arguments);
    Output output(invocation.command, commandLine.outputOptions());
    return output.finish(attempt(commandLine, invocation, output));
}

} // namespace Orvelcs
