#include "orvelcs/drawing/system_argument.h"

#include <array>
#include <cstdio>
#include <memory>

#include <fmt/format.h>

#include "coordsys/orvel_coordinate_system.h"
#include "embedded/base/file_kind.h"
#include "embedded/base/path.h"
#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/code_notations.h"
#include "embedded/spatial_reference/definitions/system_text.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/cli/process.h"
#include "orvelcs/cli/wait.h"
#include "orvelcs/drawing/definition_file.h"
#include "orvelcs/drawing/drawings.h"
#include "orvelcs/drawing/loaded_module.h"
#include "orvelcs/drawing/stored_forms.h"
#include "orvelcs/output/result_names.h"

namespace Orvelcs {

namespace CoordinateSystem = Zentara::Gis::Orvel::CoordinateSystem;

namespace {

constexpr char kFileMark = '@';
constexpr std::size_t kLongestFileInBytes = std::size_t{1} << 30; // of one that is read whole

using Drawing = Embedded::Expected<std::unique_ptr<QeDbDatabase>>;

NamedSystem systemOfDrawing(const std::string& subject, const Drawing& drawing)
{
    if (!drawing)
        throw drawingFailure(subject, drawing.error());
    const LoadedModule module;
    NamedSystem system;
    system.source = SystemSource::drawing;
    const Qeapp::ErrorStatus result =
        CoordinateSystem::GetCoordinateSystem(system.definition.put(), nullptr, drawing->get());
    require(subject, Embedded::loadingResult(**drawing));
    if (result != Qeapp::eOk)
        throw Failure(subject, resultName(result) + ": the stored coordinate system cannot be read", ExitStatus::failed,
                      resultCode(result));
    if (!system.definition)
        throw Failure(subject, "has no coordinate system", ExitStatus::nothingFound);
    system.code = definitionText(*system.definition, &System::GetCode).value_or(L"");
    return system;
}

/// A definition must have a code. The file's name stands for one that nobody gave.
NamedSystem systemOfText(const std::string& subject, const std::wstring& text, const std::wstring& code)
{
    NamedSystem system;
    system.source = SystemSource::text;
    system.code = code.empty() ? identifierInText(subject, text) : code;
    if (!system.code.empty())
        system.definition = systemFromText(subject, text, system.code);
    if (system.definition && catalogAgrees(system.code, *system.definition).value_or(true))
        return system;
    system.code.clear();
    system.definition = systemFromText(subject, text, Embedded::wideFromUtf8(kFileMark + subject));
    return system;
}

NamedSystem systemOfDrawingFile(const std::string& file, const Output& output)
{
    return systemOfDrawing(file, Embedded::loadDrawing(Embedded::pathFromUtf8(file), Embedded::DrawingAccess::reading,
                                                       waitFor(file, output)));
}

NamedSystem systemOfFile(const std::string& file, const Output& output, const std::wstring& codeOfText)
{
    if (file != kStandardStream && isDrawingFile(file))
        return systemOfDrawingFile(file, output);
    const std::string subject = inputName(file);
    const std::string bytes = readWhole(file, kLongestFileInBytes);
    if (bytes.starts_with(Embedded::kDatabaseBeginning))
        return systemOfDrawing(subject, Embedded::loadDrawingFromBytes(bytes));
    return systemOfText(subject, definitionTextFrom(subject, bytes), codeOfText);
}

NamedSystem systemOfCode(const std::wstring& code, ExitStatus unknownCode)
{
    NamedSystem system;
    system.definition = systemFromCatalog(code, unknownCode);
    system.code = definitionText(*system.definition, &System::GetCode).value_or(code);
    return system;
}

/// "EPSG:1" where no file has that name. "C:plan.qedb" begins with a drive.
bool looksLikeCode(const std::string& argument)
{
    constexpr std::size_t kShortestAuthority = 2;
    const std::size_t colon = argument.find(':');
    return colon != std::string::npos && colon >= kShortestAuthority &&
           argument.find_first_of("/\\") == std::string::npos && !Embedded::fileKind(Embedded::pathFromUtf8(argument));
}

} // namespace

bool isDrawingFile(const std::string& file)
{
    const auto kind = Embedded::fileKind(Embedded::pathFromUtf8(file));
    if (!kind || *kind != Embedded::FileKind::regular)
        return false;
    const auto close = [](std::FILE* stream) { static_cast<void>(std::fclose(stream)); };
    const std::unique_ptr<std::FILE, decltype(close)> stream(openForReading(file), close);
    std::array<char, Embedded::kDatabaseBeginning.size()> begin{};
    return stream && std::fread(begin.data(), 1, begin.size(), stream.get()) == begin.size() &&
           std::string_view(begin.data(), begin.size()) == Embedded::kDatabaseBeginning;
}

bool namesFile(const std::string& system)
{
    return system.starts_with(kFileMark);
}

bool namesSystemOnly(const std::string& argument)
{
    return namesFile(argument) && !Embedded::fileKind(Embedded::pathFromUtf8(argument));
}

bool namesStandardInput(const std::string& system)
{
    return namesFile(system) && system.substr(1) == kStandardStream;
}

NamedSystem readSystem(const std::string& argument, const std::string& system, const Output& output,
                       ExitStatus unknownCode, const std::wstring& codeOfText)
{
    if (!namesFile(system))
        return systemOfCode(codeArgument(argument, system), unknownCode);
    if (system.size() == 1)
        throw wrongUsage(argument, "expected the name of a file after @");
    return systemOfFile(system.substr(1), output, codeOfText);
}

NamedSystem readDrawingOrSystem(const std::string& argument, const std::string& system, const Output& output)
{
    if (namesSystemOnly(system) || looksLikeCode(system))
        return readSystem(argument, system, output);
    if (system != kStandardStream)
        return systemOfDrawingFile(system, output);
    return systemOfDrawing(inputName(system), Embedded::loadDrawingFromBytes(readWhole(system, kLongestFileInBytes)));
}

NamedSystem readSystemToStore(const std::string& argument, const std::string& system, const CLI::Option& codeOption,
                              const std::string& code, const Output& output)
{
    const bool hasCode = codeOption.count() > 0;
    const std::wstring codeOfText = hasCode ? wideArgument("--code", code) : std::wstring();
    if (hasCode)
        checkUserCode(codeOfText);
    NamedSystem read = readSystem(argument, system, output, ExitStatus::nothingFound, codeOfText);
    if (read.source == SystemSource::text && !hasCode)
        throw wrongUsage(system, "is a text, whose system needs --code, the code that it is to have");
    if (read.source != SystemSource::text && hasCode)
        throw wrongUsage("--code", "goes with the system of a text only; this one has a code");
    return read;
}

SystemDescription describe(const NamedSystem& system)
{
    SystemDescription description = describe(*system.definition);
    if (system.code.empty())
        description.code = std::nullopt;
    return description;
}

void checkUserCode(const std::wstring& code)
{
    if (catalogEntry(Embedded::plainCode(code)))
        throw Failure(Embedded::utf8FromWide(code),
                      "is the code of a system of the catalog; a definition needs a code of its own");
    if (!isLegacyCode(code))
        throw Failure("--code", "expected a code, found \".\", which readers of older drawing versions take for none");
}

} // namespace Orvelcs
