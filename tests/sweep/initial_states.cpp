#include "sweep/initial_states.h"

#include <stdexcept>

#include "embedded/base/text.h"
#include "storage/definition_xrecord.h"
#include "support/chain.h"
#include "support/drawing.h"
#include "support/library_definitions.h"
#include "support/scoped_document.h"
#include "transformation/drawing_config.h"

namespace Tests {
namespace {

InitialState savedDrawing(QeDbDatabase* database)
{
    return {.drawing = saveToBytes(*database)};
}

} // namespace

InitialState emptyDrawing()
{
    return savedDrawing(GivenDrawing().database());
}

InitialState drawingWithGeoData()
{
    return savedDrawing(GivenDrawing().withGeoData(serializedText(catalogSystem(kSystemCode).get())).database());
}

InitialState drawingWithUsersSystem()
{
    return savedDrawing(GivenDrawing().withGeoData(serializedText(userSystem().get())).database());
}

InitialState drawingWithLegacyCode()
{
    return savedDrawing(GivenDrawing().withLegacyCode(kSystemCode).database());
}

InitialState drawingWithUnknownLegacyCode()
{
    return savedDrawing(GivenDrawing().withLegacyCode(L"NOBODYS:1").database());
}

InitialState drawingWithAllForms()
{
    Drawing drawing;
    const SystemHolder system = catalogSystem(kSystemCode);
    drawing.withGeoData(serializedText(system.get())).withLegacyCode(kSystemCode);
    if (Orvel::WriteCsDefinitionXrecord(system.get(), drawing.database()) != Qeapp::eOk)
        throw std::runtime_error("cannot set up a drawing: definition xrecord");
    return savedDrawing(drawing.database());
}

InitialState configuredDrawing(const std::wstring& text)
{
    const ScopedDocument document;
    const Orvel::CResbufDictionary dictionary(Orvel::kTransformationConfigDictionary, document.database());
    if (!dictionary.SetResbuf(Orvel::kTransformationConfigKey, makeChain({{300, text}}).get(), nullptr))
        throw std::runtime_error("cannot set up a drawing: configuration");
    return savedDrawing(document.database());
}

InitialState configuredUser(const std::vector<std::wstring>& elements)
{
    InitialState initialState = emptyDrawing();
    initialState.settingsFile.emplace();
    for (const std::wstring& element : elements)
        *initialState.settingsFile += Embedded::utf8FromWide(element) + "\r\n";
    return initialState;
}

InitialState withReactor(InitialState initialState, Veto veto)
{
    initialState.hasReactor = true;
    initialState.veto = veto;
    return initialState;
}

} // namespace Tests
