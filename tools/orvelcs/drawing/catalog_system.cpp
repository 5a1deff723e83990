#include "orvelcs/drawing/catalog_system.h"

#include "embedded/base/text.h"
#include "orvelcs/drawing/catalog_suggestion.h"
#include "orvelcs/output/result_names.h"

namespace Orvelcs {

namespace Library = Zentara::Infrastructure::SpatialReference;

namespace {

Library::Status statusOfLoading(const std::wstring& code)
{
    CatalogSystemDefinition system;
    return System::Load(code.c_str(), system.put());
}

} // namespace

Failure noSuchCode(const std::wstring& code)
{
    return Failure(Embedded::utf8FromWide(code), "the catalog has no such code" + nearestCodesClause(code),
                   ExitStatus::nothingFound);
}

std::string describeLoadFailure(const std::wstring& code, Library::Status status)
{
    if (const auto check = Embedded::checkCatalogFor(code); !check)
        return Embedded::unreadableCatalogMessage(check.error()) + ": " + statusName(status);
    return "cannot be loaded: " + statusName(status);
}

bool catalogLacks(const std::wstring& code)
{
    return statusOfLoading(code) == Library::statusNotFound;
}

std::optional<Embedded::CatalogEntry> catalogEntry(const std::wstring& code)
{
    if (auto entry = Embedded::findCatalogEntry(code))
        return *std::move(entry);
    const Library::Status status = statusOfLoading(code);
    if (status == Library::statusNotFound)
        return std::nullopt;
    throw Failure(Embedded::utf8FromWide(code), describeLoadFailure(code, status));
}

CatalogSystemDefinition systemFromCatalog(const std::wstring& code)
{
    CatalogSystemDefinition system;
    const Library::Status status = System::Load(code.c_str(), system.put());
    if (status == Library::statusNotFound)
        throw noSuchCode(code);
    if (status != Library::statusOk || !system)
        throw Failure(Embedded::utf8FromWide(code), describeLoadFailure(code, status));
    return system;
}

} // namespace Orvelcs
