#include <filesystem>
#include <fstream>

#include "embedded/host/drawing_file/drawing_check.h"
#include "embedded/host/drawing_file/drawing_dump.h"
#include "embedded/host/drawing_file/drawing_salvage.h"
#include "fuzz/drawing_round_trip.h"
#include "fuzz/oracle.h"
#include "fuzz/targets.h"
#include "fuzz/unconstrained_drawing.h"
#include "support/drawing_files/drawing_sql.h"
#include "support/temporary_folder.h"

namespace Fuzz {
namespace {

namespace fs = std::filesystem;

const fs::path& temporaryFolder()
{
    static const Tests::TemporaryFolder folder;
    return folder.path();
}

bool canBeRead(const std::string& bytes)
{
    const std::unique_ptr<QeDbDatabase> database = loadDrawing(bytes);
    return database != nullptr && Embedded::dumpDrawing(*database).has_value();
}

void requireFaultsFound(const fs::path& file, bool isReadable)
{
    const auto faults = Embedded::checkDrawing(file, {});
    require(faults || !faults.error().message.empty(), "an error of check has a message");
    require(isReadable || !faults || faults->count > 0, "what cannot be read is a fault");
}

void requireSalvagedOrRefused(const fs::path& file)
{
    const fs::path out = temporaryFolder() / "out.qedb";
    fs::remove(out);
    const auto salvage = Embedded::salvageDrawing(file, out, {});
    require(salvage || !salvage.error().message.empty(), "an error of salvage has a message");
}

} // namespace

void drawingCheck(Input input)
{
    ByteSource source(input);
    const bool isStale = source.below(4) == 3;
    const std::string bytes = drawingWithChanges(source, isStale ? UnconstrainedDrawing::Indexes::stale
                                                                 : UnconstrainedDrawing::Indexes::kept);
    const LeakCheck guard;
    const fs::path file = temporaryFolder() / "drawing.qedb";
    std::ofstream(file, std::ios::binary) << bytes;
    Tests::sealFile(file);
    requireFaultsFound(file, canBeRead(bytes));
    requireSalvagedOrRefused(file);
}

} // namespace Fuzz
