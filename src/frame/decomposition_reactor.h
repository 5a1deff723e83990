// What runs when the host saves a drawing in another drawing format.
#pragma once

#include "platform/host.h"

/// Rewrites the drawing's coordinate system into the forms that the format to be saved in knows. A failure is recorded
/// with the save where it can be, and is the result otherwise.
class OrvelCoordsysCoreDecompositionReactor final : public QeDbDecompositionReactor {
public:
    Qeapp::ErrorStatus decomposeForSave(QeDbDatabase* database, QeDb::QeDbDwgVersion version,
                                        QeDbSaveErrorRecorder* errors, QeDbSaveErrorMessageRecorder* messages) override;
};
