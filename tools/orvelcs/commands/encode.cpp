// encode: a system of the catalog as the block of bytes that belongs to a drawing version.
#include <memory>

#include <fmt/format.h>

#include "coordsys/orvel_coordinate_system.h"
#include "embedded/base/path.h"
#include "embedded/base/staged_file.h"
#include "embedded/base/text.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/failure_document.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/cli/process.h"
#include "orvelcs/drawing/catalog_lookup.h"
#include "orvelcs/drawing/drawings.h"
#include "orvelcs/drawing/holders.h"
#include "orvelcs/output/result_names.h"

namespace Orvelcs {

namespace CoordinateSystem = Zentara::Gis::Orvel::CoordinateSystem;

namespace {

struct EncodeOptions {
    std::string code;
    std::string version;
    std::string target = kStandardStream;

    bool isPrinted() const { return target == kStandardStream; }
};

std::string encodeSystem(const std::wstring& code, QeDb::QeDbDwgVersion version)
{
    const CatalogSystemDefinition system = systemFromCatalog(code);
    HostBytes bytes;
    int length = 0;
    const Qeapp::ErrorStatus result =
        CoordinateSystem::SerializeCoordinateSystem(system.get(), bytes.put(), length, version);
    if (result != Qeapp::eOk)
        throw Failure(
            Embedded::utf8FromWide(code),
            fmt::format("{}: has no form for drawing version {}", resultName(result), static_cast<int>(version)),
            ExitStatus::failed, resultCode(result));
    return {reinterpret_cast<const char*>(bytes.get()), static_cast<std::size_t>(length)};
}

void writeBlock(const EncodeOptions& options, const std::string& block, Output& output)
{
    if (options.isPrinted())
        return output.write(block);
    const std::filesystem::path target = Embedded::pathFromUtf8(options.target);
    if (const auto written = Embedded::replaceFile(target, block); !written)
        throw Failure(options.target,
                      fmt::format("{}: {}", resultName(Qeapp::eFileWriteFailed), written.error().message),
                      ExitStatus::failed, resultCode(Qeapp::eFileWriteFailed));
    output.confirm(options.target,
                   fmt::format("{} for drawing version {}, {} bytes", options.code, options.version, block.size()));
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

ExitStatus runEncode(const EncodeOptions& options, Output& output)
{
    const int version = integerArgument("--drawing-version", options.version, QeDb::kOldestDwg, QeDb::kCurrentDwg);
    const std::wstring code = wideArgument("CODE", options.code);
    checkTarget(options, output);
    return withFailureDocument(encodedAsJson(options, std::nullopt), output, [&] {
        const std::string block = encodeSystem(code, static_cast<QeDb::QeDbDwgVersion>(version));
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
         "Write a system of the catalog as the bytes that belong to a drawing version",
         {"encode [OPTIONS] CODE --drawing-version N > FILE", "encode [OPTIONS] CODE --drawing-version N -o FILE"},
         "Below version 30 the bytes are the packed definition, from 30 on its text in UTF-16 little-endian\n"
         "with a NUL. Exit status 3 if the catalog does not have the code."});
    addArgument(*app, "CODE", options->code, "a code such as EPSG:25832")->required();
    addArgument(*app, "--drawing-version N", options->version, "the drawing version, 21 to 33")->required();
    addArgument(*app, "-o,--output FILE", options->target,
                "write the bytes to FILE, which is overwritten; - is standard output");
    return {{app, [options](Output& output) { return runEncode(*options, output); }}};
}

const CommandRegistration kEncodeCommand({HelpGroup::catalog, 2}, declareEncode);

} // namespace

} // namespace Orvelcs
