#include "sweep/tolerated_failures.h"

#include <map>

namespace Tests {
namespace {

/// Names of failures, with the reasons.
using ToleratedFailures = std::map<std::string, std::string>;

ToleratedFailures operator+(ToleratedFailures left, const ToleratedFailures& right)
{
    left.insert(right.begin(), right.end());
    return left;
}

const ToleratedFailures kReadingGeoData{
    {"QeDbDatabase::getNamedObjectsDictionary",
     "a legacy code that cannot be read counts as absent, and so does an xrecord"},
    {"QeDbObject::xData", "a legacy code that cannot be read counts as absent"},
    {"qedbGetGeoDataObjId", "a GeoData object that cannot be found counts as absent"},
    {"allocation", "a legacy code that cannot be copied counts as absent"},
    {"hostAllocation", "a stored form that cannot be read counts as absent"},
};

const ToleratedFailures kReadingALegacyCode =
    kReadingGeoData + ToleratedFailures{
                          {"qeutNewRb", "a legacy code that cannot be copied counts as absent"},
                          {"qeapp_malloc", "a legacy code that cannot be copied counts as absent"},
                          {"QeDbDictionary::getAt", "the catalog replaces an xrecord that cannot be read"},
                      };

const ToleratedFailures kReadingTheXrecord =
    kReadingALegacyCode +
    ToleratedFailures{
        {"qedbOpenQeDbObject", "the catalog replaces an xrecord that cannot be read"},
        {"QeDbXrecord::rbChain", "the catalog replaces an xrecord that cannot be read"},
        {"StringFromCLSID", "a stored definition that cannot be decoded counts as absent"},
        {"DefinitionStream::CreateInstance", "a stored definition that cannot be decoded counts as absent"},
        {"DefinitionStream::Read", "a stored definition that cannot be decoded counts as absent"},
        {"DefinitionStream::GetDefinitions", "a stored definition that cannot be decoded counts as absent"},
        {"DefinitionBaseArray::Add", "the library makes these calls itself while it decodes"},
        {"DefinitionBase::GetCode", "a stored set that cannot be checked counts as absent"},
        {"CoordinateReferenceSystemDefinition::GetKind", "a stored set that cannot be checked counts as absent"},
        {"CoordinateReferenceSystemDefinition::GetDatumCode", "a stored set that cannot be checked counts as absent"},
        {"DatumDefinition::GetEllipsoidCode", "a stored set that cannot be checked counts as absent"},
        {"DatumDefinition::SetEllipsoid", "a stored system that cannot be linked is complete without its ellipsoid"},
        {"CoordinateReferenceSystemDefinition::SetDatum",
         "a stored system that cannot be linked is complete without its datum"},
    };

const ToleratedFailures kCatalogCheck{
    {"DefinitionBase::GetCode", "a system whose code cannot be read counts as unknown to the catalog"},
};

const ToleratedFailures kConverting =
    kReadingTheXrecord +
    ToleratedFailures{
        {"CoordinateReferenceSystemDefinition::Load", "the drawing's own definition serves as well"},
        {"FormatConverter::DefinitionToWkt_s", "older readers do not need the WKT"},
        {"QeDbSymbolUtilitiesServices::blockModelSpaceId", "older readers do not need the WKT"},
        {"QeDbGeoData::setBlockTableRecordId", "older readers do not need the WKT"},
        {"QeDbGeoData::postToDb", "older readers do not need the WKT"},
        {"QeDbGeoData::setCoordinateSystem", "older readers do not need the WKT"},
    };

/// The host catches exceptions of its own while it removes objects.
const ToleratedFailures kRemoving{
    {"hostAllocation", "an object that cannot be destroyed at once is destroyed with its drawing"},
};

const ToleratedFailures kAssigning =
    kRemoving + ToleratedFailures{
                    {"DefinitionBase::GetCode", "a definition without a code is announced with the empty text"},
                    {"qedbGetGeoDataObjId", "on writing, an object that cannot be found is made"},
                };

const ToleratedFailures kReadingOfSettings{
    {"_wfsopen.close", "everything has been read by then"},
};

const ToleratedFailures kWritingOfSettings =
    kRemoving + ToleratedFailures{
                    {"_wfsopen.write", "documented: the function returns true once the file is open"},
                    {"_wfsopen.close", "documented: the function returns true once the file is open"},
                };

const ToleratedFailures kEmptyingOfSettings =
    kRemoving + ToleratedFailures{
                    {"RegEnumValueW", "its failure means that there are no more values"},
                };

const ToleratedFailures kLookingUp =
    kReadingOfSettings + ToleratedFailures{
                             {"QeDbDatabase::getNamedObjectsDictionary", "the user's settings serve instead"},
                             {"QeDbDictionary::getAt", "the user's settings serve instead"},
                             {"allocation", "a text that cannot be shrunk is kept in more memory than it needs"},
                         };

const ToleratedFailures kEntering{
    {"qerxRegisterAppMDIAware", "the module works in a host that does not record it"},
    {"QeRxDynamicLinker::unlockApplication", "the module stays loaded"},
    {"QeDbDecompositionManager::addReactor", "the module works in a host without decomposition"},
    {"QeDbDecompositionManager::removeReactor", "the host unmaps the module whatever the result"},
};

using Table = std::map<std::string, ToleratedFailures>;

/// Reading tolerates more failures the more forms a drawing holds.
void addReading(Table& table, const std::string& function, const ToleratedFailures& further)
{
    for (const char* const form : {"empty drawing", "from GeoData", "of a user's own"})
        table[function + ":" + form] = kReadingGeoData + further;
    for (const char* const form : {"by a legacy code", "unknown legacy code"})
        table[function + ":" + form] = kReadingALegacyCode + further;
    table[function + ":from the xrecord"] = kReadingTheXrecord + further;
}

/// By the name of the function, or by the name of the scenario.
const Table& toleratedFailures()
{
    static const Table table = [] {
        Table all{
            {"SetCoordinateSystem(definition)", kAssigning},
            {"SetCoordinateSystem(code)", kAssigning},
            {"ClearCoordinateSystem", kRemoving},
            {"ApplyCoordinateSystemStorageVersion", kConverting},
            {"saving a drawing", kConverting},
            {"GetCsTransformationConfig", kReadingOfSettings},
            {"SetCsTransformationConfig", kWritingOfSettings},
            {"ClearCsTransformationConfig", kEmptyingOfSettings},
            {"GetCsConfiguredTransformationInfo", kLookingUp},
            {"qerxEntryPoint", kEntering},
        };
        addReading(all, "GetCoordinateSystem(array)", {});
        addReading(all, "GetCoordinateSystem(definition)", kCatalogCheck);
        addReading(all, "GetCoordinateSystem(code)", {});
        return all;
    }();
    return table;
}

std::optional<std::string> findReason(const std::string& name, const std::string& failure)
{
    const auto tolerated = toleratedFailures().find(name);
    if (tolerated == toleratedFailures().end())
        return std::nullopt;
    const auto reason = tolerated->second.find(failure);
    return reason != tolerated->second.end() ? std::optional(reason->second) : std::nullopt;
}

} // namespace

std::optional<std::string> reasonToTolerate(const Scenario& scenario, const std::string& failure)
{
    const std::optional<std::string> reason = findReason(scenarioName(scenario), failure);
    return reason ? reason : findReason(scenario.function, failure);
}

} // namespace Tests
