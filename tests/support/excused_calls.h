// Calls of the platform whose failure is no failure of the operation that makes them, with the reason why.
#pragma once

#include <map>
#include <string>

namespace Tests {

using ExcusedCalls = std::map<std::string, std::string>;

inline ExcusedCalls operator+(ExcusedCalls left, const ExcusedCalls& right)
{
    left.insert(right.begin(), right.end());
    return left;
}

inline const ExcusedCalls kNoLegacyCode{
    {"QeDbDatabase::getNamedObjectsDictionary", "a legacy code that cannot be read is none, and so is an xrecord"},
    {"QeDbObject::xData", "a legacy code that cannot be read is none"},
};

inline const ExcusedCalls kReadingWithoutALegacyCode =
    kNoLegacyCode + ExcusedCalls{
                        {"qedbGetGeoDataObjId", "a GeoData object that cannot be found is none"},
                    };

inline const ExcusedCalls kReadingOfALegacyCode =
    kNoLegacyCode + ExcusedCalls{
                        {"qeutNewRb", "a legacy code that cannot be copied is none"},
                        {"qeapp_malloc", "a legacy code that cannot be copied is none"},
                        {"QeDbDictionary::getAt", "an xrecord that cannot be read is none: the catalog answers"},
                    };

inline const ExcusedCalls kReadingOfTheXrecord =
    kReadingOfALegacyCode +
    ExcusedCalls{
        {"qedbOpenQeDbObject", "an xrecord that cannot be read is none: the catalog answers"},
        {"QeDbXrecord::rbChain", "an xrecord that cannot be read is none: the catalog answers"},
        {"StringFromCLSID", "a stored definition that cannot be decoded is none"},
        {"DefinitionStream::CreateInstance", "a stored definition that cannot be decoded is none"},
        {"DefinitionStream::Read", "a stored definition that cannot be decoded is none"},
        {"DefinitionStream::GetDefinitions", "a stored definition that cannot be decoded is none"},
        {"DefinitionBaseArray::Add", "the library's own additions while it decodes"},
        {"DefinitionBase::GetCode", "a stored set that cannot be checked is none"},
        {"CoordinateReferenceSystemDefinition::GetKind", "a stored set that cannot be checked is none"},
        {"CoordinateReferenceSystemDefinition::GetDatumCode", "a stored set that cannot be checked is none"},
        {"DatumDefinition::GetEllipsoidCode", "a stored set that cannot be checked is none"},
        {"DatumDefinition::SetEllipsoid", "a stored system that cannot be linked is whole without it"},
        {"CoordinateReferenceSystemDefinition::SetDatum", "a stored system that cannot be linked is whole without it"},
    };

inline const ExcusedCalls kCatalogCheck{
    {"DefinitionBase::GetCode", "a system whose code cannot be read is not known to the catalog"},
};

inline const ExcusedCalls kAssigning{
    {"DefinitionBase::GetCode", "a definition without a code is announced with the empty text"},
};

inline const ExcusedCalls kMakingGeoData{
    {"qedbGetGeoDataObjId", "on writing, an object that cannot be found is made"},
};

} // namespace Tests
