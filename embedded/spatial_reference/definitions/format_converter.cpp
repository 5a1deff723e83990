#include "platform/spatial_reference/format_converter.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "embedded/base/memo_cache.h"
#include "embedded/base/text.h"
#include "embedded/spatial_reference/definitions/library_call.h"
#include "embedded/spatial_reference/projjson/canonical_projjson.h"
#include "embedded/spatial_reference/projjson/definition_data.h"
#include "embedded/spatial_reference/projjson/proj_object.h"

namespace Zentara::Infrastructure::SpatialReference {
namespace {

bool fits(const std::wstring& text, std::size_t bufferCharacters)
{
    return text.size() < bufferCharacters;
}

void copyWithNul(const std::wstring& text, wchar_t* buffer)
{
    std::copy_n(text.c_str(), text.size() + 1, buffer);
}

/// The forms in which a system can be written, the best one first.
struct WktForms {
    bool isWkt1 = false;
    std::vector<std::wstring> texts{};
};

WktForms writeForms(const PJ* system)
{
    if (const auto text = Embedded::wktOf(system, PJ_WKT1_GDAL))
        return {true, {Embedded::wideFromUtf8(*text)}};
    WktForms forms;
    for (const PJ_WKT_TYPE type : {PJ_WKT2_2019, PJ_WKT2_2019_SIMPLIFIED}) {
        if (const auto text = Embedded::wktOf(system, type))
            forms.texts.push_back(Embedded::wideFromUtf8(*text));
    }
    return forms;
}

WktForms cachedForms(const Embedded::Projjson& projjson)
{
    static Embedded::MemoCache<std::string, WktForms> cache;
    const auto make = [&projjson] {
        const Embedded::ProjObject system = Embedded::projObjectFrom(projjson);
        return system ? writeForms(system.get()) : WktForms();
    };
    return cache.getOrCompute(projjson.dump(), make, [](const WktForms& forms) { return !forms.texts.empty(); });
}

Status writeWkt(const Embedded::Projjson& projjson, wchar_t* buffer, std::size_t bufferCharacters)
{
    const WktForms forms = cachedForms(projjson);
    if (forms.texts.empty())
        return statusFailed;
    const auto text = std::ranges::find_if(
        forms.texts, [bufferCharacters](const std::wstring& form) { return fits(form, bufferCharacters); });
    if (text == forms.texts.end())
        return statusBufferTooSmall;
    copyWithNul(*text, buffer);
    return forms.isWkt1 ? statusOk : statusInexact;
}

} // namespace

Status FormatConverter::DefinitionToWkt_s(const CoordinateReferenceSystemDefinition* definition, WktFlavor flavor,
                                          wchar_t* buffer, std::size_t bufferCharacters)
{
    if (const auto failure = Embedded::injectedStatus("FormatConverter::DefinitionToWkt_s"))
        return *failure;
    if (!definition || !buffer)
        return statusInvalidArgument;
    if (flavor != wktFlavorDefault)
        return statusUnsupported;
    return Embedded::catchJsonErrors(statusFailed,
                                     [&] { return writeWkt(definition->data().projjson(), buffer, bufferCharacters); });
}

} // namespace Zentara::Infrastructure::SpatialReference
