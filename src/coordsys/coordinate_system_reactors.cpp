#include <algorithm>
#include <list>
#include <new>

#include "coordsys/coordinate_system_reactors.h"
#include "coordsys/orvel_coordinate_system.h"

namespace Zentara::Gis::Orvel::CoordinateSystem {
namespace {

using ReactorList = std::list<OrvelCoordinateSystemReactor*>;

/// Module-wide. The reactors belong to their clients, who remove them; unloading leaves the list as it is.
ReactorList CoordinateSystemReactorList;

ReactorList::iterator find(const OrvelCoordinateSystemReactor* reactor)
{
    return std::ranges::find(CoordinateSystemReactorList, reactor);
}

/// A copy, so that reactors may add and remove reactors meanwhile.
ReactorList snapshot()
{
    return CoordinateSystemReactorList;
}

} // namespace

OrvelCoordinateSystemReactor::OrvelCoordinateSystemReactor() = default;
OrvelCoordinateSystemReactor::OrvelCoordinateSystemReactor(const OrvelCoordinateSystemReactor&) = default;
OrvelCoordinateSystemReactor& OrvelCoordinateSystemReactor::operator=(const OrvelCoordinateSystemReactor&) = default;
OrvelCoordinateSystemReactor::~OrvelCoordinateSystemReactor() = default;

bool OrvelCoordinateSystemReactor::CoordinateSystemWillChange(QeDbDatabase*, const wchar_t* const)
{
    return true;
}

void OrvelCoordinateSystemReactor::CoordinateSystemChanged(QeDbDatabase*, const wchar_t* const)
{
}

void OrvelCoordinateSystemReactor::CoordinateSystemChangeVetoed(QeDbDatabase*, const wchar_t* const)
{
}

void OrvelCoordinateSystemReactor::CsTransformationChanged()
{
}

Qeapp::ErrorStatus AddCoordinateSystemReactor(OrvelCoordinateSystemReactor* reactor)
{
    if (reactor == nullptr || find(reactor) != CoordinateSystemReactorList.end())
        return Qeapp::eInvalidInput;
    try {
        CoordinateSystemReactorList.push_back(reactor);
    } catch (const std::bad_alloc&) {
        return Qeapp::eOutOfMemory;
    }
    return Qeapp::eOk;
}

Qeapp::ErrorStatus RemoveCoordinateSystemReactor(OrvelCoordinateSystemReactor* reactor)
{
    const auto found = find(reactor);
    if (found == CoordinateSystemReactorList.end())
        return Qeapp::eInvalidInput;
    CoordinateSystemReactorList.erase(found);
    return Qeapp::eOk;
}

bool NotifyCoordinateSystemWillChange(QeDbDatabase* db, const wchar_t* name)
{
    const auto allows = [=](OrvelCoordinateSystemReactor* reactor) {
        return reactor->CoordinateSystemWillChange(db, name);
    };
    const ReactorList asked = snapshot();
    if (std::ranges::all_of(asked, allows))
        return true;
    NotifyCoordinateSystemChangeVetoed(db, name);
    return false;
}

void NotifyCoordinateSystemChanged(QeDbDatabase* db, const wchar_t* name)
{
    for (OrvelCoordinateSystemReactor* const reactor : snapshot())
        reactor->CoordinateSystemChanged(db, name);
}

void NotifyCoordinateSystemChangeVetoed(QeDbDatabase* db, const wchar_t* name)
{
    for (OrvelCoordinateSystemReactor* const reactor : snapshot())
        reactor->CoordinateSystemChangeVetoed(db, name);
}

void NotifyCsTransformationChanged()
{
    for (OrvelCoordinateSystemReactor* const reactor : snapshot())
        reactor->CsTransformationChanged();
}

} // namespace Zentara::Gis::Orvel::CoordinateSystem
