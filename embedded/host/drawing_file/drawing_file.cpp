#include "embedded/host/drawing_file/drawing_file.h"

#include <optional>
#include <utility>

#include "embedded/base/path.h"
#include "embedded/host/application/decomposition_run.h"
#include "embedded/host/drawing_file/drawing_destination.h"
#include "embedded/host/drawing_file/drawing_opening.h"
#include "embedded/host/drawing_file/drawing_store.h"

namespace Embedded {
namespace {

namespace fs = std::filesystem;

bool isDrawingVersion(QeDb::QeDbDwgVersion version)
{
    return version >= QeDb::kOldestDwg && version <= QeDb::kCurrentDwg;
}

bool needsDecomposition(const QeDbDatabase& database, QeDb::QeDbDwgVersion version)
{
    return version != database.drawingVersion() || version < QeDb::kGeoDataTextDwg;
}

DrawingStore* storeOf(const QeDbDatabase& database)
{
    return static_cast<DrawingStore*>(database.imp().store.get());
}

Expected<void> saveConverted(QeDbDatabase& database, QeDb::QeDbDwgVersion version, DrawingDestination& destination)
{
    std::optional<DecompositionRun> run; // undone on every way out but the last
    if (needsDecomposition(database, version))
        run.emplace(database, version);
    if (Expected<void> result = loadingResult(database); !result)
        return result;
    if (run && !run->result())
        return run->result();
    if (Expected<void> result = destination.write(database.imp(), version); !result)
        return result;
    database.imp().version = version;
    if (run)
        run->complete();
    return {};
}

Expected<void> save(QeDbDatabase& database, QeDb::QeDbDwgVersion version, DrawingDestination& destination)
{
    if (!isDrawingVersion(version))
        return failure(Qeapp::eInvalidDrawingVersion,
                       std::to_string(static_cast<int>(version)) + " is not a drawing version that can be saved",
                       destination.name());
    try {
        return saveConverted(database, version, destination);
    } catch (const std::bad_alloc&) {
        return failure(Qeapp::eOutOfMemory, "not enough memory to save the drawing", destination.name());
    }
}

tl::unexpected<Error> tooLittleMemory(std::string place)
{
    return failure(Qeapp::eOutOfMemory, "not enough memory for the drawing", std::move(place));
}

} // namespace

Expected<std::unique_ptr<QeDbDatabase>> loadDrawing(const fs::path& file, DrawingAccess access, const LockWait& wait)
{
    try {
        return openDrawing(file, access, wait);
    } catch (const std::bad_alloc&) {
        return tooLittleMemory(displayName(file));
    }
}

Expected<std::unique_ptr<QeDbDatabase>> loadDrawingFromBytes(const std::string& bytes)
{
    try {
        return openDrawingFromBytes(bytes);
    } catch (const std::bad_alloc&) {
        return tooLittleMemory({});
    }
}

Expected<void> saveDrawing(QeDbDatabase& database, const fs::path& file, QeDb::QeDbDwgVersion version,
                           Overwriting overwriting, const LockWait& wait)
{
    const std::unique_ptr<DrawingDestination> destination = destinationFor(storeOf(database), file, overwriting, wait);
    return save(database, version, *destination);
}

Expected<std::string> saveDrawingToBytes(QeDbDatabase& database, QeDb::QeDbDwgVersion version)
{
    std::string bytes;
    const std::unique_ptr<DrawingDestination> destination = destinationInMemory(storeOf(database), bytes);
    if (Expected<void> result = save(database, version, *destination); !result)
        return failure(std::move(result).error());
    return bytes;
}

Expected<void> loadingResult(const QeDbDatabase& database)
{
    const DrawingStore* const store = storeOf(database);
    return store != nullptr ? store->result() : Expected<void>();
}

} // namespace Embedded
