#include "sweep/configurations.h"

#include <stdexcept>

#include "embedded/base/text.h"
#include "support/chain.h"
#include "support/drawing.h"
#include "sweep/initial_states.h"
#include "transformation/drawing_config.h"

namespace Tests {

Setting configuredDrawing(const std::wstring& text)
{
    const ScopedDocument document;
    const Orvel::CResbufDictionary dictionary(Orvel::kTransformationConfigDictionary, document.database());
    if (!dictionary.SetResbuf(Orvel::kTransformationConfigKey, chainOf({{300, text}}).get(), nullptr))
        throw std::runtime_error("setting up a drawing: its configuration");
    return {.drawing = savedInMemory(*document.database())};
}

Setting configuredUser(const std::vector<std::wstring>& elements)
{
    Setting setting = emptyDrawing();
    setting.settingsFile.emplace();
    for (const std::wstring& element : elements)
        *setting.settingsFile += Embedded::utf8FromWide(element) + "\r\n";
    return setting;
}

} // namespace Tests
