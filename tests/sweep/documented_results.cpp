#include "sweep/documented_results.h"

#include <map>
#include <set>
#include <stdexcept>

#include "platform/host/error_status.h"
#include "sweep/outcome.h"

namespace Tests {
namespace {

using Results = std::set<int>;

const std::map<std::string, Results>& resultTable()
{
    static const std::map<std::string, Results> table{
        {"GetCoordinateSystem(array)", {0, 2, 3, 6, 15, 124}},
        {"GetCoordinateSystem(definition)", {0, 2, 3, 6, 15, 124}},
        {"GetCoordinateSystem(code)", {0, 2, 3, 6, 15, 124}},
        {"SetCoordinateSystem(definition)", {0, 3, 6, 8, 15, 124, 325}},
        {"SetCoordinateSystem(code)", {0, 3, 6, 8, 15, 124, 325}},
        {"ClearCoordinateSystem", {0, 6, 8, 15, 124, 325}},
        {"SerializeCoordinateSystem", {0, 3}},
        {"DeserializeCoordinateSystem", {0, 3}},
        {"ApplyCoordinateSystemStorageVersion", {0, 2, 3, 6, 7, 8, 15, 37, 124}},
        {"AddCoordinateSystemReactor", {0, 3, 6}},
        {"RemoveCoordinateSystemReactor", {0, 3}},
        {"GetInitializeGeodataParameters", {0}},
        {"SetInitializeGeodataParameters", {0}},
        {"qerxEntryPoint", {0}},
        {"saving a drawing", {0, 2, 3, 6, 7, 8, 15, 37, 124, Qeapp::eFileWriteFailed}},
    };
    return table;
}

} // namespace

bool isDocumented(const std::string& function, int result)
{
    const auto found = resultTable().find(function);
    if (found != resultTable().end())
        return found->second.contains(result);
    return result == kTrue || result == kFalse; // a function without codes
}

} // namespace Tests
