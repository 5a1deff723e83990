// The reactor that the host calls when it saves a drawing in another drawing version.
#pragma once

#include "platform/host.h"

/// Rewrites the drawing's coordinate system in the forms of the drawing version to be saved. Records a failure with the
/// save's recorder; without a recorder the failure is the result.
class OrvelCoordsysCoreDecompositionReactor final : public QeDbDecompositionReactor {
public:
    Qeapp::ErrorStatus decomposeForSave(QeDbDatabase* database, QeDb::QeDbDwgVersion version,
                                        QeDbSaveErrorRecorder* errors, QeDbSaveErrorMessageRecorder* messages) override;
};
