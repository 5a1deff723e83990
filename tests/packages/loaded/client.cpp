// A client that a host loads: it is linked with the module and counts the changes that it hears of.
#include "coordsys/orvel_coordinate_system.h"

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;

namespace {

class ChangeCounter : public Cs::OrvelCoordinateSystemReactor {
public:
    int changes = 0;

private:
    void CoordinateSystemChanged(QeDbDatabase*, const wchar_t*) override { ++changes; }
};

ChangeCounter counter;

} // namespace

extern "C" bool clientStarts()
{
    return Cs::AddCoordinateSystemReactor(&counter) == Qeapp::eOk;
}

extern "C" int clientEnds()
{
    return Cs::RemoveCoordinateSystemReactor(&counter) == Qeapp::eOk ? counter.changes : -1;
}
