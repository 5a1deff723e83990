#include "embedded/spatial_reference/operations/datum_names.h"

#include <algorithm>

#include "embedded/base/case_folding.h"
#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog_connection.h"
#include "embedded/spatial_reference/catalog/catalog_database.h"
#include "embedded/spatial_reference/operations/operation_error.h"
#include "embedded/spatial_reference/projjson/proj_object.h"

namespace Embedded {
namespace {

bool isLetter(char character)
{
    return character >= 'a' && character <= 'z';
}

/// Digits are left out because PROJ takes 1983 and 83 for the same. PROJ calls the datum of an ensemble by the name of
/// the ensemble without that word.
std::string lettersOf(std::string_view name)
{
    constexpr std::string_view kEnsemble = "ensemble";
    std::string letters = toLowerAscii(name);
    std::erase_if(letters, [](char character) { return !isLetter(character); });
    if (letters.ends_with(kEnsemble))
        letters.resize(letters.size() - kEnsemble.size());
    return letters;
}

} // namespace

DatumNames::DatumNames(const PJ* datum)
{
    const auto code = splitCode(codeOfObject(datum));
    if (!code)
        return;
    requireReadable(checkCatalogIsOpen());
    auto names = openedCatalog().query("SELECT alt_name FROM alias_name WHERE table_name = 'geodetic_datum' AND "
                                       "auth_name = ?1 AND code = ?2",
                                       {code->authority, code->code});
    requireReadable(names.map([](const auto&) {}));
    names->emplace_back(proj_get_name(datum));
    knowsAll_ = std::ranges::all_of(*names, [](const std::string& name) { return isAscii(name); });
    for (const std::string& name : *names)
        letters_.insert(lettersOf(name));
}

bool DatumNames::mayInclude(std::string_view name) const
{
    return !knowsAll_ || !isAscii(name) || letters_.contains(lettersOf(name));
}

} // namespace Embedded
