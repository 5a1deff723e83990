// Where a save goes.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "embedded/base/lock_wait.h"
#include "embedded/host/database/save_plan.h"
#include "embedded/host/drawing_file/drawing_file.h"
#include "embedded/host/drawing_file/drawing_store.h"

namespace Embedded {

class DrawingDestination {
public:
    virtual ~DrawingDestination() = default;
    /// How messages name it.
    virtual std::string name() const = 0;
    /// Writes the drawing, whole or not at all.
    virtual Expected<void> write(QeHost::DatabaseImp& database, QeDb::QeDbDwgVersion version) = 0;
};

/// The drawing's own file, if `store` has it open, or another file, which gets the whole drawing.
std::unique_ptr<DrawingDestination> destinationFor(DrawingStore* store, const std::filesystem::path& file,
                                                   Overwriting overwriting, const LockWait& wait);
std::unique_ptr<DrawingDestination> destinationInMemory(DrawingStore* store, std::string& bytes);

} // namespace Embedded
