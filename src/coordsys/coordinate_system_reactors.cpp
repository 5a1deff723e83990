#include <algorithm>
#include <list>
#include <new>

#include "coordsys/coordinate_system_reactors.h"
#include "coordsys/orvel_coordinate_system.h"

namespace Zentara::Gis::Orvel::CoordinateSystem {
namespace {

using ReactorList = std::list<OrvelCoordinateSystemReactor*>;

/// Module-wide. Clients own the reactors and remove them; unloading the module does not change the list.
ReactorList CoordinateSystemReactorList;

ReactorList::iterator find(const OrvelCoordinateSystemReactor* reactor)
{
    return std::ranges::find(CoordinateSystemReactorList, reactor);
}

/// A copy, so that reactors may add and remove reactors while it is walked.
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
    const auto position = find(reactor);
    if (position == CoordinateSystemReactorList.end())
        return Qeapp::eInvalidInput;
    CoordinateSystemReactorList.erase(position);
    return Qeapp::eOk;
}

bool NotifyCoordinateSystemWillChange(QeDbDatabase* db, const wchar_t* name)
{
    const auto allows = [=](OrvelCoordinateSystemReactor* reactor) {
        return reactor->CoordinateSystemWillChange(db, name);
    };
    const ReactorList reactors = snapshot();
    if (std::ranges::all_of(reactors, allows))
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
