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

FileResult named(const std::string& file, FileResult result)
{
    if (result.status != Qeapp::eOk)
        result.message = file + ": " + result.message;
    return result;
}

DrawingStore* storeOf(const QeDbDatabase& database)
{
    return static_cast<DrawingStore*>(database.imp().store.get());
}

FileResult saveConverted(QeDbDatabase& database, QeDb::QeDbDwgVersion version, DrawingDestination& destination)
{
    std::optional<DecompositionRun> run; // undone on every way out but the last
    if (needsDecomposition(database, version))
        run.emplace(database, version);
    if (FileResult result = loadingFailure(database); result.status != Qeapp::eOk)
        return result;
    if (run && run->status() != Qeapp::eOk)
        return {run->status(), run->message()};
    if (FileResult result = destination.write(database.imp(), version); result.status != Qeapp::eOk)
        return result;
    database.imp().version = version;
    if (run)
        run->complete();
    return {};
}

FileResult save(QeDbDatabase& database, QeDb::QeDbDwgVersion version, DrawingDestination& destination)
{
    if (!isDrawingVersion(version))
        return named(destination.name(),
                     {Qeapp::eInvalidDrawingVersion,
                      std::to_string(static_cast<int>(version)) + " is not a drawing version that can be saved"});
    try {
        return saveConverted(database, version, destination);
    } catch (const std::bad_alloc&) {
        return named(destination.name(), {Qeapp::eOutOfMemory, "not enough memory to save the drawing"});
    }
}

} // namespace

FileResult loadDrawing(const fs::path& file, std::unique_ptr<QeDbDatabase>& database, DrawingAccess access,
                       const LockWait& wait)
{
    database.reset();
    try {
        return openDrawing(file, access, wait, database);
    } catch (const std::bad_alloc&) {
        return named(displayName(file), {Qeapp::eOutOfMemory, "not enough memory for the drawing"});
    }
}

FileResult loadDrawingFromBytes(const std::string& bytes, std::unique_ptr<QeDbDatabase>& database)
{
    database.reset();
    try {
        return openDrawingFromBytes(bytes, database);
    } catch (const std::bad_alloc&) {
        return {Qeapp::eOutOfMemory, "not enough memory for the drawing"};
    }
}

FileResult saveDrawing(QeDbDatabase& database, const fs::path& file, QeDb::QeDbDwgVersion version,
                       Overwriting overwriting, const LockWait& wait)
{
    const std::unique_ptr<DrawingDestination> destination = destinationFor(storeOf(database), file, overwriting, wait);
    return save(database, version, *destination);
}

FileResult saveDrawingToBytes(QeDbDatabase& database, QeDb::QeDbDwgVersion version, std::string& bytes)
{
    bytes.clear();
    const std::unique_ptr<DrawingDestination> destination = destinationInMemory(storeOf(database), bytes);
    return save(database, version, *destination);
}

FileResult loadingFailure(const QeDbDatabase& database)
{
    const DrawingStore* const store = storeOf(database);
    return store != nullptr ? store->failure() : FileResult();
}

} // namespace Embedded
