#include "fuzz/drawing_round_trip.h"
#include "fuzz/oracle.h"
#include "fuzz/targets.h"
#include "fuzz/unconstrained_drawing.h"
#include "storage/geodata.h"
#include "storage/host_holders.h"
#include "storage/legacy_projection.h"

namespace Fuzz {
namespace {

// Changes that a host may make before it has read the whole drawing. Each may fail, since parts may be unreadable.

void leaveAsItIs(QeDbDatabase& /*database*/)
{
}

void writeOtherForms(QeDbDatabase& database)
{
    static_cast<void>(Orvel::WriteLegacyProjectionCode(&database, L"EPSG:4326"));
    static_cast<void>(Orvel::WriteGeoDataCoordinateSystem(&database, L"text"));
}

void addAnXrecord(QeDbDatabase& database)
{
    Orvel::NamedObjects root;
    if (root.openIn(&database, QeDb::kForWrite) != Qeapp::eOk)
        return;
    const Orvel::HostObject<QeDbXrecord> xrecord(new QeDbXrecord);
    QeDbObjectId id;
    static_cast<void>(root->setAt(L"EMPTY", xrecord.get(), id));
}

void eraseADictionary(QeDbDatabase& database)
{
    Orvel::NamedObjects root;
    QeDbObjectId id;
    if (root.openIn(&database, QeDb::kForRead) != Qeapp::eOk || root->getAt(L"A", id) != Qeapp::eOk)
        return;
    Orvel::HostObject<QeDbObject> object;
    if (object.open(id, QeDb::kForWrite) == Qeapp::eOk)
        static_cast<void>(object->erase());
}

void eraseAnApplication(QeDbDatabase& database)
{
    Orvel::HostObject<QeDbRegAppTable> table;
    QeDbObjectId id;
    if (table.openWith([&](QeDbRegAppTable*& object) { return database.getRegAppTable(object, QeDb::kForRead); }) !=
            Qeapp::eOk ||
        table->getAt(L"OTHER", id) != Qeapp::eOk)
        return;
    Orvel::HostObject<QeDbObject> object;
    if (object.open(id, QeDb::kForWrite) == Qeapp::eOk)
        static_cast<void>(object->erase());
}

constexpr std::array kHostActions{leaveAsItIs, writeOtherForms, addAnXrecord, eraseADictionary, eraseAnApplication};

} // namespace

void drawingRows(Input input)
{
    ByteSource source(input);
    const bool isStale = source.below(4) == 3;
    const auto& act = kHostActions.at(source.below(kHostActions.size()));
    const std::string bytes = drawingWithChanges(source, isStale ? UnconstrainedDrawing::Indexes::stale
                                                                 : UnconstrainedDrawing::Indexes::kept);
    const LeakCheck guard;
    const Soundness soundness = act == leaveAsItIs ? Soundness::sound : Soundness::unusedRows;
    requireReadOrRefused(bytes, act, isStale ? Soundness::damagedPages : soundness);
}

} // namespace Fuzz
