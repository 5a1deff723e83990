#include "fuzz/drawing_round_trip.h"

#include <unordered_set>

#include "embedded/host/database/host_error.h"
#include "embedded/host/drawing_file/drawing_dump.h"
#include "embedded/host/drawing_file/drawing_file.h"
#include "fuzz/oracle.h"
#include "support/drawing.h"

namespace Fuzz {

SavedDrawing saveDrawing(QeDbDatabase& database, QeDb::QeDbDwgVersion version)
{
    Embedded::Expected<std::string> bytes = Embedded::saveDrawingToBytes(database, version);
    if (!bytes)
        return {Embedded::hostStatus(bytes), bytes.error().text()};
    return {.bytes = std::move(*bytes)};
}

std::unique_ptr<QeDbDatabase> loadDrawing(const std::string& bytes)
{
    Embedded::Expected<std::unique_ptr<QeDbDatabase>> database = Embedded::loadDrawingFromBytes(bytes);
    if (database)
        return std::move(*database);
    const Embedded::Error& error = database.error();
    require(error.status == Qeapp::eFileDamaged || error.status == Qeapp::eFileTooNew,
            "bytes that are no drawing are damaged or too new");
    require(!error.message.empty(), "a refusal says why");
    return nullptr;
}

void requireSameWhenLoaded(const QeDbDatabase& saved, const std::string& bytes)
{
    constexpr std::size_t kMaximumCached = 10'000;
    static std::unordered_set<std::string> cached; // sessions save the same drawings many times
    const std::string contents = Tests::drawingContents(saved);
    if (cached.contains(contents))
        return;
    const std::unique_ptr<QeDbDatabase> database = loadDrawing(bytes);
    require(database != nullptr, "what was saved can be loaded");
    require(Tests::drawingContents(*database) == contents, "a drawing that was loaded is the one that was saved");
    if (cached.size() == kMaximumCached)
        cached.clear();
    cached.insert(contents);
}

namespace {

void requireReadAgain(const std::string& bytes, const std::string& contents, Soundness soundness)
{
    const auto again = Embedded::loadDrawingFromBytes(bytes);
    const auto found = again ? Embedded::dumpDrawing(**again) : Embedded::failure(again.error());
    require(found || soundness == Soundness::damagedPages,
            "what was saved can be loaded; " + (found ? "" : found.error().text()));
    require(!found || *found == contents, "a drawing that was loaded is the one that was saved");
}

} // namespace

void requireReadOrRefused(const std::string& bytes, const std::function<void(QeDbDatabase&)>& act, Soundness soundness)
{
    const std::unique_ptr<QeDbDatabase> database = loadDrawing(bytes);
    if (database == nullptr)
        return;
    act(*database);
    const Embedded::Expected<std::string> contents = Embedded::dumpDrawing(*database);
    const SavedDrawing saved = saveDrawing(*database, database->drawingVersion());
    if (!contents) {
        const Embedded::Error& error = contents.error();
        require(error.status == Qeapp::eFileDamaged && !error.message.empty(),
                "what cannot be read is damage, and says so");
        require(saved.status == error.status && saved.message == error.text(),
                "a drawing of which something could not be read is not saved");
        return;
    }
    if (saved.status != Qeapp::eOk) {
        require(soundness != Soundness::sound, "a drawing that was read can be saved");
        require(!saved.message.empty(), "a save that fails says why");
        const Embedded::Expected<std::string> after = Embedded::dumpDrawing(*database);
        require(after ? *after == *contents : after.error().text() == saved.message,
                "a save that fails changes nothing, but for finding what cannot be read");
        return;
    }
    requireReadAgain(saved.bytes, *contents, soundness);
}

} // namespace Fuzz
