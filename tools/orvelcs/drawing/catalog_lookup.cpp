#include "orvelcs/drawing/catalog_lookup.h"

#include <algorithm>
#include <set>
#include <vector>

#include "embedded/base/case_folding.h"
#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog_suggestions.h"
#include "embedded/spatial_reference/catalog/vertical_systems.h"
#include "embedded/spatial_reference/operations/coordinate_operations.h"
#include "orvelcs/cli/suggestion.h"
#include "orvelcs/output/result_names.h"

namespace Orvelcs {

namespace Library = Zentara::Infrastructure::SpatialReference;

namespace {

constexpr const char* kVertical = "a vertical system, which a drawing cannot have";

Library::Status systemStatus(const std::wstring& code)
{
    CatalogSystemDefinition system;
    return System::Load(code.c_str(), system.put());
}

std::vector<std::string> authorities()
{
    std::set<std::string> names;
    for (const Embedded::CatalogEntry& entry : Embedded::catalogEntries())
        names.insert(Embedded::utf8FromWide(entry.code.substr(0, entry.code.find(L':'))));
    return {names.begin(), names.end()};
}

} // namespace

std::string nearestCodesClause(const std::wstring& code)
{
    constexpr std::size_t kMost = 5;
    std::vector<std::string> codes;
    for (const Embedded::CatalogEntry& entry : Embedded::suggestCodes(code, kMost))
        codes.push_back(Embedded::utf8FromWide(entry.code));
    return nearestClause(codes);
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
    return Embedded::isVerticalSystem(code) ? name + " is " + kVertical
                                            : "the catalog has no " + name + nearestCodesClause(code);
}

Failure noSuchCode(const std::wstring& code)
{
    return Failure(Embedded::utf8FromWide(code),
                   Embedded::isVerticalSystem(code) ? std::string("is ") + kVertical
                                                    : "the catalog has no such code" + nearestCodesClause(code),
                   ExitStatus::nothingFound, resultCode(Library::statusNotFound));
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

CatalogSystemDefinition systemFromCatalog(const std::wstring& code)
{
    CatalogSystemDefinition system;
    const Library::Status status = System::Load(code.c_str(), system.put());
    if (status == Library::statusNotFound)
        throw noSuchCode(code);
    if (status != Library::statusOk || !system)
        throw Failure(Embedded::utf8FromWide(code), describeLoadFailure(code, status), ExitStatus::failed,
                      resultCode(status));
    return system;
}

Failure operationFailure(const Embedded::Error& error, ExitStatus unknownCode)
{
    if (Embedded::operationErrorOf(error) != Embedded::OperationError::unknownSystem)
        return Failure(error.place, error.message);
    const std::wstring code = Embedded::wideFromUtf8(error.place);
    if (Embedded::isVerticalSystem(code))
        return Failure(error.place, std::string("is ") + kVertical, unknownCode);
    return Failure(error.place, error.message + nearestCodesClause(code), unknownCode);
}

} // namespace Orvelcs
