#include "sweep/initial_states.h"

#include "storage/definition_xrecord.h"
#include "support/drawing.h"
#include "support/library_definitions.h"

namespace Tests {
namespace {

Setting holding(const Drawing& drawing)
{
    return {.drawing = savedInMemory(*drawing.database())};
}

} // namespace

Setting emptyDrawing()
{
    return holding(GivenDrawing());
}

Setting drawingWithGeoData()
{
    return holding(GivenDrawing().withGeoData(serializedText(catalogSystem(kSystemCode).get())));
}

Setting drawingWithUsersSystem()
{
    return holding(GivenDrawing().withGeoData(serializedText(userSystem().get())));
}

Setting drawingWithLegacyCode()
{
    return holding(GivenDrawing().withLegacyCode(kSystemCode));
}

Setting drawingWithUnknownLegacyCode()
{
    return holding(GivenDrawing().withLegacyCode(L"NOBODYS:1"));
}

Setting drawingWithAllForms()
{
    Drawing drawing;
    const SystemHolder system = catalogSystem(kSystemCode);
    drawing.withGeoData(serializedText(system.get())).withLegacyCode(kSystemCode);
    if (Orvel::WriteCsDefinitionXrecord(system.get(), drawing.database()) != Qeapp::eOk)
        throw std::runtime_error("setting up a drawing: the definition xrecord");
    return holding(drawing);
}

Setting heard(Setting setting, Veto veto)
{
    setting.hasReactor = true;
    setting.veto = veto;
    return setting;
}

} // namespace Tests
