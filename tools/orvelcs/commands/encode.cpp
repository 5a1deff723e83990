// encode: a system of the catalog as the block of bytes that belongs to a drawing version.
#include <memory>

#include <fmt/format.h>

#include "coordsys/orvel_coordinate_system.h"
#include "embedded/base/path.h"
#include "embedded/base/staged_file.h"
#include "embedded/base/text.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/process.h"
#include "orvelcs/cli/standard_streams.h"
#include "orvelcs/drawing/catalog_system.h"
#include "orvelcs/drawing/drawings.h"
#include "orvelcs/output/result_names.h"
#include "storage/host_holders.h"

namespace Orvelcs {

namespace CoordinateSystem = Zentara::Gis::Orvel::CoordinateSystem;

namespace {

struct EncodeOptions {
    std::string code;
    std::string version;
    std::string target = kStandardStream;

    bool isPrinted() const { return target == kStandardStream; }
};

using HostBytes = Orvel::Holder<Orvel::HostBufferPolicy<unsigned char>>;

std::string blockOf(const std::wstring& code, QeDb::QeDbDwgVersion version)
{
    const CatalogSystemDefinition system = systemFromCatalog(code);
    HostBytes bytes;
    int length = 0;
    const Qeapp::ErrorStatus result =
        CoordinateSystem::SerializeCoordinateSystem(system.get(), bytes.put(), length, version);
    if (result != Qeapp::eOk)
        throw Failure(Embedded::utf8FromWide(code), fmt::format("{}: has no form for drawing version {}",
                                                                resultName(result), static_cast<int>(version)));
    return {reinterpret_cast<const char*>(bytes.get()), static_cast<std::size_t>(length)};
}

void putBlock(const EncodeOptions& options, const std::string& block, Output& output)
{
    if (options.isPrinted())
        return output.write(block);
    const std::filesystem::path target = Embedded::pathFromUtf8(options.target);
    if (const auto written = Embedded::replaceFile(target, block); !written)
        throw DrawingFailure(options.target, {Qeapp::eFileWriteFailed, written.error().message, written.error().place});
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
    const int version = parseInteger("--drawing-version", options.version, QeDb::kOldestDwg, QeDb::kCurrentDwg);
    const std::wstring code = wideArgument("CODE", options.code);
    checkTarget(options, output);
    try {
        const std::string block = blockOf(code, static_cast<QeDb::QeDbDwgVersion>(version));
        putBlock(options, block, output);
        if (output.json())
            output.document(encodedAsJson(options, block.size()));
        return ExitStatus::done;
    } catch (const Failure& failure) {
        if (output.json()) {
            Json json = encodedAsJson(options, std::nullopt);
            json["error"] = fmt::format("{}: {}", failure.subject(), failure.what());
            output.document(json);
        }
        throw;
    }
}

} // namespace

Command declareEncode(CLI::App& program)
{
    auto options = std::make_shared<EncodeOptions>();
    CLI::App* app = addCommand(
        program,
        {"encode",
         "Write a system of the catalog as the bytes that belong to a drawing version",
         {"encode [OPTIONS] CODE --drawing-version N > FILE", "encode [OPTIONS] CODE --drawing-version N -o FILE"},
         "Below version 30 the bytes are the packed definition, from 30 on its text in UTF-16 little-endian\n"
         "with a NUL. Exit status 3 for a code that the catalog does not have."});
    addArgument(*app, "CODE", options->code, "a code such as EPSG:25832")->required();
    addArgument(*app, "--drawing-version N", options->version, "the drawing version, 21 to 33")->required();
    addArgument(*app, "-o,--output FILE", options->target, "write there, over what exists; - is standard output");
    return {app, [options](Output& output) { return runEncode(*options, output); }};
}

} // namespace Orvelcs
