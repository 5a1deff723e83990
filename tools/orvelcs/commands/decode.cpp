// decode: the definitions in a block of bytes, of either form.
#include <memory>

#include <fmt/format.h>

#include "coordsys/orvel_coordinate_system.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/display_text.h"
#include "orvelcs/cli/error_document.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/drawing/holders.h"
#include "orvelcs/output/result_names.h"
#include "orvelcs/output/system_description.h"
#include "orvelcs/output/table.h"

namespace Orvelcs {

namespace CoordinateSystem = Zentara::Gis::Orvel::CoordinateSystem;
namespace Library = Zentara::Infrastructure::SpatialReference;

namespace {

struct DecodeOptions {
    std::string file = kStandardStream;
};

struct DecodedDefinition {
    std::string type;
    std::optional<std::wstring> code;
    std::optional<std::wstring> name;
};

std::vector<DecodedDefinition> definitionsIn(const Library::DefinitionBaseArray& array)
{
    std::vector<DecodedDefinition> definitions;
    for (int index = 0; index < array.GetCount(); ++index) {
        const Library::DefinitionBase& definition = *array.GetItem(index);
        definitions.push_back({definitionType(definition),
                               definitionText(definition, &Library::DefinitionBase::GetCode),
                               definitionText(definition, &Library::DefinitionBase::GetName)});
    }
    return definitions;
}

bool holdsNulUnit(const std::string& block)
{
    for (std::size_t index = 0; index + 1 < block.size(); index += 2)
        if (block[index] == '\0' && block[index + 1] == '\0')
            return true;
    return false;
}

// The module reads a text up to its first NUL unit, wherever that is. A block without one gets one, behind a unit that
// makes every text invalid, because a text without its NUL is incomplete.
void endText(std::string& block)
{
    block.append(block.size() % 2, '\x01');          // the other half of a unit, which must not become a NUL
    block.append(std::string_view("\x01\0\0\0", 4)); // U+0001, and the NUL
}

// The length is that of packed bytes; the module reads a text up to its NUL in any case. A block that is too long for
// packed bytes gets a length of 1, so that the module does not unpack it to 64 times its size.
int lengthFor(const std::string& block)
{
    constexpr std::size_t kLongestForm = 16 + 1023;          // class identifier and stream, unpacked
    constexpr std::size_t kLongestPacked = 2 * kLongestForm; // a packet of two bytes for each
    constexpr int kNothingPacked = 1;                        // a packet's header and no packet
    return block.size() <= kLongestPacked ? static_cast<int>(block.size()) : kNothingPacked;
}

std::vector<DecodedDefinition> decodeBlock(std::string block, const std::string& subject)
{
    if (block.empty())
        throw Failure(subject, "is empty");
    const int length = lengthFor(block);
    const bool hasEnd = holdsNulUnit(block);
    if (!hasEnd)
        endText(block);
    LibraryObject<Library::DefinitionBaseArray> array;
    const Qeapp::ErrorStatus result = CoordinateSystem::DeserializeCoordinateSystem(
        array.put(), reinterpret_cast<const unsigned char*>(block.data()), length);
    if (result != Qeapp::eOk)
        throw Failure(subject,
                      fmt::format("{}: holds no definition, neither packed nor as text{}", resultName(result),
                                  hasEnd ? "" : ", which would end with a NUL"),
                      ExitStatus::failed, resultCode(result));
    return definitionsIn(*array.get());
}

Json decodedAsJson(const std::vector<DecodedDefinition>& definitions)
{
    Json array = Json::array();
    for (const DecodedDefinition& definition : definitions)
        array.push_back(
            {{"type", definition.type}, {"code", jsonText(definition.code)}, {"name", jsonText(definition.name)}});
    return array;
}

void printDecoded(const std::vector<DecodedDefinition>& definitions, Output& output)
{
    std::vector<TableRow> rows;
    for (const DecodedDefinition& definition : definitions)
        rows.push_back(
            {definition.type, oneLine(definition.code.value_or(L"-")), oneLine(definition.name.value_or(L"-"))});
    printTable(rows, output);
}

ExitStatus runDecode(const DecodeOptions& options, Output& output)
{
    const std::string subject = options.file == kStandardStream ? "standard input" : options.file;
    return withFailureDocument(Json::array(), output, [&] {
        const std::vector<DecodedDefinition> definitions = decodeBlock(readWhole(options.file), subject);
        if (output.json())
            output.document(decodedAsJson(definitions));
        else
            printDecoded(definitions, output);
        return ExitStatus::done;
    });
}

std::vector<Command> declareDecode(CLI::App& program)
{
    auto options = std::make_shared<DecodeOptions>();
    CLI::App* app = addCommand(
        program,
        {"decode",
         "List the definitions in bytes that encode or another program wrote",
         {"decode [OPTIONS] [FILE]"},
         "Both forms are read, whichever drawing version they were written for. Each definition has a line with its "
         "type, code and name. Bytes after the NUL of a text are ignored. A text without a NUL is truncated and is "
         "refused, and so is input without a definition. The size is limited only by memory.",
         {{"List the definitions in a file", "orvelcs decode block"}}});
    addArgument(*app, "FILE", options->file, "the file of bytes; - is standard input", {.defaultValue = "-"});
    return {{app, [options](Output& output) { return runDecode(*options, output); }}};
}

const CommandRegistration kDecodeCommand({HelpGroup::catalog, 3}, declareDecode);

} // namespace

} // namespace Orvelcs
