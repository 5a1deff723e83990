// What a save has to change in a drawing's file.
#pragma once

#include <string>
#include <vector>

#include "embedded/host/database/database.h"

namespace QeHost {

struct SavePlan {
    struct Written {
        ObjectRecord* object = nullptr;
        std::wstring key;      // of the entry that the file does not have yet; empty for an object without one
        bool isRecord = false; // of a table, which the file does not have yet
    };

    std::vector<Embedded::Handle> removedHandles; // from the file, each with all that it owns there
    std::vector<ObjectRecord*> removedObjects;    // what is known of those
    std::vector<Written> written;                 // owners before what they own
};

/// Compares what was changed since the last save with what the file has. What leaves the file and could come back is
/// loaded first, which may fail.
Embedded::Expected<SavePlan> planSave(DatabaseImp& database);

/// After the plan was carried out in the drawing's own file.
void markSaved(DatabaseImp& database, const SavePlan& plan) noexcept;

/// The drawing's GeoData object, if the drawing has it: its block may be gone. Or null.
ObjectRecord* geoDataInDrawing(const DatabaseImp& database);

} // namespace QeHost
