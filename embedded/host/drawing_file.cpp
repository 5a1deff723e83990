#include "embedded/host/drawing_file.h"

#include <new>
#include <optional>
#include <utility>

#include "embedded/host/decomposition_run.h"
#include "embedded/host/file_reading.h"

namespace Embedded {
namespace {

FileResult named(const std::filesystem::path& file, FileResult result)
{
    if (result.status != Qeapp::eOk)
        result.message = displayName(file) + ": " + result.message;
    return result;
}

FileResult load(const std::filesystem::path& file, std::unique_ptr<QeDbDatabase>& database)
{
    DrawingImage image;
    {
        std::string text;
        if (FileResult result = readWholeFile(file, kLargestDrawingFileInBytes, text); result.status != Qeapp::eOk)
            return result;
        if (FileResult result = drawingImageFrom(text, image); result.status != Qeapp::eOk)
            return result;
    }
    database = databaseFrom(image);
    return {};
}

bool isDrawingVersion(QeDb::QeDbDwgVersion version)
{
    return version >= QeDb::kOldestDwg && version <= QeDb::kCurrentDwg;
}

bool needsDecomposition(const QeDbDatabase& database, QeDb::QeDbDwgVersion version)
{
    return version != database.drawingVersion() || version < QeDb::kGeoDataTextDwg;
}

FileResult write(const QeDbDatabase& database, const std::filesystem::path& file, QeDb::QeDbDwgVersion version)
{
    DrawingImage image = imageOf(database);
    image.drawingVersion = version;
    if (std::string fault = validateImage(image); !fault.empty())
        return named(file, {Qeapp::eInvalidInput, "would not be readable: " + std::move(fault)});
    return writeFileAtomically(file, drawingTextFrom(image));
}

FileResult save(QeDbDatabase& database, const std::filesystem::path& file, QeDb::QeDbDwgVersion version)
{
    std::optional<DecompositionRun> run; // undone on every way out but the last
    if (needsDecomposition(database, version))
        run.emplace(database, version);
    if (run && run->status() != Qeapp::eOk)
        return {run->status(), run->message()};
    if (FileResult result = write(database, file, version); result.status != Qeapp::eOk)
        return result;
    setDrawingVersion(database, version);
    if (run)
        run->complete();
    return {};
}

} // namespace

FileResult loadDrawing(const std::filesystem::path& file, std::unique_ptr<QeDbDatabase>& database)
{
    database.reset();
    try {
        return named(file, load(file, database));
    } catch (const std::bad_alloc&) {
        return named(file, {Qeapp::eOutOfMemory, "not enough memory for the drawing"});
    }
}

FileResult saveDrawing(QeDbDatabase& database, const std::filesystem::path& file, QeDb::QeDbDwgVersion version)
{
    if (!isDrawingVersion(version))
        return named(file, {Qeapp::eInvalidDrawingVersion,
                            std::to_string(static_cast<int>(version)) + " is no drawing version to save in"});
    try {
        return save(database, file, version);
    } catch (const std::bad_alloc&) {
        return named(file, {Qeapp::eOutOfMemory, "not enough memory to save the drawing"});
    }
}

} // namespace Embedded
