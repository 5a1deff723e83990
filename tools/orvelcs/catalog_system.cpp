#include "orvelcs/catalog_system.h"

#include "embedded/foundation/text.h"
#include "orvelcs/catalog_suggestion.h"
#include "orvelcs/failure.h"
#include "orvelcs/result_names.h"

namespace Orvelcs {

namespace Library = Zentara::Infrastructure::SpatialReference;

CatalogSystemDefinition systemFromCatalog(const std::wstring& code)
{
    CatalogSystemDefinition system;
    const Library::Status status = System::Load(code.c_str(), system.put());
    const std::string subject = Embedded::utf8FromWide(code);
    if (status == Library::statusNotFound)
        throw Failure(subject, "the catalog has no such code" + nearestCodesClause(code), ExitStatus::nothingFound);
    if (status != Library::statusOk || !system)
        throw Failure(subject, "cannot be loaded: " + statusName(status));
    return system;
}

} // namespace Orvelcs
