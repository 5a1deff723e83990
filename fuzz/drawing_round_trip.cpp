#include "fuzz/drawing_round_trip.h"

#include <unordered_set>

#include "embedded/host/drawing_file/drawing_dump.h"
#include "embedded/host/drawing_file/drawing_file.h"
#include "fuzz/oracle.h"
#include "support/drawing.h"

namespace Fuzz {

SavedDrawing savedDrawing(QeDbDatabase& database, QeDb::QeDbDwgVersion version)
{
    SavedDrawing saved;
    const Embedded::FileResult result = Embedded::saveDrawingToBytes(database, version, saved.bytes);
    saved.status = result.status;
    saved.message = result.message;
    return saved;
}

std::unique_ptr<QeDbDatabase> loadedDrawing(const std::string& bytes)
{
    std::unique_ptr<QeDbDatabase> database;
    const Embedded::FileResult result = Embedded::loadDrawingFromBytes(bytes, database);
    if (result.status == Qeapp::eOk)
        return database;
    require(result.status == Qeapp::eFileDamaged || result.status == Qeapp::eFileTooNew,
            "bytes that are no drawing are damaged or too new");
    require(!result.message.empty(), "a refusal says why");
    return nullptr;
}

void requireSameWhenLoaded(const QeDbDatabase& saved, const std::string& bytes)
{
    constexpr std::size_t kMostRemembered = 10'000;
    static std::unordered_set<std::string> remembered; // sessions save the same drawings many times
    const std::string contents = Tests::contentsOf(saved);
    if (remembered.contains(contents))
        return;
    const std::unique_ptr<QeDbDatabase> database = loadedDrawing(bytes);
    require(database != nullptr, "what was saved can be loaded");
    require(Tests::contentsOf(*database) == contents, "a drawing that was loaded is the one that was saved");
    if (remembered.size() == kMostRemembered)
        remembered.clear();
    remembered.insert(contents);
}

namespace {

void requireReadAgain(const std::string& bytes, const std::string& contents, Soundness soundness)
{
    std::unique_ptr<QeDbDatabase> again;
    std::string found;
    Embedded::FileResult result = Embedded::loadDrawingFromBytes(bytes, again);
    if (again != nullptr)
        result = Embedded::dumpDrawing(*again, found);
    const bool isRead = result.status == Qeapp::eOk;
    require(isRead || soundness == Soundness::damagedPages, "what was saved can be loaded; " + result.message);
    require(!isRead || found == contents, "a drawing that was loaded is the one that was saved");
}

} // namespace

void requireReadOrRefused(const std::string& bytes, const std::function<void(QeDbDatabase&)>& act, Soundness soundness)
{
    const std::unique_ptr<QeDbDatabase> database = loadedDrawing(bytes);
    if (database == nullptr)
        return;
    act(*database);
    std::string contents;
    const Embedded::FileResult read = Embedded::dumpDrawing(*database, contents);
    const SavedDrawing saved = savedDrawing(*database, database->drawingVersion());
    if (read.status != Qeapp::eOk) {
        require(read.status == Qeapp::eFileDamaged && !read.message.empty(),
                "what cannot be read is damage, and says so");
        require(saved.status == read.status && saved.message == read.message,
                "a drawing of which something could not be read is not saved");
        return;
    }
    if (saved.status != Qeapp::eOk) {
        require(soundness != Soundness::sound, "a drawing that was read can be saved");
        require(!saved.message.empty(), "a save that fails says why");
        std::string after;
        const Embedded::FileResult readAgain = Embedded::dumpDrawing(*database, after);
        require(readAgain.status == Qeapp::eOk ? after == contents : readAgain.message == saved.message,
                "a save that fails changes nothing, but for finding what cannot be read");
        return;
    }
    requireReadAgain(saved.bytes, contents, soundness);
}

} // namespace Fuzz
