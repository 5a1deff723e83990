#include "sweep/passed_over.h"

#include <map>

namespace Tests {
namespace {

using Reasons = std::map<std::string, std::string>;

Reasons operator+(Reasons left, const Reasons& right)
{
    left.insert(right.begin(), right.end());
    return left;
}

const Reasons kReading{
    {"allocation", "a legacy code that cannot be copied is none"},
    {"hostAllocation", "a stored form that cannot be read is none"},
    {"QeDbDatabase::getNamedObjectsDictionary", "a legacy code that cannot be read is none, and so is an xrecord"},
    {"QeDbObject::xData", "a legacy code that cannot be read is none"},
    {"qedbGetGeoDataObjId", "a GeoData object that cannot be found is none"},
    {"qeutNewRb", "a legacy code that cannot be copied is none"},
    {"qeapp_malloc", "a legacy code that cannot be copied is none"},
    {"QeDbDictionary::getAt", "an xrecord that cannot be read is none: the catalog answers"},
    {"qedbOpenQeDbObject", "an xrecord that cannot be read is none: the catalog answers"},
    {"QeDbXrecord::rbChain", "an xrecord that cannot be read is none: the catalog answers"},
    {"StringFromCLSID", "a stored definition that cannot be decoded is none"},
    {"DefinitionStream::CreateInstance", "a stored definition that cannot be decoded is none"},
    {"DefinitionStream::Read", "a stored definition that cannot be decoded is none"},
    {"DefinitionStream::GetDefinitions", "a stored definition that cannot be decoded is none"},
    {"DefinitionBaseArray::Add", "the library's own additions while it decodes"},
    {"DefinitionBase::GetCode", "a stored set that cannot be checked is none; a system without a code is unknown"},
    {"CoordinateReferenceSystemDefinition::GetKind", "a stored set that cannot be checked is none"},
    {"CoordinateReferenceSystemDefinition::GetDatumCode", "a stored set that cannot be checked is none"},
    {"DatumDefinition::GetEllipsoidCode", "a stored set that cannot be checked is none"},
    {"DatumDefinition::SetEllipsoid", "a stored system that cannot be linked is whole without it"},
    {"CoordinateReferenceSystemDefinition::SetDatum", "a stored system that cannot be linked is whole without it"},
};

const Reasons kAssigning{
    {"DefinitionBase::GetCode", "a definition without a code is announced with the empty text"},
    {"qedbGetGeoDataObjId", "on writing, an object that cannot be found is made"},
};

const Reasons kConverting =
    kReading + Reasons{
                   {"CoordinateReferenceSystemDefinition::Load", "the drawing's own definition is as good"},
                   {"FormatConverter::DefinitionToWkt_s", "older readers can do without the WKT"},
                   {"QeDbSymbolUtilitiesServices::blockModelSpaceId", "older readers can do without the WKT"},
                   {"QeDbGeoData::setBlockTableRecordId", "older readers can do without the WKT"},
                   {"QeDbGeoData::postToDb", "older readers can do without the WKT"},
                   {"QeDbGeoData::setCoordinateSystem", "older readers can do without the WKT"},
               };

/// What an exception in the host comes to where it is caught.
const Reasons kRemoving{
    {"hostAllocation", "an object that cannot be destroyed at once is destroyed with its drawing"},
};

const Reasons kReadingOfSettings{
    {"_wfsopen.close", "all has been read by then"},
};

const Reasons kWritingOfSettings{
    {"_wfsopen.write", "documented: a file that could be opened is answered with true"},
    {"_wfsopen.close", "documented: a file that could be opened is answered with true"},
};

const Reasons kEmptyingOfSettings{
    {"RegEnumValueW", "its own failure is the answer that there are no more values"},
};

const Reasons kLookingUp =
    kReadingOfSettings + Reasons{
                             {"QeDbDatabase::getNamedObjectsDictionary", "then the user's settings answer"},
                             {"QeDbDictionary::getAt", "then the user's settings answer"},
                             {"allocation", "what has been read is kept in more memory than it needs"},
                         };

const Reasons kEntering{
    {"qerxRegisterAppMDIAware", "a host that keeps no note of it can use the module all the same"},
    {"QeRxDynamicLinker::unlockApplication", "the module stays loaded, that is all"},
    {"QeDbDecompositionManager::addReactor", "a host without decomposition can use the module all the same"},
    {"QeDbDecompositionManager::removeReactor", "the host unmaps the module whatever the result"},
};

const std::map<std::string, Reasons>& tableOfReasons()
{
    static const std::map<std::string, Reasons> table{
        {"GetCoordinateSystem(array)", kReading},
        {"GetCoordinateSystem(definition)", kReading},
        {"GetCoordinateSystem(code)", kReading},
        {"SetCoordinateSystem(definition)", kAssigning + kRemoving},
        {"SetCoordinateSystem(code)", kAssigning + kRemoving},
        {"ClearCoordinateSystem", kRemoving},
        {"ApplyCoordinateSystemStorageVersion", kConverting},
        {"saving a drawing", kConverting},
        {"GetCsTransformationConfig", kReadingOfSettings},
        {"SetCsTransformationConfig", kWritingOfSettings + kRemoving},
        {"ClearCsTransformationConfig", kEmptyingOfSettings + kRemoving},
        {"GetCsConfiguredTransformationInfo", kLookingUp},
        {"qerxEntryPoint", kEntering},
    };
    return table;
}

} // namespace

std::optional<std::string> reasonToPassOver(const std::string& function, const std::string& call)
{
    const auto reasons = tableOfReasons().find(function);
    if (reasons == tableOfReasons().end())
        return std::nullopt;
    const auto reason = reasons->second.find(call);
    return reason != reasons->second.end() ? std::optional(reason->second) : std::nullopt;
}

} // namespace Tests
