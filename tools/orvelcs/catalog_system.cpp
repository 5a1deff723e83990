#include "orvelcs/catalog_system.h"

#include "embedded/foundation/text.h"
#include "orvelcs/catalog_suggestion.h"
#include "orvelcs/result_names.h"

namespace Orvelcs {

namespace Library = Zentara::Infrastructure::SpatialReference;

Failure noSuchCode(const std::wstring& code)
{
    return Failure(Embedded::utf8FromWide(code), "the catalog has no such code" + nearestCodesClause(code),
                   ExitStatus::nothingFound);
}

CatalogSystemDefinition systemFromCatalog(const std::wstring& code)
{
    CatalogSystemDefinition system;
    const Library::Status status = System::Load(code.c_str(), system.put());
    if (status == Library::statusNotFound)
        throw noSuchCode(code);
    if (status != Library::statusOk || !system)
        throw Failure(Embedded::utf8FromWide(code), "cannot be loaded: " + statusName(status));
    return system;
}

} // namespace Orvelcs
