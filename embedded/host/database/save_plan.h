// What a save changes in a drawing's file.
#pragma once

#include <string>
#include <vector>

#include "embedded/host/database/database.h"

namespace QeHost {

struct SavePlan {
    struct Written {
        ObjectRecord* object = nullptr;
        std::wstring key;      // of a new entry; empty for an object that needs none
        bool isRecord = false; // whether it is a new record of a table
    };

    std::vector<Embedded::Handle> removedHandles; // of the objects to remove from the file with all that they own
    std::vector<ObjectRecord*> removedObjects;    // the records of all of those
    std::vector<Written> written;                 // owners come first
};

/// Compares the changes since the last save with the file. Loads the objects that leave the file and could come back,
/// which may fail.
Embedded::Expected<SavePlan> planSave(DatabaseImp& database);

/// Must be called after the plan was carried out in the drawing's own file.
void markSaved(DatabaseImp& database, const SavePlan& plan) noexcept;

/// The drawing's GeoData object, or null. It is not in the drawing if its block is erased.
ObjectRecord* geoDataInDrawing(const DatabaseImp& database);

} // namespace QeHost
