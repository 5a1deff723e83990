#include "frame/decomposition_reactor.h"

#include "coordsys/orvel_coordinate_system.h"

Qeapp::ErrorStatus OrvelCoordsysCoreDecompositionReactor::decomposeForSave(QeDbDatabase* database,
                                                                           QeDb::QeDbDwgVersion version,
                                                                           QeDbSaveErrorRecorder* errors,
                                                                           QeDbSaveErrorMessageRecorder* messages)
{
    const Qeapp::ErrorStatus result =
        Zentara::Gis::Orvel::CoordinateSystem::ApplyCoordinateSystemStorageVersion(database, version, nullptr);
    if (result == Qeapp::eOk)
        return Qeapp::eOk;
    if (errors != nullptr)
        return errors->recordError(result);
    if (messages != nullptr)
        return messages->recordError(result, L"");
    return result;
}
