#include <algorithm>
#include <new>
#include <vector>

#include "coordsys/orvel_coordinate_system.h"
#include "coordsys/reactor_notices.h"

namespace Zentara::Gis::Orvel::CoordinateSystem {
namespace {

using ReactorList = std::vector<OrvelCoordinateSystemReactor*>;

/// Module-wide; the reactors belong to their clients, who take them out.
constinit ReactorList CoordinateSystemReactorList;

ReactorList::iterator find(const OrvelCoordinateSystemReactor* reactor)
{
    return std::ranges::find(CoordinateSystemReactorList, reactor);
}

/// Calls `event` for each reactor of a copy of the list, so that reactors may add and remove reactors meanwhile. False
/// as soon as `event` answers false.
template <class Event>
bool forEachReactor(const Event& event)
{
    const ReactorList snapshot = CoordinateSystemReactorList;
    return std::ranges::all_of(snapshot, event);
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
    if (forEachReactor(
            [=](OrvelCoordinateSystemReactor* reactor) { return reactor->CoordinateSystemWillChange(db, name); }))
        return true;
    NotifyCoordinateSystemChangeVetoed(db, name);
    return false;
}

void NotifyCoordinateSystemChanged(QeDbDatabase* db, const wchar_t* name)
{
    forEachReactor([=](OrvelCoordinateSystemReactor* reactor) {
        reactor->CoordinateSystemChanged(db, name);
        return true;
    });
}

void NotifyCoordinateSystemChangeVetoed(QeDbDatabase* db, const wchar_t* name)
{
    forEachReactor([=](OrvelCoordinateSystemReactor* reactor) {
        reactor->CoordinateSystemChangeVetoed(db, name);
        return true;
    });
}

void NotifyCsTransformationChanged()
{
    forEachReactor([](OrvelCoordinateSystemReactor* reactor) {
        reactor->CsTransformationChanged();
        return true;
    });
}

} // namespace Zentara::Gis::Orvel::CoordinateSystem
