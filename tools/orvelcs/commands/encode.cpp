// encode: a system of the catalog as the block of bytes that belongs to a drawing version.
#include <memory>

#include <fmt/format.h>

#include "coordsys/orvel_coordinate_system.h"
#include "embedded/base/text.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/error_document.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/cli/output_file.h"
#include "orvelcs/cli/process.h"
#include "orvelcs/drawing/drawings.h"
#include "orvelcs/drawing/holders.h"
#include "orvelcs/drawing/swapped_arguments.h"
#include "orvelcs/drawing/system_argument.h"
#include "orvelcs/output/result_names.h"

namespace Orvelcs {

namespace CoordinateSystem = Zentara::Gis::Orvel::CoordinateSystem;

namespace {

struct EncodeOptions {
    std::string system;
    std::string code;
    CLI::Option* codeOption = nullptr;
    std::string version;
    std::string target = kStandardStream;
    bool force = false;

    bool isPrinted() const { return target == kStandardStream; }
};

std::string encodeSystem(const EncodeOptions& options, QeDb::QeDbDwgVersion version, Output& output)
{
    const NamedSystem system = readSystemToStore("SYSTEM", options.system, *options.codeOption, options.code, output);
    HostBytes bytes;
    int length = 0;
    const Qeapp::ErrorStatus result =
        CoordinateSystem::SerializeCoordinateSystem(system.definition.get(), bytes.put(), length, version);
    if (result != Qeapp::eOk)
        throw Failure(
            options.system,
            fmt::format("{}: has no form for drawing version {}", resultName(result), static_cast<int>(version)),
            ExitStatus::failed, resultCode(result));
    return {reinterpret_cast<const char*>(bytes.get()), static_cast<std::size_t>(length)};
}

void writeBlock(const EncodeOptions& options, const std::string& block, Output& output)
{
    if (options.isPrinted())
        return output.write(block);
    writeOutputFile(options.target, block, options.force ? OverwritingFiles::allowed : OverwritingFiles::refused);
    output.confirm(options.target,
                   fmt::format("{} for drawing version {}, {} bytes", options.system, options.version, block.size()));
}

Json encodedAsJson(const EncodeOptions& options, const std::optional<std::size_t>& bytes)
{
    return {{"file", options.target}, {"bytes", jsonValue(bytes)}};
}

void checkTarget(const EncodeOptions& options, const Output& output)
{
    if (options.isPrinted() && output.json())
        throw wrongUsage("--json", "has no place here; the output is bytes, unless they go into a file");
    if (options.isPrinted() && isTerminal(stdout))
        throw wrongUsage("standard output", "is a terminal, and the output is bytes; -o writes them into a file");
}

/// Throws Failure for wrong usage when the code and the file are swapped.
void checkForSwap(const EncodeOptions& options)
{
    if (options.isPrinted() || namesFile(options.system) || !findSwappedCode(options.system, {options.target}) ||
        !catalogLacks(wideArgument("SYSTEM", options.system)))
        return;
    throw wrongUsage(options.system, fmt::format("stands where the code {0} belongs; did you mean orvelcs encode {0} "
                                                 "--drawing-version {1} -o {2}",
                                                 options.target, options.version, quotedArgument(options.system)));
}

ExitStatus runEncode(const EncodeOptions& options, Output& output)
{
    const int version = integerArgument("--drawing-version", options.version, QeDb::kOldestDwg, QeDb::kCurrentDwg);
    if (!namesFile(options.system))
        static_cast<void>(wideArgument("SYSTEM", options.system)); // it throws
    checkTarget(options, output);
    checkForSwap(options);
    return withFailureDocument(encodedAsJson(options, std::nullopt), output, [&] {
        const std::string block = encodeSystem(options, static_cast<QeDb::QeDbDwgVersion>(version), output);
        writeBlock(options, block, output);
        if (output.json())
            output.document(encodedAsJson(options, block.size()));
        return ExitStatus::done;
    });
}

std::vector<Command> declareEncode(CLI::App& program)
{
    auto options = std::make_shared<EncodeOptions>();
    CLI::App* app = addCommand(
        program,
        {"encode",
         "Write a system as the bytes that belong to a drawing version",
         {"encode [OPTIONS] SYSTEM --drawing-version N > FILE", "encode [OPTIONS] SYSTEM --drawing-version N -o FILE"},
         std::string(kSystemHelp) + " The system of a text needs --code.\n\n"
                                    "Below version 30 the bytes are the packed definition, from 30 on its text in "
                                    "UTF-16 little-endian with a NUL. "
                                    "They go to standard output, which must not be a terminal, or into a file, "
                                    "completely or not at all. A file "
                                    "that exists is refused without --force. In JSON, for which they must go into a "
                                    "file, bytes is their number.",
         {{"Write a definition and list it again", "orvelcs encode EPSG:25832 --drawing-version 29 | orvelcs decode"},
          {"Write a definition into a file", "orvelcs encode EPSG:25832 --drawing-version 33 -o block.bin"}},
         {{ExitStatus::nothingFound, "the catalog does not have the code"}}});
    addArgument(*app, "SYSTEM", options->system, "the system")->required();
    options->codeOption = addArgument(*app, "--code CODE", options->code,
                                      "the code of the user-defined system of a text, which the catalog does not have");
    addArgument(*app, "--drawing-version N", options->version, "the drawing version, 21 to 33")->required();
    addArgument(*app, "-o,--output FILE", options->target, "write the bytes to FILE; - is standard output");
    app->add_flag("--force", options->force, "overwrite FILE");
    return {{app, [options](Output& output) { return runEncode(*options, output); }}};
}

const CommandRegistration kEncodeCommand({HelpGroup::catalog, 2}, declareEncode);

} // namespace

} // namespace Orvelcs
