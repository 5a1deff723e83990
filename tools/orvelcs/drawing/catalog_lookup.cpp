#include "orvelcs/drawing/catalog_lookup.h"

#include <algorithm>
#include <set>
#include <vector>

#include <fmt/format.h>

#include "embedded/base/case_folding.h"
#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog_suggestions.h"
#include "embedded/spatial_reference/catalog/code_notations.h"
#include "embedded/spatial_reference/catalog/operation_names.h"
#include "embedded/spatial_reference/catalog/vertical_systems.h"
#include "embedded/spatial_reference/definitions/system_text.h"
#include "embedded/spatial_reference/operations/coordinate_operations.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/display_text.h"
#include "orvelcs/cli/suggestion.h"
#include "orvelcs/drawing/swapped_arguments.h"
#include "orvelcs/output/result_names.h"

namespace Orvelcs {

namespace Library = Zentara::Infrastructure::SpatialReference;

namespace {

Library::Status systemStatus(const std::wstring& code)
{
    SystemHolder system;
    return System::Load(code.c_str(), system.put());
}

std::vector<std::string> authorities()
{
    std::set<std::string> names;
    for (const Embedded::CatalogEntry& entry : Embedded::catalogEntries())
        names.insert(Embedded::utf8FromWide(entry.code.substr(0, entry.code.find(L':'))));
    return {names.begin(), names.end()};
}

/// "EPSG:25832 (ETRS89 / UTM zone 32N)", of a system or of an operation.
std::string codeAndName(const std::wstring& code, const std::wstring& name)
{
    return fmt::format("{} ({})", oneLine(code), oneLine(name));
}

/// What an unknown code is: a file, or nearest to others.
std::string missingCodeClause(const std::wstring& code)
{
    const std::string file = fileInPlaceOfCodeClause(Embedded::utf8FromWide(code));
    return file.empty() ? nearestCodesClause(code) : file;
}

} // namespace

std::wstring codeArgument(const std::string& argument, const std::string& text)
{
    return Embedded::plainCode(wideArgument(argument, text));
}

std::string describeEntry(const Embedded::CatalogEntry& entry)
{
    return codeAndName(entry.code, entry.name);
}

std::string nearestCodesClause(const std::wstring& code)
{
    constexpr std::size_t kMost = 5;
    std::vector<std::string> systems;
    for (const Embedded::CatalogEntry& entry : Embedded::suggestCodes(code, kMost))
        systems.push_back(describeEntry(entry));
    return nearestClause(systems);
}

std::string nearestOperationsClause(const std::wstring& name, Library::TransformationKind kind)
{
    constexpr std::size_t kMost = 5;
    std::vector<std::string> operations;
    for (const Embedded::OperationCandidate& operation : Embedded::suggestOperations(name, kind, kMost))
        operations.push_back(codeAndName(operation.code, operation.name));
    return nearestClause(operations);
}

std::string nearestOperationsClause(const std::wstring& name)
{
    const std::string transformations = nearestOperationsClause(name, Library::transformationSingle);
    return transformations.empty() ? nearestOperationsClause(name, Library::transformationPath) : transformations;
}

void checkAuthority(const std::wstring& authority)
{
    const std::string wanted = Embedded::utf8FromWide(authority);
    const std::vector<std::string> known = authorities();
    if (std::ranges::none_of(known, [&](const auto& name) { return Embedded::equalsIgnoringAsciiCase(name, wanted); }))
        throw Failure(wanted, "the catalog has no such authority" + nearestClause(nearest(wanted, known)),
                      ExitStatus::nothingFound);
}

std::string describeMissingCode(const std::wstring& code)
{
    const std::string name = Embedded::utf8FromWide(code);
    return Embedded::isVerticalSystem(code) ? name + " is " + Embedded::kVerticalSystem
                                            : "the catalog has no " + name + missingCodeClause(code);
}

Failure noSuchCode(const std::wstring& code, ExitStatus status)
{
    return Failure(Embedded::utf8FromWide(code),
                   Embedded::isVerticalSystem(code) ? std::string("is ") + Embedded::kVerticalSystem
                                                    : "the catalog has no such code" + missingCodeClause(code),
                   status, resultCode(Library::statusNotFound));
}

std::string describeLoadFailure(const std::wstring& code, Library::Status status)
{
    if (const auto check = Embedded::checkCatalogFor(code); !check)
        return Embedded::unreadableCatalogMessage(check.error()) + ": " + statusName(status);
    return "cannot be loaded: " + statusName(status);
}

bool catalogLacks(const std::wstring& code)
{
    return systemStatus(code) == Library::statusNotFound;
}

std::optional<bool> catalogAgrees(const std::wstring& code, const System& system)
{
    SystemHolder known;
    if (System::Load(code.c_str(), known.put()) != Library::statusOk)
        return std::nullopt;
    return Embedded::isEquivalent(*known, system);
}

std::optional<Embedded::CatalogEntry> catalogEntry(const std::wstring& code)
{
    if (auto entry = Embedded::findCatalogEntry(code))
        return *std::move(entry);
    const Library::Status status = systemStatus(code);
    if (status == Library::statusNotFound)
        return std::nullopt;
    throw Failure(Embedded::utf8FromWide(code), describeLoadFailure(code, status), ExitStatus::failed,
                  resultCode(status));
}

SystemHolder systemFromCatalog(const std::wstring& code, ExitStatus unknownCode)
{
    SystemHolder system;
    const Library::Status status = System::Load(code.c_str(), system.put());
    if (status == Library::statusNotFound)
        throw noSuchCode(code, unknownCode);
    if (status != Library::statusOk || !system)
        throw Failure(Embedded::utf8FromWide(code), describeLoadFailure(code, status), ExitStatus::failed,
                      resultCode(status));
    return system;
}

Failure operationFailure(const Embedded::Error& error, ExitStatus unknownCode)
{
    const Embedded::OperationError kind = Embedded::operationErrorOf(error);
    if (kind == Embedded::OperationError::unknownOperation)
        return Failure(error.place, error.message + nearestOperationsClause(Embedded::wideFromUtf8(error.place)));
    if (kind != Embedded::OperationError::unknownSystem)
        return Failure(error.place, error.message);
    const std::wstring code = Embedded::wideFromUtf8(error.place);
    if (Embedded::isVerticalSystem(code))
        return Failure(error.place, std::string("is ") + Embedded::kVerticalSystem, unknownCode);
    return Failure(error.place, error.message + nearestCodesClause(code), unknownCode);
}

} // namespace Orvelcs
