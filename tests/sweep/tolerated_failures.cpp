#include "sweep/tolerated_failures.h"

#include <map>

#include "support/excused_calls.h"

namespace Tests {
namespace {

/// Whatever the drawing holds.
const ExcusedCalls kReading = kReadingWithoutALegacyCode + kReadingOfTheXrecord +
                              ExcusedCalls{
                                  {"allocation", "a legacy code that cannot be copied is none"},
                                  {"hostAllocation", "a stored form that cannot be read is none"},
                              };

const ExcusedCalls kConverting =
    kReading + ExcusedCalls{
                   {"CoordinateReferenceSystemDefinition::Load", "the drawing's own definition is as good"},
                   {"FormatConverter::DefinitionToWkt_s", "older readers can do without the WKT"},
                   {"QeDbSymbolUtilitiesServices::blockModelSpaceId", "older readers can do without the WKT"},
                   {"QeDbGeoData::setBlockTableRecordId", "older readers can do without the WKT"},
                   {"QeDbGeoData::postToDb", "older readers can do without the WKT"},
                   {"QeDbGeoData::setCoordinateSystem", "older readers can do without the WKT"},
               };

/// What an exception in the host comes to where it is caught.
const ExcusedCalls kRemoving{
    {"hostAllocation", "an object that cannot be destroyed at once is destroyed with its drawing"},
};

const ExcusedCalls kReadingOfSettings{
    {"_wfsopen.close", "all has been read by then"},
};

const ExcusedCalls kWritingOfSettings{
    {"_wfsopen.write", "documented: a file that could be opened is answered with true"},
    {"_wfsopen.close", "documented: a file that could be opened is answered with true"},
};

const ExcusedCalls kEmptyingOfSettings{
    {"RegEnumValueW", "its own failure is the answer that there are no more values"},
};

const ExcusedCalls kLookingUp =
    kReadingOfSettings + ExcusedCalls{
                             {"QeDbDatabase::getNamedObjectsDictionary", "then the user's settings answer"},
                             {"QeDbDictionary::getAt", "then the user's settings answer"},
                             {"allocation", "what has been read is kept in more memory than it needs"},
                         };

const ExcusedCalls kEntering{
    {"qerxRegisterAppMDIAware", "a host that keeps no note of it can use the module all the same"},
    {"QeRxDynamicLinker::unlockApplication", "the module stays loaded, that is all"},
    {"QeDbDecompositionManager::addReactor", "a host without decomposition can use the module all the same"},
    {"QeDbDecompositionManager::removeReactor", "the host unmaps the module whatever the result"},
};

const std::map<std::string, ExcusedCalls>& tableOfReasons()
{
    static const std::map<std::string, ExcusedCalls> table{
        {"GetCoordinateSystem(array)", kReading},
        {"GetCoordinateSystem(definition)", kReading},
        {"GetCoordinateSystem(code)", kReading},
        {"SetCoordinateSystem(definition)", kAssigning + kMakingGeoData + kRemoving},
        {"SetCoordinateSystem(code)", kAssigning + kMakingGeoData + kRemoving},
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
