#include "embedded/host/drawing_file.h"

#include <new>
#include <optional>
#include <utility>

#include "embedded/foundation/atomic_file.h"
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

/// Where a save goes, and what its messages begin with.
struct Destination {
    std::string prefix;
    const DrawingWriter& write;
};

FileResult write(const QeDbDatabase& database, QeDb::QeDbDwgVersion version, const Destination& destination)
{
    DrawingImage image = imageOf(database);
    image.drawingVersion = version;
    if (const std::string fault = validateImage(image); !fault.empty())
        return {Qeapp::eInvalidInput, destination.prefix + "would not be readable: " + fault};
    return destination.write(drawingTextFrom(image));
}

FileResult saveConverted(QeDbDatabase& database, QeDb::QeDbDwgVersion version, const Destination& destination)
{
    std::optional<DecompositionRun> run; // undone on every way out but the last
    if (needsDecomposition(database, version))
        run.emplace(database, version);
    if (run && run->status() != Qeapp::eOk)
        return {run->status(), run->message()};
    if (FileResult result = write(database, version, destination); result.status != Qeapp::eOk)
        return result;
    setDrawingVersion(database, version);
    if (run)
        run->complete();
    return {};
}

FileResult save(QeDbDatabase& database, QeDb::QeDbDwgVersion version, const Destination& destination)
{
    if (!isDrawingVersion(version))
        return {Qeapp::eInvalidDrawingVersion, destination.prefix + std::to_string(static_cast<int>(version)) +
                                                   " is not a drawing version that can be saved"};
    try {
        return saveConverted(database, version, destination);
    } catch (const std::bad_alloc&) {
        return {Qeapp::eOutOfMemory, destination.prefix + "not enough memory to save the drawing"};
    }
}

} // namespace

FileResult loadDrawing(const std::filesystem::path& file, std::unique_ptr<QeDbDatabase>& database)
{
    database.reset();
    try {
        if (const auto failure = recoverReplacedFile(file))
            return {Qeapp::eFileNotFound, failure->message};
        return named(file, load(file, database));
    } catch (const std::bad_alloc&) {
        return named(file, {Qeapp::eOutOfMemory, "not enough memory for the drawing"});
    }
}

FileResult saveDrawing(QeDbDatabase& database, const std::filesystem::path& file, QeDb::QeDbDwgVersion version)
{
    const DrawingWriter toFile = [&](std::string_view text) { return writeFileAtomically(file, text); };
    return save(database, version, {displayName(file) + ": ", toFile});
}

FileResult saveDrawing(QeDbDatabase& database, QeDb::QeDbDwgVersion version, const DrawingWriter& write)
{
    return save(database, version, {"", write});
}

} // namespace Embedded
