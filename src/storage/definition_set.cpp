#include "storage/definition_set.h"

#include <cwchar>
#include <utility>

#include "platform/win32.h"
#include "storage/definition_code.h"
#include "storage/ignore_result.h"

namespace Orvel {
namespace {

bool sameCode(const wchar_t* left, const wchar_t* right)
{
    return left != nullptr && right != nullptr && _wcsicmp(left, right) == 0;
}

template <class Definition>
const wchar_t* ellipsoidCode(const Definition* definition)
{
    const wchar_t* code = nullptr;
    return definition->GetEllipsoidCode(code) == Library::statusOk ? code : nullptr;
}

/// Empty for a system without a datum; null when the query fails.
const wchar_t* queryDatumCode(const Library::CoordinateReferenceSystemDefinition& system)
{
    const wchar_t* code = nullptr;
    return system.GetDatumCode(code) == Library::statusOk ? code : nullptr;
}

bool needsEllipsoid(int kind)
{
    return kind == Library::kindGeographic || kind == Library::kindProjected;
}

/// The code that the ellipsoid must have. Null when the datum is not the one that the system names.
const wchar_t* expectedEllipsoidCode(const Library::CoordinateReferenceSystemDefinition* system,
                                     const Library::DatumDefinition* datum)
{
    const wchar_t* const datumCode = queryDatumCode(*system);
    if (datumCode == nullptr)
        return nullptr;
    if (*datumCode == L'\0')
        return datum == nullptr ? ellipsoidCode(system) : nullptr;
    return sameCode(definitionCode(datum), datumCode) ? ellipsoidCode(datum) : nullptr;
}

} // namespace

void DefinitionSet::take(LibraryObject<Library::DefinitionBase> definition)
{
    if (auto asSystem = takeAs<Library::CoordinateReferenceSystemDefinition>(definition))
        system = std::move(asSystem);
    else if (auto asDatum = takeAs<Library::DatumDefinition>(definition))
        datum = std::move(asDatum);
    else if (auto asEllipsoid = takeAs<Library::EllipsoidDefinition>(definition))
        ellipsoid = std::move(asEllipsoid);
}

bool ValidateCsDefinitionSet(const wchar_t* code, const Library::CoordinateReferenceSystemDefinition* system,
                             const Library::DatumDefinition* datum, const Library::EllipsoidDefinition* ellipsoid)
{
    if (isBlank(code) || !sameCode(definitionCode(system), code))
        return false;
    int kind = 0;
    if (system->GetKind(kind) != Library::statusOk)
        return false;
    if (!needsEllipsoid(kind))
        return true;
    return sameCode(definitionCode(ellipsoid), expectedEllipsoidCode(system, datum));
}

/// After a link that fails the system stays as it was stored, which is complete.
void linkDefinitionSet(DefinitionSet& set)
{
    const wchar_t* const datumCode = queryDatumCode(*set.system.get());
    if (datumCode == nullptr)
        return;
    if (*datumCode == L'\0') {
        if (set.ellipsoid)
            ignoreResult([&] { return set.system->SetEllipsoid(set.ellipsoid.get()); });
        return;
    }
    if (!set.datum)
        return;
    if (set.ellipsoid)
        ignoreResult([&] { return set.datum->SetEllipsoid(set.ellipsoid.get()); });
    ignoreResult([&] { return set.system->SetDatum(set.datum.get()); });
}

} // namespace Orvel
