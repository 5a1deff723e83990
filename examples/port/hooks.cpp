// The hooks of port_check for the imaginary product.
#include "port_check.h"

#include "core/trial.h"
#include "draft/extensions.h"
#include "draft/session.h"

namespace PortCheck {

namespace {

Draft::Extensions::Number moduleNumber = 0;

} // namespace

QeDbDatabase* newDrawing()
{
    return QeDbDatabase::of(&Draft::Session::get().open());
}

void closeDrawing(QeDbDatabase* drawing)
{
    if (drawing)
        Draft::Session::get().close(drawing->drawing());
}

bool prepareForSave(QeDbDatabase* drawing, QeDb::QeDbDwgVersion version)
{
    Draft::SaveLog log;
    return Draft::Session::get().prepareSave(drawing->drawing(), version, log) == Draft::Outcome::done;
}

Systems systems()
{
    return {.projected = L"ETRS.UTM32",
            .geographic = L"ED50.GEO",
            .userDefinedCode = L"MINE.UTM",
            .userDefinedText = L"survey definitions 1\n"
                               L"system|MINE.UTM|A zone of my own|projected|MINE||Transverse_Mercator "
                               L"latitude_of_origin=0 central_meridian=10.5 scale_factor=1 false_easting=0 "
                               L"false_northing=0\n"
                               L"datum|MINE|A datum of my own|MINE.ELLIPSOID\n"
                               L"ellipsoid|MINE.ELLIPSOID|An ellipsoid of my own|6378000.5|300",
            .reversibleTransformation = L"ED50 to WGS 84, mean",
            .irreversibleTransformation = L"ED50 to ETRS89, grid",
            .reversiblePath = L"ED50 to ETRS89 by WGS 84"};
}

bool loadModule()
{
    if (moduleNumber == 0)
        Draft::Extensions::get().load(MODULE_FILE_NAME, moduleNumber);
    return moduleNumber != 0;
}

bool unloadModule()
{
    if (Draft::Extensions::get().unload(moduleNumber) != Draft::Outcome::done)
        return false;
    moduleNumber = 0;
    return true;
}

bool failCall(std::size_t number)
{
    Core::failCall(number);
    return true;
}

Calls callsMade()
{
    const Core::Trial trial = Core::trial();
    return {.made = trial.calls, .failed = trial.failed};
}

std::string heldNow()
{
    std::string text = Core::Living::list();
    if (const std::size_t claims = Draft::Session::get().claims())
        text += ", claims: " + std::to_string(claims);
    if (const Draft::Drawing* const drawing = Draft::Session::get().current())
        text += ", held records: " + std::to_string(drawing->holds()) + ", steps: " + std::to_string(drawing->steps());
    return text;
}

} // namespace PortCheck
