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

const fs::path& folderOfChecks()
{
    static const Tests::TemporaryFolder folder;
    return folder.path();
}

bool canBeRead(const std::string& bytes)
{
    const std::unique_ptr<QeDbDatabase> database = loadedDrawing(bytes);
    std::string contents;
    return database != nullptr && Embedded::dumpDrawing(*database, contents).status == Qeapp::eOk;
}

void requireChecked(const fs::path& file, bool isReadable)
{
    Embedded::DrawingFaults faults;
    const Embedded::FileResult result = Embedded::checkDrawing(file, {}, faults);
    require(result.status == Qeapp::eOk || !result.message.empty(),
            "a file that is not checked is refused and told why");
    require(isReadable || result.status != Qeapp::eOk || faults.number > 0, "what cannot be read is a fault");
}

void requireSalvagedOrRefused(const fs::path& file)
{
    const fs::path out = folderOfChecks() / "out.qedb";
    fs::remove(out);
    Embedded::Salvage salvage;
    const Embedded::FileResult result = Embedded::salvageDrawing(file, out, {}, salvage);
    require(result.status == Qeapp::eOk || !result.message.empty(),
            "a file that is not salvaged is refused and told why");
}

} // namespace

void drawingCheck(Input input)
{
    ByteSource source(input);
    const bool isStale = source.below(4) == 3;
    const std::string bytes = drawingWithChanges(source, isStale ? UnconstrainedDrawing::Indexes::stale
                                                                 : UnconstrainedDrawing::Indexes::kept);
    const LeakCheck guard;
    const fs::path file = folderOfChecks() / "drawing.qedb";
    std::ofstream(file, std::ios::binary) << bytes;
    Tests::sealFile(file);
    requireChecked(file, canBeRead(bytes));
    requireSalvagedOrRefused(file);
}

} // namespace Fuzz
