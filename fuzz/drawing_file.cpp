#include "embedded/host/drawing_file.h"

#include "fuzz/drawing_round_trip.h"
#include "fuzz/input_text.h"
#include "fuzz/oracle.h"
#include "fuzz/targets.h"

namespace Fuzz {

void drawingFile(Input input)
{
    const NothingLeft guard;
    const std::unique_ptr<QeDbDatabase> database = loadedDrawing(std::string(viewOf(input)));
    if (database == nullptr)
        return;
    const std::string text = Embedded::drawingTextFrom(Embedded::imageOf(*database));
    requireSameWhenLoaded(text);
    const SavedDrawing saved = savedDrawing(*database, database->drawingVersion());
    require(saved.status == Qeapp::eOk, "a drawing that was loaded can be saved");
    require(saved.text == text, "saving a drawing as it is changes nothing");
}

} // namespace Fuzz
