// codec: the run-length packing of stored definitions, from standard input to standard output.
#include <memory>
#include <string>

#include "orvelcs/cli/command.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/input.h"
#include "storage/run_length.h"

namespace Orvelcs {
namespace {

/// One direction of the codec: the two functions that measure and do it.
struct Direction {
    std::size_t (*size)(const unsigned char*, std::size_t);
    std::size_t (*run)(const unsigned char*, std::size_t, unsigned char*, std::size_t);
    const char* refusal;
};

ExitStatus runCodec(const Direction& direction, Output& output)
{
    if (output.json())
        throw wrongUsage("--json", "has no place here; the output is bytes");
    const std::string input = readWhole(kStandardStream);
    if (input.empty()) // for which the codec returns the size of a failure
        return ExitStatus::done;
    const auto* bytes = reinterpret_cast<const unsigned char*>(input.data());
    const std::size_t size = direction.size(bytes, input.size());
    std::string result(size, '\0');
    if (size == 0 || direction.run(bytes, input.size(), reinterpret_cast<unsigned char*>(result.data()), size) != size)
        throw Failure("standard input", direction.refusal);
    output.write(result);
    return ExitStatus::done;
}

constexpr const char* kCodecDetails = "The size is limited only by memory. Empty input gives empty output. Malformed "
                                      "input is refused, and nothing is written.";

Command declareDirection(CLI::App& codec, const std::string& name, const std::string& description,
                         const CommandExample& example, const Direction& direction)
{
    CLI::App* app =
        addCommand(codec, {name, description, {"codec " + name + " < INPUT > OUTPUT"}, kCodecDetails, {example}});
    return {app, [direction](Output& output) { return runCodec(direction, output); }};
}

std::vector<Command> declareCodec(CLI::App& program)
{
    CLI::App* codec = addCommand(program, {"codec",
                                           "Pack and unpack bytes as stored definitions are packed",
                                           {"codec pack < INPUT > OUTPUT", "codec unpack < INPUT > OUTPUT"},
                                           ""});
    codec->require_subcommand(1);
    return {declareDirection(*codec, "pack", "Pack standard input",
                             {"Pack a file", "orvelcs codec pack < block > packed"},
                             {Orvel::PackedSize, Orvel::PackRuns, "cannot be packed"}),
            declareDirection(*codec, "unpack", "Unpack standard input",
                             {"Pack and unpack a file", "orvelcs codec pack < block | orvelcs codec unpack > unpacked"},
                             {Orvel::UnpackedSize, Orvel::UnpackRuns, "is malformed: it ends inside a packet"})};
}

const CommandRegistration kCodecCommand({HelpGroup::catalog, 4}, declareCodec);

} // namespace

} // namespace Orvelcs
